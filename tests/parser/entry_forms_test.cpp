#include "OrvexTestCommandLineParser.h"

#include "parser/parser_state.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using ::testing::ElementsAre;

// Owns the texts of a wide argument vector.
class WideArguments {
public:
    explicit WideArguments(std::vector<std::wstring> list) : texts(std::move(list)) {
        for (std::wstring& text : texts) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
    }

    int argc() const {
        return static_cast<int>(texts.size());
    }
    wchar_t** argv() {
        return pointers.data();
    }

private:
    std::vector<std::wstring> texts;
    std::vector<wchar_t*> pointers;
};

bool parseWide(OrvexTestCommandLineParser& parser, std::vector<std::wstring> list) {
    WideArguments arguments(std::move(list));
    return parser.Parse(arguments.argc(), arguments.argv());
}

// Parses a block that holds the texts, each with its terminating zero, and nothing else: it is on the
// heap, where a memory checker sees a read behind its end.
bool parsePacked(OrvexTestCommandLineParser& parser, int argc, const std::vector<std::string>& list) {
    std::vector<char> block;
    for (const std::string& text : list) {
        block.insert(block.end(), text.begin(), text.end());
        block.push_back('\0');
    }
    block.shrink_to_fit();
    return parser.Parse(argc, block.data());
}

// A text of one code point that wide literals cannot hold.
std::wstring codePoint(unsigned value) {
    return std::wstring(1, static_cast<wchar_t>(value));
}

class EntryFormsTest : public CleanEnvironmentTest {
protected:
    // Expects that the parser and the environment are as they were when the test began, and that
    // nothing was scanned either, which only the next parse would show.
    void expectNothingParsed() {
        EXPECT_EQ(readState(parser), readState(OrvexTestCommandLineParser()));
        EXPECT_EQ(readEnvironment(), Environment({{"ORVEX_TEST_ARGS", "-x fromVariable"}}));
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, {"next"}));
        EXPECT_EQ(parser.getApplicationName(), "next");
        EXPECT_EQ(parser.getXmlFilename(), "");
        EXPECT_EQ(parser.getOutputFilename(), "");
        EXPECT_THAT(parser.getTestPaths(), ElementsAre());
    }

    OrvexTestCommandLineParser parser;
};

using WideFormTest = EntryFormsTest;
using PackedFormTest = EntryFormsTest;

// The wide form

TEST_F(WideFormTest, ParsesAsTheNarrowForm) {
    EXPECT_TRUE(parseWide(parser, {L"mytest", L"-o", L"out.xml", L"-tl", L"A", L"-tl=B", L"-w", L"Suite"}));
    EXPECT_EQ(parser.getApplicationName(), "mytest");
    EXPECT_EQ(parser.getOutputFilename(), "out.xml");
    EXPECT_EQ(parser.getTlList(), "A,B");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "A B");
}

TEST_F(WideFormTest, CodePointsBecomeUtf8) {
    EXPECT_TRUE(parseWide(parser, {L"\u00FCtest", L"-o", L"caf\u00E9", L"-x", L"\U0001F600.xml", L"\u20AC",
                                   codePoint(0xD800), L"a" + codePoint(0x10FFFF) + L"b"}));
    EXPECT_EQ(parser.getApplicationName(), "\xC3\xBCtest");
    EXPECT_EQ(parser.getOutputFilename(), "caf\xC3\xA9");
    EXPECT_EQ(parser.getXmlFilename(), "\xF0\x9F\x98\x80.xml");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("\xE2\x82\xAC", "\xED\xA0\x80",
                                                   "a\xF4\x8F\xBF\xBF"
                                                   "b"));
}

TEST_F(WideFormTest, ConvertedTextReachesTheRecordAndTheEnvironment) {
    EXPECT_TRUE(parseWide(parser, {L"app", L"-tdc_userid", L"J\u00F6rg"}));
    EXPECT_EQ(parser.getTestRunInformation().userId, "J\xC3\xB6rg");
    EXPECT_EQ(get("USER_UID"), "J\xC3\xB6rg");
}

