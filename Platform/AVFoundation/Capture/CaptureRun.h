#pragma once

#include "Platform/AVFoundation/Capture/AVCaptureSession.h"
#include "Platform/AVFoundation/Capture/PictureRelay.h"
#include "Platform/AVFoundation/Capture/Take.h"

#include <atomic>
#include <stop_token>

namespace anadrome::capture {

class DeviceInput;

/// What an AVCaptureSession does on threads of its own, one for pictures and one for sound. They hold the run
/// alive, so a device that blocks holds up nobody but its thread.
class CaptureRun : public std::enable_shared_from_this<CaptureRun> {
public:
    CaptureRun(AVCaptureDevice camera, std::vector<AVCaptureDevice> soundInputs,
               AVCaptureSession::Events events)
        : m_camera(std::move(camera)), m_soundInputs(std::move(soundInputs)), m_events(std::move(events)),
          m_mayHaveSound(!m_soundInputs.empty()) {}

    // Main thread only.
    void start();
    /// Nothing is told any more. The take that is being made goes, and its file with it.
    void stop();
    void setSink(std::shared_ptr<PictureSink> sink) { m_relay->setSink(std::move(sink)); }
    void startTake(const URL& file, AVFileType fileType);
    CMTime takeDuration() const;

    /// Any thread. Without effect while no take is made.
    void stopTake();

private:
    void readPictures();
    void readPicturesFrom(DeviceInput& camera);
    void takePicture(const CMSampleBufferRef& picture);
    void readSound();
    void readSoundFrom(DeviceInput& input);
    void end(const NSError& error);

    std::shared_ptr<Take> take() const;
    /// Tells on the main thread, unless the run is stopped by then.
    template <typename Tell>
    void onMain(Tell tell);

    const AVCaptureDevice m_camera;
    const std::vector<AVCaptureDevice> m_soundInputs;
    AVCaptureSession::Events m_events;
    const std::shared_ptr<PictureRelay> m_relay = std::make_shared<PictureRelay>();
    std::stop_source m_stop;
    /// A sound input is open, or one is still being tried.
    std::atomic<bool> m_mayHaveSound;

    mutable std::mutex m_mutex;
    std::shared_ptr<Take> m_take;
    bool m_hasEnded = false;
};

} // namespace anadrome::capture
