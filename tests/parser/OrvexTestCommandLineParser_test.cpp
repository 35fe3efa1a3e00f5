#include "OrvexTestCommandLineParser.h"

#include "parser/parser_test.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ::testing::ContainerEq;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

using Parse = ParserTest;

TEST_F(Parse, TakesArgumentsFromTheCommandLineAndTheVariablesAndSetsTheVariables) {
    set("_ORVEX_TEST_ARGS_", "-tdc_guid 1234");
    EXPECT_TRUE(parse(parser, words("mytest -tl DravikGigE:SocketDriver -packetsize 1500 -o result.xml "
                                    "TestSuiteGigE")));
    EXPECT_THAT(stateOf(parser),
                ContainerEq(changed(newState, {{"applicationName", "mytest"},
                                               {"outputFilename", "result.xml"},
                                               {"testPaths", "TestSuiteGigE "},
                                               {"firstTestPath", "TestSuiteGigE"},
                                               {"tlList", "DravikGigE:SocketDriver"},
                                               {"record.group", "orvex"},
                                               {"record.guid", "1234"},
                                               {"record.fixedZero", "0"},
                                               {"record.transportLayers", "DravikGigE:SocketDriver"}})));
    EXPECT_THAT(readEnvironment(), ContainerEq(Environment{{"_ORVEX_TEST_ARGS_", "-tdc_guid 1234"},
                                                           {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
                                                           {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver"},
                                                           {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                                                           {"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                                           {"TEST_SESSION_GUID", "1234"},
                                                           {"TRANSPORT_LAYER", "DravikGigE:SocketDriver"}}));
}

TEST_F(Parse, OfAProgramNameAloneDoesTheLaterSteps) {
    EXPECT_TRUE(parse(parser, {"./mytest"}));
    EXPECT_THAT(stateOf(parser), ContainerEq(changed(parsedState, {{"applicationName", "./mytest"}})));
    EXPECT_THAT(readEnvironment(), ContainerEq(Environment{{"ORVEX_GIGE_STREAM_GEVSCPS", "8192"},
                                                           {"ORVEX_GTC_USE_EXTRA_TL", "1"}}));
}

// Counts and vectors

TEST_F(Parse, OfNoArgumentsIsTrueAndDoesNothing) {
    set("ORVEX_TEST_ARGS", "-o fromVariable SuiteA");
    const Environment before = readEnvironment();
    Arguments arguments(words("app -w Suite"));
    EXPECT_TRUE(parser.Parse(0, arguments.argv()));
    EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
    expectNothingParsed(before);
}

TEST_F(Parse, OfANegativeCountIsFalseAndDoesNothing) {
    set("ORVEX_TEST_ARGS", "-o fromVariable SuiteA");
    const Environment before = readEnvironment();
    Arguments arguments(words("app -w Suite"));
    EXPECT_FALSE(parser.Parse(-1, arguments.argv()));
    EXPECT_FALSE(parser.Parse(std::numeric_limits<int>::min(), arguments.argv()));
    EXPECT_FALSE(parser.Parse(-1, static_cast<char**>(nullptr)));
    expectNothingParsed(before);
}

TEST_F(Parse, OfANullVectorIsFalseAndDoesNothing) {
    set("ORVEX_TEST_ARGS", "-o fromVariable SuiteA");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    expectNothingParsed(before);
}

TEST_F(Parse, PrintsNothingWhenItFails) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_FALSE(parse(parser, words("app -packetsize x")));
    set("ORVEX_TEST_ARGS", "'");
    EXPECT_FALSE(parse(parser, {"app"}));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(Parse, ReadsExactlyArgcArgumentsAndKeepsNoneOfThem) {
    std::string application = "app";
    std::string suite = "Suite";
    std::string unread = "-w";
    char* argv[] = {application.data(), suite.data(), unread.data(), nullptr};
    EXPECT_TRUE(parser.Parse(2, argv));
    EXPECT_EQ(argv[0] + std::string(argv[1]) + argv[2], "appSuite-w");
    application.assign(3, '?');
    suite.assign(5, '?');
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_FALSE(parser.waitBeforeExit());
}

// Options

TEST_F(Parse, RegisteredOptionsTakeTheNextArgument) {
    for (const std::string& name : words(
             "camemu o packetdelay packetsize socketbuffer x testname pcname osname ostype bit tl p tdc_dxml "
             "tdc_guid tdc_runname tdc_rundescription tdc_group tdc_userid tdc_product tdc_vcsbranch "
             "tdc_vcsrevision")) {
        OrvexTestCommandLineParser fresh;
        ASSERT_TRUE(parse(fresh, {"app", "-" + name, "1", "Suite"})) << name;
        ASSERT_THAT(fresh.getTestPaths(), ElementsAre("Suite")) << name;
    }
}

TEST_F(Parse, OtherOptionsLeaveTheNextArgumentAlone) {
    for (const std::string& name :
         words("? h H help w tdc_variant tdc_name tdc_pcname tdc_osname tdc_testname O X TL P tls unknown")) {
        OrvexTestCommandLineParser fresh;
        ASSERT_TRUE(parse(fresh, {"app", "-" + name, "1", "Suite"})) << name;
        ASSERT_THAT(fresh.getTestPaths(), ElementsAre("1", "Suite")) << name;
    }
}

TEST_F(Parse, CollectsOnlyTransportLayersAndProperties) {
    EXPECT_TRUE(parse(parser, words("app -tl A -p k=v -o a -x a -tl B,C -p l=w -o b -x=b -tl= -tl=D")));
    EXPECT_EQ(parser.getTlList(), "A,B,C,,D");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=v l=w");
    EXPECT_EQ(parser.getOutputFilename(), "b");
    EXPECT_EQ(parser.getXmlFilename(), "b");
}

TEST_F(Parse, FindsNoFileNameWhereThereIsNoValue) {
    EXPECT_TRUE(parse(parser, words("app -x -file.xml -o")));
    EXPECT_EQ(parser.getXmlFilename(), "");
    EXPECT_EQ(parser.getOutputFilename(), "");
    EXPECT_TRUE(parse(parser, words("app -x=-file.xml -o a -o")));
    EXPECT_EQ(parser.getXmlFilename(), "-file.xml");
    EXPECT_EQ(parser.getOutputFilename(), "a");
}

TEST_F(Parse, KnowsTheHelpAndWaitSwitches) {
    const struct {
        const char* arguments;
        bool help;
        bool wait;
        Texts testPaths;
    } rows[] = {
        {"app -?", true, false, {}},           {"app -h", true, false, {}},
        {"app -H", true, false, {}},           {"app -help", true, false, {}},
        {"app --help", true, false, {}},       {"app -h TestSuiteUsb", true, false, {"TestSuiteUsb"}},
        {"app -HELP", false, false, {}},       {"app -help=1", false, false, {}},
        {"app -?h -hh -wh", false, false, {}}, {"app help ? /?", false, false, {"help", "?", "/?"}},
        {"app -w", false, true, {}},           {"app -w TestSuiteUsb", false, true, {"TestSuiteUsb"}},
        {"app -w=1 -W", false, false, {}},     {"app -o -w", false, true, {}},
        {"app -w -h", true, true, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments);
        OrvexTestCommandLineParser fresh;
        ASSERT_TRUE(parse(fresh, words(row.arguments)));
        ASSERT_EQ(fresh.helpRequested(), row.help);
        ASSERT_EQ(fresh.waitBeforeExit(), row.wait);
        ASSERT_EQ(fresh.getTestPaths(), row.testPaths);
    }
}

TEST_F(Parse, FailsAtAMalformedNumberAfterTheFieldsWereAssigned) {
    for (const std::string name : {"camemu", "packetdelay", "packetsize", "socketbuffer"}) {
        SCOPED_TRACE(name);
        OrvexTestCommandLineParser fresh;
        ASSERT_FALSE(
            parse(fresh, words("app -" + name + " x1 -o out -x report -tl A -h -w -tdc_group g Suite")));
        ASSERT_THAT(stateOf(fresh), ContainerEq(changed(newState, {{"applicationName", "app"},
                                                                   {"outputFilename", "out"},
                                                                   {"xmlFilename", "report"},
                                                                   {"tlList", "A"},
                                                                   {"helpRequested", "yes"},
                                                                   {"waitBeforeExit", "yes"},
                                                                   {"testPaths", "Suite "},
                                                                   {"firstTestPath", "Suite"}})));
        ASSERT_EQ(get("TEST_SESSION_GROUP"), "(undefined)");
        ASSERT_EQ(get("TRANSPORT_LAYER"), "(undefined)");
    }
}

TEST_F(Parse, KeepsLongTextsWhole) {
    const std::string value(1 << 20, 'v');
    const std::string layer(1 << 20, 'l');
    set("ORVEX_TEST_ARGS", "-o '" + value + "'");
    Texts arguments(100000, "Suite");
    arguments.insert(arguments.begin(),
                     {"app", "-tl", layer, "-tl=" + layer, "-tdc_guid", value, "-" + value});
    EXPECT_TRUE(parse(parser, arguments));
    // Compared without the output of a megabyte for each failure.
    EXPECT_TRUE(parser.getOutputFilename() == value);
    EXPECT_TRUE(parser.getTlList() == layer + "," + layer);
    EXPECT_TRUE(parser.getTestRunInformation().guid == value);
    EXPECT_TRUE(get("TEST_SESSION_GUID") == value);
    EXPECT_TRUE(get("TRANSPORT_LAYER") == layer + " " + layer);
    EXPECT_TRUE(get("ORVEX_DEVICE_FILTER") == "DeviceClass=" + layer);
    EXPECT_TRUE(parser.getTestPaths() == Texts(100000, "Suite"));
}

// The two variables that a parse reads

TEST_F(Parse, TakesTheValueOfTheLastSource) {
    set("ORVEX_TEST_ARGS", "-o a -x a");
    EXPECT_TRUE(parse(parser, words("app -o b")));
    EXPECT_EQ(parser.getOutputFilename(), "b");
    EXPECT_EQ(parser.getXmlFilename(), "a");
    set("_ORVEX_TEST_ARGS_", "-o c");
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, words("app -o b -x b")));
    EXPECT_EQ(other.getOutputFilename(), "c");
    EXPECT_EQ(other.getXmlFilename(), "b");
}

TEST_F(Parse, CollectsInTheOrderOfTheSources) {
    set("ORVEX_TEST_ARGS", "SuiteA -tl W -p k=1 -w");
    set("_ORVEX_TEST_ARGS_", "SuiteC -tl Y -p k=3 --help");
    EXPECT_TRUE(parse(parser, words("app SuiteB -tl X -p k=2")));
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteC"));
    EXPECT_EQ(parser.getTlList(), "W,X,Y");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=1 k=2 k=3");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_TRUE(parser.helpRequested());
}

TEST_F(Parse, PutsTheProgramNameInFrontOfEverySource) {
    set("ORVEX_TEST_ARGS", "first");
    set("_ORVEX_TEST_ARGS_", "third");
    EXPECT_TRUE(parse(parser, words("-tl second")));
    EXPECT_EQ(parser.getTlList(), "first,second,third");
}

TEST_F(Parse, SplitsTheVariablesAtBlanksOutsideOfQuotesAndLeavesThemAsTheyAre) {
    set("ORVEX_TEST_ARGS", "-o \"my file.xml\" Suite\\ A '' \tS\nB abc\\");
    const std::string text = get("ORVEX_TEST_ARGS");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getOutputFilename(), "my file.xml");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite A", "", "S\nB", "abc\\"));
    EXPECT_EQ(get("ORVEX_TEST_ARGS"), text);
}

TEST_F(Parse, TakesBlankVariablesForNone) {
    set("ORVEX_TEST_ARGS", "");
    set("_ORVEX_TEST_ARGS_", " \t \t ");
    // In front of a scan, this program name would take a value.
    EXPECT_TRUE(parse(parser, words("-tl A Suite")));
    EXPECT_EQ(parser.getTlList(), "A");
    EXPECT_EQ(parser.getApplicationName(), "Suite");
    EXPECT_THAT(parser.getTestPaths(), IsEmpty());
}

TEST_F(Parse, FailsAtAnOpenQuoteInTheFirstVariableBeforeItScansTheCommandLine) {
    set("ORVEX_TEST_ARGS", "-o a 'b");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parse(parser, words("app -x report SuiteB")));
    expectNothingParsed(before);
}