TEST_F(WideFormTest, ReadsBothArgumentVariables) {
    set("ORVEX_TEST_ARGS", "SuiteA");
    set("_ORVEX_TEST_ARGS_", "SuiteC");
    EXPECT_TRUE(parseWide(parser, {L"app", L"SuiteB"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteC"));
}

TEST_F(WideFormTest, EmptyArgumentsAreArguments) {
    EXPECT_TRUE(parseWide(parser, {L"", L"-o", L"", L"", L"Suite", L""}));
    EXPECT_EQ(parser.getApplicationName(), "");
    EXPECT_EQ(parser.getOutputFilename(), "");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("", "Suite", ""));
}

TEST_F(WideFormTest, KeepsNothingOfTheArguments) {
    std::wstring application = L"app";
    std::wstring suite = L"Suite";
    wchar_t* argv[] = {application.data(), suite.data(), nullptr};
    EXPECT_TRUE(parser.Parse(2, argv));
    application.assign(3, L'?');
    suite.assign(5, L'?');
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(WideFormTest, ChangesNeitherTheArgumentsNorTheirPointers) {
    std::wstring application = L"app";
    std::wstring suite = L"\u20AC";
    wchar_t* argv[] = {application.data(), suite.data(), nullptr};
    EXPECT_TRUE(parser.Parse(2, argv));
    EXPECT_EQ(application, L"app");
    EXPECT_EQ(suite, L"\u20AC");
    EXPECT_EQ(argv[0], application.data());
    EXPECT_EQ(argv[1], suite.data());
    EXPECT_EQ(argv[2], nullptr);
}

TEST_F(WideFormTest, ReadsExactlyArgcArguments) {
    std::wstring beyond = codePoint(0x110000);
    std::wstring application = L"app";
    std::wstring suite = L"Suite";
    wchar_t* argv[] = {application.data(), suite.data(), beyond.data(), nullptr};
    EXPECT_TRUE(parser.Parse(2, argv));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(WideFormTest, ReturnsTheResultOfTheNarrowForm) {
    EXPECT_FALSE(parseWide(parser, {L"app", L"-packetsize", L"\u00E9", L"Suite"}));
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), "1");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPS"), "(undefined)");
}

TEST_F(WideFormTest, ACodePointAboveTheLastIsRefusedBeforeAnythingIsParsed) {
    const std::vector<std::vector<std::wstring>> lists = {
        {codePoint(0x110000)},
        {codePoint(0x110000), L"-o", L"file", L"Suite"},
        {L"app", L"-o", L"fi" + codePoint(0x110000) + L"le", L"Suite"},
        {L"app", L"-o", L"file", L"Suite" + codePoint(0x110000)},
        {L"app", L"-o", L"file", codePoint(0xFFFFFFFF)},
        {L"app", L"-o", L"file", codePoint(0x80000000)},
    };
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    for (const std::vector<std::wstring>& list : lists) {
        EXPECT_FALSE(parseWide(parser, list));
    }
    expectNothingParsed();
}

TEST_F(WideFormTest, ANullArgumentIsRefusedBeforeAnythingIsParsed) {
    std::wstring application = L"app";
    std::wstring suite = L"Suite";
    wchar_t* first[] = {nullptr, suite.data(), suite.data()};
    wchar_t* middle[] = {application.data(), nullptr, suite.data()};
    wchar_t* last[] = {application.data(), suite.data(), nullptr};
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    EXPECT_FALSE(parser.Parse(3, first));
    EXPECT_FALSE(parser.Parse(3, middle));
    EXPECT_FALSE(parser.Parse(3, last));
    expectNothingParsed();
}

TEST_F(WideFormTest, ARefusalKeepsWhatAnEarlierParseLeft) {
    ASSERT_TRUE(parseWide(parser, {L"app", L"-o", L"file", L"-tl", L"A", L"-h", L"Suite"}));
    const Snapshot state = readState(parser);
    const Environment environment = readEnvironment();
    EXPECT_FALSE(parseWide(parser, {L"other", L"-o", L"other", codePoint(0x110000)}));
    EXPECT_EQ(readState(parser), state);
    EXPECT_EQ(readEnvironment(), environment);
}

TEST_F(WideFormTest, ANullVectorIsRefused) {
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    EXPECT_FALSE(parser.Parse(1, static_cast<wchar_t**>(nullptr)));
    EXPECT_FALSE(parser.Parse(1000, static_cast<wchar_t**>(nullptr)));
    expectNothingParsed();
}

TEST_F(WideFormTest, ANegativeCountIsRefused) {
    WideArguments arguments({L"app", L"Suite"});
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    for (const int argc : {-1, -2, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(argc);
        EXPECT_FALSE(parser.Parse(argc, arguments.argv()));
        EXPECT_FALSE(parser.Parse(argc, static_cast<wchar_t**>(nullptr)));
    }
    expectNothingParsed();
}

TEST_F(WideFormTest, WithACountOfZeroNothingIsRead) {
    wchar_t* noArgument[] = {nullptr};
    std::wstring tooLarge = codePoint(0x110000);
    wchar_t* badArgument[] = {tooLarge.data()};
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    EXPECT_TRUE(parser.Parse(0, static_cast<wchar_t**>(nullptr)));
    EXPECT_TRUE(parser.Parse(0, noArgument));
    EXPECT_TRUE(parser.Parse(0, badArgument));
    expectNothingParsed();
}

TEST_F(WideFormTest, ManyAndLongArgumentsAreConverted) {
    std::string expected;
    for (int i = 0; i < 1 << 18; ++i) {
        expected += "\xF0\x9F\x98\x80";
    }
    std::vector<std::wstring> list(100000, L"\u00E9");
    list.insert(list.begin(), {L"app", L"-o", std::wstring(1 << 18, L'\U0001F600')});
    EXPECT_TRUE(parseWide(parser, list));
    EXPECT_TRUE(parser.getOutputFilename() == expected);
    EXPECT_TRUE(parser.getTestPaths() == std::vector<std::string>(100000, "\xC3\xA9"));
}

// The packed form

TEST_F(PackedFormTest, ParsesTheTextsOfTheBlock) {
    char block[] = "prog\0-w\0-o\0out.xml";
    EXPECT_TRUE(parser.Parse(4, block));
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getOutputFilename(), "out.xml");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre());
}

TEST_F(PackedFormTest, ReadsNothingBehindTheLastText) {
    EXPECT_TRUE(parsePacked(parser, 3, {"prog", "a b", "Suite"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("a b", "Suite"));
}

TEST_F(PackedFormTest, UsesOnlyTheFirstArgcTexts) {
    EXPECT_TRUE(parsePacked(parser, 2, {"prog", "Suite", "-w", "Other", "", "More"}));
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_FALSE(parser.waitBeforeExit());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(PackedFormTest, OneTextIsTheProgramName) {
    EXPECT_TRUE(parsePacked(parser, 1, {"prog"}));
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre());
}

TEST_F(PackedFormTest, BytesAreTakenAsTheyStand) {
    EXPECT_TRUE(parsePacked(parser, 3, {"prog", "\x01\x7F\x80\xFF", "\xC3\xA9"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("\x01\x7F\x80\xFF", "\xC3\xA9"));
}

TEST_F(PackedFormTest, ReadsBothArgumentVariables) {
    set("ORVEX_TEST_ARGS", "SuiteA");
    set("_ORVEX_TEST_ARGS_", "SuiteC");
    EXPECT_TRUE(parsePacked(parser, 2, {"prog", "SuiteB"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("SuiteA", "SuiteB", "SuiteC"));
}

TEST_F(PackedFormTest, KeepsNothingOfTheBlockAndDoesNotChangeIt) {
    char block[] = "prog\0Suite";
    const std::string before(block, sizeof block);
    EXPECT_TRUE(parser.Parse(2, block));
    EXPECT_EQ(std::string(block, sizeof block), before);
    std::fill(block, block + sizeof block, '?');
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(PackedFormTest, ReturnsTheResultOfTheNarrowForm) {
    EXPECT_FALSE(parsePacked(parser, 4, {"prog", "-packetsize", "x", "Suite"}));
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), "1");
}

TEST_F(PackedFormTest, AnEmptyTextIsRefusedBeforeAnythingIsParsed) {
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    EXPECT_FALSE(parsePacked(parser, 3, {"prog", "", "Suite"}));
    EXPECT_FALSE(parsePacked(parser, 3, {"", "prog", "Suite"}));
    EXPECT_FALSE(parsePacked(parser, 4, {"prog", "-o", "file", ""}));
    EXPECT_FALSE(parsePacked(parser, 1, {""}));
    expectNothingParsed();
}

TEST_F(PackedFormTest, ARefusalKeepsWhatAnEarlierParseLeft) {
    ASSERT_TRUE(parsePacked(parser, 5, {"prog", "-o", "file", "-h", "Suite"}));
    const Snapshot state = readState(parser);
    const Environment environment = readEnvironment();
    EXPECT_FALSE(parsePacked(parser, 4, {"other", "-o", "other", ""}));
    EXPECT_EQ(readState(parser), state);
    EXPECT_EQ(readEnvironment(), environment);
}

TEST_F(PackedFormTest, ANegativeCountIsRefused) {
    char block[] = "prog\0Suite";
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    for (const int argc : {-1, -2, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(argc);
        EXPECT_FALSE(parser.Parse(argc, block));
    }
    expectNothingParsed();
}

TEST_F(PackedFormTest, WithACountOfZeroNothingIsRead) {
    char emptyText[] = "";
    const std::unique_ptr<char[]> noMemory(new char[0]);
    set("ORVEX_TEST_ARGS", "-x fromVariable");
    EXPECT_TRUE(parser.Parse(0, static_cast<char*>(nullptr)));
    EXPECT_TRUE(parser.Parse(0, emptyText));
    EXPECT_TRUE(parser.Parse(0, noMemory.get()));
    expectNothingParsed();
}

TEST_F(PackedFormTest, ManyAndLongTextsAreParsed) {
    const std::string megabyte(1 << 20, 'x');
    std::vector<std::string> list(100000, "Suite");
    list.insert(list.begin(), {"prog", "-o", megabyte});
    EXPECT_TRUE(parsePacked(parser, static_cast<int>(list.size()), list));
    EXPECT_TRUE(parser.getOutputFilename() == megabyte);
    EXPECT_TRUE(parser.getTestPaths() == std::vector<std::string>(100000, "Suite"));
}

}  // namespace
