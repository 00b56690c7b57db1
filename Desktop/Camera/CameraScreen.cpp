#include "Desktop/Camera/CameraScreen.h"

#include "Desktop/Texts.h"
#include "Platform/AVFoundation/AVError.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UIImagePickerController.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Views/Title/TitleViewController.h"

#include <QPointer>
#include <chrono>

namespace anadrome::desktop {

namespace {

constexpr std::chrono::milliseconds elapsedInterval{100};

URL fileForClip() {
    return NSFileManager::defaultManager().temporaryDirectory().appendingPathComponent(
        NSProcessInfo::processInfo().globallyUniqueString() + ".mov");
}

} // namespace

CameraScreen::CameraScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent)
    : ShownScreen(controller, std::move(kind), parent), m_live(new LivePictures(this)) {
    m_elapsing.setInterval(elapsedInterval);
    connect(&m_elapsing, &QTimer::timeout, this, &CameraScreen::elapsedChanged);
    connect(m_live, &LivePictures::surfaceChanged, this, [this] {
        if (m_session)
            m_session->setSink(m_live->surface());
    });
    look();
}

QString CameraScreen::notice() const {
    return m_noticeKey ? Texts::of(m_noticeKey) : QString();
}

double CameraScreen::elapsed() const {
    return m_session ? CMTimeGetSeconds(m_session->recordedDuration()) : 0;
}

void CameraScreen::setState(State state, const char* noticeKey) {
    m_state = state;
    m_noticeKey = noticeKey;
    if (state == Recording)
        m_elapsing.start();
    else
        m_elapsing.stop();
    Q_EMIT changed();
    Q_EMIT elapsedChanged();
}

void CameraScreen::look() {
    setState(Waiting, "CameraOpening");
    DispatchQueue::global(QualityOfService::userInitiated).async([self = QPointer(this)] {
        DispatchQueue::main().async([self, devices = discoverCaptureDevices()] {
            if (self)
                self->found(devices);
        });
    });
}

void CameraScreen::found(AVCaptureDevices devices) {
    m_devices = std::move(devices);
    if (m_devices.cameras.empty())
        return fail("CameraMissing");
    // The one that was on before, if it is still there.
    m_camera = std::min(m_camera, m_devices.cameras.size() - 1);
    openCamera();
}

void CameraScreen::openCamera() {
    setState(Waiting, "CameraOpening");
    m_isCameraGone = false;
    m_session = std::make_unique<AVCaptureSession>(
        m_devices.cameras[m_camera], m_devices.soundInputs,
        AVCaptureSession::Events{
            [this] { setState(Live); }, [this](const NSError& error) { cameraEnded(error); },
            [this](const URL& file, const std::optional<NSError>& error) { recorded(file, error); }});
    m_session->setSink(m_live->surface());
}

void CameraScreen::cameraEnded(const NSError& error) {
    m_isCameraGone = true;
    // What was recorded is on its way.
    if (m_isTaking)
        return setState(Waiting);
    if (m_state == Live)
        return fail("CameraLost");
    fail(error.code() == AVErrorDeviceInUseByAnotherApplication ? "CameraBusy" : "CameraMissing");
}

void CameraScreen::fail(const char* noticeKey) {
    m_session.reset();
    setState(NoCamera, noticeKey);
}

void CameraScreen::record() {
    if (m_state != Live)
        return;
    m_session->startRecording(fileForClip(), AVFileTypeQuickTimeMovie);
    m_isTaking = true;
    setState(Recording);
}

void CameraScreen::stop() {
    if (m_state != Recording)
        return;
    m_session->stopRecording();
    setState(Waiting);
}

void CameraScreen::recorded(const URL& file, const std::optional<NSError>& error) {
    m_isTaking = false;
    if (error && error->code() == AVErrorNoDataCaptured && !m_isCameraGone)
        return setState(Live);
    m_session.reset();
    if (error) {
        NSFileManager::defaultManager().removeItemAtPath(file.path());
        return fail(m_isCameraGone ? "CameraLost" : "RecordingFailed");
    }
    m_clip = new RecordedClip(file, this);
    setState(Recorded, m_isCameraGone ? "CameraGone" : nullptr);
}

void CameraScreen::shutter() {
    switch (m_state) {
    case Live:
        return record();
    case Recording:
        return stop();
    case Recorded:
        return m_clip->player()->toggle();
    default:
        return;
    }
}

void CameraScreen::switchCamera() {
    if (!canSwitch())
        return;
    m_camera = (m_camera + 1) % m_devices.cameras.size();
    openCamera();
}

void CameraScreen::retake() {
    if (m_state != Recorded && m_state != NoCamera)
        return;
    RecordedClip* clip = std::exchange(m_clip, nullptr);
    look();
    // The page that shows it is in the middle of a call, and drops what it shows the clip in first.
    if (clip)
        clip->deleteLater();
}

void CameraScreen::use() {
    const auto picker = controllerAs<UIImagePickerController>();
    if (m_state != Recorded || !picker)
        return;
    m_clip->player()->pause();
    const bool isThere = NSFileManager::defaultManager().fileExistsAtPath(m_clip->file().path());
    picker->finishPicking(isThere ? std::optional(m_clip->file()) : std::nullopt);
}

void CameraScreen::openFile() {
    const auto picker = controllerAs<UIImagePickerController>();
    const auto stack =
        picker ? std::dynamic_pointer_cast<UINavigationController>(picker->presentingViewController())
               : nullptr;
    leave();
    if (stack)
        dynamic_cast<TitleViewController&>(*stack->viewControllers().front()).iCloudTap();
}

void CameraScreen::close() {
    if (m_state == Recording)
        return stop();
    if (m_state == Recorded)
        return askToDiscard();
    if (!m_isTaking)
        leave();
}

void CameraScreen::askToDiscard() {
    const auto picker = controllerAs<UIImagePickerController>();
    if (!picker)
        return;
    m_clip->player()->pause();
    const auto question = std::make_shared<UIAlertController>(NSLocalizedString("DiscardClip"),
                                                              NSLocalizedString("ClipIsKeptNowhere"),
                                                              UIAlertControllerStyle::alert);
    question->addAction({NSLocalizedString("KeepClip"), UIAlertActionStyle::cancel, {}});
    question->addAction(
        {NSLocalizedString("Discard"), UIAlertActionStyle::destructive, [self = QPointer(this)] {
             if (self)
                 self->leave();
         }});
    picker->presentViewController(question, true);
}

void CameraScreen::leave() {
    if (const auto picker = controllerAs<UIImagePickerController>())
        picker->cancel();
}

} // namespace anadrome::desktop
