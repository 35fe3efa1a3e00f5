// Arguments that come from environment variables.

#include "OrvexTestCommandLineParser.h"

#include "parser/parser_state.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

class ArgumentVariablesTest : public CleanEnvironmentTest {
protected:
    OrvexTestCommandLineParser parser;
};

// The two variables that a parse reads

TEST_F(ArgumentVariablesTest, TheLastSourceOfASingleValueWins) {
    set("ORVEX_TEST_ARGS", "-o a -x a");
    EXPECT_TRUE(parse(parser, {"app", "-o", "b"}));
    EXPECT_EQ(parser.getOutputFilename(), "b");
    EXPECT_EQ(parser.getXmlFilename(), "a");

    set("_ORVEX_TEST_ARGS_", "-o c");
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, {"app", "-o", "b", "-x", "b"}));
    EXPECT_EQ(other.getOutputFilename(), "c");
    EXPECT_EQ(other.getXmlFilename(), "b");
}

TEST_F(ArgumentVariablesTest, TestPathsStandInTheOrderOfTheSources) {
    set("ORVEX_TEST_ARGS", "SuiteA");
    set("_ORVEX_TEST_ARGS_", "SuiteC");
    EXPECT_TRUE(parse(parser, {"app", "SuiteB"}));
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteC"));
    EXPECT_EQ(parser.getFirstTestPath(), "SuiteA");
}

TEST_F(ArgumentVariablesTest, TransportLayersAndPropertiesStandInTheOrderOfTheSources) {
    set("_ORVEX_TEST_ARGS_", "-tl Y -p k=3");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "X", "-p", "k=2"}));
    EXPECT_EQ(parser.getTlList(), "X,Y");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=2 k=3");

    set("ORVEX_TEST_ARGS", "-tl W -p k=1");
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, {"app", "-tl", "X", "-p", "k=2"}));
    EXPECT_EQ(other.getTlList(), "W,X,Y");
    EXPECT_EQ(get("TEST_PROPERTIES"), "k=1 k=2 k=3");
    EXPECT_EQ(get("TRANSPORT_LAYER"), "W X Y");
}

TEST_F(ArgumentVariablesTest, AFlagCountsInEverySource) {
    set("ORVEX_TEST_ARGS", "-w");
    set("_ORVEX_TEST_ARGS_", "--help");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_TRUE(parser.helpRequested());
}

TEST_F(ArgumentVariablesTest, AnOptionAtTheEndOfASourceTakesNoValueFromTheNext) {
    set("ORVEX_TEST_ARGS", "-o");
    set("_ORVEX_TEST_ARGS_", "Other");
    EXPECT_TRUE(parse(parser, {"app", "Suite", "-x"}));
    EXPECT_EQ(parser.getOutputFilename(), "");
    EXPECT_EQ(parser.getXmlFilename(), "");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite", "Other"));
}

TEST_F(ArgumentVariablesTest, TheProgramNameIsScannedInFrontOfEverySource) {
    set("ORVEX_TEST_ARGS", "first");
    set("_ORVEX_TEST_ARGS_", "third");
    EXPECT_TRUE(parse(parser, {"-tl", "second"}));
    EXPECT_EQ(parser.getTlList(), "first,second,third");
}

TEST_F(ArgumentVariablesTest, QuotesAndEscapesGroupArguments) {
    set("ORVEX_TEST_ARGS", "-o \"my file.xml\" Suite\\ A '' \t'Suite \"B\"'");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getOutputFilename(), "my file.xml");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite A", "", "Suite \"B\""));
}

TEST_F(ArgumentVariablesTest, ABackslashAtTheEndIsKept) {
    set("ORVEX_TEST_ARGS", "abc\\");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("abc\\"));
}

TEST_F(ArgumentVariablesTest, ANewlineStaysInItsArgument) {
    set("_ORVEX_TEST_ARGS_", "Suite\nA -o a\nb");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite\nA"));
    EXPECT_EQ(parser.getOutputFilename(), "a\nb");
}

