// What the desktop is told of a movie that is being made.

#include "Platform/UIKit/UINavigationController.h"
#include "Tests/Desktop/System/FakeService.h"
#include "Tests/Desktop/System/JobTest.h"
#include "Tests/Views/HeldAds.h"
#include "Views/Common/ViewHelper.h"

#include <QAccessible>
#include <QDBusObjectPath>
#include <filesystem>

namespace anadrome::desktop {

namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr auto notifications = "org.freedesktop.Notifications";
constexpr auto nothing = [] { return QVariantList(); };

/// Hears what docks are told.
class Dock : public QObject {
    Q_OBJECT

public:
    explicit Dock(QDBusConnection connection) {
        connection.connect({}, {}, "com.canonical.Unity.LauncherEntry", "Update", this,
                           SLOT(update(QString, QVariantMap)));
    }
    QList<QVariantMap> updates;

public Q_SLOTS:
    void update(const QString& entry, const QVariantMap& state) {
        if (entry == "application://anadrome.desktop")
            updates.append(state);
    }
};

} // namespace

TEST_F(JobTest, HoldsSleepOffThroughThePortalAndShowsOnTheDockUntilItsEnd) {
    const QDBusObjectPath grant("/org/freedesktop/portal/desktop/request/1");
    FakeService desktop(
        bus(), portal,
        {{"org.freedesktop.portal.Inhibit.Inhibit", [&] { return QVariantList{QVariant::fromValue(grant)}; }},
         {"org.freedesktop.portal.Request.Close", nothing}});
    const Dock dock(bus().service("test.Dock"));
    startJob();
    ASSERT_TRUE(waitUntil([&] { return desktop.calls("Inhibit").size() == 1; }));
    EXPECT_EQ(desktop.calls("Inhibit")[0].arguments().value(1).toUInt(), 4u + 8u);
    EXPECT_TRUE(desktop.calls("Close").isEmpty());

    ASSERT_TRUE(waitForMovie());
    ASSERT_TRUE(waitUntil([&] { return desktop.calls("Close").size() == 1; }));
    EXPECT_EQ(desktop.calls("Close")[0].path(), grant.path());
    ASSERT_GE(dock.updates.size(), 3);
    for (int i = 0; i + 1 < dock.updates.size(); ++i) {
        EXPECT_TRUE(dock.updates[i].value("progress-visible").toBool());
        EXPECT_TRUE(i == 0 || dock.updates[i].value("progress").toDouble() >
                                  dock.updates[i - 1].value("progress").toDouble());
    }
    EXPECT_FALSE(dock.updates.last().value("progress-visible").toBool());
}

TEST_F(JobTest, TellsItsEndToAUserWhoLooksElsewhereUntilTheyComeBack) {
    struct Way {
        const char* service;
        const char* show;
        int titleAt;
        const char* withdraw;
    };
    for (const Way& way : {Way{notifications, "Notify", 3, "CloseNotification"},
                           Way{portal, "AddNotification", 1, "RemoveNotification"}}) {
        SCOPED_TRACE(way.show);
        FakeService desktop(bus(), way.service,
                            {{"org.freedesktop.Notifications.Notify", [] { return QVariantList{7u}; }},
                             {"org.freedesktop.Notifications.CloseNotification", nothing},
                             {"org.freedesktop.portal.Notification.AddNotification", nothing},
                             {"org.freedesktop.portal.Notification.RemoveNotification", nothing}});
        QWindow elsewhere;
        startJob();
        elsewhere.show();
        elsewhere.requestActivate();
        ASSERT_TRUE(waitForMovie());
        ASSERT_TRUE(waitUntil([&] { return desktop.calls(way.show).size() == 1; }));
        EXPECT_FALSE(window().isActive());
        if (way.service == notifications) {
            EXPECT_EQ(desktop.calls("Notify")[0].arguments().value(3), "The movie is ready.");
            desktop.tell("/org/freedesktop/Notifications", notifications, "ActionInvoked", {7u, "default"});
        } else {
            desktop.tell("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Notification",
                         "ActionInvoked", {"job", "default", QVariantList()});
        }
        EXPECT_TRUE(waitUntil([&] { return window().isActive(); })) << "a click brings the window back";
        EXPECT_TRUE(waitUntil([&] { return desktop.calls(way.withdraw).size() == 1; }));
        host().back();
        host().back();
        settle();
    }
}

