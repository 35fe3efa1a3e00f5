// Parses in which the environment, the dynamic loader or the file system refuses.

#include "OrvexTestCommandLineParser.h"

#include "fault/argument_forms.h"
#include "fault/parse_scenario.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/fault_injection.h"

#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr std::size_t numberOfTransportVariables = 7;
constexpr std::size_t numberOfVariables = 18;

std::string variable(std::size_t nth) {
    std::vector<std::string> names = transportVariables();
    const std::vector<std::string> later = laterVariables();
    names.insert(names.end(), later.begin(), later.end());
    return names.at(nth - 1);
}

// What the complete parse leaves, but for the variables from first to last, which stay as they were.
Snapshot stateWithoutVariables(std::size_t first, std::size_t last) {
    const Environment before = everyEffect().environment;
    Snapshot state = stateAfterAllEffects(everyEffect());
    for (std::size_t nth = first; nth <= last; ++nth) {
        const auto old = before.find(variable(nth));
        state.erase(variable(nth));
        if (old != before.end()) {
            state.insert(*old);
        }
    }
    return state;
}

// One call of a platform function that fails in the course of a parse.
class PlatformFailureTest : public CleanEnvironmentTest {
protected:
    static Outcome parseWithFailure(OrvexTestCommandLineParser& parser, ArgumentForm form, Function function,
                                    std::size_t nth, Repetition repetition = Repetition::Once) {
        ArgumentsInForm arguments(everyEffect().arguments, form);
        prepare(everyEffect(), parser);
        const FailingCall failing(function, nth, repetition);
        const Outcome outcome = arguments.parse(parser);
        EXPECT_TRUE(failing.hasFailed());
        return outcome;
    }

    static void expectNoLeak(ArgumentForm form, Function function, std::size_t nth) {
        const std::size_t allocationsBefore = liveAllocations();
        {
            OrvexTestCommandLineParser parser;
            parseWithFailure(parser, form, function, nth);
        }
        EXPECT_EQ(liveAllocations(), allocationsBefore);
        EXPECT_EQ(livePaths(), 0U);
    }

    static void expectThatAllWasScanned(OrvexTestCommandLineParser& parser) {
        Course scan = courseOfScan(everyEffect());
        EXPECT_TRUE(scan.advanceTo(stateAfterLaterParse(parser)) && scan.isAtEnd());
    }
};

const auto everyForm = ::testing::Values(ArgumentForm::Narrow, ArgumentForm::Wide, ArgumentForm::Packed);

class TransportVariableFailure
    : public PlatformFailureTest,
      public ::testing::WithParamInterface<std::tuple<ArgumentForm, std::size_t, Repetition>> {};

TEST_P(TransportVariableFailure, EndsTheParseAtThatVariable) {
    const auto [form, nth, repetition] = GetParam();
    OrvexTestCommandLineParser parser;
    EXPECT_EQ(parseWithFailure(parser, form, Function::SetEnv, nth, repetition), Outcome::False);
    const Snapshot state = visibleState(parser);
    EXPECT_EQ(differences(stateBeforeEffect(everyEffect(), variable(nth)), state), "");
    expectThatAllWasScanned(parser);
}

INSTANTIATE_TEST_SUITE_P(AllVariables, TransportVariableFailure,
                         ::testing::Combine(everyForm,
                                            ::testing::Range<std::size_t>(1, numberOfTransportVariables + 1),
                                            ::testing::Values(Repetition::Once, Repetition::FromThenOn)));

class LaterVariableFailure : public PlatformFailureTest,
                             public ::testing::WithParamInterface<std::tuple<ArgumentForm, std::size_t>> {};

TEST_P(LaterVariableFailure, IsPassedOver) {
    const auto [form, nth] = GetParam();
    OrvexTestCommandLineParser parser;
    EXPECT_EQ(parseWithFailure(parser, form, Function::SetEnv, nth), Outcome::True);
    const Snapshot state = visibleState(parser);
    EXPECT_EQ(differences(stateWithoutVariables(nth, nth), state), "");
    expectThatAllWasScanned(parser);
}

TEST_P(LaterVariableFailure, IsPassedOverWhenAllThatFollowFailAsWell) {
    const auto [form, nth] = GetParam();
    OrvexTestCommandLineParser parser;
    EXPECT_EQ(parseWithFailure(parser, form, Function::SetEnv, nth, Repetition::FromThenOn), Outcome::True);
    const Snapshot state = visibleState(parser);
    EXPECT_EQ(differences(stateWithoutVariables(nth, numberOfVariables), state), "");
    expectThatAllWasScanned(parser);
}

INSTANTIATE_TEST_SUITE_P(AllVariables, LaterVariableFailure,
                         ::testing::Combine(everyForm,
                                            ::testing::Range<std::size_t>(numberOfTransportVariables + 1,
                                                                          numberOfVariables + 1)));

class SetEnvFailure : public PlatformFailureTest,
                      public ::testing::WithParamInterface<std::tuple<ArgumentForm, std::size_t>> {};

TEST_P(SetEnvFailure, LeaksNothing) {
    const auto [form, nth] = GetParam();
    expectNoLeak(form, Function::SetEnv, nth);
}

INSTANTIATE_TEST_SUITE_P(AllVariables, SetEnvFailure,
                         ::testing::Combine(everyForm,
                                            ::testing::Range<std::size_t>(1, numberOfVariables + 1)));

class DirectoryFailure : public PlatformFailureTest,
                         public ::testing::WithParamInterface<std::tuple<ArgumentForm, Function>> {};

