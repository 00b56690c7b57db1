#include "Platform/AVFoundation/Libav/MovieTimeline.h"

#include <algorithm>
#include <limits>

extern "C" {
#include <libavutil/intreadwrite.h>
#include <libavutil/macros.h>
#include <libavutil/mathematics.h>
}

namespace anadrome::libav {

namespace {

/// Lasts to the end of any media, and may be added to any time.
constexpr std::int64_t openEnd = std::numeric_limits<std::int64_t>::max() / 8;
/// Of one picture, in seconds: a day.
constexpr std::int64_t longestHold = 86'400;
/// Editors write a few. A list that is longer is left to the demuxer.
constexpr std::uint32_t mostEdits = 1000;

struct Box {
    std::uint32_t type;
    std::int64_t begin;
    std::int64_t end;
};

/// Calls visit(box) for each whole box in turn, with the position at the begin of its content, until that
/// gives false.
template <typename Visit>
void forEachBox(AVIOContext* file, std::int64_t begin, std::int64_t end, Visit visit) {
    for (std::int64_t at = begin; at + 8 <= end;) {
        if (avio_seek(file, at, SEEK_SET) < 0)
            return;
        std::int64_t size = avio_rb32(file);
        const std::uint32_t type = avio_rl32(file);
        const std::int64_t header = size == 1 ? 16 : 8;
        if (size == 1)
            size = static_cast<std::int64_t>(avio_rb64(file));
        if (size < header || avio_feof(file) || size > end - at || !visit(Box{type, at + header, at + size}))
            return;
        at += size;
    }
}

/// An entry of an edit list as it is stored; its duration counts the movie's ticks.
struct StoredEdit {
    std::int64_t duration;
    std::int64_t mediaTime;
    std::int32_t rate; ///< 16.16
};

constexpr std::int32_t unchanged = 1 << 16;

struct Track {
    int id = 0;
    std::uint32_t handler = 0;
    std::int64_t timeScale = 0;
    std::vector<StoredEdit> edits;

    bool isPresented() const {
        return handler == MKTAG('v', 'i', 'd', 'e') || handler == MKTAG('s', 'o', 'u', 'n');
    }
};

class Reader {
public:
    explicit Reader(AVIOContext* file) : m_file(file) {}

    MovieTimeline read() {
        readBoxes(0, avio_size(m_file));
        for (const Track& track : m_tracks)
            if (std::vector<Edit> edits = editsOf(track); !edits.empty() && track.isPresented())
                m_timeline.edits.emplace(track.id, std::move(edits));
        return std::move(m_timeline);
    }

private:
    void readBoxes(std::int64_t begin, std::int64_t end) {
        // What is wanted lies within three boxes; a damaged file may nest them as deep as it is long.
        if (m_depth == 4)
            return;
        ++m_depth;
        forEachBox(m_file, begin, end, [this](const Box& box) { return readBox(box); });
        --m_depth;
    }

    /// False where nothing further needs to be read.
    bool readBox(const Box& box) {
        switch (box.type) {
        case MKTAG('t', 'r', 'a', 'k'):
            m_tracks.emplace_back();
            [[fallthrough]];
        case MKTAG('m', 'o', 'o', 'v'):
        case MKTAG('m', 'd', 'i', 'a'):
        case MKTAG('e', 'd', 't', 's'):
            readBoxes(box.begin, box.end);
            return true;
        case MKTAG('m', 'o', 'o', 'f'):
            m_timeline.isFragmented = true;
            return false;
        case MKTAG('m', 'v', 'h', 'd'):
            m_timeScale = readTimeScale();
            return true;
        default:
            if (!m_tracks.empty())
                readTrackBox(box, m_tracks.back());
            return true;
        }
    }

    void readTrackBox(const Box& box, Track& track) {
        if (box.type == MKTAG('t', 'k', 'h', 'd')) {
            skipDates();
            track.id = static_cast<int>(avio_rb32(m_file));
        } else if (box.type == MKTAG('m', 'd', 'h', 'd')) {
            track.timeScale = readTimeScale();
        } else if (box.type == MKTAG('h', 'd', 'l', 'r') && track.handler == 0) {
            avio_skip(m_file, 8);
            track.handler = avio_rl32(m_file);
        } else if (box.type == MKTAG('e', 'l', 's', 't')) {
            readEdits(box, track);
        }
    }

    /// Version and flags, and when something was made and changed.
    void skipDates() {
        const bool isLong = avio_r8(m_file) == 1;
        avio_skip(m_file, 3 + (isLong ? 16 : 8));
    }

    std::int64_t readTimeScale() {
        skipDates();
        return avio_rb32(m_file);
    }

