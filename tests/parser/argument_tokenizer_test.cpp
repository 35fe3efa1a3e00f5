#include "parser/argument_tokenizer.h"

#include "support/arguments.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

void expectTokens(const std::vector<std::pair<std::string, Strings>>& rows) {
    for (const auto& [text, expected] : rows) {
        Strings tokens = {"replaced"};
        orvex::splitArgumentString(text, tokens);
        EXPECT_EQ(tokens, expected) << "from " << ::testing::PrintToString(text);
    }
}

TEST(Tokenizer, SpacesAndTabsSeparateTokens) {
    expectTokens({
        {"", {}},
        {" \t  \t\t ", {}},
        {"  a \t b\t", {"a", "b"}},
        {"a\nb c", {"a\nb", "c"}},
        {"\r\v\f\x01\x7F \x80\xC2\xA0\xFF", {"\r\v\f\x01\x7F", "\x80\xC2\xA0\xFF"}},
        {std::string("a\0b", 3), {std::string("a\0b", 3)}},
    });
}

TEST(Tokenizer, QuotesGroupAndDoNotEndTheToken) {
    expectTokens({
        {"\" a  b \" '\tc\t'", {" a  b ", "\tc\t"}},
        {"a\"b c\" --name='d e'f", {"ab c", "--name=d ef"}},
        {"\"it's\" 'say \"a\"'", {"it's", "say \"a\""}},
        {"a '' \"\"", {"a", "", ""}},
    });
}

TEST(Tokenizer, BackslashTakesTheNextByteLiterally) {
    expectTokens({
        {"\\ a \\\"b \\'c \\\\d \\n", {" a", "\"b", "'c", "\\d", "n"}},
        {"a\\ b a\\\"b a\\\tb", {"a b", "a\"b", "a\tb"}},
        {"\"a\\\"b\" 'a\\'b' \"a\\\\\" \"a\\b\"", {"a\"b", "a'b", "a\\", "ab"}},
    });
}

TEST(Tokenizer, TrailingBackslashIsLiteral) {
    expectTokens({
        {"\\", {"\\"}},
        {"abc\\", {"abc\\"}},
        {"\"abc\"\\", {"abc\\"}},
    });
}

TEST(Tokenizer, UnterminatedQuoteThrowsAndLeavesTheTokensUnchanged) {
    for (const char* text : {"x\"y", "'", "a b 'c d' \"e", "\"abc'", "\"abc\\\"", "'abc\\"}) {
        Strings tokens = {"old", ""};
        try {
            orvex::splitArgumentString(text, tokens);
            ADD_FAILURE() << "nothing was thrown for " << text;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Starting quote has no ending quote.");
        }
        EXPECT_EQ(tokens, (Strings{"old", ""})) << text;
    }
}

}  // namespace
