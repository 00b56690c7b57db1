#include "Tests/Views/ScreenTest.h"

#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

namespace anadrome {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// They keep memory for their own ends, and find what was lost themselves.
constexpr bool measuresMemory = false;
constexpr int openings = 50;
constexpr int jobs = 2;
#else
constexpr bool measuresMemory = true;
constexpr int openings = 1000;
constexpr int jobs = 10;
#endif

/// Files that are open, and not what threads wake each other by.
int openFiles() {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry, gone).is_absolute())
            ++files;
    }
    return files;
}

/// What the process holds of the machine's memory, in megabytes.
double residentMemory() {
    ::malloc_trim(0);
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return static_cast<double>(pages * ::sysconf(_SC_PAGESIZE)) / 1e6;
}

class LeakTest : public ScreenTest {
protected:
    // As the program does: every further heap keeps what its threads gave back.
    LeakTest() { ::mallopt(M_ARENA_MAX, 2); }

    void openAndLeave(int times) {
        for (int i = 0; i < times; ++i) {
            const std::shared_ptr<AVPlayerItem> item = openEdit(m_clip)->player()->currentItem();
            ASSERT_TRUE(waitUntil([&] { return item->status() == AVPlayerItemStatus::readyToPlay; }));
            m_stack->popToRootViewControllerAnimated(false);
            forget();
        }
    }
    void makeMovies(int times) {
        for (int i = 0; i < times; ++i) {
            openEdit(m_clip);
            editViews().outputTypeSegmentedControl->tapSegment(1);
            editViews().exifSwitch->tap();
            editViews().createButton->tap();
            ASSERT_TRUE(waitFor("push Preview"));
            m_stack->popToRootViewControllerAnimated(false);
            forget();
        }
    }

    void forget() {
        m_host.clear();
        m_host.changes.clear();
    }

    const std::string m_clip = clip("clip.mp4", {.frames = 15, .audioCodec = "aac"});
};

} // namespace

TEST_F(LeakTest, AThousandScreensAndTenMoviesLeaveTheProcessAsItWas) {
    openAndLeave(openings / 10);
    makeMovies(3);
    const int filesBefore = openFiles();
    const double memoryBefore = residentMemory();
    openAndLeave(openings);
    makeMovies(jobs);
    EXPECT_TRUE(waitUntil([&] { return openFiles() <= filesBefore; }, std::chrono::seconds(10)));
    if (measuresMemory) {
        EXPECT_LE(residentMemory(), memoryBefore * 1.05);
    }
}

} // namespace anadrome
