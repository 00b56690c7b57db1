#pragma once

#include "Platform/AVFoundation/AVPlayerLayer.h"
#include "Tests/Platform/AVFoundation/PixelNumbers.h"

#include <QCoreApplication>
#include <chrono>
#include <cmath>
#include <vector>

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
        for (const auto& weak : m_blocks)
            if (!weak.expired())
                return true;
        return false;
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

/// Turns the main loop until the condition holds. False if it doesn't within a time that is only met by a
/// fault.
template <typename Condition>
bool loopUntil(Condition condition) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(30);
    while (!condition() && Clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    return condition();
}

/// Time enough for work that shouldn't be there to show.
inline void loopAWhile() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(60);
    loopUntil([end] { return std::chrono::steady_clock::now() >= end; });
}

} // namespace anadrome
