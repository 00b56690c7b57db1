#include "Platform/Foundation/FileData.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/ScratchFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <linux/magic.h>
#include <memory>
#include <string_view>
#include <sys/vfs.h>
#include <unistd.h>

using namespace anadrome;
using testing_support::ChildProcess;
namespace fs = std::filesystem;

namespace {

// What the child processes do.

void tellFolder() {
    std::puts(TemporaryDirectory::current().path().c_str());
    std::fflush(stdout);
}

[[noreturn]] void holdFolder() {
    tellFolder();
    while (true)
        ::pause();
}

[[noreturn]] void leaveFolder() {
    tellFolder();
    for (const URL& part : {TemporaryDirectory::current(), TemporaryDirectory::shared()})
        if (writeData(part.appendingPathComponent("file"), std::span<const std::byte>()))
            ::_exit(1);
    TemporaryDirectory::remove();
    TemporaryDirectory::remove();
    ::_exit(TemporaryDirectory::current().empty() ? 1 : 0);
}

/// The children are this very program, started with a role. Constructors get the arguments of main().
[[gnu::constructor]] void playRole(int argc, char** argv) {
    TemporaryDirectory::finishRemovalIfAsked(argc, argv);
    const std::string_view role = ChildProcess::ownRole();
    if (role == "hold")
        holdFolder();
    if (role == "leave")
        leaveFolder();
}

/// Works under a cache folder of its own and tells the process's folder in it.
class Child : public ChildProcess {
public:
    Child(const std::string& role, const fs::path& cache)
        : ChildProcess(role, {"XDG_CACHE_HOME=" + cache.string()}) {}

    fs::path folder() const { return fs::path(readLine()).parent_path(); }
};

class TemporaryDirectoryTests : public testing::Test {
protected:
    static fs::path lockOf(const fs::path& folder) { return folder.string() + ".lock"; }

    const testing_support::ScratchFolder m_folder{"/var/tmp"};
    const fs::path m_cache = m_folder.path();
};

} // namespace

TEST_F(TemporaryDirectoryTests, GoesWithItsLockAtTheEndOfTheProgram) {
    Child child("leave", m_cache);
    const fs::path folder = child.folder();
    EXPECT_EQ(child.wait(), 0);
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_FALSE(fs::exists(lockOf(folder)));
}

TEST_F(TemporaryDirectoryTests, OfAKilledProcessIsSweptByTheNextStartButNoOther) {
    Child living("hold", m_cache);
    Child dying("hold", m_cache);
    const fs::path kept = living.folder();
    const fs::path swept = dying.folder();
    fs::create_directories(m_cache / "outside");
    ASSERT_FALSE(
        writeData(URL::fileURLWithPath((m_cache / "outside/file").string()), std::span<const std::byte>()));
    fs::create_directories(swept / "Frames");
    fs::create_directory_symlink(m_cache / "outside", swept / "Frames/link");
    const fs::path lockless =
        swept.parent_path() / "01234567-89AB-4CDE-8F01-23456789ABCD-77-0000000000000001";
    fs::create_directories(lockless / "Videos");
    fs::create_directories(swept.parent_path() / "not ours");
    dying.kill();
    ASSERT_TRUE(fs::exists(swept));

    Child next("hold", m_cache);
    ASSERT_TRUE(fs::exists(next.folder()));
    for (const fs::path& gone : {swept, lockOf(swept), lockless})
        EXPECT_FALSE(fs::exists(gone)) << gone;
    EXPECT_TRUE(fs::exists(kept));
    EXPECT_TRUE(fs::exists(m_cache / "outside/file"));
    EXPECT_TRUE(fs::exists(swept.parent_path() / "not ours"));
}

TEST_F(TemporaryDirectoryTests, OfManyProcessesThatStartTogetherAllStayEachForThisUserAlone) {
    std::vector<std::unique_ptr<Child>> children;
    for (int i = 0; i < 8; ++i)
        children.push_back(std::make_unique<Child>("hold", m_cache));
    std::vector<fs::path> folders;
    for (const auto& child : children)
        folders.push_back(child->folder());
    for (const fs::path& folder : folders) {
        EXPECT_EQ(folder.parent_path(), m_cache / "anadrome");
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder;
    }
}

TEST_F(TemporaryDirectoryTests, IsNotRemovedByACommandLineThatSomebodyTypes) {
    Child child("hold", m_cache);
    const fs::path folder = child.folder();
    const fs::path order = m_cache / "order";
    const std::string text = std::string("0") + '\0' + folder.string() + '\0';
    ASSERT_FALSE(writeData(URL::fileURLWithPath(order.string()), std::as_bytes(std::span(text))));
    const std::string program = fs::read_symlink("/proc/self/exe");
    const std::string command = "GTEST_FILTER=none XDG_CACHE_HOME=" + m_cache.string() + " '" + program +
                                "' --remove-temporary-directory 3 >/dev/null 3<" + order.string();
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(fs::exists(folder));
}

TEST_F(TemporaryDirectoryTests, DoesNotLieInMemory) {
    struct statfs status {};
    if (::statfs("/dev/shm", &status) != 0 || status.f_type != TMPFS_MAGIC || ::access("/dev/shm", W_OK) != 0)
        GTEST_SKIP() << "No file system in memory here.";
    const testing_support::ScratchFolder inMemory("/dev/shm");
    Child child("leave", inMemory.path());
    const fs::path folder = child.folder();
    EXPECT_EQ(child.wait(), 0);
    EXPECT_EQ(folder.parent_path(), "/var/tmp/anadrome-" + std::to_string(::geteuid()));
}
