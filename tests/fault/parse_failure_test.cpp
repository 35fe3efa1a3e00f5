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
using faults::With;

class ParseFailure : public EveryEffectTest {
protected:
    // Lets a new parser parse the command line while there is a fault.
    template <typename MakeFault>
    bool parseWith(MakeFault makeFault) {
        parser = std::make_unique<OrvexTestCommandLineParser>();
        prepare(*parser);
        Arguments arguments(programName + options);
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
                                  const std::string& thrown = "") {
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
        return firstDifference(expected, calls) + differenceFrom(statesOfEffects().at(index));
    }

    std::string differenceFrom(const Snapshot& state) {
        const std::string difference = firstDifference(state, stateOf(*parser));
        EXPECT_EQ(faults::liveResolvedPaths(), 0U);
        return difference + firstDifference(statesOfScan().back(), stateAfterLaterParse(*parser));
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

TEST_F(ParseFailure, SetenvFailureEndsTheParseOnlyBeforeTheProducerPath) {
    bool isIgnored = false;
    for (const std::string& name : variables()) {
        isIgnored = isIgnored || name == "GENICAM_GENTL64_PATH";
        EXPECT_EQ(parseWith([&] { return With(faults::refusedVariables, {name}); }), isIgnored) << name;
        const Snapshot complete = changed(statesOfEffects().back(), {{name, "/old"}});
        EXPECT_EQ(isIgnored ? firstDifference(everyCall(), calls) + differenceFrom(complete)
                            : differenceFromEnd(name, "setenv " + name),
                  "")
            << name;
    }
}

TEST_F(ParseFailure, SdkDirectoryThatIsNotFoundEndsTheParseBeforeTheProducerPath) {
    EXPECT_FALSE(parseWith([] { return Failure(FaultyCall::DlAddr); }));
    EXPECT_EQ(
        differenceFromEnd("GENICAM_GENTL64_PATH", "dladdr",
                          "runtime_error: OrvexTestCommandLineParser::getApplicationDir> dladdr() failed"),
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
