#include "OrvexTestCommandLineParser.h"

#include "parser/parser_test.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace {

using ::testing::ContainerEq;
using ::testing::ElementsAre;

// A text of one code point that wide literals cannot hold.
std::wstring codePoint(unsigned value) {
    return std::wstring(1, static_cast<wchar_t>(value));
}

class ParseOverloads : public ParserTest {
protected:
    ParseOverloads() {
        set("ORVEX_TEST_ARGS", "-x fromVariable");
        before = readEnvironment();
    }

    bool parseWide(std::vector<std::wstring> texts) {
        std::vector<wchar_t*> pointers;
        pointers.reserve(texts.size());
        for (std::wstring& text : texts) {
            pointers.push_back(text.data());
        }
        return parser.Parse(static_cast<int>(pointers.size()), pointers.data());
    }

    // Parses a block that holds the texts, each with its terminating zero, and nothing else: it is on the
    // heap, where a memory checker sees a read beyond its end.
    bool parsePacked(int argc, const std::vector<std::string>& texts) {
        std::vector<char> block;
        for (const std::string& text : texts) {
            block.insert(block.end(), text.begin(), text.end());
            block.push_back('\0');
        }
        block.shrink_to_fit();
        return parser.Parse(argc, block.data());
    }

    Environment before;
};

using WideForm = ParseOverloads;
using PackedForm = ParseOverloads;

TEST_F(WideForm, ParsesAsTheNarrowForm) {
    EXPECT_TRUE(parseWide({L"mytest", L"-o", L"out.xml", L"-tl", L"A", L"-tl=B", L"-w", L"Suite", L""}));
    EXPECT_EQ(parser.getApplicationName(), "mytest");
    EXPECT_EQ(parser.getOutputFilename(), "out.xml");
    EXPECT_EQ(parser.getXmlFilename(), "fromVariable");
    EXPECT_EQ(get("TRANSPORT_LAYER"), "A B");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite", ""));
}

TEST_F(WideForm, CodePointsBecomeUtf8) {
    EXPECT_TRUE(parseWide({L"\u00FCtest", L"-tdc_userid", L"Ren\u00E9", L"-x", L"\U0001F600.xml", L"\u20AC",
                           codePoint(0xD800)}));
    EXPECT_EQ(parser.getApplicationName(), "\xC3\xBCtest");
    EXPECT_EQ(get("USER_UID"), "Ren\xC3\xA9");
    EXPECT_EQ(parser.getXmlFilename(), "\xF0\x9F\x98\x80.xml");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("\xE2\x82\xAC", "\xED\xA0\x80"));
}

TEST_F(WideForm, ReadsExactlyArgcArgumentsAndKeepsNoneOfThem) {
    std::wstring application = L"app";
    std::wstring suite = L"\u20AC";
    std::wstring unread = codePoint(0x110000);
    wchar_t* argv[] = {application.data(), suite.data(), unread.data()};
    EXPECT_TRUE(parser.Parse(2, argv));
    EXPECT_STREQ(argv[0], L"app");
    EXPECT_STREQ(argv[1], L"\u20AC");
    application.assign(3, L'?');
    suite.assign(1, L'?');
    EXPECT_EQ(parser.getApplicationName(), "app");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("\xE2\x82\xAC"));
}

