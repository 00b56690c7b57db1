#pragma once

#include "Desktop/DesktopHost.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace anadrome {
class UIWindowScene;
}

namespace anadrome::desktop {

/// The running program with its window, as long as it lives. One at a time; main thread only.
class DesktopApp {
public:
    DesktopApp();
    ~DesktopApp();
    DesktopApp(const DesktopApp&) = delete;
    DesktopApp& operator=(const DesktopApp&) = delete;

    DesktopHost& host() { return m_host; }
    QQmlEngine& engine() { return *m_engine; }
    QQuickWindow& window() { return *m_window; }

private:
    void launch();
    void showWindow();
    void followAttention();

    DesktopHost m_host;
    std::shared_ptr<UIWindowScene> m_scene;
    std::unique_ptr<QQmlApplicationEngine> m_engine = std::make_unique<QQmlApplicationEngine>();
    QQuickWindow* m_window = nullptr;
};

} // namespace anadrome::desktop
