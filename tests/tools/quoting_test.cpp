#include "show_arguments/quoting.h"

#include "parser/argument_tokenizer.h"

#include <gmock/gmock.h>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

// Every string of up to this many of the bytes that the tokenizer tells apart.
std::vector<std::string> shortStrings(std::size_t length) {
    std::vector<std::string> strings = {""};
    for (std::size_t i = 0; strings[i].size() < length; ++i) {
        for (const char byte : {'a', ' ', '\t', '"', '\'', '\\', '\n'}) {
            strings.push_back(strings[i] + byte);
        }
    }
    return strings;
}

bool canBeSplit(const std::string& text) {
    std::vector<std::string> tokens;
    try {
        orvex::splitArgumentString(text, tokens);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

TEST(QuotedForVariable, IsTokenizedToTheOriginalString) {
    for (const std::string& text : shortStrings(4)) {
        std::vector<std::string> tokens;
        orvex::splitArgumentString("x " + tool::quotedForVariable(text) + " y", tokens);
        EXPECT_THAT(tokens, ElementsAre("x", text, "y"));
    }
}

TEST(QuotedForShell, QuotesAllButBytesThatEveryShellTakesLiterally) {
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

TEST(PlainOrQuoted, QuotesOnlyAmbiguousStrings) {
    EXPECT_EQ(tool::plainOrQuoted("a b"), "a b");
    for (const char* text : {"", " a", "a ", "(flag)", "a\"b", "a\\b", "a\tb"}) {
        EXPECT_EQ(tool::plainOrQuoted(text), tool::inQuotes(text));
    }
}

TEST(ColumnsOf, CountsWideCharactersTwice) {
    EXPECT_EQ(tool::columnsOf(""), 0U);
    EXPECT_EQ(tool::columnsOf("Größe"), 5U);
    EXPECT_EQ(tool::columnsOf("日本"), 4U);
}

TEST(ScanText, FindsAnUnterminatedQuoteExactlyWhereTheTokenizerFails) {
    for (const std::string& text : shortStrings(5)) {
        const auto quote = tool::scanText(text).unterminatedQuote;
        ASSERT_EQ(!quote, canBeSplit(text)) << text;
        if (quote) {
            ASSERT_TRUE(canBeSplit(text.substr(0, *quote))) << text;
            ASSERT_FALSE(canBeSplit(text.substr(0, *quote + 1))) << text;
        }
    }
}

TEST(ScanText, ReplacesLineBreaksOutsideQuotesWithSpaces) {
    const std::map<std::string, std::string> rows = {
        {"-o f\n-w", "-o f -w"},         {"-o f\r\n-w\n", "-o f  -w "},    {"-o f \\\n-w", "-o f   -w"},
        {"-o f\\\\\n-w", "-o f\\\\ -w"}, {"'f\n' \"\n\"", "'f\n' \"\n\""}, {"'\\\n'", "'\\\n'"}};
    for (const auto& [text, expected] : rows) {
        const tool::TextScan scan = tool::scanText(text);
        EXPECT_EQ(scan.withoutLineBreaks, expected);
        EXPECT_EQ(scan.lineBreak.has_value(), text != expected) << text;
    }
}

}  // namespace
