// What a scan makes of a token list.

#include "parser/option_scanner.h"

#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Tokens = std::vector<std::string>;

// A registry in the parser's mode with some of the parser's options.
OptionRegistry newRegistry(std::uint32_t mode = OptionRegistry::UnknownAsFlag) {
    OptionRegistry registry(mode);
    registry.addValueOptions({"o", "x", "out"});
    registry.addMultiValueOptions({"tl", "p"});
    return registry;
}

// The positional arguments, a bar, and what is known about each of the names: "name" if it is a flag, and
// "name='value'" if it has a value.
std::string describe(const OptionRegistry& registry, const std::string& names) {
    std::string text;
    for (const std::string& positional : registry.getPositionals()) {
        text += positional + " ";
    }
    text += "|";
    for (const std::string& name : words(names)) {
        if (registry.hasOption(name)) {
            text += " " + name;
        }
        const std::istringstream value = registry.getValue(name);
        if (!value.fail() && !(registry.isMultiValueOption(name) && value.str().empty())) {
            text += " " + name + "='" + value.str() + "'";
        }
    }
    return text;
}

std::string scanned(const Tokens& tokens, const std::string& names) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens(tokens);
    return describe(registry, names);
}

std::string scannedInMode(std::uint32_t mode, const std::string& tokens, const std::string& names) {
    OptionRegistry registry = newRegistry(mode);
    registry.parseTokens(words(tokens));
    return describe(registry, names);
}

// Token lists

TEST(OptionScanner, ReadsExactlyArgcTextsAndCopiesThem) {
    char application[] = "app";
    char option[] = "-o";
    char file[] = "file";
    char unread[] = "Suite";
    const char* const argv[] = {application, option, file, unread};
    OptionRegistry registry = newRegistry();
    registry.parseArgv(3, argv);
    application[0] = option[1] = file[0] = 'X';
    EXPECT_EQ(describe(registry, "o"), "app | o='file'");
}

TEST(OptionScanner, AnEmptyListChangesNothing) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens({});
    registry.parseArgv(0, nullptr);
    EXPECT_THAT(registry.getPositionals(), IsEmpty());
}

TEST(OptionScanner, ScansAddUp) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens(words("app -o a -x kept -tl A -v S1"));
    registry.parseTokens(words("other -o b -tl B S2"));
    registry.parseTokens(words("third -o -tl=C -w S3"));
    EXPECT_EQ(describe(registry, "o x tl v w"), "app S1 S2 S3 | o o='b' x='kept' tl='A B C' v w");
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A,B,C");
}

TEST(OptionScanner, AnOptionTakesNoValueFromTheNextList) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens(words("app -o"));
    registry.parseTokens(words("file Suite"));
    EXPECT_EQ(describe(registry, "o"), "app Suite | o");
}

// Positional arguments

TEST(OptionScanner, TokensWithoutADashStandForThemselves) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens({"app", "o=1", "/x", "+y", "", "a-b", " -w"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "o=1", "/x", "+y", "", "a-b", " -w"));
    EXPECT_FALSE(registry.hasOption("w"));
    EXPECT_TRUE(registry.getValue("o").fail());
}

TEST(OptionScanner, ALaterListAddsAllButItsProgramName) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens(words("app Suite1 -w Suite2"));
    EXPECT_EQ(describe(registry, "w"), "app Suite1 Suite2 | w");
    registry.parseTokens(words("app Suite3"));
    EXPECT_EQ(describe(registry, "w"), "app Suite1 Suite2 Suite3 | w");
}

TEST(OptionScanner, TheFirstTokenIsDroppedOnlyWhenThereIsAPositionalAlready) {
    const struct {
        Tokens first;
        Tokens second;
        Tokens expected;
    } rows[] = {
        {{"one", "A"}, {"two", "B"}, {"one", "A", "B"}},
        {{"one", "one"}, {"one", "one"}, {"one", "one", "one"}},
        {{"", "A"}, {"two", "B"}, {"", "A", "B"}},
        {{"-5", "A"}, {"-6", "B"}, {"-5", "A", "B"}},
        {{"-flag", "A"}, {"two", "B"}, {"A", "B"}},
        {{"-flag", "-o", "file"}, {"two", "B"}, {"two", "B"}},
        {{"one", "A"}, {"-flag", "B"}, {"one", "A", "B"}},
        {{"one", "A"}, {"-o", "file", "B"}, {"one", "A", "B"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.first) + ", " + ::testing::PrintToString(row.second));
        OptionRegistry registry = newRegistry();
        registry.parseTokens(row.first);
        registry.parseTokens(row.second);
        ASSERT_EQ(registry.getPositionals(), row.expected);
    }
}

TEST(OptionScanner, AFirstTokenThatLooksLikeAnOptionIsOne) {
    EXPECT_EQ(scanned(words("-w A"), "w"), "A | w");
    EXPECT_EQ(scanned(words("-o=file A"), "o"), "A | o='file'");
    EXPECT_EQ(scanned(words("-tl A"), "tl"), "| tl='A'");
}

