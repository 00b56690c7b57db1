#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/TemporaryBase.h"
#include "Platform/Foundation/URL.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

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

TEST(URL, TakesPathsApartAndPutsThemTogether) {
    const struct {
        const char *path, *name, *extension, *parent;
    } cases[] = {
        {"/a/clip.mov", "clip.mov", "mov", "/a"},
        {"/a.b/clip", "clip", "", "/a.b"},
        {"/a/.hidden", ".hidden", "", "/a"},
        {"/a/.hidden.mp4", ".hidden.mp4", "mp4", "/a"},
        {"/a/x.tar.gz", "x.tar.gz", "gz", "/a"},
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

TEST(NSProcessInfo, NeverGivesTheSameStringTwice) {
    std::set<std::string> strings;
    for (int i = 0; i < 1000; ++i)
        strings.insert(NSProcessInfo::processInfo().globallyUniqueString());
    EXPECT_EQ(strings.size(), 1000u);
    // The sweep of dead processes' folders knows them by this form.
    EXPECT_TRUE(isProcessFolderName(*strings.begin())) << *strings.begin();
    for (const char* other : {"", "sweep", "01234567-89AB-4CDE-8F01-23456789ABCD", "..-..-..-..-..-..-.."})
        EXPECT_FALSE(isProcessFolderName(other)) << other;
}
