#pragma once

#include "Desktop/DesktopApp.h"
#include "Desktop/Screens/EditScreen.h"
#include "Desktop/Screens/FilesScreen.h"
#include "Desktop/Screens/PreviewScreen.h"
#include "Desktop/Screens/TitleScreen.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIWindow.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/Environment.h"
#include "Tests/Support/EventLoop.h"

#include <QQuickItem>
#include <QtTest/qtestkeyboard.h>
#include <QtTest/qtestmouse.h>
#include <fstream>

namespace anadrome::desktop {

/// The whole program in its window, operated by mouse and keys, with folders and preferences of its own. Each
/// test is to run in a process of its own, since a program is launched once.
class WindowTest : public testing_support::ClipTest {
protected:
    explicit WindowTest(const Deployment& deployment = {}) {
        setPrintSink([](std::string_view) {});
        NSUserDefaults::standardUserDefaults().keepInMemory();
        Deployment::setCurrent(deployment);
        m_app = std::make_unique<DesktopApp>();
        m_app->window().requestActivate();
        settle();
    }

    QQuickWindow& window() { return m_app->window(); }
    DesktopHost& host() { return m_app->host(); }

    ShownScreen& screen() { return *host().stack()->top(); }
    // The screen on top, which has to be that one.
    TitleScreen& titleScreen() { return dynamic_cast<TitleScreen&>(screen()); }
    EditScreen& editScreen() { return dynamic_cast<EditScreen&>(screen()); }
    /// What lies over the screens; null if nothing does.
    ShownScreen* over() { return host().presented()->top(); }

    template <typename Condition>
    static bool waitUntil(Condition holds) {
        return testing_support::runEventLoopUntil(holds, std::chrono::seconds(60));
    }
    bool waitForScreen(const QString& kind) {
        // Keys and clicks reach a screen once it has stopped moving.
        return waitUntil([&] { return screen().kind() == kind && !host().hud()->isVisible(); }) && settle();
    }
    static bool settle() {
        testing_support::runEventLoopFor(std::chrono::milliseconds(500));
        return true;
    }

    /// Each item within, rearmost first.
    template <typename Visit>
    static void visit(QQuickItem* item, Visit&& see) {
        see(*item);
        for (QQuickItem* child : item->childItems())
            visit(child, see);
    }

    /// The visible item of that name, in the window's coordinates; empty if there is none.
    QRectF place(const QString& name) {
        QRectF found;
        visit(window().contentItem(), [&](QQuickItem& item) {
            if (item.objectName() == name && item.isVisible())
                found = item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
        });
        return found;
    }
    /// Of an item that shows that text.
    QRectF placeOfText(const QString& text) { return placeOfText(text, window()); }
    static QRectF placeOfText(const QString& text, const QQuickWindow& window) {
        QRectF found;
        visit(window.contentItem(), [&](QQuickItem& item) {
            if (item.property("text").toString() == text && item.isVisible())
                found = item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
        });
        return found;
    }
    void click(const QString& name) {
        ASSERT_FALSE(place(name).isEmpty()) << name.toStdString();
        QTest::mouseClick(&window(), Qt::LeftButton, {}, place(name).center().toPoint());
    }
    void drag(QPointF from, QPointF to) {
        QTest::mousePress(&window(), Qt::LeftButton, {}, from.toPoint());
        for (int step = 1; step <= 8; ++step)
            QTest::mouseMove(&window(), (from + (to - from) * step / 8).toPoint());
        QTest::mouseRelease(&window(), Qt::LeftButton, {}, to.toPoint());
    }
    void press(Qt::Key key) { QTest::keyClick(&window(), key); }

    void openClip(const std::string& clip) {
        host().openClip(QUrl::fromLocalFile(QString::fromStdString(clip)));
        ASSERT_TRUE(waitForScreen("Edit"));
    }

    void present(const std::shared_ptr<UIViewController>& controller) {
        UIApplication::sharedApplication().windows().at(0)->rootViewController()->presentViewController(
            controller, true);
        settle();
    }

    std::string contentsOf(const std::string& name) const {
        std::ifstream file(path(name));
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void write(const std::string& name, const std::string& text) const { std::ofstream(path(name)) << text; }
    static QUrl fileUrl(const std::string& path) { return QUrl::fromLocalFile(QString::fromStdString(path)); }

    const testing_support::Environment m_home{"HOME", m_folder.path()};
    const testing_support::Environment m_state{"XDG_STATE_HOME", m_folder.file("state")};
    const testing_support::Environment m_configuration{"XDG_CONFIG_HOME", m_folder.file("config")};
    std::unique_ptr<DesktopApp> m_app;
};

} // namespace anadrome::desktop