// Values in the next token

TEST(OptionScanner, TheNextTokenIsTheValueOfARegisteredOption) {
    EXPECT_EQ(scanned(words("app -o file Suite"), "o"), "app Suite | o='file'");
    EXPECT_EQ(scanned(words("app -tl A Suite"), "tl"), "app Suite | tl='A'");
}

TEST(OptionScanner, TheNumberOfDashesDoesNotMatter) {
    EXPECT_EQ(scanned(words("app --o file ---x=report --tl A ----w"), "o x tl w"),
              "app | o='file' x='report' tl='A' w");
}

TEST(OptionScanner, AValueOptionAsTheLastTokenIsAFlag) {
    EXPECT_EQ(scanned(words("app -o"), "o"), "app | o");
    EXPECT_EQ(scanned(words("app -tl"), "tl"), "app | tl");
}

TEST(OptionScanner, AnOptionTokenIsNoValue) {
    EXPECT_EQ(scanned(words("app -x -file.xml"), "x file.xml"), "app | x file.xml");
    EXPECT_EQ(scanned(words("app -tl -w"), "tl w"), "app | tl w");
    EXPECT_EQ(scanned(words("app -o - -x --"), "o - x --"), "app | o - x --");
}

TEST(OptionScanner, ANumberIsAValueAndAPositionalArgument) {
    EXPECT_EQ(scanned(words("app -o -5 -x -0.25 -tl -1e3 -7 -5=x"), "o x tl 7 5"),
              "app -7 -5=x | o='-5' x='-0.25' tl='-1e3'");
    EXPECT_EQ(scanned(words("app -o -1e400 --5 Suite"), "o 1e400 5"), "app Suite | o 1e400 5");
}

TEST(OptionScanner, AnEmptyTokenIsAValue) {
    EXPECT_EQ(scanned({"app", "-o", "", "-tl", "", "-tl", "A", "Suite"}, "o tl"), "app Suite | o='' tl=' A'");
}

TEST(OptionScanner, AValueIsTakenAsItStands) {
    EXPECT_EQ(scanned(words("app -o a=b -x /w"), "o x a"), "app | o='a=b' x='/w'");
    EXPECT_EQ(scanned({"app", "-o", "\x01 \x80\xFF\n"}, "o"), "app | o='\x01 \x80\xFF\n'");
}

TEST(OptionScanner, TheLastSingleValueWins) {
    EXPECT_EQ(scanned(words("app -o a -o b"), "o"), "app | o='b'");
    EXPECT_EQ(scanned(words("app -o a -o=b"), "o"), "app | o='b'");
    EXPECT_EQ(scanned(words("app -o=a --o b -o="), "o"), "app | o=''");
}

TEST(OptionScanner, EveryValueOfAMultiValueOptionIsKeptInOrder) {
    EXPECT_EQ(scanned(words("app -tl B -p k=v -tl=A -p=l=w -tl B"), "tl p"), "app | tl='B A B' p='k=v l=w'");
}

TEST(OptionScanner, ACommaInAValueIsNotSplit) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens(words("app -tl A,B"));
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "A,B");
    EXPECT_EQ(registry.getValue("tl").str(), "A,B");
}

TEST(OptionScanner, OneNameMayHaveAValueAndBeAFlag) {
    EXPECT_EQ(scanned(words("app -o a -o"), "o"), "app | o o='a'");
}

TEST(OptionScanner, MultiValueComesBeforeSingleValue) {
    OptionRegistry registry = newRegistry();
    registry.addValueOptions({"tl"});
    registry.parseTokens(words("app -tl A -tl=B -tl C"));
    EXPECT_EQ(describe(registry, "tl"), "app | tl='A B C'");
    EXPECT_TRUE(registry.isValueOption("tl"));
}

// Values after a "="

TEST(OptionScanner, TheFirstEqualsSignSeparatesNameAndValue) {
    EXPECT_EQ(scanned(words("app -o=file --x=a=b -tl=c=d"), "o x tl"), "app | o='file' x='a=b' tl='c=d'");
}

TEST(OptionScanner, AnInlineValueMayLookLikeAnOptionOrBeEmpty) {
    EXPECT_EQ(scanned(words("app -x=-file.xml -o= Suite"), "x file.xml o"), "app Suite | x='-file.xml' o=''");
}

TEST(OptionScanner, AnInlineNameNeedNotBeRegistered) {
    EXPECT_EQ(scanned(words("app -w=1 -tdc_variant=V Suite"), "w tdc_variant"),
              "app Suite | w='1' tdc_variant='V'");
}

TEST(OptionScanner, AnInlineNameMayBeEmpty) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens(words("app -=v"));
    EXPECT_EQ(registry.getValue("").str(), "v");
    EXPECT_TRUE(registry.getValue("-").fail());
}

TEST(OptionScanner, AnInlineValueLeavesTheNextTokenAlone) {
    EXPECT_EQ(scanned(words("app -o=a b -tl=c d"), "o tl"), "app b d | o='a' tl='c'");
}

