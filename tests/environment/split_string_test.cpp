#include "environment/split_string.h"

#include "support/arguments.h"

#include <gtest/gtest.h>

namespace {

TEST(SplitString, AppendsThePartsBetweenTheDelimiters) {
    const struct {
        const char* text;
        char delimiter;
        Strings parts;
    } rows[] = {
        {"abc", ':', {"abc"}},
        {"a::bc", ':', {"a", "", "bc"}},
        {":b", ':', {"", "b"}},
        // An empty last part is not a part.
        {"a:", ':', {"a"}},
        {"::", ':', {"", ""}},
        {" a,b : \xFF;d", ':', {" a,b ", " \xFF;d"}},
        {"e\xFF\x80", '\xFF', {"e", "\x80"}},
    };
    for (const auto& row : rows) {
        Strings parts = {"before"};
        EXPECT_TRUE(orvex::splitString(row.text, row.delimiter, parts)) << row.text;
        EXPECT_EQ(parts, Strings{"before"} + row.parts) << row.text;
    }
}

TEST(SplitString, ReturnsFalseAndAppendsNothingForNoTextOrANulDelimiter) {
    Strings parts = {"before"};
    EXPECT_FALSE(orvex::splitString(nullptr, ':', parts));
    EXPECT_FALSE(orvex::splitString("", ':', parts));
    EXPECT_FALSE(orvex::splitString("a:b", '\0', parts));
    EXPECT_EQ(parts, Strings{"before"});
}

}  // namespace
