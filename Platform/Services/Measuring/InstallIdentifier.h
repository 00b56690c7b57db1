#pragma once

#include <string>

namespace anadrome {

/// The random UUID, in lower case, that the file holds; made if the file is missing or damaged. Empty if it
/// can't be kept. It tells one installation from another and says nothing of user or machine. Several
/// processes may ask at once.
std::string installIdentifier(const std::string& path);

} // namespace anadrome
