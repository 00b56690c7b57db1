#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/TemporaryBase.h"
#include "Platform/Foundation/URL.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <thread>

using namespace anadrome;

TEST(URL, FoldsPathsAndTakesRelativeOnesFromTheCurrentFolder) {
    const std::string here = std::filesystem::current_path();
    const std::pair<std::string, std::string> cases[] = {
        {"/a//b/./c/", "/a/b/c"}, {"/a/b/../../../c", "/c"},        {"/..", "/"}, {"//", "/"},
        {"/a/...", "/a/..."},     {"clip.mov", here + "/clip.mov"}, {".", here},  {"", ""},
    };
    for (const auto& [path, folded] : cases)
        EXPECT_EQ(URL::fileURLWithPath(path).path(), folded) << path;
}

TEST(URL, EncodesEveryByteThatAUrlCantHold) {
    const std::pair<const char*, const char*> cases[] = {
        {"/home/a b", "file:///home/a%20b"},
        {"/50%#?.mov", "file:///50%25%23%3F.mov"},
        {"/é", "file:///%C3%A9"},
        {"/a+b(1)~-_.", "file:///a+b(1)~-_."},
    };
    for (const auto& [path, text] : cases)
        EXPECT_EQ(URL::fileURLWithPath(path).absoluteString(), text);
}

TEST(URL, TakesPathsApartAndPutsThemTogether) {
    const struct {
        const char *path, *name, *extension, *parent;
    } cases[] = {
        {"/a/clip.mov", "clip.mov", "mov", "/a"},
        {"/a.b/clip", "clip", "", "/a.b"},
        {"/a/.hidden", ".hidden", "", "/a"},
        {"/a/.hidden.mp4", ".hidden.mp4", "mp4", "/a"},
        {"/a/x.tar.gz", "x.tar.gz", "gz", "/a"},
        {"/top", "top", "", "/"},
        {"/", "/", "", "/"},
        {"", "", "", ""},
    };
    for (const auto& c : cases) {
        const URL url = URL::fileURLWithPath(c.path);
        EXPECT_EQ(url.lastPathComponent(), c.name);
        EXPECT_EQ(url.pathExtension(), c.extension);
        EXPECT_EQ(url.deletingLastPathComponent().path(), c.parent);
    }
    EXPECT_EQ(URL::fileURLWithPath("/").appendingPathComponent("a").path(), "/a");
    EXPECT_EQ(URL::fileURLWithPath("/a").appendingPathComponent("b/c/").path(), "/a/b/c");
    // An unset URL must not turn into a place at the root.
    EXPECT_TRUE(URL().appendingPathComponent("a").empty());
}

TEST(NSError, DescribesTheChainOfCausesOnOneLine) {
    const NSError error("Top", -11800, "It failed.",
                        NSError(NSPOSIXErrorDomain, 28, "No space left on device"));
    const std::string text = "Error Domain=Top Code=-11800 \"It failed.\" UserInfo={NSUnderlyingError="
                             "Error Domain=NSPOSIXErrorDomain Code=28 \"No space left on device\"}";
    EXPECT_EQ(error.description(), text);
    EXPECT_EQ(describe(error), "Optional(" + text + ")");
    EXPECT_EQ(describe(std::nullopt), "nil");
    EXPECT_EQ(NSError::posix(28).description(), error.underlying()->description());
}

TEST(Value, ReadsNumbersOnlyAsWhatTheyAre) {
    const struct {
        Value value;
        std::optional<double> number;
        std::optional<std::int64_t> integer;
    } cases[] = {
        {7, 7.0, 7},
        {4294967295u, 4294967295.0, 4294967295},
        {2.5, 2.5, std::nullopt},
        {-3.0, -3.0, -3},
        {0x1p63, 0x1p63, std::nullopt},
        {-0x1p63, -0x1p63, INT64_MIN},
        {true, std::nullopt, std::nullopt},
        {"7", std::nullopt, std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.value.asNumber(), c.number);
        EXPECT_EQ(c.value.asInteger(), c.integer);
    }
    EXPECT_FALSE(Value(std::numeric_limits<double>::quiet_NaN()).asInteger());
    const Dictionary nested{{"inner", Dictionary{{"key", "text"}}}};
    EXPECT_EQ(*findString(*find(nested, "inner")->asDictionary(), "key"), "text");
    EXPECT_EQ(findString(nested, "inner"), nullptr);
    EXPECT_EQ(find(nested, "key"), nullptr);
}

TEST(NSProcessInfo, NeverGivesTheSameStringTwiceFromAnyThread) {
    std::mutex mutex;
    std::set<std::string> strings;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 250; ++i) {
                const std::string string = NSProcessInfo::processInfo().globallyUniqueString();
                std::lock_guard lock(mutex);
                strings.insert(string);
            }
        });
    }
    threads.clear();
    EXPECT_EQ(strings.size(), 1000u);
    // The sweep of dead processes' folders knows them by this form.
    EXPECT_TRUE(isProcessFolderName(*strings.begin())) << *strings.begin();
    for (const char* other : {"", "sweep", "01234567-89AB-4CDE-8F01-23456789ABCD", "..-..-..-..-..-..-.."})
        EXPECT_FALSE(isProcessFolderName(other)) << other;
}
