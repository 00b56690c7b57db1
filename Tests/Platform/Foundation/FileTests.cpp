#include "Platform/Foundation/FileData.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace anadrome;
namespace fs = std::filesystem;

namespace {

class FileTests : public testing::Test {
protected:
    std::string path(const std::string& name) const { return m_folder.file(name); }
    URL url(const std::string& name) const { return URL::fileURLWithPath(path(name)); }
    void write(const std::string& name) const { ASSERT_FALSE(writeData(url(name), bytesOf(3, 0))); }

    static NSData bytesOf(std::size_t count, int first) {
        NSData bytes(count);
        for (std::size_t i = 0; i < count; ++i)
            bytes[i] = static_cast<std::byte>(first + i * 7);
        return bytes;
    }

    const testing_support::ScratchFolder m_folder;
    NSFileManager& m_manager = NSFileManager::defaultManager();
};

/// Cocoa code and, underneath, the system's.
std::pair<long, long> codesOf(const std::optional<NSError>& error) {
    if (!error || !error->underlying())
        return {};
    EXPECT_EQ(error->domain(), NSCocoaErrorDomain);
    EXPECT_EQ(error->underlying()->domain(), NSPOSIXErrorDomain);
    return {error->code(), error->underlying()->code()};
}

using Codes = std::pair<long, long>;

} // namespace

TEST_F(FileTests, TellWhichFileFailedAndWhy) {
    write("file");
    EXPECT_EQ(codesOf(m_manager.contentsOfDirectoryAtPath(path("none")).error()), Codes(260, ENOENT));
    EXPECT_EQ(codesOf(m_manager.contentsOfDirectoryAtPath(path("file")).error()), Codes(256, ENOTDIR));
    EXPECT_EQ(codesOf(m_manager.attributesOfItemAtPath(path("none")).error()), Codes(260, ENOENT));
    EXPECT_EQ(codesOf(m_manager.removeItemAtPath(path("none"))), Codes(4, ENOENT));
    EXPECT_EQ(codesOf(m_manager.removeItemAtPath("")), Codes(4, ENOENT));
    EXPECT_EQ(codesOf(m_manager.createDirectoryAtPath(path("none/new"), false)), Codes(4, ENOENT));
    EXPECT_EQ(codesOf(m_manager.createDirectoryAtPath(path("file"), true)), Codes(516, EEXIST));
    EXPECT_EQ(codesOf(m_manager.createDirectoryAtPath(path("file/new"), true)), Codes(512, ENOTDIR));
    EXPECT_EQ(codesOf(m_manager.copyItemAtURL(url("none"), url("copy"))), Codes(260, ENOENT));
    EXPECT_EQ(codesOf(m_manager.copyItemAtURL(url("file"), url("file"))), Codes(516, EEXIST));
    EXPECT_EQ(codesOf(m_manager.copyItemAtURL(url("file"), url("none/copy"))), Codes(4, ENOENT));
    EXPECT_EQ(codesOf(m_manager.copyItemAtURL(url(""), url("copy"))), Codes(256, EINVAL));
    EXPECT_EQ(codesOf(readData(url("none")).error()), Codes(260, ENOENT));
    EXPECT_EQ(codesOf(FileReader::open(url("none")).error()), Codes(260, ENOENT));
    const auto error = writeData(url("none/frame_3.data"), std::span<const std::byte>());
    EXPECT_EQ(codesOf(error), Codes(4, ENOENT));
    EXPECT_EQ(error->localizedDescription(),
              "“frame_3.data” couldn’t be written: No such file or directory.");
}

TEST_F(FileTests, AreRemovedWithoutFollowingLinks) {
    fs::create_directories(path("outside"));
    write("outside/kept");
    fs::create_directories(path("tree/deep/er"));
    write("tree/deep/file");
    fs::create_directory_symlink(path("outside"), path("tree/deep/link"));
    fs::create_directory_symlink(path("outside"), path("top"));
    fs::create_symlink(path("nowhere"), path("dangling"));
    EXPECT_FALSE(m_manager.removeItemAtPath(path("tree")));
    EXPECT_FALSE(m_manager.removeItemAtPath(path("top/")));
    EXPECT_FALSE(m_manager.removeItemAtPath(path("dangling")));
    EXPECT_EQ(*m_manager.contentsOfDirectoryAtPath(m_folder.path()), std::vector<std::string>{"outside"});
    EXPECT_TRUE(m_manager.fileExistsAtPath(path("outside/kept")));
}

TEST_F(FileTests, ComeBackAsTheyWereWritten) {
    const NSData luma = bytesOf(3'000'001, 1);
    const NSData chroma = bytesOf(70'000, 5);
    // More pieces than the system takes in one call, some of them empty.
    std::vector<std::span<const std::byte>> pieces{luma, {}, chroma};
    for (std::size_t i = 0; i < 3000; ++i)
        pieces.push_back(std::span(chroma).subspan(i, i % 3));
    NSData whole;
    for (const auto& piece : pieces)
        whole.insert(whole.end(), piece.begin(), piece.end());

    ASSERT_FALSE(writeData(url("frame"), bytesOf(9'000'000, 0))); // Longer, to be replaced as a whole.
    ASSERT_FALSE(writeData(url("frame"), pieces));
    EXPECT_EQ(*readData(url("frame")), whole);

    auto reader = FileReader::open(url("frame"));
    NSData first(luma.size());
    NSData second(whole.size() - luma.size());
    const std::span<std::byte> both[] = {first, second};
    ASSERT_TRUE(reader->read(both));
    first.insert(first.end(), second.begin(), second.end());
    EXPECT_EQ(first, whole);
    NSData beyond(1);
    const std::span<std::byte> more[] = {beyond};
    EXPECT_FALSE(reader->read(more));
}

TEST_F(FileTests, AreNotLeftBehindHalfWritten) {
    const testing_support::FileSizeLimit full(100'000);
    EXPECT_EQ(codesOf(writeData(url("frame"), bytesOf(300'000, 0))), Codes(640, EFBIG));
    EXPECT_FALSE(m_manager.fileExistsAtPath(path("frame")));
    // But no device is removed.
    fs::create_symlink("/dev/full", path("full"));
    EXPECT_EQ(codesOf(writeData(url("full"), bytesOf(10, 0))), Codes(640, ENOSPC));
    EXPECT_TRUE(fs::is_symlink(path("full")));
}
