// Parts of tests that need a process in which nothing has called the C interface yet.

#ifndef ORVEX_TESTS_FRESH_PROCESS_H
#define ORVEX_TESTS_FRESH_PROCESS_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

// Ends the process with 0 unless an expectation of the current test has failed in it. Only standard error of
// such a process is shown, so the failures are repeated there.
[[noreturn]] inline void exitWithTestResult() {
    const ::testing::TestResult& result = *::testing::UnitTest::GetInstance()->current_test_info()->result();
    for (int i = 0; i < result.total_part_count(); ++i) {
        const ::testing::TestPartResult& part = result.GetTestPartResult(i);
        if (part.failed()) {
            std::cerr << part.file_name() << ':' << part.line_number() << ":\n" << part.message() << '\n';
        }
    }
    std::exit(result.Failed() ? 1 : 0);
}

// Starts the test program again, runs the body in it and ends it with exit. The body may use expectations;
// the new process repeats what the test did before this call.
template <typename Body>
void inFreshProcess(Body body) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            body();
            exitWithTestResult();
        },
        ::testing::ExitedWithCode(0), "");
}

#endif
