// The fixture of the tests that let one step of a parse fail and look at everything afterwards.

#ifndef ORVEX_TESTS_ORDER_OF_EFFECTS_TEST_H
#define ORVEX_TESTS_ORDER_OF_EFFECTS_TEST_H

#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"
#include "system/allocation_hook.h"
#include "system/every_option.h"
#include "system/interposed_functions.h"

#include <string>
#include <vector>

class OrderOfEffectsTest : public CleanEnvironmentTest {
protected:
    OrderOfEffectsTest() {
        writeEnvironment(environmentBefore);
        repair();
    }
    ~OrderOfEffectsTest() override {
        allocation::stopFailing();
        interposition() = {};
    }

    // Takes all faults away, forgets the calls so far, and places the SDK in /p.
    static void repair() {
        interposition() = {};
        interposition().resolvedPath = "/p/q";
    }

    bool parseArguments(const std::vector<std::string>& list) {
        interposition().variablesRead.clear();
        interposition().setenvCalls.clear();
        interposition().calls.clear();
        return parse(parser, list);
    }
    bool parseEveryOption() {
        return parseArguments(everyOption);
    }

    Snapshot fields() const {
        return snapshotOf(parser);
    }
    Snapshot record() const {
        return snapshotOf(parser.getTestRunInformation());
    }

    // The names of all variables in the order in which a parse sets them, with the search for the SDK's
    // directory at its place.
    static std::vector<std::string> allCalls() {
        return {"ORVEX_GTC_USE_EXTRA_TL",
                "ORVEX_DEVICE_FILTER",
                "ORVEX_GIGE_STREAMPARAMS",
                "ORVEX_GIGE_STREAM_GEVSCPS",
                "ORVEX_GIGE_STREAM_GEVSCPD",
                "ORVEX_CAMEMU",
                "TEST_PROPERTIES",
                "dladdr",
                "realpath",
                "GENICAM_GENTL64_PATH",
                "TEST_SESSION_GUID",
                "TEST_SESSION_NAME",
                "TEST_SESSION_DESCRIPTION",
                "TEST_SESSION_GROUP",
                "TEST_PRODUCT",
                "TEST_PRODUCT_VARIANT",
                "USER_UID",
                "VCS_REVISION",
                "VCS_BRANCH",
                "TRANSPORT_LAYER"};
    }
    static std::vector<std::string> firstCalls(std::size_t count) {
        std::vector<std::string> calls = allCalls();
        calls.resize(count);
        return calls;
    }

    OrvexTestCommandLineParser parser;
};

#endif
