#include "Platform/Services/Ads/GADBannerView.h"
#include "Platform/UIKit/UIScreen.h"
#include "Tests/Views/HeldAds.h"
#include "Tests/Views/ScreenTest.h"

namespace anadrome {

namespace {

class BannerTest : public ScreenTest {
protected:
    BannerTest() {
        Deployment deployment;
        deployment.bannerAdUnitID = "banner/1";
        Deployment::setCurrent(std::move(deployment));
        GADAdSource::setCurrent(m_ads);
    }
    ~BannerTest() override {
        GADAdSource::setCurrent(nullptr);
        Deployment::setCurrent({});
    }

    void open() { openEdit(clip("clip.mp4", {.width = 64, .height = 48, .frames = 6})); }
    std::shared_ptr<GADBannerView> banner() const { return editViews().bannerView; }
    /// From the foot of the Create button to that of the screen.
    double createButtonDistance() const {
        const auto screen = m_stack->topViewController()->view();
        for (const auto& constraint : screen->constraints())
            if (constraint->firstItem() == screen && constraint->secondItem() == editViews().createButton)
                return constraint->constant();
        return -1;
    }

    const std::shared_ptr<HeldAds> m_ads = std::make_shared<HeldAds>(GADAdFormat::banner);
};

} // namespace

TEST_F(BannerTest, FromTheFourthSaveOnTheNextScreenAsksForABannerThatCollapses) {
    using Extras = std::map<std::string, std::string>;
    preferences().setInteger(3, "doneCountKey");
    open();
    ASSERT_EQ(m_ads->asked.size(), 1U);
    preferences().setInteger(4, "doneCountKey");
    EXPECT_EQ(m_ads->asked[0].request.adNetworkExtras().additionalParameters(), Extras());
    EXPECT_EQ(m_ads->asked[0].place.adUnitID, "banner/1");
    EXPECT_EQ(m_ads->asked[0].place.size, (CGSize{420, 66}));
    open();
    ASSERT_EQ(m_ads->asked.size(), 2U);
    EXPECT_EQ(m_ads->asked[1].request.adNetworkExtras().additionalParameters(),
              (Extras{{"collapsible", "bottom"}}));
}

TEST_F(BannerTest, TheCreateButtonMakesRoomWhetherOrNotAnAdComes) {
    UIScreen::mainScreen().setBounds({{0, 0}, {800, 1000}});
    open();
    EXPECT_EQ(banner()->adSize().size, (CGSize{800, 90}));
    EXPECT_EQ(createButtonDistance(), 98);
    m_ads->refuse();
    EXPECT_EQ(createButtonDistance(), 98);
    EXPECT_FALSE(banner()->content());
    EXPECT_TRUE(m_host.lines().empty());
    UIScreen::mainScreen().setBounds({{0, 0}, {420, 860}});
}

TEST_F(BannerTest, StandsCentredAtTheFootAndLeadsWhereItsAdDoes) {
    open();
    const auto screen = m_stack->topViewController()->view();
    std::vector<NSLayoutAttribute> tied;
    for (const auto& constraint : screen->constraints())
        if (constraint->firstItem() == banner() && constraint->secondItem() == screen)
            tied.push_back(constraint->firstAttribute());
    EXPECT_EQ(tied, (std::vector{NSLayoutAttribute::centerX, NSLayoutAttribute::bottom}));
    banner()->click();
    m_host.changes.clear();
    m_ads->give({.text = "ad", .link = "https://shop.example/"});
    EXPECT_FALSE(m_host.changes.empty()) << "the front end hears of it";
    banner()->click();
    EXPECT_TRUE(m_host.tells("open https://shop.example/"));
}

} // namespace anadrome