TEST_F(ArgumentVariablesTest, TheVariablesAreLeftAsTheyAre) {
    set("ORVEX_TEST_ARGS", " -o 'a b' ");
    set("_ORVEX_TEST_ARGS_", "\\");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get("ORVEX_TEST_ARGS"), " -o 'a b' ");
    EXPECT_EQ(get("_ORVEX_TEST_ARGS_"), "\\");
}

TEST_F(ArgumentVariablesTest, BlankVariablesAreAsGoodAsNone) {
    for (const std::string blank : {"", " ", "\t", " \t \t "}) {
        SCOPED_TRACE(::testing::PrintToString(blank));
        set("ORVEX_TEST_ARGS", blank);
        set("_ORVEX_TEST_ARGS_", blank);
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "Suite"}));
        EXPECT_EQ(fresh.getApplicationName(), "app");
        EXPECT_THAT(fresh.getTestPaths(), ElementsAre("Suite"));
    }
}

// Quotes that are not closed

TEST_F(ArgumentVariablesTest, AnUnclosedQuoteInFrontFailsBeforeTheCommandLineIsScanned) {
    set("ORVEX_TEST_ARGS", "-o a 'b");
    set("_ORVEX_TEST_ARGS_", "SuiteC");
    const Environment environment = readEnvironment();
    EXPECT_FALSE(parse(parser, {"app", "-x", "report", "SuiteB"}));
    EXPECT_EQ(readState(parser), readState(OrvexTestCommandLineParser()));
    EXPECT_EQ(readEnvironment(), environment);

    writeEnvironment({});
    EXPECT_TRUE(parse(parser, {"next", "Suite"}));
    EXPECT_EQ(parser.getApplicationName(), "next");
    EXPECT_EQ(parser.getOutputFilename(), "");
    EXPECT_EQ(parser.getXmlFilename(), "");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(ArgumentVariablesTest, AnUnclosedQuoteBehindFailsAfterTheCommandLineIsScanned) {
    set("ORVEX_TEST_ARGS", "SuiteA");
    set("_ORVEX_TEST_ARGS_", "SuiteC \"");
    const Environment environment = readEnvironment();
    EXPECT_FALSE(parse(parser, {"app", "-x", "report", "-tl", "A", "-h", "SuiteB"}));
    EXPECT_EQ(readState(parser), readState(OrvexTestCommandLineParser()));
    EXPECT_EQ(readEnvironment(), environment);

    writeEnvironment({});
    EXPECT_TRUE(parse(parser, {"next", "SuiteD"}));
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_EQ(parser.getXmlFilename(), "report");
    EXPECT_EQ(parser.getTlList(), "A");
    EXPECT_TRUE(parser.helpRequested());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteD"));
}

TEST_F(ArgumentVariablesTest, ABackslashDoesNotCloseAQuote) {
    set("ORVEX_TEST_ARGS", "\"abc\\");
    EXPECT_FALSE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getApplicationName(), "");
}

// A variable of the caller's choosing

TEST_F(ArgumentVariablesTest, AnyVariableCanBeScanned) {
    set("MY_ARGUMENTS", "-o 'my file' -tl A SuiteA");
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "B", "SuiteB"}));
    EXPECT_EQ(parser.getApplicationName(), "mytest");
    EXPECT_EQ(parser.getOutputFilename(), "my file");
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB"));
}

TEST_F(ArgumentVariablesTest, ScanningChangesNoAccessorAndNoVariable) {
    set("MY_ARGUMENTS", "-o file -x report -tl A -h -w -tdc_guid 1 -camemu 2 Suite");
    const Environment environment = readEnvironment();
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest");
    EXPECT_EQ(readState(parser), readState(OrvexTestCommandLineParser()));
    EXPECT_EQ(readEnvironment(), environment);
}

