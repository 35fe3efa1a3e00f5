#include "environment/expand_environment_references.h"

#include "support/clean_environment.h"

#include <string>
#include <vector>

namespace {

struct Row {
    std::string text;
    std::string expected;
    int result;
};

class ExpandReferences : public CleanEnvironmentTest {
protected:
    ExpandReferences() {
        writeEnvironment({{"HOMEDIR", "/h"},
                          {"OTHER", "o"},
                          {"EMPTY", ""},
                          {" TWO WORDS ", "blanks"},
                          {"$(HOMEDIR", "dollar and parenthesis"},
                          {"$$", "two dollars"},
                          {"a(b", "parenthesis"},
                          {"\x80\xFF", "\xFE\x01"},
                          {"REFERENCE", "$(HOMEDIR)%HOMEDIR%$$%"},
                          {"PERCENT", "%"},
                          {"OPENING", "$("}});
    }

    static void expectExpansions(const std::vector<Row>& rows) {
        const Environment before = readEnvironment();
        for (const Row& row : rows) {
            std::string text = row.text;
            ASSERT_EQ(orvex::expandEnvironmentReferences(text), row.result) << row.text;
            ASSERT_EQ(text, row.expected) << row.text;
        }
        EXPECT_EQ(readEnvironment(), before);
    }
};

TEST_F(ExpandReferences, Examples) {
    expectExpansions({
        {"", "", 0},
        {"abc", "abc", 0},
        {"%", "%%", 1},
        {"$$", "$$", 0},
        {"a%", "a%%", 1},
        {"x$$y", "x$y", 0},
        {"$(UNSET_NAME)x", "x", 1},
        {"$(HOMEDIR)/x:%HOMEDIR%", "/h/x:/h", 2},
        {"a%b", "a%%b", 0},
        {"%%x", "%%x", 0},
        {"$(x", "$(x", 0},
        {"$()x", "$()x", 0},
    });
}

TEST_F(ExpandReferences, OnlyALonePercentIsDoubledInATextOfOneOrTwoBytes) {
    expectExpansions({
        {"$", "$", 0},
        {"a", "a", 0},
        {"%%", "%%", 0},
        {"%a", "%%a", 1},
        {"%$", "%%$", 1},
        {"$%", "$%%", 1},
        {"\x80%", "\x80%%", 1},
        {"$(", "$(", 0},
        {"a$", "a$", 0},
    });
}

TEST_F(ExpandReferences, ADollarStandsForItselfUnlessItIsDoubledOrOpensAReference) {
    expectExpansions({
        {"$$$", "$$", 0},
        {"$$$$", "$$", 0},
        {"ab$", "ab$", 0},
        {"a$\xFF", "a$\xFF", 0},
        {"${HOMEDIR}", "${HOMEDIR}", 0},
        {"(HOMEDIR)$", "(HOMEDIR)$", 0},
        {"$$(HOMEDIR)", "$(HOMEDIR)", 0},
        {"$$$(HOMEDIR)", "$/h", 1},
        {"$%HOMEDIR%", "$/h", 1},
        {"ab$$", "ab$", 0},
    });
}

TEST_F(ExpandReferences, ParenthesesEncloseAName) {
    expectExpansions({
        {"a$(HOMEDIR)b", "a/hb", 1},
        {"$(HOMEDIR)$(OTHER)", "/ho", 2},
        {"<$(UNSET_NAME)$(EMPTY)>", "<>", 2},
        {"<$(homedir)$( HOMEDIR)>", "<>", 2},
        {"$( TWO WORDS )", "blanks", 1},
        {"$(\x80\xFF)", "\xFE\x01", 1},
        {"$($(HOMEDIR)", "dollar and parenthesis", 1},
        {"$($$)", "two dollars", 1},
        {"$(a(b)c)", "parenthesisc)", 1},
#ifdef __APPLE__
        {"<$(HOMEDIR=/h)>", "</h>", 1},  // getenv takes a name up to its first "="
#else
        {"<$(HOMEDIR=/h)>", "<>", 1},
#endif
        {"<$(HOME%DIR)>", "<>", 1},
        {"$()$(HOMEDIR)$()", "$()/h$()", 1},
    });
}

TEST_F(ExpandReferences, ParenthesesThatAreNotClosedStay) {
    expectExpansions({
        {"ab$(", "ab$(", 0},
        {"$(HOMEDIR)$(HOMEDIR", "/h$(HOMEDIR", 1},
        {")$(a$(b", ")$(a$(b", 0},
        {"$(a$$", "$(a$", 0},
        {"$(%HOMEDIR%", "$(/h", 1},
        {"$(a%b", "$(a%%b", 0},
    });
}

TEST_F(ExpandReferences, PercentsEncloseAName) {
    expectExpansions({
        {"a%HOMEDIR%b", "a/hb", 1},
        {"%HOMEDIR%%OTHER%", "/ho", 2},
        {"<%UNSET_NAME%%EMPTY%>", "<>", 2},
        {"% TWO WORDS %", "blanks", 1},
        {"%\x80\xFF%", "\xFE\x01", 1},
        {"%$(HOMEDIR%", "dollar and parenthesis", 1},
        {"%$$%", "two dollars", 1},
        {"<%$(HOMEDIR)%>", "<>", 1},
        {"<%a%>", "<>", 1},
    });
}

TEST_F(ExpandReferences, OtherPercentsAreDoubledUnlessTheyAreTwo) {
    expectExpansions({
        {"%HOMEDIR", "%%HOMEDIR", 0},
        {"HOMEDIR%", "HOMEDIR%%", 0},
        {"%HOMEDIR%%", "/h%%", 1},
        {"ab%%", "ab%%", 0},
        {"%%HOMEDIR%%", "%%HOMEDIR%%", 0},
        {"%%%", "%%%%", 0},
        {"%%%HOMEDIR%", "%%/h", 1},
        {"%$(HOMEDIR)", "%%/h", 1},
    });
}

TEST_F(ExpandReferences, ValuesAreNotScannedAgain) {
    expectExpansions({
        {"$(REFERENCE)%REFERENCE%", "$(HOMEDIR)%HOMEDIR%$$%$(HOMEDIR)%HOMEDIR%$$%", 2},
        {"$(PERCENT)HOMEDIR%", "%HOMEDIR%%", 1},
        {"$(OPENING)HOMEDIR)", "$(HOMEDIR)", 1},
    });
}

TEST_F(ExpandReferences, AZeroByteEndsATextWithReferences) {
    expectExpansions({
        {std::string("ab\0cd", 5), std::string("ab\0cd", 5), 0},
        {std::string("$(HOMEDIR)\0$(OTHER)", 19), "/h", 1},
        {std::string("$(HOMEDIR\0)", 11), "$(HOMEDIR", 0},
        {std::string("%HOMEDIR\0%", 10), "%%HOMEDIR", 0},
        {std::string("ab\0$", 4), "ab", 0},
    });
}

TEST_F(ExpandReferences, RoomIsMadeForFourTimesTheText) {
    std::string text = std::string(999, 'a') + "%";
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 0);
    EXPECT_GE(text.capacity(), 4 * 1000U);
    EXPECT_LE(text.capacity(), 4 * 1000U + 15) << "more than a standard library rounds up";
}

TEST_F(ExpandReferences, TheResultMayBeLongerThanThat) {
    const std::string value(100000, 'v');
    set("V", value);
    std::string text = "$(V)%V%";
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 2);
    EXPECT_TRUE(text == value + value);
}

}  // namespace
