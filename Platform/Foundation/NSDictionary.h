#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace anadrome {

using NSData = std::vector<std::byte>;
class Value;

/// Settings, attachments and extensions: values by their key.
using Dictionary = std::map<std::string, Value>;

/// One entry of a Dictionary: a Boolean, a whole number, a floating-point number, a string, bytes or a
/// dictionary.
class Value {
public:
    Value(bool value) : m_content(value) {}
    Value(int value) : m_content(std::int64_t{value}) {}
    Value(unsigned value) : m_content(std::int64_t{value}) {}
    Value(std::int64_t value) : m_content(value) {}
    Value(double value) : m_content(value) {}
    Value(const char* value) : m_content(std::string(value)) {}
    Value(std::string value) : m_content(std::move(value)) {}
    Value(NSData value) : m_content(std::move(value)) {}
    Value(Dictionary value) : m_content(std::move(value)) {}

    /// Null when the value is of another type.
    const bool* asBool() const { return std::get_if<bool>(&m_content); }
    const std::string* asString() const { return std::get_if<std::string>(&m_content); }
    const NSData* asData() const { return std::get_if<NSData>(&m_content); }
    const Dictionary* asDictionary() const { return std::get_if<Dictionary>(&m_content); }
    /// A whole or floating-point number as a double; empty for other types, Booleans included.
    std::optional<double> asNumber() const;
    /// A whole number, or a floating-point number without a fraction; empty for other types and values.
    std::optional<std::int64_t> asInteger() const;

    friend bool operator==(const Value&, const Value&) = default;

private:
    std::variant<bool, std::int64_t, double, std::string, NSData, Dictionary> m_content;
};

/// The value of a key, null if the dictionary has no such key.
const Value* find(const Dictionary& dictionary, const std::string& key);
/// The string of a key, null if it is missing or no string.
const std::string* findString(const Dictionary& dictionary, const std::string& key);
/// The number of a key, empty if it is missing or no number.
std::optional<double> findNumber(const Dictionary& dictionary, const std::string& key);

} // namespace anadrome
