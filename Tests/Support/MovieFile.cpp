#include "Tests/Support/MovieFile.h"

namespace anadrome::testing_support {

InputFilePtr openMovie(const std::string& path) {
    av_log_set_level(AV_LOG_ERROR);
    AVFormatContext* opened = nullptr;
    checked(avformat_open_input(&opened, path.c_str(), nullptr, nullptr), "cannot open " + path);
    InputFilePtr file(opened);
    checked(avformat_find_stream_info(file.get(), nullptr), "cannot look into " + path);
    return file;
}

bool TrackDecoder::canDecode(const AVStream& stream) {
    return avcodec_find_decoder(stream.codecpar->codec_id) != nullptr;
}

TrackDecoder::TrackDecoder(const AVStream& stream) {
    const AVCodec* codec = checked(avcodec_find_decoder(stream.codecpar->codec_id), "no decoder for a track");
    decoder_.reset(checked(avcodec_alloc_context3(codec), "no memory for a decoder"));
    checked(avcodec_parameters_to_context(decoder_.get(), stream.codecpar), "cannot set a decoder up");
    decoder_->pkt_timebase = stream.time_base; // without it the padding of sound is not cut away
    decoder_->thread_count = 0;
    checked(avcodec_open2(decoder_.get(), codec, nullptr), "cannot open a decoder");
}

void TrackDecoder::decode(const AVPacket* packet, const FrameTaker& take) {
    if (avcodec_send_packet(decoder_.get(), packet) < 0 && packet)
        ++errors_;
    for (;;) {
        const int result = avcodec_receive_frame(decoder_.get(), frame_.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return;
        if (result < 0) {
            ++errors_;
            continue;
        }
        if (frame_->decode_error_flags)
            ++errors_;
        take(*frame_);
    }
}

void forEachVideoFrame(const std::string& path, const std::function<void(const AVFrame&, double)>& take) {
    const InputFilePtr file = openMovie(path);
    const int index = checked(av_find_best_stream(file.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0),
                              path + " has no pictures");
    const AVStream& stream = *file->streams[index];
    const auto takeTimed = [&](const AVFrame& frame) {
        take(frame, static_cast<double>(frame.best_effort_timestamp) * av_q2d(stream.time_base));
    };
    TrackDecoder decoder(stream);
    const PacketPtr packet = makePacket();
    while (av_read_frame(file.get(), packet.get()) >= 0) {
        if (packet->stream_index == index)
            decoder.decode(packet.get(), takeTimed);
        av_packet_unref(packet.get());
    }
    decoder.decode(nullptr, takeTimed);
}

} // namespace anadrome::testing_support
