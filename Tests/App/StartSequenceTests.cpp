// From the question for consent to the start of the ads.

#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Tests/App/LaunchTest.h"
#include "Tests/Support/RawServer.h"

#include <filesystem>
#include <fstream>

namespace anadrome {

using namespace testing_support;

namespace {

enum class Way { nothing, accept, closeWithoutAnswer, coverTheScreen };

const struct Row {
    const char* name;
    /// What an earlier run has stored.
    const char* stored;
    /// The body of an answer; none breaks off.
    const char* answer;
    Way way;
    /// In their order, apart from other services' lines.
    std::vector<std::string> lines;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
} rows[] = {
    {"AcceptedItStarts", "", R"({"required": true})", Way::accept, {"start"}},
    {"UnansweredItDoesNotStart", "", R"({"required": true})", Way::closeWithoutAnswer, {}},
    {"NotRequiredItStarts", "", R"({"required": false})", Way::nothing, {"start"}},
    {"UpdateFailedItStarts", "", nullptr, Way::nothing, {"error", "start"}},
    {"FormFailedItStarts", "", R"({"required": true})", Way::coverTheScreen, {"error", "start"}},
    {"StoredItStartsAtOnceAndOnceAlone", R"({"status": 3})", nullptr, Way::nothing, {"start", "error"}},
};

class StartSequenceTest : public LaunchTest, public testing::WithParamInterface<Row> {
protected:
    void takeWay() {
        if (GetParam().way == Way::closeWithoutAnswer)
            m_stack->dismissViewControllerAnimated(false);
        if (GetParam().way == Way::accept)
            acceptConsent();
    }
    std::vector<std::string> told() const {
        std::vector<std::string> told;
        for (const std::string& line : m_host.lines())
            if (line == "Start loading app open ad.")
                told.emplace_back("start");
            else if (line.starts_with("Error: "))
                told.emplace_back("error");
        return told;
    }
};

} // namespace

TEST_P(StartSequenceTest, TheAdsFollowTheConsent) {
    const Row& row = GetParam();
    if (*row.stored != '\0') {
        std::filesystem::create_directories(m_folder.file("state/anadrome"));
        std::ofstream(m_folder.file("state/anadrome/consent.json")) << row.stored;
    }
    const RawServer server({row.answer ? httpAnswer("200 OK", "", row.answer) : ""});
    Deployment values;
    values.consentEndpoint = server.address();
    // Nobody is there, but the start is told.
    values.adEndpoint = "http://127.0.0.1:1/";
    Deployment::setCurrent(values);
    launch();
    if (row.way == Way::coverTheScreen)
        titleViews().infoButton->tap();
    const bool isFormExpected = row.way == Way::accept || row.way == Way::closeWithoutAnswer;
    EXPECT_TRUE(waitUntil([&] {
        return isFormExpected ? presented<UMPConsentFormViewController>() != nullptr
                              : told().size() == row.lines.size();
    }));
    takeWay();
    waitUntil([&] { return told().size() > row.lines.size(); }, std::chrono::milliseconds(300));
    EXPECT_EQ(told(), row.lines);
}

INSTANTIATE_TEST_SUITE_P(OfConsent, StartSequenceTest, testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace anadrome
