#include "Views/Common/ViewHelper.h"

#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UITabBarController.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RecordingHost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace anadrome {

namespace {

using testing_support::RecordingHost;

/// Also writes down what the HUD in use says.
class HudHost : public RecordingHost {
public:
    void viewChanged(UIView&, double) override {
        const JGProgressHUD& hud = ViewHelper::shared().hud();
        if (hud.superview() && (details.empty() || details.back() != hud.detailTextLabel()->text()))
            details.push_back(hud.detailTextLabel()->text());
    }
    std::vector<std::string> details;
};

class ViewHelperTest : public ::testing::Test {
protected:
    ViewHelperTest() { m_host.show(m_screen); }
    const std::shared_ptr<UIView>& view() { return m_screen->view(); }
    static JGProgressHUD& hud() { return ViewHelper::shared().hud(); }
    template <class Indicator>
    static bool shows() {
        return std::dynamic_pointer_cast<Indicator>(hud().indicatorView()) != nullptr;
    }

    std::shared_ptr<UIViewController> m_screen = std::make_shared<UIViewController>();
    HudHost m_host;
};

} // namespace

TEST_F(ViewHelperTest, ShowsWholePercentsCutOffInTheOrderOfTheCalls) {
    std::thread([this] {
        ViewHelper::showProgressHud("", view());
        for (const float progress : {0.0049F, 0.25F, 0.999F})
            ViewHelper::updateProgress(progress);
    }).join();
    EXPECT_TRUE(m_host.details.empty()) << "nothing is shown before the main queue runs";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_host.details, (std::vector<std::string>{"0%", "25%", "99%"}));
    EXPECT_TRUE(hud().isVisible());
    EXPECT_TRUE(shows<JGProgressHUDPieIndicatorView>());
}

TEST_F(ViewHelperTest, ATickGoesByItselfAfterTwoSeconds) {
    ViewHelper::showSuccessHud(view());
    QElapsedTimer timer;
    timer.start();
    QCoreApplication::processEvents();
    EXPECT_TRUE(shows<JGProgressHUDSuccessIndicatorView>());
    EXPECT_TRUE(testing_support::runEventLoopUntil([] { return !hud().isVisible(); }));
    EXPECT_GE(timer.elapsed(), 1999);
}

TEST_F(ViewHelperTest, AnErrorIsADialogAndASecondOneAtATimeIsLost) {
    std::thread([this] {
        ViewHelper::showError(m_screen, "first");
        ViewHelper::showError(m_screen, "second");
    }).join();
    EXPECT_EQ(m_screen->presentedViewController(), nullptr);
    QCoreApplication::processEvents();
    const auto alert = std::dynamic_pointer_cast<UIAlertController>(m_screen->presentedViewController());
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->message(), "first");
    alert->chooseAction(0);
    EXPECT_EQ(m_screen->presentedViewController(), nullptr);
}

TEST_F(ViewHelperTest, TheTopScreenIsTheRootOfTheTopmostStack) {
    using Controllers = std::vector<std::shared_ptr<UIViewController>>;
    const auto screen = [] { return std::make_shared<UIViewController>(); };
    const auto root = screen();
    const auto stack = std::make_shared<UINavigationController>(root);
    m_host.show(stack);
    stack->pushViewController(screen(), false);
    stack->pushViewController(screen(), false);
    EXPECT_EQ(ViewHelper::topViewController(), root);

    const auto presented = screen();
    stack->presentViewController(presented, false);
    EXPECT_EQ(ViewHelper::topViewController(), presented);

    const auto tabbed = screen();
    const auto plain = screen();
    const auto tabs = std::make_shared<UITabBarController>(
        Controllers{std::make_shared<UINavigationController>(tabbed), plain});
    presented->presentViewController(tabs, false);
    EXPECT_EQ(ViewHelper::topViewController(), tabbed);
    tabs->setSelectedIndex(1);
    EXPECT_EQ(ViewHelper::topViewController(), plain);

    m_host.show(nullptr);
    EXPECT_EQ(ViewHelper::topViewController(), nullptr) << "a window without a root";
}

} // namespace anadrome
