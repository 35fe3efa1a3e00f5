// The first call that needs the process-wide parser creates it, and the process destroys it at exit.

#include "OrvexTestCommandLineParserC.h"

#include "OrvexTestCommandLineParser.h"
#include "capi/fresh_process.h"
#include "support/clean_environment.h"
#include "support/faults.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <thread>
#include <vector>

namespace {

using faults::Failure;
using faults::FaultyCall;
using faults::With;

using FirstCall = CleanEnvironmentTest;

// How many allocations the construction of a parser makes.
std::size_t allocationsOfOneParser() {
    const std::size_t before = faults::allocations();
    const OrvexTestCommandLineParser parser;
    return faults::allocations() - before;
}

TEST_F(FirstCall, SimultaneousCallsShareOneParser) {
    for (int round = 0; round < 10 && !HasFailure(); ++round) {
        inFreshProcess([] {
            std::vector<const char*> names(16, nullptr);
            std::vector<std::thread> threads;
            threads.reserve(names.size());
            std::atomic<std::size_t> ready{0};
            // Slow, so that threads arrive during the construction of the parser.
            const With slow(faults::allocationsAreSlow, true);
            const std::size_t start = faults::liveAllocations();
            const OrvexTestCommandLineParser another;
            const std::size_t before = faults::liveAllocations();
            for (const char*& name : names) {
                threads.emplace_back([&] {
                    ++ready;
                    while (ready < names.size()) {
                        std::this_thread::yield();
                    }
                    name = OrvexTestCommandLineParser_GetApplicationName();
                });
            }
            for (std::thread& thread : threads) {
                thread.join();
            }
            EXPECT_EQ(faults::liveAllocations() - before, before - start) << "allocations of one parser";
            EXPECT_THAT(names, ::testing::Each(OrvexTestCommandLineParser_GetApplicationName()));
            EXPECT_STREQ(names.front(), "");
        });
    }
}

TEST_F(FirstCall, InformationForANullBufferCreatesNoParser) {
    inFreshProcess([] {
        const std::size_t before = faults::allocations();
        EXPECT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(nullptr), 0);
        EXPECT_EQ(faults::allocations(), before);
    });
}

struct CFunction {
    const char* name;
    void (*call)();
};

char information[ORVEX_TEST_RUN_INFORMATION_SIZE];

const CFunction functionsThatNeedTheParser[] = {
    {"Parse", [] { OrvexTestCommandLineParser_Parse(0, nullptr); }},
    {"ParseW", [] { OrvexTestCommandLineParser_ParseW(0, nullptr); }},
    {"GetApplicationName", [] { OrvexTestCommandLineParser_GetApplicationName(); }},
    {"GetXmlFilename", [] { OrvexTestCommandLineParser_GetXmlFilename(); }},
    {"GetOutputFilename", [] { OrvexTestCommandLineParser_GetOutputFilename(); }},
    {"GetTestPath", [] { OrvexTestCommandLineParser_GetTestPath(); }},
    {"GetWaitBeforeExit", [] { OrvexTestCommandLineParser_GetWaitBeforeExit(); }},
    {"GetHelpRequested", [] { OrvexTestCommandLineParser_GetHelpRequested(); }},
    {"GetHelpMessage", [] { OrvexTestCommandLineParser_GetHelpMessage(nullptr, nullptr, 0); }},
    {"GetTestRunInformation", [] { OrvexTestCommandLineParser_GetTestRunInformation(information); }},
};

TEST_F(FirstCall, RetriesTheConstructionAfterAFailureAndLaterCallsShareTheParser) {
    for (const CFunction& first : functionsThatNeedTheParser) {
        SCOPED_TRACE(first.name);
        inFreshProcess([&first] {
            const std::size_t before = faults::liveAllocations();
            const std::size_t allocations = allocationsOfOneParser();
            ASSERT_GE(allocations, 1U);
            for (std::size_t nth = 1; nth <= allocations; ++nth) {
                const Failure failure(FaultyCall::Allocation, nth);
                EXPECT_THROW(first.call(), std::bad_alloc) << nth;
                EXPECT_EQ(faults::liveAllocations(), before) << nth;
            }
            first.call();
            const std::size_t after = faults::liveAllocations();
            EXPECT_GT(after, before);
            for (const CFunction& function : functionsThatNeedTheParser) {
                function.call();
            }
            EXPECT_EQ(faults::liveAllocations(), after);
            EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        });
    }
}

std::size_t liveBeforeFirstCall = 0;

TEST_F(FirstCall, ParserIsDestroyedAtProcessExit) {
    constexpr int released = 42;
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            // Runs after the destruction, because it is registered before the construction.
            ASSERT_EQ(std::atexit([] {
                          std::_Exit(faults::liveAllocations() == liveBeforeFirstCall ? released : 1);
                      }),
                      0);
            liveBeforeFirstCall = faults::liveAllocations();
            OrvexTestCommandLineParser_GetApplicationName();
            std::exit(faults::liveAllocations() > liveBeforeFirstCall ? 0 : 2);
        },
        ::testing::ExitedWithCode(released), "");
}

}  // namespace
