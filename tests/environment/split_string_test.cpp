#include "environment/split_string.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Parts = std::vector<std::string>;

TEST(SplitString, AppendsThePartsBetweenTheDelimiters) {
    const struct {
        const char* text;
        Parts parts;
    } rows[] = {
        {"abc", {"abc"}},
        {"a:b", {"a", "b"}},
        {"a::b", {"a", "", "b"}},
        {":b", {"", "b"}},
        {"::b", {"", "", "b"}},
        {"a:", {"a"}},
        {"a::", {"a", ""}},
        {":", {""}},
        {"::", {"", ""}},
        {"a:bc:def:g", {"a", "bc", "def", "g"}},
        {" a,b : \xFF;d", {" a,b ", " \xFF;d"}},
    };
    for (const auto& row : rows) {
        Parts expected = {"before"};
        expected.insert(expected.end(), row.parts.begin(), row.parts.end());
        Parts parts = {"before"};
        ASSERT_TRUE(orvex::splitString(row.text, ':', parts)) << row.text;
        ASSERT_EQ(parts, expected) << row.text;
    }
}

TEST(SplitString, AnyOtherByteThanZeroCanBeTheDelimiter) {
    Parts parts;
    EXPECT_TRUE(orvex::splitString("a,b:c", ',', parts));
    EXPECT_TRUE(orvex::splitString(" d", ' ', parts));
    EXPECT_TRUE(orvex::splitString("e\xFF\x80", '\xFF', parts));
    EXPECT_EQ(parts, (Parts{"a", "b:c", "", "d", "e", "\x80"}));
}

TEST(SplitString, NullOrEmptyTextOrZeroByteIsFalseAndAppendsNothing) {
    Parts parts = {"before"};
    EXPECT_FALSE(orvex::splitString(nullptr, ':', parts));
    EXPECT_FALSE(orvex::splitString("", ':', parts));
    EXPECT_FALSE(orvex::splitString("a:b", '\0', parts));
    EXPECT_EQ(parts, Parts{"before"});
}

}  // namespace
