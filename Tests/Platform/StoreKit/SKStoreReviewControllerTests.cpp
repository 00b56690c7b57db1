#include "Platform/StoreKit/SKStoreReviewController.h"

#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Services/Deployment.h"
#include "Tests/Support/RecordingHost.h"

#include <ctime>
#include <gtest/gtest.h>

namespace anadrome {

namespace {

constexpr long day = 24L * 60 * 60;

class SKStoreReviewControllerTest : public ::testing::Test {
protected:
    SKStoreReviewControllerTest() {
        NSUserDefaults::standardUserDefaults().keepInMemory();
        Deployment::setCurrent({.storeAddress = "https://store.example", .storeIdentifier = "42"});
    }
    ~SKStoreReviewControllerTest() override { Deployment::setCurrent({}); }

    /// Whether the user is asked, after requests that long ago, in days.
    bool asksAfter(const std::vector<long>& daysAgo) {
        std::string times;
        for (const long days : daysAgo)
            times += std::to_string(std::time(nullptr) - days * day) + ' ';
        NSUserDefaults::standardUserDefaults().setString(times, "reviewRequestTimes");
        return asks();
    }
    bool asks() {
        m_host.calls.clear();
        SKStoreReviewController::requestReviewInScene(*m_host.scene());
        return m_host.calls == std::vector<std::string>{"review"};
    }

    testing_support::RecordingHost m_host;
};

} // namespace

TEST_F(SKStoreReviewControllerTest, AsksThreeTimesWithin365Days) {
    EXPECT_TRUE(asksAfter({}));
    EXPECT_TRUE(asks());
    EXPECT_TRUE(asks());
    EXPECT_FALSE(asks());
    EXPECT_FALSE(asksAfter({364, 200, 1}));
    EXPECT_TRUE(asksAfter({366, 200, 1}));
    EXPECT_FALSE(asks()) << "the oldest of them counts no more, this one does";
    EXPECT_TRUE(asksAfter({-1, -2, -3})) << "a clock that was wrong";
}

TEST_F(SKStoreReviewControllerTest, AsksNobodyWithoutAPageToWriteOn) {
    Deployment::setCurrent({.storeAddress = "https://store.example"});
    EXPECT_FALSE(asksAfter({}));
    Deployment::setCurrent({.storeAddress = "https://store.example", .storeIdentifier = "42"});
    EXPECT_TRUE(asks());
}

} // namespace anadrome
