#include "show_arguments/trace.h"

#include "parser/argument_tokenizer.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

bool isSplit(const std::string& text) {
    std::vector<std::string> tokens;
    try {
        orvex::splitArgumentString(text, tokens);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

// Every string of up to this many of the bytes that the tokenizer tells apart.
std::vector<std::string> shortStrings(std::size_t length) {
    std::vector<std::string> strings = {""};
    for (std::size_t i = 0; strings[i].size() < length; ++i) {
        for (const char byte : {'a', ' ', '"', '\'', '\\', '\n'}) {
            strings.push_back(strings[i] + byte);
        }
    }
    return strings;
}

TEST(ScanText, FindsAnUnterminatedQuoteExactlyWhereTheTokenizerFails) {
    for (const std::string& text : shortStrings(6)) {
        const auto quote = tool::scanText(text).unterminatedQuote;
        ASSERT_EQ(!quote, isSplit(text)) << text;
        if (quote) {
            // Without it, what comes before it can be split, and with it, that cannot.
            ASSERT_TRUE(isSplit(text.substr(0, *quote))) << text;
            ASSERT_FALSE(isSplit(text.substr(0, *quote + 1))) << text;
        }
    }
}

TEST(ScanText, PutsSpacesInPlaceOfLineEndsOutsideQuotes) {
    const char* const rows[][2] = {
        {"-o f\n-w", "-o f -w"},      {"-o f\r\n-w\n", "-o f  -w "},   {"-o f \\\n-w", "-o f   -w"},
        {"-o 'f\n' \"\n\"", nullptr}, {"-o f\\\\\n-w", "-o f\\\\ -w"}, {"'\\\n'", nullptr},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(tool::scanText(text).withoutLineEnds, expected == nullptr ? text : expected);
    }
}

}  // namespace
