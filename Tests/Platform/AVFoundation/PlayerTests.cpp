#include "Tests/Platform/AVFoundation/PlayerStage.h"

#include <fstream>

namespace anadrome {

using namespace testing_support;

namespace {

class PlayerTest : public PlayerStage {
protected:
    /// Seeks and waits for the picture.
    void seek(const CMTime& time) {
        std::optional<bool> finished;
        m_player->seekToTime(time, kCMTimeZero, kCMTimeZero, [&](bool done) { finished = done; });
        EXPECT_TRUE(runEventLoopUntil([&] { return finished.has_value(); }));
        EXPECT_TRUE(*finished);
    }
    /// The picture that stands at the player's time, of a clip with 30 a second.
    int expectedNumber(int frames) const {
        return std::min(static_cast<int>(std::floor(time() * 30 + 0.0005)), frames - 1);
    }
};

} // namespace

TEST_F(PlayerTest, ShowsTheRightPictureAtEveryTickAtEveryRate) {
    const std::pair<const char*, ClipOptions> clips[] = {
        {"long.mp4", {.frames = 300, .gop = 250}},
        {"open.mp4", {.frames = 150, .gop = 12, .bFrames = 3, .openGop = true}},
        {"open.ts", {.frames = 150, .gop = 12, .bFrames = 3, .openGop = true}},
    };
    const struct {
        float rate;
        double tick;
        int most;
    } rows[] = {{-0.1F, 1.0 / 20, 90}, {-1, 1.0 / 60, 1000}, {-2.5F, 1.0 / 60, 1000},
                {-10, 1.0 / 60, 1000}, {-10, 1.0 / 7, 1000}, {1, 1.0 / 60, 1000}};
    for (const auto& [name, options] : clips) {
        const int frames = options.frames;
        const std::string path = clip(name, options);
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(name) + " at " + std::to_string(row.rate));
            AVPlayer& player = load(path);
            const CMTime duration = player.currentItem()->duration();
            seek(row.rate < 0 ? duration : kCMTimeZero);
            const std::size_t shownBefore = m_sink->numbers.size();
            player.setRate(row.rate);
            // The first picture of this direction sets the time going.
            ASSERT_TRUE(
                runEventLoopUntil([&] { return row.rate > 0 || m_sink->numbers.size() > shownBefore; }));
            ASSERT_TRUE(showsSoon(expectedNumber(frames)));
            int ticks = 0;
            for (; player.rate() != 0 && ticks < row.most; ++ticks) {
                const CMTime before = player.currentTime();
                m_clock->advance(row.tick);
                const double gone = CMTimeGetSeconds(CMTimeSubtract(player.currentTime(), before));
                if (player.rate() != 0) {
                    ASSERT_NEAR(gone, row.rate * row.tick, 1e-6);
                }
                ASSERT_TRUE(showsSoon(expectedNumber(frames)))
                    << ticks << ": " << m_sink->shown() << " for " << expectedNumber(frames);
            }
            if (ticks == row.most)
                continue;
            EXPECT_EQ(m_sink->shown(), row.rate < 0 ? 0 : frames - 1);
            EXPECT_NEAR(ticks, CMTimeGetSeconds(duration) / std::abs(row.rate) / row.tick, 1.01);
            EXPECT_TRUE(runEventLoopUntil([&] { return m_ends == 1; }));
        }
    }
}

TEST_F(PlayerTest, SeeksLandExactlyWhileItStandsAndWhileItRuns) {
    AVPlayer& player = load(clip("seeks.mp4", {.frames = 200, .gop = 120, .bFrames = 2}));
    for (const float rate : {0.0F, -1.0F, 1.0F})
        for (const int number : {199, 0, 121, 119, 120, 57, 58, 3}) {
            SCOPED_TRACE(number);
            player.setRate(0);
            player.setRate(rate);
            seek(CMTimeMake(number * 20 + 7, 600));
            EXPECT_EQ(CMTimeCompare(player.currentTime(), CMTimeMake(number * 20 + 7, 600)), 0);
            EXPECT_EQ(m_sink->shown(), number);
            EXPECT_EQ(player.rate(), rate);
        }
    player.setRate(0);
    seek(CMTimeMake(100, 1));
    EXPECT_EQ(CMTimeCompare(player.currentTime(), player.currentItem()->duration()), 0);
    EXPECT_EQ(m_sink->shown(), 199);
    seek(CMTimeMake(-5, 1));
    EXPECT_EQ(m_sink->shown(), 0);
    EXPECT_EQ(m_ends, 0);
}

