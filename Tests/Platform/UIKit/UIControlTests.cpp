#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UISwitch.h"
#include "Platform/UIKit/UITapGestureRecognizer.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RecordingHost.h"

#include <gtest/gtest.h>
#include <limits>

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
    EXPECT_EQ(slider->value(), 1.0F);
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

TEST_F(UIControlTest, ASliderStaysWithinItsBounds) {
    const struct {
        float minimum, maximum, set, value, lowest, highest;
    } cases[]{
        {0, 1, 2, 1, 0, 1},
        {0, 30.5F, 12.25F, 12.25F, 0, 30.5F},
        {5, 9, 2, 5, 5, 9},
        {5, 3, 4, 3, 3, 3},
        {0, 1, std::numeric_limits<float>::quiet_NaN(), 0, 0, 1},
        {0, std::numeric_limits<float>::quiet_NaN(), 0.5F, 0.5F, 0, 1},
    };
    for (const auto& c : cases) {
        UISlider slider;
        slider.setMinimumValue(c.minimum);
        slider.setMaximumValue(c.maximum);
        slider.setValue(c.set);
        EXPECT_EQ(slider.value(), c.value) << c.minimum << " " << c.maximum;
        EXPECT_EQ(slider.minimumValue(), c.lowest);
        EXPECT_EQ(slider.maximumValue(), c.highest);
    }
    UISlider dragged;
    dragged.setMinimumValue(4);
    EXPECT_EQ(dragged.maximumValue(), 4) << "a minimum takes the maximum along";
}

TEST_F(UIControlTest, SegmentsAndSwitchesTellOfTheUsersChangesAlone) {
    const auto segments = place(std::make_shared<UISegmentedControl>(Lines{"a", "b", "c"}));
    m_detail = [&] { return " " + std::to_string(segments->selectedSegmentIndex()); };
    EXPECT_EQ(segments->selectedSegmentIndex(), UISegmentedControl::noSegment);
    segments->setSelectedSegmentIndex(1);
    for (const long tapped : {1L, 2L, 2L, 3L, -1L, 0L})
        segments->tapSegment(tapped);
    EXPECT_EQ(taken(), (Lines{"changed 2", "changed 0"}));
    segments->setSelectedSegmentIndex(17);
    EXPECT_EQ(segments->selectedSegmentIndex(), UISegmentedControl::noSegment);

    const auto toggle = place(std::make_shared<UISwitch>());
    m_detail = [&] { return toggle->isOn() ? " on" : " off"; };
    toggle->setOn(true);
    toggle->tap();
    toggle->tap();
    EXPECT_EQ(taken(), (Lines{"changed off", "changed on"}));
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

TEST_F(UIControlTest, ChangesOnTheScreenAreToldOnceWithTheirDuration) {
    const auto label = std::make_shared<UILabel>();
    label->setText("unseen");
    m_screen->view()->addSubview(label);
    m_host.changes.clear();
    label->setText("seen");
    label->setText("seen");
    int completions = 0;
    const auto start = std::chrono::steady_clock::now();
    UIView::animateWithDuration(
        0.02, [&] { label->setAlpha(0); }, [&](bool) { ++completions; });
    EXPECT_EQ(label->alpha(), 0);
    label->setHidden(true);
    ASSERT_EQ(m_host.changes.size(), 3u);
    const double durations[]{0, 0.02, 0};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(m_host.changes[i].view, label.get());
        EXPECT_EQ(m_host.changes[i].duration, durations[i]);
    }
    EXPECT_EQ(completions, 0);
    EXPECT_FALSE(runEventLoopUntil([&] { return completions > 0; }, std::chrono::milliseconds(10)));
    EXPECT_TRUE(runEventLoopUntil([&] { return completions > 0; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(19));
    EXPECT_EQ(completions, 1);
}

TEST_F(UIControlTest, ConstraintsBelongToTheNearestCommonView) {
    const auto container = std::make_shared<UIView>();
    const auto inner = std::make_shared<UIView>();
    const auto constraint = inner->widthAnchor().constraintEqualToAnchor(container->widthAnchor());
    container->addSubview(inner);
    m_screen->view()->addSubview(container);
    constraint->setActive(true);
    constraint->setActive(true);
    EXPECT_EQ(container->constraints(), std::vector{constraint});
    EXPECT_EQ(constraint->firstItem(), inner);
    EXPECT_EQ(constraint->secondAttribute(), NSLayoutAttribute::width);
    constraint->setActive(false);
    EXPECT_TRUE(container->constraints().empty());
}

} // namespace anadrome
