#include "Desktop/Library/LibraryScreen.h"
#include "Tests/Desktop/Library/FileTimes.h"
#include "Tests/Desktop/Window/WindowTest.h"

#include <filesystem>
#include <fstream>

namespace anadrome::desktop {

using namespace testing_support;

class LibraryTest : public WindowTest {
protected:
    void addClip(const std::string& name, int frames, std::time_t modified) const {
        std::filesystem::create_directories(path("Videos"));
        clip("Videos/" + name, {.width = 128, .height = 72, .frames = frames});
        setModified(path("Videos/" + name), modified);
    }

    /// Listed, but can't be read.
    void addFile(const std::string& name, std::time_t modified) const {
        std::filesystem::create_directories(path("Videos"));
        std::ofstream(path("Videos/" + name)) << "no movie";
        setModified(path("Videos/" + name), modified);
    }

    LibraryScreen& open() {
        click("libraryButton");
        auto& library = *qobject_cast<LibraryScreen*>(over());
        EXPECT_TRUE(waitUntil([&] { return !library.isSearching(); }));
        settle();
        return library;
    }

    const Environment m_cache{"XDG_CACHE_HOME", m_folder.file("cache")};
};

TEST_F(LibraryTest, ArrowsWalkThroughTheMonthsAndEnterOpensTheClip) {
    const std::time_t march20 = 1710936000;
    constexpr std::time_t day = 24 * 60 * 60;
    addClip("newest.mp4", 30, march20);
    addClip("middle.mp4", 120, march20 - 10 * day);
    addClip("oldest.mp4", 60, march20 - 60 * day);
    LibraryScreen& library = open();
    EXPECT_LT(place("clip0").right(), place("clip1").left());
    EXPECT_LT(place("clip1").bottom() + 20, place("clip2").top()) << "a month's name has room between";
    EXPECT_TRUE(waitUntil([&] { return library.lines()->clips().at(2)->length() == "0:02"; }));

    const std::pair<Qt::Key, int> walk[]{{Qt::Key_Right, 1}, {Qt::Key_Down, 2},     {Qt::Key_Down, 2},
                                         {Qt::Key_Home, 0},  {Qt::Key_PageDown, 2}, {Qt::Key_Left, 1},
                                         {Qt::Key_End, 2},   {Qt::Key_Up, 0},       {Qt::Key_Right, 1}};
    for (const auto& [key, row] : walk) {
        press(key);
        EXPECT_EQ(library.lines()->current(), row) << key;
    }
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Left, Qt::Key_Right})
        press(key);
    EXPECT_EQ(library.lines()->current(), 1) << "Tab leads to the button that closes and back";
    press(Qt::Key_Return);
    ASSERT_TRUE(waitForScreen("Edit"));
    EXPECT_NEAR(editScreen().videoSeekBar->to(), 4, 0.1);
}

TEST_F(LibraryTest, TheFirstClipInSightStaysThereAsTheWindowGetsWider) {
    for (int i = 0; i < 60; ++i)
        addFile(std::to_string(i) + ".mp4", 1710936000 - i);
    window().resize(420, 600);
    open();
    QQuickItem* grid = nullptr;
    visit(window().contentItem(), [&](QQuickItem& item) {
        if (item.objectName() == "clips")
            grid = &item;
    });
    ASSERT_TRUE(grid);
    grid->setProperty("contentY", 1500);
    settle();
    int first = 0;
    while (place("clip" + QString::number(first)).bottom() <= grid->mapToScene({0, 0}).y())
        ++first;
    ASSERT_GT(first, 20);
    window().resize(1100, 600);
    settle();
    const QRectF now = place("clip" + QString::number(first));
    EXPECT_GE(now.bottom(), grid->mapToScene({0, 0}).y());
    EXPECT_LT(now.top(), 300);
}

TEST_F(LibraryTest, AClickTakesAClip) {
    addClip("clip.mp4", 30, 1710936000);
    open();
    click("clip0");
    EXPECT_TRUE(waitForScreen("Edit"));
}

TEST_F(LibraryTest, AnEmptyOneSaysWhereClipsAreLookedFor) {
    EXPECT_EQ(open().folder(), "~/Videos");
    EXPECT_FALSE(place("libraryPlace").isEmpty());
}

} // namespace anadrome::desktop
