#include "parser/argument_tokenizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

using Tokens = std::vector<std::string>;

Tokens split(const std::string& text) {
    Tokens tokens;
    orvex::splitArgumentString(text, tokens);
    return tokens;
}

struct Row {
    std::string text;
    Tokens expected;
};

void expectTokens(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        ASSERT_EQ(split(row.text), row.expected) << "from " << ::testing::PrintToString(row.text);
    }
}

// In the tables, each kind of byte in turn: separator, quote, backslash, any other.

TEST(Tokenizer, BetweenTokens) {
    expectTokens({
        {" a", {"a"}},
        {"\ta", {"a"}},
        {"\"a b\"", {"a b"}},
        {"'a b'", {"a b"}},
        {"\\ab", {"ab"}},
        {"\\ b", {" b"}},
        {"\\\tb", {"\tb"}},
        {"\\\"b", {"\"b"}},
        {"\\'b", {"'b"}},
        {"\\\\b", {"\\b"}},
        {"a", {"a"}},
        {"abc d 'e' \\f", {"abc", "d", "e", "f"}},
    });
}

TEST(Tokenizer, InToken) {
    expectTokens({
        {"a b", {"a", "b"}},
        {"a\tb", {"a", "b"}},
        {"a\"b c\"", {"ab c"}},
        {"a'b c'", {"ab c"}},
        {"a\\bc", {"abc"}},
        {"a\\ b c", {"a b", "c"}},
        {"a\\\tb", {"a\tb"}},
        {"a\\\"b", {"a\"b"}},
        {"a\\'b", {"a'b"}},
        {"a\\\\b", {"a\\b"}},
        {"abc", {"abc"}},
    });
}

TEST(Tokenizer, InQuote) {
    expectTokens({
        {"\" a  b \"", {" a  b "}},
        {"'\ta\t\tb\t'", {"\ta\t\tb\t"}},
        {"\"a\" b", {"a", "b"}},
        {"'a' b", {"a", "b"}},
        {"\"it's\"", {"it's"}},
        {"'say \"a\"'", {"say \"a\""}},
        {"\"a\\bc d\"", {"abc d"}},
        {"'a\\ b'", {"a b"}},
        {"\"a\\\tb\"", {"a\tb"}},
        {"\"a\\\"b\"", {"a\"b"}},
        {"'a\\'b'", {"a'b"}},
        {"\"a\\'b\"", {"a'b"}},
        {"\"a\\\\\" b", {"a\\", "b"}},
        {"\"abc\"", {"abc"}},
    });
}

TEST(Tokenizer, AClosingQuoteDoesNotEndTheToken) {
    expectTokens({
        {"--name=\"a b\"c", {"--name=a bc"}},
        {"\"a\"'b'", {"ab"}},
        {"x\"y\"", {"xy"}},
        {"'a'b\"c 'd\"e", {"abc 'de"}},
        {"\"a\"\\ b", {"a b"}},
        {"a\"\"b", {"ab"}},
    });
}

TEST(Tokenizer, EmptyQuotesAreAnEmptyToken) {
    expectTokens({
        {"a '' b", {"a", "", "b"}},
        {"\"\"", {""}},
        {"''\"\"", {""}},
        {"'' ''", {"", ""}},
    });
}

TEST(Tokenizer, EscapesAreNotTranslated) {
    expectTokens(
        {{"\\n\\t", {"nt"}}, {"\"\\0\\x41\"", {"0x41"}}, {"\\\"x\\\"", {"\"x\""}}, {"a\\ b", {"a b"}}});
}

TEST(Tokenizer, RunsOfSeparatorsMakeNoTokens) {
    expectTokens(
        {{"", {}}, {" ", {}}, {" \t  \t\t ", {}}, {"  a \t b\t", {"a", "b"}}, {"'a'  'b' ", {"a", "b"}}});
}

TEST(Tokenizer, OtherBytesAreKept) {
    expectTokens({
        {"a\nb c", {"a\nb", "c"}},
        {"\r\v\f\x01\x7F", {"\r\v\f\x01\x7F"}},
        {"\x80\xC2\xA0\xFF", {"\x80\xC2\xA0\xFF"}},
        {"\\\n\\\xFF", {"\n\xFF"}},
        {std::string("a\0b", 3), {std::string("a\0b", 3)}},
    });
}

TEST(Tokenizer, ABackslashAtTheEndStandsForItself) {
    expectTokens({
        {"abc\\", {"abc\\"}},
        {"\\", {"\\"}},
        {"abc \\", {"abc", "\\"}},
        {"\"abc\"\\", {"abc\\"}},
        {"\\\\\\", {"\\\\"}},
        {"abc\\\\", {"abc\\"}},
    });
}

TEST(Tokenizer, AnOptionWithAQuotedValueIsTwoTokens) {
    EXPECT_THAT(split("-o \"my file.xml\""), ElementsAre("-o", "my file.xml"));
}

TEST(Tokenizer, AQuoteThatIsNotClosedIsAnErrorAndLeavesTheTokensAsTheyWere) {
    for (const char* text : {"x\"y", "\"", "'", "a b 'c d' \"e", "\"abc'", "'abc\"", "\"a\"b\"c", "\"abc\\\"",
                             "'abc\\'", "\"abc\\", "'\\"}) {
        SCOPED_TRACE(text);
        Tokens tokens = {"old", ""};
        try {
            orvex::splitArgumentString(text, tokens);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::runtime_error& error) {
            ASSERT_STREQ(error.what(), "Starting quote has no ending quote.");
        }
        ASSERT_THAT(tokens, ElementsAre("old", ""));
    }
}

TEST(Tokenizer, SuccessReplacesTheTokens) {
    Tokens tokens = {"old", "tokens"};
    orvex::splitArgumentString("new", tokens);
    EXPECT_THAT(tokens, ElementsAre("new"));
    orvex::splitArgumentString(" ", tokens);
    EXPECT_THAT(tokens, ElementsAre());
}

}  // namespace
