#include "Platform/AVFoundation/Libav/MovieMuxer.h"

#include "Platform/AVFoundation/Libav/Errors.h"
#include "Platform/AVFoundation/Libav/LibavVersions.h"
#include "Platform/AVFoundation/Libav/Log.h"
#include "Platform/AVFoundation/Libav/MovieMetadata.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <unistd.h>

extern "C" {
#include <libavutil/opt.h>
}

namespace anadrome::libav {

namespace {

/// The other direction of what TrackFacts reads: 16.16 fixed point, the last column 2.30.
void attachTransform(AVStream& stream, const CGAffineTransform& t) {
    if (t == CGAffineTransformIdentity)
        return;
    const auto fixed = [](double term) { return static_cast<std::int32_t>(std::lround(term * (1 << 16))); };
    const std::int32_t matrix[9] = {fixed(t.a), fixed(t.b),  0,           fixed(t.c), fixed(t.d),
                                    0,          fixed(t.tx), fixed(t.ty), 1 << 30};
    std::uint8_t* data = newSideData(stream, AV_PKT_DATA_DISPLAYMATRIX, sizeof matrix);
    if (data)
        std::copy_n(reinterpret_cast<const std::uint8_t*>(matrix), sizeof matrix, data);
}

std::optional<NSError> createExclusively(const URL& url) {
    const int descriptor = ::open(url.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return errno == EEXIST ? makeAVError(AVErrorFileAlreadyExists)
                               : makeAVError(AVErrorUnknown, NSError::posix(errno));
    ::close(descriptor);
    return std::nullopt;
}

} // namespace

MovieMuxer::MovieMuxer(URL url, AVFileType fileType, std::size_t trackCount, MovieLayout layout)
    : m_url(std::move(url)), m_fileType(fileType), m_layout(std::move(layout)), m_tracks(trackCount) {
    routeLibraryLog();
}

MovieMuxer::~MovieMuxer() {
    close(false);
}

std::optional<NSError> MovieMuxer::open() {
    const std::lock_guard lock(m_mutex);
    if (std::optional<NSError> error = createExclusively(m_url))
        return error;
    const char* format = m_fileType == AVFileTypeQuickTimeMovie ? "mov" : "mp4";
    const std::string name = "file:" + m_url.path();
    if (const int made = avformat_alloc_output_context2(&m_context, nullptr, format, name.c_str()); made < 0)
        return errorFrom(made, AVErrorUnknown);
    if (const int opened = avio_open(&m_context->pb, name.c_str(), AVIO_FLAG_WRITE); opened < 0)
        return errorFrom(opened, AVErrorUnknown);
    return std::nullopt;
}

std::optional<NSError> MovieMuxer::begin(std::size_t track, const TrackEncoder& encoder,
                                         const CGAffineTransform& transform) {
    Result<Owned<AVCodecParameters>> parameters = encoder.parameters();
    if (!parameters)
        return parameters.error();
    const AVCodecContext& context = *encoder.context();
    const std::lock_guard lock(m_mutex);
    Track& begun = m_tracks[track];
    begun.parameters = std::move(*parameters);
    begun.timeBase = context.time_base;
    begun.frameRate = context.framerate;
    begun.transform = transform;
    begun.delay = context.codec_type == AVMEDIA_TYPE_AUDIO ? context.initial_padding : 0;
    return flush();
}

std::optional<NSError> MovieMuxer::write(std::size_t track, AVPacket& packet) {
    Owned<AVPacket> kept = makePacket();
    av_packet_move_ref(kept.get(), &packet);
    const std::lock_guard lock(m_mutex);
    Track& written = m_tracks[track];
    if (written.firstDts == AV_NOPTS_VALUE) {
        written.firstDts = kept->dts;
        // The container's own way to hide the encoder's delay works only for sound that starts at zero. Sound
        // that starts later gets it by showing the first packet, which holds nothing else, at the time of the
        // second.
        if (kept->dts > 0 && written.delay > 0)
            kept->pts += written.delay;
    }
    written.firstPts = std::min(written.firstPts, kept->pts);
    written.endPts = std::max(written.endPts, kept->pts + kept->duration);
    written.packets.push_back(std::move(kept));
    return flush();
}

std::optional<NSError> MovieMuxer::end(std::size_t track) {
    const std::lock_guard lock(m_mutex);
    m_tracks[track].ended = true;
    settleLastDuration(m_tracks[track]);
    return flush();
}

/// The file counts a track's length in decode times, where the last packet need not be the last picture. Its
/// duration is what makes that length come out as the pictures' own.
void MovieMuxer::settleLastDuration(Track& track) {
    if (track.packets.empty())
        return;
    AVPacket& last = *track.packets.back();
    const std::int64_t duration = (track.endPts - track.firstPts) - (last.dts - track.firstDts);
    if (duration > 0)
        last.duration = duration;
}

bool MovieMuxer::allAnnounced() const {
    return std::ranges::all_of(m_tracks, [](const Track& track) { return track.parameters || track.ended; });
}

std::optional<NSError> MovieMuxer::addStream(Track& track) {
    track.stream = avformat_new_stream(m_context, nullptr);
    if (!track.stream)
        return makeAVError(AVErrorOutOfMemory);
    if (const int copied = avcodec_parameters_copy(track.stream->codecpar, track.parameters.get());
        copied < 0)
        return errorFrom(copied, AVErrorUnknown);
    track.stream->time_base = track.timeBase;
    track.stream->avg_frame_rate = track.frameRate;
    if (track.parameters->codec_id == AV_CODEC_ID_HEVC)
        // Parameter sets stand in the sample description alone.
        track.stream->codecpar->codec_tag = MKTAG('h', 'v', 'c', '1');
    attachTransform(*track.stream, track.transform);
    return std::nullopt;
}

std::optional<NSError> MovieMuxer::writeHeader() {
    for (Track& track : m_tracks)
        if (track.parameters)
            if (std::optional<NSError> error = addStream(track))
                return error;
    // The movie's own clock ticks as finely as the pictures', so that a late start is kept to the tick.
    int movieTimescale = 1000;
    for (const Track& track : m_tracks)
        if (track.parameters && track.parameters->codec_type == AVMEDIA_TYPE_VIDEO)
            movieTimescale = std::max(movieTimescale, track.timeBase.den);
    av_opt_set_int(m_context->priv_data, "movie_timescale", movieTimescale, 0);
    if (m_layout.indexFirst)
        av_opt_set(m_context->priv_data, "movflags", "+faststart", 0);
    attachMetadata(m_layout.metadata, *m_context);
    const int written = avformat_write_header(m_context, nullptr);
    if (written < 0)
        return errorFrom(written, AVErrorUnknown);
    settleMetadata(*m_context);
    m_headerWritten = true;
    return std::nullopt;
}

std::optional<NSError> MovieMuxer::flush() {
    const bool anyBegun =
        std::ranges::any_of(m_tracks, [](const Track& track) { return track.parameters != nullptr; });
    if (!m_context || !allAnnounced() || !anyBegun)
        return std::nullopt;
    if (!m_headerWritten)
        if (std::optional<NSError> error = writeHeader())
            return error;
    while (Track* track = nextToWrite()) {
        const Owned<AVPacket> packet = std::move(track->packets.front());
        track->packets.pop_front();
        av_packet_rescale_ts(packet.get(), track->timeBase, track->stream->time_base);
        packet->stream_index = track->stream->index;
        if (const int written = av_write_frame(m_context, packet.get()); written < 0)
            return errorFrom(written, AVErrorUnknown);
    }
    return m_context->pb->error < 0 ? std::optional(errorFrom(m_context->pb->error, AVErrorUnknown))
                                    : std::nullopt;
}

/// The track whose next packet is decoded first, or none while a track that goes on may still come before it.
MovieMuxer::Track* MovieMuxer::nextToWrite() {
    Track* next = nullptr;
    for (Track& track : m_tracks) {
        // The last packet of a track that goes on is held back: it may turn out to be the last of all.
        if (!track.ended && track.packets.size() < 2)
            return nullptr;
        if (track.packets.empty())
            continue;
        if (!next || av_compare_ts(track.packets.front()->dts, track.timeBase, next->packets.front()->dts,
                                   next->timeBase) < 0)
            next = &track;
    }
    return next;
}

std::optional<NSError> MovieMuxer::finish() {
    const std::lock_guard lock(m_mutex);
    if (!m_headerWritten) {
        close(false);
        return makeAVError(AVErrorUnknown, NSError("MediaLibraryErrorDomain", 0, "No sample was written"));
    }
    return close(true);
}

std::optional<NSError> MovieMuxer::close(bool withTrailer) {
    if (!m_context)
        return std::nullopt;
    int result = withTrailer ? av_write_trailer(m_context) : 0;
    if (m_context->pb) {
        if (result >= 0 && m_context->pb->error < 0)
            result = m_context->pb->error;
        const int closed = avio_closep(&m_context->pb);
        result = result < 0 ? result : closed;
    }
    avformat_free_context(m_context);
    m_context = nullptr;
    return result < 0 ? std::optional(errorFrom(result, AVErrorUnknown)) : std::nullopt;
}

} // namespace anadrome::libav
