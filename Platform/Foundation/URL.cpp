#include "Platform/Foundation/URL.h"

#include <filesystem>
#include <system_error>

namespace anadrome {

namespace {

/// Folds an absolute path: no doubled slashes, no "." and "..", no slash at the end. ".." at the root stays
/// there.
std::string folded(std::string_view path) {
    std::string result;
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        const std::string_view component = path.substr(0, slash);
        path.remove_prefix(slash == path.npos ? path.size() : slash + 1);
        if (component == "..")
            result.erase(result.empty() ? 0 : result.rfind('/'));
        else if (!component.empty() && component != ".")
            result.append("/").append(component);
    }
    return result.empty() ? "/" : result;
}

/// The characters that a path may hold plainly in a URL, beside letters and digits.
bool isPlainInURL(char character) {
    const bool isLetterOrDigit = (character >= 'a' && character <= 'z') ||
                                 (character >= 'A' && character <= 'Z') ||
                                 (character >= '0' && character <= '9');
    return isLetterOrDigit ||
           std::string_view("-._~!$&'()*+,;=:@/").find(character) != std::string_view::npos;
}

} // namespace

URL URL::fileURLWithPath(std::string_view path) {
    if (path.empty())
        return {};
    if (path.front() == '/')
        return URL(folded(path));
    std::error_code failure;
    const std::string current = std::filesystem::current_path(failure).string();
    return failure ? URL() : URL(folded(current + '/' + std::string(path)));
}

std::string URL::absoluteString() const {
    if (empty())
        return {};
    std::string text = "file://";
    for (const char character : m_path) {
        if (isPlainInURL(character)) {
            text += character;
            continue;
        }
        constexpr std::string_view digits = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(character);
        text += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

std::string URL::lastPathComponent() const {
    return m_path == "/" ? m_path : m_path.substr(m_path.rfind('/') + 1);
}

std::string URL::pathExtension() const {
    const std::string name = lastPathComponent();
    const std::size_t dot = name.rfind('.');
    return dot == name.npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

URL URL::appendingPathComponent(std::string_view component) const {
    return empty() ? URL() : URL(folded(m_path + '/' + std::string(component)));
}

URL URL::deletingLastPathComponent() const {
    return empty() ? URL() : URL(folded(m_path + "/.."));
}

} // namespace anadrome
