#include "OrvexTestCommandLineParser.h"

#include "support/parser_test.h"

#include <string>
#include <type_traits>
#include <vector>

namespace {

using ::testing::ElementsAre;

static_assert(!std::is_polymorphic<OrvexTestCommandLineParser>::value, "the parser has no virtual functions");

using Accessors = ParserTest;

TEST_F(Accessors, AreEmptyBeforeAnyParse) {
    EXPECT_THAT(parser.getTestPaths(), ElementsAre());
    for (const auto& [name, value] : snapshotOf(parser)) {
        EXPECT_EQ(value, name == "helpRequested" || name == "waitBeforeExit" ? "no" : "") << name;
    }
}

TEST_F(Accessors, ReferencesShowTheResultsOfTheNextParse) {
    const std::string* const strings[] = {&parser.getApplicationName(), &parser.getXmlFilename(),
                                          &parser.getOutputFilename(), &parser.getTlList(),
                                          &parser.getTdcDravikXmlFilename()};
    const std::vector<std::string>& testPaths = parser.getTestPaths();
    const TestRunInformation& information = parser.getTestRunInformation();
    ASSERT_TRUE(parse(parser, words("app -x xml -o out -tl A -tdc_dxml tdc Suite")));
    Strings values;
    for (const std::string* string : strings) {
        values.push_back(*string);
    }
    EXPECT_THAT(values, ElementsAre("app", "xml", "out", "A", "tdc"));
    EXPECT_EQ(&parser.getTestPaths(), &testPaths);
    EXPECT_EQ(&parser.getFirstTestPath(), &testPaths.front());
    EXPECT_EQ(&parser.getTdcDravikXmlFilename(), &information.tdcDravikXmlFilename);
}

TEST_F(Accessors, FirstTestPathIsTheSameEmptyStringForEveryParserWithoutTestPaths) {
    const OrvexTestCommandLineParser other;
    EXPECT_EQ(parser.getFirstTestPath(), "");
    EXPECT_EQ(&other.getFirstTestPath(), &parser.getFirstTestPath());
}

}  // namespace
