// The first, the second, the third ... allocation fails.

#include "fault/every_effect.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace {

using faults::Failure;
using faults::FaultyCall;
using faults::Times;

// A parse passes through a sequence of states. A failure leaves the parser in one of them, and a later
// failure never in an earlier one.
class Position {
public:
    explicit Position(const std::vector<Snapshot>& states) : states(states) {}

    // Returns "" and advances if the state is the current one or a later one; otherwise returns the
    // difference.
    std::string advanceTo(const Snapshot& state) {
        const auto current = states.begin() + static_cast<std::ptrdiff_t>(position);
        auto found = std::find(current, states.end(), state);
        if (found == states.end()) {
            return firstDifference(*current, state);
        }
        // Count an effect that changes nothing as done.
        while (found + 1 != states.end() && *(found + 1) == state) {
            ++found;
        }
        position = static_cast<std::size_t>(found - states.begin());
        seen.insert(position);
        return "";
    }

    std::size_t position = 0;
    std::set<std::size_t> seen;

private:
    const std::vector<Snapshot>& states;
};

class ParseOutOfMemory : public EveryEffectTest,
                         public ::testing::WithParamInterface<std::tuple<Form, bool>> {
protected:
    // Lets a new parser parse with this allocation failing, and then inspects it. False if there is no such
    // allocation.
    template <typename Inspect>
    bool parseWithFailing(std::size_t nth, Inspect inspect) {
        OrvexTestCommandLineParser parser;
        prepare(parser);
        PreparedCall call(callIn(std::get<Form>(GetParam()), programName + options));
        hasThrown = result = false;
        bool hasFailed = false;
        {
            const Failure failure(FaultyCall::Allocation, nth, failsOnce ? Times::Once : Times::FromThenOn);
            try {
                result = call.make(parser) != 0;
            } catch (const std::bad_alloc&) {
                hasThrown = true;
            }
            hasFailed = failure.happened();
        }
        inspect(parser);
        return hasFailed;
    }

    const bool failsOnce = std::get<bool>(GetParam());
    bool result = false;
    bool hasThrown = false;
};

INSTANTIATE_TEST_SUITE_P(EveryForm, ParseOutOfMemory,
                         ::testing::Combine(::testing::Values(Form::Narrow, Form::Wide, Form::Packed),
                                            ::testing::Bool()));

TEST_P(ParseOutOfMemory, KeepsTheEffectsBeforeTheFailure) {
    // If the references in the producer path cannot be expanded, they stay and the parse goes on.
    std::vector<Snapshot> statesWithoutExpansion = statesOfEffects();
    for (Snapshot& state : statesWithoutExpansion) {
        std::string& path = state.at("GENICAM_GENTL64_PATH");
        if (path != "/old") {
            path.replace(path.rfind("/old"), 4, "$(GENICAM_GENTL64_PATH)");
        }
    }
    Position effects(statesOfEffects());
    Position effectsWithoutExpansion(statesWithoutExpansion);
    Position scan(statesOfScan());
    Snapshot state;
    Snapshot stateLater;
    const auto inspect = [&](OrvexTestCommandLineParser& parser) {
        state = stateOf(parser);
        stateLater = stateAfterLaterParse(parser);
    };
    for (std::size_t nth = 1; parseWithFailing(nth, inspect); ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        const bool isExpanded = state.at("GENICAM_GENTL64_PATH").back() != ')';
        Position& line = isExpanded ? effects : effectsWithoutExpansion;
        ASSERT_EQ(line.advanceTo(state), "");
        ASSERT_EQ(scan.advanceTo(stateLater), "");
        ASSERT_EQ(result, !isExpanded && line.position == everyEffect.size());
        // The wide and the packed form allocate before the parse begins.
        const bool isBefore = std::get<Form>(GetParam()) != Form::Narrow && nth == 1;
        ASSERT_TRUE(isBefore <= hasThrown);
        ASSERT_TRUE(hasThrown <= (line.position == 0 && scan.position == 0));
    }
    EXPECT_TRUE(result);

    // Each field needs memory, so there was a failure before each.
    for (std::size_t i = 0; i < everyEffect.size(); ++i) {
        const Effect& effect = everyEffect[i];
        if (!effect.isVariable() && effect.value.find('~') != std::string::npos) {
            EXPECT_TRUE(effects.seen.count(i) + effectsWithoutExpansion.seen.count(i)) << effect.name;
        }
    }
    EXPECT_EQ(scan.position, statesOfScan().size() - 1);
    const bool goesOn = effectsWithoutExpansion.position == everyEffect.size();
    EXPECT_EQ(goesOn, failsOnce);
}

TEST_P(ParseOutOfMemory, LeaksNothing) {
    bool hasFailed = true;
    for (std::size_t nth = 1; hasFailed; ++nth) {
        const std::size_t before = faults::liveAllocations();
        hasFailed = parseWithFailing(nth, [](OrvexTestCommandLineParser& /*parser*/) {});
        ASSERT_EQ(faults::liveAllocations(), before) << "allocation " << nth;
        ASSERT_EQ(faults::liveResolvedPaths(), 0U) << "allocation " << nth;
    }
}

using OutOfMemory = EveryEffectTest;

TEST_F(OutOfMemory, ArgumentsOfAVariableAreKeptAsFarAsTheyWereScanned) {
    Position scan(statesOfScan());
    bool hasThrown = true;
    for (std::size_t nth = 1; hasThrown; ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        OrvexTestCommandLineParser fresh;
        prepare(fresh);
        hasThrown = false;
        try {
            const Failure failure(FaultyCall::Allocation, nth);
            fresh.ParseArgsFromEnvironmentVariable("ORVEX_TEST_ARGS", programName.front().c_str());
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        ASSERT_EQ(firstDifference(statesOfEffects().front(), stateOf(fresh)), "");
        ASSERT_EQ(scan.advanceTo(stateAfterLaterParse(fresh)), "");
    }
    EXPECT_EQ(scan.position, words(prepended).size() + 1);
}

TEST_F(OutOfMemory, ParseReturnsFalseForBadArgumentsEvenIfNothingCanBeAllocated) {
    OrvexTestCommandLineParser parser;
    char* arguments[] = {nullptr};
    const Failure failure(FaultyCall::Allocation, 1, Times::FromThenOn);
    EXPECT_FALSE(parser.Parse(-1, arguments));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
}

}  // namespace
