#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Capture/AVCaptureSession.h"
#include "Platform/AVFoundation/Capture/CameraMode.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/GeneratedDevices.h"
#include "Tests/Support/MovieReader.h"

#include <cmath>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

class CountingSink final : public PictureSink {
public:
    void show(const ShownPicture& picture) override { times.push_back(CMTimeGetSeconds(picture.time)); }
    std::vector<double> times;
};

/// When the first flash of a picture track begins, after some black.
double firstFlash(const VideoFacts& video) {
    for (std::size_t i = 1; i < video.frames.size(); ++i)
        if (video.frames[i - 1].meanLuma < 60 && video.frames[i].meanLuma > 180)
            return video.frames[i].seconds;
    return -1;
}

/// When the first tone of a sound track from that second on begins, after some silence.
double firstTone(const Sound& sound, double from = 0) {
    constexpr double step = 0.01;
    for (double t = std::max(from, sound.firstSampleSeconds); t + 2 * step < sound.seconds(); t += step)
        if (level(sound, 0, t, step).value_or(0) < -50 &&
            level(sound, 0, t + step, step).value_or(-200) > -50)
            return t + step;
    return -1;
}

/// A session over generated devices, and what it has told.
class CaptureTest : public ClipTest {
protected:
    void open(AVCaptureDevice camera, std::vector<AVCaptureDevice> soundInputs = {}) {
        m_session = std::make_unique<AVCaptureSession>(
            std::move(camera), std::move(soundInputs),
            AVCaptureSession::Events{
                [this] { ++m_starts; }, [this](const NSError& error) { m_ends.push_back(error); },
                [this](const URL&, const std::optional<NSError>& error) { m_recordings.push_back(error); }});
    }
    bool started() const {
        return runEventLoopUntil([&] { return m_starts > 0 || !m_ends.empty(); }) && m_ends.empty();
    }
    bool recorded() const {
        return runEventLoopUntil([&] { return !m_recordings.empty(); });
    }
    void startRecording() { m_session->startRecording(m_movie, AVFileTypeQuickTimeMovie); }
    MovieFacts record(double seconds) {
        startRecording();
        EXPECT_TRUE(
            runEventLoopUntil([&] { return CMTimeGetSeconds(m_session->recordedDuration()) >= seconds; }));
        m_session->stopRecording();
        EXPECT_TRUE(recorded());
        EXPECT_FALSE(m_recordings.at(0).has_value());
        return readMovie(m_movie.path());
    }

    const URL m_movie = URL::fileURLWithPath(path("recorded.mov"));
    std::unique_ptr<AVCaptureSession> m_session;
    int m_starts = 0;
    std::vector<NSError> m_ends;
    std::vector<std::optional<NSError>> m_recordings;
};

} // namespace

TEST_F(CaptureTest, ARecordingHasItsPicturesAtTheirTimesAndItsSoundInStep) {
    open(generatedCamera("320x180"), {{"", "no such kind", "", {}}, generatedMicrophone()});
    ASSERT_TRUE(started());
    const MovieFacts movie = record(2.5);
    const VideoFacts& video = movie.video.at(0);
    EXPECT_EQ(video.width, 320);
    EXPECT_EQ(video.height, 180);
    EXPECT_EQ(video.codecTag, "avc1");
    EXPECT_EQ(video.matrix, "smpte170m");
    EXPECT_EQ(video.startSeconds, 0);
    EXPECT_NEAR(video.durationSeconds, 2.55, 0.2);
    EXPECT_NEAR(static_cast<double>(video.frames.size()), video.durationSeconds * 30, 10);
    for (std::size_t i = 1; i < video.frames.size(); ++i)
        EXPECT_GT(video.frames[i].seconds - video.frames[i - 1].seconds, 0.03) << i;

    const SoundFacts& sound = movie.sound.at(0);
    EXPECT_EQ(sound.channelCount, 2);
    EXPECT_NEAR(sound.durationSeconds, video.durationSeconds, 0.25);
    ASSERT_GT(firstFlash(video), 0);
    // Both come once a second, and either may have just been missed.
    EXPECT_NEAR(std::remainder(firstTone(sound.sound) - firstFlash(video), 1), 0, 0.08);
    const auto pitch = toneIn(sound.sound, 0, firstTone(sound.sound) + 0.05, 0.1);
    EXPECT_NEAR(pitch.value_or(0), 440, 5);
}

