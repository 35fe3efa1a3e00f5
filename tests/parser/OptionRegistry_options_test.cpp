// What a registry in the parser's mode makes of options and their values.

#include "OrvexTestCommandLineParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ios>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ::testing::ElementsAre;

class RegistryOptionsTest : public ::testing::Test {
protected:
    RegistryOptionsTest() : registry(OptionRegistry::UnknownAsFlag) {
        registry.addValueOptions({"o", "x", "packetdelay"});
        registry.addMultiValueOptions({"tl", "p"});
    }

    std::string value(const std::string& name) const {
        const std::istringstream stream = registry.getValue(name);
        return stream.fail() ? "(absent)" : stream.str();
    }

    OptionRegistry registry;
};

// Options with a single value

TEST_F(RegistryOptionsTest, TheNextTokenIsTheValue) {
    registry.parseTokens({"app", "-o", "file", "Suite"});
    EXPECT_EQ(value("o"), "file");
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

TEST_F(RegistryOptionsTest, TheNumberOfDashesDoesNotMatter) {
    registry.parseTokens({"app", "--o", "file", "---x", "report", "--tl", "A", "-----w"});
    EXPECT_EQ(value("o"), "file");
    EXPECT_EQ(value("x"), "report");
    EXPECT_EQ(value("tl"), "A");
    EXPECT_TRUE(registry.hasOption("w"));
}

TEST_F(RegistryOptionsTest, AValueOptionAsTheLastTokenIsAFlag) {
    registry.parseTokens({"app", "-o"});
    EXPECT_EQ(value("o"), "(absent)");
    EXPECT_TRUE(registry.hasOption("o"));
}

TEST_F(RegistryOptionsTest, AnOptionTokenIsNoValue) {
    registry.parseTokens({"app", "-x", "-file.xml"});
    EXPECT_TRUE(registry.hasOption("x"));
    EXPECT_EQ(value("x"), "(absent)");
    EXPECT_TRUE(registry.hasOption("file.xml"));
}

TEST_F(RegistryOptionsTest, AnInlineValueMayLookLikeAnOption) {
    registry.parseTokens({"app", "-x=-file.xml"});
    EXPECT_EQ(value("x"), "-file.xml");
    EXPECT_FALSE(registry.hasOption("x"));
}

TEST_F(RegistryOptionsTest, ALoneDashIsNoValue) {
    registry.parseTokens({"app", "-o", "-", "-x", "--", "-p", "---"});
    EXPECT_TRUE(registry.hasOption("o"));
    EXPECT_TRUE(registry.hasOption("x"));
    EXPECT_TRUE(registry.hasOption("p"));
    EXPECT_TRUE(registry.hasOption("-"));
    EXPECT_TRUE(registry.hasOption("--"));
    EXPECT_TRUE(registry.hasOption("---"));
    EXPECT_EQ(value("o"), "(absent)");
}

TEST_F(RegistryOptionsTest, TheLastValueWins) {
    registry.parseTokens({"app", "-o", "a", "-o", "b"});
    EXPECT_EQ(value("o"), "b");
    registry.parseTokens({"app", "-o=c"});
    EXPECT_EQ(value("o"), "c");
    registry.parseTokens({"app", "--o", "d"});
    EXPECT_EQ(value("o"), "d");
    registry.parseTokens({"app", "-o="});
    EXPECT_EQ(value("o"), "");
}

TEST_F(RegistryOptionsTest, OneNameMayBeAValueAndAFlag) {
    registry.parseTokens({"app", "-o", "a", "-o"});
    EXPECT_EQ(value("o"), "a");
    EXPECT_TRUE(registry.hasOption("o"));
}

TEST_F(RegistryOptionsTest, AnEmptyTokenIsAValue) {
    registry.parseTokens({"app", "-o", "", "-tl", "", "Suite"});
    EXPECT_EQ(value("o"), "");
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_FALSE(registry.hasOption("tl"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

TEST_F(RegistryOptionsTest, AValueIsTakenAsItStands) {
    registry.parseTokens({"app", "-o", "a=b", "-x", "/w", "-packetdelay", "-5"});
    EXPECT_EQ(value("o"), "a=b");
    EXPECT_EQ(value("x"), "/w");
    EXPECT_EQ(value("packetdelay"), "-5");
    EXPECT_EQ(value("a"), "(absent)");
}

// Values after an equals sign

TEST_F(RegistryOptionsTest, TheFirstEqualsSignSeparatesNameAndValue) {
    registry.parseTokens({"app", "-o=file", "--x=a=b", "-tl=c=d"});
    EXPECT_EQ(value("o"), "file");
    EXPECT_EQ(value("x"), "a=b");
    EXPECT_EQ(value("tl"), "c=d");
}

TEST_F(RegistryOptionsTest, AnInlineValueMayBeEmpty) {
    registry.parseTokens({"app", "-o=", "Suite"});
    EXPECT_EQ(value("o"), "");
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

TEST_F(RegistryOptionsTest, AnInlineNameMayBeEmpty) {
    registry.parseTokens({"app", "-=v"});
    EXPECT_EQ(value(""), "v");
    registry.parseTokens({"app", "--="});
    EXPECT_EQ(value(""), "");
    EXPECT_EQ(value("-"), "(absent)");
}

TEST_F(RegistryOptionsTest, AnInlineNameNeedNotBeRegistered) {
    registry.parseTokens({"app", "-w=1", "-tdc_variant=V", "Suite"});
    EXPECT_EQ(value("w"), "1");
    EXPECT_FALSE(registry.hasOption("w"));
    EXPECT_EQ(value("tdc_variant"), "V");
    EXPECT_FALSE(registry.hasOption("tdc_variant"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

TEST_F(RegistryOptionsTest, AnInlineValueLeavesTheNextTokenAlone) {
    registry.parseTokens({"app", "-o=a", "b", "-tl=c", "d"});
    EXPECT_EQ(value("o"), "a");
    EXPECT_EQ(value("tl"), "c");
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "b", "d"));
}

// Flags

TEST_F(RegistryOptionsTest, AnUnregisteredOptionIsAFlagAndTheNextTokenStandsForItself) {
    registry.parseTokens({"app", "-tdc_variant", "V"});
    EXPECT_TRUE(registry.hasOption("tdc_variant"));
    EXPECT_EQ(value("tdc_variant"), "(absent)");
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "V"));
}

TEST_F(RegistryOptionsTest, ALoneDashIsAFlagOfThatName) {
    registry.parseTokens({"app", "-", "Suite"});
    EXPECT_TRUE(registry.hasOption("-"));
    EXPECT_FALSE(registry.hasOption("--"));
    EXPECT_FALSE(registry.hasOption(""));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

TEST_F(RegistryOptionsTest, NamesAreComparedByteByByte) {
    registry.parseTokens({"app", "-H", "-O", "a", "-w ", "-TL", "b", "-ou", "c"});
    EXPECT_TRUE(registry.hasOption("H"));
    EXPECT_FALSE(registry.hasOption("h"));
    EXPECT_TRUE(registry.hasOption("O"));
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_EQ(value("o"), "(absent)");
    EXPECT_TRUE(registry.hasOption("w "));
    EXPECT_FALSE(registry.hasOption("w"));
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "");
    EXPECT_TRUE(registry.hasOption("ou"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "a", "b", "c"));
}

TEST_F(RegistryOptionsTest, AFlagMayBeGivenSeveralTimes) {
    registry.parseTokens({"app", "-w", "-w"});
    registry.parseTokens({"app", "-w"});
    EXPECT_TRUE(registry.hasOption("w"));
}

// Options with several values

TEST_F(RegistryOptionsTest, EveryValueOfAMultiValueOptionIsKeptInOrder) {
    registry.parseTokens({"app", "-tl", "B", "-tl", "A", "-tl", "B"});
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "B,A,B");
    EXPECT_EQ(value("tl"), "B A B");
}

TEST_F(RegistryOptionsTest, CommasInAValueAreNotSplit) {
    registry.parseTokens({"app", "-tl", "A,B"});
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A,B");
    EXPECT_EQ(value("tl"), "A,B");
}

TEST_F(RegistryOptionsTest, MultiValueOptionsDoNotMix) {
    registry.parseTokens({"app", "-tl", "A", "-p", "k=v", "-tl", "B", "-p=l=w"});
    EXPECT_EQ(value("tl"), "A B");
    EXPECT_EQ(value("p"), "k=v l=w");
}

TEST_F(RegistryOptionsTest, AMultiValueOptionWithoutAValueIsAFlag) {
    registry.parseTokens({"app", "-tl", "-w"});
    registry.parseTokens({"app", "-p"});
    EXPECT_TRUE(registry.hasOption("tl"));
    EXPECT_TRUE(registry.hasOption("p"));
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "");
    EXPECT_EQ(value("tl"), "");
}

TEST(RegistryJoinedValues, TheSeparatorStandsBetweenValuesOnly) {
    const struct {
        const char* name;
        std::vector<std::string> values;
        const char* separator;
        const char* expected;
    } rows[] = {
        {"no value", {}, ",", ""},
        {"one value", {"a"}, ",", "a"},
        {"two values", {"a", "b"}, ",", "a,b"},
        {"empty value in the middle", {"a", "", "b"}, ",", "a,,b"},
        {"empty value in front", {"", "a"}, ",", ",a"},
        {"empty value at the end", {"a", ""}, ",", "a,"},
        {"one empty value", {""}, ",", ""},
        {"two empty values", {"", ""}, ",", ","},
        {"empty separator", {"a", "b", "c"}, "", "abc"},
        {"long separator", {"a", "b", "c"}, ", ", "a, b, c"},
        {"separator within a value", {"a,b", "c"}, ",", "a,b,c"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        OptionRegistry registry(OptionRegistry::UnknownAsFlag);
        registry.addMultiValueOptions({"tl"});
        std::vector<std::string> tokens = {"app"};
        for (const std::string& text : row.values) {
            tokens.push_back("-tl=" + text);
        }
        registry.parseTokens(tokens);
        EXPECT_EQ(registry.getJoinedValues("tl", row.separator), row.expected);
    }
}

TEST_F(RegistryOptionsTest, OnlyMultiValueOptionsHaveJoinedValues) {
    registry.parseTokens({"app", "-o", "file", "-unknown=1", "-w"});
    EXPECT_EQ(registry.getJoinedValues("o", ","), "");
    EXPECT_EQ(registry.getJoinedValues("unknown", ","), "");
    EXPECT_EQ(registry.getJoinedValues("w", ","), "");
}

// The stream over a value

static_assert(
    std::is_same<decltype(std::declval<const OptionRegistry&>().getValue("")), std::istringstream>::value,
    "values come as input string streams");

TEST_F(RegistryOptionsTest, TheStreamOverAValueCanBeRead) {
    registry.parseTokens({"app", "-o", "12 words", "-tl", "34", "-tl", "56"});
    std::istringstream single = registry.getValue("o");
    EXPECT_EQ(single.rdstate(), std::ios_base::goodbit);
    int number = 0;
    std::string word;
    EXPECT_TRUE(single >> number >> word);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(word, "words");
    EXPECT_EQ(single.str(), "12 words");

    std::istringstream multi = registry.getValue("tl");
    int second = 0;
    EXPECT_TRUE(multi >> number >> second);
    EXPECT_EQ(number, 34);
    EXPECT_EQ(second, 56);
}

TEST_F(RegistryOptionsTest, TheStreamOverAnAbsentValueHasFailedAlready) {
    registry.parseTokens({"app", "-o", "-w"});
    for (const char* name : {"o", "x", "w", "never", ""}) {
        SCOPED_TRACE(name);
        std::istringstream stream = registry.getValue(name);
        EXPECT_EQ(stream.rdstate(), std::ios_base::failbit);
        EXPECT_EQ(stream.str(), "");
        std::string word = "untouched";
        EXPECT_FALSE(stream >> word);
        EXPECT_EQ(word, "untouched");
    }
}

TEST_F(RegistryOptionsTest, TheStreamOverNoValuesOfAMultiValueOptionHasNotFailed) {
    const std::istringstream stream = registry.getValue("tl");
    EXPECT_EQ(stream.rdstate(), std::ios_base::goodbit);
    EXPECT_EQ(stream.str(), "");
}

TEST_F(RegistryOptionsTest, TheStreamOverAnEmptyValueHasNotFailed) {
    registry.parseTokens({"app", "-o="});
    const std::istringstream stream = registry.getValue("o");
    EXPECT_EQ(stream.rdstate(), std::ios_base::goodbit);
    EXPECT_EQ(stream.str(), "");
}

// Several scans

TEST_F(RegistryOptionsTest, ScansAddUp) {
    registry.parseTokens({"app", "-o", "a", "-tl", "A", "-v", "S1", "-x", "kept"});
    registry.parseTokens({"other", "-o", "b", "-tl", "B", "S2"});
    registry.parseTokens({"third", "-o", "-tl=C", "-w", "S3"});
    EXPECT_EQ(value("o"), "b");
    EXPECT_EQ(value("x"), "kept");
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A,B,C");
    EXPECT_TRUE(registry.hasOption("v"));
    EXPECT_TRUE(registry.hasOption("w"));
    EXPECT_TRUE(registry.hasOption("o"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "S1", "S2", "S3"));
}

TEST_F(RegistryOptionsTest, AValueIsNotTakenFromTheNextList) {
    registry.parseTokens({"app", "-o"});
    registry.parseTokens({"file", "Suite"});
    EXPECT_EQ(value("o"), "(absent)");
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

}  // namespace
