#pragma once

#include <string>

namespace anadrome {

class URL;

/// Movies of any container.
inline constexpr const char* kUTTypeMovie = "public.movie";

/// Whether a file is of the type of that identifier, by its name and, where that says nothing, by its first
/// bytes. False for an identifier that isn't known here. Any thread.
bool fileConformsToType(const URL& file, const std::string& identifier);

} // namespace anadrome