// Flags

TEST(OptionScanner, AnUnregisteredOptionIsAFlagAndTheNextTokenStandsForItself) {
    EXPECT_EQ(scanned(words("app -tdc_variant V"), "tdc_variant"), "app V | tdc_variant");
}

TEST(OptionScanner, ALoneDashIsAFlagOfThatName) {
    EXPECT_EQ(scanned(words("app - Suite"), "- --"), "app Suite | -");
    EXPECT_EQ(scanned(words("app --- Suite"), "- -- ---"), "app Suite | ---");
}

TEST(OptionScanner, NamesAreComparedByteByByte) {
    EXPECT_EQ(scanned(words("app -H -O a -TL b -ou c"), "H h O o TL tl ou"), "app a b c | H O TL ou");
}

TEST(OptionScanner, AFlagMayBeGivenSeveralTimes) {
    EXPECT_EQ(scanned(words("app -w -h -w -a -w"), "a h w"), "app | a h w");
}

// Modes

TEST(OptionScannerMode, WithoutABitItIsThatOfTheParser) {
    EXPECT_EQ(scannedInMode(0, "app -ab V -u=1 -o W", "ab a u o"), "app V | ab u='1' o='W'");
    EXPECT_EQ(scannedInMode(0xFFFFFFF0, "app -ab V -u=1 -o W", "ab a u o"), "app V | ab u='1' o='W'");
}

TEST(OptionScannerMode, UnknownTakesValue) {
    const std::uint32_t mode = OptionRegistry::UnknownTakesValue;
    EXPECT_EQ(scannedInMode(mode, "app -ab V W", "ab"), "app W | ab='V'");
    EXPECT_EQ(scannedInMode(mode, "app - V", "-"), "app | -='V'");
    EXPECT_EQ(scannedInMode(mode, "app -ab -cd", "ab cd"), "app | ab cd");
    EXPECT_EQ(scannedInMode(mode, "app -tl A -tl B", "tl"), "app | tl='A B'");
}

TEST(OptionScannerMode, NoInlineValue) {
    const std::uint32_t mode = OptionRegistry::NoInlineValue;
    EXPECT_EQ(scannedInMode(mode, "app -o=1 --u=2 V -tl=3", "o o=1 u u=2 tl tl=3"), "app V | o=1 u=2 tl=3");
    EXPECT_EQ(scannedInMode(mode | OptionRegistry::UnknownTakesValue, "app -u=1 V", "u u=1"),
              "app | u=1='V'");
}

TEST(OptionScannerMode, GroupedShortFlags) {
    const std::uint32_t mode = OptionRegistry::GroupedShortFlags;
    const struct {
        const char* tokens;
        const char* names;
        const char* expected;
    } rows[] = {
        {"app -ab V", "ab a b", "app V | a b"},
        {"app --ab V", "ab a b", "app V | ab"},
        {"app - V", "-", "app V | -"},
        {"app -12", "1 2", "app -12 |"},
        {"app -out V", "out o u t", "app | out='V'"},
        {"app -tl V", "tl t l", "app V | t l"},
        {"app --tl V", "tl t l", "app | tl='V'"},
        {"app -ab=1", "ab a b", "app | ab='1'"},
        // The last letter takes a value if it is an option that does.
        {"app -o V", "o", "app | o='V'"},
        {"app -abo V", "abo a b o", "app | a b o='V'"},
        {"app -oao V", "a o", "app | a o o='V'"},
        {"app -ao -b", "a o b", "app | a o b"},
        {"app -oa V", "a o", "app V | a o"},
        {"app -ap V", "a p", "app V | a p"},
        {"app -x\xC3\xA9", "x \xC3 \xA9", "app | x \xC3 \xA9"},
    };
    for (const auto& row : rows) {
        ASSERT_EQ(scannedInMode(mode, row.tokens, row.names), row.expected) << row.tokens;
    }
    EXPECT_EQ(scannedInMode(mode | OptionRegistry::UnknownTakesValue, "app -ab V", "a b"), "app V | a b");
    EXPECT_EQ(scannedInMode(mode | OptionRegistry::NoInlineValue, "app -u=o V", "u = o"), "app | u = o='V'");
}

TEST(OptionScanner, ReportsEachFindingWithTheIndexOfItsToken) {
    const std::vector<std::string_view> tokens = {"app", "Suite", "-w", "-o", "1", "--tl=2", "-tl", "-5"};
    std::ostringstream report;
    orvex::scanTokens(tokens, newRegistry(), true, [&report](const orvex::Finding& finding) {
        const char* const kinds[] = {"positional", "dropped", "flag", "value", "inline"};
        report << finding.index << ' ' << kinds[finding.kind] << ' ' << finding.name << ' ' << finding.value
               << '\n';
    });
    EXPECT_EQ(report.str(),
              "0 dropped  app\n1 positional  Suite\n2 flag w \n3 value o 1\n5 inline tl 2\n6 value tl -5\n");
}

}  // namespace
