// The program on a display server, seen by what stands on the screen, and operated by the server's own mouse
// and keyboard.

#include "Platform/Foundation/NSFileManager.h"
#include "Tests/Desktop/Window/WindowTest.h"
#include "Tests/Support/PictureReading.h"
#include "Tests/Support/Shell.h"

#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <set>

namespace anadrome::desktop {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

constexpr double clipSeconds = 3;
const ClipOptions numbered{.width = 640, .height = 360, .frames = 90, .audioCodec = "aac"};

LumaPicture lumaOf(const QImage& image) {
    const QImage grey = image.convertToFormat(QImage::Format_Grayscale8);
    LumaPicture luma{.width = grey.width(), .height = grey.height()};
    for (int y = 0; y < grey.height(); ++y)
        luma.samples.insert(luma.samples.end(), grey.constScanLine(y), grey.constScanLine(y) + grey.width());
    return luma;
}

nlohmann::json probed(const fs::path& movie) {
    return nlohmann::json::parse(
        outputOf("ffprobe -v error -of json -show_streams -show_format '" + movie.string() + "'"));
}

} // namespace

class EndToEndTest : public WindowTest {
protected:
    EndToEndTest() {
        // In the middle, where a dialog that is wider has room.
        window().setPosition(430, 40);
        takeKeys();
    }

    /// The server's keys go where it is told, since nobody manages windows there.
    void takeKeys() {
        user("windowfocus --sync " + std::to_string(window().winId()));
        EXPECT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == &window(); }));
    }

    static void user(const std::string& does) {
        outputOf("xdotool " + does);
        runEventLoopFor(std::chrono::milliseconds(100));
    }
    std::string onScreen(QPointF point) {
        const QPoint global = window().mapToGlobal(point).toPoint();
        return std::to_string(global.x()) + ' ' + std::to_string(global.y()) + ' ';
    }
    void clickAt(QPointF point) { user("mousemove --sync " + onScreen(point) + "click 1"); }
    /// In the main window's coordinates, in whatever window that text is; none if it is in none.
    std::optional<QPointF> anywhere(const QString& text) {
        for (const QWindow* each : QGuiApplication::allWindows()) {
            const auto* shown = qobject_cast<const QQuickWindow*>(each);
            const QRectF place = shown && shown->isVisible() ? placeOfText(text, *shown) : QRectF();
            if (!place.isEmpty())
                return window().mapFromGlobal(shown->mapToGlobal(place.center()));
        }
        return std::nullopt;
    }
    void clickOn(const QString& name) {
        ASSERT_TRUE(waitUntil([&] { return !place(name).isEmpty(); })) << name.toStdString();
        clickAt(place(name).center());
    }
    void clickSegment(const QString& name, double part) {
        const QRectF all = place(name);
        clickAt({all.left() + all.width() * part, all.center().y()});
    }
    void dragSlider(const QString& name, double part) {
        const QRectF slider = place(name);
        const QPointF thumb(slider.center().x(), slider.center().y());
        user("mousemove --sync " + onScreen(thumb) + "mousedown 1");
        for (int step = 1; step <= 5; ++step)
            user("mousemove --sync " + onScreen(thumb + QPointF(slider.width() * part * step / 5, 0)));
        user("mouseup 1");
    }

    /// Through the file dialog that the toolkit brings along where a desktop has none: in the window, or,
    /// since 6.8, in one of its own.
    void chooseFile(const std::string& name) {
        fs::current_path(m_folder.path());
        clickOn("iCloudButton");
        for (const QString& text : {QString::fromStdString(name), QString("Open")}) {
            ASSERT_TRUE(waitUntil([&] { return anywhere(text).has_value(); })) << text.toStdString();
            clickAt(*anywhere(text));
        }
        ASSERT_TRUE(waitForScreen("Edit"));
        takeKeys();
    }

    /// All files in the work folder.
    static std::set<std::string> workFiles() {
        std::set<std::string> files;
        for (const auto& entry :
             fs::recursive_directory_iterator(NSFileManager::defaultManager().temporaryDirectory().path()))
            if (entry.is_regular_file())
                files.insert(entry.path());
        return files;
    }

    std::optional<int> numberOnScreen() {
        return readFrameNumber(lumaOf(window().grabWindow().copy(place("playerView").toRect())));
    }
    /// The numbers of the clip's pictures as they come to the screen within that time, each once.
    std::vector<int> numbersOnScreen(std::chrono::milliseconds time) {
        std::vector<int> numbers;
        runEventLoopUntil(
            [&] {
                const auto number = numberOnScreen();
                if (number && (numbers.empty() || numbers.back() != *number))
                    numbers.push_back(*number);
                return false;
            },
            time);
        return numbers;
    }
};

