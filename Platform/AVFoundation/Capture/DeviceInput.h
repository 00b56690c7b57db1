#pragma once

#include "Platform/AVFoundation/Capture/AVCaptureDevice.h"
#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/CoreMedia/CMTime.h"
#include "Platform/Foundation/Result.h"

#include <chrono>
#include <optional>
#include <stop_token>

namespace anadrome::capture {

/// A device that is being read, and the decoder of what it gives. Opening may block in the device. Reading
/// doesn't in cameras and sound cards, so that it ends soon after it is told to stop. A sound server is read
/// by a library that waits for the next piece of sound, which is a moment away unless the server has nothing
/// to give: then the thread is held, and the input in use, until the server gives something or goes. One
/// thread at a time.
class DeviceInput {
public:
    /// Opens the device and its one stream. A device that is in use is waited for a little: it may be on its
    /// way out of the hands of somebody who has just let go of it.
    static Result<DeviceInput> open(const AVCaptureDevice& device, std::stop_token stop);

    /// Waits for the next picture or run of sound and fills the frame with it. False once stopped, and at the
    /// end, which error() then tells about.
    bool next(AVFrame* frame);

    /// Why there is no more: the device ended, went away, or has given nothing for seconds, which isn't
    /// noticed of a sound server.
    const std::optional<NSError>& error() const { return m_error; }

    /// When the frame was captured, by the wall clock.
    CMTime time(const AVFrame& frame) const;
    /// Pictures a second, 0 if unknown.
    double pictureRate() const;

private:
    DeviceInput(libav::Owned<AVFormatContext> device, libav::Owned<AVCodecContext> codec,
                std::stop_token stop);

    AVStream* stream() const { return m_device->streams[0]; }
    /// Gives the decoder what the device has, if anything, or else waits a moment. False at the end.
    bool feed();

    libav::Owned<AVFormatContext> m_device;
    libav::Owned<AVCodecContext> m_codec;
    libav::Owned<AVPacket> m_packet;
    std::stop_token m_stop;
    std::chrono::steady_clock::time_point m_lastGiven;
    std::optional<NSError> m_error;
};

} // namespace anadrome::capture
