#include "Desktop/Library/LoadThumbnail.h"
#include "Tests/Desktop/Library/FileTimes.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/Environment.h"
#include "Tests/Support/Shell.h"

#include <QImage>
#include <filesystem>

namespace anadrome::desktop {

using namespace testing_support;
namespace fs = std::filesystem;

class ThumbnailTest : public ClipTest {
protected:
    Thumbnail load(const std::string& name) const { return loadThumbnail(URL::fileURLWithPath(path(name))); }

    /// Where another program keeps the thumbnail of a file whose name needs no escapes.
    std::string place(const std::string& folder, const std::string& name) const {
        const std::string key = outputOf("printf %s 'file://" + path(name) + "' | md5sum").substr(0, 32);
        return path("cache/thumbnails/" + folder + '/' + key + ".png");
    }
    static fs::perms permissions(const fs::path& file) { return fs::status(file).permissions(); }

    const Environment m_cache{"XDG_CACHE_HOME", path("cache")};
    const ClipOptions m_clip{.width = 320, .height = 180, .frames = 90};
};

TEST_F(ThumbnailTest, IsAPictureThatOtherProgramsFindAndUnderstand) {
    fs::create_directory(path("Été & co"));
    clip("Été & co/a clip.mp4", m_clip);
    setModified(path("Été & co/a clip.mp4"), 1700000000);
    const Thumbnail thumbnail = load("Été & co/a clip.mp4");
    EXPECT_EQ(thumbnail.seconds, 3);

    const std::string uri = "file://" + path("%C3%89t%C3%A9%20&%20co/a%20clip.mp4");
    const fs::path file = thumbnail.picture.toStdString();
    EXPECT_EQ(file.parent_path(), path("cache/thumbnails/large"));
    EXPECT_EQ(file.stem(), outputOf("printf %s '" + uri + "' | md5sum").substr(0, 32));
    EXPECT_EQ(permissions(file), fs::perms(0600));
    EXPECT_EQ(permissions(file.parent_path()), fs::perms(0700));
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1) << "nothing unfinished";
    const std::string bytes = std::to_string(fs::file_size(path("Été & co/a clip.mp4")));
    EXPECT_EQ(outputOf("exiftool -s3 -ThumbURI -ThumbMTime -ThumbSize -ThumbMimetype -ThumbMovieLength "
                       "-ImageSize -ColorType '" +
                       file.string() + "'"),
              uri + "\n1700000000\n" + bytes + "\nvideo/mp4\n3\n256x144\nRGB with Alpha\n");
}

TEST_F(ThumbnailTest, ThatOfAnotherProgramServesUntilTheFileChanges) {
    clip("clip.mp4", m_clip);
    setModified(path("clip.mp4"), 1700000000);
    QImage theirs(512, 288, QImage::Format_RGB32);
    theirs.fill(Qt::red);
    theirs.setText("Thumb::URI", QString::fromStdString("file://" + path("clip.mp4")));
    theirs.setText("Thumb::MTime", "1700000000");
    fs::create_directories(path("cache/thumbnails/x-large"));
    ASSERT_TRUE(theirs.save(QString::fromStdString(place("x-large", "clip.mp4"))));
    EXPECT_EQ(load("clip.mp4").picture.toStdString(), place("x-large", "clip.mp4"));
    EXPECT_EQ(load("clip.mp4").seconds, 3) << "read from the clip";

    setModified(path("clip.mp4"), 1700000001);
    EXPECT_EQ(load("clip.mp4").picture.toStdString(), place("large", "clip.mp4"));
    setModified(path("clip.mp4"), 1700000002);
    const QImage anew(load("clip.mp4").picture);
    EXPECT_EQ(anew.text("Thumb::MTime"), "1700000002");
}

TEST_F(ThumbnailTest, ADamagedClipIsTriedOnceForEachOfItsStates) {
    clip("clip.mp4", m_clip);
    fs::copy(path("clip.mp4"), path("whole.mp4"));
    fs::resize_file(path("clip.mp4"), 200);
    setModified(path("clip.mp4"), 1700000000);
    EXPECT_TRUE(load("clip.mp4").isBroken);
    EXPECT_EQ(std::distance(fs::directory_iterator(path("cache/thumbnails/fail")), {}), 1);

    fs::copy_file(path("whole.mp4"), path("clip.mp4"), fs::copy_options::overwrite_existing);
    setModified(path("clip.mp4"), 1700000000);
    EXPECT_TRUE(load("clip.mp4").isBroken) << "decoded although nothing tells of a change";
    setModified(path("clip.mp4"), 1700000001);
    EXPECT_FALSE(load("clip.mp4").isBroken);
}

TEST_F(ThumbnailTest, OfThumbnailsAndOfMissingFilesNoneAreMade) {
    fs::create_directories(path("cache/thumbnails"));
    clip("cache/thumbnails/clip.mp4", m_clip);
    EXPECT_TRUE(load("cache/thumbnails/clip.mp4").picture.isEmpty());
    EXPECT_TRUE(load("missing.mp4").isBroken);
    EXPECT_EQ(std::distance(fs::directory_iterator(path("cache/thumbnails")), {}), 1);
}

} // namespace anadrome::desktop
