#include "Platform/AVFoundation/Libav/Decoder.h"

#include "Platform/AVFoundation/Libav/Errors.h"

#include <algorithm>
#include <thread>

extern "C" {
#include <libavutil/common.h>
#include <libavutil/samplefmt.h>
}

namespace anadrome::libav {

namespace {

/// As many as there are processors; more than 16 only cost memory.
int decodingThreads() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 16);
}

/// A sound decoder in the middle of a track is right only after some frames; the longest memory is MP3's.
constexpr CMTime soundLeadIn{1, 4, kCMTimeFlags_Valid, 0};

bool isBehind(const AVFrame& frame, const Edit& edit) {
    return !edit.isHeld() && frame.best_effort_timestamp != AV_NOPTS_VALUE &&
           frame.best_effort_timestamp >= edit.mediaEnd();
}

/// Drops the samples of every channel that lie outside. False if none is left.
bool keepSamples(AVFrame& frame, std::int64_t begin, std::int64_t end) {
    if (begin >= end)
        return false;
    const auto format = static_cast<AVSampleFormat>(frame.format);
    if (begin > 0) {
        if (av_frame_make_writable(&frame) < 0)
            throw std::bad_alloc();
        av_samples_copy(frame.extended_data, frame.extended_data, 0, static_cast<int>(begin),
                        static_cast<int>(end - begin), frame.ch_layout.nb_channels, format);
    }
    frame.nb_samples = static_cast<int>(end - begin);
    return true;
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
    if (edits().empty())
        return nextOfMedia(frame);
    while (m_edit < edits().size()) {
        if (!m_isInEdit && !enterEdit())
            continue;
        // Only now, as going there may have begun the file anew.
        const Edit& edit = edits()[m_edit];
        const bool decoded = nextOfMedia(frame);
        if (m_error)
            return false;
        if (!decoded || isBehind(*frame, edit)) {
            av_frame_unref(frame);
            leaveEdit();
        } else if (fitToEdit(*frame, edit)) {
            if (edit.isHeld())
                leaveEdit();
            return true;
        }
    }
    return false;
}

bool Decoder::nextOfMedia(AVFrame* frame) {
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

bool Decoder::enterEdit() {
    const std::size_t index = m_edit;
    const Edit edit = edits()[index];
    if (edit.isEmpty() || (edit.isHeld() && isSound()))
        return leaveEdit();
    const Result<CMTime> key = seekMedia(timeFrom(edit.mediaStart, timeBase()));
    // Going there may have begun the file anew.
    m_edit = key ? index : edits().size();
    m_isInEdit = static_cast<bool>(key);
    if (!key)
        m_error = key.error();
    return m_isInEdit;
}

bool Decoder::leaveEdit() {
    ++m_edit;
    return m_isInEdit = false;
}

bool Decoder::fitToEdit(AVFrame& frame, const Edit& edit) const {
    std::int64_t begin = frame.best_effort_timestamp;
    if (begin == AV_NOPTS_VALUE || (begin < edit.mediaStart && !isSound()))
        return false;
    if (isSound()) {
        const AVRational sample{1, frame.sample_rate};
        const std::int64_t behind = av_rescale_q(av_sat_sub64(edit.mediaEnd(), begin), timeBase(), sample);
        const std::int64_t before =
            av_rescale_q(std::max<std::int64_t>(av_sat_sub64(edit.mediaStart, begin), 0), timeBase(), sample);
        if (!keepSamples(frame, before, std::min<std::int64_t>(behind, frame.nb_samples)))
            return false;
        // At another rate it is heard as a tape that runs faster or slower.
        if (edit.duration != edit.mediaDuration)
            frame.sample_rate = static_cast<int>(std::clamp<std::int64_t>(
                av_rescale(frame.sample_rate, edit.mediaDuration, edit.duration), 1, 768'000));
        begin = std::max(begin, edit.mediaStart);
    }
    frame.pts = frame.best_effort_timestamp = edit.shownAt(begin);
    return true;
}

Result<CMTime> Decoder::seek(const CMTime& time) {
    if (edits().empty())
        return seekMedia(time);
    // A time between two ticks is that of what the first of them shows.
    const std::int64_t ticks = av_rescale_q_rnd(time.value, {1, time.timescale}, timeBase(), AV_ROUND_DOWN);
    std::size_t index = 0;
    for (std::size_t i = 1; i < edits().size(); ++i)
        if (!edits()[i].isEmpty() && (edits()[index].isEmpty() || edits()[i].start <= ticks))
            index = i;
    const Edit edit = edits()[index];
    if (edit.isEmpty())
        return kCMTimeInvalid;
    const Result<CMTime> key = seekMedia(timeFrom(edit.mediaAt(ticks), timeBase()));
    if (!key)
        return key;
    m_edit = index;
    m_isInEdit = true;
    if (!CMTIME_IS_NUMERIC(*key))
        return key;
    const std::int64_t media = av_rescale_q((*key).value, {1, (*key).timescale}, timeBase());
    return timeFrom(edit.shownAt(std::max(media, edit.mediaStart)), timeBase());
}

Result<CMTime> Decoder::seekMedia(const CMTime& place) {
    const CMTime time = isSound() ? CMTimeSubtract(place, soundLeadIn) : place;
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
    const std::int64_t ticks = av_rescale_q(time.value, {1, time.timescale}, timeBase());
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
