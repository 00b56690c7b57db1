#include "Platform/Services/Measuring/EventFile.h"

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/ScratchFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>

using namespace anadrome;
using testing_support::ChildProcess;

namespace {

StoredEvent numbered(int number, const std::string& name = "save") {
    return {name + std::to_string(number), name, std::to_string(number)};
}

[[gnu::constructor]] void playRole() {
    const std::string role(ChildProcess::ownRole());
    if (!role.starts_with("event "))
        return;
    const EventFile file(std::getenv("ANADROME_TEST_FILE"));
    for (int i = 0; i < std::stoi(std::getenv("ANADROME_TEST_COUNT")); ++i) {
        if (!file.append(numbered(i, role)))
            std::exit(1);
        std::printf("%d\n", i);
        std::fflush(stdout);
    }
    std::exit(0);
}

class EventFileTests : public testing::Test {
protected:
    std::vector<std::string> toAppend(int count) const {
        return {"ANADROME_TEST_FILE=" + m_path, "ANADROME_TEST_COUNT=" + std::to_string(count)};
    }
    void append(std::string_view text) const { std::ofstream(m_path, std::ios::app) << text; }

    testing_support::ScratchFolder m_folder;
    const std::string m_path = m_folder.file("anadrome/events");
    const EventFile m_file{m_path};
};

} // namespace

TEST_F(EventFileTests, DropsTheOldestEventsForNewOnesAndPassesOverWhatIsNoEvent) {
    m_file.append(numbered(0));
    append("nonsense\n[]\n{\"id\": 7, \"name\": \"a\", \"time\": \"b\"}\n{\"id\": \"torn");
    for (int i = 1; i < 1003; ++i)
        ASSERT_TRUE(m_file.append(numbered(i, "\xff \"\n\\")));
    append("{\"id\": \"torn");
    EXPECT_TRUE(m_file.remove({m_file.first(2)[1].id}));
    const auto events = m_file.first(2000);
    ASSERT_EQ(events.size(), 999U);
    EXPECT_EQ(events[0].time, "3");
    EXPECT_EQ(events[1].time, "5");
    EXPECT_EQ(events.back().name, "\xef\xbf\xbd \"\n\\");

    append(std::string(2'000'000, '\n'));
    EXPECT_TRUE(m_file.append(numbered(2)));
    EXPECT_EQ(m_file.first(10).size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(m_path + ".damaged"));
}

TEST_F(EventFileTests, KeepsEveryEventOfAProcessThatIsKilled) {
    ChildProcess child("event killed", toAppend(900));
    int told = 0;
    while (told < 100)
        told = std::stoi(child.readLine());
    child.kill();
    m_file.append(numbered(0));
    const auto events = m_file.first(EventFile::capacity);
    ASSERT_GT(events.size(), static_cast<std::size_t>(told) + 1);
    for (std::size_t i = 0; i + 1 < events.size(); ++i)
        EXPECT_EQ(events[i].time, std::to_string(i));
    EXPECT_EQ(events.back().id, "save0");
}

TEST_F(EventFileTests, GivesOutTheEventsOfTwoProcessesOnceAndInOrder) {
    constexpr int count = 150;
    ChildProcess a("event a", toAppend(count)), b("event b", toAppend(count));
    std::map<std::string, int> next;
    while (next["event a"] + next["event b"] < 2 * count) {
        std::set<std::string> taken;
        for (const StoredEvent& event : m_file.first(20)) {
            EXPECT_EQ(event.time, std::to_string(next[event.name]++));
            taken.insert(event.id);
        }
        ASSERT_TRUE(taken.empty() || m_file.remove(taken));
    }
    EXPECT_EQ(a.wait() + b.wait(), 0);
    EXPECT_TRUE(m_file.first(1).empty());
}
