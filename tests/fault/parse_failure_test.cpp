// Parses that do everything, and parses that a bad argument or a function of the platform ends.

#include "fault/every_effect.h"
#include "support/arguments.h"
#include "support/known_options.h"

#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

using faults::CallLog;
using faults::Failure;
using faults::FaultyCall;
using faults::Times;
using faults::With;

class ParseFailure : public EveryEffectTest, public ::testing::WithParamInterface<Form> {
protected:
    // Lets a new parser parse the command line, with more arguments at its end, while there is a fault.
    template <typename MakeFault>
    bool parseWith(MakeFault makeFault, const Texts& more = {}) {
        parser = std::make_unique<OrvexTestCommandLineParser>();
        prepare(*parser);
        PreparedCall call(callIn(GetParam(), programName + options + more));
        [[maybe_unused]] const auto fault = makeFault();
        const CallLog log;
        const bool result = call.make(*parser) != 0;
        calls = log.calls;
        return result;
    }

    // That the parse kept exactly what it did before the effect, that its calls were those up to this one
    // (and what was thrown then), and that a later parse finds the arguments of all sources scanned.
    void expectEnd(const std::string& effect, const std::string& lastCall, const std::string& thrown = "",
                   const Texts& laterArguments = {}) {
        Texts expectedCalls;
        for (const std::string& call : everyCall()) {
            expectedCalls.push_back(call);
            if (call.compare(0, lastCall.size(), lastCall) == 0) {
                break;
            }
        }
        if (!thrown.empty()) {
            expectedCalls.push_back("throw " + thrown);
        }
        ASSERT_EQ(firstDifference(expectedCalls, calls), "");
        expectState(statesOfEffects().at(positionOf(effect)), laterArguments);
    }

    void expectState(const Snapshot& state, const Texts& laterArguments = {}) {
        ASSERT_EQ(firstDifference(state, stateOf(*parser)), "");
        ASSERT_EQ(firstDifference(statesOfScan().back(), stateAfterLaterParse(*parser, laterArguments)), "");
        ASSERT_EQ(faults::liveResolvedPaths(), 0U);
    }

    std::unique_ptr<OrvexTestCommandLineParser> parser;
    Texts calls;
};

INSTANTIATE_TEST_SUITE_P(EveryForm, ParseFailure, ::testing::ValuesIn(everyForm),
                         ::testing::PrintToStringParamName());

template <typename Function>
Texts callsOf(Function function) {
    const CallLog log;
    function();
    return log.calls;
}

int noFault() {
    return 0;
}

// All state but that of these variables, which keep their old values.
Snapshot without(const Texts& variables, Snapshot state) {
    for (const std::string& name : variables) {
        state[name] = "/old";
    }
    return state;
}

TEST(EveryEffect, IsThatOnEveryVariableInItsOrder) {
    ASSERT_EQ(firstDifference(Texts(std::begin(knownVariables), std::end(knownVariables)),
                              variables("ORVEX_GTC_USE_EXTRA_TL", "TRANSPORT_LAYER")),
              "");
}

TEST_P(ParseFailure, WithoutOneEveryEffectHappensInOneOrder) {
    EXPECT_TRUE(parseWith(noFault));
    EXPECT_EQ(firstDifference(everyCall(), calls), "");
    expectState(statesOfEffects().back());
}

TEST_P(ParseFailure, OfAVariableBeforeTheProducerPathEndsTheParse) {
    for (const std::string& name : variables("ORVEX_GTC_USE_EXTRA_TL", "TEST_PROPERTIES")) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(parseWith([&] { return With(faults::refusedVariables, {name}); }));
        ASSERT_NO_FATAL_FAILURE(expectEnd(name, "setenv " + name));
    }
}

TEST_P(ParseFailure, OfALaterVariableIsIgnored) {
    for (const std::string& name : variables("GENICAM_GENTL64_PATH", "TRANSPORT_LAYER")) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(parseWith([&] { return With(faults::refusedVariables, {name}); }));
        ASSERT_EQ(firstDifference(everyCall(), calls), "");
        ASSERT_NO_FATAL_FAILURE(expectState(without({name}, statesOfEffects().back())));
    }
}

TEST_P(ParseFailure, OfAllLaterVariablesIsIgnored) {
    for (const std::string& name : variables("GENICAM_GENTL64_PATH", "TRANSPORT_LAYER")) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(parseWith([&] {
            return Failure(FaultyCall::SetEnv, variables("ORVEX_GTC_USE_EXTRA_TL", name).size(),
                           Times::FromThenOn);
        }));
        ASSERT_EQ(firstDifference(everyCall(), calls), "");
        ASSERT_NO_FATAL_FAILURE(
            expectState(without(variables(name, "TRANSPORT_LAYER"), statesOfEffects().back())));
    }
}

TEST_P(ParseFailure, OfANumberEndsTheParseBeforeItsVariable) {
    const char* const rows[][3] = {
        {"-socketbuffer x", "ORVEX_GTC_USE_EXTRA_TL", "getenv _ORVEX_TEST_ARGS_"},
        {"-packetsize x", "ORVEX_GIGE_STREAM_GEVSCPS", "setenv ORVEX_GIGE_STREAMPARAMS"},
        {"-packetdelay x", "ORVEX_GIGE_STREAM_GEVSCPD", "setenv ORVEX_GIGE_STREAM_GEVSCPS"},
        {"-camemu x", "ORVEX_CAMEMU", "setenv ORVEX_GIGE_STREAM_GEVSCPD"},
        {"-camemu x -packetdelay x -packetsize x -socketbuffer x", "ORVEX_GTC_USE_EXTRA_TL",
         "getenv _ORVEX_TEST_ARGS_"},
    };
    for (const auto& [arguments, effect, lastCall] : rows) {
        SCOPED_TRACE(arguments);
        EXPECT_FALSE(parseWith(noFault, longWords(arguments)));
        ASSERT_NO_FATAL_FAILURE(expectEnd(
            effect, lastCall, "", longWords("-socketbuffer 1~ -packetsize 2~ -packetdelay 3~ -camemu 4~")));
    }
}

