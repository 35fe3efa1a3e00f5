#include "environment/split_string.h"

#include "support/arguments.h"

#include <gtest/gtest.h>

namespace {

TEST(SplitString, AppendsThePartsBetweenTheDelimiters) {
    const struct {
        const char* text;
        Strings parts;
    } rows[] = {
        {"abc", {"abc"}},
        {"a::bc", {"a", "", "bc"}},
        {":b", {"", "b"}},
        {" a,b : \xFF;d", {" a,b ", " \xFF;d"}},
        // A trailing delimiter adds no empty last part.
        {"a:", {"a"}},
        {"::", {"", ""}},
    };
    for (const auto& row : rows) {
        Strings parts = {"before"};
        EXPECT_TRUE(orvex::splitString(row.text, ':', parts)) << row.text;
        EXPECT_EQ(parts, Strings{"before"} + row.parts) << row.text;
    }
}

TEST(SplitString, ReturnsFalseAndAppendsNothingForAnEmptyStringOrANulDelimiter) {
    Strings parts = {"before"};
    EXPECT_FALSE(orvex::splitString(nullptr, ':', parts));
    EXPECT_FALSE(orvex::splitString("", ':', parts));
    EXPECT_FALSE(orvex::splitString("a:b", '\0', parts));
    EXPECT_EQ(parts, Strings{"before"});
}

}  // namespace
