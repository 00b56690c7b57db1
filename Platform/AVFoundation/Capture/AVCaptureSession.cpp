#include "Platform/AVFoundation/Capture/AVCaptureSession.h"

#include "Platform/AVFoundation/Capture/CaptureRun.h"

namespace anadrome {

AVCaptureSession::AVCaptureSession(AVCaptureDevice camera, std::vector<AVCaptureDevice> soundInputs,
                                   Events events)
    : m_run(std::make_shared<capture::CaptureRun>(std::move(camera), std::move(soundInputs),
                                                  std::move(events))) {
    m_run->start();
}

AVCaptureSession::~AVCaptureSession() {
    m_run->stop();
}

void AVCaptureSession::setSink(std::shared_ptr<PictureSink> sink) {
    m_run->setSink(std::move(sink));
}

void AVCaptureSession::startRecording(const URL& file, AVFileType fileType) {
    m_run->stopTake();
    m_run->startTake(file, fileType);
}

void AVCaptureSession::stopRecording() {
    m_run->stopTake();
}

CMTime AVCaptureSession::recordedDuration() const {
    return m_run->takeDuration();
}

} // namespace anadrome
