#pragma once

#include <map>
#include <string>
#include <vector>

namespace anadrome {

/// What comes with the program: the texts that people read, in the languages that there are. They are
/// compiled in as "LANGUAGE.lproj/Localizable.strings", so a program finds them wherever it is started. Any
/// thread.
class NSBundle {
public:
    /// The language is chosen at the first use and stays.
    static const NSBundle& mainBundle();

    /// The text for a key in the user's language; the key itself if there is none. A key that is missing in
    /// one language isn't looked for in another.
    std::string localizedStringForKey(const std::string& key) const;

    /// The languages that the texts are taken from: one, by its two-letter code.
    const std::vector<std::string>& preferredLocalizations() const { return m_localizations; }

private:
    NSBundle();

    std::vector<std::string> m_localizations;
    std::map<std::string, std::string> m_texts;
};

/// The text of the main bundle for a key.
inline std::string NSLocalizedString(const std::string& key) {
    return NSBundle::mainBundle().localizedStringForKey(key);
}

/// The same with the values in its places, which are marked "%1", "%2" and so on, each at most once.
std::string NSLocalizedString(const std::string& key, const std::vector<std::string>& values);

} // namespace anadrome
