#include "OrvexTestCommandLineParserC.h"

#include "OrvexTestCommandLineParser.h"
#include "capi/c_calls.h"
#include "capi/fresh_process.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

using ::testing::Each;
using ::testing::StartsWith;

namespace {

using CInterface = CleanEnvironmentTest;

// ---- Before any parse

TEST_F(CInterface, TextsAreEmptyBeforeAnyParse) {
    inFreshProcess([] {
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), "");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "");
    });
}

TEST_F(CInterface, FlagsAreZeroBeforeAnyParse) {
    inFreshProcess([] {
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 0);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 0);
    });
}

TEST_F(CInterface, InformationIsAllZerosBeforeAnyParse) {
    inFreshProcess([] { expectInformation(1, {}); });
}

TEST_F(CInterface, HelpMessageHasNoNameBeforeAnyParse) {
    inFreshProcess([] {
        std::string text(8192, untouched);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage(nullptr, text.data(), text.size()),
                  OrvexTestCommandLineParser().getHelpMessage("").size());
        EXPECT_THAT(text, StartsWith("[-?] [-camemu n]"));
    });
}

// ---- Parse and ParseW

TEST_F(CInterface, ParseReturnsOneOnSuccess) {
    inFreshProcess([] { EXPECT_EQ(parseNarrow({"mytest"}), 1); });
}

TEST_F(CInterface, ParseOfNothingReturnsOneAndDoesNothing) {
    set("ORVEX_TEST_ARGS", "-o fromVariable Suite");
    inFreshProcess([] {
        const Environment before = readEnvironment();
        EXPECT_EQ(OrvexTestCommandLineParser_Parse(0, nullptr), 1);
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(0, nullptr), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "");
        EXPECT_EQ(readEnvironment(), before);
        expectInformation(1, {});
    });
}

TEST_F(CInterface, ParseReturnsZeroForACountBelowZero) {
    inFreshProcess([] {
        Arguments arguments({"mytest"});
        EXPECT_EQ(OrvexTestCommandLineParser_Parse(-1, arguments.argv()), 0);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        EXPECT_EQ(readEnvironment(), Environment());
    });
}

TEST_F(CInterface, ParseReturnsZeroForANullVector) {
    inFreshProcess([] {
        EXPECT_EQ(OrvexTestCommandLineParser_Parse(1, nullptr), 0);
        EXPECT_EQ(readEnvironment(), Environment());
    });
}

TEST_F(CInterface, ParseReturnsZeroForAQuoteThatIsNotClosed) {
    set("ORVEX_TEST_ARGS", "\"open");
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-o", "out"}), 0);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "");
    });
}

TEST_F(CInterface, ParseReturnsZeroForAValueThatIsNoNumber) {
    for (const char* option : {"-packetsize", "-packetdelay", "-socketbuffer", "-camemu"}) {
        SCOPED_TRACE(option);
        inFreshProcess([&] { EXPECT_EQ(parseNarrow({"mytest", option, "x1"}), 0); });
    }
}

TEST_F(CInterface, ParseReadsBothArgumentVariables) {
    set("ORVEX_TEST_ARGS", "First -o before -x before");
    set("_ORVEX_TEST_ARGS_", "-o after");
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "Second", "-o", "line", "-x", "line"}), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "First");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "after");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), "line");
    });
}

TEST_F(CInterface, WideParseReturnsOneAndConvertsToUtf8) {
    const std::wstring text = {L'\u00E9', static_cast<wchar_t>(0x1F600), static_cast<wchar_t>(0xD800)};
    inFreshProcess([&] {
        EXPECT_EQ(parseWide({L"mytest", L"-o", text, L"-w", L"Suite::Case"}), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "mytest");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "\xC3\xA9\xF0\x9F\x98\x80\xED\xA0\x80");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "Suite::Case");
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 1);
    });
}

TEST_F(CInterface, WideParseReturnsZeroForAValueThatIsNoNumber) {
    inFreshProcess([] { EXPECT_EQ(parseWide({L"mytest", L"-camemu", L"x3"}), 0); });
}

TEST_F(CInterface, WideParseReturnsZeroAndParsesNothingForACodePointOutOfRange) {
    inFreshProcess([] {
        EXPECT_EQ(parseWide({L"mytest", {static_cast<wchar_t>(0x110000)}}), 0);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        EXPECT_EQ(readEnvironment(), Environment());
    });
}

TEST_F(CInterface, WideParseReturnsZeroAndParsesNothingForANullArgument) {
    inFreshProcess([] {
        std::wstring name = L"mytest";
        wchar_t* arguments[] = {name.data(), nullptr};
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(2, arguments), 0);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        EXPECT_EQ(readEnvironment(), Environment());
    });
}

TEST_F(CInterface, WideParseReturnsZeroForANullVectorOrACountBelowZero) {
    inFreshProcess([] {
        std::wstring name = L"mytest";
        wchar_t* arguments[] = {name.data()};
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(1, nullptr), 0);
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(-1, arguments), 0);
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(-1, nullptr), 0);
        EXPECT_EQ(readEnvironment(), Environment());
    });
}

// ---- The getters

TEST_F(CInterface, GettersReturnWhatWasParsed) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"./mytest", "-x", "report.xml", "-o", "out.txt", "SuiteA", "SuiteB"}), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "./mytest");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), "report.xml");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "out.txt");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "SuiteA");
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 0);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 0);
    });
}

TEST_F(CInterface, TestPathIsAnEmptyTextWhenNoneWasParsed) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-w"}), 1);
        ASSERT_NE(OrvexTestCommandLineParser_GetTestPath(), nullptr);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "");
    });
}

