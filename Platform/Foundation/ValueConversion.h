#pragma once

#include "Platform/Foundation/NSDictionary.h"

#include <cstdint>
#include <optional>
#include <string>

namespace anadrome {

/// What a value means to a reader that expects another type.

/// A number without its fraction, held to the type's limits; 1 or 0 for a Boolean; the number at the start of
/// a string; otherwise 0.
std::int64_t integerOf(const Value& value);

/// A Boolean itself; whether a number isn't 0; true for the strings "YES", "1" and "true"; otherwise false.
bool boolOf(const Value& value);

/// A string itself, a number as text, "1" or "0" for a Boolean; nothing for other types.
std::optional<std::string> stringOf(const Value& value);

} // namespace anadrome
