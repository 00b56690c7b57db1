#pragma once

#include "Platform/Foundation/Locale.h"

#include <vector>

namespace anadrome {

/// What the whole program shares. Main thread only.
class SharedState {
public:
    /// Made at first use.
    static SharedState& shared() {
        static SharedState instance;
        return instance;
    }

    std::vector<Locale> availableLocale;
    std::vector<Locale> notAvailableLocale;

private:
    SharedState() = default;
};

} // namespace anadrome
