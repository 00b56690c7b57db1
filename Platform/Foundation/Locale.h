#pragma once

#include <string>

namespace anadrome {

/// A language, possibly of a region, by its identifier: "ja", "en_GB".
struct Locale {
    std::string identifier;
};

} // namespace anadrome