TEST_F(EndToEndTest, AClipIsWatchedBackwardSpedUpJoinedMadePlayedAndSaved) {
    clip("clip.mp4", numbered);
    chooseFile("clip.mp4");
    const std::vector<int> seen = numbersOnScreen(std::chrono::seconds(2));
    EXPECT_GT(seen.size(), 10u);
    EXPECT_TRUE(std::ranges::is_sorted(seen, std::greater())) << "the pictures run backward";

    dragSlider("reverseSpeedSlider", 1.0 / 18);
    ASSERT_TRUE(waitForScreen("Edit"));
    const double speed = editScreen().reverseSpeedValueLabel->text().chopped(1).toDouble();
    EXPECT_NEAR(speed, 2, 0.3);

    const std::pair<double, const char*> types[] = {
        {0.9, "Forward, then backward"}, {0.1, "Backward"}, {0.5, "Backward, then forward"}};
    for (const auto& [part, name] : types) {
        clickSegment("outputTypeSegmentedControl", part);
        EXPECT_EQ(editScreen().outputTypeValueLabel->text(), name);
    }
    clickOn("createButton");
    EXPECT_TRUE(waitUntil([&] { return host().hud()->isVisible() && host().hud()->kind() == "pie"; }));
    ASSERT_TRUE(waitForScreen("Preview"));

    const auto& preview = *qobject_cast<PreviewScreen*>(&screen());
    ASSERT_EQ(preview.stretches().size(), 2);
    EXPECT_NEAR(preview.stretches()[0].toMap()["end"].toDouble(), 1 / (1 + speed), 1e-6);
    const auto* movie = preview.player();
    user("key space");
    EXPECT_TRUE(waitUntil([&] { return movie->position() > 0.5; }));
    user("key space");
    EXPECT_FALSE(movie->isPlaying());
    clickOn("saveButton");
    ASSERT_TRUE(waitUntil([&] { return host().hud()->isVisible() && host().hud()->kind() == "tick"; }));

    const fs::path library = m_folder.path() / "Videos" / "Anadrome";
    ASSERT_EQ(std::distance(fs::directory_iterator(library), {}), 1);
    const auto found = probed(fs::directory_iterator(library)->path());
    EXPECT_NEAR(std::stod(found["format"]["duration"].get<std::string>()), clipSeconds / speed + clipSeconds,
                0.15);
    std::vector<std::string> codecs;
    for (const auto& stream : found["streams"])
        codecs.push_back(stream["codec_name"]);
    std::ranges::sort(codecs);
    EXPECT_EQ(codecs, (std::vector<std::string>{"aac", "h264"}));
}

TEST_F(EndToEndTest, AJobIsStoppedByButtonAndByKeyAndTheNextOneMakesTheMovie) {
    clip("clip.mp4", {.width = 640, .height = 360, .frames = 300});
    chooseFile("clip.mp4");
    clickSegment("outputTypeSegmentedControl", 0.5);
    clickSegment("fileTypeSegmentedControl", 0.75);
    dragSlider("normalSpeedSlider", 1.0 / 18);
    EXPECT_TRUE(place("stopButton").isEmpty()) << "a preview isn't a job";
    ASSERT_TRUE(waitForScreen("Edit"));
    const auto controls = [&] {
        const EditScreen& edit = editScreen();
        return QVariantList{edit.outputTypeSegmentedControl->selected(),
                            edit.fileTypeSegmentedControl->selected(), edit.reverseSpeedValueLabel->text(),
                            edit.normalSpeedValueLabel->text()};
    };
    const QVariantList controlsBefore = controls();
    EXPECT_NE(controlsBefore[3], controlsBefore[2]);
    const std::set<std::string> filesBefore = workFiles();
    const std::function<void()> ways[] = {[&] { clickOn("stopButton"); }, [] { user("key Escape"); }};
    for (const auto& stop : ways) {
        clickOn("createButton");
        ASSERT_TRUE(waitUntil([&] { return host().job()->progress() > 0.1; }));
        EXPECT_NE(workFiles(), filesBefore);
        stop();
        ASSERT_TRUE(waitUntil([&] { return !host().job()->isRunning(); }));
        ASSERT_TRUE(waitForScreen("Edit"));
        EXPECT_EQ(over(), nullptr);
        EXPECT_EQ(controls(), controlsBefore);
        EXPECT_EQ(workFiles(), filesBefore);
    }
    clickOn("createButton");
    EXPECT_TRUE(waitForScreen("Preview"));
}

TEST_F(EndToEndTest, SettingsAndErrorsComeAndGoAndTheClipCanBeLeft) {
    clickOn("infoButton");
    ASSERT_TRUE(waitUntil([&] { return over() && over()->kind() == "Settings"; }));
    settle();
    // Nobody writes mails here.
    clickOn("ladybug");
    ASSERT_TRUE(waitUntil([&] { return over()->kind() == "Alert"; }));
    settle();
    user("key Return");
    ASSERT_TRUE(waitUntil([&] { return over()->kind() == "Settings"; }));
    clickOn("closeButton");
    ASSERT_TRUE(waitUntil([&] { return !over(); }));
    settle();

    clip("clip.mp4", numbered);
    chooseFile("clip.mp4");
    fs::resize_file(path("clip.mp4"), 1000);
    clickOn("createButton");
    ASSERT_TRUE(waitUntil([&] { return over() && over()->kind() == "Alert"; }));
    settle();
    clickOn("choice0");
    ASSERT_TRUE(waitUntil([&] { return !over(); }));
    settle();
    user("key Escape");
    EXPECT_TRUE(waitForScreen("Title"));
}

struct JapaneseUser {
    const Environment language{"LC_ALL", "ja_JP.UTF-8"};
};

class EndToEndTestInJapanese : private JapaneseUser, public EndToEndTest {};

TEST_F(EndToEndTestInJapanese, EveryTextOfTheRoadIsTheUsersLanguage) {
    EXPECT_EQ(titleScreen().iCloudButton->title(), "ファイルを開く");
    clip("clip.mp4", numbered);
    chooseFile("clip.mp4");
    EXPECT_EQ(editScreen().createButton->title(), "作成");
    clickSegment("outputTypeSegmentedControl", 0.9);
    EXPECT_EQ(editScreen().outputTypeValueLabel->text(), "順再生のあと逆再生");
}

} // namespace anadrome::desktop
