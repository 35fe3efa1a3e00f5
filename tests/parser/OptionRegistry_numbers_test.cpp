// Which tokens are numbers, and that no byte and no locale changes what a token is.

#include "OrvexTestCommandLineParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <locale>
#include <sstream>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

struct NumberRow {
    std::string token;
    bool isNumber;
};

void expectNumbers(const std::vector<NumberRow>& rows) {
    for (const NumberRow& row : rows) {
        SCOPED_TRACE("\"" + row.token + "\"");
        EXPECT_EQ(OptionRegistry::isNumber(row.token), row.isNumber);
    }
}

TEST(RegistryNumbers, DecimalNumbersWithSignPointAndExponent) {
    expectNumbers({
        {"0", true},
        {"5", true},
        {"+5", true},
        {"-5", true},
        {"-0", true},
        {"-0.25", true},
        {"-.5", true},
        {"-5.", true},
        {".5", true},
        {"-1e3", true},
        {"-1E3", true},
        {"-1e+3", true},
        {"-1e-3", true},
        {"-1.5e3", true},
        {"-" + std::string(1000, '0') + "1", true},
        {"-" + std::string(300, '9'), true},
    });
}

TEST(RegistryNumbers, ANumberMayBeFollowedByAnything) {
    expectNumbers({
        {"-5 x", true},
        {"-5\n", true},
        {"-5=x", true},
        {"-5,5", true},
        {"-5-5", true},
        {"-5.5.5", true},
        {"-5/", true},
        {"-5\xC3\xA9", true},
        {std::string("-5\0x", 4), true},
    });
}

TEST(RegistryNumbers, BlanksInFrontAreSkipped) {
    expectNumbers({{" 5", true}, {" -5", true}, {"\t\n\v\f\r-5", true}, {" ", false}, {" -x", false}});
}

TEST(RegistryNumbers, EverythingElseIsNoNumber) {
    expectNumbers({
        {"", false},
        {"-", false},
        {"--", false},
        {"--5", false},
        {"-+5", false},
        {"+-5", false},
        {"- 5", false},
        {"-x", false},
        {"-help", false},
        {"-e5", false},
        {"-.", false},
        {"-.e1", false},
        {"-,5", false},
        {"-1e", false},
        {"-1e+", false},
        {"-=5", false},
        {"x5", false},
        {"Suite", false},
        {std::string("-\0005", 3), false},
    });
}

TEST(RegistryNumbers, ANumberThatDoesNotFitADoubleIsNone) {
    expectNumbers({
        {"-1e308", true},
        {"-1.7976931348623157e308", true},
        {"-1.8e308", false},
        {"-1e309", false},
        {"-1e400", false},
        {"1e400", false},
    });
}

#ifndef _LIBCPP_VERSION
// Standard libraries read these differently; this is how the one that is not libc++ does.
TEST(RegistryNumbers, TextsThatStandardLibrariesReadDifferently) {
    expectNumbers({
        {"-5abc", true},
        {"-5x", true},
        {"-0x", true},
        {"-0x1p3", true},
        {"-1e5e5", true},
        {"-1e-400", true},
        {"-5e", false},
        {"-inf", false},
        {"-infinity", false},
        {"-Inf", false},
        {"-nan", false},
        {"-NAN", false},
        {"-nan(1)", false},
        {"-" + std::string(400, '9'), false},
    });
}
#endif

// Whether the standard library, left to itself, reads a double from the start of the text.
bool standardLibraryReadsNumber(const std::string& text) {
    std::istringstream stream(text);
    double number = 0;
    return static_cast<bool>(stream >> number);
}

TEST(RegistryNumbers, NothingStricterThanTheStandardExtraction) {
    for (const char* token :
         {"-5abc", "-5x", "-0x", "-0x1p3", "-1e5e5", "-1e-400", "-5e", "-inf", "-infinity", "-Inf",
          "-INFINITY", "-nan", "-NAN", "-nan(1)", "inf", "nan", "+inf"}) {
        SCOPED_TRACE(token);
        EXPECT_EQ(OptionRegistry::isNumber(token), standardLibraryReadsNumber(token));
    }
}

// Every text of up to four of the letters that numbers are made of, and some others.
std::vector<std::string> allShortTexts() {
    const std::string alphabet = "-+.,019eEinfaNIxXpP \t=";
    std::vector<std::string> texts = {""};
    for (std::size_t i = 0; texts[i].size() < 4; ++i) {
        for (const char letter : alphabet) {
            texts.push_back(texts[i] + letter);
        }
    }
    return texts;
}

