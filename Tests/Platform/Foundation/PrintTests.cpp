#include "Platform/Foundation/Print.h"

#include <atomic>
#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace anadrome;

TEST(Print, GivesTheSinkOneWholeLineAtATime) {
    std::vector<std::string> lines;
    setPrintSink([&](std::string_view line) { lines.emplace_back(line); });
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int i = 0; i < 100; ++i)
                print("a line");
        });
    }
    threads.clear();
    setPrintSink({});
    EXPECT_EQ(lines, std::vector<std::string>(400, "a line"));
}

TEST(Print, WritesToStandardOutputAndKeepsDebugLinesToItself) {
    testing::internal::CaptureStdout();
    print("seen");
    debugLog("unseen");
    std::string debugLine;
    setDebugSink([&](std::string_view line) { debugLine = line; });
    debugLog("caught");
    setDebugSink({});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "seen\n");
    EXPECT_EQ(debugLine, "caught");
}

TEST(FatalErrorDeathTest, SaysWhyAndAborts) {
    EXPECT_EXIT(fatalError("An invariant is broken."), testing::KilledBySignal(SIGABRT),
                "^An invariant is broken.\n");
}
