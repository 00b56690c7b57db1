#pragma once

#include <string>

namespace anadrome {

/// What a user tells others of the program: its name and, if there is one, its page in the store.
std::string recommendation();

} // namespace anadrome
