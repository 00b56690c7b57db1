#include "Platform/AVFoundation/Libav/StreamTiming.h"

#include <algorithm>
#include <cstring>

extern "C" {
#include <libavutil/intreadwrite.h>
}

namespace anadrome::libav {

namespace {

/// A movie cut into fragments: its header tells of the first of them at most.
bool isFragmented(AVIOContext* io) {
    const std::int64_t resume = avio_tell(io);
    const std::int64_t size = avio_size(io);
    bool found = false;
    for (std::int64_t position = 0; position + 8 <= size && !found;) {
        if (avio_seek(io, position, SEEK_SET) < 0)
            break;
        std::int64_t boxSize = avio_rb32(io);
        const std::uint32_t type = avio_rl32(io);
        if (boxSize == 1)
            boxSize = static_cast<std::int64_t>(avio_rb64(io));
        found = type == MKTAG('m', 'o', 'o', 'f');
        if (boxSize < 8 || avio_feof(io) || boxSize > size - position)
            break;
        position += boxSize;
    }
    avio_seek(io, resume, SEEK_SET);
    return found;
}

bool hasWholeIndex(const InputFile& file) {
    return std::strstr(file.context()->iformat->name, "mov") != nullptr && !isFragmented(file.context()->pb);
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
    return timing;
}

/// Widens the timing by one packet.
void add(StreamTiming& timing, const InputFile& file, const AVPacket& packet) {
    if (packet.flags & AV_PKT_FLAG_DISCARD)
        return;
    ++timing.sampleCount;
    timing.byteCount += packet.size;
    const std::int64_t timestamp = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    if (timestamp == AV_NOPTS_VALUE)
        return;
    const AVRational timeBase = file.stream(packet.stream_index)->time_base;
    const CMTime start = file.time(packet.stream_index, timestamp);
    const CMTime end = CMTimeAdd(start, timeFrom(std::max<std::int64_t>(packet.duration, 0), timeBase));
    if (!CMTIME_IS_NUMERIC(start) || !CMTIME_IS_NUMERIC(end))
        return;
    timing.start = CMTIME_IS_VALID(timing.start) ? CMTimeMinimum(timing.start, start) : start;
    timing.end = CMTIME_IS_VALID(timing.end) ? CMTimeMaximum(timing.end, end) : end;
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