TEST_F(CInterface, WaitFlagIsExactlyOne) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-w"}), 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 0);
    });
}

TEST_F(CInterface, HelpFlagIsExactlyOneForEachHelpSwitch) {
    for (const char* option : {"-?", "-h", "-H", "-help", "--help"}) {
        SCOPED_TRACE(option);
        inFreshProcess([&] {
            EXPECT_EQ(parseNarrow({"mytest", option}), 1);
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 1);
            EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 0);
        });
    }
}

TEST_F(CInterface, GettersReturnTheSamePointerUntilTheNextParse) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-x", fill(40), "-o", fill(50), fill(60)}), 1);
        using Getter = const char* (*)();
        for (const Getter getter :
             {&OrvexTestCommandLineParser_GetApplicationName, &OrvexTestCommandLineParser_GetXmlFilename,
              &OrvexTestCommandLineParser_GetOutputFilename, &OrvexTestCommandLineParser_GetTestPath}) {
            EXPECT_EQ(getter(), getter());
        }
    });
}

TEST_F(CInterface, GettersReturnTheTextsOfTheLastParse) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"-odd", "-x", "one", "-o", "one"}), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), "one");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "one");
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 0);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 0);

        EXPECT_EQ(parseNarrow({"mytest", "-x", "two", "-o", "two", "Suite", "-w", "-?"}), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "mytest");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "Suite");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), "two");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "two");
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 1);
    });
}

TEST_F(CInterface, EveryParseAddsToTheSameParser) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"first", "SuiteA", "-w", "-o", "one", "-x", "one", "-tdc_guid", "1234"}), 1);
        EXPECT_EQ(parseWide({L"second", L"SuiteB", L"-o", L"two", L"-h"}), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "first");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "SuiteA");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "two");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), "one");
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 1);
        expectInformation(1, {{0, "orvex"}, {1, "1234"}, {5, "0"}, {13, "any"}});
    });
}

TEST_F(CInterface, GettersShowWhatAFailedParseHadDone) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "Suite", "-o", "out", "-x", "xml", "-w", "-h", "-packetsize", "x"}),
                  0);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "mytest");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetTestPath(), "Suite");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "out");
        EXPECT_STREQ(OrvexTestCommandLineParser_GetXmlFilename(), "xml");
        EXPECT_EQ(OrvexTestCommandLineParser_GetWaitBeforeExit(), 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpRequested(), 1);
    });
}

// ---- The help message

TEST_F(CInterface, HelpMessageBeginsWithTheNameThatIsGiven) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"./mytest"}), 1);
        const std::string expected = OrvexTestCommandLineParser().getHelpMessage("prog");
        GuardedBuffer buffer(expected.size() + 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage("prog", buffer.data(), buffer.size),
                  expected.size());
        EXPECT_THAT(buffer.data(), StartsWith("prog [-?] [-camemu n]"));
        EXPECT_STREQ(buffer.data(), expected.c_str());
        buffer.expectGuardsUntouched();
    });
}

TEST_F(CInterface, HelpMessageBeginsWithTheParsedNameForANullOrEmptyName) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"./mytest"}), 1);
        const std::string expected = OrvexTestCommandLineParser().getHelpMessage("./mytest");
        for (const char* name : {static_cast<const char*>(nullptr), ""}) {
            SCOPED_TRACE(name == nullptr ? "null" : "empty");
            const std::size_t needed = OrvexTestCommandLineParser_GetHelpMessage(name, nullptr, 0);
            EXPECT_EQ(needed, expected.size() + 1);
            GuardedBuffer buffer(needed);
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage(name, buffer.data(), needed), needed - 1);
            EXPECT_EQ(buffer.text(0, needed), expected + '\0');
            buffer.expectGuardsUntouched();
        }
    });
}

TEST_F(CInterface, HelpMessageIsNotWrittenToABufferThatIsTooSmall) {
    inFreshProcess([] {
        const std::size_t length = OrvexTestCommandLineParser().getHelpMessage("prog").size();
        for (const std::size_t size : {std::size_t{0}, std::size_t{1}, length / 2, length - 1, length}) {
            SCOPED_TRACE(size);
            GuardedBuffer buffer(length + 1);
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage("prog", buffer.data(), size), length + 1);
            EXPECT_THAT(buffer.bytes, Each(untouched));
        }
    });
}

TEST_F(CInterface, HelpMessageLeavesTheBytesBehindItsTerminatorUntouched) {
    inFreshProcess([] {
        const std::string expected = OrvexTestCommandLineParser().getHelpMessage("prog");
        // The largest size checks that the comparison is unsigned.
        for (const std::size_t size :
             {expected.size() + 1, expected.size() + 2, expected.size() + 100, SIZE_MAX}) {
            SCOPED_TRACE(size);
            GuardedBuffer buffer(expected.size() + 1);
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage("prog", buffer.data(), size),
                      expected.size());
            EXPECT_EQ(buffer.text(0, buffer.size), expected + '\0');
            buffer.expectGuardsUntouched();
        }
    });
}

TEST_F(CInterface, HelpMessageForANullBufferReturnsTheSizeNeededWhateverTheSize) {
    inFreshProcess([] {
        const std::size_t needed = OrvexTestCommandLineParser().getHelpMessage("prog").size() + 1;
        for (const std::size_t size : {std::size_t{0}, needed - 1, needed, std::size_t{SIZE_MAX}}) {
            SCOPED_TRACE(size);
            EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage("prog", nullptr, size), needed);
        }
    });
}

}  // namespace