TEST_F(PlayerTest, OfABurstOfSeeksTheLastOneIsShown) {
    AVPlayer& player = load(clip("burst.mp4", {.frames = 250, .gop = 250}));
    ASSERT_TRUE(showsSoon(0));
    const std::size_t before = m_sink->numbers.size();
    std::vector<int> cut;
    std::optional<bool> last;
    for (int number = 10; number <= 200; number += 10)
        player.seekToTime(CMTimeMake(number, 30), kCMTimeZero, kCMTimeZero, [&, number](bool done) {
            if (number == 200)
                last = done;
            else if (!done)
                cut.push_back(number);
        });
    EXPECT_EQ(cut.size(), 19U);
    EXPECT_TRUE(std::is_sorted(cut.begin(), cut.end()));
    EXPECT_FALSE(last);
    EXPECT_TRUE(runEventLoopUntil([&] { return last.has_value(); }));
    EXPECT_TRUE(last.value_or(false));
    EXPECT_EQ(m_sink->numbers.size(), before + 1);
    EXPECT_EQ(m_sink->shown(), 200);
}

TEST_F(PlayerTest, PlaysAsAskedBeforeTheFileWasLookedAt) {
    open(clip("early.mp4", {.frames = 60}), {128, 96});
    EXPECT_TRUE(CMTIME_IS_INDEFINITE(m_player->currentItem()->duration()));
    std::optional<bool> finished;
    m_player->seekToTime(m_player->currentItem()->asset()->duration(), kCMTimeZero, kCMTimeZero,
                         [&](bool done) { finished = done; });
    m_player->setRate(-1);
    EXPECT_EQ(m_player->rate(), -1);
    EXPECT_TRUE(runEventLoopUntil([&] { return finished.has_value(); }));
    EXPECT_TRUE(finished.value_or(false));
    EXPECT_EQ(m_sink->shown(), 59);
    m_clock->advance(0.5);
    EXPECT_TRUE(showsSoon(45));
}

TEST_F(PlayerTest, StopsAndTellsItOnceAtTheEndThatItRunsTowards) {
    AVPlayer& player = load(clip("ends.mp4", {.frames = 30}));
    const CMTime end = CMTimeMake(1, 1);
    const struct {
        float rate;
        CMTime from;
        double seconds;
        CMTime stops;
    } rows[] = {
        {-1, end, 2, kCMTimeZero},
        {1, kCMTimeZero, 2, end},
        {-1, kCMTimeZero, 0.01, kCMTimeZero},
        {-0.1F, kCMTimeZero, 0.01, kCMTimeZero},
        {1, end, 0.01, end},
    };
    int posted = 0;
    for (const bool isSeen : {true, false}) {
        m_layer.setSurface(isSeen ? m_sink : nullptr, CGSize{128, 96});
        for (const auto& row : rows) {
            seek(row.from);
            player.setRate(row.rate);
            EXPECT_EQ(player.rate(), row.rate);
            loopAWhile();
            EXPECT_EQ(m_ends, posted);
            m_clock->advance(row.seconds);
            EXPECT_EQ(player.rate(), 0);
            EXPECT_EQ(CMTimeCompare(player.currentTime(), row.stops), 0);
            EXPECT_EQ(m_ends, posted); // not inline
            EXPECT_TRUE(runEventLoopUntil([&] { return m_ends > posted; }));
            EXPECT_FALSE(m_clock->isTicking());
            m_clock->advance(1);
            loopAWhile();
            EXPECT_EQ(m_ends, ++posted);
        }
    }
}