TEST_F(Parse, FailsAtAnOpenQuoteInTheSecondVariableAfterItHasScannedTheCommandLine) {
    set("ORVEX_TEST_ARGS", "SuiteA");
    set("_ORVEX_TEST_ARGS_", "SuiteC \"");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parse(parser, words("app -x report -tl A -h SuiteB")));
    EXPECT_THAT(stateOf(parser), ContainerEq(newState));
    EXPECT_THAT(readEnvironment(), ContainerEq(before));

    writeEnvironment({});
    EXPECT_TRUE(parse(parser, words("next SuiteD")));
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_EQ(parser.getXmlFilename(), "report");
    EXPECT_EQ(parser.getTlList(), "A");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteD"));
}

TEST_F(Parse, NegativeNumbersAndEmptyStringsAreNotOptions) {
    EXPECT_TRUE(parse(parser, {"app", "-5", "", "-o", "-6", "-x", "-.x", "-", "Suite"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("-5", "", "Suite"));
    EXPECT_EQ(parser.getOutputFilename(), "-6");
    EXPECT_EQ(parser.getXmlFilename(), "");
}

// A second parse

TEST_F(Parse, ApplicationNameComesFromTheFirstParseThatScansAnything) {
    set("ORVEX_TEST_ARGS", "'");
    EXPECT_FALSE(parse(parser, words("first Suite")));
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, words("second")));
    EXPECT_EQ(parser.getApplicationName(), "second");
    EXPECT_THAT(parser.getTestPaths(), IsEmpty());
}

