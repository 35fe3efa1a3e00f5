#include "OrvexTestCommandLineParser.h"

#include "parser/parser_state.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

class ParseTest : public CleanEnvironmentTest {
protected:
    OrvexTestCommandLineParser parser;
};

TEST_F(ParseTest, ATestRunWithAllSources) {
    set("_ORVEX_TEST_ARGS_", "-tdc_guid 1234");
    EXPECT_TRUE(parse(parser, {"mytest", "-tl", "DravikGigE:SocketDriver", "-packetsize", "1500", "-o",
                               "result.xml", "TestSuiteGigE"}));
    EXPECT_EQ(readState(parser), Snapshot({
                                     {"applicationName", "mytest"},
                                     {"xmlFilename", ""},
                                     {"outputFilename", "result.xml"},
                                     {"testPaths", "TestSuiteGigE "},
                                     {"firstTestPath", "TestSuiteGigE"},
                                     {"tlList", "DravikGigE:SocketDriver"},
                                     {"helpRequested", "no"},
                                     {"waitBeforeExit", "no"},
                                     {"reportFile", ""},
                                     {"record.group", "orvex"},
                                     {"record.guid", "1234"},
                                     {"record.runName", ""},
                                     {"record.runDescription", ""},
                                     {"record.product", ""},
                                     {"record.fixedZero", "0"},
                                     {"record.userId", ""},
                                     {"record.vcsRevision", ""},
                                     {"record.vcsBranch", ""},
                                     {"record.secondVcsRevision", ""},
                                     {"record.secondVcsBranch", ""},
                                     {"record.pcName", ""},
                                     {"record.osName", ""},
                                     {"record.transportLayers", "DravikGigE:SocketDriver"},
                                     {"record.tdcDravikXmlFilename", ""},
                                     {"record.testName", ""},
                                     {"record.osType", ""},
                                     {"record.bit", ""},
                                 }));
    EXPECT_EQ(readEnvironment(), Environment({{"_ORVEX_TEST_ARGS_", "-tdc_guid 1234"},
                                              {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
                                              {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver"},
                                              {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                                              {"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                              {"TEST_SESSION_GUID", "1234"},
                                              {"TRANSPORT_LAYER", "DravikGigE:SocketDriver"}}));
}

TEST_F(ParseTest, AProgramNameAlone) {
    EXPECT_TRUE(parse(parser, {"./mytest"}));
    EXPECT_EQ(parser.getApplicationName(), "./mytest");
    EXPECT_THAT(parser.getTestPaths(), IsEmpty());
    EXPECT_FALSE(parser.helpRequested());
    EXPECT_FALSE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getOutputFilename(), "");
    EXPECT_EQ(parser.getXmlFilename(), "");
    EXPECT_EQ(parser.getTlList(), "");
    // The later steps have run as well.
    EXPECT_EQ(parser.getTestRunInformation().group, "orvex");
    EXPECT_EQ(parser.getTestRunInformation().fixedZero, "0");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "any");
    EXPECT_EQ(readEnvironment(),
              Environment({{"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}, {"ORVEX_GTC_USE_EXTRA_TL", "1"}}));
}

// Bad counts and vectors

class ParseRefusalTest : public ParseTest {
protected:
    ParseRefusalTest() {
        set("ORVEX_TEST_ARGS", "-o fromVariable SuiteA");
        set("_ORVEX_TEST_ARGS_", "-x fromVariable SuiteC");
    }

    // Expects that nothing was changed, nor scanned, which only the next parse would show.
    void expectNothingParsed() {
        EXPECT_EQ(readState(parser), readState(OrvexTestCommandLineParser()));
        EXPECT_EQ(readEnvironment(), Environment({{"ORVEX_TEST_ARGS", "-o fromVariable SuiteA"},
                                                  {"_ORVEX_TEST_ARGS_", "-x fromVariable SuiteC"}}));
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, {"next"}));
        EXPECT_EQ(parser.getApplicationName(), "next");
        EXPECT_EQ(parser.getOutputFilename(), "");
        EXPECT_EQ(parser.getXmlFilename(), "");
        EXPECT_THAT(parser.getTestPaths(), IsEmpty());
    }

    Arguments arguments{Texts{"app", "-w", "Suite"}};
};

TEST_F(ParseRefusalTest, ACountOfZeroIsTrueAndDoesNothing) {
    char* noArgument[] = {nullptr};
    EXPECT_TRUE(parser.Parse(0, arguments.argv()));
    EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
    EXPECT_TRUE(parser.Parse(0, noArgument));
    expectNothingParsed();
}

TEST_F(ParseRefusalTest, ANegativeCountIsFalseAndDoesNothing) {
    for (const int argc : {-1, -2, -3, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(argc);
        EXPECT_FALSE(parser.Parse(argc, arguments.argv()));
        EXPECT_FALSE(parser.Parse(argc, static_cast<char**>(nullptr)));
    }
    expectNothingParsed();
}

TEST_F(ParseRefusalTest, ANullVectorIsFalseAndDoesNothing) {
    for (const int argc : {1, 2, std::numeric_limits<int>::max()}) {
        SCOPED_TRACE(argc);
        EXPECT_FALSE(parser.Parse(argc, static_cast<char**>(nullptr)));
    }
    expectNothingParsed();
}

TEST_F(ParseRefusalTest, BadCountsAndVectorsKeepWhatAnEarlierParseLeft) {
    ASSERT_TRUE(parse(parser, {"app", "-tl", "A", "-h", "-tdc_guid", "1", "Suite"}));
    const Snapshot state = readState(parser);
    const Environment environment = readEnvironment();
    EXPECT_TRUE(parser.Parse(0, arguments.argv()));
    EXPECT_FALSE(parser.Parse(-1, arguments.argv()));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_EQ(readState(parser), state);
    EXPECT_EQ(readEnvironment(), environment);
}

TEST_F(ParseRefusalTest, NothingIsPrinted) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(parser.Parse(-1, arguments.argv()));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_FALSE(parse(parser, {"app", "-packetsize", "x"}));
    set("ORVEX_TEST_ARGS", "'");
    EXPECT_FALSE(parse(parser, {"app"}));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

// The argument vector

TEST_F(ParseTest, ReadsExactlyArgcArguments) {
    Arguments arguments({"app", "Suite", "-w", "Other"});
    EXPECT_TRUE(parser.Parse(2, arguments.argv()));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_FALSE(parser.waitBeforeExit());
}

TEST_F(ParseTest, KeepsNothingOfTheVectorAndDoesNotChangeIt) {
    std::string application = "app";
    std::string suite = "Suite";
    char* argv[] = {application.data(), suite.data(), nullptr};
    EXPECT_TRUE(parser.Parse(2, argv));
    EXPECT_EQ(argv[0], application.data());
    EXPECT_EQ(argv[1], suite.data());
    EXPECT_EQ(argv[2], nullptr);
    EXPECT_EQ(application, "app");
    EXPECT_EQ(suite, "Suite");
    application.assign(3, '?');
    suite.assign(5, '?');
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(ParseTest, AProgramNameThatLooksLikeAnOptionIsOne) {
    EXPECT_TRUE(parse(parser, {"-w", "First", "Second"}));
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getApplicationName(), "First");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Second"));
}

TEST_F(ParseTest, WithoutPositionalArgumentsTheApplicationNameIsEmpty) {
    EXPECT_TRUE(parse(parser, {"-w"}));
    EXPECT_EQ(parser.getApplicationName(), "");
    EXPECT_THAT(parser.getTestPaths(), IsEmpty());
}

// Registered options

TEST_F(ParseTest, RegisteredOptionsTakeTheNextArgument) {
    for (const std::string name : {"camemu",
                                   "o",
                                   "packetdelay",
                                   "packetsize",
                                   "socketbuffer",
                                   "x",
                                   "testname",
                                   "pcname",
                                   "osname",
                                   "ostype",
                                   "bit",
                                   "tl",
                                   "p",
                                   "tdc_dxml",
                                   "tdc_guid",
                                   "tdc_runname",
                                   "tdc_rundescription",
                                   "tdc_group",
                                   "tdc_userid",
                                   "tdc_product",
                                   "tdc_vcsbranch",
                                   "tdc_vcsrevision"}) {
        SCOPED_TRACE(name);
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "-" + name, "1", "Suite"}));
        EXPECT_THAT(fresh.getTestPaths(), ElementsAre("Suite"));
    }
}

TEST_F(ParseTest, OtherOptionsLeaveTheNextArgumentAlone) {
    for (const std::string name :
         {"?",        "h",          "H",          "help",         "w",   "tdc_variant",
          "tdc_name", "tdc_pcname", "tdc_osname", "tdc_testname", "tdc", "O",
          "X",        "TL",         "P",          "xo",           "tls", "t",
          "l",        "packet",     "unknown"}) {
        SCOPED_TRACE(name);
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "-" + name, "1", "Suite"}));
        EXPECT_THAT(fresh.getTestPaths(), ElementsAre("1", "Suite"));
        EXPECT_EQ(fresh.getOutputFilename(), "");
        EXPECT_EQ(fresh.getXmlFilename(), "");
        EXPECT_EQ(fresh.getTlList(), "");
    }
}

