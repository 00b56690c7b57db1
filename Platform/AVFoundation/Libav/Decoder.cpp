#include "Platform/AVFoundation/Libav/Decoder.h"

#include "Platform/AVFoundation/Libav/Errors.h"

#include <algorithm>
#include <thread>

namespace anadrome::libav {

namespace {

/// As many as there are processors; more than 16 only cost memory.
int decodingThreads() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 16);
}

/// Whether the picture needs others that come before the key frame where decoding began.
bool isLeading(const AVFrame& frame, std::int64_t firstShown) {
    return firstShown != AV_NOPTS_VALUE && frame.best_effort_timestamp != AV_NOPTS_VALUE &&
           frame.best_effort_timestamp < firstShown;
}

} // namespace

Result<Owned<AVCodecContext>> openDecoder(const AVStream* stream, int threads) {
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

bool canDecode(const AVStream* stream) {
    return static_cast<bool>(openDecoder(stream, 1));
}

Result<Decoder> Decoder::open(const URL& url, int streamIndex) {
    Result<InputFile> file = InputFile::open(url);
    if (!file)
        return file.error();
    if (streamIndex >= file->streamCount())
        return makeAVError(AVErrorInvalidSourceMedia);
    for (int i = 0; i < file->streamCount(); ++i)
        file->stream(i)->discard = i == streamIndex ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    Result<Owned<AVCodecContext>> codec = openDecoder(file->stream(streamIndex), decodingThreads());
    if (!codec)
        return codec.error();
    return Decoder(std::move(*file), url, streamIndex, std::move(*codec));
}

Decoder::Decoder(InputFile file, URL url, int streamIndex, Owned<AVCodecContext> codec)
    : m_file(std::move(file)), m_url(std::move(url)), m_streamIndex(streamIndex), m_codec(std::move(codec)),
      m_packet(makePacket()) {}

bool Decoder::next(AVFrame* frame) {
    // Damaged frames are skipped; a decoder that has been told the end and only fails has no more to give.
    for (int failures = 0; failures < 100;) {
        const int received = avcodec_receive_frame(m_codec.get(), frame);
        if (received == 0 && !isLeading(*frame, m_firstShown))
            return true;
        if (received == AVERROR_EOF)
            return false;
        if (received == AVERROR(EAGAIN))
            feed();
        else if (received != 0 && m_drained)
            ++failures;
    }
    return false;
}

bool Decoder::holdPacket(bool keyFrame) {
    while (true) {
        av_packet_unref(m_packet.get());
        const int read = av_read_frame(m_file.context(), m_packet.get());
        if (read < 0) {
            if (read != AVERROR_EOF && read != AVERROR_INVALIDDATA)
                m_error = errorFrom(read, AVErrorInvalidSourceMedia);
            return false;
        }
        const bool mine = m_packet->stream_index == m_streamIndex;
        if (mine && (!keyFrame || (m_packet->flags & AV_PKT_FLAG_KEY)))
            return m_holdsPacket = true;
    }
}

void Decoder::feed() {
    while (m_holdsPacket || holdPacket(false)) {
        m_holdsPacket = false;
        const int sent = avcodec_send_packet(m_codec.get(), m_packet.get());
        av_packet_unref(m_packet.get());
        if (sent >= 0)
            return;
    }
    m_drained = true;
    avcodec_send_packet(m_codec.get(), nullptr);
}

Result<CMTime> Decoder::seek(const CMTime& time) {
    // An index in coding order may lead to a key frame that is shown later, and a format without one leads
    // anywhere: so further back, until the frame is a right one.
    for (double back = 0;; back = back > 0 ? 2 * back : 0.25) {
        const CMTime near = CMTimeSubtract(time, CMTimeMakeWithSeconds(back, 1000));
        const bool fromStart = CMTimeCompare(near, kCMTimeZero) < 0;
        if (std::optional<NSError> error = fromStart ? reopen() : moveTo(near))
            return *error;
        const bool found = holdPacket(true);
        if (!found && !fromStart)
            continue;
        if (!found) {
            // A stream without key frames, as far as it tells: decoded from its first packet.
            const std::optional<NSError> error = reopen();
            return error ? Result<CMTime>(*error) : Result<CMTime>(kCMTimeInvalid);
        }
        const std::int64_t shown = m_packet->pts;
        const CMTime key = m_file.time(m_streamIndex, shown != AV_NOPTS_VALUE ? shown : m_packet->dts);
        if (!fromStart && (!CMTIME_IS_NUMERIC(key) || CMTimeCompare(key, time) > 0))
            continue;
        m_firstShown = shown;
        // The decoder would leave out some of the pictures after a key frame that isn't a stream's first,
        // those that are still inside it when it is told the end. The wrong ones are left out here.
        m_codec->flags |= AV_CODEC_FLAG_OUTPUT_CORRUPT;
        return key;
    }
}

std::optional<NSError> Decoder::moveTo(const CMTime& time) {
    const AVRational timeBase = m_file.stream(m_streamIndex)->time_base;
    const std::int64_t ticks = av_rescale_q(time.value, {1, time.timescale}, timeBase);
    const int moved = av_seek_frame(m_file.context(), m_streamIndex,
                                    ticks + m_file.timestampOffset(m_streamIndex), AVSEEK_FLAG_BACKWARD);
    if (moved < 0)
        return reopen();
    avcodec_flush_buffers(m_codec.get());
    m_holdsPacket = false;
    m_drained = false;
    m_firstShown = AV_NOPTS_VALUE;
    m_error.reset();
    return std::nullopt;
}

std::optional<NSError> Decoder::reopen() {
    Result<Decoder> opened = open(m_url, m_streamIndex);
    if (!opened)
        return opened.error();
    *this = std::move(*opened);
    return std::nullopt;
}

CMTime Decoder::time(const AVFrame& frame) const {
    return m_file.time(m_streamIndex, frame.best_effort_timestamp);
}

} // namespace anadrome::libav