TEST_F(Parse, AddsToWhatAnEarlierOneScanned) {
    EXPECT_TRUE(parse(parser, words("first S1 -o a -x a -h -tl A -p k=1")));
    EXPECT_TRUE(parse(parser, words("second S2 -o b -w -tl B -p k=2 -x")));
    EXPECT_EQ(parser.getApplicationName(), "first");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2"));
    EXPECT_EQ(parser.getOutputFilename(), "b");
    EXPECT_EQ(parser.getXmlFilename(), "a");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=1 k=2");
    EXPECT_TRUE(parse(parser, words("third -o=")));
    EXPECT_EQ(parser.getOutputFilename(), "");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2", "S1", "S2"));
}

TEST_F(Parse, ReadsTheVariablesEachTime) {
    set("ORVEX_TEST_ARGS", "-tl A");
    set("_ORVEX_TEST_ARGS_", "-tl C");
    EXPECT_TRUE(parse(parser, words("app -tl B")));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getTlList(), "A,B,C,A,C");
}

TEST_F(Parse, CanCorrectANumberThatAnEarlierOneHasScanned) {
    EXPECT_FALSE(parse(parser, words("app -packetsize x -tdc_guid 1")));
    EXPECT_FALSE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getTestRunInformation().guid, "");
    EXPECT_TRUE(parse(parser, words("app -packetsize 1500")));
    EXPECT_EQ(parser.getTestRunInformation().guid, "1");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPS"), "1500");
}