TEST_F(ParseTest, OnlyTransportLayersAndPropertiesKeepSeveralValues) {
    EXPECT_TRUE(
        parse(parser, {"app", "-tl", "A", "-p", "k=v", "-o", "a", "-tl", "B", "-p", "l=w", "-o", "b"}));
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=v l=w");
    EXPECT_EQ(parser.getOutputFilename(), "b");
}

TEST_F(ParseTest, TransportLayersAreJoinedByACommaAndNothingElse) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "A", "-tl", "", "-tl", "B,C", "-tl=D"}));
    EXPECT_EQ(parser.getTlList(), "A,,B,C,D");
}

TEST_F(ParseTest, EachNumericOptionReachesItsVariable) {
    EXPECT_TRUE(parse(
        parser, {"app", "-camemu", "1", "-packetdelay", "2", "-packetsize", "3", "-socketbuffer", "4"}));
    EXPECT_EQ(get("ORVEX_CAMEMU"), "1");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPD"), "2");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPS"), "3");
    EXPECT_EQ(get("ORVEX_GIGE_STREAMPARAMS"), "SocketBufferSize=4");
}

TEST_F(ParseTest, FileNames) {
    const struct {
        const char* name;
        Texts arguments;
        const char* output;
        const char* xml;
    } rows[] = {
        {"given in two arguments", {"-o", "a", "-x", "b"}, "a", "b"},
        {"given in one argument", {"-o=a", "-x=b"}, "a", "b"},
        {"two dashes", {"--o", "a", "--x=b"}, "a", "b"},
        {"the last one wins", {"-o", "a", "-o", "b", "-x=c", "-x", "d"}, "b", "d"},
        {"absent", {"Suite"}, "", ""},
        {"empty", {"-o=", "-x", ""}, "", ""},
        {"without a value at the end", {"-o", "-x"}, "", ""},
        {"without a value before an option", {"-x", "-file.xml", "-o", "a"}, "a", ""},
        {"a value that looks like an option", {"-x=-file.xml", "-o=-"}, "-", "-file.xml"},
        {"a number as value", {"-o", "-5", "-x", "-0.25"}, "-5", "-0.25"},
        {"a value and later none", {"-o", "a", "-x", "b", "-o", "-x"}, "a", "b"},
        {"a value with an equals sign", {"-o", "a=b", "-x=c=d"}, "a=b", "c=d"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        OrvexTestCommandLineParser fresh;
        Texts arguments = row.arguments;
        arguments.insert(arguments.begin(), "app");
        EXPECT_TRUE(parse(fresh, arguments));
        EXPECT_EQ(fresh.getOutputFilename(), row.output);
        EXPECT_EQ(fresh.getXmlFilename(), row.xml);
    }
}

TEST_F(ParseTest, HelpAndWaitSwitches) {
    const struct {
        Texts arguments;
        bool help;
        bool wait;
        Texts testPaths;
    } rows[] = {
        {{"-?"}, true, false, {}},
        {{"-h"}, true, false, {}},
        {{"-H"}, true, false, {}},
        {{"-help"}, true, false, {}},
        {{"--help"}, true, false, {}},
        {{"--?"}, true, false, {}},
        {{"---H"}, true, false, {}},
        {{"-h", "TestSuiteUsb"}, true, false, {"TestSuiteUsb"}},
        {{"-?", "-h", "-H", "-help"}, true, false, {}},
        {{"Suite", "-help"}, true, false, {"Suite"}},
        {{"-HELP"}, false, false, {}},
        {{"-Help"}, false, false, {}},
        {{"-hh"}, false, false, {}},
        {{"-?h"}, false, false, {}},
        {{"-help=1"}, false, false, {}},
        {{"-h="}, false, false, {}},
        {{"-?=1", "-H=1"}, false, false, {}},
        {{"-help=1", "-help"}, true, false, {}},
        {{"help", "?", "h"}, false, false, {"help", "?", "h"}},
        {{"/?", "+h"}, false, false, {"/?", "+h"}},
        {{"-w"}, false, true, {}},
        {{"--w"}, false, true, {}},
        {{"-w", "TestSuiteUsb"}, false, true, {"TestSuiteUsb"}},
        {{"-w=1"}, false, false, {}},
        {{"-W"}, false, false, {}},
        {{"-ww"}, false, false, {}},
        {{"-wh"}, false, false, {}},
        {{"-w", "-h"}, true, true, {}},
        {{"-o", "w"}, false, false, {}},
        {{"-o", "-w"}, false, true, {}},
        {{}, false, false, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments));
        OrvexTestCommandLineParser fresh;
        Texts arguments = row.arguments;
        arguments.insert(arguments.begin(), "app");
        EXPECT_TRUE(parse(fresh, arguments));
        EXPECT_EQ(fresh.helpRequested(), row.help);
        EXPECT_EQ(fresh.waitBeforeExit(), row.wait);
        EXPECT_EQ(fresh.getTestPaths(), row.testPaths);
        EXPECT_EQ(fresh.getApplicationName(), "app");
    }
}

