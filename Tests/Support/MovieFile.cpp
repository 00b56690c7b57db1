#include "Tests/Support/MovieFile.h"

namespace anadrome::testing_support {

namespace {

CodecPtr openDecoder(const AVStream& stream) {
    const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!codec)
        return nullptr;
    CodecPtr decoder(checked(avcodec_alloc_context3(codec), "no memory for a decoder"));
    checked(avcodec_parameters_to_context(decoder.get(), stream.codecpar), "cannot set a decoder up");
    decoder->pkt_timebase = stream.time_base; // without it the padding of sound is not cut away
    decoder->thread_count = 0;
    checked(avcodec_open2(decoder.get(), codec, nullptr), "cannot open a decoder");
    return decoder;
}

/// Hands on the frames that a packet completes, null asking for those still held back; counts the errors.
int decode(AVCodecContext& decoder, const AVPacket* packet, const std::function<void(const AVFrame&)>& take) {
    int errors = avcodec_send_packet(&decoder, packet) < 0 && packet ? 1 : 0;
    const FramePtr frame = makeFrame();
    for (;;) {
        const int result = avcodec_receive_frame(&decoder, frame.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return errors;
        if (result < 0 || frame->decode_error_flags)
            ++errors;
        if (result >= 0)
            take(*frame);
    }
}

} // namespace

InputFilePtr openMovie(const std::string& path) {
    av_log_set_level(AV_LOG_ERROR);
    AVFormatContext* opened = nullptr;
    checked(avformat_open_input(&opened, path.c_str(), nullptr, nullptr), "cannot open " + path);
    InputFilePtr file(opened);
    checked(avformat_find_stream_info(file.get(), nullptr), "cannot look into " + path);
    return file;
}

double secondsOf(std::int64_t ticks, AVRational timeBase) {
    return ticks == AV_NOPTS_VALUE ? 0 : static_cast<double>(ticks) * av_q2d(timeBase);
}

int forEachFrame(const std::string& path, int track,
                 const std::function<void(const AVFrame&, double)>& take) {
    const InputFilePtr file = openMovie(path);
    const AVStream& stream = *file->streams[track];
    const CodecPtr decoder = openDecoder(stream);
    if (!decoder)
        return 0;
    const auto takeTimed = [&](const AVFrame& frame) {
        take(frame, secondsOf(frame.best_effort_timestamp, stream.time_base));
    };
    int errors = 0;
    for (const PacketPtr packet = makePacket(); av_read_frame(file.get(), packet.get()) >= 0;
         av_packet_unref(packet.get()))
        if (packet->stream_index == track)
            errors += decode(*decoder, packet.get(), takeTimed);
    return errors + decode(*decoder, nullptr, takeTimed);
}

void forEachVideoFrame(const std::string& path, const std::function<void(const AVFrame&, double)>& take) {
    const int track = av_find_best_stream(openMovie(path).get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    forEachFrame(path, checked(track, path + " has no pictures"), take);
}

} // namespace anadrome::testing_support
