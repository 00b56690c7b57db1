#pragma once

#include <functional>

namespace anadrome::desktop {

/// What came of giving something to another program.
enum class HandOverOutcome {
    done,
    /// The user chose no program.
    cancelled,
    failed
};

using HandOverTold = std::function<void(HandOverOutcome)>;

} // namespace anadrome::desktop
