#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/StringsTable.h"

#include <QFile>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

namespace anadrome {

namespace {

const std::filesystem::path sources = ANADROME_SOURCE_DIR;

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator(file), {}};
}

std::map<std::string, std::string> textsIn(const std::string& language) {
    QFile file(QString::fromStdString(":/" + language + ".lproj/Localizable.strings"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << "compiled in: " << language;
    const auto texts = parseStringsTable(file.readAll().toStdString());
    EXPECT_TRUE(texts) << language;
    return texts.value_or(std::map<std::string, std::string>{});
}

void addKeysIn(const std::string& text, std::set<std::string>& keys) {
    const std::string call = "NSLocalizedString(\"";
    for (std::size_t place = text.find(call); place != std::string::npos; place = text.find(call, place)) {
        place += call.size();
        keys.insert(text.substr(place, text.find('"', place) - place));
    }
}

std::set<std::string> usedKeys() {
    std::set<std::string> keys;
    for (const char* folder : {"App", "Ads", "Models", "Views", "Platform/Services"}) {
        if (!std::filesystem::exists(sources / folder))
            continue;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(sources / folder))
            if (entry.is_regular_file())
                addKeysIn(contentsOf(entry.path()), keys);
    }
    return keys;
}

} // namespace

TEST(LocalizableStrings, EveryLanguageHasATextForEveryKey) {
    const auto english = textsIn("en");
    const auto japanese = textsIn("ja");
    for (const auto& texts : {english, japanese})
        for (const auto& [key, text] : texts) {
            EXPECT_FALSE(text.empty()) << key;
            EXPECT_TRUE(english.contains(key) && japanese.contains(key)) << key;
        }
    const auto keys = usedKeys();
    EXPECT_TRUE(keys.contains("Error")) << "the search finds calls";
    for (const std::string& key : keys)
        EXPECT_TRUE(english.contains(key)) << key;
}

TEST(LocalizableStrings, TheProgramFindsItsTexts) {
    EXPECT_NE(NSLocalizedString("Error"), "Error");
    EXPECT_EQ(NSLocalizedString("no such key"), "no such key");
}

} // namespace anadrome
