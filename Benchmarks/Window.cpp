// Opens the window, lets it do one thing, and prints what that was like for the one who sits before it: times
// in milliseconds, the first by which it is judged.

#include "Desktop/DesktopApp.h"
#include "Desktop/Screens/EditScreen.h"
#include "Platform/AVKit/AVPlayerLayerView.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/ProcessSetUp.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIWindow.h"

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTimer>
#include <QVideoFrame>
#include <QVideoSink>
#include <atomic>
#include <fstream>
#include <iostream>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace {

using namespace anadrome;
using namespace anadrome::desktop;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// As the system counts it, in steps of its clock's tick.
double millisecondsSinceProcessStart() {
    std::ifstream file("/proc/self/stat");
    std::string text((std::istreambuf_iterator<char>(file)), {});
    // The name of the program, in parentheses, may hold spaces; the start is the 20th field after it.
    std::istringstream fields(text.substr(text.rfind(')') + 2));
    std::string field;
    for (int i = 0; i < 20; ++i)
        fields >> field;
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return (now.tv_sec + now.tv_nsec / 1e9 - std::stod(field) / ::sysconf(_SC_CLK_TCK)) * 1000;
}

/// Asks the main thread for a sign of life every few milliseconds, and takes how long each takes to come.
class Heartbeat {
public:
    Heartbeat() : m_thread([this] { beat(); }) {}
    ~Heartbeat() {
        m_isOver = true;
        m_thread.join();
    }

    /// What 99 of 100 beats don't exceed, then the longest. Main thread only.
    std::pair<double, double> percentile99AndLongest() {
        std::ranges::sort(m_delays);
        return {m_delays.at(m_delays.size() * 99 / 100), m_delays.back()};
    }

private:
    void beat() {
        for (; !m_isOver; std::this_thread::sleep_for(2ms))
            QMetaObject::invokeMethod(
                qApp, [this, sent = Clock::now()] { m_delays.push_back(millisecondsSince(sent)); },
                Qt::QueuedConnection);
    }

    std::atomic<bool> m_isOver = false;
    std::vector<double> m_delays;
    std::thread m_thread;
};

QQuickItem* find(QQuickItem* item, const QString& name) {
    if (item->objectName() == name)
        return item;
    for (QQuickItem* child : item->childItems())
        if (QQuickItem* found = find(child, name))
            return found;
    return nullptr;
}

QVideoSink& previewSink(DesktopApp& app) {
    if (const auto* pictures = find(app.window().contentItem(), "playerView"))
        for (const QQuickItem* item : pictures->childItems())
            if (auto* sink = item->property("videoSink").value<QVideoSink*>())
                return *sink;
    throw std::runtime_error("The Edit screen has no place for pictures");
}

AVPlayer& previewPlayer() {
    const auto root = UIApplication::sharedApplication().windows().at(0)->rootViewController();
    const auto edit = std::dynamic_pointer_cast<UINavigationController>(root)->topViewController();
    for (const auto& view : edit->view()->subviews())
        if (const auto place = std::dynamic_pointer_cast<AVPlayerLayerView>(view))
            return *place->layer().player();
    throw std::runtime_error("The Edit screen has no player");
}

constexpr auto onceLater = static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);

/// Calls back when the clip's first picture has been drawn.
EditScreen& editScreen(DesktopApp& app) {
    return dynamic_cast<EditScreen&>(*app.host().stack()->top());
}

void open(DesktopApp& app, const QString& clip, const std::function<void()>& drawn) {
    app.host().openClip(QUrl::fromLocalFile(clip));
    QObject::connect(
        &previewSink(app), &QVideoSink::videoFrameChanged, qApp,
        // The next picture of the window has it.
        [&app, drawn] {
            QObject::connect(&app.window(), &QQuickWindow::frameSwapped, qApp, drawn, onceLater);
        },
        Qt::SingleShotConnection);
}

void measureStart(DesktopApp& app) {
    QObject::connect(
        &app.window(), &QQuickWindow::frameSwapped, qApp,
        [] {
            std::cout << millisecondsSinceProcessStart() << std::endl;
            QCoreApplication::quit();
        },
        onceLater);
}

void measureOpening(DesktopApp& app, const QString& clip) {
    open(app, clip, [start = Clock::now()] {
        std::cout << millisecondsSince(start) << std::endl;
        QCoreApplication::quit();
    });
}