TEST_P(DirectoryFailure, EndsTheParseBeforeTheProducerPath) {
    const auto [form, function] = GetParam();
    OrvexTestCommandLineParser parser;
    EXPECT_EQ(parseWithFailure(parser, form, function, 1), Outcome::False);
    const Snapshot state = visibleState(parser);
    EXPECT_EQ(differences(stateBeforeEffect(everyEffect(), "GENICAM_GENTL64_PATH"), state), "");
    expectThatAllWasScanned(parser);
}

TEST_P(DirectoryFailure, LeaksNothing) {
    const auto [form, function] = GetParam();
    expectNoLeak(form, function, 1);
}

TEST_P(DirectoryFailure, DoesNotMatterWithoutAProducerPath) {
    const auto [form, function] = GetParam();
    OrvexTestCommandLineParser parser;
    ArgumentsInForm arguments({"mytest", "-tl", "DravikGigE"}, form);
    const FailingCall failing(function, 1);
    EXPECT_EQ(arguments.parse(parser), Outcome::True);
    EXPECT_FALSE(failing.hasFailed());
}

INSTANTIATE_TEST_SUITE_P(BothCalls, DirectoryFailure,
                         ::testing::Combine(everyForm,
                                            ::testing::Values(Function::DlAddr, Function::RealPath)));

class ApplicationDir : public PlatformFailureTest {
protected:
    // The directory, or the message of the exception.
    static std::string directoryOrMessage() {
        try {
            return OrvexTestCommandLineParser::getApplicationDir();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    static bool runsOutOfMemory(std::size_t nth) {
        const FailingCall failing(Function::OperatorNew, nth);
        try {
            OrvexTestCommandLineParser::getApplicationDir();
        } catch (const std::bad_alloc&) {
            return true;
        }
        EXPECT_FALSE(failing.hasFailed());
        return false;
    }
};

TEST_F(ApplicationDir, NamesDladdrWhenItFails) {
    const FailingCall failing(Function::DlAddr, 1);
    EXPECT_EQ(directoryOrMessage(), "OrvexTestCommandLineParser::getApplicationDir> dladdr() failed");
}

TEST_F(ApplicationDir, NamesRealpathWhenItFails) {
    const FailingCall failing(Function::RealPath, 1);
    EXPECT_EQ(directoryOrMessage(), "OrvexTestCommandLineParser::getApplicationDir> realpath() failed");
}

TEST_F(ApplicationDir, NamesParseWhenTheResolvedPathHasNoSeparator) {
    const ResolvedPath resolved("separatorless");
    EXPECT_EQ(directoryOrMessage(), "OrvexTestCommandLineParser::Parse> can't query path");
    EXPECT_EQ(livePaths(), 0U);
}

TEST_F(ApplicationDir, LeaksNothingWhenItThrows) {
    const std::size_t allocationsBefore = liveAllocations();
    {
        const ResolvedPath resolved("a relative path that is too long for a string object");
        EXPECT_THROW(OrvexTestCommandLineParser::getApplicationDir(), std::runtime_error);
    }
    {
        const FailingCall failing(Function::RealPath, 1);
        EXPECT_THROW(OrvexTestCommandLineParser::getApplicationDir(), std::runtime_error);
    }
    EXPECT_EQ(liveAllocations(), allocationsBefore);
}

TEST_F(ApplicationDir, WithoutSeparatorInTheResolvedPathEndsTheParse) {
    const ResolvedPath resolved("separatorless");
    OrvexTestCommandLineParser parser;
    prepare(everyEffect(), parser);
    EXPECT_FALSE(parse(parser, everyEffect().arguments));
}

TEST_F(ApplicationDir, IsCutFromTheResolvedPathAtItsLastSeparator) {
    const ResolvedPath resolved("/a directory with a rather long name/b/c");
    EXPECT_EQ(directoryOrMessage(), "/a directory with a rather long name/b");
}

TEST_F(ApplicationDir, IsEmptyBelowTheRoot) {
    const ResolvedPath resolved("/a");
    EXPECT_EQ(directoryOrMessage(), "");
}

TEST_F(ApplicationDir, IsEmptyWhenTheClimbReachesTheRoot) {
    const LibraryFileName library("/usr/lib/library.so");
    EXPECT_EQ(directoryOrMessage(), "");
}

TEST_F(ApplicationDir, DoesNotClimbFromAFileNameWithoutSeparator) {
    const std::string workingDirectory = std::filesystem::current_path();
    const LibraryFileName library(".");
    EXPECT_EQ(directoryOrMessage(), workingDirectory.substr(0, workingDirectory.rfind('/')));
}

TEST_F(ApplicationDir, LetsEveryExhaustionOfMemoryOutAndLeaksNothing) {
    const std::size_t allocationsBefore = liveAllocations();
    std::size_t nth = 1;
    while (runsOutOfMemory(nth)) {
        EXPECT_EQ(liveAllocations(), allocationsBefore) << nth;
        EXPECT_EQ(livePaths(), 0U) << nth;
        ++nth;
    }
    EXPECT_GT(nth, 1U);
}

TEST_F(ApplicationDir, ReleasesTheResolvedPath) {
    directoryOrMessage();
    EXPECT_EQ(livePaths(), 0U);
}

TEST_F(PlatformFailureTest, AParseSetsEveryVariableOnceAndInOrder) {
    OrvexTestCommandLineParser parser;
    prepare(everyEffect(), parser);
    Arguments arguments(everyEffect().arguments);
    const SetEnvRecord record;
    EXPECT_TRUE(parser.Parse(arguments.argc(), arguments.argv()));
    std::vector<std::string> expected;
    for (std::size_t nth = 1; nth <= numberOfVariables; ++nth) {
        expected.push_back(variable(nth));
    }
    EXPECT_EQ(record.names(), expected);
}

}  // namespace
