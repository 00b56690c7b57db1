// A start, a job and a save, whatever the outside services do.

#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/UIKit/UIDocumentPickerViewController.h"
#include "Tests/App/LaunchTest.h"
#include "Tests/Support/Certificate.h"
#include "Tests/Support/RawServer.h"
#include "Tests/Support/ReferenceServer.h"

#include <filesystem>
#include <fstream>

namespace anadrome {

using namespace testing_support;

namespace {

constexpr const char* clipName = "secret holiday.mp4";

class WholeStartTest : public LaunchTest {
protected:
    /// The values of scripts/serve, for endpoints that begin with an address.
    static void deploy(const std::string& address) {
        Deployment values;
        values.adEndpoint = address + "ads";
        values.consentEndpoint = address + "consent";
        values.analyticsEndpoint = address + "analytics";
        values.remoteConfigEndpoint = address + "remote-config";
        values.appOpenAdUnitID = values.interstitialAdUnitID = values.bannerAdUnitID = "reference/place";
        Deployment::setCurrent(values);
    }

    void start() {
        launch();
        activate();
    }
    void openClip() {
        titleViews().iCloudButton->tap();
        presented<UIDocumentPickerViewController>()->finish(
            {URL::fileURLWithPath(clip(clipName, {.width = 64, .height = 48, .frames = 6}))});
    }
    /// Makes a movie; tells whether an ad came before the Preview screen.
    bool makeMovie() {
        editViews().createButton->tap();
        EXPECT_TRUE(waitUntil([&] { return m_host.tells("push Preview") || m_host.tells("ad"); }));
        const auto ad = presented<GADFullScreenAdViewController>();
        if (ad)
            ad->close();
        EXPECT_TRUE(waitFor("push Preview"));
        return ad != nullptr;
    }
    void save() {
        previewViews().saveButton->tap();
        EXPECT_TRUE(waitFor("tick"));
        const auto library = m_folder.path() / "Videos" / "Anadrome";
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(library), {}), 1);
    }
    void runWholeStart() {
        start();
        openClip();
        makeMovie();
        save();
        for (const std::string& event : m_host.story())
            EXPECT_FALSE(event.starts_with("dialog")) << event;
    }
};

const struct Fault {
    const char* name;
    RawAnswer answer;

    friend void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.name; }
} faults[] = {
    {"NeverAnswers", {.closes = false}},
    {"SpeaksNoJson", {httpAnswer("200 OK", "", "<html>")}},
    {"SaysOtherThings", {httpAnswer("200 OK", "", R"({"text": 1, "required": "yes", "values": []})")}},
    {"SendsWithoutEnd", {httpAnswer("200 OK"), std::string(1 << 16, 'x')}},
    {"RedirectsInARing", {httpAnswer("302 Found", "Location: /ads\r\n")}},
    {"IsBroken", {httpAnswer("500 Internal Server Error")}},
};

class FaultyServerTest : public WholeStartTest, public testing::WithParamInterface<Fault> {};

} // namespace

TEST_P(FaultyServerTest, ChangesNothing) {
    const RawServer server(GetParam().answer);
    deploy(server.address());
    runWholeStart();
    EXPECT_FALSE(m_host.tells("ad"));
    EXPECT_FALSE(server.received().empty()) << "it was asked";
}

INSTANTIATE_TEST_SUITE_P(AServerThat, FaultyServerTest, testing::ValuesIn(faults),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(WholeStartTest, AnUntrustedServerChangesNothing) {
    const Certificate certificate("IP:127.0.0.1");
    const RawServer server(RawAnswer{httpAnswer("200 OK", "", "{}")}, &certificate);
    deploy(server.address());
    runWholeStart();
}

TEST_F(WholeStartTest, AServerThatGoesInTheMiddleLeavesTheJobAlone) {
    ReferenceServer server;
    deploy(server.address("/"));
    start();
    EXPECT_TRUE(waitUntil([&] { return presented<UMPConsentFormViewController>() != nullptr; }));
    m_stack->dismissViewControllerAnimated(false);
    openClip();
    // Its ads are on their way.
    server.stop();
    makeMovie();
    save();
}

TEST_F(WholeStartTest, WithAServerConsentAdsAndEventsComeAndNothingOfTheClipLeaves) {
    const ReferenceServer server;
    deploy(server.address("/"));
    start();
    EXPECT_TRUE(waitUntil([&] { return presented<UMPConsentFormViewController>() != nullptr; }));
    acceptConsent();
    EXPECT_TRUE(waitUntil([&] { return isPrinted("App open ad loaded successfully."); }));
    EXPECT_TRUE(waitUntil([&] { return isPrinted("Remote config successfully fetched & activated!"); }));
    activate();
    ASSERT_TRUE(presented<GADFullScreenAdViewController>());
    EXPECT_EQ(presented<GADFullScreenAdViewController>()->content().text, "The reference server greets you");
    presented<GADFullScreenAdViewController>()->close();
    m_host.clear();
    openClip();
    const auto hasAsked = [&](const std::string& what) {
        const auto requests = server.requests();
        return std::ranges::any_of(requests, [&](const auto& line) { return line.find(what) != line.npos; });
    };
    // The first movie may be there before its ad, which is shown after the next then.
    const bool isAdShown = makeMovie();
    EXPECT_TRUE(waitUntil([&] { return hasAsked("/pictures/interstitial.png"); }));
    save();
    if (!isAdShown) {
        ViewHelper::shared().hud().dismiss();
        m_stack->popViewControllerAnimated(false);
        m_host.clear();
        EXPECT_TRUE(makeMovie());
    }
    EXPECT_TRUE(waitUntil([&] { return hasAsked("title_iCloud"); }));
    for (const std::string& request : server.requests()) {
        for (const std::string& secret : {std::string("secret"), std::string("holiday"), std::string(".mp4"),
                                          std::string(".mov"), m_folder.path().string()})
            EXPECT_EQ(request.find(secret), std::string::npos) << request;
        EXPECT_NE(request.find(R"("cookie": "", "referer": "", "authorization": "")"), std::string::npos)
            << request;
    }
}

TEST_F(WholeStartTest, WithoutADeploymentNothingIsAsked) {
    runWholeStart();
    EXPECT_FALSE(m_host.tells("ad"));
    std::error_code nothing;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(m_folder.path() / "state", nothing))
        EXPECT_TRUE(entry.is_directory()) << "nothing is noted: " << entry.path();
}

/// Watches another of these tests from outside: whether it asks anybody by an internet address.
bool asksTheNetwork(const std::string& test) {
    const ScratchFolder folder;
    const std::string trace = folder.file("trace");
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    // A traced program can't look for leaks.
    const std::string command =
        "ASAN_OPTIONS=detect_leaks=0 strace -f -qq -e trace=connect,sendto,sendmsg -o '" + trace + "' '" +
        self + "' --gtest_filter=" + test + " >/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::ifstream file(trace);
    const std::string calls{std::istreambuf_iterator(file), {}};
    return calls.find("AF_INET") != std::string::npos;
}

TEST(WholeStart, WithoutADeploymentNothingIsSentSeenFromOutside) {
    EXPECT_FALSE(asksTheNetwork("WholeStartTest.WithoutADeploymentNothingIsAsked"));
    EXPECT_TRUE(asksTheNetwork("*FaultyServerTest*IsBroken")) << "the trace shows who is asked";
}

} // namespace anadrome