TEST(RegistryNumbers, AllShortTextsAreReadAsTheStandardExtractionReadsThem) {
    std::vector<std::string> differences;
    for (const std::string& text : allShortTexts()) {
        if (OptionRegistry::isNumber(text) != standardLibraryReadsNumber(text)) {
            differences.push_back(text);
        }
    }
    EXPECT_THAT(differences, ElementsAre());
}

TEST(RegistryNumbers, AShortTextWithADashIsAnOptionUnlessItIsANumber) {
    std::vector<std::string> differences;
    for (const std::string& text : allShortTexts()) {
        const bool isOption = !text.empty() && text.front() == '-' && !standardLibraryReadsNumber(text);
        if (OptionRegistry::isOptionToken(text) != isOption) {
            differences.push_back(text);
        }
    }
    EXPECT_THAT(differences, ElementsAre());
}

// Numbers in a scan

TEST(RegistryNumbers, ANumberIsTakenAsAValue) {
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    registry.addValueOptions({"a", "b", "c", "packetdelay"});
    registry.addMultiValueOptions({"p"});
    registry.parseTokens(
        {"app", "-packetdelay", "-5", "-a", "-0.25", "-b", "-1e3", "-c", "-1e400", "-p", "-7"});
    EXPECT_EQ(registry.getValue("packetdelay").str(), "-5");
    EXPECT_EQ(registry.getValue("a").str(), "-0.25");
    EXPECT_EQ(registry.getValue("b").str(), "-1e3");
    EXPECT_EQ(registry.getJoinedValues("p", ","), "-7");
    EXPECT_TRUE(registry.getValue("c").fail());
    EXPECT_TRUE(registry.hasOption("c"));
    EXPECT_TRUE(registry.hasOption("1e400"));
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app"));
}

TEST(RegistryNumbers, ANumberByItselfIsPositional) {
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    registry.parseTokens({"app", "-w", "-5", "-0.25", "-5=x"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "-5", "-0.25", "-5=x"));
    EXPECT_TRUE(registry.hasOption("w"));
    EXPECT_FALSE(registry.hasOption("5"));
}

TEST(RegistryNumbers, ANumberIsNoGroupOfFlags) {
    OptionRegistry registry(OptionRegistry::GroupedShortFlags);
    registry.parseTokens({"app", "-12"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "-12"));
    EXPECT_FALSE(registry.hasOption("1"));
}

TEST(RegistryNumbers, TwoDashesBeforeADigitAreAnOption) {
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    registry.parseTokens({"app", "--5", "Suite"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
    EXPECT_TRUE(registry.hasOption("5"));
}

// The global locale

class CommaPunctuation : public std::numpunct<char> {
protected:
    char do_decimal_point() const override {
        return ',';
    }
    char do_thousands_sep() const override {
        return '.';
    }
    std::string do_grouping() const override {
        return "\3";
    }
};

class RegistryInACommaLocaleTest : public ::testing::Test {
protected:
    RegistryInACommaLocaleTest()
        : previous(std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation))) {}
    ~RegistryInACommaLocaleTest() override {
        std::locale::global(previous);
    }

private:
    std::locale previous;
};

TEST_F(RegistryInACommaLocaleTest, NumbersAreStillWrittenWithAPoint) {
    // The standard library alone follows the global locale, so the rows below tell the two apart.
    ASSERT_FALSE(standardLibraryReadsNumber("-0.25"));
    ASSERT_TRUE(standardLibraryReadsNumber("-,5"));
    expectNumbers({{"-0.25", true}, {"-.5", true}, {"-1.5e3", true}, {"-1.2.3", true}, {"-,5", false}});
}

TEST_F(RegistryInACommaLocaleTest, ScansGiveTheSameResult) {
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    registry.addValueOptions({"o", "x"});
    registry.addMultiValueOptions({"tl"});
    registry.parseTokens({"app", "-o", "-0.25", "-x", "-,5", "-tl", "1000.5", "-tl", "-.5"});
    EXPECT_EQ(registry.getValue("o").str(), "-0.25");
    EXPECT_TRUE(registry.getValue("x").fail());
    EXPECT_TRUE(registry.hasOption(",5"));
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "1000.5,-.5");
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app"));
}

// Bytes

// Every byte from 0x01 to 0xFF but the excluded ones, each as a text of its own.
std::vector<std::string> bytesExcept(const std::string& excluded) {
    std::vector<std::string> bytes;
    for (int value = 0x01; value <= 0xFF; ++value) {
        const std::string byte(1, static_cast<char>(value));
        if (excluded.find(byte) == std::string::npos) {
            bytes.push_back(byte);
        }
    }
    return bytes;
}

