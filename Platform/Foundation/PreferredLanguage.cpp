#include "Platform/Foundation/PreferredLanguage.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace anadrome {

namespace {

std::string environment(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? value : "";
}

std::string localeOfMessages() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (std::string locale = environment(variable); !locale.empty())
            return locale;
    return "C";
}

/// "ja" of "ja_JP.UTF-8".
std::string languageOfLocale(const std::string& locale) {
    return locale.substr(0, locale.find_first_of("_.@-"));
}

} // namespace

std::string preferredLanguage(const std::vector<std::string>& available) {
    const std::string fallback = "en";
    const std::string locale = localeOfMessages();
    if (languageOfLocale(locale) == "C" || locale == "POSIX")
        return fallback;
    std::istringstream wanted(environment("LANGUAGE") + ':' + locale);
    for (std::string one; std::getline(wanted, one, ':');)
        if (std::find(available.begin(), available.end(), languageOfLocale(one)) != available.end())
            return languageOfLocale(one);
    return fallback;
}

} // namespace anadrome
