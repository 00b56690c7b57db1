#include "Tests/Terminal/CommandTest.h"

#include <csignal>
#include <fstream>
#include <sys/stat.h>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;

using ReverseCommandTest = CommandTest;

TEST_F(ReverseCommandTest, WritesTheMovieInTheContainerOfItsNameOrOfTheOption) {
    const std::string source = clip("clip.mp4", {.width = 160, .height = 96, .frames = 5});
    const struct {
        const char* movie;
        std::vector<std::string> options;
        const char* brand;
    } rows[] = {{"a.mov", {}, "qt  "}, {"b.MP4", {}, "isom"}, {"c.bin", {"--file-type", "mp4"}, "isom"}};
    for (const auto& row : rows) {
        const std::string movie = out() / row.movie;
        const CommandResult result = run({"reverse", source, "-o", movie}, row.options);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(readMovieHeaders(movie).metadata.at("major_brand"), row.brand);
        EXPECT_EQ(numbers(movie), (std::vector<int>{4, 3, 2, 1, 0}));
    }
    expectNoLeftovers(3);
}

TEST_F(ReverseCommandTest, OtherToolsReadTheMovieWithoutAComplaint) {
    const std::string source = clip(
        "clip.mov", {.frames = 40, .orientation = Orientation::Rotate90, .bFrames = 2, .audioCodec = "aac"});
    for (const char* name : {"movie.mov", "movie.mp4"}) {
        const std::string movie = out() / name;
        ASSERT_EQ(run({"reverse", source, "-o", movie}).exitCode, 0);
        EXPECT_EQ(outputOf("ffprobe -v warning '" + movie + "'"), "");
        EXPECT_EQ(outputOf("ffmpeg -v warning -i '" + movie + "' -f null -"), "");
        const std::string report = outputOf("mediainfo --Full '" + movie + "'");
        EXPECT_NE(report.find("hvc1"), std::string::npos) << report;
        for (const char* complaint : {"IsTruncated", "Conformance", "Errors"})
            EXPECT_EQ(report.find(complaint), std::string::npos) << report;
    }
}

TEST_F(ReverseCommandTest, RefusesAnExistingMovieUnlessForced) {
    const std::string source = clip("clip.mp4", {.width = 160, .height = 96, .frames = 3});
    const std::string movie = out() / "movie.mov";
    std::ofstream(movie) << "precious";
    const CommandResult refused = run({"reverse", source, "-o", movie});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_NE(refused.err.find("--force"), std::string::npos);
    EXPECT_EQ(fs::file_size(movie), 8U);
    EXPECT_EQ(run({"reverse", source, "-o", movie, "--force", "--quiet"}).out, "");
    EXPECT_EQ(numbers(movie).size(), 3U);
    EXPECT_EQ(run({"reverse", movie, "-o", movie, "--force"}).exitCode, 0) << "onto itself";
    EXPECT_EQ(numbers(movie), (std::vector<int>{0, 1, 2}));
    expectNoLeftovers(1);
}

TEST_F(ReverseCommandTest, JsonLinesTellProgressAndResult) {
    const std::string source = clip("clip.mp4", {.width = 160, .height = 96, .frames = 40});
    const std::string movie = out() / "movie.mov";
    const CommandResult result = run({"reverse", source, "-o", movie, "--json"});
    ASSERT_EQ(result.exitCode, 0);
    const auto lines = jsonLines(result.out);
    ASSERT_GE(lines.size(), 2U);
    double last = 0;
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        EXPECT_EQ(lines[i].at("event"), "progress");
        EXPECT_GE(lines[i].at("fraction").get<double>(), last);
        last = lines[i].at("fraction");
    }
    EXPECT_EQ(lines.back(),
              (nlohmann::json{{"event", "result"}, {"success", true}, {"output", movie}, {"frames", 40}}));

    const std::string notUnicode = out() / "caf\xe9.mov";
    EXPECT_EQ(jsonLines(run({"reverse", source, "-o", notUnicode, "--json"}).out).back().at("success"), true);
    EXPECT_TRUE(fs::exists(notUnicode));

    const auto failure = jsonLines(run({"reverse", "/nowhere", "-o", out() / "no.mov", "--json"}).out);
    EXPECT_EQ(failure.back().at("success"), false);
    EXPECT_EQ(failure.back().at("message"), "Reverse: Failed to init reader");
}

