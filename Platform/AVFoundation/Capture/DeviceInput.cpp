#include "Platform/AVFoundation/Capture/DeviceInput.h"

#include "Platform/AVFoundation/Libav/Decoder.h"
#include "Platform/AVFoundation/Libav/Errors.h"
#include "Platform/AVFoundation/Libav/Log.h"

#include <mutex>
#include <thread>

extern "C" {
#include <libavdevice/avdevice.h>
}

namespace anadrome::capture {

namespace {

using Clock = std::chrono::steady_clock;
using libav::Owned;
using std::chrono::milliseconds;

constexpr milliseconds pauseBetweenReads{2};
constexpr milliseconds longestSilence{5000};
constexpr milliseconds pauseBetweenOpenings{50};
constexpr milliseconds longestBusy{2000};

/// The libav result, negative for an error.
int openOnce(const AVCaptureDevice& device, const AVInputFormat* format, Owned<AVFormatContext>& opened) {
    AVFormatContext* context = avformat_alloc_context();
    context->flags |= AVFMT_FLAG_NONBLOCK;
    AVDictionary* options = nullptr;
    for (const auto& [key, value] : device.options)
        av_dict_set(&options, key.c_str(), value.c_str(), 0);
    const int result = avformat_open_input(&context, device.address.c_str(), format, &options);
    av_dict_free(&options);
    opened.reset(context);
    return result;
}

} // namespace

Result<DeviceInput> DeviceInput::open(const AVCaptureDevice& device, std::stop_token stop) {
    static std::once_flag registration;
    std::call_once(registration, avdevice_register_all);
    libav::routeLibraryLog();
    const AVInputFormat* format = av_find_input_format(device.format.c_str());
    if (!format)
        return makeAVError(AVErrorDeviceNotConnected);

    Owned<AVFormatContext> context;
    int result = openOnce(device, format, context);
    const Clock::time_point patience = Clock::now() + longestBusy;
    while (result == AVERROR(EBUSY) && !stop.stop_requested() && Clock::now() < patience) {
        std::this_thread::sleep_for(pauseBetweenOpenings);
        result = openOnce(device, format, context);
    }
    if (result == AVERROR(EBUSY))
        return makeAVError(AVErrorDeviceInUseByAnotherApplication);
    if (result < 0)
        return libav::errorFrom(result, AVErrorDeviceNotConnected);
    if (context->nb_streams == 0)
        return makeAVError(AVErrorDeviceNotConnected);

    // On one thread: more would hold pictures back, and these are simple to decode.
    Result<Owned<AVCodecContext>> codec = libav::openDecoder(context->streams[0], 1);
    if (!codec)
        return codec.error();
    return DeviceInput(std::move(context), std::move(*codec), std::move(stop));
}

DeviceInput::DeviceInput(Owned<AVFormatContext> device, Owned<AVCodecContext> codec, std::stop_token stop)
    : m_device(std::move(device)), m_codec(std::move(codec)), m_packet(libav::makePacket()),
      m_stop(std::move(stop)), m_lastGiven(Clock::now()) {}

bool DeviceInput::next(AVFrame* frame) {
    while (!m_stop.stop_requested()) {
        if (avcodec_receive_frame(m_codec.get(), frame) == 0)
            return true;
        if (!feed())
            return false;
    }
    return false;
}

bool DeviceInput::feed() {
    av_packet_unref(m_packet.get());
    const int read = av_read_frame(m_device.get(), m_packet.get());
    if (read == AVERROR(EAGAIN) && Clock::now() < m_lastGiven + longestSilence) {
        std::this_thread::sleep_for(pauseBetweenReads);
        return true;
    }
    if (read < 0) {
        m_error = libav::errorFrom(read, AVErrorDeviceWasDisconnected);
        return false;
    }
    m_lastGiven = Clock::now();
    // Nothing is what comes of a damaged picture, and would tell the decoder that this is the end. What it
    // can't read is passed over too.
    if (m_packet->size > 0)
        avcodec_send_packet(m_codec.get(), m_packet.get());
    return true;
}

CMTime DeviceInput::time(const AVFrame& frame) const {
    return libav::timeFrom(frame.best_effort_timestamp, stream()->time_base);
}

double DeviceInput::pictureRate() const {
    const AVRational rate = stream()->avg_frame_rate;
    return rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 0;
}

} // namespace anadrome::capture
