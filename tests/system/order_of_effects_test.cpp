#include "system/order_of_effects_test.h"

#include <string>
#include <vector>

namespace {

// A step before the SDK's directory is looked for that ends a parse: how it is made to fail, and how many
// variables have been set by then.
struct EndingRow {
    const char* testName;
    std::vector<std::string> badOption;
    const char* refusedVariable;
    std::size_t variablesSet;
    std::size_t variablesTried;
};

const EndingRow endingRows[] = {
    {"BadSocketBuffer", {"-socketbuffer", "x"}, "", 0, 0},
    {"BadPacketSize", {"-packetsize", "x"}, "", 3, 3},
    {"BadPacketDelay", {"-packetdelay", "x"}, "", 4, 4},
    {"BadCameraEmulation", {"-camemu", "x"}, "", 5, 5},
    {"RefusedExtraTransportLayers", {}, "ORVEX_GTC_USE_EXTRA_TL", 0, 1},
    {"RefusedDeviceFilter", {}, "ORVEX_DEVICE_FILTER", 1, 2},
    {"RefusedStreamParameters", {}, "ORVEX_GIGE_STREAMPARAMS", 2, 3},
    {"RefusedPacketSize", {}, "ORVEX_GIGE_STREAM_GEVSCPS", 3, 4},
    {"RefusedPacketDelay", {}, "ORVEX_GIGE_STREAM_GEVSCPD", 4, 5},
    {"RefusedCameraEmulation", {}, "ORVEX_CAMEMU", 5, 6},
    {"RefusedProperties", {}, "TEST_PROPERTIES", 6, 7},
};

class EndedParse : public OrderOfEffectsTest, public ::testing::WithParamInterface<EndingRow> {
protected:
    bool parseWithFault() {
        interposition().refusedVariables = {GetParam().refusedVariable};
        return parseArguments(everyOptionAnd(GetParam().badOption));
    }
    static Variables variablesSet(int scans) {
        return firstOf(transportVariables(scans), GetParam().variablesSet);
    }
};

INSTANTIATE_TEST_SUITE_P(EachStep, EndedParse, ::testing::ValuesIn(endingRows),
                         [](const auto& row) { return std::string(row.param.testName); });

}  // namespace

TEST_P(EndedParse, KeepsExactlyWhatWasDoneBefore) {
    EXPECT_FALSE(parseWithFault());
    EXPECT_EQ(readEnvironment(), afterSetting(environmentBefore, {variablesSet(1)}));
    EXPECT_EQ(fields(), fieldsAfter(1, 1));
    EXPECT_EQ(record(), recordBefore());
    EXPECT_EQ(interposition().calls, firstCalls(GetParam().variablesTried));
}

TEST_P(EndedParse, SecondParseDoesEverything) {
    EXPECT_FALSE(parseWithFault());
    repair();
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(readEnvironment(),
              afterSetting(environmentBefore,
                           {transportVariables(2), producerPath("/x/gtl"), sessionVariables(2)}));
    EXPECT_EQ(fields(), fieldsAfter(2, 3));
    EXPECT_EQ(record(), recordAfter(2));
}

TEST_P(EndedParse, ThirdParseEndsAtTheSameStepAndKeepsTheRecord) {
    EXPECT_FALSE(parseWithFault());
    repair();
    EXPECT_TRUE(parseEveryOption());
    writeEnvironment(environmentBefore);
    EXPECT_FALSE(parseWithFault());
    EXPECT_EQ(readEnvironment(), afterSetting(environmentBefore, {variablesSet(3)}));
    EXPECT_EQ(fields(), fieldsAfter(3, 6));
    EXPECT_EQ(record(), recordAfter(2));
}

TEST_P(EndedParse, FaultInTheSecondParseKeepsTheRecordOfTheFirst) {
    EXPECT_TRUE(parseEveryOption());
    writeEnvironment(environmentBefore);
    EXPECT_FALSE(parseWithFault());
    EXPECT_EQ(readEnvironment(), afterSetting(environmentBefore, {variablesSet(2)}));
    EXPECT_EQ(fields(), fieldsAfter(2, 3));
    EXPECT_EQ(record(), recordAfter(1));
}

// A variable that is passed over when it cannot be set.
class PassedOverVariable : public OrderOfEffectsTest, public ::testing::WithParamInterface<const char*> {
protected:
    // The environment after this many scans, in which the producer path has had that old value.
    static Environment everythingSet(int scans, const std::string& oldProducerPath) {
        return afterSetting(environmentBefore, {transportVariables(scans), producerPath(oldProducerPath),
                                                sessionVariables(scans)});
    }
    static bool isProducerPath() {
        return std::string(GetParam()) == "GENICAM_GENTL64_PATH";
    }
};

