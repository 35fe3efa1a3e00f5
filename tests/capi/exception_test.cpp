// Which exceptions leave the C functions, and which the parse keeps in.

#include "OrvexTestCommandLineParserC.h"

#include "OrvexTestCommandLineParser.h"
#include "capi/c_calls.h"
#include "capi/fresh_process.h"
#include "support/clean_environment.h"
#include "system/allocation_hook.h"

#include <new>
#include <string>

namespace {

using CInterfaceException = CleanEnvironmentTest;
using allocation::Failure;

TEST_F(CInterfaceException, MemoryExhaustionInParseGivesZero) {
    inFreshProcess([] {
        Arguments arguments({"mytest", "-o", fill(100)});
        OrvexTestCommandLineParser_Parse(0, nullptr);
        allocation::failAt(0, Failure::badAlloc);
        const int result = OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv());
        EXPECT_TRUE(allocation::stopFailing());
        EXPECT_EQ(result, 0);
    });
}

TEST_F(CInterfaceException, MemoryExhaustionInTheConversionLeavesParseW) {
    inFreshProcess([] {
        std::wstring name(100, L'n');
        wchar_t* arguments[] = {name.data()};
        OrvexTestCommandLineParser_Parse(0, nullptr);
        allocation::failAt(0, Failure::badAlloc);
        EXPECT_THROW(OrvexTestCommandLineParser_ParseW(1, arguments), std::bad_alloc);
        EXPECT_TRUE(allocation::stopFailing());
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
    });
}

TEST_F(CInterfaceException, MemoryExhaustionInTheHelpMessageLeavesItAndNothingIsWritten) {
    inFreshProcess([] {
        GuardedBuffer buffer(8192);
        OrvexTestCommandLineParser_Parse(0, nullptr);
        allocation::failAt(0, Failure::badAlloc);
        EXPECT_THROW(OrvexTestCommandLineParser_GetHelpMessage("prog", buffer.data(), buffer.size),
                     std::bad_alloc);
        EXPECT_TRUE(allocation::stopFailing());
        EXPECT_THAT(buffer.bytes, ::testing::Each(untouched));
    });
}

TEST_F(CInterfaceException, AnExceptionOfAnotherFamilyLeavesTheHelpMessageUnchanged) {
    inFreshProcess([] {
        OrvexTestCommandLineParser_Parse(0, nullptr);
        allocation::failAt(0, Failure::notStandard);
        EXPECT_THROW(OrvexTestCommandLineParser_GetHelpMessage("prog", nullptr, 0), int);
        EXPECT_TRUE(allocation::stopFailing());
    });
}

}  // namespace
