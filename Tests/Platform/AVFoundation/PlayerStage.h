#pragma once

#include "Platform/AVFoundation/AVPlayerLayer.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Tests/Platform/AVFoundation/PixelNumbers.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/EventLoop.h"

#include <algorithm>
#include <cmath>

/// What a player is watched with: a clock turned by hand, a surface that remembers, and the main loop.
namespace anadrome {

class HandClock final : public PlaybackClock {
public:
    std::chrono::nanoseconds now() const override { return m_now; }
    std::shared_ptr<void> tick(std::function<void()> block) override {
        const auto kept = std::make_shared<std::function<void()>>(std::move(block));
        m_blocks.push_back(kept);
        return kept;
    }
    /// Moves on, and then ticks once.
    void advance(double seconds) {
        m_now += std::chrono::nanoseconds(std::llround(seconds * 1e9));
        for (const auto& weak : std::vector(m_blocks))
            if (const auto block = weak.lock())
                (*block)();
    }
    bool isTicking() const {
        return std::ranges::any_of(m_blocks, [](const auto& weak) { return !weak.expired(); });
    }

private:
    std::chrono::nanoseconds m_now{0};
    std::vector<std::weak_ptr<std::function<void()>>> m_blocks;
};

class RecordingSink final : public PictureSink {
public:
    void show(const ShownPicture& picture) override {
        pictures.push_back(picture);
        numbers.push_back(numberIn(picture.pixels).value_or(-1));
    }
    int shown() const { return numbers.empty() ? -1 : numbers.back(); }

    std::vector<ShownPicture> pictures;
    std::vector<int> numbers;
};

/// A test of one player after another.
class PlayerStage : public testing_support::ClipTest {
protected:
    ~PlayerStage() override { NSNotificationCenter::defaultCenter().removeObserver(m_observation); }

    /// A new player, whose pictures go to m_sink and whose ends are counted.
    AVPlayer& open(const std::string& path, CGSize surface) {
        m_sink = std::make_shared<RecordingSink>();
        m_layer.setSurface(m_sink, surface);
        m_player = std::make_shared<AVPlayer>(URL::fileURLWithPath(path), m_clock);
        m_layer.setPlayer(m_player);
        m_ends = 0;
        m_observation = NSNotificationCenter::defaultCenter().addObserverForName(
            AVPlayerItemDidPlayToEndTimeNotification, m_player->currentItem(), [this](const NSNotification&) {
                EXPECT_EQ(m_player->rate(), 0);
                ++m_ends;
            });
        return *m_player;
    }
    /// The same, once it is ready.
    AVPlayer& load(const std::string& path, CGSize surface = {4000, 4000}) {
        AVPlayer& player = open(path, surface);
        const auto isReady = [&] { return player.currentItem()->status() != AVPlayerItemStatus::unknown; };
        EXPECT_TRUE(testing_support::runEventLoopUntil(isReady));
        return player;
    }
    double time() const { return CMTimeGetSeconds(m_player->currentTime()); }
    bool showsSoon(int number) const {
        return testing_support::runEventLoopUntil([&] { return m_sink->shown() == number; });
    }
    /// Time enough for work that shouldn't be there to show.
    static void loopAWhile() { testing_support::runEventLoopFor(std::chrono::milliseconds(60)); }

    std::shared_ptr<HandClock> m_clock = std::make_shared<HandClock>();
    std::shared_ptr<RecordingSink> m_sink;
    AVPlayerLayer m_layer;
    std::shared_ptr<AVPlayer> m_player;
    NSNotificationCenter::Token m_observation;
    int m_ends = 0;
};

} // namespace anadrome