INSTANTIATE_TEST_SUITE_P(EachVariable, PassedOverVariable,
                         ::testing::Values("GENICAM_GENTL64_PATH", "TEST_SESSION_GUID", "TEST_SESSION_NAME",
                                           "TEST_SESSION_DESCRIPTION", "TEST_SESSION_GROUP", "TEST_PRODUCT",
                                           "TEST_PRODUCT_VARIANT", "USER_UID", "VCS_REVISION", "VCS_BRANCH",
                                           "TRANSPORT_LAYER"),
                         [](const auto& row) { return std::string(row.param); });

TEST_P(PassedOverVariable, KeepsItsValueWhileAllOthersAreSet) {
    interposition().refusedVariables = {GetParam()};
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(readEnvironment(),
              changed(everythingSet(1, "/x/gtl"), {{GetParam(), environmentBefore.at(GetParam())}}));
    EXPECT_EQ(fields(), fieldsAfter(1, 1));
    EXPECT_EQ(record(), recordAfter(1));
    EXPECT_EQ(interposition().calls, allCalls());
}

TEST_P(PassedOverVariable, SecondParseSetsIt) {
    interposition().refusedVariables = {GetParam()};
    EXPECT_TRUE(parseEveryOption());
    repair();
    EXPECT_TRUE(parseEveryOption());
    const std::string oldProducerPath = isProducerPath() ? "/x/gtl" : producerDirectories + "/x/gtl";
    EXPECT_EQ(readEnvironment(), everythingSet(2, oldProducerPath));
    EXPECT_EQ(fields(), fieldsAfter(2, 3));
    EXPECT_EQ(record(), recordAfter(2));
}

TEST_P(PassedOverVariable, ThirdParseKeepsTheValueOfTheSecond) {
    interposition().refusedVariables = {GetParam()};
    EXPECT_TRUE(parseEveryOption());
    repair();
    EXPECT_TRUE(parseEveryOption());
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    set(GetParam(), "second");
    interposition().refusedVariables = {GetParam()};
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), changed(everythingSet(3, "/x/gtl"), {{GetParam(), "second"}}));
    EXPECT_EQ(fields(), fieldsAfter(3, 6));
    EXPECT_EQ(record(), recordAfter(3));
}

class OrderOfEffects : public OrderOfEffectsTest {};

TEST_F(OrderOfEffects, LibraryCallsTheInterposedFunctions) {
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(interposition().calls, allCalls());
    EXPECT_EQ(interposition().resolvedPathsGiven, 1);
    EXPECT_EQ(interposition().resolvedPathsFreed, 1);
}

TEST_F(OrderOfEffects, InterposedSetenvForwardsToThePlatform) {
    set("NAME", "text");
    EXPECT_EQ(interposition().calls.back(), "NAME");
    EXPECT_EQ(get("NAME"), "text");
    interposition().refusedVariables = {"NAME"};
    EXPECT_NE(setenv("NAME", "other", 1), 0);
    EXPECT_EQ(get("NAME"), "text");
}

TEST_F(OrderOfEffects, VariablesAreSetInOneOrderAndOverwritten) {
    EXPECT_TRUE(parseEveryOption());
    Variables expected = transportVariables(1);
    for (const Variables& group : {producerPath("/x/gtl"), sessionVariables(1)}) {
        expected.insert(expected.end(), group.begin(), group.end());
    }
    Variables set;
    for (const SetenvCall& call : interposition().setenvCalls) {
        set.emplace_back(call.name, call.value);
        EXPECT_EQ(call.overwrite, 1) << call.name;
    }
    EXPECT_EQ(set, expected);
}

TEST_F(OrderOfEffects, SuccessfulParseHasEveryEffect) {
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(readEnvironment(),
              afterSetting(environmentBefore,
                           {transportVariables(1), producerPath("/x/gtl"), sessionVariables(1)}));
    EXPECT_EQ(fields(), fieldsAfter(1, 1));
    EXPECT_EQ(record(), recordAfter(1));
}

TEST_F(OrderOfEffects, VariablesAreReadInOneOrder) {
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(interposition().variablesRead,
              (std::vector<std::string>{"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_", "ORVEX_GTC_USE_EXTRA_TL",
                                        "GENICAM_GENTL64_PATH"}));
}

TEST_F(OrderOfEffects, RefusedArgumentsAndNoArgumentsReadNoVariable) {
    interposition().variablesRead.clear();
    Arguments arguments(everyOption);
    EXPECT_TRUE(parser.Parse(0, arguments.argv()));
    EXPECT_FALSE(parser.Parse(-1, arguments.argv()));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_EQ(interposition().variablesRead, std::vector<std::string>());
}

