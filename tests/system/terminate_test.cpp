// What an exception does that is raised in the middle of a parse.

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"

#include "support/arguments.h"
#include "support/clean_environment.h"
#include "system/allocation_hook.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace {

using allocation::Failure;

constexpr int exitCodeOfTerminate = 77;
constexpr int exitCodeOfReturn = 1;

class ExceptionInParse : public CleanEnvironmentTest {
protected:
    ExceptionInParse() {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
    }

    static std::vector<std::string> list() {
        return {"./mytest",  "SuiteWithALongerName",
                "-tl",       "DravikGigE:SocketDriver",
                "-p",        "key=value",
                "-o",        "a_file_with_a_long_name.xml",
                "-tdc_guid", "0123456789abcdef0123456789abcdef"};
    }

    // Sets what a parse reads, and forgets what one wrote.
    static void resetEnvironment() {
        writeEnvironment({{"ORVEX_TEST_ARGS", "-x 'another file with a long name.xml'"},
                          {"_ORVEX_TEST_ARGS_", "-w AnotherSuiteWithALongName"}});
    }

    // How many allocations the parse makes.
    static std::size_t allocationsOfParse() {
        resetEnvironment();
        OrvexTestCommandLineParser parser;
        Arguments arguments(list());
        const std::size_t before = allocation::count();
        EXPECT_TRUE(parser.Parse(arguments.argc(), arguments.argv()));
        return allocation::count() - before;
    }

    static bool parseAndFailAt(std::size_t index, Failure failure) {
        resetEnvironment();
        OrvexTestCommandLineParser parser;
        Arguments arguments(list());
        allocation::failAt(index, failure);
        const bool result = parser.Parse(arguments.argc(), arguments.argv());
        EXPECT_TRUE(allocation::stopFailing()) << "the parse made too few allocations";
        return result;
    }
};

[[noreturn]] void exitFromTerminate() {
    std::_Exit(exitCodeOfTerminate);
}

TEST_F(ExceptionInParse, EveryAllocationThatFailsMakesParseReturnFalse) {
    const std::size_t allocations = allocationsOfParse();
    ASSERT_GT(allocations, 20U);
    for (std::size_t index = 0; index < allocations; ++index) {
        SCOPED_TRACE(index);
        EXPECT_FALSE(parseAndFailAt(index, Failure::badAlloc));
    }
}

TEST_F(ExceptionInParse, NothingLeaksFromAParseThatFails) {
    const std::size_t allocations = allocationsOfParse();
    for (std::size_t index = 0; index < allocations; ++index) {
        SCOPED_TRACE(index);
        const std::size_t before = allocation::live();
        parseAndFailAt(index, Failure::badAlloc);
        EXPECT_EQ(allocation::live(), before);
    }
}

TEST_F(ExceptionInParse, ParserIsUsableAfterAParseThatRanOutOfMemory) {
    resetEnvironment();
    OrvexTestCommandLineParser parser;
    Arguments arguments(list());
    allocation::failAt(0, Failure::badAlloc);
    EXPECT_FALSE(parser.Parse(arguments.argc(), arguments.argv()));
    EXPECT_TRUE(allocation::stopFailing());
    EXPECT_TRUE(parser.Parse(arguments.argc(), arguments.argv()));
    EXPECT_EQ(parser.getOutputFilename(), "a_file_with_a_long_name.xml");
}

TEST_F(ExceptionInParse, OneThatIsNotStandardEndsTheProcessThroughTerminate) {
    const std::size_t allocations = allocationsOfParse();
    // The first, the last, and some between: every one would take a process each.
    for (const std::size_t index : {std::size_t{0}, allocations / 4, allocations / 2, allocations - 1}) {
        SCOPED_TRACE(index);
        EXPECT_EXIT(
            {
                std::set_terminate(exitFromTerminate);
                parseAndFailAt(index, Failure::notStandard);
                std::_Exit(exitCodeOfReturn);
            },
            ::testing::ExitedWithCode(exitCodeOfTerminate), "");
    }
}

TEST_F(ExceptionInParse, OneThatIsNotStandardCannotBeCaughtByTheCaller) {
    EXPECT_EXIT(
        {
            std::set_terminate(exitFromTerminate);
            try {
                parseAndFailAt(0, Failure::notStandard);
            } catch (...) {
                std::_Exit(exitCodeOfReturn);
            }
        },
        ::testing::ExitedWithCode(exitCodeOfTerminate), "");
}

TEST_F(ExceptionInParse, OneThatIsNotStandardAbortsWithoutATerminateHandler) {
    EXPECT_EXIT(parseAndFailAt(0, Failure::notStandard), ::testing::KilledBySignal(SIGABRT), "");
}

TEST_F(ExceptionInParse, OneThatIsNotStandardEndsTheProcessInTheCFunctionAsWell) {
    EXPECT_EXIT(
        {
            std::set_terminate(exitFromTerminate);
            Arguments arguments(list());
            OrvexTestCommandLineParser_Parse(0, nullptr);
            allocation::failAt(0, Failure::notStandard);
            OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv());
            std::_Exit(exitCodeOfReturn);
        },
        ::testing::ExitedWithCode(exitCodeOfTerminate), "");
}

}  // namespace
