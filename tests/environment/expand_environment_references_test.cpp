#include "environment/expand_environment_references.h"

#include "support/clean_environment.h"

#include <algorithm>
#include <string>

namespace {

struct ExpandRow {
    const char* testName;
    std::string text;
    std::string becomes;
    int result;
};

std::string nameOfExpandRow(const ::testing::TestParamInfo<ExpandRow>& row) {
    return row.param.testName;
}

class ExpandReferencesTable : public CleanEnvironmentTest, public ::testing::WithParamInterface<ExpandRow> {
protected:
    ExpandReferencesTable() {
        set("HOMEDIR", "/h");
        set("OTHER", "o");
        set("EMPTY", "");
        set(" HOMEDIR", "leading blank");
        set("HOMEDIR ", "trailing blank");
        set("TWO WORDS", "two words");
        set("$(HOMEDIR", "dollar and parenthesis");
        set("$$", "two dollars");
        set("a(b", "parenthesis");
        set("\x80\xFE\xFF", "high bytes");
        set("REFERENCE", "$(HOMEDIR)%HOMEDIR%$$%");
        set("PERCENT", "%");
        set("OPENING", "$(");
    }
};

}  // namespace

TEST_P(ExpandReferencesTable, Row) {
    std::string text = GetParam().text;
    const Environment before = readEnvironment();
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), GetParam().result);
    EXPECT_EQ(text, GetParam().becomes);
    EXPECT_EQ(readEnvironment(), before);
}

const ExpandRow exampleRows[] = {
    {"Empty", "", "", 0},
    {"NoReference", "abc", "abc", 0},
    {"LonePercent", "%", "%%", 1},
    {"TwoDollarsAlone", "$$", "$$", 0},
    {"LetterAndPercent", "a%", "a%%", 1},
    {"TwoDollarsInALongerText", "x$$y", "x$y", 0},
    {"UndefinedName", "$(UNSET_NAME)x", "x", 1},
    {"BothForms", "$(HOMEDIR)/x:%HOMEDIR%", "/h/x:/h", 2},
    {"LonePercentInALongerText", "a%b", "a%%b", 0},
    {"TwoPercentsInALongerText", "%%x", "%%x", 0},
    {"UnclosedParenthesis", "$(x", "$(x", 0},
    {"EmptyParentheses", "$()x", "$()x", 0},
};
INSTANTIATE_TEST_SUITE_P(Examples, ExpandReferencesTable, ::testing::ValuesIn(exampleRows), nameOfExpandRow);

const ExpandRow shortRows[] = {
    {"LoneDollar", "$", "$", 0},
    {"LoneLetter", "a", "a", 0},
    {"LoneHighByte", "\xFF", "\xFF", 0},
    {"TwoPercents", "%%", "%%", 0},
    {"TwoLetters", "ab", "ab", 0},
    {"PercentAndLetter", "%a", "%%a", 1},
    {"PercentAndDollar", "%$", "%%$", 1},
    {"DollarAndPercent", "$%", "$%%", 1},
    {"PercentAndHighByte", "%\xFF", "%%\xFF", 1},
    {"HighByteAndPercent", "\x80%", "\x80%%", 1},
    {"DollarAndParenthesis", "$(", "$(", 0},
    {"DollarAndLetter", "$a", "$a", 0},
    {"LetterAndDollar", "a$", "a$", 0},
};
INSTANTIATE_TEST_SUITE_P(ShortTexts, ExpandReferencesTable, ::testing::ValuesIn(shortRows), nameOfExpandRow);

const ExpandRow untouchedRows[] = {
    {"ParenthesesWithoutDollar", "(HOMEDIR)", "(HOMEDIR)", 0},
    {"Braces", "{HOMEDIR}", "{HOMEDIR}", 0},
    {"HighBytes", "\x80\x81\xC3\xA9\xFE\xFF", "\x80\x81\xC3\xA9\xFE\xFF", 0},
    {"ZeroByteInATextWithoutReference", std::string("ab\0cd", 5), std::string("ab\0cd", 5), 0},
};
INSTANTIATE_TEST_SUITE_P(NoDollarAndNoPercent, ExpandReferencesTable, ::testing::ValuesIn(untouchedRows),
                         nameOfExpandRow);

const ExpandRow dollarRows[] = {
    {"ThreeDollarsBecomeTwo", "$$$", "$$", 0},
    {"FourDollarsBecomeTwo", "$$$$", "$$", 0},
    {"DollarAtTheEnd", "ab$", "ab$", 0},
    {"DollarBeforeALetter", "a$b", "a$b", 0},
    {"DollarBeforeABrace", "${HOMEDIR}", "${HOMEDIR}", 0},
    {"DollarBeforeAHighByte", "a$\xFF", "a$\xFF", 0},
    {"TwoDollarsHideAParenthesis", "$$(HOMEDIR)", "$(HOMEDIR)", 0},
    {"ThreeDollarsDoNot", "$$$(HOMEDIR)", "$/h", 1},
    {"DollarBeforePercentReference", "$%HOMEDIR%", "$/h", 1},
    {"TwoDollarsAtTheEnd", "ab$$", "ab$", 0},
};
INSTANTIATE_TEST_SUITE_P(Dollars, ExpandReferencesTable, ::testing::ValuesIn(dollarRows), nameOfExpandRow);

