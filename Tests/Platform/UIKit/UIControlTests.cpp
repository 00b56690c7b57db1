#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UITapGestureRecognizer.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RecordingHost.h"

#include <gtest/gtest.h>

namespace anadrome {

namespace {

using testing_support::RecordingHost;
using testing_support::runEventLoopUntil;
using Lines = std::vector<std::string>;

class UIControlTest : public ::testing::Test {
protected:
    UIControlTest() { m_host.show(m_screen); }

    /// Puts a control on the screen, whose events are written down.
    template <class Control>
    std::shared_ptr<Control> place(std::shared_ptr<Control> control) {
        const std::pair<UIControlEvents, std::string> names[]{{UIControlEvents::touchDown, "down"},
                                                              {UIControlEvents::valueChanged, "changed"},
                                                              {UIControlEvents::touchUpInside, "up"},
                                                              {UIControlEvents::touchUpOutside, "up outside"},
                                                              {UIControlEvents::touchCancel, "cancel"}};
        for (const auto& [event, name] : names)
            control->addAction(event, [this, name = name] { m_events.push_back(name + m_detail()); });
        m_screen->view()->addSubview(control);
        return control;
    }
    Lines taken() { return std::exchange(m_events, {}); }

    RecordingHost m_host;
    std::shared_ptr<UIViewController> m_screen = std::make_shared<UIViewController>();
    std::function<std::string()> m_detail = [] { return ""; };
    Lines m_events;
};

} // namespace

TEST_F(UIControlTest, ASliderTellsOfTheHandAloneAndLetsGoBeforeItSaysSo) {
    const auto slider = place(std::make_shared<UISlider>());
    m_detail = [&] { return slider->isTracking() ? " held" : ""; };
    slider->trackTo(0.3F);
    slider->endTracking();
    slider->setValue(0.5F);
    EXPECT_EQ(taken(), Lines{}) << "nobody holds it";
    EXPECT_TRUE(slider->beginTracking());
    EXPECT_FALSE(slider->beginTracking());
    slider->trackTo(0.6F);
    slider->trackTo(0.6F);
    slider->trackTo(7);
    slider->endTracking();
    EXPECT_EQ(taken(), (Lines{"down held", "changed held", "changed held", "changed", "up"}));
    slider->beginTracking();
    slider->endTracking(false);
    EXPECT_EQ(taken(), (Lines{"down held", "changed", "up outside"}));
    slider->beginTracking();
    slider->setEnabled(false);
    EXPECT_EQ(taken(), (Lines{"down held", "cancel"}));
    EXPECT_FALSE(slider->beginTracking());
}

TEST_F(UIControlTest, OnlyWhatIsInReachCanBeTapped) {
    const auto button = place(std::make_shared<UIButton>());
    const auto& view = m_screen->view();
    button->tap();
    EXPECT_EQ(taken(), (Lines{"down", "up"}));
    const std::pair<const char*, std::function<void(bool)>> obstacles[]{
        {"disabled", [&](bool on) { button->setEnabled(!on); }},
        {"hidden", [&](bool on) { view->setHidden(on); }},
        {"faint", [&](bool on) { button->setAlpha(on ? 0 : 0.3); }},
        {"without interaction", [&](bool on) { view->setUserInteractionEnabled(!on); }},
        {"off the screen", [&](bool on) { m_host.show(on ? nullptr : m_screen); }},
    };
    for (const auto& [name, place] : obstacles) {
        place(true);
        button->tap();
        EXPECT_EQ(taken(), Lines{}) << name;
        place(false);
        button->tap();
        EXPECT_EQ(taken(), (Lines{"down", "up"})) << "no more " << name;
    }
    int taps = 0;
    const auto recogniser = std::make_shared<UITapGestureRecognizer>([&] { ++taps; });
    recogniser->tap();
    view->addGestureRecognizer(recogniser);
    recogniser->tap();
    recogniser->setEnabled(false);
    recogniser->tap();
    EXPECT_EQ(taps, 1);
}

TEST_F(UIControlTest, AControlSurvivesAnActionThatTakesItOffTheScreen) {
    std::weak_ptr<UISlider> watched;
    {
        const auto slider = place(std::make_shared<UISlider>());
        watched = slider;
        slider->addAction(UIControlEvents::valueChanged, [&] { watched.lock()->removeFromSuperview(); });
        slider->beginTracking();
    }
    watched.lock()->endTracking();
    EXPECT_EQ(taken(), (Lines{"down", "changed", "up"}));
    EXPECT_TRUE(watched.expired());
}

TEST_F(UIControlTest, AnActionIsCalledAsLongAsItsTargetLives) {
    struct Target : std::enable_shared_from_this<Target> {
        explicit Target(int& taps) : taps(taps) {}
        void tapped() { ++taps; }
        int& taps;
    };
    int taps = 0;
    auto target = std::make_shared<Target>(taps);
    const auto button = place(std::make_shared<UIButton>());
    button->addTarget(*target, &Target::tapped, UIControlEvents::touchUpInside);
    button->tap();
    target.reset();
    button->tap();
    EXPECT_EQ(taps, 1);
}

TEST_F(UIControlTest, ChangesOnTheScreenAreToldOnceWithTheirDuration) {
    const auto label = std::make_shared<UILabel>();
    label->setText("unseen");
    m_screen->view()->addSubview(label);
    m_host.changes.clear();
    label->setText("seen");
    label->setText("seen");
    int completions = 0;
    UIView::animateWithDuration(
        0.02, [&] { label->setAlpha(0); }, [&](bool) { ++completions; });
    label->setHidden(true);
    ASSERT_EQ(m_host.changes.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(m_host.changes[i].view, label.get());
        EXPECT_EQ(m_host.changes[i].duration, i == 1 ? 0.02 : 0);
    }
    EXPECT_FALSE(runEventLoopUntil([&] { return completions > 0; }, std::chrono::milliseconds(10)));
    EXPECT_TRUE(runEventLoopUntil([&] { return completions > 0; }));
}

} // namespace anadrome
