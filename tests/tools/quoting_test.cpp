#include "show_arguments/quoting.h"

#include "parser/argument_tokenizer.h"

#include <gmock/gmock.h>
#include <vector>

namespace {

using ::testing::ElementsAre;

TEST(QuotedForVariable, IsOneArgumentOfTheTokenizerWhateverTheString) {
    const std::string alphabet = "a \t\n\"'\\";
    std::vector<std::string> strings = {""};
    for (std::size_t i = 0; strings[i].size() < 4; ++i) {
        for (const char byte : alphabet) {
            strings.push_back(strings[i] + byte);
        }
    }
    for (const std::string& text : strings) {
        std::vector<std::string> tokens;
        orvex::splitArgumentString("x " + tool::quotedForVariable(text) + " y", tokens);
        EXPECT_THAT(tokens, ElementsAre("x", text, "y"));
    }
}

TEST(QuotedForShell, LeavesOnlyWhatEveryShellTakesAsItIs) {
    EXPECT_EQ(tool::quotedForShell("-p=a:b,c/d.e_1"), "-p=a:b,c/d.e_1");
    EXPECT_EQ(tool::quotedForShell("-?"), "'-?'");
    EXPECT_EQ(tool::quotedForShell("it's $x"), R"('it'\''s $x')");
    EXPECT_EQ(tool::quotedForShell(""), "''");
}

TEST(Visible, EscapesOnlyWhatATerminalWouldNotShow) {
    EXPECT_EQ(tool::visible(R"(it's "a\b")"), R"(it's "a\b")");
    EXPECT_EQ(tool::visible("a\n\x1b[31m\"\x7f\\"), R"(a\n\x1b[31m"\x7f\)");
    EXPECT_EQ(tool::visible("Größe 日本 \xff\xc2"), R"(Größe 日本 \xff\xc2)");
}

TEST(PlainOrQuoted, QuotesWhatCouldBeMistaken) {
    EXPECT_EQ(tool::plainOrQuoted("a b"), "a b");
    for (const char* text : {"", " a", "a ", "(flag)", "a\"b", "a\\b", "a\tb"}) {
        EXPECT_EQ(tool::plainOrQuoted(text), tool::inQuotes(text));
    }
}

TEST(ColumnsOf, CountsWideCharactersTwice) {
    EXPECT_EQ(tool::columnsOf(""), 0U);
    EXPECT_EQ(tool::columnsOf("abc"), 3U);
    EXPECT_EQ(tool::columnsOf("Größe"), 5U);
    EXPECT_EQ(tool::columnsOf("日本"), 4U);
}

}  // namespace
