#pragma once

#include "Platform/Foundation/URL.h"

#include <string>

namespace anadrome::desktop {

/// What a start of the program asks for.
struct StartRequest {
    /// Empty for none.
    URL clip;
    /// The desktop's permission to take the user's attention; empty for none.
    std::string activationToken;

    friend bool operator==(const StartRequest&, const StartRequest&) = default;
};

} // namespace anadrome::desktop
