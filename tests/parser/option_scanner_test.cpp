// One example for each rule of the scan; differential/ compares every short list of tokens with the model.

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

// A registry in the parser's mode with some of the parser's options.
OptionRegistry newRegistry(std::uint32_t mode = OptionRegistry::UnknownAsFlag) {
    OptionRegistry registry(mode);
    registry.addValueOptions({"o", "x", "out"});
    registry.addMultiValueOptions({"tl", "p"});
    return registry;
}

// The positional arguments, a bar, and for each of the names "name" if it is a flag and "name='value'" if it
// has a value.
std::string describe(const OptionRegistry& registry, const Strings& names) {
    std::string text;
    for (const std::string& positional : registry.getPositionals()) {
        text += positional + " ";
    }
    text += "|";
    for (const std::string& name : names) {
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

struct Row {
    const char* tokens;
    const char* names;
    const char* expected;
};

void expectScans(std::uint32_t mode, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        OptionRegistry registry = newRegistry(mode);
        registry.parseTokens(words(row.tokens));
        EXPECT_EQ(describe(registry, words(row.names)), row.expected) << row.tokens;
    }
}

TEST(OptionScanner, ReadsExactlyArgcTokensAndCopiesThem) {
    char application[] = "app";
    char option[] = "-o";
    char file[] = "file";
    char unread[] = "Suite";
    const char* const argv[] = {application, option, file, unread};
    OptionRegistry registry = newRegistry();
    registry.parseArgv(3, argv);
    application[0] = option[1] = file[0] = 'X';
    EXPECT_EQ(describe(registry, {"o"}), "app | o='file'");
    registry.parseArgv(0, nullptr);
    registry.parseTokens({});
    EXPECT_EQ(describe(registry, {"o"}), "app | o='file'");
}

TEST(OptionScanner, TokensWithoutADashArePositional) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens({"app", "o=1", "/x", "", " -w"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "o=1", "/x", "", " -w"));
}

TEST(OptionScanner, ScansAddUpAndOnlyTheFirstProgramNameIsKept) {
    OptionRegistry registry = newRegistry();
    registry.parseTokens(words("-v -x kept"));
    registry.parseTokens(words("app -o a -tl A S1 -o"));
    registry.parseTokens(words("other -o b -tl B S2"));
    EXPECT_EQ(describe(registry, words("o x tl v")), "app S1 S2 | o o='b' x='kept' tl='A B' v");
}

TEST(OptionScanner, OptionsFollowTheRulesOfTheParser) {
    expectScans(OptionRegistry::UnknownAsFlag,
                {
                    {"-o=file A", "o", "A | o='file'"},  // the program name, too, may be an option
                    // The next token is the value of a registered option, unless it is an option itself.
                    {"app -o file --x=report ---tl A", "o x tl", "app | o='file' x='report' tl='A'"},
                    {"app -x -file.xml -tl -w -o", "x file.xml tl w o", "app | x file.xml tl w o"},
                    {"app -o - -x --", "o - x --", "app | o - x --"},
                    {"app -o '' -tl '' -tl A", "o tl", "app | o='' tl=' A'"},
                    {"app -o -5 -tl -1e3 -7 --5", "o tl 7 5", "app -7 | o='-5' tl='-1e3' 5"},
                    {"app -o a -o b -tl B -tl=A", "o tl", "app | o='b' tl='B A'"},
                    {"app -o a -o", "o", "app | o o='a'"},
                    // After the first "=", anything is the value of any name.
                    {"app -x=-a=b -o= -u=1 -=v S", "x o u ''", "app S | x='-a=b' o='' u='1' ='v'"},
                    // Any other option is a flag; a lone dash is its name.
                    {"app -w V -H - Suite", "w h H -", "app V Suite | w H -"},
                });
}

TEST(OptionScanner, MultiValueOptionsComeBeforeValueOptions) {
    OptionRegistry registry = newRegistry();
    registry.addValueOptions({"tl"});
    registry.parseTokens(words("app -tl A -tl=B"));
    EXPECT_EQ(describe(registry, {"tl"}), "app | tl='A B'");
}

TEST(OptionScanner, ModeWithoutAKnownBitIsThatOfTheParser) {
    expectScans(0xFFFFFFF0, {{"app -ab V -u=1 -o W", "ab a u o", "app V | ab u='1' o='W'"}});
}

TEST(OptionScanner, UnknownTakesValueGivesEveryOptionTheNextToken) {
    expectScans(OptionRegistry::UnknownTakesValue, {
                                                       {"app -ab V W", "ab", "app W | ab='V'"},
                                                       {"app -ab -cd", "ab cd", "app | ab cd"},
                                                   });
}

TEST(OptionScanner, NoInlineValueMakesTheEqualsSignPartOfTheName) {
    expectScans(OptionRegistry::NoInlineValue, {{"app -o=1 V -tl=3", "o o=1 tl tl=3", "app V | o=1 tl=3"}});
}

TEST(OptionScanner, GroupedShortFlagsSplitsOneDashNamesIntoLetters) {
    expectScans(OptionRegistry::GroupedShortFlags,
                {
                    {"app -ab V", "ab a b", "app V | a b"},
                    {"app --ab V", "ab a b", "app V | ab"},
                    {"app -out V", "out o u t", "app | out='V'"},
                    {"app -tl V", "tl t l", "app V | t l"},
                    {"app -ab=1", "ab a b", "app | ab='1'"},
                    // The last letter takes a value if it is a registered option.
                    {"app -abo V", "abo a b o", "app | a b o='V'"},
                    {"app -ao -b", "a o b", "app | a o b"},
                    {"app -oa V", "a o", "app V | a o"},
                });
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
