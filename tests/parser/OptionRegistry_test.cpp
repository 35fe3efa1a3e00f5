#include "OrvexTestCommandLineParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Tokens = std::vector<std::string>;

// A registry in the parser's mode with some of the parser's options.
class RegistryTest : public ::testing::Test {
protected:
    RegistryTest() : registry(OptionRegistry::UnknownAsFlag) {
        registry.addValueOptions({"o", "x", "packetdelay"});
        registry.addMultiValueOptions({"tl", "p"});
    }

    std::string value(const std::string& name) const {
        const std::istringstream stream = registry.getValue(name);
        return stream.fail() ? "(absent)" : stream.str();
    }

    OptionRegistry registry;
};

// Construction and registration

static_assert(!std::is_polymorphic<OptionRegistry>::value, "the registry has no virtual operations");

TEST(RegistryConstruction, NothingIsRegisteredAndNothingIsScanned) {
    const OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    EXPECT_THAT(registry.getPositionals(), IsEmpty());
    EXPECT_EQ(registry.getPositional(0), "");
    EXPECT_FALSE(registry.isValueOption("o"));
    EXPECT_FALSE(registry.isMultiValueOption("tl"));
    EXPECT_FALSE(registry.hasOption("o"));
    EXPECT_TRUE(registry.getValue("o").fail());
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "");
}

TEST(RegistryConstruction, ModeBitsHaveTheirValues) {
    EXPECT_EQ(static_cast<std::uint32_t>(OptionRegistry::UnknownAsFlag), 1U);
    EXPECT_EQ(static_cast<std::uint32_t>(OptionRegistry::UnknownTakesValue), 2U);
    EXPECT_EQ(static_cast<std::uint32_t>(OptionRegistry::NoInlineValue), 4U);
    EXPECT_EQ(static_cast<std::uint32_t>(OptionRegistry::GroupedShortFlags), 8U);
}

TEST(RegistryConstruction, HasModeTellsWhetherWordAndBitShareABit) {
    const struct {
        std::uint32_t mode;
        std::uint32_t bit;
        bool expected;
    } rows[] = {{0, 1, false},
                {0, 0xFFFFFFFF, false},
                {1, 1, true},
                {1, 2, false},
                {1, 4, false},
                {1, 8, false},
                {1, 0, false},
                {2, 2, true},
                {4, 4, true},
                {8, 8, true},
                {8, 1, false},
                {15, 8, true},
                {9, 6, false},
                {9, 3, true},
                {0x80000000, 0x80000000, true},
                {0x7FFFFFFF, 1U, true},
                {0x7FFFFFFF, 0x80000000, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << "mode " << row.mode << ", bit " << row.bit);
        EXPECT_EQ(OptionRegistry(row.mode).hasMode(row.bit), row.expected);
    }
}

TEST(RegistryRegistration, NamesAreTrimmedWhenRegistered) {
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    registry.addValueOptions({"-one", "--two", "three"});
    registry.addMultiValueOptions({"---four", "five"});
    EXPECT_TRUE(registry.isValueOption("one"));
    EXPECT_TRUE(registry.isValueOption("two"));
    EXPECT_TRUE(registry.isValueOption("three"));
    EXPECT_FALSE(registry.isValueOption("four"));
    EXPECT_TRUE(registry.isMultiValueOption("four"));
    EXPECT_TRUE(registry.isMultiValueOption("five"));
    EXPECT_FALSE(registry.isMultiValueOption("one"));
}

TEST_F(RegistryTest, NamesAreTrimmedWhenAskedFor) {
    registry.parseTokens({"app", "-o", "file", "-w", "-tl", "A"});
    for (const std::string dashes : {"", "-", "--", "---"}) {
        SCOPED_TRACE("\"" + dashes + "\" in front");
        EXPECT_TRUE(registry.isValueOption(dashes + "o"));
        EXPECT_FALSE(registry.isValueOption(dashes + "tl"));
        EXPECT_TRUE(registry.isMultiValueOption(dashes + "tl"));
        EXPECT_FALSE(registry.isMultiValueOption(dashes + "o"));
        EXPECT_TRUE(registry.hasOption(dashes + "w"));
        EXPECT_EQ(value(dashes + "o"), "file");
        EXPECT_EQ(value(dashes + "tl"), "A");
        EXPECT_EQ(registry.getJoinedValues(dashes + "tl", ","), "A");
    }
}

