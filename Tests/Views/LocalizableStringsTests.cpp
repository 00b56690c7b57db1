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

std::map<std::string, std::string> textsIn(const std::string& language) {
    QFile file(QString::fromStdString(":/" + language + ".lproj/Localizable.strings"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << "compiled in: " << language;
    const auto texts = parseStringsTable(file.readAll().toStdString());
    EXPECT_TRUE(texts) << language;
    return texts.value_or(std::map<std::string, std::string>{});
}

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// The keys that the program asks for, in its code and in its storyboards.
std::set<std::string> usedKeys() {
    std::set<std::string> keys;
    for (const char* folder : {"App", "Ads", "Desktop", "Models", "Views", "Platform"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(sources / folder)) {
            if (!entry.is_regular_file())
                continue;
            const std::string text = contentsOf(entry.path());
            for (const std::string call : {"NSLocalizedString(\"", "Texts.of(\""})
                for (std::size_t at = text.find(call); at != std::string::npos; at = text.find(call, at)) {
                    at += call.size();
                    keys.insert(text.substr(at, text.find('"', at) - at));
                }
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
    EXPECT_TRUE(keys.contains("Error") && keys.contains("DropToReverse")) << "the search finds calls";
    for (const std::string& key : keys)
        EXPECT_TRUE(english.contains(key)) << key;
}

} // namespace anadrome
