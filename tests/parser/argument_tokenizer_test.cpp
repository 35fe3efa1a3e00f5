#include "parser/argument_tokenizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

using Tokens = std::vector<std::string>;

struct Row {
    const char* name;
    std::string text;
    Tokens expected;
};

Tokens split(const std::string& text) {
    Tokens tokens;
    orvex::splitArgumentString(text, tokens);
    return tokens;
}

void expectTokens(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.name) + ": " + ::testing::PrintToString(row.text));
        EXPECT_EQ(split(row.text), row.expected);
    }
}

// The text of the exception that splitting throws.
std::string errorOf(const std::string& text) {
    Tokens tokens;
    try {
        orvex::splitArgumentString(text, tokens);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "(no error)";
}

TEST(Tokenizer, BetweenTokens) {
    expectTokens({
        {"a space is ignored", " a", {"a"}},
        {"a tab is ignored", "\ta", {"a"}},
        {"a double quote starts a quoted token", "\"a b\"", {"a b"}},
        {"a single quote starts a quoted token", "'a b'", {"a b"}},
        {"a backslash starts a token with the next byte", "\\ab", {"ab"}},
        {"a backslash starts a token with a space", "\\ b", {" b"}},
        {"a backslash starts a token with a tab", "\\\tb", {"\tb"}},
        {"a backslash starts a token with a double quote", "\\\"b", {"\"b"}},
        {"a backslash starts a token with a single quote", "\\'b", {"'b"}},
        {"a backslash starts a token with a backslash", "\\\\b", {"\\b"}},
        {"another byte starts a token", "a", {"a"}},
        {"the second token starts empty: other byte", "abc d", {"abc", "d"}},
        {"the second token starts empty: quote", "abc 'd'", {"abc", "d"}},
        {"the second token starts empty: backslash", "abc \\d", {"abc", "d"}},
    });
}

TEST(Tokenizer, InToken) {
    expectTokens({
        {"a space ends the token", "a b", {"a", "b"}},
        {"a tab ends the token", "a\tb", {"a", "b"}},
        {"a double quote opens a quoted piece", "a\"b c\"", {"ab c"}},
        {"a single quote opens a quoted piece", "a'b c'", {"ab c"}},
        {"a backslash takes the next byte", "a\\bc", {"abc"}},
        {"a backslash takes a space", "a\\ b", {"a b"}},
        {"a backslash takes a tab", "a\\\tb", {"a\tb"}},
        {"a backslash takes a double quote", "a\\\"b", {"a\"b"}},
        {"a backslash takes a single quote", "a\\'b", {"a'b"}},
        {"a backslash takes a backslash", "a\\\\b", {"a\\b"}},
        {"another byte is appended", "abc", {"abc"}},
        {"the token goes on after an escaped separator", "a\\ b c", {"a b", "c"}},
    });
}

TEST(Tokenizer, InQuote) {
    expectTokens({
        {"a space is kept in double quotes", "\" a  b \"", {" a  b "}},
        {"a tab is kept in double quotes", "\"\ta\t\tb\t\"", {"\ta\t\tb\t"}},
        {"a space is kept in single quotes", "' a  b '", {" a  b "}},
        {"a tab is kept in single quotes", "'\ta\t\tb\t'", {"\ta\t\tb\t"}},
        {"the opening double quote closes", "\"a\" b", {"a", "b"}},
        {"the opening single quote closes", "'a' b", {"a", "b"}},
        {"a single quote is kept in double quotes", "\"it's\"", {"it's"}},
        {"a double quote is kept in single quotes", "'say \"a\"'", {"say \"a\""}},
        {"a backslash takes the next byte in double quotes", "\"a\\bc\"", {"abc"}},
        {"a backslash takes the next byte in single quotes", "'a\\bc'", {"abc"}},
        {"a backslash takes the closing double quote", "\"a\\\"b\"", {"a\"b"}},
        {"a backslash takes the closing single quote", "'a\\'b'", {"a'b"}},
        {"a backslash takes the other quote", "\"a\\'b\"", {"a'b"}},
        {"a backslash takes a space", "\"a\\ b\"", {"a b"}},
        {"a backslash takes a tab", "\"a\\\tb\"", {"a\tb"}},
        {"a backslash takes a backslash, after which the quote closes", "\"a\\\\\" b", {"a\\", "b"}},
        {"the quoted piece goes on after an escape", "\"a\\bc d\"", {"abc d"}},
        {"another byte is appended", "\"abc\"", {"abc"}},
    });
}

TEST(Tokenizer, ClosingQuoteDoesNotEndTheToken) {
    expectTokens({
        {"quoted and unquoted pieces", "--name=\"a b\"c", {"--name=a bc"}},
        {"two kinds of quotes", "\"a\"'b'", {"ab"}},
        {"the same quote twice", "\"a\"\"b\"", {"ab"}},
        {"quotes at the end", "x\"y\"", {"xy"}},
        {"quotes in front", "\"x\"y", {"xy"}},
        {"a different quote later", "'a'b\"c 'd\"e", {"abc 'de"}},
        {"an escape after a quote", "\"a\"\\ b", {"a b"}},
        {"empty quotes in the middle", "a\"\"b", {"ab"}},
    });
}

TEST(Tokenizer, EmptyQuotesAreAnEmptyToken) {
    expectTokens({
        {"between tokens", "a '' b", {"a", "", "b"}},
        {"double quotes", "a \"\" b", {"a", "", "b"}},
        {"alone", "''", {""}},
        {"in front", "\"\" a", {"", "a"}},
        {"at the end", "a ''", {"a", ""}},
        {"two that touch", "''\"\"", {""}},
        {"two that do not", "'' ''", {"", ""}},
    });
}

TEST(Tokenizer, EscapesAreNotTranslated) {
    expectTokens({
        {"letter n", "\\n", {"n"}},
        {"letter t", "a\\tb", {"atb"}},
        {"letter n in quotes", "\"\\n\"", {"n"}},
        {"digits", "\\0\\x41", {"0x41"}},
        {"newline", "a\\\nb", {"a\nb"}},
        {"space within a token", "a\\ b", {"a b"}},
        {"quotes that do not group", "\\\"x\\\"", {"\"x\""}},
        {"quotes that do not group, with a separator", "\\\"x y\\\"", {"\"x", "y\""}},
        {"double quote in double quotes", "\"a\\\"b\"", {"a\"b"}},
        {"single quote in single quotes", "'a\\'b'", {"a'b"}},
    });
}

TEST(Tokenizer, RunsOfSeparatorsMakeNoTokens) {
    expectTokens({
        {"nothing", "", {}},
        {"one space", " ", {}},
        {"one tab", "\t", {}},
        {"many", " \t  \t\t ", {}},
        {"around and between", "  a \t b\t", {"a", "b"}},
        {"after a quoted token", "'a'  'b'  ", {"a", "b"}},
    });
}

TEST(Tokenizer, OtherControlCharactersDoNotSeparate) {
    expectTokens({
        {"newline", "a\nb c", {"a\nb", "c"}},
        {"carriage return", "a\rb", {"a\rb"}},
        {"vertical tab", "a\vb", {"a\vb"}},
        {"form feed", "a\fb", {"a\fb"}},
        {"newline alone", "\n", {"\n"}},
        {"newline in quotes", "'a\nb'", {"a\nb"}},
        {"no-break space",
         "a\xC2\xA0"
         "b",
         {"a\xC2\xA0"
          "b"}},
    });
}

TEST(Tokenizer, ABackslashAtTheEndStandsForItself) {
    expectTokens({
        {"after a token", "abc\\", {"abc\\"}},
        {"alone", "\\", {"\\"}},
        {"after a separator", "abc \\", {"abc", "\\"}},
        {"after a quoted piece", "\"abc\"\\", {"abc\\"}},
        {"after an escaped backslash", "\\\\\\", {"\\\\"}},
        {"after an escaped byte", "\\a\\", {"a\\"}},
        {"two are one", "abc\\\\", {"abc\\"}},
    });
}

TEST(Tokenizer, OptionWithAQuotedValue) {
    EXPECT_THAT(split("-o \"my file.xml\""), ElementsAre("-o", "my file.xml"));
}

TEST(Tokenizer, AQuoteThatIsNotClosedIsAnError) {
    const struct {
        const char* name;
        const char* text;
    } rows[] = {
        {"within a token", "x\"y"},
        {"double quote alone", "\""},
        {"single quote alone", "'"},
        {"opened at the end of a token", "abc\""},
        {"after complete tokens", "a b 'c d' \"e"},
        {"closed by the other quote", "\"abc'"},
        {"closed by the other quote, single", "'abc\""},
        {"opened again", "\"a\"b\"c"},
        {"closing quote escaped", "\"abc\\\""},
        {"closing single quote escaped", "'abc\\'"},
        {"backslash at the end", "\"abc\\"},
        {"backslash at the end, single", "'\\"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(errorOf(row.text), "Starting quote has no ending quote.");
    }
}

TEST(Tokenizer, AnEscapeAtTheEndIsNoError) {
    for (const char* text : {"\\", "a\\", "a \\", "\\\\\\", "''\\"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(errorOf(text), "(no error)");
    }
}

TEST(Tokenizer, FailureLeavesTheTokensAsTheyWere) {
    Tokens tokens = {"old", "", "tokens"};
    EXPECT_THROW(orvex::splitArgumentString("new 'tokens", tokens), std::runtime_error);
    EXPECT_THAT(tokens, ElementsAre("old", "", "tokens"));
}

TEST(Tokenizer, SuccessReplacesTheTokens) {
    Tokens tokens = {"old", "tokens"};
    orvex::splitArgumentString("new", tokens);
    EXPECT_THAT(tokens, ElementsAre("new"));
    orvex::splitArgumentString(" ", tokens);
    EXPECT_THAT(tokens, ElementsAre());
}

TEST(Tokenizer, AllOrdinaryBytesAreKept) {
    for (int value = 0; value <= 0xFF; ++value) {
        const std::string byte(1, static_cast<char>(value));
        if (byte.find_first_of(" \t\"'\\") != std::string::npos) {
            continue;
        }
        SCOPED_TRACE(value);
        EXPECT_THAT(split(byte), ElementsAre(byte));
        EXPECT_THAT(split("a" + byte + "b" + byte + " c"), ElementsAre("a" + byte + "b" + byte, "c"));
        EXPECT_THAT(split("\"" + byte + "\"'" + byte + "'"), ElementsAre(byte + byte));
    }
}

TEST(Tokenizer, AllBytesAreKeptAfterABackslash) {
    for (int value = 0; value <= 0xFF; ++value) {
        const std::string byte(1, static_cast<char>(value));
        SCOPED_TRACE(value);
        EXPECT_THAT(split("\\" + byte), ElementsAre(byte));
        EXPECT_THAT(split("a\\" + byte + "b c"), ElementsAre("a" + byte + "b", "c"));
        EXPECT_THAT(split("\"\\" + byte + " \" c"), ElementsAre(byte + " ", "c"));
        EXPECT_THAT(split("'\\" + byte + " ' c"), ElementsAre(byte + " ", "c"));
    }
}

TEST(Tokenizer, LongTextsAreKept) {
    const std::string megabyte(1 << 20, 'x');
    EXPECT_THAT(split(megabyte + " '" + megabyte + "'"), ElementsAre(megabyte, megabyte));

    std::string many;
    for (int i = 0; i < 100000; ++i) {
        many += "a ";
    }
    EXPECT_EQ(split(many), Tokens(100000, "a"));
}

}  // namespace
