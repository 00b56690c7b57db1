#include "Platform/Services/Ads/GADAdServer.h"

#include "Platform/Services/Ads/ALPrivacySettings.h"
#include "Platform/Services/Ads/GADAdAnswer.h"
#include "Platform/Services/Ads/GADMobileAds.h"
#include "Platform/Services/Deployment.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RawServer.h"
#include "Tests/Support/ReferenceServer.h"
#include "Tests/Support/ScratchFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <optional>

namespace anadrome {

namespace {

using namespace testing_support;

std::string times(std::size_t count, const std::string& piece) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += piece;
    return all;
}

/// The content, or the error's code and sentence.
std::string outcomeOf(const Result<GADAdContent>& result) {
    if (!result)
        return std::to_string(result.error().code()) + ' ' + result.error().localizedDescription();
    return (*result).text + '|' + (*result).link + '|' + (*result).picture;
}

std::string outcomeOfAsking(GADAdServer& server, const GADAdPlace& place, const GADRequest& request = {}) {
    std::optional<std::string> outcome;
    server.fetch(place, request, [&](const auto& result) { outcome = outcomeOf(result); });
    EXPECT_FALSE(outcome) << "never before the call returns";
    EXPECT_TRUE(runEventLoopUntil([&] { return outcome.has_value(); }));
    return outcome.value_or("");
}

void deployAt(const std::string& endpoint) {
    Deployment deployment;
    deployment.adEndpoint = endpoint;
    Deployment::setCurrent(std::move(deployment));
}

const GADAdPlace banner{GADAdFormat::banner, "network/unit 1", {420, 65.6}};

class GADAdServerTest : public testing::Test {
protected:
    ~GADAdServerTest() override { Deployment::setCurrent({}); }

    GADAdServer m_server{"/no/such/file"};
};

} // namespace

