#include "Platform/AVFoundation/Libav/TrackEncoder.h"

#include "Platform/AVFoundation/Libav/Errors.h"

namespace anadrome::libav {

Result<Owned<AVCodecParameters>> TrackEncoder::parameters() const {
    Owned<AVCodecParameters> parameters = own(avcodec_parameters_alloc());
    if (const int copied = avcodec_parameters_from_context(parameters.get(), context()); copied < 0)
        return errorFrom(copied, AVErrorUnknown);
    return parameters;
}

std::optional<NSError> encodeFrame(AVCodecContext* context, const AVFrame* frame, AVPacket* packet,
                                   const PacketSink& sink) {
    if (const int sent = avcodec_send_frame(context, frame); sent < 0)
        return errorFrom(sent, AVErrorUnknown);
    while (true) {
        const int received = avcodec_receive_packet(context, packet);
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF)
            return std::nullopt;
        if (received < 0)
            return errorFrom(received, AVErrorUnknown);
        std::optional<NSError> refused = sink(*packet);
        av_packet_unref(packet);
        if (refused)
            return refused;
    }
}

} // namespace anadrome::libav
