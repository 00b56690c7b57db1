#include "Platform/Foundation/NSDictionary.h"

#include <cmath>

namespace anadrome {

std::optional<double> Value::asNumber() const {
    if (const auto* whole = std::get_if<std::int64_t>(&m_content))
        return static_cast<double>(*whole);
    if (const auto* real = std::get_if<double>(&m_content))
        return *real;
    return std::nullopt;
}

std::optional<std::int64_t> Value::asInteger() const {
    if (const auto* whole = std::get_if<std::int64_t>(&m_content))
        return *whole;
    const auto* real = std::get_if<double>(&m_content);
    // Both limits are exact as doubles; the upper one is the first number that doesn't fit. Not a number
    // fails too.
    const bool isWhole = real && *real >= -0x1p63 && *real < 0x1p63 && std::trunc(*real) == *real;
    return isWhole ? std::optional(static_cast<std::int64_t>(*real)) : std::nullopt;
}

const Value* find(const Dictionary& dictionary, const std::string& key) {
    const auto entry = dictionary.find(key);
    return entry == dictionary.end() ? nullptr : &entry->second;
}

const std::string* findString(const Dictionary& dictionary, const std::string& key) {
    const Value* value = find(dictionary, key);
    return value ? value->asString() : nullptr;
}

std::optional<double> findNumber(const Dictionary& dictionary, const std::string& key) {
    const Value* value = find(dictionary, key);
    return value ? value->asNumber() : std::nullopt;
}

} // namespace anadrome
