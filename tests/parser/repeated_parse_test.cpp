// Several parses on one object, and large inputs.

#include "OrvexTestCommandLineParser.h"

#include "parser/parser_state.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

using Texts = std::vector<std::string>;

class RepeatedParseTest : public CleanEnvironmentTest {
protected:
    OrvexTestCommandLineParser parser;
};

TEST_F(RepeatedParseTest, TheSecondParseAppendsAllTestPathsAgain) {
    EXPECT_TRUE(parse(parser, {"app", "S1", "S2"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S2"));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S2", "S1", "S2"));
}

TEST_F(RepeatedParseTest, TheThirdParseSeesWhatBothOthersScanned) {
    EXPECT_TRUE(parse(parser, {"app", "S1"}));
    EXPECT_TRUE(parse(parser, {"app", "S2"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2"));
    EXPECT_TRUE(parse(parser, {"app", "S3"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2", "S1", "S2", "S3"));
}

TEST_F(RepeatedParseTest, TheFirstProgramNameStays) {
    EXPECT_TRUE(parse(parser, {"first"}));
    EXPECT_TRUE(parse(parser, {"second", "S"}));
    EXPECT_EQ(parser.getApplicationName(), "first");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S"));
}

TEST_F(RepeatedParseTest, ValuesAndFlagsStayUntilTheyAreGivenAnew) {
    EXPECT_TRUE(parse(parser, {"app", "-o", "a", "-x", "a", "-h", "-tl", "A", "-p", "k=1"}));
    EXPECT_TRUE(parse(parser, {"app", "-o", "b", "-w", "-tl", "B", "-p", "k=2"}));
    EXPECT_EQ(parser.getOutputFilename(), "b");
    EXPECT_EQ(parser.getXmlFilename(), "a");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "A,B");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=1 k=2");
    EXPECT_TRUE(parse(parser, {"app", "-o=", "-x"}));
    EXPECT_EQ(parser.getOutputFilename(), "");
    EXPECT_EQ(parser.getXmlFilename(), "a");
}

TEST_F(RepeatedParseTest, TheVariablesAreReadEachTime) {
    set("ORVEX_TEST_ARGS", "-tl A");
    set("_ORVEX_TEST_ARGS_", "-tl C");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "B"}));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getTlList(), "A,B,C,A,C");
}

TEST_F(RepeatedParseTest, AfterAMalformedNumberTheNextParseCorrectsIt) {
    EXPECT_FALSE(parse(parser, {"app", "-packetsize", "x", "-o", "a", "-tdc_guid", "1", "S1"}));
    EXPECT_EQ(parser.getTestRunInformation().guid, "");
    EXPECT_EQ(get("TEST_SESSION_GUID"), "(undefined)");

    // The malformed value was scanned, so it counts again.
    EXPECT_FALSE(parse(parser, {"app", "S2"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2"));
    EXPECT_EQ(parser.getTestRunInformation().guid, "");

    EXPECT_TRUE(parse(parser, {"app", "-packetsize", "1500", "-x", "b"}));
    EXPECT_EQ(parser.getOutputFilename(), "a");
    EXPECT_EQ(parser.getXmlFilename(), "b");
    EXPECT_EQ(parser.getTestRunInformation().guid, "1");
    EXPECT_EQ(get("TEST_SESSION_GUID"), "1");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPS"), "1500");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2", "S1", "S2"));
}

TEST_F(RepeatedParseTest, AFailureAfterASuccessKeepsTheRecord) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "1", "-tdc_group", "g", "-tl", "A"}));
    EXPECT_FALSE(
        parse(parser, {"app", "-tdc_guid", "2", "-tdc_group", "h", "-tl", "B", "-camemu", "x", "-w"}));
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_EQ(parser.getTestRunInformation().guid, "1");
    EXPECT_EQ(parser.getTestRunInformation().group, "g");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "A");
    EXPECT_EQ(get("TEST_SESSION_GUID"), "1");
    EXPECT_EQ(get("TRANSPORT_LAYER"), "A");
}

TEST_F(RepeatedParseTest, AnUnclosedQuoteAfterASuccessChangesNothing) {
    EXPECT_TRUE(parse(parser, {"app", "-o", "a", "-tl", "A", "-tdc_guid", "1", "S1"}));
    set("ORVEX_TEST_ARGS", "'");
    const Snapshot state = readState(parser);
    const Environment environment = readEnvironment();
    EXPECT_FALSE(parse(parser, {"app", "-o", "b", "-tl", "B", "-w", "S2"}));
    EXPECT_EQ(readState(parser), state);
    EXPECT_EQ(readEnvironment(), environment);

    set("ORVEX_TEST_ARGS", "");
    EXPECT_TRUE(parse(parser, {"app", "S3"}));
    EXPECT_EQ(parser.getOutputFilename(), "a");
    EXPECT_EQ(parser.getTlList(), "A");
    EXPECT_FALSE(parser.waitBeforeExit());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S3"));
}

