#include "Desktop/Library/FindMovies.h"
#include "Tests/Desktop/Library/FileTimes.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace anadrome::desktop {

using namespace testing_support;
namespace fs = std::filesystem;

class FindMoviesTest : public ::testing::Test {
protected:
    void file(const std::string& name, std::time_t modified = 1) const {
        fs::create_directories(fs::path(m_folder.file(name)).parent_path());
        std::ofstream(m_folder.file(name)) << "some content";
        setModified(m_folder.file(name), modified);
    }

    std::vector<std::string> found(const std::stop_token& stop = {}) const {
        std::vector<std::string> names;
        for (const FoundMovie& movie : findMovies(URL::fileURLWithPath(m_folder.path().string()), stop))
            names.push_back(fs::relative(movie.file.path(), m_folder.path()));
        return names;
    }

    ScratchFolder m_folder;
};

TEST_F(FindMoviesTest, ListsMoviesOfAllFoldersTheNewestFirst) {
    file("middle.mp4", 200);
    file("Trips/2024/newest ü.MOV", 300);
    file("Trips/oldest.webm", 100);
    file("Trips/notes.txt", 400);
    file("poster.jpg", 400);
    file(".hidden.mp4", 400);
    file(".cache/inside.mp4", 400);
    fs::create_directories(m_folder.file("folder.mp4"));
    EXPECT_EQ(found(),
              (std::vector<std::string>{"Trips/2024/newest ü.MOV", "middle.mp4", "Trips/oldest.webm"}));
}

TEST_F(FindMoviesTest, GoesThroughLinkedFoldersOnce) {
    const ScratchFolder elsewhere;
    std::ofstream(elsewhere.file("linked.mp4")) << "some content";
    file("Trips/clip.mp4");
    fs::create_directory_symlink(m_folder.path(), m_folder.file("Trips/loop"));
    fs::create_directory_symlink(elsewhere.path(), m_folder.file("other"));
    fs::create_directory_symlink(elsewhere.path(), m_folder.file("same"));
    fs::create_symlink("nowhere.mp4", m_folder.file("dangling.mp4"));
    const auto names = found();
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names.back(), "Trips/clip.mp4");
}

TEST_F(FindMoviesTest, AFolderThatIsMissingOrASearchThatIsStoppedGivesNothing) {
    file("clip.mp4");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(found(stop.get_token()).empty());
    EXPECT_TRUE(findMovies(URL::fileURLWithPath(m_folder.file("missing")), {}).empty());
    EXPECT_TRUE(findMovies(URL(), {}).empty());
}

} // namespace anadrome::desktop
