#include "environment/split_string.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Parts = std::vector<std::string>;

struct SplitRow {
    const char* testName;
    const char* text;
    char delimiter;
    Parts parts;
};

const SplitRow splitRows[] = {
    {"NoDelimiterGivesTheWholeText", "abc", ':', {"abc"}},
    {"OneByte", "a", ':', {"a"}},
    {"OneDelimiter", "a:b", ':', {"a", "b"}},
    {"DoubledDelimiterGivesAnEmptyPart", "a::b", ':', {"a", "", "b"}},
    {"TripledDelimiterGivesTwoEmptyParts", "a:::b", ':', {"a", "", "", "b"}},
    {"LeadingDelimiterGivesAnEmptyFirstPart", ":b", ':', {"", "b"}},
    {"TwoLeadingDelimitersGiveTwoEmptyParts", "::b", ':', {"", "", "b"}},
    {"TrailingDelimiterGivesNoEmptyLastPart", "a:", ':', {"a"}},
    {"TwoTrailingDelimitersGiveOneEmptyLastPart", "a::", ':', {"a", ""}},
    {"LoneDelimiterGivesOneEmptyPart", ":", ':', {""}},
    {"TwoDelimitersGiveTwoEmptyParts", "::", ':', {"", ""}},
    {"ManyParts", "a:bc:def:g", ':', {"a", "bc", "def", "g"}},
    {"OnlyTheGivenDelimiterSplits", "a,b:c;d", ':', {"a,b", "c;d"}},
    {"Comma", "a,b:c", ',', {"a", "b:c"}},
    {"BlanksAreKept", " a : b ", ':', {" a ", " b "}},
    {"BlankAsDelimiter", " a  b ", ' ', {"", "a", "", "b"}},
    {"HighBytesAreKept", "\x80\xFF:\xC3\xA9", ':', {"\x80\xFF", "\xC3\xA9"}},
    {"DelimiterOfTheHighestByte", "a\xFF\x80\xFF", '\xFF', {"a", "\x80"}},
    {"DelimiterOfByte80", "\x80z\x80y", '\x80', {"", "z", "y"}},
};

class SplitStringTable : public ::testing::TestWithParam<SplitRow> {};

}  // namespace

TEST_P(SplitStringTable, AppendsThePartsBetweenTheDelimiters) {
    Parts parts;
    EXPECT_TRUE(orvex::splitString(GetParam().text, GetParam().delimiter, parts));
    EXPECT_EQ(parts, GetParam().parts);
}

TEST_P(SplitStringTable, KeepsThePartsThatWereThere) {
    Parts parts = {"before", ""};
    Parts expected = parts;
    expected.insert(expected.end(), GetParam().parts.begin(), GetParam().parts.end());
    EXPECT_TRUE(orvex::splitString(GetParam().text, GetParam().delimiter, parts));
    EXPECT_EQ(parts, expected);
}

INSTANTIATE_TEST_SUITE_P(SplitString, SplitStringTable, ::testing::ValuesIn(splitRows),
                         [](const auto& row) { return std::string(row.param.testName); });

TEST(SplitString, NullTextIsFalseAndAppendsNothing) {
    Parts parts = {"before"};
    EXPECT_FALSE(orvex::splitString(nullptr, ':', parts));
    EXPECT_EQ(parts, Parts{"before"});
}

TEST(SplitString, EmptyTextIsFalseAndAppendsNothing) {
    Parts parts = {"before"};
    EXPECT_FALSE(orvex::splitString("", ':', parts));
    EXPECT_EQ(parts, Parts{"before"});
}

TEST(SplitString, ZeroByteAsDelimiterIsFalseAndAppendsNothing) {
    Parts parts = {"before"};
    EXPECT_FALSE(orvex::splitString("a:b", '\0', parts));
    EXPECT_EQ(parts, Parts{"before"});
}

TEST(SplitString, NullTextAndZeroByteTogetherAreFalse) {
    Parts parts;
    EXPECT_FALSE(orvex::splitString(nullptr, '\0', parts));
    EXPECT_FALSE(orvex::splitString("", '\0', parts));
    EXPECT_EQ(parts, Parts());
}

TEST(SplitString, EveryByteSplitsAsDelimiterAndIsKeptOtherwise) {
    for (int byte = 1; byte <= 0xFF; ++byte) {
        SCOPED_TRACE(byte);
        const char delimiter = static_cast<char>(byte);
        const char other = static_cast<char>(byte == 0xFF ? 1 : byte + 1);
        const std::string text = {other, delimiter, other, other};
        Parts parts;
        EXPECT_TRUE(orvex::splitString(text.c_str(), delimiter, parts));
        EXPECT_EQ(parts, (Parts{{other}, {other, other}}));
    }
}

TEST(SplitString, LongText) {
    const std::string part(100000, 'x');
    Parts parts;
    EXPECT_TRUE(orvex::splitString((part + "," + part + ",").c_str(), ',', parts));
    EXPECT_EQ(parts, (Parts{part, part}));
}
