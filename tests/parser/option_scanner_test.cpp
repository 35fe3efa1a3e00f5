// An example of each rule of the scan; differential/ compares every short list of tokens with the model.

#include "parser/option_scanner.h"

#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using orvex::Finding;
using ::testing::ElementsAre;

template <typename Sink>
void scan(const std::string& arguments, std::uint32_t mode, bool hasProgramName, const Sink& sink) {
    OptionRegistry grammar(mode);
    grammar.addValueOptions({"o", "x", "out"});
    grammar.addMultiValueOptions({"tl", "p"});
    const Strings list = words(arguments);
    orvex::scanTokens({list.begin(), list.end()}, grammar, hasProgramName, sink);
}

// What a scan finds: positional, (dropped program name), [flag], name:value and name=value.
std::string findings(const std::string& arguments, std::uint32_t mode = OptionRegistry::UnknownAsFlag,
                     bool hasProgramName = false) {
    std::string text;
    scan(arguments, mode, hasProgramName, [&text](const Finding& finding) {
        const std::string name(finding.name);
        const std::string value = finding.value.empty() ? "''" : std::string(finding.value);
        const std::string forms[] = {value, "(" + value + ")", "[" + name + "]", name + ":" + value,
                                     name + "=" + value};
        text += (text.empty() ? "" : " ") + forms[finding.kind];
    });
    return text;
}

TEST(OptionScanner, TokenWithoutADashIsPositional) {
    EXPECT_EQ(findings("app o=1 /x '' Suite"), "app o=1 /x '' Suite");
}

TEST(OptionScanner, FirstTokenIsDroppedIfThereIsAProgramNameAlready) {
    EXPECT_EQ(findings("other Suite", OptionRegistry::UnknownAsFlag, true), "(other) Suite");
    EXPECT_EQ(findings("-o=file Suite", OptionRegistry::UnknownAsFlag, true), "o=file Suite");
}

TEST(OptionScanner, RegisteredOptionTakesTheNextTokenUnlessThatIsAnOption) {
    EXPECT_EQ(findings("app -o file ---tl A Suite"), "app o:file tl:A Suite");
    EXPECT_EQ(findings("app -x -file.xml -tl -w -o"), "app [x] [file.xml] [tl] [w] [o]");
    EXPECT_EQ(findings("app -o - -x --"), "app [o] [-] [x] [--]");
    EXPECT_EQ(findings("app -o '' -tl ''"), "app o:'' tl:''");
}

TEST(OptionScanner, NegativeNumberIsNotAnOption) {
    EXPECT_EQ(findings("app -o -5 -tl -1e3 -7 --5"), "app o:-5 tl:-1e3 -7 [5]");
}

TEST(OptionScanner, FirstEqualsSignEndsTheNameOfAnyOption) {
    EXPECT_EQ(findings("-x=-a=b -o= -u=1 -=v --tl=A Suite"), "x=-a=b o='' u=1 =v tl=A Suite");
}

TEST(OptionScanner, UnregisteredOptionIsAFlag) {
    EXPECT_EQ(findings("app -w V -H - Suite"), "app [w] V [H] [-] Suite");
}

TEST(OptionScanner, UnknownModeBitsAreIgnored) {
    EXPECT_EQ(findings("app -ab V -u=1 -o W", 0xFFFFFFF0), "app [ab] V u=1 o:W");
}

TEST(OptionScanner, UnknownTakesValueGivesEveryOptionTheNextToken) {
    EXPECT_EQ(findings("app -ab V W -cd -ef", OptionRegistry::UnknownTakesValue), "app ab:V W [cd] [ef]");
}

TEST(OptionScanner, NoInlineValueMakesTheEqualsSignPartOfTheName) {
    EXPECT_EQ(findings("app -o=1 V -tl=3", OptionRegistry::NoInlineValue), "app [o=1] V [tl=3]");
}

TEST(OptionScanner, GroupedShortFlagsSplitsNamesWithOneDashIntoLetters) {
    const std::uint32_t mode = OptionRegistry::GroupedShortFlags;
    EXPECT_EQ(findings("app -ab V --ab V", mode), "app [a] [b] V [ab] V");
    EXPECT_EQ(findings("app -out V -tl V -ab=1", mode), "app out:V [t] [l] V ab=1");
    // The last letter takes a value if it is a registered option.
    EXPECT_EQ(findings("app -abo V -oa V -ao -b", mode), "app [a] [b] o:V [o] [a] V [a] [o] [b]");
}

TEST(OptionScanner, FindingHasTheIndexOfItsFirstToken) {
    std::vector<std::size_t> indices;
    scan("app Suite -ab -o 1 --tl=2 --tl -5 --w", OptionRegistry::GroupedShortFlags, false,
         [&indices](const Finding& finding) { indices.push_back(finding.index); });
    EXPECT_THAT(indices, ElementsAre(0, 1, 2, 2, 3, 5, 6, 8));
}

}  // namespace
