// A test program that sets a locale changes nothing about how its arguments are read.

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"

#include <clocale>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace {

// Numbers as 1.234,5.
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

// The dash is white space, which formatted extraction skips.
class DashIsSpace : public std::ctype<char> {
public:
    DashIsSpace() : std::ctype<char>(table()) {}

private:
    static const mask* table() {
        static const std::vector<mask> masks = [] {
            std::vector<mask> copy(classic_table(), classic_table() + table_size);
            copy['-'] = space;
            return copy;
        }();
        return masks.data();
    }
};

std::locale strangeLocale() {
    return std::locale(std::locale(std::locale::classic(), new CommaPunctuation), new DashIsSpace);
}

// Sets the global locales of C++ and C for its lifetime. The name is one for setlocale; where the
// machine does not have that locale, the locale of C stays as it is.
class GlobalLocale {
public:
    GlobalLocale(const std::locale& locale, const char* name)
        : oldLocale(std::locale::global(locale)), oldName(std::setlocale(LC_ALL, nullptr)) {
        static_cast<void>(std::setlocale(LC_ALL, name));
    }
    ~GlobalLocale() {
        std::locale::global(oldLocale);
        static_cast<void>(std::setlocale(LC_ALL, oldName.c_str()));
    }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale oldLocale;
    std::string oldName;
};

struct Outcome {
    bool result;
    std::vector<std::string> texts;
    std::vector<std::string> testPaths;
    Environment environment;
};

bool operator==(const Outcome& left, const Outcome& right) {
    return std::tie(left.result, left.texts, left.testPaths, left.environment) ==
           std::tie(right.result, right.texts, right.testPaths, right.environment);
}

Outcome parseInCleanEnvironment(const std::vector<std::string>& list) {
    writeEnvironment({{"ORVEX_TEST_ARGS", "-p before=-.5 -p -,5"}, {"_ORVEX_TEST_ARGS_", "-p after -1.5"}});
    OrvexTestCommandLineParser parser;
    const bool result = parse(parser, list);
    const TestRunInformation& information = parser.getTestRunInformation();
    return {result,
            {parser.getApplicationName(),
             parser.getXmlFilename(),
             parser.getOutputFilename(),
             parser.getTlList(),
             parser.getHelpMessage(""),
             parser.helpRequested() ? "help" : "",
             parser.waitBeforeExit() ? "wait" : "",
             information.group,
             information.guid,
             information.runName,
             information.runDescription,
             information.product,
             information.fixedZero,
             information.userId,
             information.vcsRevision,
             information.vcsBranch,
             information.pcName,
             information.osName,
             information.transportLayers,
             information.tdcDravikXmlFilename,
             information.testName,
             information.osType,
             information.bit},
            parser.getTestPaths(),
            readEnvironment()};
}

struct CommandLine {
    const char* name;
    std::vector<std::string> list;
};

void PrintTo(const CommandLine& commandLine, std::ostream* stream) {
    *stream << commandLine.name;
}

// Tokens that one of the locales would read as a number and the other not, among others.
const std::vector<CommandLine> commandLines = {
    {"PacketDelayMinusFive", {"mytest", "-packetdelay", "-5"}},
    {"MinusOneCommaFive", {"mytest", "-o", "-1,5"}},
    {"MinusOnePointFive", {"mytest", "-o", "-1.5"}},
    {"MinusThousand", {"mytest", "-o", "-1000"}},
    {"MinusThousandGrouped", {"mytest", "-o", "-1.000"}},
    {"MinusPointFive", {"mytest", "-o", "-.5"}},
    {"MinusCommaFive", {"mytest", "-o", "-,5"}},
    {"MinusOneExponent", {"mytest", "-o", "-1e3"}},
    {"TwoDashesAndADigit", {"mytest", "-o", "--5"}},
    {"ADashAndAName", {"mytest", "-o", "-x", "-w", "-h", "SuiteA", "-1,5", "SuiteB"}},
    {"NumericOptions",
     {"mytest", "-packetsize", "1.500", "-packetdelay", "1,5", "-socketbuffer", "1000000", "-camemu", "2"}},
    {"Everything",
     {"-1,5", "-tl", "DravikGigE:SocketDriver", "-tl", "-.5", "-x=-1.5", "-tdc_guid", "-,5", "-tdc_group",
      "\xC3\xA9", "-testname", "-1.000.000,5", "-pcname", "\xA0", "-ostype", "-5", "-bit", "64"}},
};

