#include "Tests/Desktop/Window/WindowTest.h"

#include <QAccessible>
#include <cmath>

namespace anadrome::desktop {

using namespace testing_support;

namespace {

const ClipOptions shortClip{.width = 128, .height = 72, .frames = 30};

/// What a screen reader has of an item.
QAccessibleInterface* told(QQuickItem* item) {
    return QAccessible::queryAccessibleInterface(item);
}

void act(QQuickItem* item, const QString& action) {
    told(item)->actionInterface()->doAction(action);
}

} // namespace

class ControlsTest : public WindowTest {
protected:
    QQuickItem* item(const QString& name) {
        QQuickItem* found = nullptr;
        visit(window().contentItem(), [&](QQuickItem& each) {
            if (each.objectName() == name && each.isVisible())
                found = &each;
        });
        return found;
    }
    /// The first one within that is told as such.
    QQuickItem* item(const QString& name, QAccessible::Role role, int index = 0) {
        QQuickItem* found = nullptr;
        visit(item(name), [&](QQuickItem& each) {
            if (const auto* reader = told(&each); reader && reader->role() == role && index-- == 0)
                found = &each;
        });
        return found;
    }
    QString speed() { return editScreen().reverseSpeedValueLabel->text(); }
    QPoint thumbOf(const QString& name) {
        QQuickItem* slide = item(name, QAccessible::Slider);
        const auto number = [slide](const char* property) { return slide->property(property).toDouble(); };
        const double part = (number("place") - number("from")) / (number("to") - number("from"));
        const double inset = number("inset");
        return slide->mapToScene({inset + part * (slide->width() - 2 * inset), slide->height() / 2})
            .toPoint();
    }
    void clickAt(QPointF point) { QTest::mouseClick(&window(), Qt::LeftButton, {}, point.toPoint()); }
    QQuickItem* focusSpeed() {
        QQuickItem* slide = item("reverseSpeedSlider", QAccessible::Slider);
        slide->forceActiveFocus(Qt::TabFocusReason);
        return slide;
    }
};

TEST_F(ControlsTest, TheSignOfPlayAndPauseFadesAsSlowlyAsTheScreenSays) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 300}));
    bool isBetween = false;
    const auto drawn = [&] {
        const auto* sign = item("playPauseSign");
        const double opacity = sign ? sign->opacity() : 0;
        isBetween |= opacity > 0.1 && opacity < 0.9;
        return opacity;
    };
    press(Qt::Key_Space);
    EXPECT_TRUE(waitUntil([&] { return drawn() == 1; }));
    EXPECT_TRUE(std::exchange(isBetween, false));
    press(Qt::Key_Space);
    EXPECT_TRUE(waitUntil([&] { return drawn() == 0; }));
    EXPECT_TRUE(isBetween);
}

TEST_F(ControlsTest, ScreenReadersOperateWhatIsInReachAndAreToldHowItStands) {
    openClip(clip("clip.mp4", shortClip));
    const QString press = QAccessibleActionInterface::pressAction();
    const QString toggle = QAccessibleActionInterface::toggleAction();
    auto& keeps = *editScreen().exifSwitch;
    for (const QString& action : {toggle, press}) {
        const bool before = keeps.isOn();
        act(item("exifSwitch"), action);
        EXPECT_NE(keeps.isOn(), before) << action.toStdString();
        EXPECT_EQ(told(item("exifSwitch"))->state().checked, !before);
        click("exifSwitch");
        EXPECT_EQ(told(item("exifSwitch"))->state().checked, before);
    }
    auto* forward = item("normalSpeedSlider", QAccessible::Slider);
    const double still = editScreen().normalSpeedSlider->value();
    act(forward, QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(editScreen().normalSpeedSlider->value(), still) << "can't be used yet";
    EXPECT_EQ(told(item("exifSwitch"))->role(), QAccessible::CheckBox);
    auto* third = item("outputTypeSegmentedControl", QAccessible::RadioButton, 2);
    act(third, toggle);
    EXPECT_EQ(editScreen().outputTypeSegmentedControl->selected(), 2);
    EXPECT_TRUE(told(third)->state().checked);
    act(item("playerView"), press);
    EXPECT_TRUE(waitUntil([&] { return editScreen().playPauseButtonImageView->alpha() == 1; }));

    auto* slide = item("reverseSpeedSlider", QAccessible::Slider);
    act(slide, QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(speed(), "1.1x");
    auto* range = told(slide)->valueInterface();
    EXPECT_EQ(range->minimumValue().toDouble(), 0);
    EXPECT_EQ(range->maximumValue().toDouble(), 1);
    range->setCurrentValue(1.0);
    EXPECT_EQ(speed(), "10.0x");
    EXPECT_EQ(range->currentValue().toDouble(), 1);
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible(); })) << "the preview is made anew";
    act(slide, QAccessibleActionInterface::decreaseAction());
    act(third, toggle);
    EXPECT_EQ(speed(), "10.0x") << "covered";
    ASSERT_TRUE(waitForScreen("Edit"));

    act(item("createButton"), press);
    EXPECT_TRUE(waitUntil([&] { return host().hud()->isVisible() && host().hud()->kind() == "pie"; }));
    ASSERT_TRUE(waitForScreen("Preview"));
}

