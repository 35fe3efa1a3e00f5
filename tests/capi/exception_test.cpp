// Exceptions that leave the C functions. Each body runs in a process of its own and first makes the call that
// creates the parser.

#include "OrvexTestCommandLineParserC.h"

#include "capi/c_calls.h"
#include "capi/fresh_process.h"
#include "support/clean_environment.h"
#include "support/faults.h"

#include <cstddef>
#include <new>
#include <string>

namespace {

using CInterfaceException = CleanEnvironmentTest;
using faults::Failure;
using faults::FaultyCall;

TEST_F(CInterfaceException, ParseWThrowsBadAllocIfMemoryRunsOutInTheConversion) {
    inFreshProcess([] {
        wchar_t name[] = L"mytest";
        wchar_t* arguments[] = {name};
        OrvexTestCommandLineParser_GetHelpRequested();
        {
            const Failure failure(FaultyCall::Allocation);
            EXPECT_THROW(OrvexTestCommandLineParser_ParseW(1, arguments), std::bad_alloc);
        }
        EXPECT_EQ(readEnvironment(), Environment());
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(1, arguments), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "mytest");
    });
}

TEST_F(CInterfaceException, HelpMessageThrowsBadAllocAndWritesNothingIfMemoryRunsOut) {
    inFreshProcess([] {
        const std::string name = fill(100);
        GuardedBuffer buffer(OrvexTestCommandLineParser_GetHelpMessage(name.c_str(), nullptr, 0));
        std::size_t length = 0;
        std::size_t nth = 0;
        while (length == 0) {
            EXPECT_EQ(buffer.bytes, std::string(buffer.bytes.size(), untouched)) << nth;
            const Failure failure(FaultyCall::Allocation, ++nth);
            try {
                length = OrvexTestCommandLineParser_GetHelpMessage(name.c_str(), buffer.data(), buffer.size);
            } catch (const std::bad_alloc&) {
                EXPECT_TRUE(failure.happened());
            }
        }
        EXPECT_EQ(length, buffer.size - 1);
        EXPECT_GE(nth, 2U);
    });
}

}  // namespace
