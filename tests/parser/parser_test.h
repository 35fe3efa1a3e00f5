// A parser, and everything that it shows.

#ifndef ORVEX_TESTS_PARSER_TEST_H
#define ORVEX_TESTS_PARSER_TEST_H

#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

class ParserTest : public CleanEnvironmentTest {
protected:
    // The entries that snapshotOf gives for the parser, the two accessors that pick out a single text, and
    // the fields of the record as "record.group" and so on.
    static Snapshot stateOf(const OrvexTestCommandLineParser& parser) {
        Snapshot state = snapshotOf(parser);
        state["firstTestPath"] = parser.getFirstTestPath();
        state["reportFile"] = parser.getTdcDravikXmlFilename();
        for (const auto& [field, text] : snapshotOf(parser.getTestRunInformation())) {
            state["record." + field] = text;
        }
        return state;
    }

    // Expects a new parser in this environment. Whether something was scanned shows in a further parse.
    void expectNothingParsed(const Environment& environment) {
        EXPECT_THAT(stateOf(parser), ::testing::ContainerEq(newState));
        EXPECT_THAT(readEnvironment(), ::testing::ContainerEq(environment));
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, {"next"}));
        Snapshot next = changed(parsedState, {{"applicationName", "next"}});
        EXPECT_THAT(stateOf(parser), ::testing::ContainerEq(next));
    }

    OrvexTestCommandLineParser parser;
    const Snapshot newState = stateOf(OrvexTestCommandLineParser());
    // After a parse without options, but for the application name.
    const Snapshot parsedState = changed(
        newState, {{"record.group", "orvex"}, {"record.fixedZero", "0"}, {"record.transportLayers", "any"}});
};

#endif
