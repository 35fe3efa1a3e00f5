// A test with a parser in an empty environment.

#ifndef ORVEX_TESTS_PARSER_TEST_H
#define ORVEX_TESTS_PARSER_TEST_H

#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// The variables after a parse without options.
inline const Environment defaultVariables = {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                             {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}};

class ParserTest : public CleanEnvironmentTest {
protected:
    // Expects a new parser in this environment. A further parse shows whether anything was scanned.
    void expectNothingParsed(const Environment& environment) {
        expectState(newState, environment);
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, {"next"}));
        expectState(changed(parsedState, {{"applicationName", "next"}}), defaultVariables);
    }

    void expectState(const Snapshot& state, const Environment& environment) {
        EXPECT_THAT(snapshotOf(parser), ::testing::ContainerEq(state));
        EXPECT_THAT(readEnvironment(), ::testing::ContainerEq(environment));
    }

    OrvexTestCommandLineParser parser;
    const Snapshot newState = snapshotOf(OrvexTestCommandLineParser());
    // After a parse without options, except for the application name.
    const Snapshot parsedState =
        changed(newState, {{"group", "orvex"}, {"fixedZero", "0"}, {"transportLayers", "any"}});
};

#endif
