#pragma once

#include "Desktop/DesktopHost.h"
#include "Desktop/System/CloseQuestion.h"
#include "Desktop/System/JobNotice.h"
#include "Desktop/System/LauncherProgress.h"
#include "Desktop/System/SavedNotice.h"
#include "Desktop/System/SleepHold.h"
#include "Desktop/System/StartRequest.h"
#include "Platform/UIKit/UIWindowScene.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace anadrome::desktop {

/// The running program with its window, as long as it lives. One at a time; main thread only.
class DesktopApp {
public:
    DesktopApp();
    ~DesktopApp();
    DesktopApp(const DesktopApp&) = delete;
    DesktopApp& operator=(const DesktopApp&) = delete;

    /// Brings the window to the front, and opens the clip if there is one: the user started the program
    /// again.
    void startAgain(const StartRequest& request);

    DesktopHost& host() { return m_host; }
    QQmlEngine& engine() { return *m_engine; }
    QQuickWindow& window() { return *m_window; }

private:
    void launch();
    void showWindow();
    void followAttention();
    UISceneActivationState attention() const;
    void stayAwakeDuringJobs();

    DesktopHost m_host;
    CloseQuestion m_closeQuestion{m_host};
    SavedNotice m_savedNotice{m_host};
    LauncherProgress m_launcherProgress{*m_host.job()};
    std::optional<SleepHold> m_sleepHold;
    std::shared_ptr<UIWindowScene> m_scene;
    std::unique_ptr<QQmlApplicationEngine> m_engine = std::make_unique<QQmlApplicationEngine>();
    QQuickWindow* m_window = nullptr;
    std::optional<JobNotice> m_jobNotice;
};

} // namespace anadrome::desktop