// A variable of the caller's choice

TEST_F(Parse, FindsWhatWasScannedFromAnyVariable) {
    set("MY_ARGUMENTS", "-o 'my file' -tl A SuiteA");
    const Environment before = readEnvironment();
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "a 'b\" c");
    EXPECT_THAT(stateOf(parser), ContainerEq(newState));
    EXPECT_THAT(readEnvironment(), ContainerEq(before));
    EXPECT_TRUE(parse(parser, words("app -tl B SuiteB")));
    EXPECT_EQ(parser.getApplicationName(), "a 'b\" c");
    EXPECT_EQ(parser.getOutputFilename(), "my file");
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB"));
}

TEST_F(Parse, FindsNoProgramNameFromAVariableWithoutArguments) {
    set("EMPTY", "");
    set("BLANK", " \t\t ");
    for (const char* variable : {static_cast<const char*>(nullptr), "", "UNDEFINED", "EMPTY", "BLANK"}) {
        parser.ParseArgsFromEnvironmentVariable(variable, "mytest");
    }
    expectNothingParsed(readEnvironment());
}

TEST_F(Parse, FindsTheProgramNameFromAVariableWithAnEmptyArgument) {
    set("MY_ARGUMENTS", " '' ");
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getApplicationName(), "mytest");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre(""));
}

TEST_F(Parse, FindsNothingFromAVariableWhoseOpenQuoteWasThrown) {
    set("MY_ARGUMENTS", "-o file Suite x\"y");
    const Environment before = readEnvironment();
    try {
        parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Starting quote has no ending quote.");
    }
    expectNothingParsed(before);
}

}  // namespace