void print(Heartbeat& heartbeat) {
    const auto [usual, longest] = heartbeat.percentile99AndLongest();
    std::cout << usual << ' ' << longest << std::endl;
}

void measureJob(DesktopApp& app, const QString& clip) {
    open(app, clip, [&app] {
        auto heartbeat = std::make_shared<Heartbeat>();
        QObject::connect(app.host().stack(), &ScreenList::countChanged, qApp, [&app, heartbeat] {
            if (app.host().stack()->top()->kind() != "Preview")
                return;
            print(*heartbeat);
            QCoreApplication::quit();
        });
        editScreen(app).createButton->tap();
    });
}

/// Counts the pictures of the clip that the window has drawn.
class DrawnPictures {
public:
    explicit DrawnPictures(DesktopApp& app) {
        QObject::connect(&previewSink(app), &QVideoSink::videoFrameChanged, &app.window(),
                         [this](const QVideoFrame& frame) { m_shown = frame.startTime(); });
        // At this moment the main thread waits for the one that draws.
        QObject::connect(
            &app.window(), &QQuickWindow::beforeSynchronizing, &app.window(),
            [this] {
                if (m_shown == m_drawn)
                    return;
                m_drawn = m_shown;
                m_first = m_count == 0 ? m_drawn : m_first;
                ++m_count;
            },
            Qt::DirectConnection);
    }

    /// Of those that were due, from the first that was drawn to the last.
    double share(double pictureSeconds) const {
        const double due = std::abs(static_cast<double>(m_drawn - m_first)) / 1e6 / pictureSeconds + 1;
        return m_count / due;
    }

private:
    qint64 m_shown = -1;
    qint64 m_drawn = -1;
    qint64 m_first = -1;
    int m_count = 0;
};

void measurePlaying(DesktopApp& app, const QString& clip, float rate) {
    open(app, clip, [&app, rate] {
        auto& player = previewPlayer();
        player.seekToTime(player.currentItem()->duration(), kCMTimeZero, kCMTimeZero);
        player.setRate(rate);
        const auto heartbeat = std::make_shared<Heartbeat>();
        const auto drawn = std::make_shared<DrawnPictures>(app);
        const auto* item = editScreen(app).playerView;
        NSNotificationCenter::defaultCenter().addObserverForName(
            AVPlayerItemDidPlayToEndTimeNotification, player.currentItem(),
            [heartbeat, drawn, item](const NSNotification&) {
                print(*heartbeat);
                std::cout << drawn->share(item->frameSeconds()) << std::endl;
                QCoreApplication::quit();
            });
    });
}

} // namespace

int main(int argc, char** argv) {
    setUpProcess(argc, argv);
    QGuiApplication application(argc, argv);
    setUpNumbers();
    CLI::App parser("Measures the window.");
    parser.require_subcommand(1);
    std::string clip;
    float rate = -1;
    int width = 420;
    int height = 860;
    parser.add_option("--width", width);
    parser.add_option("--height", height);
    auto* start = parser.add_subcommand("start", "Until the first picture of the window.");
    auto* opening = parser.add_subcommand("open", "From the choice of a clip to its first picture.");
    auto* job = parser.add_subcommand("job", "The main thread while a movie is made.");
    auto* playing = parser.add_subcommand("play", "The main thread, and the share of due pictures, while the "
                                                  "preview runs to its end.");
    for (auto* command : {opening, job, playing})
        command->add_option("clip", clip)->required()->check(CLI::ExistingFile);
    playing->add_option("rate", rate);
    CLI11_PARSE(parser, argc, argv);

    NSUserDefaults::standardUserDefaults().keepInMemory();
    int status = 1;
    {
        DesktopApp app;
        app.window().resize(width, height);
        const QString file = QString::fromStdString(clip);
        if (*start)
            measureStart(app);
        else
            // What the start leaves to be done is over by then.
            QTimer::singleShot(1s, qApp, [&] {
                if (*opening)
                    measureOpening(app, file);
                else if (*job)
                    measureJob(app, file);
                else
                    measurePlaying(app, file, rate);
            });
        status = QGuiApplication::exec();
    }
    TemporaryDirectory::remove();
    return status;
}