TEST_F(WideForm, ReturnsTheResultOfTheNarrowForm) {
    EXPECT_FALSE(parseWide({L"app", L"-packetsize", L"\u00E9", L"Suite"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), "1");
}

TEST_F(WideForm, ACodePointAboveTheLastIsRefusedBeforeAnythingIsParsed) {
    EXPECT_FALSE(parseWide({codePoint(0x110000), L"-o", L"file", L"Suite"}));
    EXPECT_FALSE(parseWide({L"app", L"-o", L"file", L"Suite" + codePoint(0x110000)}));
    EXPECT_FALSE(parseWide({L"app", L"-o", L"file", codePoint(0xFFFFFFFF)}));
    expectNothingParsed(before);
}

TEST_F(WideForm, ANullArgumentIsRefusedBeforeAnythingIsParsed) {
    std::wstring application = L"app";
    wchar_t* first[] = {nullptr, application.data()};
    wchar_t* last[] = {application.data(), nullptr};
    EXPECT_FALSE(parser.Parse(2, first));
    EXPECT_FALSE(parser.Parse(2, last));
    expectNothingParsed(before);
}

TEST_F(WideForm, ARefusalKeepsWhatAnEarlierParseLeft) {
    ASSERT_TRUE(parseWide({L"app", L"-o", L"file", L"-tl", L"A", L"Suite"}));
    const Snapshot state = stateOf(parser);
    const Environment environment = readEnvironment();
    EXPECT_FALSE(parseWide({L"other", L"-o", L"other", codePoint(0x110000)}));
    EXPECT_THAT(stateOf(parser), ContainerEq(state));
    EXPECT_THAT(readEnvironment(), ContainerEq(environment));
}

TEST_F(WideForm, ANullVectorAndANegativeCountAreRefused) {
    std::wstring application = L"app";
    wchar_t* argv[] = {application.data()};
    EXPECT_FALSE(parser.Parse(1, static_cast<wchar_t**>(nullptr)));
    EXPECT_FALSE(parser.Parse(-1, argv));
    EXPECT_FALSE(parser.Parse(std::numeric_limits<int>::min(), argv));
    expectNothingParsed(before);
}

TEST_F(WideForm, WithACountOfZeroNothingIsRead) {
    std::wstring tooLarge = codePoint(0x110000);
    wchar_t* argv[] = {tooLarge.data()};
    EXPECT_TRUE(parser.Parse(0, static_cast<wchar_t**>(nullptr)));
    EXPECT_TRUE(parser.Parse(0, argv));
    expectNothingParsed(before);
}

TEST_F(PackedForm, ParsesTheTextsOfTheBlock) {
    EXPECT_TRUE(parsePacked(5, {"prog", "-w", "-o", "out.xml", "\x01\x80\xFF b"}));
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getOutputFilename(), "out.xml");
    EXPECT_EQ(parser.getXmlFilename(), "fromVariable");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("\x01\x80\xFF b"));
}

TEST_F(PackedForm, UsesOnlyTheFirstArgcTexts) {
    EXPECT_TRUE(parsePacked(2, {"prog", "Suite", "-w", "", "More"}));
    EXPECT_FALSE(parser.waitBeforeExit());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(PackedForm, KeepsNothingOfTheBlockAndDoesNotChangeIt) {
    char block[] = "prog\0Suite";
    EXPECT_TRUE(parser.Parse(2, block));
    EXPECT_EQ(std::string(block, sizeof block), std::string("prog\0Suite\0", 11));
    std::fill(block, block + sizeof block, '?');
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(PackedForm, ReturnsTheResultOfTheNarrowForm) {
    EXPECT_FALSE(parsePacked(4, {"prog", "-packetsize", "x", "Suite"}));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
    EXPECT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), "1");
}

TEST_F(PackedForm, AnEmptyTextIsRefusedBeforeAnythingIsParsed) {
    EXPECT_FALSE(parsePacked(3, {"prog", "", "Suite"}));
    EXPECT_FALSE(parsePacked(3, {"", "prog", "Suite"}));
    EXPECT_FALSE(parsePacked(4, {"prog", "-o", "file", ""}));
    expectNothingParsed(before);
}

TEST_F(PackedForm, ANegativeCountIsRefused) {
    EXPECT_FALSE(parsePacked(-1, {"prog", "Suite"}));
    EXPECT_FALSE(parsePacked(std::numeric_limits<int>::min(), {"prog", "Suite"}));
    expectNothingParsed(before);
}

TEST_F(PackedForm, WithACountOfZeroNothingIsRead) {
    EXPECT_TRUE(parser.Parse(0, static_cast<char*>(nullptr)));
    EXPECT_TRUE(parsePacked(0, {""}));
    expectNothingParsed(before);
}

}  // namespace
