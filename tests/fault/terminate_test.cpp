// An exception that is not a std::exception, thrown in the middle of a parse.

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/faults.h"

#include <cstdlib>
#include <exception>

namespace {

using faults::Failure;
using faults::FaultyCall;

using NonStandardException = CleanEnvironmentTest;

// The parse must neither return nor let its caller catch the exception.
TEST_F(NonStandardException, EndsTheProcessWhereverAParseThrowsIt) {
    constexpr int exitCodeOfTerminate = 77;
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    set("ORVEX_TEST_ARGS", "-x 'another file with a long name.xml'");
    set("_ORVEX_TEST_ARGS_", "-w AnotherSuiteWithALongName");
    Arguments arguments(
        words("./mytest SuiteWithALongerName -tl DravikGigE:SocketDriver -p key=value"
              " -o a_file_with_a_long_name.xml -tdc_guid 0123456789abcdef0123456789abcdef"));
    OrvexTestCommandLineParser parser;
    OrvexTestCommandLineParser another;
    const std::size_t before = faults::allocations();
    EXPECT_TRUE(another.Parse(arguments.argc(), arguments.argv()));
    const std::size_t last = faults::allocations() - before;
    ASSERT_GT(last, 20U);
    // The first, the last, and some in between: each takes a process.
    for (const std::size_t nth : {std::size_t{1}, last / 4, last / 2, last}) {
        SCOPED_TRACE(nth);
        EXPECT_EXIT(
            {
                std::set_terminate([] { std::_Exit(exitCodeOfTerminate); });
                const Failure failure(FaultyCall::NonStandardAllocation, nth);
                try {
                    parser.Parse(arguments.argc(), arguments.argv());
                } catch (...) {
                }
                std::_Exit(EXIT_FAILURE);
            },
            ::testing::ExitedWithCode(exitCodeOfTerminate), "");
    }
}

}  // namespace
