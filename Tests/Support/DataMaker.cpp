#include "Tests/Support/TrackMakers.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace anadrome::testing_support {

namespace {

AVStream& newStream(AVFormatContext& file) {
    AVStream& stream = *checked(avformat_new_stream(&file, nullptr), "no memory for a track");
    stream.codecpar->codec_type = AVMEDIA_TYPE_DATA;
    stream.codecpar->codec_id = AV_CODEC_ID_BIN_DATA;
    stream.codecpar->codec_tag =
        MKTAG('g', 'p', 'm', 'd'); // the one kind of plain data that the muxer writes
    stream.time_base = {1, 1000};
    return stream;
}

} // namespace

DataMaker::DataMaker(AVFormatContext& file, double startSeconds, double seconds)
    : file_(file), stream_(newStream(file)), startSeconds_(startSeconds), seconds_(seconds) {}

std::optional<double> DataMaker::nextSeconds() const {
    return second_ < seconds_ ? std::optional(startSeconds_ + second_) : std::nullopt;
}

void DataMaker::makeNext() {
    constexpr char kText[] = "timed data piece";
    const PacketPtr packet = makePacket();
    checked(av_new_packet(packet.get(), sizeof kText), "no memory for a packet");
    std::memcpy(packet->data, kText, sizeof kText);
    const double scale = 1 / av_q2d(stream_.time_base);
    packet->pts = packet->dts = std::llround((startSeconds_ + second_) * scale);
    packet->duration = std::llround(std::min(1.0, seconds_ - second_) * scale);
    packet->flags = AV_PKT_FLAG_KEY;
    packet->stream_index = stream_.index;
    checked(av_interleaved_write_frame(&file_, packet.get()), "cannot write to the file");
    ++second_;
}

} // namespace anadrome::testing_support
