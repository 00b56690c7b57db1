#include "Platform/Foundation/NSBundle.h"

#include "Platform/Foundation/PreferredLanguage.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/StringsTable.h"

#include <QDir>
#include <QFile>

namespace anadrome {

namespace {

constexpr const char* suffix = ".lproj";

std::vector<std::string> languages() {
    std::vector<std::string> found;
    for (const QString& folder : QDir(":/").entryList({QString("*") + suffix}, QDir::Dirs, QDir::Name))
        found.push_back(
            folder.chopped(static_cast<qsizetype>(std::char_traits<char>::length(suffix))).toStdString());
    return found;
}

} // namespace

NSBundle::NSBundle() : m_localizations{preferredLanguage(languages())} {
    const std::string& language = m_localizations.front();
    QFile file(QString::fromStdString(":/" + language + suffix + "/Localizable.strings"));
    if (!file.open(QIODevice::ReadOnly))
        return;
    if (auto texts = parseStringsTable(file.readAll().toStdString()))
        m_texts = std::move(*texts);
    else
        debugLog("The texts in the language " + language + " can't be read");
}

const NSBundle& NSBundle::mainBundle() {
    static const NSBundle& bundle = *new NSBundle;
    return bundle;
}

std::string NSBundle::localizedStringForKey(const std::string& key) const {
    const auto found = m_texts.find(key);
    return found != m_texts.end() ? found->second : key;
}

std::string NSLocalizedString(const std::string& key, const std::vector<std::string>& values) {
    std::string text = NSLocalizedString(key);
    // From the last to the first, so that what a value says is never taken for a place.
    std::map<std::size_t, std::size_t, std::greater<>> places;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (const std::size_t at = text.find('%' + std::to_string(i + 1)); at != std::string::npos)
            places[at] = i;
    for (const auto& [at, i] : places)
        text.replace(at, 2, values[i]);
    return text;
}

} // namespace anadrome
