#include "OrvexTestCommandLineParser.h"

#include "support/parser_test.h"

#include <stdexcept>
#include <string>

namespace {

using ::testing::ElementsAre;

using Parse = ParserTest;

TEST_F(Parse, FillsTheAccessorsAndSetsTheVariables) {
    set("_ORVEX_TEST_ARGS_", "-tdc_guid 1234");
    EXPECT_TRUE(parse(parser, words("mytest -tl DravikGigE:SocketDriver -packetsize 1500 -o result.xml "
                                    "TestSuiteGigE")));
    expectState(changed(parsedState, {{"applicationName", "mytest"},
                                      {"outputFilename", "result.xml"},
                                      {"testPaths", "TestSuiteGigE "},
                                      {"tlList", "DravikGigE:SocketDriver"},
                                      {"guid", "1234"},
                                      {"transportLayers", "DravikGigE:SocketDriver"}}),
                {{"_ORVEX_TEST_ARGS_", "-tdc_guid 1234"},
                 {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
                 {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver"},
                 {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                 {"ORVEX_GTC_USE_EXTRA_TL", "1"},
                 {"TEST_SESSION_GUID", "1234"},
                 {"TRANSPORT_LAYER", "DravikGigE:SocketDriver"}});
}

TEST_F(Parse, WithoutArgumentsNothingChangesAndOnlyZeroArgcReturnsTrue) {
    set("ORVEX_TEST_ARGS", "-o fromVariable SuiteA");
    const Environment before = readEnvironment();
    Arguments arguments(words("app -w Suite"));
    char** const null = nullptr;
    EXPECT_TRUE(parser.Parse(0, arguments.argv()));
    EXPECT_TRUE(parser.Parse(0, null));
    EXPECT_FALSE(parser.Parse(-1, arguments.argv()));
    EXPECT_FALSE(parser.Parse(-1, null));
    EXPECT_FALSE(parser.Parse(1, null));
    expectNothingParsed(before);
}

TEST_F(Parse, FailurePrintsNothing) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_FALSE(parse(parser, words("app -packetsize x")));
    set("ORVEX_TEST_ARGS", "'");
    EXPECT_FALSE(parse(parser, {"app"}));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(Parse, ReadsExactlyArgcArgumentsAndCopiesThem) {
    std::string application = "app";
    std::string suite = "Suite";
    std::string unread = "-w";
    char* argv[] = {application.data(), suite.data(), unread.data(), nullptr};
    EXPECT_TRUE(parser.Parse(2, argv));
    application.assign(3, '?');
    suite.assign(5, '?');
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_FALSE(parser.waitBeforeExit());
}

TEST_F(Parse, OnlyTheExactFlagNamesRequestHelpOrWaiting) {
    const struct {
        const char* arguments;
        bool help;
        bool wait;
    } rows[] = {
        {"app -?", true, false},        {"app -h", true, false}, {"app -H Suite", true, false},
        {"app --help -w", true, true},  {"app -w", false, true}, {"app -HELP -help=1 -w=1 -W", false, false},
        {"app help w ?", false, false},
    };
    for (const auto& row : rows) {
        OrvexTestCommandLineParser fresh;
        ASSERT_TRUE(parse(fresh, words(row.arguments)));
        EXPECT_EQ(fresh.helpRequested(), row.help) << row.arguments;
        EXPECT_EQ(fresh.waitBeforeExit(), row.wait) << row.arguments;
    }
}

TEST_F(Parse, NegativeNumbersAndEmptyStringsAreNotOptions) {
    EXPECT_TRUE(parse(parser, words("app -5 '' -o -6 -x -.x - Suite")));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("-5", "", "Suite"));
    EXPECT_EQ(parser.getOutputFilename(), "-6");
    EXPECT_EQ(parser.getXmlFilename(), "");
}

TEST_F(Parse, LongValuesAreKeptWhole) {
    const std::string value(1 << 20, 'v');
    set("ORVEX_TEST_ARGS", "-o '" + value + "'");
    EXPECT_TRUE(parse(parser, Strings{"app", "-tl", value, "-tdc_guid", value} + Strings(100000, "Suite")));
    // Not EXPECT_EQ, which would print a megabyte.
    EXPECT_TRUE(parser.getOutputFilename() == value);
    EXPECT_TRUE(parser.getTlList() == value);
    EXPECT_TRUE(get("TEST_SESSION_GUID") == value);
    EXPECT_TRUE(get("ORVEX_DEVICE_FILTER") == "DeviceClass=" + value);
    EXPECT_TRUE(parser.getTestPaths() == Strings(100000, "Suite"));
}

TEST_F(Parse, LastSourceWinsAndListsKeepTheOrderOfTheSources) {
    set("ORVEX_TEST_ARGS", "'Suite A' -tl W -p k=1 -o a -x a -w");
    set("_ORVEX_TEST_ARGS_", "SuiteC -tl Y -p k=3 -o 'my file' --help");
    EXPECT_TRUE(parse(parser, words("app SuiteB -tl X -p k=2 -o b -x b")));
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite A", "SuiteB", "SuiteC"));
    EXPECT_EQ(parser.getTlList(), "W,X,Y");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=1 k=2 k=3");
    EXPECT_EQ(parser.getOutputFilename(), "my file");
    EXPECT_EQ(parser.getXmlFilename(), "b");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_TRUE(parser.helpRequested());
}

TEST_F(Parse, ProgramNameIsScannedBeforeEachSource) {
    set("ORVEX_TEST_ARGS", "first");
    set("_ORVEX_TEST_ARGS_", "third");
    EXPECT_TRUE(parse(parser, words("-tl second")));
    EXPECT_EQ(parser.getTlList(), "first,second,third");
}

TEST_F(Parse, UnterminatedQuoteInTheFirstVariableFailsBeforeAnythingIsScanned) {
    set("ORVEX_TEST_ARGS", "-o a 'b");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parse(parser, words("app -x report SuiteB")));
    expectNothingParsed(before);
}

TEST_F(Parse, UnterminatedQuoteInTheSecondVariableFailsAfterTheCommandLineWasScanned) {
    set("ORVEX_TEST_ARGS", "SuiteA");
    set("_ORVEX_TEST_ARGS_", "SuiteC \"");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parse(parser, words("app -x report -tl A -h SuiteB")));
    expectState(newState, before);

    writeEnvironment({});
    EXPECT_TRUE(parse(parser, words("next SuiteD")));
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_EQ(parser.getXmlFilename(), "report");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteD"));
}

TEST_F(Parse, SecondParseScansAllSourcesAgainAndAddsToTheFirst) {
    set("ORVEX_TEST_ARGS", "-p k=0");
    EXPECT_TRUE(parse(parser, words("first S1 -o a -x a -h -tl A -p k=1")));
    EXPECT_TRUE(parse(parser, words("second S2 -o b -w -tl B -p k=2 -x")));
    EXPECT_EQ(parser.getApplicationName(), "first");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("S1", "S1", "S2"));
    EXPECT_EQ(parser.getOutputFilename(), "b");
    EXPECT_EQ(parser.getXmlFilename(), "a");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=0 k=1 k=0 k=2");
}

