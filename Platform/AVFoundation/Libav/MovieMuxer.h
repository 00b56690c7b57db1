#pragma once

#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/AVFoundation/AVMetadataItem.h"
#include "Platform/AVFoundation/Libav/TrackEncoder.h"
#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"

#include <deque>
#include <mutex>
#include <optional>
#include <vector>

namespace anadrome::libav {

/// What a movie holds besides its tracks, and where.
struct MovieLayout {
    std::vector<AVMetadataItem> metadata = {};
    bool indexFirst = false;
};

/// Writes packets of several tracks into a movie file, ordered by decode time. Tracks are announced by their
/// number; the file's header is written when every track has either begun or ended, and packets wait until
/// then. A track that ends without having begun isn't in the file. Any thread.
class MovieMuxer {
public:
    MovieMuxer(URL url, AVFileType fileType, std::size_t trackCount, MovieLayout layout);
    ~MovieMuxer();
    MovieMuxer(const MovieMuxer&) = delete;
    MovieMuxer& operator=(const MovieMuxer&) = delete;

    /// Makes the file, which must not exist.
    std::optional<NSError> open();

    /// The encoder of a track is open.
    std::optional<NSError> begin(std::size_t track, const TrackEncoder& encoder,
                                 const CGAffineTransform& transform);
    /// Takes the packet's content. Its times are in the encoder's time base.
    std::optional<NSError> write(std::size_t track, AVPacket& packet);
    std::optional<NSError> end(std::size_t track);

    /// Writes the index and closes the file. Every track must have ended. A file without any packet is an
    /// error.
    std::optional<NSError> finish();

private:
    struct Track {
        /// Set once the track has begun.
        Owned<AVCodecParameters> parameters;
        AVRational timeBase{0, 1};
        AVRational frameRate{0, 1};
        CGAffineTransform transform;
        /// Samples that the encoder puts before the sound.
        int delay = 0;
        bool ended = false;
        /// Set with the header.
        AVStream* stream = nullptr;
        /// What the packets so far span, in the time base.
        std::int64_t firstDts = AV_NOPTS_VALUE;
        std::int64_t firstPts = INT64_MAX;
        std::int64_t endPts = INT64_MIN;
        std::deque<Owned<AVPacket>> packets;
    };

    bool allAnnounced() const;
    std::optional<NSError> writeHeader();
    std::optional<NSError> addStream(Track& track);
    static void settleLastDuration(Track& track);
    /// Writes what can be written in order.
    std::optional<NSError> flush();
    Track* nextToWrite();
    std::optional<NSError> close(bool withTrailer);

    const URL m_url;
    const AVFileType m_fileType;
    const MovieLayout m_layout;
    std::mutex m_mutex;
    std::vector<Track> m_tracks;
    AVFormatContext* m_context = nullptr;
    bool m_headerWritten = false;
};

} // namespace anadrome::libav
