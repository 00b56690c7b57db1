#pragma once

#include "Desktop/Camera/LivePictures.h"
#include "Desktop/Camera/RecordedClip.h"
#include "Desktop/Screens/ShownScreen.h"
#include "Platform/AVFoundation/Capture/AVCaptureSession.h"

#include <QTimer>

namespace anadrome::desktop {

/// The camera: looks for one, shows it, records a clip, lets the user look at that and hands it over. The
/// devices are free while a clip is looked at. The clip's file goes with the screen or with the next clip.
class CameraScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(State state READ state NOTIFY changed)
    /// A sentence that the user needs to know now; may be empty.
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(bool canSwitch READ canSwitch NOTIFY changed)
    /// Seconds that are recorded.
    Q_PROPERTY(double elapsed READ elapsed NOTIFY elapsedChanged)
    Q_PROPERTY(anadrome::desktop::LivePictures* live READ live CONSTANT)
    /// Null but in the state Recorded.
    Q_PROPERTY(anadrome::desktop::RecordedClip* clip READ clip NOTIFY changed)

public:
    /// Waiting for a camera or for the end of the file.
    enum State { Waiting, NoCamera, Live, Recording, Recorded };
    Q_ENUM(State)

    CameraScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);

    State state() const { return m_state; }
    QString notice() const;
    bool canSwitch() const { return m_state == Live && m_devices.cameras.size() > 1; }
    double elapsed() const;
    /// Whether there is a clip that is kept nowhere else, or one in the making.
    bool hasClip() const { return m_isTaking || m_clip; }
    LivePictures* live() const { return m_live; }
    RecordedClip* clip() const { return m_clip; }

    // Each is without effect in a state that it doesn't belong to.
    Q_INVOKABLE void record();
    Q_INVOKABLE void stop();
    /// Begins and ends the recording, then plays and pauses the clip.
    Q_INVOKABLE void shutter();
    Q_INVOKABLE void switchCamera();
    /// Drops the clip, if there is one, and looks for a camera anew.
    Q_INVOKABLE void retake();
    Q_INVOKABLE void use();
    /// Leaves the camera for the choice of a file.
    Q_INVOKABLE void openFile();
    /// Ends a recording, asks before a clip is dropped, and else leaves the camera. Without effect while a
    /// clip is on its way.
    void close() override;

Q_SIGNALS:
    void changed();
    void elapsedChanged();

private:
    void leave();
    void askToDiscard();
    void look();
    void found(AVCaptureDevices devices);
    void openCamera();
    void cameraEnded(const NSError& error);
    void recorded(const URL& file, const std::optional<NSError>& error);
    void fail(const char* noticeKey);
    void setState(State state, const char* noticeKey = nullptr);

    State m_state = Waiting;
    const char* m_noticeKey = nullptr;
    AVCaptureDevices m_devices;
    std::size_t m_camera = 0;
    std::unique_ptr<AVCaptureSession> m_session;
    /// From the start of a recording until its file is whole.
    bool m_isTaking = false;
    bool m_isCameraGone = false;
    QTimer m_elapsing;
    LivePictures* m_live;
    RecordedClip* m_clip = nullptr;
};

} // namespace anadrome::desktop
