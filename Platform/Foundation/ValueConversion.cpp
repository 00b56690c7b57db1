#include "Platform/Foundation/ValueConversion.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace anadrome {

namespace {

std::int64_t truncated(double number) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (std::isnan(number))
        return 0;
    if (number >= 0x1p63)
        return Limits::max();
    return number < -0x1p63 ? Limits::min() : static_cast<std::int64_t>(number);
}

std::string shortestText(double number) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, number).ptr;
    return {text, end};
}

} // namespace

std::int64_t integerOf(const Value& value) {
    if (const bool* boolean = value.asBool())
        return *boolean ? 1 : 0;
    if (const auto whole = value.asInteger())
        return *whole;
    if (const auto number = value.asNumber())
        return truncated(*number);
    const std::string* string = value.asString();
    return string ? std::strtoll(string->c_str(), nullptr, 10) : 0;
}

bool boolOf(const Value& value) {
    if (const bool* boolean = value.asBool())
        return *boolean;
    if (const auto number = value.asNumber())
        return *number != 0;
    const std::string* string = value.asString();
    return string && (*string == "YES" || *string == "1" || *string == "true");
}

std::optional<std::string> stringOf(const Value& value) {
    if (const std::string* string = value.asString())
        return *string;
    if (value.asBool() || value.asInteger())
        return std::to_string(integerOf(value));
    const auto number = value.asNumber();
    return number ? std::optional(shortestText(*number)) : std::nullopt;
}

} // namespace anadrome
