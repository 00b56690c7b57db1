#pragma once

#include "Platform/CoreMedia/CMTime.h"
#include "Platform/Dispatch/DispatchQueue.h"

#include <functional>
#include <memory>
#include <vector>

namespace anadrome::playback {

/// The blocks that want to know a player's time now and then. Used on the main thread.
class PeriodicObservers {
public:
    using Block = std::function<void(const CMTime& time)>;
    struct Observer;
    using Token = std::shared_ptr<Observer>;

    Token add(const CMTime& interval, DispatchQueue queue, Block block);
    /// A block on the main queue isn't called any more; one elsewhere may be under way.
    void remove(const Token& token);

    /// Play has come to this time: calls those whose interval has gone by since they were last called.
    void passed(const CMTime& time);
    /// Play has started, stopped or jumped: calls all.
    void call(const CMTime& time);

private:
    std::vector<Token> m_observers;
};

} // namespace anadrome::playback
