#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UIConnections.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Platform/UIKit/UIStoryboardScene.h"
#include "Tests/Support/RecordingHost.h"

#include <gtest/gtest.h>

namespace anadrome {

namespace {

using testing_support::RecordingHost;

class Sample : public UIViewController {
public:
    std::weak_ptr<UISlider> slider;
    std::weak_ptr<UILabel> label;
    std::vector<std::string> calls;

protected:
    void declareConnections(UIConnections& connections) override {
        connections.outlet("slider", slider);
        connections.outlet("label", label);
        connections.action("sliderChanged", [this] { calls.push_back("changed"); });
        connections.action("touchUp", [this] { calls.push_back("up"); });
    }
    void viewDidLoad() override { calls.push_back(label.lock()->text()); }
};

UIStoryboardScene sampleScene() {
    return UIStoryboardScene::ofController<Sample>()
        .add<UISlider>("slider", [](UISlider& slider) { slider.setValue(0.5F); },
                       {{UIControlEvents::valueChanged, "sliderChanged"},
                        {UIControlEvents::touchUpInside | UIControlEvents::touchUpOutside, "touchUp"}})
        .add<UILabel>("label", [](UILabel& label) { label.setText("1.0x"); })
        .add<UIButton>("button", {}, {{UIControlEvents::touchUpInside, "touchUp"}});
}

} // namespace

TEST(UIStoryboard, SetsOutletsAndWiresActionsWhenTheViewLoads) {
    UIStoryboard::registerStoryboard("Sample", sampleScene());
    RecordingHost host;
    const auto controller = std::dynamic_pointer_cast<Sample>(
        UIStoryboard::storyboardWithName("Sample").instantiateInitialViewController());
    ASSERT_TRUE(controller);
    EXPECT_TRUE(controller->slider.expired()) << "no outlet is set before the view loads";
    host.show(controller);
    const auto slider = controller->slider.lock();
    EXPECT_EQ(slider->value(), 0.5F);
    EXPECT_EQ(slider->accessibilityIdentifier(), "slider");
    for (const bool isInside : {true, false}) {
        slider->beginTracking();
        slider->endTracking(isInside);
    }
    std::dynamic_pointer_cast<UIButton>(controller->view()->subviews().at(2))->tap();
    EXPECT_EQ(controller->calls, (std::vector<std::string>{"1.0x", "changed", "up", "changed", "up", "up"}));
}

TEST(UIStoryboard, MakesANewScreenEachTimeWhichNothingKeepsAlive) {
    UIStoryboard::registerStoryboard("Sample", sampleScene());
    const UIStoryboard storyboard = UIStoryboard::storyboardWithName("Sample");
    auto controller = storyboard.instantiateInitialViewController();
    EXPECT_NE(controller, storyboard.instantiateInitialViewController());
    const std::weak_ptr<UIViewController> watched = controller;
    const std::shared_ptr<UIView> view = controller->view();
    controller.reset();
    EXPECT_TRUE(watched.expired());
    std::dynamic_pointer_cast<UISlider>(view->subviews().front())
        ->sendActionsForControlEvents(UIControlEvents::valueChanged);
    UIStoryboard::registerStoryboard("Empty", std::nullopt);
    EXPECT_EQ(UIStoryboard::storyboardWithName("Empty").instantiateInitialViewController(), nullptr);
}

TEST(UIStoryboardDeathTest, MistakesInAStoryboardAreFatal) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto load = [](const UIStoryboardScene& scene) {
        UIStoryboard::registerStoryboard("Wrong", scene);
        UIStoryboard::storyboardWithName("Wrong").instantiateInitialViewController()->view();
    };
    const auto withBoth = [] {
        return UIStoryboardScene::ofController<Sample>().add<UISlider>("slider").add<UILabel>("label");
    };
    EXPECT_DEATH(UIStoryboard::storyboardWithName("Nowhere"), "no storyboard named Nowhere");
    EXPECT_DEATH(load(UIStoryboardScene::ofController<Sample>().add<UISlider>("slider")), "outlet label");
    EXPECT_DEATH(load(UIStoryboardScene::ofController<Sample>().add<UILabel>("slider")), "another kind");
    EXPECT_DEATH(load(withBoth().add<UIButton>("x", {}, {{UIControlEvents::touchDown, "unknown"}})),
                 "no action named unknown");
    EXPECT_DEATH(load(withBoth().add<UILabel>("x", {}, {{UIControlEvents::touchDown, "touchUp"}})),
                 "sends no events");
}

} // namespace anadrome
