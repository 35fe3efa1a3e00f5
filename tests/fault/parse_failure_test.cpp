// Complete parses, and parses cut short by a bad argument or a failing platform function.

#include "fault/every_effect.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>

namespace {

using faults::CallLog;
using faults::Failure;
using faults::FaultyCall;
using faults::Times;
using faults::With;

class ParseFailure : public EveryEffectTest {
protected:
    // Lets a new parser parse the command line, with more arguments at its end, while there is a fault.
    template <typename MakeFault>
    bool parseWith(MakeFault makeFault, const Strings& more = {}) {
        parser = std::make_unique<OrvexTestCommandLineParser>();
        prepare(*parser);
        Arguments arguments(programName + options + more);
        [[maybe_unused]] const auto fault = makeFault();
        const CallLog log;
        const bool result = parser->Parse(arguments.argc(), arguments.argv());
        calls = log.calls;
        return result;
    }

    // Returns "" if the parse stopped before this effect, lastCall (and then the exception) was the last
    // thing that it did, and a later parse shows that all sources were scanned; otherwise the first
    // difference.
    std::string differenceFromEnd(const std::string& effect, const std::string& lastCall,
                                  const std::string& thrown = "", const Strings& laterArguments = {}) {
        Strings expected = everyCall();
        const auto last = std::find_if(expected.begin(), expected.end(), [&](const std::string& call) {
            return call.compare(0, lastCall.size(), lastCall) == 0;
        });
        expected.erase(last + 1, expected.end());
        if (!thrown.empty()) {
            expected.push_back("throw " + thrown);
        }
        const auto position = std::find_if(everyEffect.begin(), everyEffect.end(),
                                           [&](const Effect& each) { return each.name == effect; });
        const auto index = static_cast<std::size_t>(position - everyEffect.begin());
        return firstDifference(expected, calls) + differenceFrom(statesOfEffects().at(index), laterArguments);
    }

    std::string differenceFrom(const Snapshot& state, const Strings& laterArguments = {}) {
        const std::string difference = firstDifference(state, stateOf(*parser));
        EXPECT_EQ(faults::liveResolvedPaths(), 0U);
        return difference +
               firstDifference(statesOfScan().back(), stateAfterLaterParse(*parser, laterArguments));
    }

    std::unique_ptr<OrvexTestCommandLineParser> parser;
    Strings calls;
};

int noFault() {
    return 0;
}

TEST(EveryEffect, CoversEachVariableInOrder) {
    EXPECT_EQ(firstDifference(Strings(std::begin(knownVariables), std::end(knownVariables)), variables()),
              "");
}

TEST_F(ParseFailure, WithoutAFaultEveryEffectHappensInOrder) {
    EXPECT_TRUE(parseWith(noFault));
    EXPECT_EQ(firstDifference(everyCall(), calls), "");
    EXPECT_EQ(differenceFrom(statesOfEffects().back()), "");
}

TEST_F(ParseFailure, SetenvFailureBeforeTheProducerPathEndsTheParse) {
    for (const std::string& name : variables()) {
        if (name == "GENICAM_GENTL64_PATH") {
            break;
        }
        EXPECT_FALSE(parseWith([&] { return With(faults::refusedVariables, {name}); })) << name;
        EXPECT_EQ(differenceFromEnd(name, "setenv " + name), "") << name;
    }
}

TEST_F(ParseFailure, LaterSetenvFailuresAreIgnored) {
    const Strings names = variables();
    const auto first = std::find(names.begin(), names.end(), "GENICAM_GENTL64_PATH");
    EXPECT_TRUE(parseWith([&] {
        return Failure(FaultyCall::SetEnv, static_cast<std::size_t>(first - names.begin()) + 1,
                       Times::FromThenOn);
    }));
    EXPECT_EQ(firstDifference(everyCall(), calls), "");
    Snapshot state = statesOfEffects().back();
    std::for_each(first, names.end(), [&](const std::string& name) { state[name] = "/old"; });
    EXPECT_EQ(differenceFrom(state), "");
}

TEST_F(ParseFailure, BadNumberEndsTheParseBeforeItsVariable) {
    const Strings names = variables();
    for (const KnownOption& option : numbers()) {
        EXPECT_FALSE(parseWith(noFault, {std::string("-") + option.name, "x"})) << option.name;
        const std::string variable = option.sdkVariable;
        // The socket buffer is checked before any variable is set.
        const bool isFirst = variable == "ORVEX_GIGE_STREAMPARAMS";
        const auto position = std::find(names.begin(), names.end(), variable);
        EXPECT_EQ(differenceFromEnd(isFirst ? names[0] : variable,
                                    isFirst ? "getenv _ORVEX_TEST_ARGS_" : "setenv " + *(position - 1), "",
                                    longWords(numberOptions())),
                  "")
            << option.name;
    }
}

TEST_F(ParseFailure, SdkDirectoryThatIsNotFoundEndsTheParseBeforeTheProducerPath) {
    const auto differenceWith = [this](auto makeFault, const char* lastCall, const char* message) {
        EXPECT_FALSE(parseWith(makeFault));
        return differenceFromEnd("GENICAM_GENTL64_PATH", lastCall,
                                 std::string("runtime_error: OrvexTestCommandLineParser::") + message);
    };
    EXPECT_EQ(differenceWith([] { return Failure(FaultyCall::DlAddr); }, "dladdr",
                             "getApplicationDir> dladdr() failed"),
              "");
    EXPECT_EQ(differenceWith([] { return Failure(FaultyCall::RealPath); }, "realpath",
                             "getApplicationDir> realpath() failed"),
              "");
    EXPECT_EQ(differenceWith([] { return With(faults::resolvedPath, "nowhere"); }, "realpath",
                             "Parse> can't query path"),
              "");
}

using CallsOfAParse = ParserTest;

TEST_F(CallsOfAParse, NothingIsReadOrSetWithoutArgumentsOrAVariableName) {
    char* arguments[] = {nullptr};
    const CallLog log;
    EXPECT_TRUE(parser.Parse(0, arguments));
    EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
    parser.ParseArgsFromEnvironmentVariable(nullptr, "app");
    parser.ParseArgsFromEnvironmentVariable("", "app");
    EXPECT_EQ(log.calls, Strings());
    EXPECT_FALSE(parser.Parse(-1, arguments));
    EXPECT_FALSE(parser.Parse(-1, static_cast<char**>(nullptr)));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
    EXPECT_EQ(log.calls, (Strings{"throw invalid_argument: argc must be at least 1",
                                  "throw invalid_argument: argc must be at least 1",
                                  "throw invalid_argument: argv must be valid"}));
}

}  // namespace
