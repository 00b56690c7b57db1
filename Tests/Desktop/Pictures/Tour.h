#pragma once

#include "Desktop/DesktopApp.h"
#include "Desktop/Screens/EditScreen.h"
#include "Desktop/Screens/PreviewScreen.h"
#include "Desktop/Screens/TitleScreen.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIWindow.h"
#include "Tests/Support/EventLoop.h"

#include <QQuickItem>
#include <iostream>

namespace anadrome::desktop {

using namespace std::chrono_literals;
using testing_support::runEventLoopFor;
using testing_support::runEventLoopUntil;

/// The program in its window, and the folder that the pictures go to. What doesn't come ends the process.
class Tour {
public:
    explicit Tour(QString folder) : m_folder(std::move(folder)) {}

    DesktopApp& app() { return m_app; }
    DesktopHost& host() { return m_app.host(); }
    QQuickWindow& window() { return m_app.window(); }
    ShownScreen& screen() { return *host().stack()->top(); }
    /// What lies over the screens.
    template <class Screen = ShownScreen>
    Screen& over() {
        auto* over = qobject_cast<Screen*>(host().presented()->top());
        if (!over)
            fail("There is nothing over the screens, or something else");
        return *over;
    }
    // The screen on top, which has to be that one.
    TitleScreen& titleScreen() { return dynamic_cast<TitleScreen&>(screen()); }
    EditScreen& editScreen() { return dynamic_cast<EditScreen&>(screen()); }
    PreviewScreen& previewScreen() { return dynamic_cast<PreviewScreen&>(screen()); }
    /// Presses a button that has no view behind it.
    void press(const QString& name) {
        QQuickItem* button = findSeen(*window().contentItem(), name);
        if (!button || !QMetaObject::invokeMethod(button, "clicked"))
            fail("Can't press " + name);
    }
    static std::shared_ptr<UIViewController> root() {
        return UIApplication::sharedApplication().windows().at(0)->rootViewController();
    }

    template <typename Condition>
    static void waitFor(const char* what, Condition holds) {
        if (!runEventLoopUntil(holds))
            fail(QString("Waited in vain for ") + what);
    }
    void waitForScreen(const QString& kind) {
        waitFor("a screen", [&] { return screen().kind() == kind && !host().hud()->isVisible(); });
        runEventLoopFor(600ms);
    }
    void openClip(const QUrl& clip) {
        host().openClip(clip);
        waitForScreen("Edit");
        waitFor("the clip to run", [&] { return editScreen().videoSeekBar->value() > 0.5; });
    }
    void closeAll() {
        while (ShownScreen* over = host().presented()->top()) {
            over->close();
            runEventLoopFor(50ms);
        }
        runEventLoopFor(300ms);
    }

    /// What the window shows when its movements are over.
    void picture(const QString& name) {
        runEventLoopFor(600ms);
        pictureNow(name);
    }
    void pictureNow(const QString& name) {
        const QString file =
            QString("%1/%2-%3.png").arg(m_folder).arg(++m_count, 2, 10, QChar('0')).arg(name);
        if (!window().grabWindow().save(file))
            fail("Can't write " + file);
    }

    [[noreturn]] static void fail(const QString& message) {
        std::cerr << message.toStdString() << '\n';
        TemporaryDirectory::remove();
        std::exit(1);
    }

private:
    static QQuickItem* findSeen(QQuickItem& within, const QString& name) {
        if (within.objectName() == name && within.isVisible())
            return &within;
        for (QQuickItem* child : within.childItems())
            if (QQuickItem* found = findSeen(*child, name))
                return found;
        return nullptr;
    }

    const QString m_folder;
    int m_count = 0;
    DesktopApp m_app;
};

} // namespace anadrome::desktop
