#include "Platform/AVFoundation/SoundSink.h"
#include "Tests/Platform/AVFoundation/PlayerStage.h"
#include "Tests/Support/SoundMeasure.h"
#include "Tests/Support/ToneTrack.h"

namespace anadrome {

using namespace testing_support;

namespace {

/// What a device was given in one stretch, and how far it has played, which the test says.
struct Stretch {
    int rate = 48000;
    std::int64_t room = 9600;
    std::vector<float> samples = {};
    std::int64_t heard = 0;
    bool isOpen = true;

    std::int64_t frames() const { return static_cast<std::int64_t>(samples.size() / 2); }
    std::int64_t framesIn(double seconds) const { return std::lround(seconds * rate); }
    double heardSeconds() const { return static_cast<double>(heard) / rate; }

    /// How many samples the left side is off from where the clip's tones stand at this time. The highest tone
    /// comes round after 40.
    int offsetFrom(double seconds, double volume = 1) const {
        constexpr int span = 4800;
        constexpr int most = 19;
        const int first = static_cast<int>(framesIn(seconds));
        const std::vector<float> tones = ToneTrack(rate, 2, 0).next(first + span + most);
        const auto error = [&](int offset) {
            double sum = 0;
            for (int i = most; i < span; ++i)
                sum += std::abs(samples.at(2 * i) - volume * tones[2 * (first + i + offset)]);
            return sum / span;
        };
        int best = -most;
        for (int offset = -most; offset <= most; ++offset)
            if (error(offset) < error(best))
                best = offset;
        EXPECT_LT(error(best), 0.02);
        return best;
    }
};

class HandDevice final : public SoundSink {
public:
    explicit HandDevice(std::shared_ptr<Stretch> stretch) : m_stretch(std::move(stretch)) {}
    ~HandDevice() override { m_stretch->isOpen = false; }
    int sampleRate() const override { return m_stretch->rate; }
    std::size_t write(std::span<const float> samples) override {
        const std::int64_t free = m_stretch->heard + m_stretch->room - m_stretch->frames();
        const std::size_t taken = std::min(samples.size() / 2, static_cast<std::size_t>(free));
        m_stretch->samples.insert(m_stretch->samples.end(), samples.begin(), samples.begin() + 2 * taken);
        return taken;
    }
    std::int64_t heardFrames() const override { return m_stretch->heard; }

private:
    const std::shared_ptr<Stretch> m_stretch;
};

class PlayerSoundTest : public PlayerStage {
protected:
    PlayerSoundTest() {
        setSoundSinkFactory([this]() -> std::unique_ptr<SoundSink> {
            m_stretches.push_back(std::make_shared<Stretch>(m_next));
            return std::make_unique<HandDevice>(m_stretches.back());
        });
    }
    ~PlayerSoundTest() override { setSoundSinkFactory({}); }

    /// A player without a surface.
    AVPlayer& loadClip(const std::string& name, ClipOptions options) {
        options.width = 64;
        options.height = 48;
        AVPlayer& player = load(clip(name, options));
        m_layer.setSurface(nullptr, {});
        m_stretches.clear();
        return player;
    }
    Stretch& stretch() const { return *m_stretches.back(); }

    /// Ticks without moving the clock until the device is full, or has the clip's sound up to here.
    void fill(double end = 1000) {
        ASSERT_TRUE(runEventLoopUntil([&] {
            m_clock->advance(0);
            return !m_stretches.empty() && stretch().isOpen &&
                   stretch().frames() >= std::min(stretch().heard + stretch().room, stretch().framesIn(end));
        }));
    }
    /// Turns the clock in ticks of a fiftieth, the device playing at this speed.
    void play(double seconds, double speed = 1) {
        for (double gone = 0; gone < seconds - 0.001; gone += 0.02) {
            const double before = time();
            stretch().heard += stretch().framesIn(0.02 * speed);
            m_clock->advance(0.02);
            EXPECT_GE(time(), before);
        }
    }
    void expectOneEnd() {
        EXPECT_EQ(m_player->rate(), 0);
        EXPECT_FALSE(stretch().isOpen);
        EXPECT_TRUE(runEventLoopUntil([&] { return m_ends > 0; }));
        loopAWhile();
        EXPECT_EQ(std::exchange(m_ends, 0), 1);
    }

