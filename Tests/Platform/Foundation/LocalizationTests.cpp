#include "Platform/Foundation/PreferredLanguage.h"
#include "Platform/Foundation/StringsTable.h"
#include "Tests/Support/Environment.h"

#include <gtest/gtest.h>

namespace anadrome {

using testing_support::Environment;

TEST(StringsTable, ReadsKeysValuesCommentsAndEscapes) {
    const auto table = parseStringsTable("/* a \"comment\" = \"x\"; */ \"one\" = \"1\";\n"
                                         "// another\n\"two words\"=\"\\\"2\\\"\\n\\\\\\U00e9\\U9006\" ;\n"
                                         "\"one\" = \"last // wins\"; // end");
    ASSERT_TRUE(table);
    EXPECT_EQ(*table,
              (std::map<std::string, std::string>{{"one", "last // wins"}, {"two words", "\"2\"\n\\é逆"}}));
    EXPECT_TRUE(parseStringsTable("")->empty());
}

TEST(StringsTable, AMistakeAnywhereVoidsTheWhole) {
    for (const char* text :
         {"\"a\" = \"b\"", "\"a\" \"b\";", "\"a\" = b;", "\"a\" = \"b", "/* no end", "\"a\" = \"b\"; x",
          "\"a\" = \"\\U12\";", "\"a\" = \"\\UD83D\";", "\"a\" = \"b\\", "/ \"a\" = \"b\";"})
        EXPECT_FALSE(parseStringsTable(text)) << text;
}

TEST(PreferredLanguage, FollowsTheEnvironment) {
    const struct {
        const char *language, *all, *messages, *lang, *expected;
    } cases[]{
        {"", "", "", "", "en"},
        {"", "", "", "ja_JP.UTF-8", "ja"},
        {"", "", "ja", "en_US", "ja"},
        {"", "en_GB.UTF-8", "ja_JP", "ja_JP", "en"},
        {"fr:ja:en", "", "", "de_DE.UTF-8", "ja"},
        {"fr", "", "", "ja_JP.UTF-8", "ja"},
        {"ja", "C.UTF-8", "", "ja_JP", "en"},
        {"ja", "", "", "POSIX", "en"},
        {"", "", "", "de_DE@euro", "en"},
    };
    for (const auto& c : cases) {
        const Environment language("LANGUAGE", c.language);
        const Environment all("LC_ALL", c.all);
        const Environment messages("LC_MESSAGES", c.messages);
        const Environment lang("LANG", c.lang);
        EXPECT_EQ(preferredLanguage({"en", "ja"}), c.expected)
            << c.language << ' ' << c.all << ' ' << c.messages << ' ' << c.lang;
    }
}

} // namespace anadrome
