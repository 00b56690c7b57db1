#pragma once

#include <string>
#include <vector>

namespace anadrome::testing_support {

/// The names of a movie's outermost boxes, in the file's order.
std::vector<std::string> outermostBoxes(const std::string& path);

/// Adds one text to the user data of a movie whose index stands last, as phones do. The tag has four bytes;
/// the language is three letters.
void addUserData(const std::string& path, const std::string& tag, const std::string& text,
                 const std::string& language = "und");

} // namespace anadrome::testing_support
