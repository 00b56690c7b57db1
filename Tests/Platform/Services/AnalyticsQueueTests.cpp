#include "Platform/Services/Measuring/AnalyticsQueue.h"

#include "Platform/Services/Deployment.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/Services/Measuring/FIRApp.h"
#include "Platform/Services/Measuring/FIRRemoteConfig.h"
#include "Tests/Platform/Services/HandWorld.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/ReferenceServer.h"
#include "Tests/Support/ScratchFolder.h"

#include <QRegularExpression>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace anadrome;
using namespace std::chrono_literals;
using nlohmann::json;
using testing_support::ChildProcess;
using testing_support::runEventLoopUntil;
namespace fs = std::filesystem;

namespace {

/// A program that logs an event and fetches values; the server of the events, if there is one, is away.
[[noreturn]] void measure(const std::string& endpoint) {
    int count = 0;
    QCoreApplication application(count, nullptr);
    FIRAnalytics::logEventWithName("too early");
    Deployment deployment;
    deployment.analyticsEndpoint = endpoint;
    Deployment::setCurrent(deployment);
    FIRApp::configure();
    FIRAnalytics::logEventWithName("save", Dictionary{{"parameter", "secret"}});
    std::string failure;
    FIRRemoteConfig::remoteConfig()->fetchAndActivateWithCompletionHandler(
        [&](auto, const auto& error) { failure = error->localizedDescription(); });
    const EventFile events(std::getenv("XDG_STATE_HOME") + std::string("/anadrome/events"));
    runEventLoopUntil([&] { return !failure.empty() && (endpoint.empty() || !events.first(1).empty()); });
    std::exit(failure != "No remote configuration server is configured.");
}

[[gnu::constructor]] void playRole() {
    if (ChildProcess::ownRole() == "measure nothing")
        measure("");
    if (ChildProcess::ownRole() == "measure")
        measure("http://127.0.0.1:1/");
}

class AnalyticsQueueTests : public testing::Test {
protected:
    std::shared_ptr<AnalyticsQueue> started(const HandWorld& world) const {
        const auto queue = std::make_shared<AnalyticsQueue>("https://events.test/", m_folder.file("anadrome"),
                                                            world.world());
        queue->start();
        return queue;
    }
    void store(int count) const {
        for (int i = 0; i < count; ++i)
            m_file.append({std::to_string(i), std::to_string(i), "now"});
    }
    /// First and number of the events that are being sent.
    std::pair<std::string, std::size_t> batch() const {
        const json events =
            m_world.awaitsAnswer() ? json::parse(m_world.request().body).at("events") : json();
        return {events.empty() ? "" : events[0].at("name"), events.size()};
    }
    bool isEmptied() const {
        return runEventLoopUntil([this] { return m_file.first(1).empty(); });
    }

    testing_support::ScratchFolder m_folder;
    HandWorld m_world;
    const EventFile m_file{m_folder.file("anadrome/events")};
};

const NSError tooLate(NSURLErrorDomain, NSURLErrorTimedOut, "Too late.");

} // namespace