TEST_F(ArgumentVariablesTest, TheProgramNameOfALaterScanIsDropped) {
    set("FIRST", "SuiteA");
    set("SECOND", "SuiteB");
    parser.ParseArgsFromEnvironmentVariable("FIRST", "one");
    parser.ParseArgsFromEnvironmentVariable("SECOND", "two");
    parser.ParseArgsFromEnvironmentVariable("FIRST", "three");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getApplicationName(), "one");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteA"));
}

TEST_F(ArgumentVariablesTest, TheProgramNameIsScannedAsItStands) {
    set("MY_ARGUMENTS", "value");
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "a 'b\" c");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getApplicationName(), "a 'b\" c");

    OrvexTestCommandLineParser other;
    other.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "-o");
    EXPECT_TRUE(parse(other, {"app"}));
    EXPECT_EQ(other.getApplicationName(), "app");
    EXPECT_EQ(other.getOutputFilename(), "value");

    OrvexTestCommandLineParser third;
    third.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "");
    EXPECT_TRUE(parse(third, {"app"}));
    EXPECT_EQ(third.getApplicationName(), "");
    EXPECT_THAT(third.getTestPaths(), ElementsAre("value"));
}

TEST_F(ArgumentVariablesTest, WithoutArgumentsTheProgramNameIsNotScannedEither) {
    set("EMPTY", "");
    set("SPACE", " ");
    set("BLANK", " \t\t ");
    set("MY", "Suite");
    const struct {
        const char* name;
        const char* variable;
    } rows[] = {
        {"null name", nullptr},    {"empty name", ""},      {"undefined", "UNDEFINED"},
        {"empty", "EMPTY"},        {"space", "SPACE"},      {"blank", "BLANK"},
        {"prefix of a name", "M"}, {"other letters", "my"}, {"name and more", "MY_"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        OrvexTestCommandLineParser fresh;
        EXPECT_NO_THROW(fresh.ParseArgsFromEnvironmentVariable(row.variable, "mytest"));
        EXPECT_TRUE(parse(fresh, {"app"}));
        EXPECT_EQ(fresh.getApplicationName(), "app");
        EXPECT_THAT(fresh.getTestPaths(), IsEmpty());
    }
}

TEST_F(ArgumentVariablesTest, EmptyQuotesAreAnArgument) {
    set("MY_ARGUMENTS", " '' ");
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getApplicationName(), "mytest");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre(""));
}

TEST_F(ArgumentVariablesTest, AnUnclosedQuoteIsThrownToTheCallerAndNothingIsScanned) {
    for (const std::string text : {"-o file Suite x\"y", "Suite 'a", "\"abc\\"}) {
        SCOPED_TRACE(text);
        set("MY_ARGUMENTS", text);
        OrvexTestCommandLineParser fresh;
        try {
            fresh.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest");
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Starting quote has no ending quote.");
        }
        EXPECT_TRUE(parse(fresh, {"app"}));
        EXPECT_EQ(fresh.getApplicationName(), "app");
        EXPECT_EQ(fresh.getOutputFilename(), "");
        EXPECT_THAT(fresh.getTestPaths(), IsEmpty());
    }
}

TEST_F(ArgumentVariablesTest, ABackslashAtTheEndIsNoError) {
    set("MY_ARGUMENTS", "Suite\\");
    EXPECT_NO_THROW(parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest"));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite\\"));
}

TEST_F(ArgumentVariablesTest, AScanAfterAParseShowsInTheNextParse) {
    EXPECT_TRUE(parse(parser, {"app", "SuiteA"}));
    const Snapshot state = readState(parser);
    set("MY_ARGUMENTS", "-o file SuiteB");
    parser.ParseArgsFromEnvironmentVariable("MY_ARGUMENTS", "mytest");
    EXPECT_EQ(readState(parser), state);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getOutputFilename(), "file");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteA", "SuiteB"));
}

}  // namespace