TEST_F(CaptureTest, SoundThatIsMissingOrStopsHoldsNoPictureBack) {
    struct Case {
        const char* name;
        std::vector<AVCaptureDevice> soundInputs;
        bool hasSound;
    };
    for (const auto& [name, soundInputs, hasSound] :
         {Case{"none", {}, false}, Case{"can't be opened", {{"", "lavfi", "no such source", {}}}, false},
          Case{"stops", {generatedMicrophone(0.4)}, true}}) {
        SCOPED_TRACE(name);
        open(generatedCamera(), soundInputs);
        ASSERT_TRUE(started());
        runEventLoopFor(std::chrono::milliseconds(200));
        const MovieFacts movie = record(2);
        EXPECT_NEAR(static_cast<double>(movie.video.at(0).frames.size()), 61, 10);
        ASSERT_EQ(!movie.sound.empty(), hasSound);
        if (hasSound) {
            EXPECT_GT(movie.sound.at(0).durationSeconds, 1.2);
        }
        fs::remove(m_movie.path());
        m_starts = 0;
        m_recordings.clear();
    }
}

TEST_F(CaptureTest, SoundThatCannotBeOpenedAtOnceIsInTheMovieFromThenOn) {
    // Opening a pipe takes as long as nobody writes into it.
    const std::string slow = path("slow");
    ASSERT_EQ(::mkfifo(slow.c_str(), 0600), 0);
    open(generatedCamera(), {{"", "wav", slow, {}}, generatedMicrophone()});
    EXPECT_TRUE(started());
    EXPECT_TRUE(record(0.2).sound.empty()) << "over before there was any";
    fs::remove(m_movie.path());
    m_recordings.clear();

    startRecording();
    runEventLoopFor(std::chrono::milliseconds(1200));
    ::close(::open(slow.c_str(), O_WRONLY | O_CLOEXEC));
    runEventLoopFor(std::chrono::milliseconds(2300));
    m_session->stopRecording();
    ASSERT_TRUE(recorded());
    const MovieFacts movie = readMovie(m_movie.path());
    ASSERT_EQ(movie.sound.size(), 1U);
    const VideoFacts& video = movie.video.at(0);
    EXPECT_NEAR(static_cast<double>(video.frames.size()), video.durationSeconds * 30, 10);
    const SoundFacts& sound = movie.sound.at(0);
    EXPECT_NEAR(sound.durationSeconds, video.durationSeconds, 0.25);
    EXPECT_GT(firstTone(sound.sound), 1);
    // The very first may have gone on for a while when it was first heard.
    EXPECT_NEAR(std::remainder(firstTone(sound.sound, 2) - firstFlash(video), 1), 0, 0.08);
}

TEST_F(CaptureTest, ACameraThatGoesEndsTheRecordingWhichStaysUsable) {
    open(generatedCamera("160x120", 1), {generatedMicrophone()});
    ASSERT_TRUE(started());
    startRecording();
    ASSERT_TRUE(recorded());
    ASSERT_EQ(m_ends.size(), 1U);
    EXPECT_EQ(m_ends.at(0).domain(), AVFoundationErrorDomain);
    EXPECT_FALSE(m_recordings.at(0).has_value());
    EXPECT_GT(readMovie(m_movie.path()).video.at(0).frames.size(), 15U);

    m_recordings.clear();
    startRecording();
    ASSERT_TRUE(recorded());
    EXPECT_EQ(m_recordings.at(0)->code(), AVErrorNoDataCaptured) << "there is no camera any more";
}

TEST_F(CaptureTest, ARecordingThatIsStoppedAtOnceFailsWithoutAFileAndTheNextOneWorks) {
    open(generatedCamera());
    ASSERT_TRUE(started());
    startRecording();
    m_session->stopRecording();
    ASSERT_TRUE(recorded());
    EXPECT_EQ(m_recordings.at(0)->code(), AVErrorNoDataCaptured);
    EXPECT_FALSE(fs::exists(m_movie.path()));
    m_recordings.clear();
    EXPECT_GT(record(0.3).video.at(0).frames.size(), 5U);
}

