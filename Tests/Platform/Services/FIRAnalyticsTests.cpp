#include "Platform/Services/Measuring/FIRAnalytics.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

using namespace anadrome;

TEST(FIRAnalytics, HandsEveryEventToTheRecorderIfThereIsOne) {
    std::vector<std::pair<std::string, std::optional<Dictionary>>> events;
    FIRAnalytics::logEventWithName("unheard");
    FIRAnalytics::setRecorder(
        [&](const auto& name, const auto& parameters) { events.emplace_back(name, parameters); });
    FIRAnalytics::logEventWithName("title_iCloud");
    FIRAnalytics::logEventWithName("title_iCloud", Dictionary{{"tag", 4}});
    FIRAnalytics::setRecorder({});
    FIRAnalytics::logEventWithName("unheard");

    const decltype(events) expected = {{"title_iCloud", std::nullopt},
                                       {"title_iCloud", Dictionary{{"tag", 4}}}};
    EXPECT_EQ(events, expected);
}
