#include "Platform/Photos/PHAssetChangeRequest.h"
#include "Platform/Photos/PHPhotoLibrary.h"
#include "Platform/Photos/PHPhotosError.h"
#include "Platform/Photos/SaveVideo.h"
#include "Tests/Support/Environment.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/ScratchFolder.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <future>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>

namespace anadrome {

namespace {

using testing_support::Environment;

namespace fs = std::filesystem;

class PHPhotoLibraryTest : public ::testing::Test {
protected:
    PHPhotoLibraryTest() {
        std::ofstream(m_clip) << "movie";
        const timespec times[]{{noon, 0}, {noon, 0}};
        ::utimensat(AT_FDCWD, m_clip.c_str(), times, 0);
    }

    std::optional<NSError> save(const std::string& clip) {
        return saveVideo(URL::fileURLWithPath(clip), URL::fileURLWithPath(m_library));
    }
    std::vector<std::string> saved() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(m_library))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    static constexpr std::time_t noon = 1767009600; // 2025-12-29 12:00 UTC
    testing_support::ScratchFolder m_scratch;
    const std::string m_clip = m_scratch.file("clip.mov");
    const std::string m_library = m_scratch.file("Videos/Anadrome");
};

} // namespace

TEST_F(PHPhotoLibraryTest, ACopyKeepsItsContentAndItsTimeAndTakesAFreeName) {
    const Environment zone("TZ", "UTC");
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(save(m_clip));
    EXPECT_EQ(saved(), (std::vector<std::string>{"2025-12-29 12.00.00-2.mov", "2025-12-29 12.00.00-3.mov",
                                                 "2025-12-29 12.00.00.mov"}));
    const std::string copy = m_library + "/2025-12-29 12.00.00.mov";
    std::ifstream file(copy);
    EXPECT_EQ(std::string(std::istreambuf_iterator(file), {}), "movie");
    struct stat status {};
    ASSERT_EQ(::stat(copy.c_str(), &status), 0);
    EXPECT_EQ(status.st_mtime, noon);
    EXPECT_TRUE(fs::exists(m_clip));
}

TEST_F(PHPhotoLibraryTest, WhatCannotBeSavedHasItsCodeAndLeavesNothing) {
    const auto expect = [](const std::optional<NSError>& error, long code) {
        ASSERT_TRUE(error);
        EXPECT_EQ(error->domain(), PHPhotosErrorDomain);
        EXPECT_EQ(error->code(), code) << error->description();
    };
    expect(save(m_scratch.file("nowhere.mov")), PHPhotosErrorMissingResource);
    expect(save(m_scratch.path()), PHPhotosErrorInvalidResource);
    EXPECT_FALSE(fs::exists(m_library));

    {
        const testing_support::FileSizeLimit full(2);
        expect(save(m_clip), PHPhotosErrorNotEnoughSpace);
    }
    EXPECT_EQ(saved(), std::vector<std::string>{});

    // Not even the administrator makes folders there.
    expect(saveVideo(URL::fileURLWithPath(m_clip), URL::fileURLWithPath("/sys/library")),
           PHPhotosErrorAccessUserDenied);
}

TEST_F(PHPhotoLibraryTest, ChangesAreMadeInTheFolderThatTheUserHasForVideos) {
    const Environment home("HOME", m_scratch.path());
    const Environment configuration("XDG_CONFIG_HOME", m_scratch.file("config"));
    fs::create_directory(m_scratch.file("config"));
    const auto saveThroughLibrary = [&](const std::string& clip) {
        std::promise<std::pair<bool, std::optional<NSError>>> answer;
        PHPhotoLibrary::sharedPhotoLibrary().performChanges(
            [&] {
                PHAssetChangeRequest::creationRequestForAssetFromVideoAtFileURL(URL::fileURLWithPath(clip));
            },
            [&](bool success, std::optional<NSError> error) {
                answer.set_value({success, error});
            });
        return answer.get_future().get();
    };
    const std::pair<const char*, const char*> cases[]{{"", "Videos"},
                                                      {"# XDG_VIDEOS_DIR=\"$HOME/Other\"", "Videos"},
                                                      {"XDG_VIDEOS_DIR=\"$HOME/My Films\"", "My Films"},
                                                      {"XDG_VIDEOS_DIR=\"relative\"", "Videos"}};
    for (const auto& [line, name] : cases) {
        std::ofstream(m_scratch.file("config/user-dirs.dirs")) << line << '\n';
        const fs::path folder = m_scratch.path() / name / "Anadrome";
        fs::remove_all(folder);
        EXPECT_TRUE(saveThroughLibrary(m_clip).first) << line;
        EXPECT_TRUE(fs::exists(folder) && !fs::is_empty(folder)) << line;
    }
    const auto [success, error] = saveThroughLibrary(m_scratch.file("nowhere.mov"));
    EXPECT_FALSE(success);
    EXPECT_EQ(error->code(), PHPhotosErrorMissingResource);
}

} // namespace anadrome
