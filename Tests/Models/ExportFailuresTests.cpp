#include "Tests/Models/ExportTest.h"

#include <algorithm>
#include <fstream>

namespace anadrome {

using ExportFailuresTest = ExportTest;

TEST_F(ExportFailuresTest, EachFailureHasItsMessageAndOneCompletion) {
    const std::string good = clip("good.mp4", {.frames = 5});
    const std::string text = path("text.mp4");
    std::ofstream(text) << "no movie";
    const std::string kept = path("kept.mov");
    std::ofstream(kept) << "kept";
    const struct {
        const char* what;
        std::shared_ptr<ExportLog> log;
        std::string message; ///< or its beginning
        bool isByCaller;
    } rows[] = {
        {"speed: not a movie", changeSpeed(text, 1), "Change speed: Failed to load video track", true},
        {"speed: no file", changeSpeed("/none", 1), "Change speed: Failed to load video track", true},
        {"speed: too fast", changeSpeed(good, 100),
         "changeSpeedError: A part of the movie would have no duration.", false},
        {"speed: taken", changeSpeed(good, 1, kept),
         "changeSpeedError: A file with this name exists already.", false},
        {"speed: no folder", changeSpeed(good, 1, path("none/out.mov")), "changeSpeedError: ", false},
        {"merge: not a movie", merge(text, good), "Failed to load first video", true},
        {"merge: taken", merge(good, good, kept), "merge export error: A file with this name exists already.",
         false},
        {"compress: not a movie", compress(good, text), "Failed to create AVAssetExportSession", true},
        {"compress: taken", compress(good, good, kept), "A file with this name exists already.", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_FALSE(row.log->success);
        EXPECT_EQ(row.log->message.value_or("").substr(0, row.message.size()), row.message);
        EXPECT_EQ(row.log->completions, 1);
        EXPECT_EQ(row.log->endedByCaller, row.isByCaller);
        EXPECT_EQ(std::ranges::count(row.log->progress, 1.0F), 0);
    }
}

TEST_F(ExportFailuresTest, ASecondClipWithoutVideoIsFatal) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string good = clip("good.mp4", {.frames = 3});
    EXPECT_DEATH(merge(good, path("none.mp4")), "merge: the second clip has no video track");
}

} // namespace anadrome
