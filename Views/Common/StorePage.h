#pragma once

namespace anadrome {

/// Where people find the program. There is no such page yet: the name is reserved for examples.
inline constexpr const char* storePage = "https://anadrome.example/";

} // namespace anadrome
