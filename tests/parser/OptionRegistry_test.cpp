#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <ios>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using ::testing::ElementsAre;

static_assert(!std::is_polymorphic<OptionRegistry>::value, "the registry has no virtual functions");

// The mode bits are fixed numbers.
static_assert(OptionRegistry::UnknownAsFlag == 1);
static_assert(OptionRegistry::UnknownTakesValue == 2);
static_assert(OptionRegistry::NoInlineValue == 4);
static_assert(OptionRegistry::GroupedShortFlags == 8);

// A registry in the parser's mode with some of the parser's options.
class Registry : public ::testing::Test {
protected:
    Registry() : registry(OptionRegistry::UnknownAsFlag) {
        registry.addValueOptions({"o", "x"});
        registry.addMultiValueOptions({"tl", "p"});
    }

    OptionRegistry registry;
};

TEST_F(Registry, HasTheBitsOfItsMode) {
    EXPECT_TRUE(registry.hasMode(OptionRegistry::UnknownAsFlag));
    EXPECT_FALSE(registry.hasMode(OptionRegistry::UnknownTakesValue));
    EXPECT_TRUE(registry.hasMode(0xFFFFFFFF));
    EXPECT_FALSE(registry.hasMode(0));
}

TEST_F(Registry, NamesAreTrimmedWhenTheyAreRegisteredAndWhenTheyAreQueried) {
    registry.addValueOptions({"-one", "--two"});
    registry.addMultiValueOptions({"---three"});
    registry.parseTokens(words("app --one file -w --three A"));
    for (const std::string dashes : {"", "-", "--"}) {
        EXPECT_TRUE(registry.isValueOption(dashes + "two"));
        EXPECT_FALSE(registry.isValueOption(dashes + "three"));
        EXPECT_TRUE(registry.isMultiValueOption(dashes + "three"));
        EXPECT_TRUE(registry.hasOption(dashes + "w"));
        EXPECT_EQ(registry.getValue(dashes + "one").str(), "file");
        EXPECT_EQ(registry.getJoinedValues(dashes + "three", ","), "A");
    }
}

TEST_F(Registry, ScansAccumulateAndOnlyTheFirstProgramNameIsKept) {
    registry.parseTokens(words("-w -x kept"));
    registry.parseTokens(words("app -o a -tl A S1 -o"));
    registry.parseTokens(words("other -o b -tl B S2"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "S1", "S2"));
    EXPECT_EQ(registry.getSingleValue("o"), "b");
    EXPECT_EQ(registry.getSingleValue("x"), "kept");
    EXPECT_EQ(registry.getJoinedValues("tl", ", "), "A, B");
    EXPECT_TRUE(registry.hasOption("w") && registry.hasOption("o"));
}

TEST(RegistryMode, DecidesWhatAScanStores) {
    OptionRegistry grouped(OptionRegistry::GroupedShortFlags);
    grouped.addValueOptions({"o"});
    grouped.parseTokens(words("app -ab -co V --de -o W"));
    EXPECT_TRUE(grouped.hasOption("b") && grouped.hasOption("c") && grouped.hasOption("de"));
    EXPECT_EQ(grouped.getSingleValue("o"), "W");
    OptionRegistry other(OptionRegistry::UnknownTakesValue | OptionRegistry::NoInlineValue);
    other.parseTokens(words("app -x=1 V"));
    EXPECT_EQ(other.getSingleValue("x=1"), "V");
}

TEST_F(Registry, NameRegisteredBothWaysIsAMultiValueOption) {
    registry.addValueOptions({"tl"});
    registry.parseTokens(words("app -tl A -tl=B"));
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A,B");
    EXPECT_EQ(registry.getSingleValue("tl"), "");
}

TEST_F(Registry, ValueIsAStreamThatCanBeRead) {
    registry.parseTokens({"app", "-o", "12 words", "-tl", "34", "-tl", "56", "-x="});
    std::istringstream stream = registry.getValue("o");
    int number = 0;
    std::string word;
    EXPECT_TRUE(stream >> number >> word);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(word, "words");
    EXPECT_EQ(registry.getValue("tl").str(), "34 56");
    EXPECT_EQ(registry.getValue("x").rdstate(), std::ios_base::goodbit);
    EXPECT_EQ(registry.getValue("p").rdstate(), std::ios_base::goodbit);
}

TEST_F(Registry, StreamOfAnAbsentValueIsEmptyAndHasFailed) {
    registry.parseTokens(words("app -o -w"));
    for (const char* name : {"o", "w", "never"}) {
        EXPECT_EQ(registry.getValue(name).rdstate(), std::ios_base::failbit) << name;
        EXPECT_EQ(registry.getValue(name).str(), "") << name;
    }
}

TEST_F(Registry, PositionalsBeyondTheLastAreEmpty) {
    registry.parseTokens(words("app Suite"));
    EXPECT_EQ(&registry.getPositional(1), &registry.getPositionals()[1]);
    EXPECT_EQ(registry.getPositional(2), "");
    EXPECT_EQ(registry.getPositional(std::numeric_limits<std::size_t>::max()), "");
}

// An argument cannot contain a NUL, but the registry must not rely on that.
TEST_F(Registry, NulIsAnOrdinaryByte) {
    const std::string nul(1, '\0');
    registry.parseTokens({"app" + nul, "-n" + nul + "=1", "-n=2", "-tl", nul});
    // Neither of these is a registered option.
    registry.parseTokens({"-o" + nul, "S1", "-tl" + nul, "S2"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app" + nul, "S1", "S2"));
    EXPECT_EQ(registry.getSingleValue("n" + nul), "1");
    EXPECT_TRUE(registry.hasOption("o" + nul));
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_EQ(registry.getJoinedValues("tl", ","), nul);
}

TEST(TokenKinds, LeadingDashesAreTrimmedUnlessThereIsNothingElse) {
    const std::pair<const char*, const char*> rows[] = {{"--help", "help"}, {"--a-", "a-"}, {"o", "o"},
                                                        {"-", "-"},         {"---", "---"}, {"", ""}};
    for (const auto& [token, expected] : rows) {
        EXPECT_EQ(OptionRegistry::trimLeadingDashes(token), expected);
    }
}

TEST(TokenKinds, OptionsBeginWithADashAndAreNotNumbers) {
    for (const char* token : {"-", "--", "-x", "-?", "- 5", "--5", "-.", "-1e", "-1e400"}) {
        EXPECT_TRUE(OptionRegistry::isOptionToken(token)) << token;
        EXPECT_FALSE(OptionRegistry::isNumber(token)) << token;
    }
    for (const char* token : {"-5", "-.5", "-1E-3", "-5 x", "-5=x", " -5", "0", "+5"}) {
        EXPECT_FALSE(OptionRegistry::isOptionToken(token)) << token;
        EXPECT_TRUE(OptionRegistry::isNumber(token)) << token;
    }
    // The standard libraries read these differently.
    for (const char* token : {"-inf", "-NAN", "-5abc", "-0x1p3", "-1e-400"}) {
        double number = 0;
        const bool isNumber = static_cast<bool>(std::istringstream(token) >> number);
        EXPECT_EQ(OptionRegistry::isNumber(token), isNumber) << token;
        EXPECT_EQ(OptionRegistry::isOptionToken(token), !isNumber) << token;
    }
}

}  // namespace
