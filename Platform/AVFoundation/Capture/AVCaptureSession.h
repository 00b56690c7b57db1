#pragma once

#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/AVFoundation/Capture/AVCaptureDevice.h"
#include "Platform/AVFoundation/PictureSink.h"
#include "Platform/CoreMedia/CMTime.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"

#include <functional>
#include <memory>
#include <optional>

namespace anadrome {

namespace capture {
class CaptureRun;
}

/// A camera that is on as long as the session lives: its pictures go to a sink, and into a movie while one is
/// recorded. Main thread only, as is every call from it; no operation waits for a device.
class AVCaptureSession {
public:
    /// What becomes of a session; none may be empty. Nothing is told after the session has gone, and nothing
    /// from inside one of its operations.
    struct Events {
        /// The camera gives pictures.
        std::function<void()> started;
        /// It can't be opened, or gives no more. A movie that is being recorded ends here, and is told of
        /// afterwards.
        std::function<void(const NSError& error)> ended;
        /// A recording is over: the movie is whole, or it failed and the file, if there is one, can't be
        /// used.
        std::function<void(const URL& file, const std::optional<NSError>& error)> recorded;
    };

    /// Opens the camera and the first of the sound inputs that can be opened. Without one movies are silent.
    AVCaptureSession(AVCaptureDevice camera, std::vector<AVCaptureDevice> soundInputs, Events events);
    /// Lets go of the devices soon. A movie that isn't whole yet is dropped with its file.
    ~AVCaptureSession();
    AVCaptureSession(const AVCaptureSession&) = delete;
    AVCaptureSession& operator=(const AVCaptureSession&) = delete;

    /// Where the pictures are shown, as '420v' and with the time of capture; null for nowhere. A sink that is
    /// too slow misses some.
    void setSink(std::shared_ptr<PictureSink> sink);

    /// Records into a new file from the next picture on: H.264, and AAC unless there is no sound input; one
    /// that isn't open yet is silent until it is. Times count from the first picture. A recording that goes
    /// on is ended first.
    void startRecording(const URL& file, AVFileType fileType);
    /// Ends the recording; recorded() tells when the movie is whole. Without effect while there is none.
    void stopRecording();
    /// How far the movie that is being recorded goes; zero without one.
    CMTime recordedDuration() const;

private:
    const std::shared_ptr<capture::CaptureRun> m_run;
};

} // namespace anadrome
