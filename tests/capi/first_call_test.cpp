// The process-wide parser comes into being with the first call that needs it, once, and goes at exit.

#include "OrvexTestCommandLineParserC.h"

#include "OrvexTestCommandLineParser.h"
#include "capi/fresh_process.h"
#include "support/clean_environment.h"
#include "system/allocation_hook.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using FirstCall = CleanEnvironmentTest;

// How many allocations the construction of a parser makes.
std::size_t allocationsOfOneParser() {
    const std::size_t before = allocation::count();
    const OrvexTestCommandLineParser parser;
    return allocation::count() - before;
}

// Calls the getter from all threads as nearly at once as can be, and returns what each got.
std::vector<const char*> callFromThreads(std::size_t threadCount, const char* (*getter)()) {
    std::vector<const char*> results(threadCount, nullptr);
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    std::atomic<std::size_t> ready{0};
    for (const char*& result : results) {
        threads.emplace_back([&] {
            ++ready;
            while (ready < threadCount) {
                std::this_thread::yield();
            }
            result = getter();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return results;
}

TEST_F(FirstCall, SimultaneousFirstCallsSeeTheSameParser) {
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE(round);
        inFreshProcess([] {
            const std::vector<const char*> names =
                callFromThreads(16, &OrvexTestCommandLineParser_GetApplicationName);
            EXPECT_THAT(names, ::testing::Each(names.front()));
            EXPECT_EQ(names.front(), OrvexTestCommandLineParser_GetApplicationName());
            EXPECT_STREQ(names.front(), "");
        });
    }
}

TEST_F(FirstCall, SimultaneousFirstCallsConstructOneParser) {
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE(round);
        inFreshProcess([] {
            const std::size_t allocationsOfTheThreads = [] {
                const std::size_t before = allocation::count();
                callFromThreads(16, [] { return ""; });
                return allocation::count() - before;
            }();
            const std::size_t expected = allocationsOfTheThreads + allocationsOfOneParser();

            const std::size_t before = allocation::count();
            // Threads that arrive while the parser is under construction are what this is about.
            allocation::dawdle(true);
            callFromThreads(16, &OrvexTestCommandLineParser_GetApplicationName);
            allocation::dawdle(false);
            EXPECT_EQ(allocation::count() - before, expected);
        });
    }
}

TEST_F(FirstCall, InformationForANullBufferCreatesNoParser) {
    inFreshProcess([] {
        const std::size_t before = allocation::count();
        EXPECT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(nullptr), 0);
        EXPECT_EQ(allocation::count(), before);
        OrvexTestCommandLineParser_GetWaitBeforeExit();
        const std::size_t allocations = allocation::count() - before;
        EXPECT_EQ(allocations, allocationsOfOneParser());
    });
}

struct Call {
    const char* name;
    std::function<void()> make;
};

void callWithInformationBuffer() {
    char buffer[ORVEX_TEST_RUN_INFORMATION_SIZE];
    OrvexTestCommandLineParser_GetTestRunInformation(buffer);
}

const std::vector<Call> callsThatNeedTheParser = {
    {"Parse", [] { OrvexTestCommandLineParser_Parse(0, nullptr); }},
    {"ParseW", [] { OrvexTestCommandLineParser_ParseW(0, nullptr); }},
    {"GetApplicationName", [] { OrvexTestCommandLineParser_GetApplicationName(); }},
    {"GetXmlFilename", [] { OrvexTestCommandLineParser_GetXmlFilename(); }},
    {"GetOutputFilename", [] { OrvexTestCommandLineParser_GetOutputFilename(); }},
    {"GetTestPath", [] { OrvexTestCommandLineParser_GetTestPath(); }},
    {"GetWaitBeforeExit", [] { OrvexTestCommandLineParser_GetWaitBeforeExit(); }},
    {"GetHelpRequested", [] { OrvexTestCommandLineParser_GetHelpRequested(); }},
    {"GetHelpMessage", [] { OrvexTestCommandLineParser_GetHelpMessage(nullptr, nullptr, 0); }},
    {"GetTestRunInformation", callWithInformationBuffer},
};

void PrintTo(const Call& call, std::ostream* stream) {
    *stream << call.name;
}

class FirstCallOf : public CleanEnvironmentTest, public ::testing::WithParamInterface<Call> {};

TEST_P(FirstCallOf, CreatesTheParserAndLaterCallsUseIt) {
    inFreshProcess([] {
        const std::size_t before = allocation::live();
        GetParam().make();
        const std::size_t after = allocation::live();
        EXPECT_GT(after, before);
        for (const Call& call : callsThatNeedTheParser) {
            call.make();
        }
        EXPECT_EQ(allocation::live(), after);
    });
}

TEST_P(FirstCallOf, TriesAgainAfterAConstructionThatFailed) {
    inFreshProcess([] {
        const std::size_t allocations = allocationsOfOneParser();
        for (std::size_t index = 0; index < allocations; ++index) {
            SCOPED_TRACE(index);
            const std::size_t before = allocation::live();
            allocation::failAt(index, allocation::Failure::badAlloc);
            EXPECT_THROW(GetParam().make(), std::bad_alloc);
            EXPECT_TRUE(allocation::stopFailing());
            EXPECT_EQ(allocation::live(), before);
        }
        const std::size_t before = allocation::live();
        EXPECT_NO_THROW(GetParam().make());
        EXPECT_GT(allocation::live(), before);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
    });
}

INSTANTIATE_TEST_SUITE_P(Functions, FirstCallOf, ::testing::ValuesIn(callsThatNeedTheParser),
                         [](const auto& info) { return info.param.name; });

std::size_t liveBeforeFirstCall = 0;

TEST_F(FirstCall, ParserIsDestroyedAtProcessExit) {
    constexpr int released = 42;
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            // Runs after the destruction, since it is registered before the construction.
            ASSERT_EQ(
                std::atexit([] { std::_Exit(allocation::live() == liveBeforeFirstCall ? released : 1); }), 0);
            liveBeforeFirstCall = allocation::live();
            OrvexTestCommandLineParser_GetApplicationName();
            std::exit(allocation::live() > liveBeforeFirstCall ? 0 : 2);
        },
        ::testing::ExitedWithCode(released), "");
}

}  // namespace