TEST_F(JobTest, TellsAFailureInItsWordsAndNothingToAUserWhoSeesTheEnd) {
    FakeService desktop(bus(), notifications,
                        {{"org.freedesktop.Notifications.Notify", [] { return QVariantList{7u}; }},
                         {"org.freedesktop.Notifications.CloseNotification", nothing}});
    startJob();
    ASSERT_TRUE(waitForMovie());
    host().back();
    ASSERT_TRUE(waitForScreen("Edit"));
    EXPECT_TRUE(desktop.calls("Notify").isEmpty());

    std::filesystem::resize_file(path("clip.mp4"), 100);
    QWindow elsewhere;
    elsewhere.show();
    elsewhere.requestActivate();
    ASSERT_TRUE(waitUntil([&] { return !window().isActive(); }));
    editScreen().createButton->tap();
    ASSERT_TRUE(waitUntil([&] { return desktop.calls("Notify").size() == 1; }));
    const QVariantList told = desktop.calls("Notify")[0].arguments();
    EXPECT_EQ(told.value(3), "The movie couldn’t be made.");
    EXPECT_FALSE(told.value(4).toString().isEmpty());
}

TEST_F(JobTest, AnAdBeforeTheMovieDelaysNeitherTheNoticeNorTheEndOfTheJob) {
    FakeService desktop(bus(), notifications,
                        {{"org.freedesktop.Notifications.Notify", [] { return QVariantList{7u}; }}});
    const auto ads = std::make_shared<HeldAds>(GADAdFormat::interstitial);
    GADAdSource::setCurrent(ads);
    startJob();
    ads->give({.text = "An ad"});
    QWindow elsewhere;
    elsewhere.show();
    elsewhere.requestActivate();
    ASSERT_TRUE(waitUntil([&] { return over() && over()->kind() == "Ad"; }));
    EXPECT_TRUE(waitUntil([&] { return desktop.calls("Notify").size() == 1; }));
    EXPECT_EQ(desktop.calls("Notify")[0].arguments().value(3), "The movie is ready.");
    EXPECT_TRUE(window().close()) << "without a question";
    GADAdSource::setCurrent(nullptr);
}

TEST_F(JobTest, AJobLastsFromStageToStageAndEndsWithItsScreen) {
    const QDBusObjectPath grant("/org/freedesktop/portal/desktop/request/1");
    FakeService desktop(
        bus(), portal,
        {{"org.freedesktop.portal.Inhibit.Inhibit", [&] { return QVariantList{QVariant::fromValue(grant)}; }},
         {"org.freedesktop.portal.Request.Close", nothing}});
    startJob(900);
    ViewHelper::hideHud();
    ASSERT_TRUE(waitUntil([&] { return !host().hud()->isVisible(); }));
    settle();
    EXPECT_FALSE(host().acceptsClip());
    EXPECT_TRUE(desktop.calls("Close").isEmpty());
    const auto root = UIApplication::sharedApplication().windows().at(0)->rootViewController();
    std::dynamic_pointer_cast<UINavigationController>(root)->popToRootViewControllerAnimated(false);
    EXPECT_FALSE(host().job()->isRunning());
    EXPECT_TRUE(waitUntil([&] { return desktop.calls("Close").size() == 1; }));
    EXPECT_TRUE(host().acceptsClip());
}

TEST_F(JobTest, TheLastStageIsStoppedByTheKeyboardToo) {
    // Large enough for the stage to take a while.
    openClip(clip("clip.mp4", {.width = 640, .height = 360, .frames = 600}));
    click("exifSwitch");
    click("createButton");
    const Hud& hud = *host().hud();
    ASSERT_TRUE(waitUntil([&] { return hud.isVisible() && hud.kind() == "ring"; }));
    press(Qt::Key_Tab);
    const auto* button = QAccessible::queryAccessibleInterface(window().activeFocusItem());
    ASSERT_TRUE(button);
    EXPECT_EQ(button->text(QAccessible::Name), "Stop");
    EXPECT_EQ(button->role(), QAccessible::Button);
    press(Qt::Key_Space);
    ASSERT_TRUE(waitUntil([&] { return !host().job()->isRunning(); }));
    EXPECT_TRUE(waitForScreen("Edit"));
    EXPECT_EQ(over(), nullptr);
}

TEST_F(JobTest, OtherWorkHasNoButtonThatStopsIt) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 30}));
    ViewHelper::showHud(UIApplication::sharedApplication().windows().at(0)->rootViewController()->view());
    settle();
    EXPECT_TRUE(place("stopButton").isEmpty());
    press(Qt::Key_Escape);
    settle();
    EXPECT_TRUE(host().hud()->isVisible());
    EXPECT_EQ(screen().kind(), "Edit");
    ViewHelper::hideHud();
    settle();
}

} // namespace anadrome::desktop

#include "JobSurroundingsTests.moc"
