#include "Platform/Services/WebAddress.h"

#include <algorithm>

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

bool isWebAddress(std::string_view text) {
    const std::size_t colon = text.find("://");
    if (colon == text.npos)
        return false;
    std::string scheme(text.substr(0, colon));
    std::ranges::transform(scheme, scheme.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    const std::string_view rest = text.substr(colon + 3);
    const bool hasHost = !rest.empty() && std::string_view("/?#:@").find(rest.front()) == rest.npos;
    return (scheme == "http" || scheme == "https") && hasHost &&
           std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) > ' ' && c != 0x7F; });
}

std::string addressWithQuery(const std::string& address,
                             const std::vector<std::pair<std::string, std::string>>& parameters) {
    const std::size_t fragment = address.find('#');
    std::string result = address.substr(0, fragment);
    char separator = result.find('?') == result.npos ? '?' : '&';
    for (const auto& [name, value] : parameters) {
        result += separator + escaped(name) + '=' + escaped(value);
        separator = '&';
    }
    return result;
}

} // namespace anadrome