TEST_F(RepeatedParseTest, AnUnclosedQuoteBehindScansTheCommandLineForTheNextParse) {
    EXPECT_TRUE(parse(parser, {"app", "-o", "a", "S1"}));
    set("_ORVEX_TEST_ARGS_", "-w '");
    const Snapshot state = readState(parser);
    const Environment environment = readEnvironment();
    EXPECT_FALSE(parse(parser, {"app", "-o", "b", "S2"}));
    EXPECT_EQ(readState(parser), state);
    EXPECT_EQ(readEnvironment(), environment);

    set("_ORVEX_TEST_ARGS_", "");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getOutputFilename(), "b");
    EXPECT_FALSE(parser.waitBeforeExit());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2"));
}

TEST_F(RepeatedParseTest, AllThreeFormsParseOnOneObject) {
    wchar_t wideName[] = L"app";
    wchar_t wideSuite[] = L"S2";
    wchar_t* wide[] = {wideName, wideSuite};
    char packed[] = "app\0S3";
    EXPECT_TRUE(parse(parser, {"app", "S1"}));
    EXPECT_TRUE(parser.Parse(2, wide));
    EXPECT_TRUE(parser.Parse(2, packed));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2", "S1", "S2", "S3"));
}

// Large inputs

using LargeInputTest = RepeatedParseTest;

TEST_F(LargeInputTest, ValuesOfAMegabyte) {
    const std::string value(1 << 20, 'v');
    const std::string suite(1 << 20, 's');
    const std::string name(1 << 20, 'n');
    EXPECT_TRUE(parse(parser, {"app", "-o", value, "-x=" + value, "-tl", value, "-tl", value, "-tdc_guid",
                               value, "-p", value, "-" + name, "-" + name + "=" + value, suite}));
    // Compared without the output of a megabyte for each failure.
    EXPECT_TRUE(parser.getOutputFilename() == value);
    EXPECT_TRUE(parser.getXmlFilename() == value);
    EXPECT_TRUE(parser.getTlList() == value + "," + value);
    EXPECT_TRUE(parser.getTestRunInformation().guid == value);
    EXPECT_TRUE(get("TEST_SESSION_GUID") == value);
    EXPECT_TRUE(get("TRANSPORT_LAYER") == value + " " + value);
    EXPECT_TRUE(get("ORVEX_DEVICE_FILTER") == "DeviceClass=" + value);
    EXPECT_TRUE(get("TEST_PROPERTIES") == value);
    EXPECT_TRUE(parser.getTestPaths() == Texts{suite});
}

TEST_F(LargeInputTest, AProgramNameOfAMegabyte) {
    const std::string name(1 << 20, 'n');
    EXPECT_TRUE(parse(parser, {name}));
    EXPECT_TRUE(parser.getApplicationName() == name);
}

TEST_F(LargeInputTest, AnArgumentVariableOfAMegabyte) {
    const std::string value(1 << 20, 'v');
    set("ORVEX_TEST_ARGS", "-o '" + value + "' -x \"" + value + "\" " + value);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_TRUE(parser.getOutputFilename() == value);
    EXPECT_TRUE(parser.getXmlFilename() == value);
    EXPECT_TRUE(parser.getTestPaths() == Texts{value});
}

TEST_F(LargeInputTest, AHundredThousandTestPaths) {
    Texts list = {"app"};
    for (int i = 1; i < 100000; ++i) {
        list.push_back("Suite" + std::to_string(i));
    }
    EXPECT_TRUE(parse(parser, list));
    EXPECT_TRUE(parser.getTestPaths() == Texts(list.begin() + 1, list.end()));
    EXPECT_EQ(parser.getFirstTestPath(), "Suite1");
}

TEST_F(LargeInputTest, AHundredThousandOptions) {
    Texts list = {"app"};
    std::string joined = "A";
    for (int i = 0; i < 24999; ++i) {
        list.insert(list.end(), {"-tl", "A", "-o", std::to_string(i)});
        joined += i == 0 ? "" : ",A";
    }
    list.insert(list.end(), {"-w", "-w", "-h"});
    ASSERT_EQ(list.size(), 100000U);
    EXPECT_TRUE(parse(parser, list));
    EXPECT_TRUE(parser.getTlList() == joined);
    EXPECT_EQ(parser.getOutputFilename(), "24998");
    EXPECT_EQ(get("ORVEX_DEVICE_FILTER"), "DeviceClass=A");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_TRUE(parser.helpRequested());
}

TEST_F(LargeInputTest, AHundredThousandFlags) {
    Texts list(100000, "-w");
    list.front() = "app";
    EXPECT_TRUE(parse(parser, list));
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_FALSE(parser.helpRequested());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre());
}

}  // namespace
