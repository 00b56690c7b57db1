#include "Desktop/System/Appearance.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Platform/UIKit/UIWindow.h"
#include "Tests/Desktop/Window/WindowTest.h"
#include "Tests/Support/MovieReader.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Preview/PreviewViewController.h"

#include <QAccessible>
#include <QQmlComponent>
#include <cmath>
#include <filesystem>
#include <functional>
#include <set>

namespace anadrome::desktop {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

const ClipOptions shortClip{.width = 128, .height = 72, .frames = 30};

UIViewController& root() {
    return *UIApplication::sharedApplication().windows().at(0)->rootViewController();
}

double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

TEST_F(WindowTest, AClipIsOpenedSpedUpMadeAndSavedByMouseAlone) {
    click("iCloudButton");
    ASSERT_TRUE(over() && over()->kind() == "Files");
    // The dialog is the desktop's own; this is what it answers.
    qobject_cast<FilesScreen*>(over())->accept(
        {QUrl::fromLocalFile(QString::fromStdString(clip("clip.mp4", shortClip)))});
    ASSERT_TRUE(waitForScreen("Edit"));

    const QRectF slider = place("reverseSpeedSlider");
    const QPointF thumb(slider.center().x(), slider.bottom() - 22);
    drag(thumb, thumb + QPointF(slider.width() / 18, 0));
    EXPECT_TRUE(waitUntil([&] { return host().hud()->isVisible(); })) << "the preview is made anew";
    ASSERT_TRUE(waitForScreen("Edit"));
    const double speed = editScreen().reverseSpeedValueLabel->text().chopped(1).toDouble();
    EXPECT_NEAR(speed, 2, 0.3);

    click("createButton");
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible() && host().hud()->kind() == "pie"; }));
    ASSERT_TRUE(waitForScreen("Preview"));
    click("saveButton");
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible() && host().hud()->kind() == "tick"; }));

    ASSERT_TRUE(waitUntil([&] { return !placeOfText("Saved in Videos/Anadrome").isEmpty(); }));

    const fs::path library = m_folder.path() / "Videos" / "Anadrome";
    ASSERT_EQ(std::distance(fs::directory_iterator(library), {}), 1);
    const auto movie = readMovie(fs::directory_iterator(library)->path());
    EXPECT_NEAR(movie.video.at(0).durationSeconds, 1 / speed, 0.1);
    EXPECT_GT(movie.video.at(0).frames.front().number, movie.video.at(0).frames.back().number);
}

TEST_F(WindowTest, TheSeekBarOfAMovieIsDividedAsItsRecipeSays) {
    const URL movie = URL::fileURLWithPath(clip("clip.mp4", shortClip));
    const auto stretch = [](double end, bool isBackward) {
        return QVariantMap{{"end", end}, {"backward", isBackward}};
    };
    const std::pair<OutputType, QVariantList> cases[] = {
        {OutputType::reversed, {stretch(1, true)}},
        {OutputType::reversedThenForward, {stretch(0.2, true), stretch(1, false)}},
        {OutputType::forwardThenReversed, {stretch(0.8, false), stretch(1, true)}}};
    for (const auto& [outputType, stretches] : cases) {
        const auto preview = std::dynamic_pointer_cast<PreviewViewController>(
            UIStoryboard::storyboardWithName("Preview").instantiateInitialViewController());
        preview->setCompressedVideoUrl(movie);
        preview->setRecipe(
            *MovieRecipe::make({.outputType = outputType, .reverseSpeed = 2, .normalSpeed = 0.5}));
        dynamic_cast<UINavigationController&>(root()).pushViewController(preview, false);
        EXPECT_EQ(qobject_cast<PreviewScreen*>(&screen())->stretches(), stretches);
    }
}