TEST_F(ControlsTest, KeysReachEverySpeedThatIsShown) {
    openClip(clip("clip.mp4", shortClip));
    focusSpeed();
    for (int tenths = 11; tenths <= 20; ++tenths) {
        press(Qt::Key_Right);
        EXPECT_EQ(speed(), QString("%1.%2x").arg(tenths / 10).arg(tenths % 10));
    }
    const std::pair<Qt::Key, const char*> cases[] = {
        {Qt::Key_PageDown, "1.0x"}, {Qt::Key_Left, "0.9x"}, {Qt::Key_Down, "0.8x"}, {Qt::Key_Up, "0.9x"},
        {Qt::Key_Home, "0.1x"},     {Qt::Key_Left, "0.1x"}, {Qt::Key_End, "10.0x"}, {Qt::Key_Right, "10.0x"}};
    for (const auto& [key, shown] : cases) {
        press(key);
        EXPECT_EQ(speed(), shown);
    }
}

TEST_F(ControlsTest, ADoubleClickOnASpeedBringsBackTheUsualOne) {
    openClip(clip("clip.mp4", shortClip));
    for (const double part : {0.8, 0.3}) {
        auto* slide = item("reverseSpeedSlider", QAccessible::Slider);
        const QPoint at = slide->mapToScene({slide->width() * part, slide->height() / 2}).toPoint();
        QTest::mouseClick(&window(), Qt::LeftButton, {}, at);
        EXPECT_NE(speed(), "1.0x") << "on the track";
        QTest::mouseDClick(&window(), Qt::LeftButton, {}, at);
        EXPECT_EQ(speed(), "1.0x");
        ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible(); }));
        ASSERT_TRUE(waitForScreen("Edit"));
        // The pointer is past the thumb now: a hand that trembles isn't a drag.
        QTest::mousePress(&window(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(&window(), Qt::LeftButton, {}, at);
        const QString chosen = speed();
        EXPECT_NE(chosen, "1.0x");
        QTest::qWait(20);
        drag(at, at + QPointF(4, 0));
        EXPECT_EQ(speed(), chosen);
        ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible(); }));
        ASSERT_TRUE(waitForScreen("Edit"));
    }
}

TEST_F(ControlsTest, AThumbIsHeldFromThePressToTheReleaseEvenIfItStaysWhereItIs) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 300}));
    int renditions = 0;
    QObject::connect(host().hud(), &Hud::changed, host().hud(), [&, wasVisible = false]() mutable {
        const bool isVisible = host().hud()->isVisible();
        renditions += isVisible && !wasVisible;
        wasVisible = isVisible;
    });
    const auto& speedSlider = *editScreen().reverseSpeedSlider;
    const QPoint speedThumb = thumbOf("reverseSpeedSlider");
    QTest::mousePress(&window(), Qt::LeftButton, {}, speedThumb);
    EXPECT_TRUE(speedSlider.isTracking());
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, speedThumb);
    ASSERT_TRUE(waitUntil([&] { return renditions == 1; })) << "the preview is made anew";
    ASSERT_TRUE(waitForScreen("Edit"));
    EXPECT_FALSE(speedSlider.isTracking());
    EXPECT_EQ(speed(), "1.0x");
    QTest::mouseDClick(&window(), Qt::LeftButton, {}, speedThumb);
    ASSERT_TRUE(waitUntil([&] { return renditions == 2; }));
    ASSERT_TRUE(waitForScreen("Edit"));
    settle();
    EXPECT_EQ(renditions, 2) << "two clicks are one move";

    const auto& bar = *editScreen().videoSeekBar;
    const QPoint seekThumb = thumbOf("videoSeekBar");
    QTest::mousePress(&window(), Qt::LeftButton, {}, seekThumb);
    const double held = bar.value();
    settle();
    EXPECT_EQ(bar.value(), held) << "the preview runs on, the thumb stays with the hand";
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, seekThumb);
    EXPECT_TRUE(waitUntil([&] { return bar.value() > held; }));
}

