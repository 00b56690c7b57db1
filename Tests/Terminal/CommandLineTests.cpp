#include "Tests/Terminal/CommandTest.h"

namespace anadrome {

using namespace testing_support;

using CommandLineTest = CommandTest;

TEST_F(CommandLineTest, WrongUseIsToldFromHelp) {
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
    } rows[] = {
        {{}, 2},
        {{"reverse", "a.mp4"}, 2},
        {{"reverse", "a.mp4", "-o", "b.avi"}, 2},
        {{"reverse", "a.mp4", "-o", "b.mov", "--file-type", "avi"}, 2},
        {{"reverse", "a.mp4", "-o", "b.mov", "--no-such-option"}, 2},
        {{"play", "a.mp4"}, 2},
        {{"--help"}, 0},
        {{"make", "a.mp4", "-o", "b.mov", "--output-type", "backward"}, 2},
        {{"make", "a.mp4", "-o", "b.mov", "--quality", "best"}, 2},
        {{"make", "a.mp4", "-o", "b.mov", "--reverse-speed", "0"}, 2},
        {{"make", "a.mp4", "-o", "b.mov", "--reverse-speed", "10.1"}, 2},
        {{"make", "a.mp4", "-o", "b.mov", "--normal-speed", "1.25"}, 2},
        {{"make", "a.mp4", "-o", "b.mov", "--normal-speed", "nan"}, 2},
        {{"make", "--help"}, 0},
        {{"--version"}, 0},
    };
    for (const auto& row : rows) {
        const CommandResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << result.err;
        EXPECT_EQ(result.out.empty(), row.exitCode != 0);
        EXPECT_EQ(result.err.empty(), row.exitCode == 0);
    }
}

} // namespace anadrome