TEST_F(AnalyticsQueueTests, SendsNameTimeInstallationAndVersionAndNothingElse) {
    const auto queue = started(m_world);
    queue->record("title_iCloud");
    EXPECT_EQ(m_world.wait(), 5s);
    queue->record("save");
    m_world.advance(5s);
    ASSERT_TRUE(m_world.awaitsAnswer());
    EXPECT_EQ(m_world.request().address, "https://events.test/");
    const std::string body = m_world.request().body;
    const QRegularExpression form(
        R"(^\{"events":\[\{"name":"title_iCloud","time":"2026-11-23T05:28:37Z"\},)"
        R"(\{"name":"save","time":"2026-11-23T05:28:37Z"\}\],)"
        R"("install":"[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[0-9a-f]{4}-[0-9a-f]{12}",)"
        R"("version":"[0-9.]+"\}$)");
    EXPECT_TRUE(form.match(QString::fromStdString(body)).hasMatch()) << body;

    // What a run leaves is sent by the next one, from the same installation.
    m_world.answer(tooLate);
    const HandWorld later;
    const auto next = started(later);
    ASSERT_TRUE(later.awaitsAnswer());
    EXPECT_EQ(later.request().body, body);
}

TEST_F(AnalyticsQueueTests, WaitsTwiceAsLongAfterEachFailure) {
    const auto queue = started(m_world);
    queue->record("first");
    EXPECT_EQ(m_world.wait(), 5s);
    m_world.advance(5s);
    for (const auto wait : {10s, 20s, 40s, 80s, 160s, 320s, 640s, 1280s, 2560s, 3600s, 3600s}) {
        ASSERT_TRUE(m_world.awaitsAnswer());
        m_world.answer(tooLate);
        EXPECT_EQ(m_world.wait(), wait);
        queue->record("meanwhile");
        m_world.advance(wait - 1s);
        EXPECT_EQ(m_world.wait(), 1s);
        m_world.advance(1s);
    }
    EXPECT_EQ(batch(), std::pair(std::string("first"), std::size_t(12)));
    m_world.answer(std::string());
    ASSERT_TRUE(isEmptied());
    queue->record("second");
    EXPECT_EQ(m_world.wait(), 5s);
    m_world.advance(5s);
    ASSERT_TRUE(m_world.awaitsAnswer());
    m_world.answer(tooLate);
    EXPECT_EQ(m_world.wait(), 10s);
}

TEST_F(AnalyticsQueueTests, DropsOnlyWhatTheServerWillNeverTake) {
    const auto queue = started(m_world);
    for (const auto& [status, isDropped] : {std::pair(400, true),
                                            {413, true},
                                            {422, true},
                                            {404, false},
                                            {429, false},
                                            {500, false},
                                            {304, false}}) {
        SCOPED_TRACE(status);
        queue->record("save");
        EXPECT_EQ(m_world.wait(), 5s);
        m_world.advance(5s);
        ASSERT_TRUE(m_world.awaitsAnswer());
        m_world.answerStatus(status);
        if (!isDropped) {
            EXPECT_EQ(m_world.wait(), 10s);
            m_world.advance(10s);
            ASSERT_TRUE(m_world.awaitsAnswer());
            m_world.answer(std::string());
        }
        EXPECT_TRUE(isEmptied());
    }
}

TEST_F(AnalyticsQueueTests, SendsEachEventOnceAndInOrder) {
    store(250);
    const auto queue = started(m_world);
    EXPECT_EQ(batch(), std::pair(std::string("0"), std::size_t(100)));
    // Another process leaves it to this one.
    const HandWorld elsewhere;
    EXPECT_EQ((started(elsewhere), elsewhere.wait()), 10s);
    m_world.answer(std::string());
    EXPECT_EQ(batch(), std::pair(std::string("100"), std::size_t(100)));
    // The file can't be changed for a while.
    const fs::path lock = m_folder.file("anadrome/events.lock");
    fs::remove(lock);
    fs::create_directory(lock);
    m_world.answer(std::string());
    EXPECT_EQ(m_world.wait(), 10s);
    fs::remove(lock);
    m_world.advance(10s);
    EXPECT_EQ(batch(), std::pair(std::string("200"), std::size_t(50)));
    m_world.answer(std::string());
    EXPECT_TRUE(isEmptied());
}

TEST_F(AnalyticsQueueTests, KeepsNothingWithoutAServerAndEverythingWithOneThatIsAway) {
    const std::vector<std::string> environment{"XDG_STATE_HOME=" + m_folder.path().string()};
    EXPECT_EQ(ChildProcess("measure nothing", environment).wait(), 0);
    for (const auto& entry : fs::recursive_directory_iterator(m_folder.path()))
        EXPECT_TRUE(entry.is_directory()) << entry.path();
    EXPECT_EQ(ChildProcess("measure", environment).wait(), 0);
    ASSERT_EQ(m_file.first(2).size(), 1U);
    EXPECT_EQ(m_file.first(1)[0].name, "save");
    EXPECT_LT(fs::file_size(m_folder.file("anadrome/events")), 150U);
}

TEST_F(AnalyticsQueueTests, SendsOnceToAServerThatComesBack) {
    testing_support::ReferenceServer server;
    server.stop();
    bool hasFailed = false;
    ServiceWorld world = ServiceWorld::real();
    world.later = [&, later = world.later](auto, auto block) { hasFailed = true, later(0s, block); };
    const auto sendTo = [&](const std::string& path) {
        store(1);
        const auto queue =
            std::make_shared<AnalyticsQueue>(server.address(path), m_folder.file("anadrome"), world);
        queue->start();
        EXPECT_TRUE(runEventLoopUntil([&] { return hasFailed; }));
        server.start();
        EXPECT_TRUE(isEmptied());
    };
    sendTo("/analytics");
    EXPECT_TRUE(runEventLoopUntil([&] { return !server.requests().empty(); }));
    const json request = json::parse(server.requests().at(0));
    EXPECT_EQ(request.at("status"), 204);
    EXPECT_EQ(json::parse(request.at("body").get<std::string>()).at("events")[0].at("name"), "0");
}
