#include "OrvexTestCommandLineParser.h"

#include "parser/parser_state.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using AccessorsTest = CleanEnvironmentTest;

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

// What the accessors of a parser that has parsed nothing tell.
Snapshot stateAfterConstruction() {
    return {
        {"applicationName", ""},
        {"xmlFilename", ""},
        {"outputFilename", ""},
        {"testPaths", ""},
        {"firstTestPath", ""},
        {"tlList", ""},
        {"helpRequested", "no"},
        {"waitBeforeExit", "no"},
        {"reportFile", ""},
        {"record.group", ""},
        {"record.guid", ""},
        {"record.runName", ""},
        {"record.runDescription", ""},
        {"record.product", ""},
        {"record.fixedZero", ""},
        {"record.userId", ""},
        {"record.vcsRevision", ""},
        {"record.vcsBranch", ""},
        {"record.secondVcsRevision", ""},
        {"record.secondVcsBranch", ""},
        {"record.pcName", ""},
        {"record.osName", ""},
        {"record.transportLayers", ""},
        {"record.tdcDravikXmlFilename", ""},
        {"record.testName", ""},
        {"record.osType", ""},
        {"record.bit", ""},
    };
}

TEST_F(AccessorsTest, BeforeAnyParseEverythingIsEmpty) {
    const OrvexTestCommandLineParser parser;
    EXPECT_EQ(readState(parser), stateAfterConstruction());
    EXPECT_THAT(parser.getTestPaths(), IsEmpty());
}

TEST_F(AccessorsTest, ConstructionAndDestructionLeaveTheEnvironmentAlone) {
    set("ORVEX_TEST_ARGS", "-o file Suite");
    set("_ORVEX_TEST_ARGS_", "'");
    const Environment before = readEnvironment();
    {
        const OrvexTestCommandLineParser parser;
        EXPECT_EQ(readEnvironment(), before);
        EXPECT_EQ(readState(parser), stateAfterConstruction());
    }
    EXPECT_EQ(readEnvironment(), before);
}

TEST_F(AccessorsTest, DestructionLeavesTheVariablesOfTheParse) {
    {
        OrvexTestCommandLineParser parser;
        ASSERT_TRUE(parse(parser, {"app", "-tdc_guid", "1234"}));
    }
    EXPECT_EQ(get("TEST_SESSION_GUID"), "1234");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPS"), "8192");
}

TEST_F(AccessorsTest, EachTellsWhatWasParsed) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {"./mytest", "-x", "report.xml", "-o", "out.txt", "-tl", "A", "-tl", "B", "-h",
                               "-w", "-tdc_dxml", "tdc.xml", "S1", "S2::Case"}));
    EXPECT_EQ(parser.getApplicationName(), "./mytest");
    EXPECT_EQ(parser.getXmlFilename(), "report.xml");
    EXPECT_EQ(parser.getOutputFilename(), "out.txt");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S2::Case"));
    EXPECT_EQ(parser.getFirstTestPath(), "S1");
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getTdcDravikXmlFilename(), "tdc.xml");
    EXPECT_EQ(parser.getTestRunInformation().tdcDravikXmlFilename, "tdc.xml");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "A,B");
}

TEST_F(AccessorsTest, HelpAndWaitAreToldApart) {
    OrvexTestCommandLineParser help;
    ASSERT_TRUE(parse(help, {"app", "-?"}));
    EXPECT_TRUE(help.helpRequested());
    EXPECT_FALSE(help.waitBeforeExit());

    OrvexTestCommandLineParser wait;
    ASSERT_TRUE(parse(wait, {"app", "-w"}));
    EXPECT_FALSE(wait.helpRequested());
    EXPECT_TRUE(wait.waitBeforeExit());
}

TEST_F(AccessorsTest, TestPathsKeepTheirOrder) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {"app", "TestSuiteUsb", "TestSuiteGigE::DynamicHeartbeatTest"}));
    EXPECT_EQ(parser.getFirstTestPath(), "TestSuiteUsb");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("TestSuiteUsb", "TestSuiteGigE::DynamicHeartbeatTest"));
    EXPECT_EQ(&parser.getFirstTestPath(), &parser.getTestPaths().front());
}

TEST_F(AccessorsTest, WithoutATestPathTheFirstIsTheSameEmptyTextEveryTime) {
    OrvexTestCommandLineParser parser;
    const OrvexTestCommandLineParser other;
    const std::string& first = parser.getFirstTestPath();
    EXPECT_EQ(first, "");
    EXPECT_EQ(&parser.getFirstTestPath(), &first);
    EXPECT_EQ(&other.getFirstTestPath(), &first);
    ASSERT_TRUE(parse(parser, {"app", "-w"}));
    EXPECT_EQ(&parser.getFirstTestPath(), &first);
    EXPECT_EQ(first, "");
}

TEST_F(AccessorsTest, AnEmptyTestPathIsATestPath) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {"app", "", "Suite"}));
    EXPECT_EQ(parser.getFirstTestPath(), "");
    EXPECT_EQ(&parser.getFirstTestPath(), &parser.getTestPaths().front());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("", "Suite"));
}

TEST_F(AccessorsTest, ReferencesShowTheNextParse) {
    OrvexTestCommandLineParser parser;
    const std::string& applicationName = parser.getApplicationName();
    const std::string& xmlFilename = parser.getXmlFilename();
    const std::string& outputFilename = parser.getOutputFilename();
    const std::vector<std::string>& testPaths = parser.getTestPaths();
    const std::string& tlList = parser.getTlList();
    const TestRunInformation& information = parser.getTestRunInformation();
    const std::string& reportFile = parser.getTdcDravikXmlFilename();
    ASSERT_TRUE(parse(parser, {"app", "-x", "report", "-o", "out", "-tl", "A", "-tdc_dxml", "tdc", "Suite"}));
    EXPECT_EQ(applicationName, "app");
    EXPECT_EQ(xmlFilename, "report");
    EXPECT_EQ(outputFilename, "out");
    EXPECT_THAT(testPaths, ElementsAre("Suite"));
    EXPECT_EQ(tlList, "A");
    EXPECT_EQ(information.transportLayers, "A");
    EXPECT_EQ(reportFile, "tdc");
    EXPECT_EQ(&reportFile, &information.tdcDravikXmlFilename);
}

TEST_F(AccessorsTest, ReadingChangesNothing) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {"app", "-x", "report", "Suite"}));
    const Snapshot state = readState(parser);
    const Environment environment = readEnvironment();
    parser.getHelpMessage("other");
    EXPECT_EQ(readState(parser), state);
    EXPECT_EQ(readEnvironment(), environment);
}

TEST_F(AccessorsTest, AParseThatLacksOptionsTellsWhatAnEarlierOneLeft) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(
        parse(parser, {"app", "-x", "report", "-o", "out", "-h", "-w", "-tl", "A", "-tdc_dxml", "tdc"}));
    ASSERT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getXmlFilename(), "report");
    EXPECT_EQ(parser.getOutputFilename(), "out");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getTlList(), "A");
    EXPECT_EQ(parser.getTdcDravikXmlFilename(), "tdc");
}

TEST_F(AccessorsTest, ParsersAreIndependent) {
    OrvexTestCommandLineParser first;
    ASSERT_TRUE(parse(first, {"app", "-x", "report", "-w", "Suite"}));
    const OrvexTestCommandLineParser second;
    EXPECT_EQ(readState(second), stateAfterConstruction());
}

}  // namespace
