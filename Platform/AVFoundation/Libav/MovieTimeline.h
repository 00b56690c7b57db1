#pragma once

#include <cstdint>
#include <map>
#include <vector>

extern "C" {
#include <libavformat/avio.h>
}

namespace anadrome::libav {

/// A stretch of a track's timeline and the stretch of its media that is shown there, in the track's ticks.
struct Edit {
    std::int64_t start = 0;
    std::int64_t duration = 0;
    /// Negative in an empty edit, which shows nothing.
    std::int64_t mediaStart = 0;
    /// Other than the duration where the media runs at another rate. Zero holds one picture for the whole
    /// edit.
    std::int64_t mediaDuration = 0;

    bool isEmpty() const { return mediaStart < 0; }
    /// Whether it lasts as long as there is media.
    bool isOpen() const;
    bool isHeld() const { return mediaDuration == 0; }
    std::int64_t mediaEnd() const { return mediaStart + mediaDuration; }
    std::int64_t end() const { return start + duration; }
    /// When a time of the media is shown, within the edit.
    std::int64_t shownAt(std::int64_t mediaTime) const;
    /// The time of the media that is shown then, within the edit.
    std::int64_t mediaAt(std::int64_t time) const;
};

/// What an MP4 or QuickTime movie says of its tracks' timelines.
struct MovieTimeline {
    /// Cut into fragments: the header describes at most the first of them.
    bool isFragmented = false;
    /// The edits of pictures and sound by track ID, in presentation order. Without an entry the media is
    /// shown as it is.
    std::map<int, std::vector<Edit>> edits;

    /// Whether the demuxer presents the movie as it is meant. It knows an empty edit followed by one at the
    /// media's own rate; in a fragmented movie it leaves in what lies before the edit, it ignores rates, and
    /// some decoders fail where it joins edits.
    bool isKnownToDemuxer() const;
};

/// Reads the boxes of a file and leaves its position as it was. Empty for what isn't such a movie, as far as
/// it can't be read.
MovieTimeline readMovieTimeline(AVIOContext* file);

} // namespace anadrome::libav
