#include "Platform/AVFoundation/Libav/StreamTiming.h"

#include <algorithm>
#include <cstring>
#include <optional>

extern "C" {
#include <libavutil/common.h>
}

namespace anadrome::libav {

namespace {

bool hasWholeIndex(const InputFile& file) {
    return std::strstr(file.context()->iformat->name, "mov") != nullptr && !file.isFragmented() &&
           file.hasAppliedEdits();
}

StreamTiming timingFromIndex(const InputFile& file, int index) {
    AVStream* stream = file.stream(index);
    StreamTiming timing;
    const int entries = avformat_index_get_entries_count(stream);
    for (int i = 0; i < entries; ++i) {
        const AVIndexEntry* entry = avformat_index_get_entry(stream, i);
        if (entry->flags & AVINDEX_DISCARD_FRAME)
            continue;
        ++timing.sampleCount;
        timing.byteCount += entry->size;
    }
    const std::int64_t start = stream->start_time == AV_NOPTS_VALUE ? 0 : stream->start_time;
    timing.start = file.time(index, start);
    if (stream->duration > 0)
        timing.end = CMTimeAdd(timing.start, timeFrom(stream->duration, stream->time_base));
    // The demuxer counts an empty edit into the length.
    if (const std::optional<CMTime> end = file.endOfEdits(index); end && CMTIME_IS_NUMERIC(timing.end))
        timing.end = CMTimeMinimum(timing.end, *end);
    return timing;
}

/// Widens the timing by one sample.
void add(StreamTiming& timing, const AVPacket& packet, const CMTime& start, const CMTime& end) {
    ++timing.sampleCount;
    timing.byteCount += packet.size;
    if (!CMTIME_IS_NUMERIC(start) || !CMTIME_IS_NUMERIC(end))
        return;
    timing.start = CMTIME_IS_VALID(timing.start) ? CMTimeMinimum(timing.start, start) : start;
    timing.end = CMTIME_IS_VALID(timing.end) ? CMTimeMaximum(timing.end, end) : end;
}

/// A stretch of ticks.
struct Stretch {
    std::int64_t start;
    std::int64_t end;
};

/// When the edit shows a sample that lasts so long in the media; nothing if it doesn't. The same rules as the
/// Decoder's.
std::optional<Stretch> shownIn(const Edit& edit, const Stretch& media, bool isSound) {
    if (edit.isEmpty())
        return std::nullopt;
    if (edit.isHeld()) {
        const bool isFirst =
            media.start >= edit.mediaStart &&
            media.start < edit.mediaStart + std::max<std::int64_t>(media.end - media.start, 1);
        return isFirst && !isSound ? std::optional(Stretch{edit.start, edit.end()}) : std::nullopt;
    }
    const Stretch cut{isSound ? std::max(media.start, edit.mediaStart) : media.start,
                      std::min(media.end, edit.mediaEnd())};
    const bool isOutside =
        cut.start < edit.mediaStart || cut.start >= edit.mediaEnd() || (isSound && cut.start >= cut.end);
    if (isOutside)
        return std::nullopt;
    return Stretch{edit.shownAt(cut.start), edit.shownAt(cut.end)};
}

void add(StreamTiming& timing, const InputFile& file, const AVPacket& packet) {
    if (packet.flags & AV_PKT_FLAG_DISCARD)
        return;
    const int index = packet.stream_index;
    const AVRational timeBase = file.stream(index)->time_base;
    const std::int64_t start = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    const std::int64_t duration = std::max<std::int64_t>(packet.duration, 0);
    if (start == AV_NOPTS_VALUE || file.edits(index).empty()) {
        const CMTime shown = file.time(index, start);
        add(timing, packet, shown, CMTimeAdd(shown, timeFrom(duration, timeBase)));
        return;
    }
    const bool isSound = file.stream(index)->codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
    for (const Edit& edit : file.edits(index))
        if (const auto shown = shownIn(edit, {start, av_sat_add64(start, duration)}, isSound))
            add(timing, packet, timeFrom(shown->start, timeBase), timeFrom(shown->end, timeBase));
}

std::vector<StreamTiming> timingsFromPackets(const InputFile& file) {
    std::vector<StreamTiming> timings(static_cast<std::size_t>(file.streamCount()));
    const Owned<AVPacket> packet = makePacket();
    while (av_read_frame(file.context(), packet.get()) >= 0) {
        const auto index = static_cast<std::size_t>(packet->stream_index);
        if (index >= timings.size())
            timings.resize(index + 1);
        add(timings[index], file, *packet);
        av_packet_unref(packet.get());
    }
    return timings;
}

} // namespace

std::vector<StreamTiming> readStreamTimings(const InputFile& file) {
    if (!hasWholeIndex(file))
        return timingsFromPackets(file);
    std::vector<StreamTiming> timings;
    for (int i = 0; i < file.streamCount(); ++i)
        timings.push_back(timingFromIndex(file, i));
    return timings;
}

} // namespace anadrome::libav