using VariableOfTheCaller = ParserTest;

TEST_F(VariableOfTheCaller, IsScannedAndTakesEffectInTheNextParse) {
    set("MY_ARGUMENTS", "-o 'my file' -tl A SuiteA");
    const Environment before = readEnvironment();
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "a 'b\" c");
    expectState(newState, before);
    EXPECT_TRUE(parse(parser, words("app -tl B SuiteB")));
    EXPECT_EQ(parser.getApplicationName(), "a 'b\" c");
    EXPECT_EQ(parser.getOutputFilename(), "my file");
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB"));
}

TEST_F(VariableOfTheCaller, IsNotScannedWithoutArguments) {
    writeEnvironment({{"EMPTY", ""}, {"SPACES", " \t\t "}});
    for (const char* variable : {static_cast<const char*>(nullptr), "", "UNDEFINED", "EMPTY", "SPACES"}) {
        parser.ParseArgsFromEnvironmentVariable(variable, "mytest");
    }
    expectNothingParsed(readEnvironment());
}

TEST_F(VariableOfTheCaller, ThrowsForAnUnterminatedQuoteAndScansNothing) {
    set("MY_ARGUMENTS", "-o file Suite x\"y");
    const Environment before = readEnvironment();
    EXPECT_THROW(parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest"), std::runtime_error);
    expectNothingParsed(before);
}

}  // namespace
