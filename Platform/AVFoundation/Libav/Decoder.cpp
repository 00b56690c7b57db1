#include "Platform/AVFoundation/Libav/Decoder.h"

#include "Platform/AVFoundation/Libav/Errors.h"

#include <algorithm>
#include <thread>

namespace anadrome::libav {

namespace {

Result<Owned<AVCodecContext>> openCodec(AVStream* stream, int threads) {
    const AVCodec* codec = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!codec)
        return makeAVError(AVErrorDecoderNotFound);
    Owned<AVCodecContext> context = own(avcodec_alloc_context3(codec));
    if (const int copied = avcodec_parameters_to_context(context.get(), stream->codecpar); copied < 0)
        return errorFrom(copied, AVErrorDecoderNotFound);
    context->pkt_timebase = stream->time_base;
    context->framerate = stream->avg_frame_rate;
    context->thread_count = threads;
    if (const int opened = avcodec_open2(context.get(), codec, nullptr); opened < 0)
        return errorFrom(opened, AVErrorDecoderNotFound);
    return context;
}

/// As many as there are processors; more than 16 only cost memory.
int decodingThreads() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 16);
}

} // namespace

bool canDecode(const AVStream* stream) {
    return static_cast<bool>(openCodec(const_cast<AVStream*>(stream), 1));
}

Result<Decoder> Decoder::open(const URL& url, int streamIndex) {
    Result<InputFile> file = InputFile::open(url);
    if (!file)
        return file.error();
    if (streamIndex >= file->streamCount())
        return makeAVError(AVErrorInvalidSourceMedia);
    for (int i = 0; i < file->streamCount(); ++i)
        file->stream(i)->discard = i == streamIndex ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    Result<Owned<AVCodecContext>> codec = openCodec(file->stream(streamIndex), decodingThreads());
    if (!codec)
        return codec.error();
    return Decoder(std::move(*file), streamIndex, std::move(*codec));
}

Decoder::Decoder(InputFile file, int streamIndex, Owned<AVCodecContext> codec)
    : m_file(std::move(file)), m_streamIndex(streamIndex), m_codec(std::move(codec)), m_packet(makePacket()) {
}

bool Decoder::next(AVFrame* frame) {
    // Damaged frames are skipped; a decoder that has been told the end and only fails has no more to give.
    for (int failures = 0; failures < 100;) {
        const int received = avcodec_receive_frame(m_codec.get(), frame);
        if (received == 0)
            return true;
        if (received == AVERROR_EOF)
            return false;
        if (received == AVERROR(EAGAIN))
            feed();
        else if (m_drained)
            ++failures;
    }
    return false;
}

void Decoder::feed() {
    while (true) {
        const int read = av_read_frame(m_file.context(), m_packet.get());
        if (read < 0) {
            if (read != AVERROR_EOF && read != AVERROR_INVALIDDATA)
                m_error = errorFrom(read, AVErrorInvalidSourceMedia);
            m_drained = true;
            avcodec_send_packet(m_codec.get(), nullptr);
            return;
        }
        const bool mine = m_packet->stream_index == m_streamIndex;
        const int sent = mine ? avcodec_send_packet(m_codec.get(), m_packet.get()) : 0;
        av_packet_unref(m_packet.get());
        if (mine && sent >= 0)
            return;
    }
}

CMTime Decoder::time(const AVFrame& frame) const {
    return m_file.time(m_streamIndex, frame.best_effort_timestamp);
}

} // namespace anadrome::libav