const ExpandRow parenthesisRows[] = {
    {"Alone", "$(HOMEDIR)", "/h", 1},
    {"InTheMiddle", "a$(HOMEDIR)b", "a/hb", 1},
    {"Twice", "$(HOMEDIR)$(OTHER)", "/ho", 2},
    {"UndefinedNameAlone", "$(UNSET_NAME)", "", 1},
    {"EmptyVariableCounts", "<$(EMPTY)>", "<>", 1},
    {"NameIsCaseSensitive", "<$(homedir)>", "<>", 1},
    {"LeadingBlankBelongsToTheName", "$( HOMEDIR)", "leading blank", 1},
    {"TrailingBlankBelongsToTheName", "$(HOMEDIR )", "trailing blank", 1},
    {"BlankInTheName", "$(TWO WORDS)", "two words", 1},
    {"DollarAndParenthesisInTheName", "$($(HOMEDIR)", "dollar and parenthesis", 1},
    {"DollarsInTheName", "$($$)", "two dollars", 1},
    {"FirstClosingParenthesisEndsTheName", "$(a(b)c)", "parenthesisc)", 1},
    {"HighBytesInTheName", "$(\x80\xFE\xFF)", "high bytes", 1},
    {"EqualsSignInTheName", "<$(HOMEDIR=/h)>", "<>", 1},
    {"PercentInTheName", "<$(HOME%DIR)>", "<>", 1},
    {"EmptyParenthesesAlone", "$()", "$()", 0},
    {"EmptyParenthesesBeforeAReference", "$()$(HOMEDIR)", "$()/h", 1},
    {"EmptyParenthesesAfterAReference", "$(HOMEDIR)$()", "/h$()", 1},
    {"UnclosedAtTheEnd", "ab$(", "ab$(", 0},
    {"UnclosedAfterAReference", "$(HOMEDIR)$(HOMEDIR", "/h$(HOMEDIR", 1},
    {"UnclosedTwice", "$(a$(b", "$(a$(b", 0},
    {"UnclosedBeforeTwoDollars", "$(a$$", "$(a$", 0},
    {"UnclosedBeforeAPercentReference", "$(%HOMEDIR%", "$(/h", 1},
    {"UnclosedBeforeALonePercent", "$(a%b", "$(a%%b", 0},
    {"ClosingParenthesisBeforeTheOpening", ")$(HOMEDIR", ")$(HOMEDIR", 0},
    {"ClosingParenthesisAlone", "$)(", "$)(", 0},
};
INSTANTIATE_TEST_SUITE_P(Parentheses, ExpandReferencesTable, ::testing::ValuesIn(parenthesisRows),
                         nameOfExpandRow);

const ExpandRow percentRows[] = {
    {"Alone", "%HOMEDIR%", "/h", 1},
    {"InTheMiddle", "a%HOMEDIR%b", "a/hb", 1},
    {"Twice", "%HOMEDIR%%OTHER%", "/ho", 2},
    {"UndefinedNameAlone", "%UNSET_NAME%", "", 1},
    {"EmptyVariableCounts", "<%EMPTY%>", "<>", 1},
    {"NameIsCaseSensitive", "<%homedir%>", "<>", 1},
    {"LeadingBlankBelongsToTheName", "% HOMEDIR%", "leading blank", 1},
    {"TrailingBlankBelongsToTheName", "%HOMEDIR %", "trailing blank", 1},
    {"BlankInTheName", "%TWO WORDS%", "two words", 1},
    {"DollarAndParenthesisInTheName", "%$(HOMEDIR%", "dollar and parenthesis", 1},
    {"DollarsInTheName", "%$$%", "two dollars", 1},
    {"ParenthesisReferenceAsName", "<%$(HOMEDIR)%>", "<>", 1},
    {"HighBytesInTheName", "%\x80\xFE\xFF%", "high bytes", 1},
    {"OneByteName", "<%a%>", "<>", 1},
    {"NoFurtherPercentIsDoubled", "%HOMEDIR", "%%HOMEDIR", 0},
    {"PercentAtTheEndIsDoubled", "HOMEDIR%", "HOMEDIR%%", 0},
    {"LonePercentAfterAReferenceIsDoubled", "%HOMEDIR%%", "/h%%", 1},
    {"TwoPercentsStay", "ab%%", "ab%%", 0},
    {"TwoPercentsDoNotOpenAReference", "%%HOMEDIR%%", "%%HOMEDIR%%", 0},
    {"ThreePercentsBecomeFour", "%%%", "%%%%", 0},
    {"FourPercentsStay", "%%%%", "%%%%", 0},
    {"TwoPercentsBeforeAReference", "%%%HOMEDIR%", "%%/h", 1},
    {"LonePercentBeforeAHighByte", "a%\xFF", "a%%\xFF", 0},
    {"LonePercentBeforeAParenthesisReference", "%$(HOMEDIR)", "%%/h", 1},
};
INSTANTIATE_TEST_SUITE_P(Percents, ExpandReferencesTable, ::testing::ValuesIn(percentRows), nameOfExpandRow);