TEST_P(ParseFailure, OfTheDirectoryEndsTheParseBeforeTheProducerPath) {
    const auto expectDirectoryEnd = [this](const char* lastCall, const char* message) {
        expectEnd("GENICAM_GENTL64_PATH", lastCall,
                  std::string("runtime_error: OrvexTestCommandLineParser::") + message);
    };
    EXPECT_FALSE(parseWith([] { return Failure(FaultyCall::DlAddr); }));
    ASSERT_NO_FATAL_FAILURE(expectDirectoryEnd("dladdr", "getApplicationDir> dladdr() failed"));
    EXPECT_FALSE(parseWith([] { return Failure(FaultyCall::RealPath); }));
    ASSERT_NO_FATAL_FAILURE(expectDirectoryEnd("realpath", "getApplicationDir> realpath() failed"));
    EXPECT_FALSE(parseWith([] { return With(faults::resolvedPath, "nowhere"); }));
    ASSERT_NO_FATAL_FAILURE(expectDirectoryEnd("realpath", "Parse> can't query path"));
}

// ---- Before anything is done

class RefusedParse : public EveryEffectTest {
protected:
    RefusedParse() {
        prepare(parser);
    }

    // That nothing has changed, and that a later parse finds scanned what stands before this position.
    void expectNoEffect(const Environment& environment, std::size_t scanned = 0) {
        EXPECT_EQ(firstDifference(changed(statesOfEffects().front(), environment), stateOf(parser)), "");
        EXPECT_EQ(firstDifference(statesOfScan().at(scanned), stateAfterLaterParse(parser)), "");
    }

    OrvexTestCommandLineParser parser;
};

TEST_F(RefusedParse, OfNoArgumentsReadsAndChangesNothing) {
    char* arguments[] = {nullptr};
    const Texts calls = callsOf([&] {
        EXPECT_TRUE(parser.Parse(0, arguments));
        EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
        EXPECT_FALSE(parser.Parse(-1, arguments));
        EXPECT_FALSE(parser.Parse(-1, static_cast<char**>(nullptr)));
        EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    });
    EXPECT_EQ(calls, (Texts{"throw invalid_argument: argc must be at least 1",
                            "throw invalid_argument: argc must be at least 1",
                            "throw invalid_argument: argv must be valid"}));
    expectNoEffect({});
}

const char* const openQuote = "throw runtime_error: Starting quote has no ending quote.";

TEST_F(RefusedParse, OfAnOpenQuoteInFrontChangesNothing) {
    set("ORVEX_TEST_ARGS", "SuiteB -o other 'open");
    EXPECT_EQ(callsOf([&] { EXPECT_FALSE(parse(parser, programName + options)); }),
              (Texts{"getenv ORVEX_TEST_ARGS", openQuote}));
    expectNoEffect({{"ORVEX_TEST_ARGS", "SuiteB -o other 'open"}});
}

TEST_F(RefusedParse, OfAnOpenQuoteAtTheEndLeavesTheRestScanned) {
    set("_ORVEX_TEST_ARGS_", "SuiteB -o other \"open");
    EXPECT_EQ(callsOf([&] { EXPECT_FALSE(parse(parser, programName + options)); }),
              (Texts{"getenv ORVEX_TEST_ARGS", "getenv _ORVEX_TEST_ARGS_", openQuote}));
    expectNoEffect({{"_ORVEX_TEST_ARGS_", "SuiteB -o other \"open"}},
                   statesOfScan().size() - 1 - words(appended).size());
}

TEST_F(RefusedParse, OfAVariableWithoutANameReadsNothing) {
    const CallLog log;
    parser.ParseArgsFromEnvironmentVariable(nullptr, "app");
    parser.ParseArgsFromEnvironmentVariable("", "app");
    EXPECT_EQ(log.calls, Texts());
    parser.ParseArgsFromEnvironmentVariable("NAME", "app");
    EXPECT_EQ(log.calls, Texts{"getenv NAME"});
}

using PlainParse = CleanEnvironmentTest;

TEST_F(PlainParse, SetsTwoVariablesAndTheFirstOfThemOnce) {
    OrvexTestCommandLineParser parser;
    const CallLog log;
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(log.calls,
              (Texts{"getenv ORVEX_TEST_ARGS", "getenv _ORVEX_TEST_ARGS_", "getenv ORVEX_GTC_USE_EXTRA_TL",
                     "setenv ORVEX_GTC_USE_EXTRA_TL=1", "setenv ORVEX_GIGE_STREAM_GEVSCPS=8192",
                     "getenv ORVEX_TEST_ARGS", "getenv _ORVEX_TEST_ARGS_", "getenv ORVEX_GTC_USE_EXTRA_TL",
                     "setenv ORVEX_GIGE_STREAM_GEVSCPS=8192"}));
}

TEST_F(PlainParse, EndsWhenTheDefaultPacketSizeCannotBeSet) {
    const With refused(faults::refusedVariables, {"ORVEX_GIGE_STREAM_GEVSCPS"});
    OrvexTestCommandLineParser parser;
    EXPECT_FALSE(parse(parser, {"app"}));
    EXPECT_EQ(readEnvironment(), (Environment{{"ORVEX_GTC_USE_EXTRA_TL", "1"}}));
    EXPECT_EQ(parser.getTestRunInformation().group, "");
}

}  // namespace