TEST_F(WindowTest, KeysPlayPauseAndStepThePreview) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 300}));
    auto& icon = *editScreen().playPauseButtonImageView;
    auto& bar = *editScreen().videoSeekBar;
    press(Qt::Key_Space);
    EXPECT_TRUE(waitUntil([&] { return icon.symbol() == "play.circle" && icon.alpha() == 1; }));
    settle();
    const double before = bar.value();
    press(Qt::Key_Right);
    EXPECT_TRUE(waitUntil([&] { return bar.value() > before; }));
    press(Qt::Key_Left);
    EXPECT_TRUE(waitUntil([&] { return std::abs(bar.value() - before) < 0.02; }));
    press(Qt::Key_Space);
    EXPECT_TRUE(waitUntil([&] { return icon.alpha() == 0 && bar.value() > before + 0.2; }));
}

TEST_F(WindowTest, SegmentsAndTheSwitchFollowTheMouseAndOpenTheForwardSpeed) {
    openClip(clip("clip.mp4", shortClip));
    auto& forward = *editScreen().normalSpeedSlider;
    const auto clickSegment = [&](const char* name, double part) {
        const QRectF all = place(name);
        QTest::mouseClick(&window(), Qt::LeftButton, {},
                          QPointF(all.left() + all.width() * part, all.center().y()).toPoint());
    };
    EXPECT_FALSE(forward.isEnabled());
    clickSegment("outputTypeSegmentedControl", 0.9);
    EXPECT_EQ(editScreen().outputTypeSegmentedControl->selected(), 2);
    EXPECT_TRUE(forward.isEnabled());
    clickSegment("fileTypeSegmentedControl", 0.75);
    EXPECT_EQ(editScreen().fileTypeSegmentedControl->selected(), 1);
    click("exifSwitch");
    EXPECT_TRUE(editScreen().exifSwitch->isOn());
}

TEST_F(WindowTest, WhatLiesOverTheScreensTakesTheClicksAndGoesWithEscape) {
    struct Case {
        const char* button;
        const char* kind;
        bool isSheet;
    };
    for (const auto& [button, kind, isSheet] :
         {Case{"cameraButton", "Camera", false}, Case{"libraryButton", "Library", true},
          Case{"infoButton", "Settings", true}, Case{"shareAppButton", "ShareSheet", true}}) {
        SCOPED_TRACE(button);
        for (const bool isLeftByKey : {true, false}) {
            click(button);
            ASSERT_TRUE(over());
            EXPECT_EQ(over()->kind(), kind);
            settle();
            QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(210, 840));
            EXPECT_EQ(host().presented()->count(), 1);
            if (isSheet && !isLeftByKey)
                QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(210, 5));
            else
                press(Qt::Key_Escape);
            EXPECT_TRUE(waitUntil([&] { return host().presented()->count() == 0; }));
            settle();
        }
    }
}

TEST_F(WindowTest, AFileThatIsNoMovieEndsInADialogAndTheWayBackIsOpen) {
    makeClip(path("clip.mp4"), shortClip);
    openClip(path("clip.mp4"));
    fs::resize_file(path("clip.mp4"), 100);
    click("createButton");
    ASSERT_TRUE(waitUntil([&] { return over() && over()->kind() == "Alert"; }));
    settle();
    press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return !over(); }));
    settle();
    click("backButton");
    EXPECT_EQ(screen().kind(), "Title");
}

TEST_F(WindowTest, TheKeysAndTheMouseThatGoBackElsewhereDoSoHereUnlessSomethingLiesOver) {
    const std::string movie = clip("clip.mp4", shortClip);
    const std::function<void()> ways[] = {
        [&] { press(Qt::Key_Escape); }, [&] { QTest::keyClick(&window(), Qt::Key_Left, Qt::AltModifier); },
        [&] { QTest::mouseClick(&window(), Qt::BackButton, {}, QPoint(210, 500)); }};
    for (const auto& goBack : ways) {
        openClip(movie);
        EXPECT_TRUE(window().title().startsWith("clip.mp4"));
        ViewHelper::errorAlert("An error", root());
        settle();
        goBack();
        settle();
        EXPECT_EQ(screen().kind(), "Edit");
        press(Qt::Key_Return);
        settle();
        goBack();
        ASSERT_TRUE(waitUntil([&] { return screen().kind() == "Title"; }));
        settle();
        goBack();
        EXPECT_EQ(screen().kind(), "Title");
    }
}

