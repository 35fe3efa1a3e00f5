#include "OrvexTestCommandLineParserC.h"

#include "OrvexTestCommandLineParser.h"
#include "capi/c_calls.h"
#include "capi/fresh_process.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

using ::testing::Each;
using ::testing::StartsWith;

using CInterface = CleanEnvironmentTest;

static_assert(ORVEX_TEST_RUN_INFORMATION_SIZE == 4096);
static_assert(ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE == 256);

void expectParsed(const char* applicationName, const char* xmlFilename, const char* outputFilename,
                  const char* testPath, int wait, int help) {
    EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), applicationName);
    EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), xmlFilename);
    EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), outputFilename);
    EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), testPath);
    EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), wait);
    EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), help);
}

TEST_F(CInterface, IsEmptyBeforeAnyParse) {
    inFreshProcess([] {
        expectParsed("", "", "", "", 0, 0);
        expectInformation(1, {});
        std::string text(8192, untouched);
        OrvexTestCommandLineParser_GetHelpMessage(nullptr, text.data(), text.size());
        EXPECT_THAT(text, StartsWith("[-?] [-camemu n]"));
    });
}

// Parse and ParseW

TEST_F(CInterface, ParseReturnsZeroForBadArgumentsAndChangesNothing) {
    set("ORVEX_TEST_ARGS", "\"open");
    inFreshProcess([] {
        const Environment before = readEnvironment();
        EXPECT_EQ(OrvexTestCommandLineParser_Parse(-1, nullptr), 0);
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(1, nullptr), 0);
        EXPECT_EQ(parseNarrow(words("mytest -o out")), 0);
        EXPECT_EQ(parseWide({L"mytest"}), 0);
        expectParsed("", "", "", "", 0, 0);
        EXPECT_EQ(readEnvironment(), before);
    });
}

TEST_F(CInterface, ParseWConvertsToUtf8) {
    const std::wstring text = {L'\u00E9', static_cast<wchar_t>(0x1F600), static_cast<wchar_t>(0xD800)};
    inFreshProcess([&] {
        EXPECT_EQ(parseWide({L"mytest", L"-o", text, L"-h", L"Suite::Case"}), 1);
        expectParsed("mytest", "", "\xC3\xA9\xF0\x9F\x98\x80\xED\xA0\x80", "Suite::Case", 0, 1);
    });
}

TEST_F(CInterface, EveryParseAddsToTheProcessWideParser) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow(words("first -w -o one -x one -tdc_guid 1234")), 1);
        // Without a test path the string is empty, never null.
        expectParsed("first", "one", "one", "", 1, 0);
        EXPECT_EQ(parseWide({L"second", L"SuiteB", L"-o", L"two", L"-?"}), 1);
        expectParsed("first", "one", "two", "SuiteB", 1, 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetTestPath(), OrvexTestCommandLineParser_GetTestPath());
        expectInformation(1, {{0, "orvex"}, {1, "1234"}, {5, "0"}, {13, "any"}});
    });
}

// The help message

TEST_F(CInterface, HelpMessageBeginsWithTheGivenNameOrElseTheParsedOne) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"./mytest"}), 1);
        const std::pair<const char*, const char*> rows[] = {
            {"prog", "prog"}, {"", "./mytest"}, {nullptr, "./mytest"}};
        for (const auto& [given, name] : rows) {
            const std::string expected = OrvexTestCommandLineParser().getHelpMessage(name);
            GuardedBuffer buffer(OrvexTestCommandLineParser_GetHelpMessage(given, nullptr, 0));
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage(given, buffer.data(), buffer.size),
                      expected.size());
            EXPECT_EQ(buffer.content(), expected + '\0');
            buffer.expectGuardsUntouched();
        }
    });
}

TEST_F(CInterface, HelpMessageIsWrittenOnlyIfItFitsWithItsTerminator) {
    inFreshProcess([] {
        const std::string expected = OrvexTestCommandLineParser().getHelpMessage("prog");
        const std::size_t length = expected.size();
        for (const std::size_t size : {std::size_t{0}, std::size_t{1}, length}) {
            GuardedBuffer buffer(length + 1);
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage("prog", buffer.data(), size), length + 1);
            EXPECT_THAT(buffer.bytes, Each(untouched)) << size;
        }
        // The largest size shows that the comparison is unsigned.
        for (const std::size_t size : {length + 2, SIZE_MAX}) {
            GuardedBuffer buffer(length + 1);
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage("prog", buffer.data(), size), length);
            EXPECT_EQ(buffer.content(), expected + '\0');
            buffer.expectGuardsUntouched();
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage("prog", nullptr, size), length + 1);
        }
    });
}

// The test-run information

// Each slot that an option fills, in order; slot 5 is the fixed "0", and 9 and 10 repeat 7 and 8.
const struct {
    std::size_t slot;
    std::string option;
    std::size_t repeatedIn;
} slots[] = {
    {0, "-tdc_group=", 0},          {1, "-tdc_guid=", 1},       {2, "-tdc_runname=", 2},
    {3, "-tdc_rundescription=", 3}, {4, "-tdc_product=", 4},    {6, "-tdc_userid=", 6},
    {7, "-tdc_vcsrevision=", 9},    {8, "-tdc_vcsbranch=", 10}, {11, "-pcname=", 11},
    {12, "-osname=", 12},           {13, "-tl=", 13},           {14, "-tdc_dxml=", 14},
    {15, "-testname=", 15},
};

TEST_F(CInterface, InformationWithoutOptionsHasTheDefaults) {
    EXPECT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(nullptr), 0);
    inFreshProcess([] {
        // The last two fields of the record have no slot, and their lengths do not matter.
        EXPECT_EQ(parseNarrow({"mytest", "-ostype", fill(300), "-bit", fill(300)}), 1);
        expectInformation(1, {{0, "orvex"}, {5, "0"}, {13, "any"}});
        EXPECT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(nullptr), 0);
    });
}

TEST_F(CInterface, InformationHasUpTo255BytesOfEachOption) {
    inFreshProcess([] {
        std::vector<std::string> arguments = {"mytest"};
        Slots expected = {{5, "0"}};
        for (const auto& row : slots) {
            const std::string value = row.option + fill(255 - row.option.size());
            arguments.push_back(row.option + value);
            expected[row.slot] = expected[row.repeatedIn] = value;
        }
        EXPECT_EQ(parseNarrow(arguments), 1);
        expectInformation(1, expected);
    });
}

TEST_F(CInterface, InformationEndsBeforeTheFirstValueOfMoreThan255Bytes) {
    inFreshProcess([] {
        // From the last slot to the first, each parse makes one more value too long.
        Slots expected = {{0, "orvex"}, {5, "0"}, {13, "any"}};
        EXPECT_EQ(parseNarrow({"mytest"}), 1);
        for (auto row = std::rbegin(slots); row != std::rend(slots); ++row) {
            SCOPED_TRACE(row->option);
            EXPECT_EQ(parseNarrow({"mytest", row->option + fill(256)}), 1);
            expected.erase(expected.lower_bound(row->slot), expected.end());
            expectInformation(0, expected);
        }
    });
}

}  // namespace
