// What the Edit screen does when the disk can't hold a clip's raw frames.

#include "Models/VideoFileManager.h"
#include "Platform/AVFoundation/AVPlayer.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Views/ScreenTest.h"

#include <dlfcn.h>
#include <filesystem>
#include <sys/statvfs.h>

namespace {

/// Free bytes that every disk reports; empty for the real number.
std::optional<std::uint64_t> pretendedFreeBytes;

} // namespace

/// Interposes the C library's function.
extern "C" int statvfs(const char* path, struct statvfs* disk) noexcept {
    static const auto real =
        reinterpret_cast<int (*)(const char*, struct statvfs*)>(::dlsym(RTLD_NEXT, "statvfs"));
    const int result = real(path, disk);
    if (result == 0 && pretendedFreeBytes)
        disk->f_bavail = *pretendedFreeBytes / disk->f_frsize;
    return result;
}

namespace anadrome {

namespace {

class JobSpaceTest : public ScreenTest {
protected:
    JobSpaceTest() {
        // 60 raw frames of 460,800 bytes each.
        m_edit = openEdit(clip("clip.mp4", {.width = 640, .height = 480, .frames = 60}));
        m_host.clear();
    }
    ~JobSpaceTest() override { pretendedFreeBytes.reset(); }

    /// Taps Create and closes the dialog that comes instead of a movie; its text.
    std::string refusal() {
        m_host.clear();
        editViews().createButton->tap();
        if (!waitUntil([&] { return dialog() || m_host.tells("push Preview"); }) || !dialog())
            return "";
        const std::string message = dialog()->message();
        dialog()->chooseAction(0);
        EXPECT_EQ(m_host.story().size(), 2U) << "nothing but the dialog, which is gone";
        return message;
    }
    void expectUntouched() const {
        EXPECT_EQ(m_stack->topViewController(), m_edit);
        EXPECT_EQ(m_edit->player()->rate(), -1.0F) << "the preview runs on";
        EXPECT_TRUE(std::filesystem::is_empty(VideoFileManager::videosDirectory().path()));
    }

    std::shared_ptr<EditViewController> m_edit;
};

} // namespace

TEST_F(JobSpaceTest, AClipThatTheDiskCannotHoldIsRefusedBeforeTheJobAndTakenOnceThereIsRoom) {
    pretendedFreeBytes = 50'400'000;
    EXPECT_EQ(refusal(), NSLocalizedString("NotEnoughRoomForFrames", {"62 MB", "50 MB"}));
    expectUntouched();
    pretendedFreeBytes = 100'000'000;
    editViews().createButton->tap();
    EXPECT_TRUE(waitFor("push Preview"));
}

TEST_F(JobSpaceTest, SoIsOneWhoseFramesCannotBeWrittenAtAll) {
    const testing_support::FileSizeLimit limit(400'000);
    EXPECT_EQ(refusal(), NSLocalizedString("FramesCannotBeKept", {"File too large"}));
    expectUntouched();
}

} // namespace anadrome