TEST_F(CaptureTest, AMovieThatCannotBeWrittenEndsTheRecordingWithAnError) {
    open(generatedCamera());
    ASSERT_TRUE(started());
    m_session->startRecording(URL::fileURLWithPath(path("no folder/recorded.mov")), AVFileTypeQuickTimeMovie);
    ASSERT_TRUE(recorded());
    EXPECT_TRUE(m_recordings.at(0).has_value());
    EXPECT_TRUE(m_ends.empty()) << "the camera is still there";
}

TEST_F(CaptureTest, ADeviceThatCannotBeOpenedIsAnError) {
    for (const AVCaptureDevice& device :
         {AVCaptureDevice{"", "no such kind", "", {}}, AVCaptureDevice{"", "lavfi", "no such source", {}},
          AVCaptureDevice{"", "v4l2", path("no such file"), {}}}) {
        m_ends.clear();
        open(device);
        ASSERT_TRUE(runEventLoopUntil([&] { return !m_ends.empty(); })) << device.format;
        EXPECT_EQ(m_ends.at(0).code(), AVErrorDeviceNotConnected) << device.format;
        EXPECT_EQ(m_starts, 0);
    }
}

TEST_F(CaptureTest, ASessionThatGoesWhileItRecordsTellsNothingAndLeavesNoFile) {
    for (const bool isStopped : {false, true}) {
        open(generatedCamera(), {generatedMicrophone()});
        m_starts = 0;
        ASSERT_TRUE(started());
        startRecording();
        ASSERT_TRUE(runEventLoopUntil([&] { return fs::exists(m_movie.path()); }));
        if (isStopped)
            m_session->stopRecording();
        m_session.reset();
        EXPECT_TRUE(runEventLoopUntil([&] { return !fs::exists(m_movie.path()); }));
        runEventLoopFor(std::chrono::milliseconds(100));
        EXPECT_FALSE(fs::exists(m_movie.path()));
        EXPECT_TRUE(m_recordings.empty());
        EXPECT_TRUE(m_ends.empty());
    }
}

TEST_F(CaptureTest, AMainThreadThatIsBusyMissesPicturesInsteadOfGettingThemLate) {
    open(generatedCamera());
    const auto sink = std::make_shared<CountingSink>();
    m_session->setSink(sink);
    ASSERT_TRUE(runEventLoopUntil([&] { return sink->times.size() > 3; }));
    const std::size_t before = sink->times.size();
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    QCoreApplication::processEvents();
    EXPECT_LE(sink->times.size() - before, 2U);
    ASSERT_TRUE(runEventLoopUntil([&] { return sink->times.size() > before + 3; }));
    EXPECT_GT(sink->times.at(before), sink->times.at(before - 1) + 0.3) << "the newest, not the oldest";
    EXPECT_TRUE(std::ranges::is_sorted(sink->times));
}

TEST(CameraMode, IsTheLargestThatComesOftenEnough) {
    using capture::CameraMode;
    const struct {
        std::vector<CameraMode> modes;
        CameraMode best;
    } cases[] = {
        {{{"yuyv422", 640, 480, 30}, {"yuyv422", 1280, 720, 10}, {"mjpeg", 1280, 720, 30}},
         {"mjpeg", 1280, 720, 30}},
        {{{"mjpeg", 640, 480, 30}, {"yuyv422", 640, 480, 30}}, {"yuyv422", 640, 480, 30}},
        {{{"mjpeg", 1280, 720, 60}, {"mjpeg", 1280, 720, 29.97}}, {"mjpeg", 1280, 720, 29.97}},
        {{{"mjpeg", 3840, 2160, 30}, {"mjpeg", 1920, 1080, 30}}, {"mjpeg", 1920, 1080, 30}},
        {{{"mjpeg", 3840, 2160, 30}}, {"mjpeg", 3840, 2160, 30}},
        {{{"nv12", 1280, 720, 5}, {"nv12", 320, 240, 15}, {"nv12", 640, 480, 15}}, {"nv12", 640, 480, 15}},
    };
    for (const auto& [modes, best] : cases)
        EXPECT_EQ(capture::bestMode(modes), best) << best.format << best.width;
    EXPECT_EQ(capture::bestMode({}), std::nullopt);
}

} // namespace anadrome
