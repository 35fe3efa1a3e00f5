#include "OrvexTestCommandLineParser.h"

#include "parser/parser_test.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ::testing::ContainerEq;
using ::testing::ElementsAre;

using Accessors = ParserTest;

// What an accessor of a constant parser returns.
template <typename Accessor>
using ResultOf = decltype((std::declval<const OrvexTestCommandLineParser&>().*std::declval<Accessor>())());

template <typename Result, typename Accessor>
constexpr bool returns(Accessor /*accessor*/) {
    return std::is_same<ResultOf<Accessor>, Result>::value;
}

using Parser = OrvexTestCommandLineParser;
static_assert(returns<const std::string&>(&Parser::getApplicationName));
static_assert(returns<const std::string&>(&Parser::getXmlFilename));
static_assert(returns<const std::string&>(&Parser::getOutputFilename));
static_assert(returns<const std::vector<std::string>&>(&Parser::getTestPaths));
static_assert(returns<const std::string&>(&Parser::getFirstTestPath));
static_assert(returns<const std::string&>(&Parser::getTlList));
static_assert(returns<bool>(&Parser::helpRequested));
static_assert(returns<bool>(&Parser::waitBeforeExit));
static_assert(returns<const TestRunInformation&>(&Parser::getTestRunInformation));
static_assert(returns<const std::string&>(&Parser::getTdcDravikXmlFilename));

static_assert(!std::is_polymorphic<Parser>::value, "the parser has no virtual operations");
static_assert(std::is_default_constructible<Parser>::value, "the parser is created without arguments");

TEST_F(Accessors, BeforeAnyParseEverythingIsEmpty) {
    EXPECT_THAT(parser.getTestPaths(), ElementsAre());
    EXPECT_FALSE(parser.helpRequested());
    EXPECT_FALSE(parser.waitBeforeExit());
    for (const auto& [name, text] : stateOf(parser)) {
        ASSERT_TRUE(text.empty() || name == "helpRequested" || name == "waitBeforeExit")
            << name << ": " << text;
    }
}

TEST_F(Accessors, EachTellsWhatWasParsed) {
    ASSERT_TRUE(
        parse(parser, words("./mytest -x report.xml -o out.txt -tl A -tl B -h -tdc_dxml tdc.xml S1 S2")));
    EXPECT_EQ(parser.getApplicationName(), "./mytest");
    EXPECT_EQ(parser.getXmlFilename(), "report.xml");
    EXPECT_EQ(parser.getOutputFilename(), "out.txt");
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_FALSE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getTdcDravikXmlFilename(), "tdc.xml");
    EXPECT_EQ(&parser.getTdcDravikXmlFilename(), &parser.getTestRunInformation().tdcDravikXmlFilename);
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "A,B");

    OrvexTestCommandLineParser other;
    ASSERT_TRUE(parse(other, words("app -w")));
    EXPECT_FALSE(other.helpRequested());
    EXPECT_TRUE(other.waitBeforeExit());
}

TEST_F(Accessors, TestPathsKeepTheirOrder) {
    ASSERT_TRUE(parse(parser, words("app TestSuiteUsb TestSuiteGigE::DynamicHeartbeatTest")));
    EXPECT_EQ(parser.getFirstTestPath(), "TestSuiteUsb");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("TestSuiteUsb", "TestSuiteGigE::DynamicHeartbeatTest"));
}

TEST_F(Accessors, WithoutATestPathTheFirstIsTheSameEmptyTextEveryTime) {
    const OrvexTestCommandLineParser other;
    const std::string& first = parser.getFirstTestPath();
    EXPECT_EQ(first, "");
    EXPECT_EQ(&other.getFirstTestPath(), &first);
    ASSERT_TRUE(parse(parser, words("app -w")));
    EXPECT_EQ(&parser.getFirstTestPath(), &first);
}

TEST_F(Accessors, AnEmptyTestPathIsATestPath) {
    ASSERT_TRUE(parse(parser, {"app", "", "Suite"}));
    EXPECT_EQ(&parser.getFirstTestPath(), &parser.getTestPaths().front());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("", "Suite"));
}

TEST_F(Accessors, ReferencesShowTheNextParse) {
    const std::string& xmlFilename = parser.getXmlFilename();
    const std::vector<std::string>& testPaths = parser.getTestPaths();
    const TestRunInformation& information = parser.getTestRunInformation();
    ASSERT_TRUE(parse(parser, words("app -x report -tl A Suite")));
    EXPECT_EQ(xmlFilename, "report");
    EXPECT_THAT(testPaths, ElementsAre("Suite"));
    EXPECT_EQ(information.transportLayers, "A");
}

TEST_F(Accessors, ParsersAreIndependent) {
    const OrvexTestCommandLineParser before;
    ASSERT_TRUE(parse(parser, words("app -x report -w -tdc_guid 1 Suite")));
    EXPECT_THAT(stateOf(OrvexTestCommandLineParser()), ContainerEq(stateOf(before)));
}

TEST_F(Accessors, ConstructionAndDestructionLeaveTheEnvironmentAlone) {
    set("ORVEX_TEST_ARGS", "-o file Suite");
    set("_ORVEX_TEST_ARGS_", "'");
    const Environment before = readEnvironment();
    { const OrvexTestCommandLineParser shortLived; }
    EXPECT_THAT(readEnvironment(), ContainerEq(before));
}

}  // namespace
