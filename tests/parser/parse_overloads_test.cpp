#include "OrvexTestCommandLineParser.h"

#include "support/parser_test.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

const std::u32string tooLarge{0x110000};

// A variable shows whether the narrow Parse was reached.
class ParseOverloads : public ParserTest {
protected:
    ParseOverloads() {
        writeEnvironment(before);
    }

    bool parseWide(const std::vector<WideArgument>& arguments, std::optional<int> argc = {}) {
        return make({Form::Wide, {}, arguments, argc}, parser) != 0;
    }

    bool parsePacked(int argc, const Strings& arguments) {
        return make({Form::Packed, arguments, {}, argc}, parser) != 0;
    }

    const Environment before = {{"ORVEX_TEST_ARGS", "-x fromVariable"}};
};

using WideParse = ParseOverloads;
using PackedParse = ParseOverloads;

TEST_F(WideParse, ConvertsToUtf8AndParsesLikeTheNarrowForm) {
    EXPECT_TRUE(parseWide({U"\u00FCtest", U"-o", U"\U0001F600.xml", U"-tl", U"A", U"-tl=B", U"-w", U"\u20AC",
                           U"", std::u32string{0xD800}}));
    EXPECT_EQ(parser.getApplicationName(), "\xC3\xBCtest");
    EXPECT_EQ(parser.getOutputFilename(), "\xF0\x9F\x98\x80.xml");
    EXPECT_EQ(parser.getXmlFilename(), "fromVariable");
    EXPECT_EQ(get("TRANSPORT_LAYER"), "A B");
    EXPECT_TRUE(parser.waitBeforeExit());
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("\xE2\x82\xAC", "", "\xED\xA0\x80"));
}

TEST_F(WideParse, ReadsExactlyArgcArguments) {
    EXPECT_TRUE(parseWide({U"app", U"Suite", tooLarge}, 2));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("Suite"));
}

TEST_F(WideParse, InvalidArgumentsReturnFalseAndChangeNothing) {
    EXPECT_FALSE(parseWide({tooLarge, U"-o", U"file", U"Suite"}));
    EXPECT_FALSE(parseWide({U"app", U"-o", U"file", U"S" + tooLarge}));
    EXPECT_FALSE(parseWide({std::nullopt, U"app"}));
    EXPECT_FALSE(parseWide({U"app", std::nullopt}));
    EXPECT_FALSE(parseWide({U"app"}, -1));
    EXPECT_FALSE(parser.Parse(1, static_cast<wchar_t**>(nullptr)));
    expectNothingParsed(before);
}

TEST_F(WideParse, ZeroArgcReturnsTrueAndReadsNothing) {
    EXPECT_TRUE(parseWide({tooLarge}, 0));
    EXPECT_TRUE(parser.Parse(0, static_cast<wchar_t**>(nullptr)));
    expectNothingParsed(before);
}

TEST_F(PackedParse, ParsesTheFirstArgcStringsOfTheBlockAndCopiesThem) {
    char block[] = "prog\0-o\0out.xml\0\x01\x80\xFF b\0-w\0\0More";
    const std::string before(block, sizeof block);
    EXPECT_TRUE(parser.Parse(4, block));
    EXPECT_EQ(std::string(block, sizeof block), before);
    std::fill(block, block + sizeof block, '?');
    EXPECT_EQ(parser.getApplicationName(), "prog");
    EXPECT_FALSE(parser.waitBeforeExit());
    EXPECT_EQ(parser.getOutputFilename(), "out.xml");
    EXPECT_EQ(parser.getXmlFilename(), "fromVariable");
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("\x01\x80\xFF b"));
}

TEST_F(PackedParse, EmptyStringOrNegativeArgcReturnsFalseAndChangesNothing) {
    EXPECT_FALSE(parsePacked(3, {"prog", "", "Suite"}));
    EXPECT_FALSE(parsePacked(3, {"", "prog", "Suite"}));
    EXPECT_FALSE(parsePacked(4, {"prog", "-o", "file", ""}));
    EXPECT_FALSE(parsePacked(-1, {"prog", "Suite"}));
    expectNothingParsed(before);
}

TEST_F(PackedParse, ZeroArgcReturnsTrueAndReadsNothing) {
    EXPECT_TRUE(parser.Parse(0, static_cast<char*>(nullptr)));
    EXPECT_TRUE(parsePacked(0, {""}));
    expectNothingParsed(before);
}

}  // namespace
