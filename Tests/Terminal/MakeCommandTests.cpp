#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RawServer.h"
#include "Tests/Terminal/CommandTest.h"

#include <algorithm>
#include <csignal>
#include <fstream>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;

using MakeCommandTest = CommandTest;

namespace {

/// The numbers from `first` to `last`, each `times` times.
std::vector<int> series(int first, int last, int times) {
    std::vector<int> numbers;
    for (int number = first;; number += first < last ? 1 : -1) {
        numbers.insert(numbers.end(), static_cast<std::size_t>(times), number);
        if (number == last)
            return numbers;
    }
}

std::vector<int> operator+(std::vector<int> first, const std::vector<int>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

TEST_F(MakeCommandTest, OptionsReachTheMovieAsTheControlsWould) {
    const std::string source = clip("clip.mov", {.width = 1600,
                                                 .height = 960,
                                                 .frames = 30,
                                                 .keyedMetadata = true,
                                                 .metadata = {{"com.apple.quicktime.model", "Camera 5"}}});
    const struct {
        const char* movie;
        std::vector<std::string> options;
        std::vector<int> numbers;
        int width;
        bool namesTheCamera;
    } rows[] = {
        {"a.mov", {}, series(29, 0, 1), 1200, false},
        {"b.mp4",
         {"--output-type", "reverse-forward", "--reverse-speed", "0.5", "--keep-metadata"},
         series(29, 0, 2) + series(0, 29, 1),
         1200,
         true},
        {"c.mov",
         {"--output-type", "forward-reverse", "--normal-speed", "0.2", "--quality", "low"},
         series(0, 29, 5) + series(29, 0, 1),
         640,
         false},
        {"d.bin",
         {"--normal-speed", "7", "--file-type", "mp4", "--quality", "high"},
         series(29, 0, 1),
         1600,
         false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.movie);
        const std::string movie = out() / row.movie;
        const CommandResult result = run({"make", source, "-o", movie}, row.options);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(numbers(movie), row.numbers);
        const MovieFacts facts = readMovieHeaders(movie);
        EXPECT_EQ(facts.metadata.at("major_brand"), fs::path(movie).extension() == ".mov" ? "qt  " : "isom");
        EXPECT_EQ(facts.video.at(0).width, row.width);
        EXPECT_EQ(outputOf("exiftool -Model '" + movie + "'").find("Camera 5") != std::string::npos,
                  row.namesTheCamera);
        EXPECT_EQ(outputOf("ffmpeg -v warning -i '" + movie + "' -f null -"), "");
    }
    expectNoLeftovers(std::size(rows));
}

TEST_F(MakeCommandTest, TheUsersPreferencesPlayNoPartAndStayAsTheyAre) {
    const std::string source = clip("clip.mp4", {.width = 1600, .height = 960, .frames = 3});
    const fs::path preferences = m_surroundings.configuration / "anadrome" / "preferences.ini";
    fs::create_directories(preferences.parent_path());
    const std::string stored = "[General]\nisSaveExifKey=true\nfileTypeIndexKey=1\nresolutionIndexKey=0\n";
    std::ofstream(preferences) << stored;
    const std::string movie = out() / "movie.mov";
    EXPECT_EQ(run({"make", source, "-o", movie, "--quality", "high"}).exitCode, 0);
    const MovieFacts facts = readMovieHeaders(movie);
    EXPECT_EQ(facts.metadata.at("major_brand"), "qt  ");
    EXPECT_EQ(facts.video.at(0).width, 1600);
    std::ifstream file(preferences);
    EXPECT_EQ(std::string(std::istreambuf_iterator(file), {}), stored);
}

TEST_F(MakeCommandTest, JsonLinesTellTheProgressOfTheWholeJob) {
    const std::string source = clip("clip.mp4", {.width = 320, .height = 240, .frames = 60});
    const std::string movie = out() / "movie.mov";
    const CommandResult result = run({"make", source, "-o", movie, "--json", "--keep-metadata"});
    const auto lines = jsonLines(result.out);
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines.front().at("event"), "progress");
    EXPECT_EQ(std::ranges::count(lines, nlohmann::json{{"event", "finishing"}}), 1)
        << "for the place and date, whose part can't be counted";
    EXPECT_EQ(lines.back(),
              (nlohmann::json{{"event", "result"}, {"success", true}, {"output", movie}, {"frames", 60}}));
}

TEST_F(MakeCommandTest, ADialogIsAnErrorOfOneLine) {
    std::ofstream(m_folder.file("text.mp4")) << "this is no movie\n";
    const std::string movie = out() / "movie.mov";
    const CommandResult failure = run({"make", m_folder.file("text.mp4"), "-o", movie});
    EXPECT_EQ(failure.exitCode, 1);
    EXPECT_EQ(failure.err, "Reverse: Failed to init reader\n");
    expectNoLeftovers();

    const std::string tiny = clip("tiny.mp4", {.width = 64, .height = 48, .frames = 10});
    const CommandResult second = run({"make", tiny, "-o", movie, "--reverse-speed", "10"});
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_EQ(std::ranges::count(second.err, '\n'), 1) << second.err;
    expectNoLeftovers();
}

TEST_F(MakeCommandTest, AMovieOnAnotherFileSystemIsWhole) {
    if (::access("/dev/shm", W_OK) != 0)
        GTEST_SKIP() << "there is no second file system";
    const std::string source = clip("clip.mp4", {.width = 64, .height = 48, .frames = 15});
    const std::string movie = "/dev/shm/" + m_folder.path().filename().string() + ".mov";
    EXPECT_EQ(run({"make", source, "-o", movie}).exitCode, 0);
    EXPECT_EQ(numbers(movie), series(14, 0, 1));
    fs::remove(movie);
    expectNoLeftovers();
}

TEST_F(MakeCommandTest, AnInterruptOrAKillInAnyStageLeavesNothingForLong) {
    const std::string source = clip("long.mp4", {.width = 640, .height = 480, .frames = 300});
    const std::string shortClip = clip("short.mp4", {.width = 64, .height = 48, .frames = 3});
    // In the reversal, in the speed of either direction, in the joining.
    for (const int percent : {10, 30, 60, 80})
        for (const auto& [signal, exitCode] : {std::pair(SIGINT, 130), std::pair(SIGKILL, -SIGKILL)}) {
            m_surroundings.signal = signal;
            m_surroundings.signalAtPercent = percent;
            const CommandResult result = run(
                {"make", source, "-o", out() / "movie.mov", "--json", "--output-type", "reverse-forward"});
            EXPECT_EQ(result.exitCode, exitCode) << percent;
            m_surroundings.signal = 0;
            if (signal == SIGKILL) {
                EXPECT_EQ(run({"make", shortClip, "-o", out() / "movie.mov"}).exitCode, 0);
                fs::remove(out() / "movie.mov");
            }
            expectNoLeftovers();
        }
}

TEST_F(MakeCommandTest, AsksNoServerWhateverIsDeployed) {
    const RawServer server({httpAnswer("204 No Content")});
    fs::create_directories(m_surroundings.configuration / "anadrome");
    std::ofstream deployment(m_surroundings.configuration / "anadrome/deployment.conf");
    for (const char* service : {"ad", "consent", "analytics", "remoteConfig"})
        deployment << service << "Endpoint = " << server.address() << '\n';
    deployment << "interstitialAdUnitID = a\nbannerAdUnitID = b\n" << std::flush;
    EXPECT_EQ(run({"make", clip("clip.mov", {.frames = 6}), "-o", out() / "movie.mov"}).exitCode, 0);
    runEventLoopUntil([] { return false; }, std::chrono::milliseconds(50));
    EXPECT_EQ(server.received(), "");
}

} // namespace anadrome