TEST_F(PlayerTest, PauseAndTurningRoundGoOnFromWhereItStands) {
    AVPlayer& player = load(clip("turns.mp4", {.frames = 150, .gop = 60}));
    seek(CMTimeMake(75, 30));
    const struct {
        float rate;
        bool isTurn; ///< the time stands until the first picture the other way is there
        double seconds;
        int shows;
    } rows[] = {{-1, true, 0.5, 60}, {0, false, 3, 60},      {-1, false, 0.5, 45},
                {1, true, 1, 75},    {-2.5F, true, 0.8, 15}, {-0.1F, false, 1, 12}};
    for (const auto& row : rows) {
        const std::size_t before = m_sink->pictures.size();
        player.setRate(row.rate);
        ASSERT_TRUE(runEventLoopUntil([&] { return !row.isTurn || m_sink->pictures.size() > before; }));
        loopAWhile();
        m_clock->advance(row.seconds);
        EXPECT_TRUE(showsSoon(row.shows)) << m_sink->shown() << " for " << row.shows;
    }
}

TEST_F(PlayerTest, DoesNoWorkWhileNobodySees) {
    AVPlayer& player = load(clip("unseen.mp4", {.frames = 90}));
    ASSERT_TRUE(showsSoon(0));
    m_layer.setSurface(nullptr, {});
    seek(CMTimeMake(2, 1));
    player.setRate(-1);
    m_clock->advance(1);
    loopAWhile();
    EXPECT_EQ(m_sink->numbers, std::vector<int>{0});
    EXPECT_NEAR(CMTimeGetSeconds(player.currentTime()), 1, 1e-6);
    m_layer.setSurface(m_sink, CGSize{128, 96});
    EXPECT_TRUE(showsSoon(30));
    m_clock->advance(0.5);
    EXPECT_TRUE(showsSoon(15));
}

TEST_F(PlayerTest, KeepsPicturesNoLargerThanTheSurfaceAndTellsHowTheyAreTurned) {
    load(
        clip("turned.mov", {.width = 640, .height = 360, .frames = 10, .orientation = Orientation::Rotate90}),
        {100, 200});
    ASSERT_TRUE(runEventLoopUntil([&] {
        return !m_sink->pictures.empty() && CVPixelBufferGetWidth(m_sink->pictures.back().pixels) < 640;
    }));
    const ShownPicture& picture = m_sink->pictures.back();
    EXPECT_EQ(CVPixelBufferGetWidth(picture.pixels), 240U); // three eighths
    EXPECT_EQ(CVPixelBufferGetHeight(picture.pixels), 136U);
    EXPECT_EQ(picture.naturalSize, (CGSize{640, 360}));
    EXPECT_EQ(CGSizeApplyAffineTransform(picture.naturalSize, picture.transform), (CGSize{-360, 640}));
    EXPECT_EQ(m_sink->shown(), 0);
}

TEST_F(PlayerTest, AFileThatCannotBeReadFailsAndStaysQuiet) {
    std::ofstream(path("broken.mp4")) << "no movie";
    AVPlayer& player = load(path("broken.mp4"));
    EXPECT_EQ(player.currentItem()->status(), AVPlayerItemStatus::failed);
    EXPECT_TRUE(player.currentItem()->error());
    EXPECT_TRUE(CMTIME_IS_INDEFINITE(player.currentItem()->duration()));
    std::optional<bool> finished;
    player.seekToTime(CMTimeMake(1, 1), kCMTimeZero, kCMTimeZero, [&](bool done) { finished = done; });
    EXPECT_EQ(finished, false);
    player.setRate(-1);
    m_clock->advance(1);
    loopAWhile();
    EXPECT_EQ(m_ends, 0);
    EXPECT_TRUE(m_sink->numbers.empty());
}

TEST_F(PlayerTest, CanGoAwayInTheMiddleOfEverything) {
    const std::string path = clip("gone.mp4", {.width = 320, .height = 240, .frames = 250, .gop = 250});
    for (int i = 0; i < 8; ++i) {
        load(path);
        bool called = false;
        m_player->seekToTime(CMTimeMake(8, 1), kCMTimeZero, kCMTimeZero, [&](bool) { called = true; });
        m_player->setRate(-1);
        for (int turn = 0; turn < i; ++turn)
            QCoreApplication::processEvents();
        m_layer.setPlayer(nullptr);
        EXPECT_TRUE(called);
        m_player.reset();
        loopAWhile();
    }
}

} // namespace anadrome
