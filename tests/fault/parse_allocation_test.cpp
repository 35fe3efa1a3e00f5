// Parses in which the first, the second, the third ... allocation fails, until one needs no more.

#include "OrvexTestCommandLineParser.h"

#include "fault/argument_forms.h"
#include "fault/parse_scenario.h"
#include "support/clean_environment.h"
#include "support/fault_injection.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

namespace {

class ParseOutOfMemory
    : public CleanEnvironmentTest,
      public ::testing::WithParamInterface<std::tuple<ParseScenario, ArgumentForm, Repetition>> {
protected:
    struct Interruption {
        std::size_t failingAllocation;
        Outcome outcome;
        Snapshot state;
        Snapshot later;
    };

    const ParseScenario scenario = std::get<0>(GetParam());
    const ArgumentForm form = std::get<1>(GetParam());
    const Repetition repetition = std::get<2>(GetParam());

    // Parses with the n-th allocation failing. Whether the parse came to that allocation.
    bool parseWithFailingAllocation(std::size_t nth, OrvexTestCommandLineParser& parser, Outcome& outcome) {
        ArgumentsInForm arguments(scenario.arguments, form);
        prepare(scenario, parser);
        const FailingCall failing(Function::OperatorNew, nth, repetition);
        outcome = arguments.parse(parser);
        return failing.hasFailed();
    }

    std::vector<Interruption> interruptions() {
        std::vector<Interruption> result;
        for (std::size_t nth = 1;; ++nth) {
            OrvexTestCommandLineParser parser;
            Outcome outcome = Outcome::False;
            if (!parseWithFailingAllocation(nth, parser, outcome)) {
                return result;
            }
            const Snapshot state = visibleState(parser);
            result.push_back({nth, outcome, state, stateAfterLaterParse(parser)});
        }
    }
};

TEST_P(ParseOutOfMemory, LeavesAPrefixOfItsEffectsInTheirOrder) {
    Course effects = courseOfEffects(scenario);
    Course effectsWithoutExpansion = courseWithoutExpansion(scenario);
    for (const Interruption& interruption : interruptions()) {
        SCOPED_TRACE(interruption.failingAllocation);
        EXPECT_TRUE(effects.advanceTo(interruption.state) ||
                    effectsWithoutExpansion.advanceTo(interruption.state))
            << differences(effects.current(), interruption.state);
    }
}

// A parse goes on only where memory runs out while references are expanded: that is passed over.
TEST_P(ParseOutOfMemory, ReturnsFalseUnlessOnlyTheExpansionOfReferencesIsMissing) {
    Course effectsWithoutExpansion = courseWithoutExpansion(scenario);
    for (const Interruption& interruption : interruptions()) {
        SCOPED_TRACE(interruption.failingAllocation);
        if (interruption.outcome == Outcome::True) {
            EXPECT_TRUE(effectsWithoutExpansion.advanceTo(interruption.state) &&
                        effectsWithoutExpansion.isAtEnd());
        }
    }
}

TEST_P(ParseOutOfMemory, GoesOnWithoutTheExpansionOfReferences) {
    const std::vector<Interruption> all = interruptions();
    const bool goesOn = std::any_of(all.begin(), all.end(), [](const Interruption& interruption) {
        return interruption.outcome == Outcome::True;
    });
    EXPECT_EQ(goesOn, scenario.needsProducerPath && repetition == Repetition::Once);
}

TEST_P(ParseOutOfMemory, ThrowsOnlyBeforeAnythingIsParsed) {
    Course effects = courseOfEffects(scenario);
    Course scan = courseOfScan(scenario);
    for (const Interruption& interruption : interruptions()) {
        SCOPED_TRACE(interruption.failingAllocation);
        if (interruption.outcome == Outcome::BadAlloc) {
            EXPECT_NE(form, ArgumentForm::Narrow);
            EXPECT_TRUE(effects.advanceTo(interruption.state) && effects.isAtStart());
            EXPECT_TRUE(scan.advanceTo(interruption.later) && scan.isAtStart());
        }
    }
}

TEST_P(ParseOutOfMemory, ThrowsFromTheFormsThatNeedBuffersAndThenReturnsFalse) {
    const std::vector<Interruption> all = interruptions();
    ASSERT_GE(all.size(), 3U);
    EXPECT_EQ(all.front().outcome, form == ArgumentForm::Narrow ? Outcome::False : Outcome::BadAlloc);
    EXPECT_EQ(all.back().outcome, Outcome::False);
}

TEST_P(ParseOutOfMemory, LeavesAParserThatKnowsAPrefixOfTheArgumentsAndWorks) {
    Course scan = courseOfScan(scenario);
    for (const Interruption& interruption : interruptions()) {
        SCOPED_TRACE(interruption.failingAllocation);
        EXPECT_TRUE(scan.advanceTo(interruption.later)) << differences(scan.current(), interruption.later);
    }
}

TEST_P(ParseOutOfMemory, CanBeRepeatedInFull) {
    for (const Interruption& interruption : interruptions()) {
        SCOPED_TRACE(interruption.failingAllocation);
        OrvexTestCommandLineParser parser;
        Outcome outcome = Outcome::False;
        parseWithFailingAllocation(interruption.failingAllocation, parser, outcome);
        ArgumentsInForm arguments(scenario.arguments, form);
        EXPECT_EQ(arguments.parse(parser), scenario.succeeds ? Outcome::True : Outcome::False);
    }
}

TEST_P(ParseOutOfMemory, LeaksNothing) {
    const std::size_t number = interruptions().size();
    for (std::size_t nth = 1; nth <= number; ++nth) {
        SCOPED_TRACE(nth);
        const std::size_t allocationsBefore = liveAllocations();
        {
            OrvexTestCommandLineParser parser;
            Outcome outcome = Outcome::False;
            EXPECT_TRUE(parseWithFailingAllocation(nth, parser, outcome));
        }
        EXPECT_EQ(liveAllocations(), allocationsBefore);
        EXPECT_EQ(livePaths(), 0U);
    }
}

std::string nameOf(const ::testing::TestParamInfo<ParseOutOfMemory::ParamType>& info) {
    const char* const forms[] = {"Narrow", "Wide", "Packed"};
    const char* const repetitions[] = {"Once", "FromThenOn"};
    return std::get<0>(info.param).name + forms[static_cast<std::size_t>(std::get<1>(info.param))] +
           repetitions[static_cast<std::size_t>(std::get<2>(info.param))];
}

INSTANTIATE_TEST_SUITE_P(NarrowForm, ParseOutOfMemory,
                         ::testing::Combine(::testing::ValuesIn(parseScenarios()),
                                            ::testing::Values(ArgumentForm::Narrow),
                                            ::testing::Values(Repetition::Once, Repetition::FromThenOn)),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(OtherForms, ParseOutOfMemory,
                         ::testing::Combine(::testing::Values(everyEffect()),
                                            ::testing::Values(ArgumentForm::Wide, ArgumentForm::Packed),
                                            ::testing::Values(Repetition::Once, Repetition::FromThenOn)),
                         nameOf);

}  // namespace
