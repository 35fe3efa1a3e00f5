// An exception that is not a std::exception, thrown in the middle of a parse.

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"

#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/faults.h"

#include <cstdlib>
#include <exception>

namespace {

using faults::Failure;
using faults::FaultyCall;

constexpr int exitCodeOfTerminate = 77;
constexpr int exitCodeOfReturn = 1;

class StrangeException : public CleanEnvironmentTest {
protected:
    StrangeException() {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        set("ORVEX_TEST_ARGS", "-x 'another file with a long name.xml'");
        set("_ORVEX_TEST_ARGS_", "-w AnotherSuiteWithALongName");
    }

    // A parse neither returns nor throws what its caller could catch.
    template <typename Parse>
    static void parseAndExit(Parse parse) {
        std::set_terminate([] { std::_Exit(exitCodeOfTerminate); });
        try {
            parse();
        } catch (...) {
        }
        std::_Exit(exitCodeOfReturn);
    }

    Arguments arguments{{"./mytest", "SuiteWithALongerName", "-tl", "DravikGigE:SocketDriver", "-p",
                         "key=value", "-o", "a_file_with_a_long_name.xml", "-tdc_guid",
                         "0123456789abcdef0123456789abcdef"}};
    OrvexTestCommandLineParser parser;
};

TEST_F(StrangeException, EndsTheProcessWhereverAParseThrowsIt) {
    const std::size_t before = faults::allocations();
    OrvexTestCommandLineParser another;
    const std::size_t ofTheConstructor = faults::allocations() - before;
    EXPECT_TRUE(another.Parse(arguments.argc(), arguments.argv()));
    const std::size_t last = faults::allocations() - before - ofTheConstructor;
    ASSERT_GT(last, 20U);
    // The first, the last, and some in between: each takes a process.
    for (const std::size_t nth : {std::size_t{1}, last / 4, last / 2, last}) {
        SCOPED_TRACE(nth);
        EXPECT_EXIT(
            {
                const Failure failure(FaultyCall::StrangeAllocation, nth);
                parseAndExit([this] { parser.Parse(arguments.argc(), arguments.argv()); });
            },
            ::testing::ExitedWithCode(exitCodeOfTerminate), "");
    }
}

TEST_F(StrangeException, EndsTheProcessInTheParseFunctionOfC) {
    EXPECT_EXIT(
        {
            OrvexTestCommandLineParser_GetHelpRequested();
            const Failure failure(FaultyCall::StrangeAllocation);
            parseAndExit([this] { OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv()); });
        },
        ::testing::ExitedWithCode(exitCodeOfTerminate), "");
}

}  // namespace
