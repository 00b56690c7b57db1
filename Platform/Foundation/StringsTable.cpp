#include "Platform/Foundation/StringsTable.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace anadrome {

namespace {

void appendUtf8(std::string& text, unsigned character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    /// To the next thing that counts, or the end. False in a comment without an end.
    bool skipBlanks() {
        while (!m_rest.empty()) {
            if (std::isspace(static_cast<unsigned char>(m_rest.front()))) {
                m_rest.remove_prefix(1);
            } else if (m_rest.starts_with("//")) {
                skipPast("\n");
            } else if (m_rest.starts_with("/*")) {
                if (!skipPast("*/"))
                    return false;
            } else {
                return true;
            }
        }
        return true;
    }

    bool isAtEnd() const { return m_rest.empty(); }

    bool take(char expected) {
        if (!skipBlanks() || !m_rest.starts_with(expected))
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    std::optional<std::string> takeQuoted() {
        if (!take('"'))
            return std::nullopt;
        std::string text;
        while (!m_rest.empty()) {
            const char next = m_rest.front();
            m_rest.remove_prefix(1);
            if (next == '"')
                return text;
            if (next != '\\')
                text += next;
            else if (!takeEscape(text))
                return std::nullopt;
        }
        return std::nullopt;
    }

private:
    bool skipPast(std::string_view end) {
        const std::size_t place = m_rest.find(end);
        m_rest.remove_prefix(place == m_rest.npos ? m_rest.size() : place + end.size());
        return place != m_rest.npos;
    }

    bool takeEscape(std::string& text) {
        if (m_rest.empty())
            return false;
        const char kind = m_rest.front();
        m_rest.remove_prefix(1);
        if (kind == 'U' || kind == 'u')
            return takeCodePoint(text);
        constexpr std::string_view letters = "ntr";
        constexpr std::string_view meanings = "\n\t\r";
        const std::size_t place = letters.find(kind);
        text += place == letters.npos ? kind : meanings[place];
        return true;
    }

    bool takeCodePoint(std::string& text) {
        constexpr std::size_t digits = 4;
        unsigned character = 0;
        const char* const end = m_rest.data() + std::min(digits, m_rest.size());
        const auto [stop, error] = std::from_chars(m_rest.data(), end, character, 16);
        const bool isSurrogate = character >= 0xD800 && character < 0xE000;
        if (error != std::errc() || stop != m_rest.data() + digits || isSurrogate)
            return false;
        m_rest.remove_prefix(digits);
        appendUtf8(text, character);
        return true;
    }

    std::string_view m_rest;
};

} // namespace

std::optional<std::map<std::string, std::string>> parseStringsTable(std::string_view text) {
    std::map<std::string, std::string> table;
    Reader reader(text);
    while (true) {
        if (!reader.skipBlanks())
            return std::nullopt;
        if (reader.isAtEnd())
            return table;
        const auto key = reader.takeQuoted();
        if (!key || !reader.take('='))
            return std::nullopt;
        const auto value = reader.takeQuoted();
        if (!value || !reader.take(';'))
            return std::nullopt;
        table[*key] = *value;
    }
}

} // namespace anadrome