TEST_F(ParseTest, AnUnregisteredNameHasAValueOnlyAfterAnEqualsSign) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_variant", "V"}));
    EXPECT_EQ(get("TEST_PRODUCT_VARIANT"), "(undefined)");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("V"));
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, {"app", "-tdc_variant=V"}));
    EXPECT_EQ(get("TEST_PRODUCT_VARIANT"), "V");
    EXPECT_THAT(other.getTestPaths(), IsEmpty());
}

// A malformed number

TEST_F(ParseTest, AMalformedNumberFailsAfterTheFieldsWereAssigned) {
    for (const std::string name : {"camemu", "packetdelay", "packetsize", "socketbuffer"}) {
        SCOPED_TRACE(name);
        OrvexTestCommandLineParser fresh;
        EXPECT_FALSE(parse(fresh, {"app", "-" + name, "x1", "-o", "out", "-x", "report", "-tl", "A", "-h",
                                   "-w", "-tdc_group", "group", "Suite"}));
        EXPECT_EQ(fresh.getApplicationName(), "app");
        EXPECT_EQ(fresh.getOutputFilename(), "out");
        EXPECT_EQ(fresh.getXmlFilename(), "report");
        EXPECT_EQ(fresh.getTlList(), "A");
        EXPECT_TRUE(fresh.helpRequested());
        EXPECT_TRUE(fresh.waitBeforeExit());
        EXPECT_THAT(fresh.getTestPaths(), ElementsAre("Suite"));
        // The later steps have not run.
        EXPECT_EQ(fresh.getTestRunInformation().group, "");
        EXPECT_EQ(fresh.getTestRunInformation().fixedZero, "");
        EXPECT_EQ(get("TEST_SESSION_GROUP"), "(undefined)");
        EXPECT_EQ(get("TRANSPORT_LAYER"), "(undefined)");
    }
}

TEST_F(ParseTest, AMalformedNumberKeepsTheVariablesThatWereSetBefore) {
    EXPECT_FALSE(parse(parser, {"app", "-packetdelay", "-5", "-tl", "A", "-p", "k=v"}));
    EXPECT_EQ(readEnvironment(), Environment({{"ORVEX_DEVICE_FILTER", "DeviceClass=A"},
                                              {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"},
                                              {"ORVEX_GTC_USE_EXTRA_TL", "1"}}));
}

}  // namespace
