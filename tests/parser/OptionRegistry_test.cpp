#include "OrvexTestCommandLineParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <ios>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

static_assert(!std::is_polymorphic<OptionRegistry>::value, "the registry has no virtual operations");
static_assert(
    std::is_same<decltype(std::declval<const OptionRegistry&>().getValue("")), std::istringstream>::value,
    "values come as input string streams");

// The mode words are fixed numbers.
static_assert(static_cast<std::uint32_t>(OptionRegistry::UnknownAsFlag) == 1);
static_assert(static_cast<std::uint32_t>(OptionRegistry::UnknownTakesValue) == 2);
static_assert(static_cast<std::uint32_t>(OptionRegistry::NoInlineValue) == 4);
static_assert(static_cast<std::uint32_t>(OptionRegistry::GroupedShortFlags) == 8);

// A registry in the parser's mode with some of the parser's options.
class Registry : public ::testing::Test {
protected:
    Registry() : registry(OptionRegistry::UnknownAsFlag) {
        registry.addValueOptions({"o", "x"});
        registry.addMultiValueOptions({"tl", "p"});
    }

    OptionRegistry registry;
};

// Registration

TEST(NewRegistry, KnowsNothing) {
    const OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    EXPECT_THAT(registry.getPositionals(), IsEmpty());
    EXPECT_EQ(registry.getPositional(0), "");
    EXPECT_FALSE(registry.isValueOption("o"));
    EXPECT_FALSE(registry.isMultiValueOption("tl"));
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_TRUE(registry.getValue("o").fail());
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "");
}

TEST(NewRegistry, HasTheBitsOfItsModeWord) {
    const OptionRegistry registry(OptionRegistry::UnknownAsFlag | OptionRegistry::GroupedShortFlags);
    EXPECT_TRUE(registry.hasMode(OptionRegistry::UnknownAsFlag));
    EXPECT_FALSE(registry.hasMode(OptionRegistry::UnknownTakesValue));
    EXPECT_FALSE(registry.hasMode(OptionRegistry::NoInlineValue));
    EXPECT_TRUE(registry.hasMode(OptionRegistry::GroupedShortFlags));
    EXPECT_TRUE(registry.hasMode(0xFFFFFFFF));
    EXPECT_FALSE(registry.hasMode(0));
}

TEST_F(Registry, NamesAreTrimmedWhenTheyAreRegistered) {
    registry.addValueOptions({"-one", "--two"});
    registry.addMultiValueOptions({"---three"});
    EXPECT_TRUE(registry.isValueOption("one"));
    EXPECT_TRUE(registry.isValueOption("two"));
    EXPECT_TRUE(registry.isMultiValueOption("three"));
    EXPECT_FALSE(registry.isValueOption("three"));
    EXPECT_FALSE(registry.isMultiValueOption("one"));
    EXPECT_TRUE(registry.isValueOption("o")) << "registrations add up";
}

TEST_F(Registry, NamesAreTrimmedWhenTheyAreAskedFor) {
    registry.parseTokens({"app", "-o", "file", "-w", "-tl", "A"});
    for (const std::string dashes : {"", "-", "--"}) {
        SCOPED_TRACE("\"" + dashes + "\" in front");
        ASSERT_TRUE(registry.isValueOption(dashes + "o"));
        ASSERT_TRUE(registry.isMultiValueOption(dashes + "tl"));
        ASSERT_TRUE(registry.hasOption(dashes + "w"));
        ASSERT_EQ(registry.getValue(dashes + "o").str(), "file");
        ASSERT_EQ(registry.getJoinedValues(dashes + "tl", ","), "A");
    }
}