TEST_F(ControlsTest, ASliderThatIsClickedHasTheKeysAndSegmentsKeepTheirOwn) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 300}));
    auto& bar = *editScreen().videoSeekBar;
    press(Qt::Key_K);
    const QRectF first = place("outputTypeSegmentedControl");
    clickAt({first.left() + 20, first.center().y()});
    settle();
    const double before = bar.value();
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(editScreen().outputTypeSegmentedControl->selected(), 2);
    settle();
    EXPECT_EQ(bar.value(), before) << "the preview stands";
    press(Qt::Key_Tab);
    EXPECT_EQ(window().activeFocusItem(), item("reverseSpeedSlider", QAccessible::Slider)) << "one stop";

    press(Qt::Key_Right);
    EXPECT_EQ(speed(), "1.1x");
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible(); }));
    ASSERT_TRUE(waitForScreen("Edit"));
    auto* seek = item("videoSeekBar", QAccessible::Slider);
    clickAt(seek->mapToScene({seek->width() / 2, seek->height() / 2}));
    EXPECT_EQ(window().activeFocusItem(), seek);
    EXPECT_FALSE(seek->property("visualFocus").toBool());
    press(Qt::Key_K);
    settle();
    const double middle = bar.value();
    press(Qt::Key_Right);
    EXPECT_NEAR(bar.value(), middle + 1.0 / 30, 0.01);
    press(Qt::Key_L);
    EXPECT_NEAR(bar.value(), middle, 0.01);
    press(Qt::Key_J);
    EXPECT_TRUE(waitUntil([&] { return bar.value() > middle + 0.2; }));
}

TEST_F(ControlsTest, ADoubleClickOnTheMovieFillsTheScreenAndLeavesItPlayingOrNot) {
    openClip(clip("clip.mp4", shortClip));
    click("createButton");
    ASSERT_TRUE(waitForScreen("Preview"));
    auto& movie = *qobject_cast<PreviewScreen*>(&screen())->player();
    movie.pause();
    const double before = movie.position();
    QTest::mouseDClick(&window(), Qt::LeftButton, {}, place("moviePlayer").center().toPoint());
    EXPECT_TRUE(waitUntil([&] { return window().visibility() == QWindow::FullScreen; }));
    settle();
    EXPECT_FALSE(movie.isPlaying());
    EXPECT_NEAR(movie.position(), before, 0.2);
    press(Qt::Key_F);
    EXPECT_TRUE(waitUntil([&] { return window().visibility() == QWindow::Windowed; }));
    settle();
    click("moviePlayer");
    EXPECT_TRUE(waitUntil([&] { return movie.isPlaying() || movie.position() != before; }));

    movie.setMuted(true);
    movie.setVolume(0.5);
    press(Qt::Key_Up);
    EXPECT_NEAR(movie.volume(), 0.55, 0.001);
    EXPECT_FALSE(movie.isMuted());
}

TEST_F(ControlsTest, RowsAreWalkedWithTheArrowKeysAndStandStillWhereAllFits) {
    Deployment deployment;
    deployment.makerWebSite = deployment.makerStorePage = "https://example.org";
    Deployment::setCurrent(deployment);
    click("infoButton");
    settle();
    QQuickItem* list = nullptr;
    visit(window().contentItem(), [&](QQuickItem& each) {
        if (each.inherits("QQuickFlickable") && each.isVisible())
            list = &each;
    });
    ASSERT_TRUE(list);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QQuickItem* row = nullptr;
    int rows = 1;
    for (; rows < 20 && row != window().activeFocusItem(); ++rows) {
        row = window().activeFocusItem();
        press(Qt::Key_Down);
    }
    EXPECT_GT(rows, 4);
    EXPECT_NE(row->objectName(), "closeButton");
    EXPECT_EQ(list->property("contentY").toDouble(), 0);
    press(Qt::Key_Up);
    EXPECT_NE(window().activeFocusItem(), row);
}

TEST_F(ControlsTest, AFilledScreenIsLeftToTheMovieUntilTheHandStirs) {
    openClip(clip("clip.mp4", {.width = 128, .height = 72, .frames = 300}));
    click("createButton");
    ASSERT_TRUE(waitForScreen("Preview"));
    auto& movie = *qobject_cast<PreviewScreen*>(&screen())->player();
    const auto strength = [&] { return item("playButton")->parentItem()->opacity(); };
    press(Qt::Key_F);
    QTest::mouseMove(&window(), {100, 100});
    movie.seek(0);
    if (!movie.isPlaying())
        press(Qt::Key_Space);
    EXPECT_TRUE(waitUntil([&] { return strength() == 0 || !movie.isPlaying(); }));
    EXPECT_TRUE(movie.isPlaying());
    QTest::mouseMove(&window(), {120, 120});
    EXPECT_TRUE(waitUntil([&] { return strength() == 1; }));
}

} // namespace anadrome::desktop