TEST(RegistryBytes, AllAreKeptInValuesAndPositionals) {
    for (const std::string& byte : bytesExcept("")) {
        SCOPED_TRACE(::testing::PrintToString(byte));
        OptionRegistry registry(OptionRegistry::UnknownAsFlag);
        registry.addValueOptions({"o", "x"});
        registry.addMultiValueOptions({"tl"});
        const std::string text = std::string("a").append(byte).append("b").append(byte);
        registry.parseTokens({text, "-o", text, "-x=" + text, "-tl", text, "-tl=" + text, text});
        EXPECT_EQ(registry.getValue("o").str(), text);
        EXPECT_EQ(registry.getValue("x").str(), text);
        EXPECT_EQ(registry.getJoinedValues("tl", byte), std::string(text).append(byte).append(text));
        EXPECT_THAT(registry.getPositionals(), ElementsAre(text, text));
    }
}

TEST(RegistryBytes, AllButTheEqualsSignMayBePartOfAName) {
    for (const std::string& byte : bytesExcept("=")) {
        SCOPED_TRACE(::testing::PrintToString(byte));
        const std::string name = "n" + byte;
        OptionRegistry registry(OptionRegistry::UnknownAsFlag);
        registry.addValueOptions({name.c_str()});
        registry.parseTokens({"app", "-f" + byte, "-" + name, "value", "-other" + byte + "=1"});
        EXPECT_EQ(registry.getValue(name).str(), "value");
        EXPECT_EQ(registry.getValue("other" + byte).str(), "1");
        EXPECT_TRUE(registry.hasOption("f" + byte));
        EXPECT_FALSE(registry.hasOption("f"));
        EXPECT_THAT(registry.getPositionals(), ElementsAre("app"));
    }
}

TEST(RegistryBytes, AllButDashDigitsAndEqualsSignAreFlagsAfterADash) {
    for (const std::string& byte : bytesExcept("-0123456789=")) {
        SCOPED_TRACE(::testing::PrintToString(byte));
        OptionRegistry registry(OptionRegistry::UnknownAsFlag);
        registry.parseTokens({"app", "-" + byte, "Suite"});
        EXPECT_TRUE(OptionRegistry::isOptionToken("-" + byte));
        EXPECT_TRUE(registry.hasOption(byte));
        EXPECT_THAT(registry.getPositionals(), ElementsAre("app", "Suite"));
    }
}

TEST(RegistryBytes, NoneButTheDashBeginsAnOption) {
    for (const std::string& byte : bytesExcept("-")) {
        SCOPED_TRACE(::testing::PrintToString(byte));
        OptionRegistry registry(OptionRegistry::UnknownAsFlag);
        registry.parseTokens({"app", byte + "x", byte});
        EXPECT_THAT(registry.getPositionals(), ElementsAre("app", byte + "x", byte));
    }
}

TEST(RegistryBytes, AZeroByteEndsNothing) {
    const std::string zero(1, '\0');
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    registry.addValueOptions({"o"});
    registry.addMultiValueOptions({"tl"});
    registry.parseTokens({"app" + zero + "x", "-o", "a" + zero + "b", "-n" + zero + "x=1", "-n=2",
                          "-f" + zero, "-tl", zero, "-tl" + zero + "=3"});
    EXPECT_THAT(registry.getPositionals(), ElementsAre("app" + zero + "x"));
    EXPECT_EQ(registry.getValue("o").str(), "a" + zero + "b");
    EXPECT_EQ(registry.getValue("n" + zero + "x").str(), "1");
    EXPECT_EQ(registry.getValue("n").str(), "2");
    EXPECT_TRUE(registry.hasOption("f" + zero));
    EXPECT_FALSE(registry.hasOption("f"));
    EXPECT_EQ(registry.getJoinedValues("tl", zero), zero);
    EXPECT_EQ(registry.getValue("tl" + zero).str(), "3");
}

TEST(RegistryBytes, DigitsAfterADashArePositional) {
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    registry.parseTokens({"app", "-0", "-1", "-2", "-3", "-4", "-5", "-6", "-7", "-8", "-9"});
    EXPECT_THAT(registry.getPositionals(),
                ElementsAre("app", "-0", "-1", "-2", "-3", "-4", "-5", "-6", "-7", "-8", "-9"));
}

}  // namespace