TEST_F(OrderOfEffects, VariableWithoutANameIsNotRead) {
    interposition().variablesRead.clear();
    parser.ParseArgsFromEnvironmentVariable(nullptr, "app");
    parser.ParseArgsFromEnvironmentVariable("", "app");
    EXPECT_EQ(interposition().variablesRead, std::vector<std::string>());
    parser.ParseArgsFromEnvironmentVariable("NAME", "app");
    EXPECT_EQ(interposition().variablesRead, std::vector<std::string>{"NAME"});
}

TEST_F(OrderOfEffects, SuccessfulParseThrowsNothing) {
    interposition().thrown.clear();
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(interposition().thrown, std::vector<std::string>());
}

TEST_F(OrderOfEffects, RefusedArgumentsAreThrownAndCaught) {
    interposition().thrown.clear();
    Arguments arguments(everyOption);
    EXPECT_FALSE(parser.Parse(-1, arguments.argv()));
    EXPECT_FALSE(parser.Parse(-1, static_cast<char**>(nullptr)));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_EQ(interposition().thrown, (std::vector<std::string>{"invalid_argument: argc must be at least 1",
                                                                "invalid_argument: argc must be at least 1",
                                                                "invalid_argument: argv must be valid"}));
}

TEST_F(OrderOfEffects, UnclosedQuoteIsThrownAndCaught) {
    set("ORVEX_TEST_ARGS", "'open");
    interposition().thrown.clear();
    EXPECT_FALSE(parseEveryOption());
    EXPECT_EQ(interposition().thrown,
              std::vector<std::string>{"runtime_error: Starting quote has no ending quote."});
}

TEST_F(OrderOfEffects, WithoutOptionsTwoVariablesAreSet) {
    EXPECT_TRUE(parseArguments({"app"}));
    EXPECT_EQ(interposition().calls,
              (std::vector<std::string>{"ORVEX_GTC_USE_EXTRA_TL", "ORVEX_GIGE_STREAM_GEVSCPS"}));
}

TEST_F(OrderOfEffects, DefinedExtraTransportLayersAreNotSetAgain) {
    set("ORVEX_GTC_USE_EXTRA_TL", "");
    interposition().refusedVariables = {"ORVEX_GTC_USE_EXTRA_TL"};
    EXPECT_TRUE(parseArguments({"app"}));
    EXPECT_EQ(interposition().calls, std::vector<std::string>{"ORVEX_GIGE_STREAM_GEVSCPS"});
}

TEST_F(OrderOfEffects, RefusedDefaultPacketSizeEndsTheParse) {
    interposition().refusedVariables = {"ORVEX_GIGE_STREAM_GEVSCPS"};
    EXPECT_FALSE(parseArguments({"app"}));
    EXPECT_EQ(readEnvironment(), changed(environmentBefore, {{"ORVEX_GTC_USE_EXTRA_TL", "1"}}));
    EXPECT_EQ(record(), recordBefore());
}

TEST_F(OrderOfEffects, AllVariablesThatMayBePassedOverAtOnce) {
    for (const auto& [name, value] : sessionVariables(1)) {
        interposition().refusedVariables.insert(name);
    }
    interposition().refusedVariables.insert("GENICAM_GENTL64_PATH");
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), afterSetting(environmentBefore, {transportVariables(1)}));
    EXPECT_EQ(record(), recordAfter(1));
    EXPECT_EQ(interposition().calls, allCalls());
}

TEST_F(OrderOfEffects, CheckOfANumberComesBeforeItsSetting) {
    interposition().refusedVariables = {"ORVEX_GIGE_STREAM_GEVSCPD"};
    EXPECT_FALSE(parseArguments(everyOptionAnd({"-packetdelay", "x"})));
    EXPECT_EQ(interposition().calls, firstCalls(4));
}

TEST_F(OrderOfEffects, BadSocketBufferIsSeenBeforeAnyOtherFault) {
    interposition().refusedVariables = {"ORVEX_GTC_USE_EXTRA_TL"};
    EXPECT_FALSE(parseArguments(
        everyOptionAnd({"-camemu", "x", "-packetdelay", "x", "-packetsize", "x", "-socketbuffer", "x"})));
    EXPECT_EQ(interposition().calls, std::vector<std::string>());
    EXPECT_EQ(readEnvironment(), environmentBefore);
}

TEST_F(OrderOfEffects, UnclosedQuoteInThePrependedArgumentsChangesNothing) {
    set("ORVEX_TEST_ARGS", "SuiteB -o other.xml 'open");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), before);
    EXPECT_EQ(fields(), fieldsBefore());
    EXPECT_EQ(record(), recordBefore());
    EXPECT_EQ(interposition().calls, std::vector<std::string>());
}