    std::vector<std::shared_ptr<Stretch>> m_stretches;
    Stretch m_next;
};

} // namespace

TEST_F(PlayerSoundTest, EveryTimesToneIsHeardAndTheTimeAndPicturesFollowIt) {
    const struct {
        const char* name;
        ClipOptions options;
        int rate;
        int from;
        int to;
    } rows[] = {
        {"other.mp4", {.audioCodec = "aac"}, 44100, 0, 3},
        {"short.mov", {.audioCodec = "pcm_s16le", .audioSeconds = 1}, 48000, 0, 1},
        {"late.mov", {.audioCodec = "pcm_s16le", .audioStartSeconds = 1}, 48000, 1, 3},
        {"early.mov", {.startSeconds = 0.5, .audioCodec = "pcm_s16le", .audioStartSeconds = 0}, 48000, 0, 3},
    };
    for (auto row : rows) {
        SCOPED_TRACE(row.name);
        m_next.rate = row.rate;
        row.options.frames = 90;
        AVPlayer& player = loadClip(row.name, row.options);
        m_layer.setSurface(m_sink, {64, 48});
        const double duration = CMTimeGetSeconds(player.currentItem()->duration());
        player.play();
        fill();
        EXPECT_EQ(time(), 0);
        while (player.rate() != 0) {
            fill(duration);
            play(0.02);
            ASSERT_NEAR(time(), std::min(stretch().heardSeconds(), duration), 1e-4);
            const double place = (time() - row.options.startSeconds) * 30 + 0.001;
            const int number = static_cast<int>(std::clamp(place, 0.0, 89.0));
            ASSERT_TRUE(showsSoon(number)) << number;
        }
        expectOneEnd();
        ASSERT_EQ(m_stretches.size(), 1U);
        const Sound sound{row.rate, 2, 0, stretch().samples};
        EXPECT_NEAR(sound.seconds(), duration, 1e-4);
        for (int second = 0; second < 3; ++second)
            for (const int side : {0, 1}) {
                const bool sounds = row.from <= second && second < row.to;
                const double tone = sounds ? toneFrequency(second - row.from, side, 2) : 0;
                EXPECT_NEAR(toneIn(sound, side, second + 0.1, 0.8).value_or(0), tone, 2) << second;
            }
    }
}

TEST_F(PlayerSoundTest, ASeekAPauseAMuteAndASpeedEndTheSoundAndItGoesOnAtTheExactSample) {
    for (const auto& [name, codec] : {std::pair{"exact.mov", "pcm_s16le"}, {"exact.mp4", "aac"}}) {
        SCOPED_TRACE(name);
        AVPlayer& player = loadClip(name, {.frames = 300, .audioCodec = codec});
        m_layer.setSurface(m_sink, {64, 48});
        player.setVolume(0.5F);
        player.play();
        const std::function<void()> interruptions[] = {
            [] {},
            [&] { player.seekToTime(CMTimeMake(12345, 2400), kCMTimeZero, kCMTimeZero); },
            [&] { player.seekToTime(CMTimeMake(1, 10), kCMTimeZero, kCMTimeZero); },
            [&] { player.pause(); },
            [&] { player.setMuted(true); },
            [&] { player.setRate(2); },
            [&] { player.setRate(-1); },
        };
        for (const auto& interrupt : interruptions) {
            interrupt();
            EXPECT_TRUE(m_stretches.empty() || !stretch().isOpen);
            m_clock->advance(0.0123456);
            player.setMuted(false);
            player.play();
            fill();
            const double from = time();
            EXPECT_EQ(stretch().offsetFrom(from, 0.5), 0) << from;
            m_layer.setSurface(m_sink, {from > 1 ? 32.0 : 64.0, 48}); // which the sound doesn't mind
            play(0.1);
            EXPECT_NEAR(time(), from + 0.1, 1e-6);
        }
        EXPECT_EQ(m_stretches.size(), std::size(interruptions));
    }
}

TEST_F(PlayerSoundTest, OpensNoDeviceWhereNothingIsToBeHeard) {
    const struct {
        const char* codec;
        bool isMuted;
        float rate;
    } rows[] = {{"pcm_s16le", true, 1}, {"pcm_s16le", false, 2}, {"pcm_s16le", false, -1}, {"", false, 1}};
    for (const auto& row : rows) {
        AVPlayer& player = loadClip("unheard.mov", {.frames = 60, .audioCodec = row.codec});
        player.seekToTime(CMTimeMake(1, 1), kCMTimeZero, kCMTimeZero);
        player.setMuted(row.isMuted);
        player.setRate(row.rate);
        m_clock->advance(0.25);
        EXPECT_NEAR(time(), 1 + 0.25 * row.rate, 1e-6);
        EXPECT_TRUE(m_stretches.empty()) << &row - rows;
    }
}

TEST_F(PlayerSoundTest, TheTimeKeepsWithADeviceThatRunsUnevenly) {
    loadClip("uneven.mov", {.frames = 300, .audioCodec = "pcm_s16le"}).play();
    const auto ahead = [&] { return time() - stretch().heardSeconds(); };
    for (const double speed : {0.97, 1.03, 1.0})
        for (int i = 0; i < 50; ++i) {
            fill();
            play(0.02, speed);
            EXPECT_NEAR(ahead(), 0, 0.03) << speed;
        }
    for (int i = 0; i < 50; ++i) { // in steps of a tenth
        fill();
        const double before = time();
        play(0.02, i % 5 == 4 ? 5 : 0);
        EXPECT_NEAR(time() - before, 0.02, 0.011);
    }
    play(0.2, 0); // a hiccup: the time has gone on, and waits for the sound
    EXPECT_GT(ahead(), 0.15);
    for (int i = 0; i < 60; ++i) {
        fill();
        play(0.02);
    }
    EXPECT_NEAR(ahead(), 0, 0.03);
}

TEST_F(PlayerSoundTest, ADeviceThatNeverPlaysOrStopsPlayingHoldsNothingUp) {
    AVPlayer& player = loadClip("stuck.mov", {.frames = 60, .audioCodec = "pcm_s16le"});
    for (const double heard : {0.0, 0.1}) {
        player.seekToTime(kCMTimeZero, kCMTimeZero, kCMTimeZero);
        player.play();
        fill();
        play(heard);
        play(0.6, 0);
        EXPECT_FALSE(stretch().isOpen);
        const double before = time();
        EXPECT_GE(before, heard + 0.08);
        play(0.5, 0);
        EXPECT_NEAR(time(), before + 0.5, 1e-6);
        play(2, 0);
        expectOneEnd();
    }
}

TEST_F(PlayerSoundTest, SoundThatComesTooLateIsLeftOut) {
    m_next.room = 0;
    loadClip("delayed.mov", {.frames = 150, .audioCodec = "pcm_s16le"}).play();
    fill();
    play(1.5, 0);
    const double from = time();
    EXPECT_NEAR(from, 1, 0.03); // it stood for half a second
    stretch().room = 9600;
    fill();
    EXPECT_EQ(stretch().offsetFrom(from), 0);
    play(0.1);
    EXPECT_NEAR(time(), from + 0.1, 1e-4);
}

} // namespace anadrome