class LocaleTest : public CleanEnvironmentTest, public ::testing::WithParamInterface<CommandLine> {};

TEST_P(LocaleTest, GlobalLocaleChangesNothing) {
    const Outcome expected = parseInCleanEnvironment(GetParam().list);
    const GlobalLocale strange(strangeLocale(), "C");
    const Outcome outcome = parseInCleanEnvironment(GetParam().list);
    EXPECT_EQ(outcome.result, expected.result);
    EXPECT_EQ(outcome.texts, expected.texts);
    EXPECT_EQ(outcome.testPaths, expected.testPaths);
    EXPECT_EQ(outcome.environment, expected.environment);
}

TEST_P(LocaleTest, LocaleOfTheCLibraryChangesNothing) {
    const Outcome expected = parseInCleanEnvironment(GetParam().list);
    // Whichever of these the machine has; the one that it surely has comes last.
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "tr_TR.UTF-8", "C.UTF-8", "C"}) {
        SCOPED_TRACE(name);
        const GlobalLocale locale(strangeLocale(), name);
        EXPECT_TRUE(parseInCleanEnvironment(GetParam().list) == expected);
    }
}

INSTANTIATE_TEST_SUITE_P(CommandLines, LocaleTest, ::testing::ValuesIn(commandLines),
                         [](const auto& info) { return info.param.name; });

// Without this the comparisons above would prove nothing.
TEST(LocaleUnderTest, ReadsOtherNumbersThanTheClassicOne) {
    const auto reads = [](const std::locale& locale, const char* text) {
        std::istringstream stream(text);
        stream.imbue(locale);
        double number = 0;
        stream >> number;
        return !stream.fail();
    };
    EXPECT_TRUE(reads(std::locale::classic(), "-.5"));
    EXPECT_FALSE(reads(strangeLocale(), "-.5"));
    EXPECT_FALSE(reads(std::locale::classic(), "-,5"));
    EXPECT_TRUE(reads(strangeLocale(), "-,5"));
    EXPECT_TRUE(reads(std::locale::classic(), "-1.5"));
    EXPECT_FALSE(reads(strangeLocale(), "-1.5"));
    EXPECT_FALSE(reads(std::locale::classic(), "--5"));
    EXPECT_TRUE(reads(strangeLocale(), "--5"));
}

class ClassicExpectation : public CleanEnvironmentTest {};

TEST_F(ClassicExpectation, HoldsUnderACommaLocale) {
    const GlobalLocale strange(strangeLocale(), "C");
    OrvexTestCommandLineParser parser;
    EXPECT_TRUE(parse(parser, {"mytest", "-o", "-.5", "-x", "-,5", "-testname", "-1,5", "-pcname", "-1.5",
                               "-osname", "-1000"}));
    EXPECT_EQ(parser.getOutputFilename(), "-.5");
    EXPECT_EQ(parser.getXmlFilename(), "");
    EXPECT_EQ(parser.getTestRunInformation().testName, "-1,5");
    EXPECT_EQ(parser.getTestRunInformation().pcName, "-1.5");
    EXPECT_EQ(parser.getTestRunInformation().osName, "-1000");
}

TEST_F(ClassicExpectation, OfANegativePacketDelayHoldsUnderACommaLocale) {
    const GlobalLocale strange(strangeLocale(), "C");
    OrvexTestCommandLineParser parser;
    EXPECT_FALSE(parse(parser, {"mytest", "-packetdelay", "-5"}));
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPS"), "8192");
    EXPECT_EQ(get("ORVEX_GIGE_STREAM_GEVSCPD"), "(undefined)");
}

}  // namespace
