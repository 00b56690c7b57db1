// Starts of the program beside an instance that runs, and its end.

#include "Desktop/System/OneInstance.h"
#include "Platform/Foundation/FileLock.h"
#include "Tests/Desktop/System/JobTest.h"

#include <QLocalSocket>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <future>

namespace anadrome::desktop {

using testing_support::ChildProcess;
namespace fs = std::filesystem;

class StartTest : public JobTest {
protected:
    StartTest() { fs::permissions(m_folder.path(), fs::perms::owner_all); }

    /// A start that has no display: only an instance that runs can show anything.
    std::vector<std::string> withoutDisplay() const { return environment("none"); }
    std::vector<std::string> environment(const std::string& display) const {
        return {"QT_QPA_PLATFORM=" + display, "QT_QUICK_BACKEND=software",
                "XDG_RUNTIME_DIR=" + m_folder.path().string(), "XDG_CACHE_HOME=" + cache().string(),
                "XDG_ACTIVATION_TOKEN=token"};
    }
    fs::path cache() const { return m_folder.path() / "cache"; }
    /// The folders of processes that are alive, or were.
    std::size_t workFolders() const {
        std::size_t count = 0;
        if (fs::exists(cache() / "anadrome"))
            for (const auto& entry : fs::directory_iterator(cache() / "anadrome"))
                count += entry.is_directory();
        return count;
    }
    static int exitCodeOf(std::future<int>& end) {
        waitUntil([&] { return end.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
        return end.get();
    }
    std::future<int> start(const std::vector<std::string>& arguments) const {
        std::vector<std::string> command{ANADROME_PROGRAM};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return std::async(std::launch::async, [command, environment = withoutDisplay()] {
            return ChildProcess(command, environment).wait();
        });
    }
    void listen() {
        m_instance.emplace();
        ASSERT_TRUE(m_instance->isFirst());
        m_instance->listen([this](const StartRequest& request) {
            m_requests.push_back(request);
            m_app->startAgain(request);
        });
    }

    const testing_support::Environment m_runtime{"XDG_RUNTIME_DIR", m_folder.path()};
    std::optional<OneInstance> m_instance;
    std::vector<StartRequest> m_requests;
};

TEST_F(StartTest, ASecondStartHandsItsClipToTheFirstWhateverItIsNamed) {
    // What a killed instance left.
    std::ofstream(m_folder.file("anadrome.socket")).put('x');
    listen();
    const std::string clip =
        this->clip("new\nline \xff %41?#.mp4", {.width = 128, .height = 72, .frames = 30});
    auto second = start({clip, "another.mp4"});
    EXPECT_EQ(exitCodeOf(second), 0);
    EXPECT_TRUE(waitForScreen("Edit"));
    ASSERT_EQ(m_requests.size(), 1u);
    EXPECT_EQ(m_requests[0], (StartRequest{URL::fileURLWithPath(clip), "token"}));
    EXPECT_EQ(workFolders(), 0u) << "the second start has left the work folders alone";
}

TEST_F(StartTest, AStartDuringAJobGivesNoticeAndLeavesTheJobAlone) {
    listen();
    QStringList notices;
    QObject::connect(&host(), &DesktopHost::noticeGiven, [&](const QString& text) { notices.append(text); });
    startJob(300);
    auto second = start({path("clip.mp4")});
    EXPECT_EQ(exitCodeOf(second), 0);
    EXPECT_TRUE(waitUntil([&] { return notices.size() == 1; }));
    EXPECT_TRUE(host().hud()->isVisible());
    EXPECT_TRUE(waitForScreen("Preview"));
}

TEST_F(StartTest, AFirstInstanceThatHangsIsNotWaitedForLong) {
    listen();
    // Nothing is delivered to this thread meanwhile.
    const OneInstance second;
    ASSERT_FALSE(second.isFirst());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(second.handOver({URL::fileURLWithPath(path("clip.mp4")), ""}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(6));
    settle();
    EXPECT_TRUE(m_requests.empty()) << "what was given up on isn't carried out later";
}

TEST_F(StartTest, NonsenseOnTheSocketIsNoStart) {
    listen();
    for (const QByteArray& message :
         {QByteArray(), QByteArray("/clip"), QByteArray("a\0b\0c", 5), QByteArray(1 << 20, 'a')}) {
        QLocalSocket socket;
        socket.connectToServer(m_folder.file("anadrome.socket").c_str());
        socket.write(message);
        waitUntil([&] { return socket.state() != QLocalSocket::ConnectedState || !socket.bytesToWrite(); });
        socket.disconnectFromServer();
        settle();
    }
    EXPECT_TRUE(m_requests.empty());
}

TEST_F(StartTest, HelpAndVersionNeedNoDisplayAndMistakesAreTold) {
    const std::pair<std::vector<std::string>, int> cases[] = {
        {{"--help"}, 0}, {{"--version"}, 0}, {{"--no-such-option"}, 2}};
    for (const auto& [arguments, exitCode] : cases) {
        auto end = start(arguments);
        EXPECT_EQ(exitCodeOf(end), exitCode) << arguments[0];
    }
}

TEST_F(StartTest, ASignalEndsTheProgramInOrder) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ChildProcess program(std::vector<std::string>{ANADROME_PROGRAM}, environment("offscreen"));
        ASSERT_TRUE(waitUntil([&] {
            QLocalSocket socket;
            socket.connectToServer(m_folder.file("anadrome.socket").c_str());
            return socket.waitForReadyRead(100);
        })) << "it is there to hear of further starts";
        ASSERT_EQ(workFolders(), 1u);
        const auto start = std::chrono::steady_clock::now();
        program.send(signal);
        EXPECT_EQ(program.wait(), 128 + signal);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
        EXPECT_EQ(workFolders(), 0u);
    }
}

} // namespace anadrome::desktop
