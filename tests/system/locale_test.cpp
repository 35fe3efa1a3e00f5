// The locale of the test program does not change how its arguments are read.

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"

#include <clocale>
#include <locale>
#include <sstream>
#include <string>

namespace {

// Numbers as 1.234,5.
class CommaPunctuation : public std::numpunct<char> {
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

bool readsAsNumber(const char* text) {
    std::istringstream stream(text);
    double number = 0;
    return static_cast<bool>(stream >> number);
}

// Sets this C++ locale and, if the machine has one, a C locale with a decimal comma.
class Locale : public CleanEnvironmentTest {
protected:
    Locale() : before(std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation))) {
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) {
                break;
            }
        }
    }
    ~Locale() override {
        std::locale::global(before);
        static_cast<void>(std::setlocale(LC_ALL, "C"));
    }

    const std::locale before;
};

// Without this the next test would prove nothing.
TEST_F(Locale, ReadsNumbersDifferentlyFromTheClassicLocale) {
    EXPECT_FALSE(readsAsNumber("-.5"));
    EXPECT_TRUE(readsAsNumber("-,5"));
}

TEST_F(Locale, DoesNotChangeWhichArgumentsAreNumbers) {
    set("ORVEX_TEST_ARGS", "-p first -p -,5");
    set("_ORVEX_TEST_ARGS_", "-p -1.5");
    OrvexTestCommandLineParser parser;
    EXPECT_TRUE(
        parse(parser, words("app -o -.5 -x -,5 -testname -1,5 -osname -1000 -tl -1.000 -packetsize 1.500")));
    EXPECT_EQ(parser.getOutputFilename(), "-.5");
    EXPECT_EQ(parser.getXmlFilename(), "");
    EXPECT_EQ(parser.getTlList(), "-1.000");
    EXPECT_EQ(parser.getTestRunInformation().testName, "-1,5");
    EXPECT_EQ(parser.getTestRunInformation().osName, "-1000");
    EXPECT_EQ(get("TEST_PROPERTIES"), "first -1.5");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPS"), "1.500");
}

}  // namespace