TEST_F(ReverseCommandTest, BadInputEndsWithItsMessageAloneAndLeavesNothing) {
    std::ofstream(m_folder.file("text.mp4")) << "this is no movie\n";
    clip("good.mp4", {.frames = 3});
    std::ofstream(out() / "file");
    ASSERT_EQ(::mkfifo((out() / "pipe").c_str(), 0600), 0);
    const struct {
        std::string clip;
        std::string movie;
        std::string message;
    } rows[] = {
        {"missing.mp4", "a.mov", "Reverse: Failed to init reader\n"},
        {".", "a.mov", "Reverse: Failed to init reader\n"},
        {"text.mp4", "a.mov", "Reverse: Failed to init reader\n"},
        {"good.mp4", "missing/a.mov", "No such file or directory\n"},
        {"good.mp4", "file/a.mov", "Not a directory\n"},
        {"good.mp4", "../out", "Is a directory\n"},
        {"good.mp4", "pipe", "is no plain file\n"},
        {"out/pipe", "a.mov", "Reverse: Failed to init reader\n"},
        {"good.mp4", std::string(300, 'n'), "File name too long\n"},
    };
    for (const auto& row : rows) {
        const CommandResult result = run(
            {"reverse", m_folder.file(row.clip), "-o", out() / row.movie, "--file-type", "mov", "--force"});
        EXPECT_EQ(result.exitCode, 1) << row.clip;
        EXPECT_TRUE(result.err.ends_with(row.message)) << result.err;
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
    expectNoLeftovers(2);
}

TEST_F(ReverseCommandTest, TruncatedCopiesEndWellOrWithAMessageAtEveryLength) {
    for (const bool fragmented : {false, true}) {
        const std::string source =
            clip("whole.mp4", {.frames = 30, .gop = 5, .audioCodec = "aac", .fragmented = fragmented});
        const std::uintmax_t size = fs::file_size(source);
        for (int part = 1; part < 12; ++part) {
            const std::string copy = m_folder.file("copy.mp4");
            fs::copy_file(source, copy, fs::copy_options::overwrite_existing);
            fs::resize_file(copy, size * static_cast<std::uintmax_t>(part) / 12);
            const fs::path movie = out() / "movie.mov";
            const CommandResult result = run({"reverse", copy, "-o", movie});
            EXPECT_TRUE(result.exitCode == 0 || result.exitCode == 1) << result.exitCode;
            EXPECT_EQ(fs::exists(movie) && !numbers(movie).empty(), result.exitCode == 0);
            EXPECT_EQ(result.err.empty(), result.exitCode == 0);
            fs::remove(movie);
            expectNoLeftovers();
        }
    }
}

TEST_F(ReverseCommandTest, AFullDiskIsAClearErrorWhereverItHappens) {
    // A limit on the size of any one file fails the write that goes beyond it, as a full disk would: first
    // the raw frames, then only the movie.
    const std::string source =
        clip("clip.mp4",
             {.width = 320, .height = 240, .frames = 90, .detail = Detail::Rich, .bitRate = 4'000'000});
    const struct {
        long limit;
        const char* message;
    } rows[] = {{50'000, "Raw frames can't be kept in "},
                {200'000, "There is not enough space on the disk."}};
    for (const auto& row : rows) {
        m_surroundings.fileSizeLimit = row.limit;
        const CommandResult result = run({"reverse", source, "-o", out() / "movie.mov"});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_NE(result.err.find(row.message), std::string::npos) << result.err;
        expectNoLeftovers();
    }
}

TEST_F(ReverseCommandTest, AnInterruptSweepsEverythingAndWhatAKilledRunLeftIsGoneAfterTheNextStart) {
    const std::string source = clip("long.mp4", {.width = 640, .height = 480, .frames = 600});
    for (const auto& [signal, exitCode] : {std::pair(SIGINT, 130), {SIGTERM, 143}, {SIGKILL, -SIGKILL}}) {
        m_surroundings.signal = signal;
        EXPECT_EQ(run({"reverse", source, "-o", out() / "movie.mov", "--json"}).exitCode, exitCode);
        if (signal != SIGKILL)
            expectNoLeftovers();
    }
    m_surroundings.signal = 0;
    const std::string shortClip = clip("short.mp4", {.frames = 2});
    EXPECT_EQ(run({"reverse", shortClip, "-o", out() / "short.mov"}).exitCode, 0);
    expectNoLeftovers(1);
}

} // namespace anadrome