TEST(GADAdAnswer, TakesWhatFitsAndRefusesAllElseInWords) {
    const std::string unusable = "9 The ad server's answer can't be used: ";
    const std::pair<std::string, std::string> cases[] = {
        {R"({"text": "Buy", "link": "https://a.example/", "more": [1]})", "Buy|https://a.example/|"},
        {R"({"text": ")" + times(1000, "あ") + "\"}", times(1000, "あ") + "||"},
        {"", "1 The ad server has no ad."},
        {"{", unusable + "it is no JSON."},
        {"{\"text\": \"\xff\"}", unusable + "it is no JSON."},
        {times(100'000, "["), unusable + "it is too deep."},
        {"null", unusable + "it is no object."},
        {"{}", unusable + "there is neither a text nor a picture."},
        {R"({"text": 7})", unusable + "text is no text of at most 1000 characters."},
        {R"({"text": ")" + times(1001, "x") + "\"}",
         unusable + "text is no text of at most 1000 characters."},
        {R"({"text": "x", "link": "javascript:x"})", unusable + "link is no http or https address."},
        {R"({"picture": "file:///etc/passwd"})", unusable + "picture is no http or https address."},
        {R"({"text": "x", "height": "61"})", unusable + "height is no number in its bounds."},
        {R"({"text": "x", "height": 1e300})", unusable + "height is no number in its bounds."},
        {R"({"text": "x", "expires": -1})", unusable + "expires is no number in its bounds."},
    };
    for (const auto& [answer, expected] : cases) {
        const Result<GADAdAnswer> ad = GADAdAnswer::parse(answer);
        EXPECT_EQ(outcomeOf(ad ? Result((*ad).content) : ad.error()), expected) << answer.substr(0, 80);
    }
    auto full =
        GADAdAnswer::parse(R"({"text": "x", "picture": "http://a.example/p", "height": 61, "expires": 90})");
    ASSERT_TRUE(full);
    EXPECT_EQ(full->pictureAddress, "http://a.example/p");
    EXPECT_EQ(full->content.height, 61);
    EXPECT_EQ(full->content.lifetime, std::chrono::seconds(90));
}

TEST_F(GADAdServerTest, NobodyIsAskedWithoutAServerOrForAPlaceWithoutAName) {
    EXPECT_EQ(outcomeOfAsking(m_server, banner), "2 No ad server is configured.");
    RawServer server({httpAnswer("204 No Content")});
    deployAt(server.address());
    EXPECT_EQ(outcomeOfAsking(m_server, {GADAdFormat::banner, "", {420, 66}}),
              "0 The place of the ad has no unit identifier.");
    EXPECT_EQ(server.received(), "");
}

TEST_F(GADAdServerTest, TellsTheServerOfThePlaceTheUsersWillAndNothingElse) {
    const ScratchFolder folder;
    const std::string machineFile = folder.file("machine-id");
    std::ofstream(machineFile) << "0123456789abcdef0123456789abcdef\n";
    GADAdServer testMachine(machineFile);
    GADExtras extras;
    extras.setAdditionalParameters({{"collapsible", "bottom"}});
    GADRequest collapsible;
    collapsible.registerAdNetworkExtras(extras);
    const auto lineOfAsking = [](GADAdServer& server, const GADAdPlace& place, const GADRequest& request) {
        RawServer raw({httpAnswer("204 No Content")});
        deployAt(raw.address() + "ads?key=1");
        EXPECT_EQ(outcomeOfAsking(server, place, request), "1 The ad server has no ad.");
        EXPECT_EQ(raw.received().find("0123456789"), std::string::npos) << "the machine's name stays here";
        return raw.received().substr(0, raw.received().find('\r'));
    };

    EXPECT_EQ(lineOfAsking(m_server, banner, collapsible),
              "GET /ads?key=1&unit=network%2Funit%201&format=banner&width=420&height=66&collapsible=bottom"
              "&personalised=0 HTTP/1.1");
    ALPrivacySettings::setHasUserConsent(true);
    ALPrivacySettings::setDoNotSell(false);
    auto& configuration = GADMobileAds::sharedInstance().requestConfiguration();
    configuration.setTestDeviceIdentifiers({"", "0123456789abcdef0123456789abcdef"});
    const std::string flags = "&personalised=0&user-consent=1&do-not-sell=0 HTTP/1.1";
    EXPECT_EQ(lineOfAsking(testMachine, {GADAdFormat::appOpen, "a", {420, 860}}, {}),
              "GET /ads?key=1&unit=a&format=app-open&width=420&height=860&test=1" + flags);
    EXPECT_EQ(lineOfAsking(m_server, {GADAdFormat::interstitial, "i", {420, 860}}, {}),
              "GET /ads?key=1&unit=i&format=interstitial&width=420&height=860" + flags);
    configuration.setTestDeviceIdentifiers({});
}

TEST_F(GADAdServerTest, AnAdComesWithItsPictureOrNotAtAll) {
    const std::pair<RawAnswer, std::string> cases[] = {
        {{httpAnswer("200 OK", "", "picture bytes")}, "|https://a.example/|picture bytes"},
        {{httpAnswer("404 Not Found")}, "2 "},
        {{httpAnswer("200 OK")}, "9 The ad's picture is empty."},
        {{httpAnswer("200 OK", "", std::string(4 * 1024 * 1024 + 1, 'x'))}, "2 "},
    };
    for (const auto& [answer, expected] : cases) {
        RawServer pictures(answer);
        RawServer ads({httpAnswer(
            "200 OK", "", R"({"link": "https://a.example/", "picture": ")" + pictures.address() + "\"}")});
        deployAt(ads.address());
        EXPECT_EQ(outcomeOfAsking(m_server, banner).substr(0, expected.size()), expected);
    }
    RawServer broken({httpAnswer("500 Internal Server Error")});
    deployAt(broken.address());
    EXPECT_EQ(outcomeOfAsking(m_server, banner).substr(0, 2), "2 ");
}

TEST_F(GADAdServerTest, TheReferenceServerHasAdsOfEveryFormatUntilItIsGone) {
    ReferenceServer server;
    deployAt(server.address("/ads"));
    const std::string start = "|" + server.address("/pictures/");
    for (const auto& [format, name] : {std::pair(GADAdFormat::appOpen, "app-open.png"),
                                       std::pair(GADAdFormat::interstitial, "interstitial.png"),
                                       std::pair(GADAdFormat::banner, "banner.png")}) {
        const std::string outcome = outcomeOfAsking(m_server, {format, "unit", {420, 66}});
        EXPECT_NE(outcome.find(start + name + "|\x89PNG"), std::string::npos) << outcome.substr(0, 200);
    }
    server.stop();
    EXPECT_EQ(outcomeOfAsking(m_server, banner).substr(0, 2), "2 ");
}

} // namespace anadrome
