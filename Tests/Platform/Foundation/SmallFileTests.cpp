#include "Platform/Foundation/SmallFile.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace anadrome;
using namespace anadrome::testing_support;
namespace fs = std::filesystem;

namespace {

long codeOf(const Result<std::string>& result) {
    return result ? 0 : result.error().code();
}

} // namespace

TEST(SmallFile, IsReplacedWholeForTheUserAlone) {
    const ScratchFolder folder;
    const std::string path = folder.file("a/b/state.json");
    for (const std::string content : {"a longer one", "{}"}) {
        EXPECT_FALSE(replaceSmallFile(path, content));
        const auto read = readSmallFile(path, 12);
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, content);
    }
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(folder.path() / "a").permissions(), fs::perms::owner_all);

    fs::create_directory(folder.path() / "taken");
    EXPECT_TRUE(replaceSmallFile(folder.file("taken"), "{}"));
    const auto countIn = [](const fs::path& path) { return std::distance(fs::directory_iterator(path), {}); };
    EXPECT_EQ(countIn(folder.path() / "a/b"), 1);
    EXPECT_EQ(countIn(folder.path()), 2);
}

TEST(SmallFile, IsNotReadIfItIsLargeOrNoFile) {
    const ScratchFolder folder;
    ASSERT_FALSE(replaceSmallFile(folder.file("large"), "12345"));
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    EXPECT_EQ(codeOf(readSmallFile(folder.file("large"), 5)), 0);
    EXPECT_EQ(codeOf(readSmallFile(folder.file("large"), 4)), NSFileReadUnknownError);
    EXPECT_EQ(codeOf(readSmallFile(folder.file("pipe"), 4)), NSFileReadUnknownError);
    EXPECT_EQ(codeOf(readSmallFile(folder.path(), 10'000)), NSFileReadUnknownError);
    EXPECT_EQ(codeOf(readSmallFile(folder.file("missing"), 4)), NSFileReadNoSuchFileError);
}