TEST_F(Registry, ANameThatIsRegisteredTwiceIsKeptOnce) {
    registry.addValueOptions({"o", "-o"});
    registry.addMultiValueOptions({"tl"});
    registry.parseTokens({"app", "-o", "file", "-tl", "A", "Suite"});
    EXPECT_EQ(registry.getValue("o").str(), "file");
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A");
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

// Kinds of tokens

TEST(RegistryTokens, LeadingDashesAreTrimmedUnlessThereIsNothingElse) {
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {{"", ""},    {"-", "-"},     {"---", "---"}, {"--help", "help"}, {"o", "o"},
                {"-o", "o"}, {"--a-", "a-"}, {"-=x", "=x"},  {" -x", " -x"},     {"+x", "+x"}};
    for (const auto& row : rows) {
        ASSERT_EQ(OptionRegistry::trimLeadingDashes(row.text), row.expected) << row.text;
    }
}

TEST(RegistryTokens, NumbersAreWhatTheStandardExtractionReads) {
    for (const char* token : {"0", "5", "+5", "-5", "-0.25", "-.5", "-5.", "-1e3", "-1E-3", " -5", "-5 x",
                              "-5=x", "-5-5", "-5.5.5", "-1.7976931348623157e308"}) {
        ASSERT_TRUE(OptionRegistry::isNumber(token)) << token;
    }
    for (const char* token :
         {"", "-", "--5", "-+5", "- 5", "-x", "-help", "-e5", "-.", "-,5", "-1e", "x5", "Suite", "-1e400"}) {
        ASSERT_FALSE(OptionRegistry::isNumber(token)) << token;
    }
}

// The standard libraries differ in what they make of these.
TEST(RegistryTokens, NumbersThatStandardLibrariesReadDifferentlyAreLeftToThem) {
    for (const std::string token : {"-inf", "-INF", "-nan", "-NAN", "-5abc", "-0x1p3", "-1e-400"}) {
        std::istringstream stream(token);
        double number = 0;
        stream >> number;
        ASSERT_EQ(OptionRegistry::isNumber(token), !stream.fail()) << token;
        ASSERT_EQ(OptionRegistry::isOptionToken(token), stream.fail()) << token;
    }
}

TEST(RegistryTokens, OptionsBeginWithADashAndAreNoNumbers) {
    for (const char* token : {"-", "--", "-x", "--x", "-?", "-=", "- 5", "--5", "-\xC3\xA9"}) {
        ASSERT_TRUE(OptionRegistry::isOptionToken(token)) << token;
    }
    for (const char* token : {"", "x", "x-", "/x", "+x", "=", " -x", "5", "-5", "-0.25", "-.5", "-1e3"}) {
        ASSERT_FALSE(OptionRegistry::isOptionToken(token)) << token;
    }
}

// Queries

TEST_F(Registry, AFlagIsAnOptionAndAnOptionWithAValueIsNot) {
    registry.parseTokens({"app", "-w", "-o", "file", "-tl", "A"});
    EXPECT_TRUE(registry.hasOption("w"));
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_FALSE(registry.hasOption("tl"));
}

TEST_F(Registry, TheStreamOverAValueCanBeRead) {
    registry.parseTokens({"app", "-o", "12 words", "-tl", "34", "-tl", "56"});
    std::istringstream single = registry.getValue("o");
    int number = 0;
    std::string word;
    EXPECT_TRUE(single >> number >> word);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(word, "words");
    EXPECT_EQ(single.str(), "12 words");
    EXPECT_EQ(registry.getValue("tl").str(), "34 56");
}

TEST_F(Registry, TheStreamOverAnAbsentValueHasFailedAlready) {
    registry.parseTokens({"app", "-o", "-w"});
    for (const char* name : {"o", "x", "w", "never", ""}) {
        SCOPED_TRACE(name);
        const std::istringstream stream = registry.getValue(name);
        ASSERT_EQ(stream.rdstate(), std::ios_base::failbit);
        ASSERT_EQ(stream.str(), "");
    }
}

TEST_F(Registry, TheStreamOverAnEmptyTextHasNotFailed) {
    registry.parseTokens({"app", "-o="});
    for (const char* name : {"o", "tl"}) {
        SCOPED_TRACE(name);
        const std::istringstream stream = registry.getValue(name);
        ASSERT_EQ(stream.rdstate(), std::ios_base::goodbit);
        ASSERT_EQ(stream.str(), "");
    }
}

TEST_F(Registry, TheSeparatorStandsBetweenValuesOnly) {
    EXPECT_EQ(registry.getJoinedValues("p", ","), "");
    registry.parseTokens({"app", "-p=a"});
    EXPECT_EQ(registry.getJoinedValues("p", ","), "a");
    registry.parseTokens({"app", "-p=", "-p=b"});
    EXPECT_EQ(registry.getJoinedValues("p", ","), "a,,b");
    EXPECT_EQ(registry.getJoinedValues("p", ""), "ab");
    EXPECT_EQ(registry.getJoinedValues("p", ", "), "a, , b");
}

TEST_F(Registry, OnlyMultiValueOptionsHaveJoinedValues) {
    registry.parseTokens({"app", "-o", "file", "-unknown=1", "-w"});
    EXPECT_EQ(registry.getJoinedValues("o", ","), "");
    EXPECT_EQ(registry.getJoinedValues("unknown", ","), "");
    EXPECT_EQ(registry.getJoinedValues("w", ","), "");
}

TEST_F(Registry, PositionalsBeyondTheLastAreEmpty) {
    registry.parseTokens({"app", "Suite"});
    EXPECT_EQ(registry.getPositional(0), "app");
    EXPECT_EQ(registry.getPositional(1), "Suite");
    EXPECT_EQ(registry.getPositional(2), "");
    EXPECT_EQ(registry.getPositional(std::numeric_limits<std::size_t>::max()), "");
    EXPECT_EQ(&registry.getPositional(1), &registry.getPositionals()[1]);
}

// No argument can hold a zero byte, but the registry is not what decides that.
TEST_F(Registry, AZeroByteIsAByteLikeOthers) {
    const std::string zero(1, '\0');
    registry.parseTokens({"app" + zero + "x", "-o", "a" + zero + "b", "-n" + zero + "x=1", "-n=2",
                          "-f" + zero, "-tl", zero, "-tl" + zero + "=3"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app" + zero + "x"));
    EXPECT_EQ(registry.getValue("o").str(), "a" + zero + "b");
    EXPECT_EQ(registry.getValue("n" + zero + "x").str(), "1");
    EXPECT_EQ(registry.getValue("n").str(), "2");
    EXPECT_TRUE(registry.hasOption("f" + zero));
    EXPECT_FALSE(registry.hasOption("f"));
    EXPECT_EQ(registry.getJoinedValues("tl", zero), zero);
    EXPECT_EQ(registry.getValue("tl" + zero).str(), "3");
}

}  // namespace
