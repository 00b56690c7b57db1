#include "Tests/Support/EncodedTrack.h"

#include "Platform/AVFoundation/Libav/LibavVersions.h"

#include <cmath>

namespace anadrome::testing_support {

namespace {

AVStream& newStream(AVFormatContext& file, const AVCodecContext& encoder) {
    AVStream& stream = *checked(avformat_new_stream(&file, nullptr), "no memory for a track");
    checked(avcodec_parameters_from_context(stream.codecpar, &encoder), "cannot describe the track");
    stream.time_base = encoder.time_base;
    return stream;
}

} // namespace

const AVCodec& encoderNamed(const std::string& name) {
    return *checked(avcodec_find_encoder_by_name(name.c_str()), "there is no encoder called " + name);
}

EncodedTrack::EncodedTrack(AVFormatContext& file, CodecPtr encoder, double startSeconds)
    : file_(file), encoder_(std::move(encoder)), stream_(newStream(file, *encoder_)),
      startSeconds_(startSeconds) {}

void EncodedTrack::encode(const AVFrame* frame) {
    if (frame)
        durations_[frame->pts] = libav::durationOf(*frame);
    checked(avcodec_send_frame(encoder_.get(), frame), "cannot encode a frame");
    for (;;) {
        const int result = avcodec_receive_packet(encoder_.get(), packet_.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return;
        checked(result, "cannot encode");
        write(*packet_);
    }
}

void EncodedTrack::write(AVPacket& packet) {
    const auto duration = durations_.extract(packet.pts);
    if (packet.duration == 0 && duration)
        packet.duration = duration.mapped();
    av_packet_rescale_ts(&packet, encoder_->time_base, stream_.time_base);
    const std::int64_t start = std::llround(startSeconds_ / av_q2d(stream_.time_base));
    packet.pts += start;
    packet.dts += start;
    packet.stream_index = stream_.index;
    checked(av_interleaved_write_frame(&file_, &packet), "cannot write to the file");
}

} // namespace anadrome::testing_support