TEST_F(OrderOfEffects, UnclosedQuoteInThePrependedArgumentsLeavesNothingScanned) {
    set("ORVEX_TEST_ARGS", "SuiteB -o other.xml 'open");
    EXPECT_FALSE(parseEveryOption());
    writeEnvironment(environmentBefore);
    EXPECT_TRUE(parseArguments({"second"}));
    EXPECT_EQ(fields(), changed(fieldsBefore(), {{"applicationName", "second"}}));
    EXPECT_EQ(record(),
              changed(recordBefore(), {{"group", "orvex"}, {"fixedZero", "0"}, {"transportLayers", "any"}}));
    EXPECT_EQ(readEnvironment(), changed(environmentBefore, {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                                             {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}}));
}

TEST_F(OrderOfEffects, UnclosedQuoteInThePrependedArgumentsOfALaterParseKeepsEverything) {
    EXPECT_TRUE(parseEveryOption());
    set("ORVEX_TEST_ARGS", "\"");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), before);
    EXPECT_EQ(fields(), fieldsAfter(1, 1));
    EXPECT_EQ(record(), recordAfter(1));
    writeEnvironment(environmentBefore);
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(fields(), fieldsAfter(2, 3));
    EXPECT_EQ(record(), recordAfter(2));
}

TEST_F(OrderOfEffects, UnclosedQuoteInTheAppendedArgumentsChangesNoField) {
    set("_ORVEX_TEST_ARGS_", "SuiteB -o other.xml 'open");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), before);
    EXPECT_EQ(fields(), fieldsBefore());
    EXPECT_EQ(record(), recordBefore());
    EXPECT_EQ(interposition().calls, std::vector<std::string>());
}

TEST_F(OrderOfEffects, UnclosedQuoteInTheAppendedArgumentsLeavesTheCommandLineScanned) {
    set("_ORVEX_TEST_ARGS_", "SuiteB -o other.xml 'open");
    EXPECT_FALSE(parseEveryOption());
    writeEnvironment(environmentBefore);
    EXPECT_TRUE(parseArguments({"second", "SuiteC"}));
    EXPECT_EQ(fields(), changed(fieldsAfter(1, 1), {{"testPaths", "SuiteA SuiteC "}}));
    EXPECT_EQ(record(), recordAfter(1));
    EXPECT_EQ(readEnvironment(),
              afterSetting(environmentBefore,
                           {transportVariables(1), producerPath("/x/gtl"), sessionVariables(1)}));
}

TEST_F(OrderOfEffects, UnclosedQuoteInTheAppendedArgumentsOfALaterParseKeepsEverything) {
    EXPECT_TRUE(parseEveryOption());
    set("_ORVEX_TEST_ARGS_", "\"");
    const Environment before = readEnvironment();
    EXPECT_FALSE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), before);
    EXPECT_EQ(fields(), fieldsAfter(1, 1));
    EXPECT_EQ(record(), recordAfter(1));
    writeEnvironment(environmentBefore);
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(fields(), fieldsAfter(3, 4));
    EXPECT_EQ(record(), recordAfter(3));
}

TEST_F(OrderOfEffects, UnclosedQuoteInTheAppendedArgumentsLeavesThePrependedOnesScanned) {
    set("ORVEX_TEST_ARGS", "SuiteB -o other.xml");
    set("_ORVEX_TEST_ARGS_", "'open");
    EXPECT_FALSE(parseArguments({"app"}));
    EXPECT_EQ(fields(), fieldsBefore());
    writeEnvironment(environmentBefore);
    EXPECT_TRUE(parseArguments({"app"}));
    EXPECT_EQ(fields(), changed(fieldsBefore(), {{"applicationName", "app"},
                                                 {"testPaths", "SuiteB "},
                                                 {"outputFilename", "other.xml"}}));
}

TEST_F(OrderOfEffects, RefusedArgumentsChangeNothing) {
    set("ORVEX_TEST_ARGS", "SuiteB -o other.xml");
    const Environment before = readEnvironment();
    interposition().calls.clear();
    Arguments arguments(everyOption);
    EXPECT_TRUE(parser.Parse(0, arguments.argv()));
    EXPECT_FALSE(parser.Parse(-1, arguments.argv()));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_EQ(readEnvironment(), before);
    EXPECT_EQ(fields(), fieldsBefore());
    EXPECT_EQ(record(), recordBefore());
    EXPECT_EQ(interposition().calls, std::vector<std::string>());
    writeEnvironment(environmentBefore);
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(fields(), fieldsAfter(1, 1));
}
