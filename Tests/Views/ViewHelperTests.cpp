#include "Views/Common/ViewHelper.h"

#include <QCoreApplication>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace anadrome {

namespace {

class ViewHelperTest : public ::testing::Test {
protected:
    ViewHelperTest() {
        JGProgressHUD::setObserver([this](const JGProgressHUD& hud) {
            if (m_details.empty() || m_details.back() != hud.detailText())
                m_details.push_back(hud.detailText());
        });
    }
    ~ViewHelperTest() override { JGProgressHUD::setObserver({}); }

    std::vector<std::string> m_details;
};

} // namespace

TEST_F(ViewHelperTest, ShowsWholePercentsCutOffInTheOrderOfTheCalls) {
    std::thread([] {
        ViewHelper::showProgressHud();
        for (const float progress : {0.0049F, 0.25F, 0.999F})
            ViewHelper::updateProgress(progress);
    }).join();
    EXPECT_TRUE(m_details.empty()) << "nothing is shown before the main queue runs";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_details, (std::vector<std::string>{"0%", "25%", "99%"}));
    EXPECT_TRUE(ViewHelper::shared().hud().isVisible());
}

TEST_F(ViewHelperTest, AFullPieClosesTheHud) {
    ViewHelper::showProgressHud();
    ViewHelper::updateProgress(1.0F);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_details.back(), "100%");
    EXPECT_FALSE(ViewHelper::shared().hud().isVisible());
    ViewHelper::hideHud();
    QCoreApplication::processEvents();
    EXPECT_FALSE(ViewHelper::shared().hud().isVisible());
}

TEST_F(ViewHelperTest, AFractionThatIsNoNumberIsFatal) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    for (const float progress : {INFINITY, NAN})
        EXPECT_DEATH(
            {
                ViewHelper::updateProgress(progress);
                QCoreApplication::processEvents();
            },
            "no number that can be shown");
}

} // namespace anadrome
