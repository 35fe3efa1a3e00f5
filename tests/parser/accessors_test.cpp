#include "OrvexTestCommandLineParser.h"

#include "support/parser_test.h"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ::testing::ElementsAre;

using Parser = OrvexTestCommandLineParser;

template <typename Result, typename Accessor>
constexpr bool returns(Accessor /*accessor*/) {
    return std::is_same<decltype((std::declval<const Parser&>().*std::declval<Accessor>())()), Result>::value;
}

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

static_assert(!std::is_polymorphic<Parser>::value, "the parser has no virtual functions");
static_assert(std::is_default_constructible<Parser>::value, "the parser is created without arguments");

using Accessors = ParserTest;

TEST_F(Accessors, AreEmptyBeforeAnyParse) {
    EXPECT_THAT(parser.getTestPaths(), ElementsAre());
    for (const auto& [name, value] : snapshotOf(parser)) {
        EXPECT_EQ(value, name == "helpRequested" || name == "waitBeforeExit" ? "no" : "") << name;
    }
}

TEST_F(Accessors, PartsAreThoseOfTheWhole) {
    ASSERT_TRUE(parse(parser, words("app -tdc_dxml tdc.xml Suite")));
    EXPECT_EQ(parser.getTdcDravikXmlFilename(), "tdc.xml");
    EXPECT_EQ(&parser.getTdcDravikXmlFilename(), &parser.getTestRunInformation().tdcDravikXmlFilename);
    EXPECT_EQ(&parser.getFirstTestPath(), &parser.getTestPaths().front());
}

TEST_F(Accessors, FirstTestPathIsTheSameEmptyStringForEveryParserWithoutTestPaths) {
    const OrvexTestCommandLineParser other;
    const std::string& first = parser.getFirstTestPath();
    EXPECT_EQ(first, "");
    EXPECT_EQ(&other.getFirstTestPath(), &first);
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

TEST_F(Accessors, ConstructionAndDestructionLeaveOtherParsersAndTheEnvironmentAlone) {
    const Environment before = {{"ORVEX_TEST_ARGS", "-o file Suite"}, {"_ORVEX_TEST_ARGS_", "'"}};
    writeEnvironment(before);
    { const OrvexTestCommandLineParser shortLived; }
    expectState(newState, before);
}

}  // namespace