TEST_F(RegistryTest, RegisteringTwiceIsRegisteringOnce) {
    registry.addValueOptions({"o", "-o"});
    registry.addMultiValueOptions({"tl"});
    registry.parseTokens({"app", "-o", "file", "-tl", "A", "Suite"});
    EXPECT_EQ(value("o"), "file");
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A");
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
}

TEST_F(RegistryTest, RegistrationAddsToEarlierRegistrations) {
    registry.addValueOptions({"later"});
    registry.addValueOptions({});
    registry.addMultiValueOptions({});
    EXPECT_TRUE(registry.isValueOption("o"));
    EXPECT_TRUE(registry.isValueOption("later"));
    EXPECT_TRUE(registry.isMultiValueOption("p"));
}

TEST_F(RegistryTest, MultiValueRegistrationComesBeforeValueRegistration) {
    registry.addValueOptions({"tl"});
    registry.parseTokens({"app", "-tl", "A", "-tl=B", "-tl", "C"});
    EXPECT_TRUE(registry.isValueOption("tl"));
    EXPECT_TRUE(registry.isMultiValueOption("tl"));
    EXPECT_EQ(value("tl"), "A B C");
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A,B,C");
}

// Utilities

TEST(RegistryUtilities, TrimLeadingDashesKeepsWhatIsNothingButDashes) {
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {{"", ""},         {"-", "-"},       {"--", "--"},       {"---", "---"}, {"o", "o"},
                {"-o", "o"},      {"--o", "o"},     {"--help", "help"}, {"---x", "x"},  {"a-b", "a-b"},
                {"-a-b", "a-b"},  {"--a--", "a--"}, {" -x", " -x"},     {"- x", " x"},  {"-=x", "=x"},
                {"--5", "5"},     {"\t--", "\t--"}, {"-\n-", "\n-"},    {"+x", "+x"},   {"/x", "/x"},
                {"-\xFF", "\xFF"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(OptionRegistry::trimLeadingDashes(row.text), row.expected);
    }
}

TEST(RegistryUtilities, OptionTokensBeginWithADashAndAreNoNumbers) {
    const struct {
        const char* token;
        bool expected;
    } rows[] = {
        {"", false},      {"-", true},     {"--", true},    {"---", true},       {"-x", true},
        {"--x", true},    {"-help", true}, {"-?", true},    {"-=", true},        {"-o=1", true},
        {"- 5", true},    {"--5", true},   {"-x5", true},   {"-\xC3\xA9", true}, {"x", false},
        {"x-", false},    {"/x", false},   {"/?", false},   {"+x", false},       {"=", false},
        {" -x", false},   {"\t-x", false}, {"\n-x", false}, {"5", false},        {"-5", false},
        {"-0.25", false}, {"-1e3", false}, {"-5 x", false}, {"+5", false},       {"\xE2\x80\x93x", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.token);
        EXPECT_EQ(OptionRegistry::isOptionToken(row.token), row.expected);
    }
}

// Positional arguments

TEST_F(RegistryTest, AnEmptyTokenListChangesNothing) {
    registry.parseTokens({});
    EXPECT_THAT(registry.getPositionals(), IsEmpty());
    registry.parseTokens({"app"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app"));
}

TEST_F(RegistryTest, ParseArgvScansExactlyArgcTexts) {
    char application[] = "app";
    char option[] = "-o";
    char file[] = "file";
    char unread[] = "Suite";
    const char* const argv[] = {application, option, file, unread};
    registry.parseArgv(3, argv);
    application[0] = option[1] = file[0] = 'X';
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app"));
    EXPECT_EQ(value("o"), "file");
}

TEST_F(RegistryTest, ParseArgvOfNoTextsScansNothing) {
    const char* const argv[] = {"app"};
    registry.parseArgv(0, argv);
    EXPECT_THAT(registry.getPositionals(), IsEmpty());
}

TEST_F(RegistryTest, PositionalsAndFlagsOfOneList) {
    registry.parseTokens({"app", "Suite1", "-w", "Suite2"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite1", "Suite2"));
    EXPECT_TRUE(registry.hasOption("w"));
    registry.parseTokens({"app", "Suite3"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite1", "Suite2", "Suite3"));
}

TEST(RegistryPositionals, TheFirstTokenCountsOnlyWhenThereIsNoPositionalYet) {
    const struct {
        const char* name;
        Tokens first;
        Tokens second;
        Tokens expected;
    } rows[] = {
        {"different program names", {"one", "A"}, {"two", "B"}, {"one", "A", "B"}},
        {"program names alone", {"one"}, {"two"}, {"one"}},
        {"first program name is empty", {"", "A"}, {"two", "B"}, {"", "A", "B"}},
        {"both program names are empty", {""}, {""}, {""}},
        {"first program name is a number", {"-5", "A"}, {"two"}, {"-5", "A"}},
        {"second program name is a number", {"one"}, {"-5", "A"}, {"one", "A"}},
        {"first program name is a flag", {"-one", "A"}, {"two", "B"}, {"A", "B"}},
        {"first program name takes a value", {"-o", "file", "A"}, {"two", "B"}, {"A", "B"}},
        {"first list has options only", {"-one", "-o", "file"}, {"two", "B"}, {"two", "B"}},
        {"second program name is a flag", {"one", "A"}, {"-two", "B"}, {"one", "A", "B"}},
        {"second program name takes a value", {"one", "A"}, {"-o", "file", "B"}, {"one", "A", "B"}},
        {"program name again later on", {"one", "one"}, {"one", "one"}, {"one", "one", "one"}},
        {"first list is empty", {}, {"two", "B"}, {"two", "B"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        OptionRegistry registry(OptionRegistry::UnknownAsFlag);
        registry.addValueOptions({"o"});
        registry.parseTokens(row.first);
        registry.parseTokens(row.second);
        EXPECT_EQ(registry.getPositionals(), row.expected);
    }
}

TEST_F(RegistryTest, AFirstTokenThatLooksLikeAnOptionIsScannedAsOne) {
    registry.parseTokens({"-w", "A"});
    registry.parseTokens({"-o=file"});
    registry.parseTokens({"-tl", "B"});
    EXPECT_TRUE(registry.hasOption("w"));
    EXPECT_EQ(value("o"), "file");
    EXPECT_EQ(value("tl"), "B");
    EXPECT_THAT(registry.getPositionals(), ElementsAre("A"));
}

TEST_F(RegistryTest, PositionalsBeyondTheLastAreEmpty) {
    registry.parseTokens({"app", "Suite"});
    EXPECT_EQ(registry.getPositional(0), "app");
    EXPECT_EQ(registry.getPositional(1), "Suite");
    EXPECT_EQ(registry.getPositional(2), "");
    EXPECT_EQ(registry.getPositional(3), "");
    EXPECT_EQ(registry.getPositional(std::numeric_limits<std::size_t>::max()), "");
}

TEST_F(RegistryTest, PositionalsAreHandedOutByReference) {
    registry.parseTokens({"app", "Suite"});
    EXPECT_EQ(&registry.getPositional(1), &registry.getPositionals()[1]);
    EXPECT_EQ(&registry.getPositional(2), &registry.getPositional(3));
    EXPECT_EQ(&registry.getPositionals(), &registry.getPositionals());
}

TEST_F(RegistryTest, TokensWithoutADashStandForThemselves) {
    registry.parseTokens({"app", "o=1", "/x", "+y", "", "a-b", " -w"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "o=1", "/x", "+y", "", "a-b", " -w"));
    EXPECT_EQ(value("o"), "(absent)");
}

}  // namespace
