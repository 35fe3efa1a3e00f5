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
    static void expectExpansions(const std::vector<Row>& rows) {
        writeEnvironment({{"HOMEDIR", "/h"},
                          {"EMPTY", ""},
                          {" TWO WORDS ", "spaces"},
                          {"$(HOMEDIR", "dollar and parenthesis"},
                          {"REFERENCE", "$(HOMEDIR)%HOMEDIR%$$%"}});
        for (const Row& row : rows) {
            std::string text = row.text;
            EXPECT_EQ(orvex::expandEnvironmentReferences(text), row.result) << row.text;
            EXPECT_EQ(text, row.expected) << row.text;
        }
    }
};

TEST_F(ExpandReferences, ParenthesesAndPercentsEncloseTheNameOfAVariable) {
    expectExpansions({
        {"$(HOMEDIR)/x:%HOMEDIR%", "/h/x:/h", 2},
        {"<$(UNSET_NAME)$(EMPTY)$(homedir)%EMPTY%>", "<>", 4},
        {"$( TWO WORDS )", "spaces", 1},
        {"$($(HOMEDIR)%$(HOMEDIR%", "dollar and parenthesisdollar and parenthesis", 2},
#ifdef __APPLE__
        {"<$(HOMEDIR=/h)>", "</h>", 1},  // getenv takes a name up to its first "="
#else
        {"<$(HOMEDIR=/h)>", "<>", 1},
#endif
        {"$(REFERENCE)", "$(HOMEDIR)%HOMEDIR%$$%", 1},  // the value is not expanded
    });
}

TEST_F(ExpandReferences, WhatIsNotAReferenceStaysAndTwoDollarsBecomeOne) {
    expectExpansions({
        {"ab$", "ab$", 0},
        {"${HOMEDIR}", "${HOMEDIR}", 0},
        {"$$(HOMEDIR)$$$(HOMEDIR)", "$(HOMEDIR)$/h", 1},
        {"$()$(HOMEDIR)$()", "$()/h$()", 1},
        {")$(a$(b", ")$(a$(b", 0},
    });
}

TEST_F(ExpandReferences, LonePercentIsDoubled) {
    expectExpansions({
        {"a%b", "a%%b", 0},
        {"%HOMEDIR%%", "/h%%", 1},
        {"%%x", "%%x", 0},
        {"%$(HOMEDIR)", "%%/h", 1},
    });
}

TEST_F(ExpandReferences, OnlyALonePercentIsDoubledInAStringOfOneOrTwoBytes) {
    expectExpansions({
        {"%", "%%", 1},
        {"a%", "a%%", 1},
        {"%$", "%%$", 1},
        {"%%", "%%", 0},
        {"$$", "$$", 0},
        {"$", "$", 0},
    });
}

TEST_F(ExpandReferences, NulEndsAStringWithReferences) {
    expectExpansions({
        {std::string("ab\0cd", 5), std::string("ab\0cd", 5), 0},
        {std::string("$(HOMEDIR)\0$(EMPTY)", 19), "/h", 1},
    });
}

TEST_F(ExpandReferences, FourTimesTheSizeOfTheStringIsReserved) {
    std::string text = std::string(999, 'a') + "%";
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 0);
    EXPECT_GE(text.capacity(), 4 * 1000U);
    EXPECT_LE(text.capacity(), 4 * 1000U + 15) << "more than rounding by the standard library explains";
}

}  // namespace
