#pragma once

#include <ctime>
#include <string>

namespace anadrome {

/// What a movie is called that was made at that time: "2026-05-01 18.30.00", by the clock on the wall.
std::string movieName(std::time_t time);

} // namespace anadrome