TEST_F(WindowTest, ALongErrorIsScrolledInTheSmallestWindowAndItsButtonStaysInReach) {
    window().resize(360, 600);
    settle();
    ViewHelper::errorAlert(std::string(3000, 'x'), root());
    settle();
    EXPECT_LE(place("choice0").bottom(), 600);
    EXPECT_GE(place("choice0").top(), 300);
    click("choice0");
    EXPECT_TRUE(waitUntil([&] { return !over(); }));
}

TEST_F(WindowTest, TheCreateButtonLeavesRoomForABannerThatMayCome) {
    const std::string movie = clip("clip.mp4", shortClip);
    openClip(movie);
    const double without = place("createButton").bottom();
    Deployment::setCurrent({.bannerAdUnitID = "banner"});
    openClip(movie);
    EXPECT_GT(without - place("createButton").bottom(), 40);
}

TEST_F(WindowTest, TheTabKeyReachesAllThatCanBeOperatedAndEachHasANameAndARole) {
    const auto check = [&](const char* where) {
        std::set<QQuickItem*> operable;
        visit(window().contentItem(), [&](QQuickItem& item) {
            if (item.activeFocusOnTab() && item.isVisible() && item.isEnabled())
                operable.insert(&item);
        });
        EXPECT_GT(operable.size(), 3u) << where;
        std::set<QQuickItem*> reached;
        for (std::size_t presses = 0; presses < 2 * operable.size(); ++presses) {
            press(Qt::Key_Tab);
            reached.insert(window().activeFocusItem());
        }
        for (QQuickItem* item : operable) {
            const std::string name = item->objectName().toStdString() + " on " + where;
            EXPECT_TRUE(reached.contains(item)) << name;
            const auto* told = QAccessible::queryAccessibleInterface(item);
            ASSERT_TRUE(told) << name;
            EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << name;
            EXPECT_NE(told->role(), QAccessible::NoRole) << name;
        }
    };
    check("Title");
    click("infoButton");
    settle();
    check("Settings");
    press(Qt::Key_Escape);
    settle();
    openClip(clip("clip.mp4", shortClip));
    check("Edit");
    click("createButton");
    ASSERT_TRUE(waitForScreen("Preview"));
    check("Preview");
}

TEST_F(WindowTest, TextsAndControlsStandOutOnEverySurfaceInLightAndDark) {
    QQmlComponent component(&m_app->engine());
    component.setData("import QtQuick\nimport Anadrome\nQtObject { property var theme: Theme }", {});
    const std::unique_ptr<QObject> holder(component.create());
    const auto* theme = holder->property("theme").value<QObject*>();
    auto* appearance =
        m_app->engine().singletonInstance<Appearance*>(qmlTypeId("Anadrome", 1, 0, "Appearance"));
    for (const bool isDark : {false, true}) {
        appearance->setDark(isDark);
        const auto check = [&](const char* ink, const char* surface, double least) {
            EXPECT_GE(
                contrast(theme->property(surface).value<QColor>(), theme->property(ink).value<QColor>()),
                least)
                << ink << " on " << surface << (isDark ? ", dark" : ", light");
        };
        for (const char* surface : {"background", "surface", "raised", "well", "hovered", "chosen"})
            for (const char* ink : {"text", "secondary", "backward", "forward"})
                check(ink, surface, 4.5);
        for (const char* surface : {"background", "surface", "raised"}) {
            check("error", surface, 4.5);
            for (const char* shape : {"groove", "off"})
                check(shape, surface, 3);
        }
        check("primaryInk", "primary", 4.5);
        check("knob", "off", 3);
        check("onKnob", "forward", 3);
        for (const char* ink : {"pictureInk", "pictureSecondary", "pictureBackward", "pictureForward"})
            check(ink, "stage", 4.5);
        check("pictureGroove", "stage", 3);
        check("hudText", "hudCard", 4.5);
        for (const char* ink : {"hudLightText", "hudLightAccent"})
            check(ink, "hudLightCard", 4.5);
        check("pictureInk", "pictureGroove", 4.5);
    }
}

} // namespace anadrome::desktop