    void readEdits(const Box& box, Track& track) {
        const bool isLong = avio_r8(m_file) == 1;
        avio_skip(m_file, 3);
        const std::uint32_t count = avio_rb32(m_file);
        if (count > mostEdits || count * (isLong ? 20 : 12) > box.end - box.begin - 8)
            return;
        for (std::uint32_t i = 0; i < count; ++i) {
            StoredEdit edit{};
            edit.duration = isLong ? static_cast<std::int64_t>(avio_rb64(m_file)) : avio_rb32(m_file);
            edit.mediaTime = isLong ? static_cast<std::int64_t>(avio_rb64(m_file))
                                    : static_cast<std::int32_t>(avio_rb32(m_file));
            edit.rate = static_cast<std::int32_t>(avio_rb32(m_file));
            track.edits.push_back(edit);
        }
    }

    /// None for a list that can't be meant.
    std::vector<Edit> editsOf(const Track& track) const {
        if (m_timeScale <= 0 || track.timeScale <= 0)
            return {};
        std::vector<Edit> edits;
        // Summed up as the movie counts, so that no rounding adds up.
        std::int64_t begin = 0;
        for (std::size_t i = 0; i < track.edits.size(); ++i) {
            const StoredEdit& stored = track.edits[i];
            const bool isLast = i + 1 == track.edits.size();
            if (stored.duration < 0 || stored.duration > openEnd || stored.mediaTime > openEnd ||
                begin + stored.duration > openEnd)
                return {};
            Edit edit;
            edit.mediaStart = stored.mediaTime;
            edit.start = av_rescale(begin, track.timeScale, m_timeScale);
            begin += stored.duration;
            const std::int64_t end = av_rescale(begin, track.timeScale, m_timeScale);
            // What overflows comes out negative.
            if (edit.start < 0 || end < edit.start || end > openEnd)
                return {};
            edit.duration = end - edit.start;
            // A header says nothing of fragments that were yet to be written.
            if (!edit.isEmpty() && isLast && (stored.duration == 0 || m_timeline.isFragmented))
                edit.duration =
                    stored.rate > unchanged ? av_rescale(openEnd, unchanged, stored.rate) : openEnd;
            if (stored.rate == 0 && !edit.isOpen() && edit.duration > longestHold * track.timeScale)
                return {};
            edit.mediaDuration = mediaDurationOf(edit, stored.rate);
            if (edit.duration > 0)
                edits.push_back(edit);
        }
        return edits;
    }

    static std::int64_t mediaDurationOf(const Edit& edit, std::int32_t rate) {
        if (rate == unchanged || !isSane(rate, edit))
            return edit.duration;
        const std::int64_t duration = av_rescale(edit.duration, rate, unchanged);
        return duration < 0 ? openEnd : std::min(duration, openEnd);
    }

    /// Other rates are damage, and could make a movie of years: a picture isn't held without an end.
    static bool isSane(std::int32_t rate, const Edit& edit) {
        return rate == 0 ? !edit.isOpen() : rate >= unchanged / 100 && rate <= unchanged * 100;
    }

    AVIOContext* m_file;
    int m_depth = 0;
    std::int64_t m_timeScale = 0;
    std::vector<Track> m_tracks;
    MovieTimeline m_timeline;
};

bool isPlain(const std::vector<Edit>& edits) {
    const std::size_t first = edits.front().isEmpty() ? 1 : 0;
    if (edits.size() != first + 1)
        return edits.size() == first;
    const Edit& edit = edits[first];
    return !edit.isEmpty() && edit.duration == edit.mediaDuration && !edit.isOpen();
}

} // namespace

bool Edit::isOpen() const {
    return std::max(duration, mediaDuration) >= openEnd;
}

std::int64_t Edit::shownAt(std::int64_t mediaTime) const {
    const std::int64_t behind = mediaTime - mediaStart;
    if (duration == mediaDuration)
        return start + behind;
    return start + (isHeld() ? 0 : av_rescale(behind, duration, mediaDuration));
}

std::int64_t Edit::mediaAt(std::int64_t time) const {
    const std::int64_t behind = std::clamp<std::int64_t>(time - start, 0, duration);
    return mediaStart + (duration == mediaDuration ? behind : av_rescale(behind, mediaDuration, duration));
}

bool MovieTimeline::isKnownToDemuxer() const {
    return std::ranges::all_of(edits,
                               [this](const auto& track) { return !isFragmented && isPlain(track.second); });
}

MovieTimeline readMovieTimeline(AVIOContext* file) {
    const std::int64_t resume = avio_tell(file);
    MovieTimeline timeline = Reader(file).read();
    avio_seek(file, resume, SEEK_SET);
    return timeline;
}

} // namespace anadrome::libav
