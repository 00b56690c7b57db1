#include "Platform/Services/Http/HttpQuery.h"

#include <string_view>

namespace anadrome {

namespace {

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// Escapes all that has a meaning in an address, and all that isn't ASCII.
std::string escaped(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        if (isLetterOrDigit(c) || std::string_view("-._~").find(c) != std::string_view::npos) {
            result += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        result += '%';
        result += digits[byte >> 4U];
        result += digits[byte & 15U];
    }
    return result;
}

} // namespace

std::string addressWithQuery(const std::string& address,
                             const std::vector<std::pair<std::string, std::string>>& parameters) {
    // A fragment is never sent.
    std::string result = address.substr(0, address.find('#'));
    char separator = result.find('?') == result.npos ? '?' : '&';
    for (const auto& [name, value] : parameters) {
        result += separator + escaped(name) + '=' + escaped(value);
        separator = '&';
    }
    return result;
}

} // namespace anadrome
