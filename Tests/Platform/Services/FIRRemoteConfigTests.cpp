#include "Platform/Services/Measuring/FIRRemoteConfig.h"

#include "Tests/Platform/Services/HandWorld.h"
#include "Tests/Support/ReferenceServer.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace anadrome;
using namespace std::chrono_literals;
using testing_support::runEventLoopUntil;
using Status = FIRRemoteConfigFetchAndActivateStatus;

namespace {

class FIRRemoteConfigTests : public testing::Test {
protected:
    std::shared_ptr<FIRRemoteConfig> made(const std::string& endpoint = "https://values.test/") {
        return std::make_shared<FIRRemoteConfig>(endpoint, m_path, m_world.world());
    }
    /// What the completion says: the status and, after it, the error.
    std::string fetch(FIRRemoteConfig& config, const std::optional<Result<std::string>>& answer) {
        std::string said;
        config.fetchAndActivateWithCompletionHandler([&](Status status, const std::optional<NSError>& error) {
            said = std::to_string(static_cast<int>(status)) + (error ? error->localizedDescription() : "");
        });
        EXPECT_EQ(m_world.requests(), answer ? 1U : 0U);
        if (answer && m_world.requests() > 0)
            m_world.answer(*answer);
        EXPECT_EQ(said, "");
        runEventLoopUntil([&] { return !said.empty(); });
        return said;
    }

    testing_support::ScratchFolder m_folder;
    const std::string m_path = m_folder.file("anadrome/remote-config.json");
    HandWorld m_world;
};

const NSError noNetwork(NSURLErrorDomain, NSURLErrorTimedOut, "Too late.");
const std::string goodAnswer = R"({"values": {"colour": "red", "empty": ""}, "more": 1})";

} // namespace

TEST_F(FIRRemoteConfigTests, AsksTwelveHoursAfterTheLastSuccessAlsoOfAnEarlierRun) {
    auto config = made();
    EXPECT_EQ(fetch(*config, noNetwork), "2Too late.");
    EXPECT_EQ(fetch(*config, goodAnswer), "0");
    ASSERT_TRUE(runEventLoopUntil([&] { return std::ifstream(m_path).good(); }));
    m_world.advance(43'199s);
    EXPECT_EQ(fetch(*config, std::nullopt), "1");
    config = made();
    EXPECT_EQ(fetch(*config, std::nullopt), "1");
    EXPECT_EQ(config->configValueForKey("empty").source, FIRRemoteConfigSource::remote);
    m_world.advance(1s);
    EXPECT_EQ(fetch(*config, noNetwork), "2Too late.");
    EXPECT_EQ(config->configValueForKey("colour").stringValue, "red");
    EXPECT_EQ(fetch(*config, std::string(R"({"values": {"colour": "blue"}})")), "0");
    EXPECT_EQ(config->configValueForKey("colour").stringValue, "blue");
    EXPECT_EQ(config->configValueForKey("empty").source, FIRRemoteConfigSource::staticValue);
    // A clock that went back.
    m_world.advance(-24h);
    EXPECT_EQ(fetch(*config, goodAnswer), "0");
}

TEST_F(FIRRemoteConfigTests, AsksAgainIfItsFileIsDamaged) {
    std::filesystem::create_directory(m_folder.file("anadrome"));
    for (const char* damage :
         {"[]", R"({"values": {}})", R"({"values": 1, "fetchedAtMilliseconds": 1795411717000})",
          R"({"values": {}, "fetchedAtMilliseconds": "1795411717000"})",
          R"({"values": {}, "fetchedAtMilliseconds": 9000000000000000000})",
          R"({"values": {}, "fetchedAtMilliseconds": -1})"}) {
        std::ofstream(m_path) << damage;
        EXPECT_EQ(fetch(*made(), noNetwork), "2Too late.") << damage;
    }
}

TEST_F(FIRRemoteConfigTests, RefusesAnswersOfAnotherShape) {
    const auto config = made();
    config->setConfigSettings({.minimumFetchInterval = 0});
    EXPECT_EQ(fetch(*config, goodAnswer), "0");
    const std::string deep(100'000, '[');
    for (const char* answer :
         {"", "<html>", "[]", "{}", "null", R"({"values": []})", R"({"values": {"a": 1}})",
          R"({"values": {"a": null}})", "{\"values\": {\"\xff\": \"\"}}", deep.c_str()})
        EXPECT_EQ(fetch(*config, std::string(answer)),
                  "2The remote configuration server's answer isn't valid.");
    EXPECT_EQ(config->configValueForKey("colour").stringValue, "red");
    EXPECT_EQ(fetch(*made(""), std::nullopt), "2No remote configuration server is configured.");
}

TEST_F(FIRRemoteConfigTests, TakesTheValuesOfAServer) {
    const testing_support::ReferenceServer server;
    const auto config =
        std::make_shared<FIRRemoteConfig>(server.address("/remote-config"), "", ServiceWorld::real());
    EXPECT_EQ(fetch(*config, std::nullopt), "0");
    EXPECT_EQ(fetch(*config, std::nullopt), "1");
}