const ExpandRow valueRows[] = {
    {"ParenthesisReference", "$(REFERENCE)", "$(HOMEDIR)%HOMEDIR%$$%", 1},
    {"PercentReference", "%REFERENCE%", "$(HOMEDIR)%HOMEDIR%$$%", 1},
    {"PercentFromAValueClosesNothing", "$(PERCENT)HOMEDIR%", "%HOMEDIR%%", 1},
    {"OpeningFromAValueOpensNothing", "$(OPENING)HOMEDIR)", "$(HOMEDIR)", 1},
};
INSTANTIATE_TEST_SUITE_P(ValuesAreNotScannedAgain, ExpandReferencesTable, ::testing::ValuesIn(valueRows),
                         nameOfExpandRow);

const ExpandRow zeroByteRows[] = {
    {"EndsTheScan", std::string("$(HOMEDIR)\0$(OTHER)", 19), "/h", 1},
    {"HidesTheClosingParenthesis", std::string("$(HOMEDIR\0)", 11), "$(HOMEDIR", 0},
    {"HidesTheClosingPercent", std::string("%HOMEDIR\0%", 10), "%%HOMEDIR", 0},
    {"CutsATextWhoseReferenceComesLater", std::string("ab\0$", 4), "ab", 0},
};
INSTANTIATE_TEST_SUITE_P(ZeroByte, ExpandReferencesTable, ::testing::ValuesIn(zeroByteRows), nameOfExpandRow);

class ExpandReferences : public CleanEnvironmentTest {};

TEST_F(ExpandReferences, EveryTextOfOneByteButPercentStays) {
    for (int byte = 0; byte <= 0xFF; ++byte) {
        SCOPED_TRACE(byte);
        const bool isPercent = byte == '%';
        const std::string before(1, static_cast<char>(byte));
        std::string text = before;
        EXPECT_EQ(orvex::expandEnvironmentReferences(text), isPercent ? 1 : 0);
        EXPECT_EQ(text, isPercent ? "%%" : before);
    }
}

TEST_F(ExpandReferences, EveryOrdinaryByteIsCopiedBesideAReference) {
    set("HOMEDIR", "/h");
    for (int byte = 1; byte <= 0xFF; ++byte) {
        if (byte == '$' || byte == '%') {
            continue;
        }
        SCOPED_TRACE(byte);
        const auto ordinary = static_cast<char>(byte);
        std::string text = "x$(HOMEDIR)x%HOMEDIR%x";
        std::string expected = "x/hx/hx";
        std::replace(text.begin(), text.end(), 'x', ordinary);
        std::replace(expected.begin(), expected.end(), 'x', ordinary);
        EXPECT_EQ(orvex::expandEnvironmentReferences(text), 2);
        EXPECT_EQ(text, expected);
    }
}

TEST_F(ExpandReferences, ValueOfEveryByteIsCopied) {
    std::string value;
    for (int byte = 1; byte <= 0xFF; ++byte) {
        value += static_cast<char>(byte);
    }
    set("VALUE", value);
    std::string text = "$(VALUE)%VALUE%";
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 2);
    EXPECT_EQ(text, value + value);
}

TEST_F(ExpandReferences, ResultMayBeMuchLongerThanTheText) {
    const std::string value(100000, 'v');
    set("V", value);
    std::string text = "$(V)%V%$(V)";
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 3);
    EXPECT_EQ(text, value + value + value);
}

TEST_F(ExpandReferences, RoomIsMadeForFourTimesTheText) {
    std::string text = std::string(999, 'a') + "%";
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 0);
    EXPECT_GE(text.capacity(), 4 * 1000U);
    EXPECT_LE(text.capacity(), 4 * 1000U + 15) << "more than a standard library rounds up";
}

TEST_F(ExpandReferences, CountsEveryReferenceOfALongText) {
    std::string text;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        text += "$(UNSET_NAME)a%UNSET_NAME%b$$";
        expected += "ab$";
    }
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 2000);
    EXPECT_EQ(text, expected);
}
