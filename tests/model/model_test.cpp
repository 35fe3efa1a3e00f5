#include "model.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <stdexcept>

namespace {

using namespace model;
using Strings = std::vector<std::string>;
using Counts = std::multiset<std::string>;

Registry parserRegistry() {
    Environment environment;
    return Parser(environment, std::nullopt).registry();
}

Registry scanned(const Strings& tokens) {
    Registry registry = parserRegistry();
    registry.parseTokens(tokens);
    return registry;
}

Strings split(const std::string& text) {
    std::string error;
    const auto tokens = splitArguments(text, error);
    EXPECT_TRUE(tokens.has_value()) << text;
    EXPECT_EQ(error, "");
    return tokens.value_or(Strings{"(error)"});
}

std::string splitError(const std::string& text) {
    std::string error;
    EXPECT_FALSE(splitArguments(text, error).has_value()) << text;
    return error;
}

std::pair<bool, Strings> parts(const char* text, char delimiter, Strings before = {}) {
    const bool result = splitString(text, delimiter, before);
    return {result, before};
}

// A parser with its own environment; the installation directory is /p.
struct Trial {
    Environment environment;
    Parser parser;

    explicit Trial(Environment before = {}, std::optional<std::string> dir = "/p")
        : environment(std::move(before)), parser(environment, std::move(dir)) {}
    Trial(const Trial&) = delete;

    bool operator()(Strings arguments) {
        arguments.insert(arguments.begin(), "app");
        return parser.parse(arguments);
    }
    std::string get(const std::string& name) const {
        const auto found = environment.find(name);
        return found == environment.end() ? "(unset)" : found->second;
    }
};

// What every successful parse leaves without any argument.
const Environment plainEnvironment = {{"ORVEX_GTC_USE_EXTRA_TL", "1"}, {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}};

const Record emptyRecord;

// ---- registry: predicates ----------------------------------------------------------------------------

TEST(Trim, removesLeadingDashesOnly) {
    EXPECT_EQ(trimLeadingDashes("--help"), "help");
    EXPECT_EQ(trimLeadingDashes("-o"), "o");
    EXPECT_EQ(trimLeadingDashes("o"), "o");
    EXPECT_EQ(trimLeadingDashes("-a-b-"), "a-b-");
    EXPECT_EQ(trimLeadingDashes("-"), "-");
    EXPECT_EQ(trimLeadingDashes("---"), "---");
    EXPECT_EQ(trimLeadingDashes(""), "");
    EXPECT_EQ(trimLeadingDashes("-=x"), "=x");
}

TEST(Number, examples) {
    for (const char* text : {"-5", "-0.25", "-1e3", "5", "+5", ".5", "-.5", "-5=3", " -5"}) {
        EXPECT_TRUE(isNumber(text)) << text;
    }
#ifndef _LIBCPP_VERSION
    // Where the standard libraries differ: this one stops before what no longer fits.
    for (const char* text : {"12abc", "-0x"}) {
        EXPECT_TRUE(isNumber(text)) << text;
    }
#endif
    for (const char* text : {"-x", "-help", "-", "", "--5", "-.", "- 5", "abc", "-e3", " "}) {
        EXPECT_FALSE(isNumber(text)) << text;
    }
}

TEST(OptionToken, examples) {
    for (const char* text : {"-x", "-help", "-", "--", "--x", "--5", "-=", "-.", "-?"}) {
        EXPECT_TRUE(isOptionToken(text)) << text;
    }
    for (const char* text : {"", "-5", "-0.25", "-1e3", "/x", "+x", "x-", "=x", " -x"}) {
        EXPECT_FALSE(isOptionToken(text)) << text;
    }
}

// ---- registry: registrations and queries -------------------------------------------------------------

TEST(RegistryTest, startsEmpty) {
    for (std::uint32_t mode = 0; mode < 16; ++mode) {
        const Registry registry(mode);
        EXPECT_EQ(registry.mode, mode);
        EXPECT_TRUE(registry.values.empty());
        EXPECT_TRUE(registry.positionals.empty());
        EXPECT_TRUE(registry.flags.empty());
        EXPECT_TRUE(registry.valueOptions.empty());
        EXPECT_TRUE(registry.multiValueOptions.empty());
        EXPECT_TRUE(registry.multiValues.empty());
        EXPECT_EQ(registry.emptyValue, "");
        for (const std::uint32_t bit : {1u, 2u, 4u, 8u}) {
            EXPECT_EQ(registry.hasMode(bit), (mode & bit) != 0);
        }
    }
}

TEST(RegistryTest, namesAreTrimmedAndKeptOnce) {
    Registry registry(unknownAsFlag);
    registry.addValueOptions({"-o", "--o", "o", "x"});
    registry.addMultiValueOptions({"--tl", "tl"});
    EXPECT_EQ(registry.valueOptions, (std::set<std::string>{"o", "x"}));
    EXPECT_EQ(registry.multiValueOptions, (std::set<std::string>{"tl"}));
    for (const char* name : {"o", "-o", "--o"}) {
        EXPECT_TRUE(registry.isValueOption(name));
        EXPECT_FALSE(registry.isMultiValueOption(name));
    }
    registry.parseTokens({"app", "-o", "a", "-q"});
    for (const char* name : {"o", "-o", "--o"}) {
        EXPECT_EQ(registry.getValue(name), std::optional<std::string>("a"));
    }
    EXPECT_TRUE(registry.hasOption("q"));
    EXPECT_TRUE(registry.hasOption("--q"));
}

TEST(RegistryTest, namesOfTheParser) {
    const Registry registry = parserRegistry();
    EXPECT_EQ(registry.mode, 1u);
    EXPECT_EQ(registry.valueOptions,
              (std::set<std::string>{
                  "camemu",    "o",          "packetdelay", "packetsize",    "socketbuffer",
                  "x",         "testname",   "pcname",      "osname",        "ostype",
                  "bit",       "tdc_dxml",   "tdc_guid",    "tdc_runname",   "tdc_rundescription",
                  "tdc_group", "tdc_userid", "tdc_product", "tdc_vcsbranch", "tdc_vcsrevision"}));
    EXPECT_EQ(registry.multiValueOptions, (std::set<std::string>{"p", "tl"}));
}

TEST(RegistryTest, absentValueIsTheFailedStream) {
    const Registry registry = scanned({"app"});
    EXPECT_FALSE(registry.getValue("o").has_value());
    EXPECT_FALSE(registry.getValue("never").has_value());
    EXPECT_EQ(registry.getText("o"), "");
    // A multi-value option reads as empty and not failed.
    EXPECT_EQ(registry.getValue("tl"), std::optional<std::string>(""));
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "");
    EXPECT_EQ(registry.getJoinedValues("o", ","), "");
}

TEST(RegistryTest, positionalOutOfRange) {
    const Registry registry = scanned({"app", "a"});
    EXPECT_EQ(registry.getPositional(0), "app");
    EXPECT_EQ(registry.getPositional(1), "a");
    EXPECT_EQ(registry.getPositional(2), "");
    EXPECT_EQ(registry.getPositional(SIZE_MAX), "");
    EXPECT_EQ(&registry.getPositional(2), &registry.emptyValue);
}

TEST(RegistryTest, joinKeepsEmptyValues) {
    Registry registry = scanned({"app", "-tl", "a", "-tl", "", "-tl", "b"});
    EXPECT_EQ(registry.getJoinedValues("tl", ","), "a,,b");
    EXPECT_EQ(registry.getJoinedValues("--tl", ""), "ab");
    EXPECT_EQ(registry.getValue("tl"), std::optional<std::string>("a  b"));
    EXPECT_EQ(scanned({"app", "-tl", ""}).getJoinedValues("tl", ","), "");
    EXPECT_EQ(scanned({"app", "-tl", "", "-tl", ""}).getJoinedValues("tl", ","), ",");
}

// ---- registry: scan ----------------------------------------------------------------------------------

TEST(Scan, valueOptionAsLastToken) {
    const Registry registry = scanned({"app", "-o"});
    EXPECT_FALSE(registry.getValue("o").has_value());
    EXPECT_TRUE(registry.hasOption("o"));
}

TEST(Scan, lastSingleValueWins) {
    EXPECT_EQ(scanned({"app", "-o", "a", "-o", "b"}).getText("o"), "b");
    const Registry both = scanned({"app", "-o", "a", "-o"});
    EXPECT_EQ(both.getText("o"), "a");
    EXPECT_TRUE(both.hasOption("o"));
}

TEST(Scan, multiValues) {
    const Registry two = scanned({"app", "-tl", "A", "-tl", "B"});
    EXPECT_EQ(two.getJoinedValues("tl", ","), "A,B");
    EXPECT_EQ(two.getText("tl"), "A B");
    EXPECT_TRUE(two.values.empty());
    const Registry one = scanned({"app", "-tl", "A,B"});
    EXPECT_EQ(one.getJoinedValues("tl", ","), "A,B");
    EXPECT_EQ(one.getText("tl"), "A,B");
    EXPECT_EQ(scanned({"app", "-tl=A", "--tl=B=C", "-tl", "D"}).getJoinedValues("tl", ","), "A,B=C,D");
    EXPECT_EQ(scanned({"app", "-tl"}).flags, (Counts{"tl"}));
    EXPECT_EQ(scanned({"app", "-tl", "-w"}).flags, (Counts{"tl", "w"}));
}

TEST(Scan, inlineValues) {
    EXPECT_EQ(scanned({"app", "-o=file"}).values, (std::map<std::string, std::string>{{"o", "file"}}));
    EXPECT_EQ(scanned({"app", "-o="}).getValue("o"), std::optional<std::string>(""));
    const Registry wait = scanned({"app", "-w=1"});
    EXPECT_EQ(wait.getText("w"), "1");
    EXPECT_FALSE(wait.hasOption("w"));
    EXPECT_EQ(scanned({"app", "-o=a=b"}).getText("o"), "a=b");
    EXPECT_EQ(scanned({"app", "-o=a", "b"}).positionals, (Strings{"app", "b"}));
    const Registry emptyKey = scanned({"app", "-=x", "--="});
    EXPECT_EQ(emptyKey.values, (std::map<std::string, std::string>{{"", ""}}));
    EXPECT_EQ(scanned({"app", "-=x"}).getValue(""), std::optional<std::string>("x"));
}

TEST(Scan, unregisteredName) {
    EXPECT_EQ(scanned({"app", "-tdc_variant=V"}).getText("tdc_variant"), "V");
    const Registry registry = scanned({"app", "-tdc_variant", "V"});
    EXPECT_EQ(registry.flags, (Counts{"tdc_variant"}));
    EXPECT_EQ(registry.positionals, (Strings{"app", "V"}));
    EXPECT_TRUE(registry.values.empty());
}

TEST(Scan, optionTokensAreNoValues) {
    const Registry registry = scanned({"app", "-x", "-file.xml"});
    EXPECT_EQ(registry.flags, (Counts{"x", "file.xml"}));
    EXPECT_FALSE(registry.getValue("x").has_value());
    EXPECT_EQ(scanned({"app", "-x=-file.xml"}).getText("x"), "-file.xml");
    EXPECT_EQ(scanned({"app", "-packetdelay", "-5"}).getText("packetdelay"), "-5");
    EXPECT_EQ(scanned({"app", "-5"}).positionals, (Strings{"app", "-5"}));
    EXPECT_EQ(scanned({"app", "-o", ""}).getValue("o"), std::optional<std::string>(""));
    EXPECT_EQ(scanned({"app", ""}).positionals, (Strings{"app", ""}));
}

TEST(Scan, dashesOnly) {
    const Registry registry = scanned({"app", "-", "v", "--", "---"});
    EXPECT_EQ(registry.flags, (Counts{"-", "--", "---"}));
    EXPECT_EQ(registry.positionals, (Strings{"app", "v"}));
    EXPECT_TRUE(registry.hasOption("-"));
}

TEST(Scan, caseMatters) {
    const Registry registry = scanned({"app", "-H"});
    EXPECT_TRUE(registry.hasOption("H"));
    EXPECT_FALSE(registry.hasOption("h"));
}

TEST(Scan, flagsCountOccurrences) {
    EXPECT_EQ(scanned({"app", "-w", "--w", "-w"}).flags, (Counts{"w", "w", "w"}));
}

TEST(Scan, programNameEntersOnce) {
    Registry registry = parserRegistry();
    registry.parseTokens({"app", "Suite1", "-w", "Suite2"});
    EXPECT_EQ(registry.getPositionals(), (Strings{"app", "Suite1", "Suite2"}));
    EXPECT_EQ(registry.flags, (Counts{"w"}));
    registry.parseTokens({"app", "Suite3"});
    EXPECT_EQ(registry.getPositionals(), (Strings{"app", "Suite1", "Suite2", "Suite3"}));
    registry.parseTokens({});
    EXPECT_EQ(registry.getPositionals().size(), 4u);
}

TEST(Scan, programNameThatLooksLikeAnOption) {
    Registry registry = parserRegistry();
    registry.parseTokens({"-o", "a", "b"});
    EXPECT_EQ(registry.getText("o"), "a");
    EXPECT_EQ(registry.positionals, (Strings{"b"}));
    registry.parseTokens({"-w", "c"});
    EXPECT_EQ(registry.positionals, (Strings{"b", "c"}));
    EXPECT_TRUE(registry.hasOption("w"));
    // A number is positional, at index 0 as well.
    EXPECT_EQ(scanned({"-5", "a"}).positionals, (Strings{"-5", "a"}));
}

TEST(ScanModes, unknownTakesValue) {
    Registry registry(unknownTakesValue);
    registry.addMultiValueOptions({"tl"});
    registry.parseTokens({"app", "-q", "v", "-r", "-s", "-5", "-tl", "A", "-t"});
    EXPECT_EQ(registry.values, (std::map<std::string, std::string>{{"q", "v"}, {"s", "-5"}}));
    EXPECT_EQ(registry.flags, (Counts{"r", "t"}));
    EXPECT_EQ(registry.positionals, (Strings{"app"}));
    EXPECT_EQ(registry.getText("tl"), "A");
}

TEST(ScanModes, zeroActsLikeUnknownAsFlag) {
    for (const std::uint32_t mode : {0u, 1u}) {
        Registry registry(mode);
        registry.parseTokens({"app", "-q", "v"});
        EXPECT_EQ(registry.flags, (Counts{"q"}));
        EXPECT_EQ(registry.positionals, (Strings{"app", "v"}));
    }
}

TEST(ScanModes, unknownTakesValueWinsOverUnknownAsFlag) {
    Registry registry(unknownAsFlag | unknownTakesValue);
    registry.parseTokens({"app", "-q", "v"});
    EXPECT_EQ(registry.getText("q"), "v");
}

TEST(ScanModes, noInlineValue) {
    Registry registry(noInlineValue);
    registry.addValueOptions({"o", "k=v"});
    registry.parseTokens({"app", "-o=file", "x", "--k=v", "y", "-="});
    EXPECT_EQ(registry.flags, (Counts{"o=file", "="}));
    EXPECT_EQ(registry.positionals, (Strings{"app", "x"}));
    EXPECT_EQ(registry.values, (std::map<std::string, std::string>{{"k=v", "y"}}));
}

TEST(ScanModes, groupedShortFlags) {
    const auto grouped = [](const Strings& tokens, std::uint32_t more) {
        Registry registry(groupedShortFlags | more);
        registry.addValueOptions({"o", "long"});
        registry.addMultiValueOptions({"m", "tl"});
        registry.parseTokens(tokens);
        return registry;
    };
    EXPECT_EQ(grouped({"app", "-abca", "v"}, 0).flags, (Counts{"a", "a", "b", "c"}));
    EXPECT_EQ(grouped({"app", "-abca", "v"}, 0).positionals, (Strings{"app", "v"}));
    // The last letter takes the value.
    const Registry kept = grouped({"app", "-abo", "v"}, 0);
    EXPECT_EQ(kept.flags, (Counts{"a", "b"}));
    EXPECT_EQ(kept.getText("o"), "v");
    EXPECT_EQ(kept.positionals, (Strings{"app"}));
    // Without a value it is a flag after all.
    EXPECT_EQ(grouped({"app", "-abo"}, 0).flags, (Counts{"a", "b", "o"}));
    EXPECT_EQ(grouped({"app", "-abo", "-c"}, 0).flags, (Counts{"a", "b", "c", "o"}));
    // Only the last letter is looked at.
    EXPECT_EQ(grouped({"app", "-oab", "v"}, 0).flags, (Counts{"a", "b", "o"}));
    // Two dashes and registered value options are no groups.
    EXPECT_EQ(grouped({"app", "--abo", "v"}, 0).flags, (Counts{"abo"}));
    EXPECT_EQ(grouped({"app", "-long", "v"}, 0).getText("long"), "v");
    EXPECT_EQ(grouped({"app", "-o", "v"}, 0).getText("o"), "v");
    // Multi-value options are not exempt, and no letter of theirs is kept.
    EXPECT_EQ(grouped({"app", "-tl", "v"}, 0).flags, (Counts{"t", "l"}));
    EXPECT_EQ(grouped({"app", "-am", "v"}, 0).flags, (Counts{"a", "m"}));
    EXPECT_EQ(grouped({"app", "--tl", "v"}, 0).getText("tl"), "v");
    // An unregistered single letter is a group of its own and takes no value.
    EXPECT_EQ(grouped({"app", "-q", "v"}, unknownTakesValue).flags, (Counts{"q"}));
    EXPECT_EQ(grouped({"app", "--q", "v"}, unknownTakesValue).getText("q"), "v");
    // The inline form is tested before.
    EXPECT_EQ(grouped({"app", "-ab=c"}, 0).getText("ab"), "c");
    EXPECT_EQ(grouped({"app", "-ab=c"}, noInlineValue).flags, (Counts{"=", "a", "b", "c"}));
    // A lone dash has no leading dash removed.
    EXPECT_EQ(grouped({"app", "-", "--"}, 0).flags, (Counts{"-", "--"}));
    EXPECT_EQ(grouped({"app", "-a-b"}, 0).flags, (Counts{"-", "a", "b"}));
}

TEST(ScanModes, multiValueComesBeforeSingleValue) {
    Registry registry(unknownAsFlag);
    registry.addValueOptions({"b"});
    registry.addMultiValueOptions({"b"});
    registry.parseTokens({"app", "-b", "1", "-b=2"});
    EXPECT_TRUE(registry.values.empty());
    EXPECT_EQ(registry.getText("b"), "1 2");
}

// ---- argument text -----------------------------------------------------------------------------------

TEST(SplitArguments, blanks) {
    EXPECT_EQ(split(""), (Strings{}));
    EXPECT_EQ(split(" \t  "), (Strings{}));
    EXPECT_EQ(split("  a \t b  "), (Strings{"a", "b"}));
    EXPECT_EQ(split("a\tb"), (Strings{"a", "b"}));
    EXPECT_EQ(split("a\nb c\r"), (Strings{"a\nb", "c\r"}));
    EXPECT_EQ(split("\x80\xff \x0b"), (Strings{"\x80\xff", "\x0b"}));
    EXPECT_EQ(split(std::string("a\0b", 3)), (Strings{std::string("a\0b", 3)}));
}

TEST(SplitArguments, quotes) {
    EXPECT_EQ(split("-o \"my file.xml\""), (Strings{"-o", "my file.xml"}));
    EXPECT_EQ(split("--name=\"a b\"c"), (Strings{"--name=a bc"}));
    EXPECT_EQ(split("\"a\"'b'"), (Strings{"ab"}));
    EXPECT_EQ(split("\"it's\""), (Strings{"it's"}));
    EXPECT_EQ(split("'say \"x\"'"), (Strings{"say \"x\""}));
    EXPECT_EQ(split("a '' b"), (Strings{"a", "", "b"}));
    EXPECT_EQ(split("\"\""), (Strings{""}));
    EXPECT_EQ(split("\"\"''"), (Strings{""}));
    EXPECT_EQ(split("'' \"\""), (Strings{"", ""}));
    EXPECT_EQ(split("x\"y\""), (Strings{"xy"}));
    EXPECT_EQ(split("\"a\tb\nc\""), (Strings{"a\tb\nc"}));
    EXPECT_EQ(split("\"a\" b"), (Strings{"a", "b"}));
}

TEST(SplitArguments, backslash) {
    EXPECT_EQ(split("a\\ b"), (Strings{"a b"}));
    EXPECT_EQ(split("\\\"x\\\""), (Strings{"\"x\""}));
    EXPECT_EQ(split("\"a\\\"b\""), (Strings{"a\"b"}));
    EXPECT_EQ(split("'a\\'b'"), (Strings{"a'b"}));
    EXPECT_EQ(split("\\n\\\t\\\\"), (Strings{"n\t\\"}));
    EXPECT_EQ(split("\\  b"), (Strings{" ", "b"}));
    EXPECT_EQ(split("'\\n'"), (Strings{"n"}));
}

TEST(SplitArguments, trailingBackslashIsKept) {
    EXPECT_EQ(split("abc\\"), (Strings{"abc\\"}));
    EXPECT_EQ(split("\\"), (Strings{"\\"}));
    EXPECT_EQ(split("a \\"), (Strings{"a", "\\"}));
    EXPECT_EQ(split("\\\\\\"), (Strings{"\\\\"}));
    EXPECT_EQ(split("\"a\"\\"), (Strings{"a\\"}));
}

TEST(SplitArguments, unclosedQuote) {
    const std::string message = "Starting quote has no ending quote.";
    EXPECT_EQ(splitError("x\"y"), message);
    EXPECT_EQ(splitError("\"abc\\"), message);
    EXPECT_EQ(splitError("'"), message);
    EXPECT_EQ(splitError("a b \"c'"), message);
    EXPECT_EQ(splitError("\"a\\\""), message);
}

// ---- splitting at a delimiter ------------------------------------------------------------------------

TEST(SplitString, examples) {
    EXPECT_EQ(parts("a::b", ':'), std::make_pair(true, Strings{"a", "", "b"}));
    EXPECT_EQ(parts(":b", ':'), std::make_pair(true, Strings{"", "b"}));
    EXPECT_EQ(parts("a:", ':'), std::make_pair(true, Strings{"a"}));
    EXPECT_EQ(parts(":", ':'), std::make_pair(true, Strings{""}));
    EXPECT_EQ(parts("::", ':'), std::make_pair(true, Strings{"", ""}));
    EXPECT_EQ(parts("ab", ':'), std::make_pair(true, Strings{"ab"}));
    EXPECT_EQ(parts("a,b", ',', {"before"}), std::make_pair(true, Strings{"before", "a", "b"}));
}

TEST(SplitString, refusals) {
    EXPECT_EQ(parts(nullptr, ':', {"before"}), std::make_pair(false, Strings{"before"}));
    EXPECT_EQ(parts("", ':', {"before"}), std::make_pair(false, Strings{"before"}));
    EXPECT_EQ(parts("a", '\0', {"before"}), std::make_pair(false, Strings{"before"}));
}

// ---- environment -------------------------------------------------------------------------------------

TEST(LookUp, definedAndUndefined) {
    const Environment environment = {{"A", "1"}, {"EMPTY", ""}, {"P", "B=C"}};
    EXPECT_EQ(lookUp(environment, "A"), std::optional<std::string>("1"));
    EXPECT_EQ(lookUp(environment, "EMPTY"), std::optional<std::string>(""));
    EXPECT_FALSE(lookUp(environment, "B").has_value());
    EXPECT_FALSE(lookUp(environment, "").has_value());
    EXPECT_FALSE(lookUp(environment, "a").has_value());
    EXPECT_EQ(lookUp(environment, "P=B"), std::optional<std::string>("C"));
    EXPECT_FALSE(lookUp(environment, "P=").has_value());
    EXPECT_FALSE(lookUp(environment, "P=C").has_value());
    EXPECT_FALSE(lookUp(environment, "=").has_value());
}

#ifdef __GLIBC__
TEST(LookUp, agreesWithTheProcessEnvironment) {
    const Environment environment = {{"MODEL_TEST_A", "B=C=D"}, {"MODEL_TEST_E", "=x"}, {"MODEL_TEST_N", ""}};
    for (const auto& [name, value] : environment) {
        ASSERT_EQ(setenv(name.c_str(), value.c_str(), 1), 0);
    }
    for (const char* name : {"MODEL_TEST_A", "MODEL_TEST_A=B", "MODEL_TEST_A=B=C", "MODEL_TEST_A=", "", "=",
                             "MODEL_TEST_A=B=C=D", "MODEL_TEST_E=", "MODEL_TEST_E", "MODEL_TEST_N",
                             "MODEL_TEST_N=", "MODEL_TEST_", "MODEL_TEST_E==", "=MODEL_TEST_A"}) {
        const char* found = getenv(name);
        EXPECT_EQ(lookUp(environment, name), found ? std::optional<std::string>(found) : std::nullopt)
            << name;
    }
    for (const auto& [name, value] : environment) {
        unsetenv(name.c_str());
    }
}
#endif

// ---- expansion ---------------------------------------------------------------------------------------

TEST(Expand, table) {
    const Environment environment = {{"HOMEDIR", "/h"}};
    const auto check = [&](const std::string& text, const std::string& result, int count) {
        EXPECT_EQ(expand(text, environment), std::make_pair(count, result)) << text;
    };
    check("", "", 0);
    check("abc", "abc", 0);
    check("%", "%%", 1);
    check("$$", "$$", 0);
    check("a%", "a%%", 1);
    check("x$$y", "x$y", 0);
    check("$(UNSET_NAME)x", "x", 1);
    check("$(HOMEDIR)/x:%HOMEDIR%", "/h/x:/h", 2);
    check("a%b", "a%%b", 0);
    check("%%x", "%%x", 0);
    check("$(x", "$(x", 0);
    check("$()x", "$()x", 0);
}

TEST(Expand, shortTexts) {
    const Environment environment;
    const auto check = [&](const std::string& text, const std::string& result, int count) {
        EXPECT_EQ(expand(text, environment), std::make_pair(count, result)) << text;
    };
    check("$", "$", 0);
    check("%a", "%%a", 1);
    check("%%", "%%", 0);
    check("$%", "$%%", 1);
    check("%$", "%%$", 1);
    check("$(", "$(", 0);
    check("$a", "$a", 0);
    check("a$", "a$", 0);
    check("ab", "ab", 0);
    check("a", "a", 0);
}

TEST(Expand, scan) {
    const Environment environment = {{"A", "1"},       {"E", ""},          {"R", "$(A)%A%$$"},
                                     {"a b", "blank"}, {"$(A", "odd"},     {"A%A", "percent"},
                                     {"(", "paren"},   {" A", "untrimmed"}};
    const auto check = [&](const std::string& text, const std::string& result, int count) {
        EXPECT_EQ(expand(text, environment), std::make_pair(count, result)) << text;
    };
    check("$$$", "$$", 0);
    check("$$$$", "$$", 0);
    check("$$(A)", "$(A)", 0);
    check("$$$(A)", "$1", 1);
    check("$A$", "$A$", 0);
    check("ab$", "ab$", 0);
    check("$(A)", "1", 1);
    check("$(E)", "", 1);
    check("$(R)", "$(A)%A%$$", 1);
    check("%R%", "$(A)%A%$$", 1);
    check("$(a b)", "blank", 1);
    check("%a b%", "blank", 1);
    check("$( A)", "untrimmed", 1);
    check("$($(A)", "odd", 1);
    check("$($(A))", "odd)", 1);
    check("%$(A%", "odd", 1);
    check("$(A%A)", "percent", 1);
    check("$(()", "paren", 1);
    check("$())", "$())", 0);
    check("%A%A%", "1A%%", 1);
    check("%A%%A%", "11", 2);
    check("%%%", "%%%%", 0);
    check("%%A%", "%%A%%", 0);
    check("%%%A%", "%%1", 1);
    check("%A", "%%A", 1);
    check("a%A", "a%%A", 0);
    check("$(A%B", "$(A%%B", 0);
    check("%A$(A)", "%%A1", 1);
    check("$(A$(A", "$(A$(A", 0);
}

TEST(Expand, endsAtTheFirstNul) {
    const Environment environment = {{"A", "1"}};
    EXPECT_EQ(expand(std::string("ab\0c", 4), environment), std::make_pair(0, std::string("ab\0c", 4)));
    EXPECT_EQ(expand(std::string("ab\0%", 4), environment), std::make_pair(0, std::string("ab")));
    EXPECT_EQ(expand(std::string("$(A\0)", 5), environment), std::make_pair(0, std::string("$(A")));
    EXPECT_EQ(expand(std::string("%A\0%", 4), environment), std::make_pair(0, std::string("%%A")));
}

TEST(Expand, longTexts) {
    const Environment environment = {{"A", "1"}};
    std::string open;
    std::string closed;
    std::string percents;
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        open += "$(";
        closed += "$(A)";
        percents += "%A%";
        expected += "1";
    }
    EXPECT_EQ(expand(open, environment), std::make_pair(0, open));
    EXPECT_EQ(expand(closed, environment), std::make_pair(100000, expected));
    EXPECT_EQ(expand(percents, environment), std::make_pair(100000, expected));
}

// ---- wide text ---------------------------------------------------------------------------------------

// Converts into a buffer of the given size, within bytes of 0xAA.
std::pair<int, std::string> converted(const std::u32string& text, int size) {
    std::string bytes(64, '\xAA');
    const int result = utf8(text.c_str(), bytes.data(), size);
    return {result, bytes.substr(0, bytes.find_last_not_of('\xAA') + 1)};
}

std::string narrow(const std::u32string& text) {
    const int size = utf8(text.c_str(), nullptr, 0);
    if (size < 0) {
        return "(error)";
    }
    const auto [result, bytes] = converted(text, size);
    EXPECT_EQ(result, size);
    EXPECT_EQ(bytes.size(), static_cast<std::size_t>(size));
    EXPECT_EQ(bytes.back(), '\0');
    return bytes.substr(0, bytes.size() - 1);
}

TEST(Utf8, refusals) {
    char byte = 'x';
    EXPECT_EQ(utf8(nullptr, &byte, 1), -1);
    EXPECT_EQ(utf8(nullptr, nullptr, 0), -1);
    EXPECT_EQ(utf8(U"a", &byte, -1), -1);
    EXPECT_EQ(utf8(U"a", nullptr, -1), -1);
    EXPECT_EQ(byte, 'x');
    for (const std::uint32_t c : {0x110000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        const std::u32string text = {U'a', static_cast<char32_t>(c)};
        EXPECT_EQ(utf8(text.c_str(), nullptr, 0), -2);
        EXPECT_EQ(converted(text, 20), std::make_pair(-2, std::string("a")));
        EXPECT_EQ(converted(text, 1), std::make_pair(-2, std::string("a")));
        EXPECT_EQ(converted(text, 0), std::make_pair(-2, std::string()));
    }
}

TEST(Utf8, examplesAndBorders) {
    EXPECT_EQ(narrow(U"\u00e9"), "\xC3\xA9");
    EXPECT_EQ(narrow(U"\U0001F600"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(narrow({char32_t(0xD800)}), "\xED\xA0\x80");
    EXPECT_EQ(narrow({char32_t(0xDFFF)}), "\xED\xBF\xBF");
    EXPECT_EQ(narrow(U""), "");
    EXPECT_EQ(narrow({char32_t(1), char32_t(0x7F)}), "\x01\x7F");
    EXPECT_EQ(narrow({char32_t(0x80)}), "\xC2\x80");
    EXPECT_EQ(narrow({char32_t(0x7FF)}), "\xDF\xBF");
    EXPECT_EQ(narrow({char32_t(0x800)}), "\xE0\xA0\x80");
    EXPECT_EQ(narrow({char32_t(0xFFFF)}), "\xEF\xBF\xBF");
    EXPECT_EQ(narrow({char32_t(0x10000)}), "\xF0\x90\x80\x80");
    EXPECT_EQ(narrow({char32_t(0x10FFFF)}), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(narrow({char32_t(0x110000)}), "(error)");
}

TEST(Utf8, everyCodePointDecodesToItself) {
    for (std::uint32_t c = 1; c <= 0x10FFFF; ++c) {
        const char32_t text[] = {c, 0};
        char bytes[5] = {};
        const int size = utf8(text, bytes, 5);
        const auto low = [&](int i) { return static_cast<unsigned char>(bytes[i]) & 0x3Fu; };
        const unsigned first = static_cast<unsigned char>(bytes[0]);
        std::uint32_t decoded = first;
        if (size == 3) {
            decoded = (first & 0x1F) << 6 | low(1);
        } else if (size == 4) {
            decoded = (first & 0x0F) << 12 | low(1) << 6 | low(2);
        } else if (size == 5) {
            decoded = (first & 0x07) << 18 | low(1) << 12 | low(2) << 6 | low(3);
        }
        ASSERT_EQ(decoded, c);
        ASSERT_EQ(size, 2 + (c >= 0x80) + (c >= 0x800) + (c >= 0x10000));
    }
}

TEST(Utf8, buffers) {
    EXPECT_EQ(utf8(U"ab", nullptr, 0), 3);
    EXPECT_EQ(utf8(U"ab", nullptr, 100), 3);
    EXPECT_EQ(converted(U"ab", 4), std::make_pair(3, std::string("ab\0", 3)));
    EXPECT_EQ(converted(U"ab", 3), std::make_pair(3, std::string("ab\0", 3)));
    // Cut without a split sequence: the full size, no terminator.
    EXPECT_EQ(converted(U"ab", 2), std::make_pair(3, std::string("ab")));
    EXPECT_EQ(converted(U"ab", 1), std::make_pair(3, std::string("a")));
    EXPECT_EQ(converted(U"ab", 0), std::make_pair(3, std::string()));
    // A split sequence.
    EXPECT_EQ(converted(U"a\u00e9", 2), std::make_pair(-2, std::string("a")));
    EXPECT_EQ(converted(U"a\u00e9", 1), std::make_pair(4, std::string("a")));
    EXPECT_EQ(converted(U"a\u00e9", 3), std::make_pair(4, std::string("a\xC3\xA9")));
    EXPECT_EQ(converted(U"\U0001F600", 3), std::make_pair(-2, std::string()));
    EXPECT_EQ(converted(U"\U0001F600", 4), std::make_pair(5, std::string("\xF0\x9F\x98\x80")));
    EXPECT_EQ(converted(U"", 0), std::make_pair(1, std::string()));
}

// ---- transport helpers -------------------------------------------------------------------------------

TEST(Transport, deviceFilter) {
    EXPECT_EQ(deviceFilter(""), "");
    EXPECT_EQ(deviceFilter("DravikGigE"), "DeviceClass=DravikGigE");
    EXPECT_EQ(deviceFilter("DravikGigE,DravikGTC"), "DeviceClass=DravikGTC||DeviceClass=DravikGigE");
    EXPECT_EQ(deviceFilter("DravikGigE,DravikGigE:SocketDriver"), "DeviceClass=DravikGigE");
    EXPECT_EQ(deviceFilter("DravikGigE:"), "DeviceClass=DravikGigE");
    EXPECT_EQ(deviceFilter(":SocketDriver"), "DeviceClass=");
    EXPECT_EQ(deviceFilter(":"), "DeviceClass=");
    EXPECT_EQ(deviceFilter("b,:x"), "DeviceClass=||DeviceClass=b");
    EXPECT_EQ(deviceFilter("a,,b"), "DeviceClass=a||DeviceClass=b");
    EXPECT_EQ(deviceFilter("a,"), "DeviceClass=a");
    EXPECT_EQ(deviceFilter(","), "");
    EXPECT_EQ(deviceFilter(",,,"), "");
    EXPECT_EQ(deviceFilter("OtherClass:SocketDriver"), "DeviceClass=OtherClass");
    // Bytes compare unsigned, a prefix before the longer text.
    EXPECT_EQ(deviceFilter("\xC3,z,ab,a"), "DeviceClass=a||DeviceClass=ab||DeviceClass=z||DeviceClass=\xC3");
}

TEST(Transport, streamParameters) {
    EXPECT_EQ(streamParameters("", ""), "");
    EXPECT_EQ(streamParameters("DravikGigE", ""), "");
    EXPECT_EQ(streamParameters("DravikGigE:", ""), "");
    EXPECT_EQ(streamParameters("DravikGigE:SocketDriver", ""), "Type=SocketDriver");
    EXPECT_EQ(streamParameters("DravikGigE:SocketDriver:more", ""), "Type=SocketDriver");
    EXPECT_EQ(streamParameters("DravikGigE:WindowsFilterDriver,DravikGigE:SocketDriver", ""),
              "Type=WindowsFilterDriver");
    EXPECT_EQ(streamParameters("dravikgige:SocketDriver", ""), "");
    EXPECT_EQ(streamParameters("OtherClass:SocketDriver", ""), "");
    EXPECT_EQ(streamParameters("", "4096"), "SocketBufferSize=4096");
    EXPECT_EQ(streamParameters("DravikGigE:SocketDriver", "2048"), "Type=SocketDriver SocketBufferSize=2048");
    // The part between two colons is empty, and is a type.
    EXPECT_EQ(streamParameters("DravikGigE::x", ""), "Type=");
    EXPECT_EQ(streamParameters("DravikGigE::", ""), "Type=");
}

TEST(Transport, startsWithDigit) {
    for (const char* text : {"0", "9", "12abc", "3x"}) {
        EXPECT_TRUE(startsWithDigit(text));
    }
    for (const char* text : {"", " 1", "-1", "+1", "x3", "/", ":", "\xB2"}) {
        EXPECT_FALSE(startsWithDigit(text));
    }
}

TEST(ProducerPath, applicationDir) {
    EXPECT_EQ(applicationDirOf("/p/q/r/s/t/u/file.dylib"), "/p");
    EXPECT_EQ(applicationDirOf("/o/p/q/r/s/t/u/file.dylib"), "/o/p");
    EXPECT_EQ(applicationDirOf("/q/r/s/t/u/file.dylib"), "");
    EXPECT_EQ(applicationDirOf("/t/u/file.dylib"), "");
    EXPECT_EQ(applicationDirOf("/file.dylib"), "");
}

TEST(ProducerPath, value) {
    const std::string l = "/p/Frameworks/orvex.framework/Libraries";
    EXPECT_EQ(producerPath("/p", {}), l + "/gentlproducer/gtl:" + l + "/orvexCXP/bin:");
    EXPECT_EQ(producerPath("/p", {{"GENICAM_GENTL64_PATH", "/x/gtl"}}),
              "/p/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
              "/p/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl");
    EXPECT_EQ(producerPath("/p", {{"GENICAM_GENTL64_PATH", "$(A)%A%%"}, {"A", "1"}}),
              l + "/gentlproducer/gtl:" + l + "/orvexCXP/bin:$(A)%A%%");
}

TEST(ProducerPath, percentInTheDirectory) {
    const std::string f = "/Frameworks/orvex.framework/Libraries";
    // The directory stands twice: its one percent sign and that of the second copy enclose a name.
    EXPECT_EQ(producerPath("/a%b", {}), "/ab" + f + "/orvexCXP/bin:");
    EXPECT_EQ(producerPath("/a%b", {{"b" + f + "/gentlproducer/gtl:/a", "V"}}),
              "/aVb" + f + "/orvexCXP/bin:");
    EXPECT_EQ(producerPath("/a%N%b", {{"N", "v"}}),
              "/avb" + f + "/gentlproducer/gtl:/avb" + f + "/orvexCXP/bin:");
    EXPECT_EQ(producerPath("/a%%b", {}), "/a%%b" + f + "/gentlproducer/gtl:/a%%b" + f + "/orvexCXP/bin:");
    EXPECT_EQ(producerPath("/a$$b", {}), "/a$b" + f + "/gentlproducer/gtl:/a$b" + f + "/orvexCXP/bin:");
}

// ---- parser: construction and argument checks --------------------------------------------------------

TEST(ParserTest, afterConstruction) {
    Trial run;
    EXPECT_EQ(run.parser.applicationName(), "");
    EXPECT_EQ(run.parser.xmlFilename(), "");
    EXPECT_EQ(run.parser.outputFilename(), "");
    EXPECT_TRUE(run.parser.testPaths().empty());
    EXPECT_EQ(run.parser.firstTestPath(), "");
    EXPECT_EQ(run.parser.tlList(), "");
    EXPECT_FALSE(run.parser.helpRequested());
    EXPECT_FALSE(run.parser.waitBeforeExit());
    EXPECT_EQ(run.parser.record(), emptyRecord);
    EXPECT_EQ(run.parser.tdcDravikXmlFilename(), "");
    EXPECT_TRUE(run.environment.empty());
}

TEST(ParserTest, countZeroDoesNothing) {
    const Environment before = {{"ORVEX_TEST_ARGS", "-o a S \"unclosed"}};
    Trial run(before);
    EXPECT_TRUE(run.parser.parse({}));
    EXPECT_TRUE(run.parser.parseNullArgv(0));
    EXPECT_TRUE(run.parser.parseWide({}));
    EXPECT_TRUE(run.parser.parseNullWide(0));
    EXPECT_TRUE(run.parser.parsePacked("", 0));
    EXPECT_EQ(run.environment, before);
    EXPECT_TRUE(run.parser.registry().positionals.empty());
    EXPECT_EQ(run.parser.record(), emptyRecord);
}

TEST(ParserTest, refusedArguments) {
    const Environment before = {{"ORVEX_TEST_ARGS", "-o a S"}};
    Trial run(before);
    for (const int argc : {-1, INT_MIN, 1, INT_MAX}) {
        EXPECT_FALSE(run.parser.parseNullArgv(argc));
        EXPECT_FALSE(run.parser.parseNullWide(argc));
    }
    EXPECT_FALSE(run.parser.parsePacked("app", -1));
    EXPECT_EQ(run.environment, before);
    EXPECT_TRUE(run.parser.registry().positionals.empty());
    EXPECT_EQ(run.parser.record(), emptyRecord);
}

// ---- parser: the sequence ----------------------------------------------------------------------------

TEST(ParserTest, nameOnly) {
    Trial run;
    EXPECT_TRUE(run({}));
    EXPECT_EQ(run.parser.applicationName(), "app");
    EXPECT_TRUE(run.parser.testPaths().empty());
    EXPECT_FALSE(run.parser.helpRequested());
    EXPECT_FALSE(run.parser.waitBeforeExit());
    EXPECT_EQ(run.parser.xmlFilename(), "");
    EXPECT_EQ(run.parser.outputFilename(), "");
    EXPECT_EQ(run.parser.tlList(), "");
    EXPECT_EQ(run.environment, plainEnvironment);
}

TEST(ParserTest, wholeExample) {
    const Environment before = {{"_ORVEX_TEST_ARGS_", "-tdc_guid 1234"}};
    Trial run(before);
    EXPECT_TRUE(run.parser.parse({"mytest", "-tl", "DravikGigE:SocketDriver", "-packetsize", "1500", "-o",
                                  "result.xml", "TestSuiteGigE"}));
    EXPECT_EQ(run.parser.applicationName(), "mytest");
    EXPECT_EQ(run.parser.testPaths(), (Strings{"TestSuiteGigE"}));
    EXPECT_EQ(run.parser.outputFilename(), "result.xml");
    EXPECT_EQ(run.parser.record().guid, "1234");
    EXPECT_EQ(run.environment, (Environment{{"_ORVEX_TEST_ARGS_", "-tdc_guid 1234"},
                                            {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
                                            {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver"},
                                            {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                                            {"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                            {"TEST_SESSION_GUID", "1234"},
                                            {"TRANSPORT_LAYER", "DravikGigE:SocketDriver"}}));
}

TEST(ParserTest, laterSourcesOverride) {
    Trial one(Environment{{"ORVEX_TEST_ARGS", "-o a"}});
    EXPECT_TRUE(one({"-o", "b"}));
    EXPECT_EQ(one.parser.outputFilename(), "b");
    Trial two(Environment{{"ORVEX_TEST_ARGS", "-o a"}, {"_ORVEX_TEST_ARGS_", "-o c"}});
    EXPECT_TRUE(two({"-o", "b"}));
    EXPECT_EQ(two.parser.outputFilename(), "c");
    Trial three(Environment{{"ORVEX_TEST_ARGS", "-o a"}});
    EXPECT_TRUE(three({}));
    EXPECT_EQ(three.parser.outputFilename(), "a");
}

TEST(ParserTest, testPathsOfAllSources) {
    Trial run(Environment{{"ORVEX_TEST_ARGS", "SuiteA"}, {"_ORVEX_TEST_ARGS_", "SuiteC"}});
    EXPECT_TRUE(run({"SuiteB"}));
    EXPECT_EQ(run.parser.testPaths(), (Strings{"SuiteA", "SuiteB", "SuiteC"}));
    EXPECT_EQ(run.parser.firstTestPath(), "SuiteA");
    EXPECT_EQ(run.parser.applicationName(), "app");
}

TEST(ParserTest, transportLayersOfAllSources) {
    Trial run(Environment{{"ORVEX_TEST_ARGS", "-tl W"}, {"_ORVEX_TEST_ARGS_", "-tl Y"}});
    EXPECT_TRUE(run({"-tl", "X"}));
    EXPECT_EQ(run.parser.tlList(), "W,X,Y");
    Trial two(Environment{{"_ORVEX_TEST_ARGS_", "-tl Y"}});
    EXPECT_TRUE(two({"-tl", "X"}));
    EXPECT_EQ(two.parser.tlList(), "X,Y");
}

TEST(ParserTest, flags) {
    for (const char* flag : {"-?", "--help", "-help", "-h", "-H", "--?"}) {
        Trial run;
        EXPECT_TRUE(run({flag, "TestSuiteUsb"}));
        EXPECT_TRUE(run.parser.helpRequested()) << flag;
        EXPECT_EQ(run.parser.testPaths(), (Strings{"TestSuiteUsb"}));
    }
    for (const char* flag : {"-HELP", "-help=1", "-Help", "help", "?"}) {
        Trial run;
        EXPECT_TRUE(run({flag}));
        EXPECT_FALSE(run.parser.helpRequested()) << flag;
    }
    Trial wait;
    EXPECT_TRUE(wait({"-w", "TestSuiteUsb"}));
    EXPECT_TRUE(wait.parser.waitBeforeExit());
    EXPECT_EQ(wait.parser.testPaths(), (Strings{"TestSuiteUsb"}));
    Trial noWait;
    EXPECT_TRUE(noWait({"-w=1", "-W"}));
    EXPECT_FALSE(noWait.parser.waitBeforeExit());
    Trial fromVariable(Environment{{"ORVEX_TEST_ARGS", "-h"}, {"_ORVEX_TEST_ARGS_", "-w"}});
    EXPECT_TRUE(fromVariable({}));
    EXPECT_TRUE(fromVariable.parser.helpRequested());
    EXPECT_TRUE(fromVariable.parser.waitBeforeExit());
}

TEST(ParserTest, fileNames) {
    Trial run;
    EXPECT_TRUE(run({"-o", "a.xml", "-x"}));
    EXPECT_EQ(run.parser.outputFilename(), "a.xml");
    EXPECT_EQ(run.parser.xmlFilename(), "");
    Trial two;
    EXPECT_TRUE(two({"-x", "b.xml"}));
    EXPECT_EQ(two.parser.xmlFilename(), "b.xml");
    // The flag form of the appending source does not remove the value.
    Trial three(Environment{{"_ORVEX_TEST_ARGS_", "-x"}});
    EXPECT_TRUE(three({"-x", "b.xml"}));
    EXPECT_EQ(three.parser.xmlFilename(), "b.xml");
}

TEST(ParserTest, secondParseAdds) {
    Trial run;
    EXPECT_TRUE(run({"A", "-w", "-o", "a", "-tl", "X", "-tdc_guid", "1"}));
    EXPECT_TRUE(run.parser.parse({"other", "B", "-o", "b", "-tl", "Y"}));
    EXPECT_EQ(run.parser.applicationName(), "app");
    EXPECT_EQ(run.parser.testPaths(), (Strings{"A", "A", "B"}));
    EXPECT_TRUE(run.parser.waitBeforeExit());
    EXPECT_EQ(run.parser.outputFilename(), "b");
    EXPECT_EQ(run.parser.tlList(), "X,Y");
    EXPECT_EQ(run.parser.record().guid, "1");
    EXPECT_EQ(run.parser.record().transportLayers, "X,Y");
    EXPECT_EQ(run.get("TRANSPORT_LAYER"), "X Y");
}

TEST(ParserTest, programNameThatIsAnOption) {
    Trial run;
    EXPECT_TRUE(run.parser.parse({"-o", "file", "Suite", "Other"}));
    EXPECT_EQ(run.parser.outputFilename(), "file");
    EXPECT_EQ(run.parser.applicationName(), "Suite");
    EXPECT_EQ(run.parser.testPaths(), (Strings{"Other"}));
    // In front of the text of a variable it takes that text's first token.
    Trial two(Environment{{"ORVEX_TEST_ARGS", "S"}});
    EXPECT_TRUE(two.parser.parse({"-o"}));
    EXPECT_EQ(two.parser.outputFilename(), "S");
    EXPECT_EQ(two.parser.applicationName(), "");
}

TEST(ParserTest, argumentsEndAtTheirNul) {
    Trial run;
    EXPECT_TRUE(run({std::string("-o=a\0b", 6)}));
    EXPECT_EQ(run.parser.outputFilename(), "a");
}

// ---- parser: argument variables ----------------------------------------------------------------------

TEST(ArgumentVariables, directCall) {
    Trial run(Environment{{"MINE", "-o \"my file.xml\" S -w"}, {"EMPTY", ""}, {"BLANK", " \t"}});
    run.parser.parseArgsFromEnvironmentVariable("", "prog");
    run.parser.parseArgsFromEnvironmentVariable("UNSET", "prog");
    run.parser.parseArgsFromEnvironmentVariable("EMPTY", "prog");
    run.parser.parseArgsFromEnvironmentVariable("BLANK", "prog");
    EXPECT_TRUE(run.parser.registry().positionals.empty());
    run.parser.parseArgsFromEnvironmentVariable("MINE", "prog");
    EXPECT_EQ(run.parser.registry().positionals, (Strings{"prog", "S"}));
    EXPECT_EQ(run.parser.registry().getText("o"), "my file.xml");
    EXPECT_TRUE(run.parser.registry().hasOption("w"));
    // Only the registry has changed.
    EXPECT_EQ(run.parser.applicationName(), "");
    EXPECT_EQ(run.parser.outputFilename(), "");
    // The next parse sees it.
    EXPECT_TRUE(run({}));
    EXPECT_EQ(run.parser.applicationName(), "prog");
    EXPECT_EQ(run.parser.testPaths(), (Strings{"S"}));
}

TEST(ArgumentVariables, errorLeavesTheCall) {
    Trial run(Environment{{"BAD", "-o a \"b"}});
    try {
        run.parser.parseArgsFromEnvironmentVariable("BAD", "prog");
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Starting quote has no ending quote.");
    }
    EXPECT_TRUE(run.parser.registry().positionals.empty());
    EXPECT_TRUE(run.parser.registry().values.empty());
}

TEST(ArgumentVariables, emptyBehavesLikeUnset) {
    for (const char* text : {"", "  \t "}) {
        Trial run(Environment{{"ORVEX_TEST_ARGS", text}, {"_ORVEX_TEST_ARGS_", text}});
        EXPECT_TRUE(run.parser.parse({"-first", "second"}));
        // Scanned as a list of their own, the names in front would have given the flag three times.
        EXPECT_EQ(run.parser.registry().flags, (Counts{"first"}));
    }
}

TEST(ArgumentVariables, quotedEmptyTokenIsAToken) {
    Trial run(Environment{{"ORVEX_TEST_ARGS", "''"}});
    EXPECT_TRUE(run({}));
    EXPECT_EQ(run.parser.testPaths(), (Strings{""}));
    EXPECT_EQ(run.parser.firstTestPath(), "");
}

TEST(ArgumentVariables, malformedPrependingVariable) {
    const Environment before = {{"ORVEX_TEST_ARGS", "-o a 'b"}};
    Trial run(before);
    EXPECT_FALSE(run({"S", "-w"}));
    EXPECT_EQ(run.environment, before);
    EXPECT_TRUE(run.parser.registry().positionals.empty());
    EXPECT_EQ(run.parser.applicationName(), "");
}

TEST(ArgumentVariables, malformedAppendingVariable) {
    const Environment before = {{"_ORVEX_TEST_ARGS_", "-o a 'b"}};
    Trial run(before);
    EXPECT_FALSE(run({"S", "-w"}));
    EXPECT_EQ(run.environment, before);
    // Scanned, but not acted on.
    EXPECT_EQ(run.parser.registry().positionals, (Strings{"app", "S"}));
    EXPECT_EQ(run.parser.applicationName(), "");
    EXPECT_FALSE(run.parser.waitBeforeExit());
    EXPECT_EQ(run.parser.record(), emptyRecord);
}

// ---- parser: other entry forms -----------------------------------------------------------------------

TEST(EntryForms, wide) {
    Trial run;
    EXPECT_TRUE(run.parser.parseWide({U"app", U"-o", U"\u00e9\U0001F600", U"", {char32_t(0xD800)}}));
    EXPECT_EQ(run.parser.applicationName(), "app");
    EXPECT_EQ(run.parser.outputFilename(), "\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(run.parser.testPaths(), (Strings{"", "\xED\xA0\x80"}));
}

TEST(EntryForms, wideRefusals) {
    const Environment before = {{"ORVEX_TEST_ARGS", "-w"}};
    Trial run(before);
    EXPECT_FALSE(run.parser.parseWide({U"app", {char32_t(0x110000)}}));
    EXPECT_FALSE(run.parser.parseWide({U"app", {char32_t(0xFFFFFFFF)}, U"S"}));
    EXPECT_FALSE(run.parser.parseWideWithNulls({std::u32string(U"app"), std::nullopt}));
    EXPECT_FALSE(run.parser.parseWideWithNulls({std::nullopt}));
    EXPECT_TRUE(run.parser.registry().positionals.empty());
    EXPECT_TRUE(run.parser.registry().flags.empty());
    EXPECT_EQ(run.environment, before);
    EXPECT_TRUE(run.parser.parseWideWithNulls({std::u32string(U"app"), std::u32string(U"S")}));
    EXPECT_EQ(run.parser.testPaths(), (Strings{"S"}));
}

TEST(EntryForms, wideKeepsTheResult) {
    Trial run;
    EXPECT_FALSE(run.parser.parseWide({U"app", U"-camemu", U"x3"}));
    EXPECT_EQ(run.parser.applicationName(), "app");
}

TEST(EntryForms, packed) {
    const std::string block("prog\0-w\0-o\0out.xml\0", 19);
    Trial run;
    EXPECT_TRUE(run.parser.parsePacked(block, 4));
    EXPECT_EQ(run.parser.applicationName(), "prog");
    EXPECT_TRUE(run.parser.waitBeforeExit());
    EXPECT_EQ(run.parser.outputFilename(), "out.xml");
    // Further strings are not used.
    Trial two;
    EXPECT_TRUE(two.parser.parsePacked(block, 2));
    EXPECT_EQ(two.parser.outputFilename(), "");
    EXPECT_TRUE(two.parser.waitBeforeExit());
    // The terminator after the block ends the last string as well.
    Trial three;
    EXPECT_TRUE(three.parser.parsePacked(std::string("prog\0S", 6), 2));
    EXPECT_EQ(three.parser.testPaths(), (Strings{"S"}));
}

TEST(EntryForms, packedEmptyString) {
    for (const std::string& block : {std::string("a\0\0b\0", 5), std::string("\0a\0b\0", 5),
                                     std::string("a\0b\0\0", 5), std::string("a\0b\0", 4)}) {
        Trial run;
        EXPECT_FALSE(run.parser.parsePacked(block, 3));
        EXPECT_TRUE(run.parser.registry().positionals.empty());
        EXPECT_TRUE(run.environment.empty());
    }
    Trial run;
    EXPECT_TRUE(run.parser.parsePacked(std::string("a\0\0b\0", 5), 1));
}

// ---- parser: transport variables ---------------------------------------------------------------------

TEST(TransportVariables, examples) {
    Trial one;
    EXPECT_TRUE(one({"-tl", "DravikGigE"}));
    EXPECT_EQ(one.get("ORVEX_DEVICE_FILTER"), "DeviceClass=DravikGigE");
    EXPECT_EQ(one.get("ORVEX_GIGE_STREAMPARAMS"), "(unset)");
    EXPECT_EQ(one.get("ORVEX_GIGE_STREAM_GEVSCPS"), "8192");
    EXPECT_EQ(one.get("GENICAM_GENTL64_PATH"), "(unset)");

    for (const Strings& layers : {Strings{"-tl", "DravikGTC,DravikGigE:SocketDriver"},
                                  Strings{"-tl", "DravikGTC", "-tl", "DravikGigE:SocketDriver"}}) {
        Trial two;
        Strings arguments = layers;
        arguments.insert(arguments.end(), {"-socketbuffer", "2048"});
        EXPECT_TRUE(two(arguments));
        EXPECT_EQ(two.get("ORVEX_DEVICE_FILTER"), "DeviceClass=DravikGTC||DeviceClass=DravikGigE");
        EXPECT_EQ(two.get("ORVEX_GIGE_STREAMPARAMS"), "Type=SocketDriver SocketBufferSize=2048");
        EXPECT_EQ(two.get("GENICAM_GENTL64_PATH"), producerPath("/p", {}));
    }

    Trial three;
    EXPECT_TRUE(three({"-tl", "DravikGigE:SocketDriver", "-tl", "DravikGigE:WindowsFilterDriver",
                       "-packetsize", "1500", "-packetdelay", "0"}));
    EXPECT_EQ(three.get("ORVEX_DEVICE_FILTER"), "DeviceClass=DravikGigE");
    EXPECT_EQ(three.get("ORVEX_GIGE_STREAMPARAMS"), "Type=WindowsFilterDriver");
    EXPECT_EQ(three.get("ORVEX_GIGE_STREAM_GEVSCPS"), "1500");
    EXPECT_EQ(three.get("ORVEX_GIGE_STREAM_GEVSCPD"), "0");

    Trial four;
    EXPECT_TRUE(four({"-socketbuffer", "4096"}));
    EXPECT_EQ(four.get("ORVEX_DEVICE_FILTER"), "(unset)");
    EXPECT_EQ(four.get("ORVEX_GIGE_STREAMPARAMS"), "SocketBufferSize=4096");

    Trial five;
    EXPECT_TRUE(five({"-p", "key1=value1", "-p", "key2=value2"}));
    EXPECT_EQ(five.get("TEST_PROPERTIES"), "key1=value1 key2=value2");

    Trial six;
    EXPECT_TRUE(six({"-camemu", "3x"}));
    EXPECT_EQ(six.get("ORVEX_CAMEMU"), "3x");
}

TEST(TransportVariables, inheritedValues) {
    Trial run(Environment{{"ORVEX_DEVICE_FILTER", "f"},
                          {"ORVEX_GIGE_STREAMPARAMS", "s"},
                          {"ORVEX_CAMEMU", "c"},
                          {"ORVEX_GIGE_STREAM_GEVSCPS", "g"},
                          {"ORVEX_GIGE_STREAM_GEVSCPD", "d"},
                          {"TEST_PROPERTIES", "p"}});
    EXPECT_TRUE(run({}));
    EXPECT_EQ(run.get("ORVEX_DEVICE_FILTER"), "f");
    EXPECT_EQ(run.get("ORVEX_GIGE_STREAMPARAMS"), "s");
    EXPECT_EQ(run.get("ORVEX_CAMEMU"), "c");
    EXPECT_EQ(run.get("ORVEX_GIGE_STREAM_GEVSCPS"), "8192");
    EXPECT_EQ(run.get("ORVEX_GIGE_STREAM_GEVSCPD"), "d");
    EXPECT_EQ(run.get("TEST_PROPERTIES"), "p");
    for (const char* text : {"", "0", "yes"}) {
        Trial extra(Environment{{"ORVEX_GTC_USE_EXTRA_TL", text}});
        EXPECT_TRUE(extra({}));
        EXPECT_EQ(extra.get("ORVEX_GTC_USE_EXTRA_TL"), text);
    }
}

TEST(TransportVariables, emptyValues) {
    Trial run;
    EXPECT_TRUE(run({"-packetsize=", "-packetdelay=", "-socketbuffer=", "-camemu=", "-p=", "-tl="}));
    EXPECT_EQ(run.environment, plainEnvironment);
    EXPECT_EQ(run.parser.record().transportLayers, "any");
    // Two empty values join to a text that is not empty.
    Trial two;
    EXPECT_TRUE(two({"-p=", "-p=", "-tl=", "-tl="}));
    EXPECT_EQ(two.get("TEST_PROPERTIES"), " ");
    EXPECT_EQ(two.get("TRANSPORT_LAYER"), " ");
    EXPECT_EQ(two.get("ORVEX_DEVICE_FILTER"), "(unset)");
    EXPECT_EQ(two.parser.tlList(), ",");
    EXPECT_EQ(two.parser.record().transportLayers, ",");
}

TEST(TransportVariables, malformedValuesStopWhereTheyStand) {
    const Strings good = {"-tl",
                          "DravikGTC,DravikGigE:T",
                          "-socketbuffer",
                          "1",
                          "-packetsize",
                          "2",
                          "-packetdelay",
                          "3",
                          "-camemu",
                          "4",
                          "-p",
                          "k=v",
                          "-tdc_guid",
                          "5",
                          "S"};
    const Strings order = {"ORVEX_GTC_USE_EXTRA_TL",    "ORVEX_DEVICE_FILTER",
                           "ORVEX_GIGE_STREAMPARAMS",   "ORVEX_GIGE_STREAM_GEVSCPS",
                           "ORVEX_GIGE_STREAM_GEVSCPD", "ORVEX_CAMEMU"};
    const std::vector<std::pair<std::string, std::size_t>> setBefore = {
        {"-socketbuffer", 0}, {"-packetsize", 3}, {"-packetdelay", 4}, {"-camemu", 5}};
    for (const auto& [option, count] : setBefore) {
        for (const char* bad : {"x3", " 1", "-1", "+1"}) {
            Trial run;
            Strings arguments = good;
            arguments.push_back(option + "=" + bad);
            EXPECT_FALSE(run(arguments));
            EXPECT_EQ(run.environment.size(), count) << option;
            for (std::size_t i = 0; i < count; ++i) {
                EXPECT_NE(run.get(order[i]), "(unset)") << option << " " << order[i];
            }
            // The fields are new, the record is as it was.
            EXPECT_EQ(run.parser.applicationName(), "app");
            EXPECT_EQ(run.parser.testPaths(), (Strings{"S"}));
            EXPECT_EQ(run.parser.tlList(), "DravikGTC,DravikGigE:T");
            EXPECT_EQ(run.parser.record(), emptyRecord);
        }
    }
    Trial run;
    EXPECT_TRUE(run(good));
}

TEST(TransportVariables, failedSettingsStop) {
    const Strings arguments = {"-tl",
                               "DravikGTC,DravikGigE:T",
                               "-socketbuffer",
                               "1",
                               "-packetsize",
                               "2",
                               "-packetdelay",
                               "3",
                               "-camemu",
                               "4",
                               "-p",
                               "k=v",
                               "-tdc_guid",
                               "5"};
    for (std::size_t i = 0; i < 7; ++i) {
        Trial run;
        Strings asked;
        run.parser.failSetting = [&](const std::string& name) {
            asked.push_back(name);
            return name == writtenVariables()[i];
        };
        EXPECT_FALSE(run(arguments));
        EXPECT_EQ(run.environment.size(), i);
        EXPECT_EQ(asked, Strings(writtenVariables().begin(), writtenVariables().begin() + i + 1));
        EXPECT_EQ(run.parser.record(), emptyRecord);
    }
}

TEST(TransportVariables, laterFailedSettingsAreIgnored) {
    const Strings arguments = {"-tl",
                               "DravikGTC",
                               "-tdc_guid",
                               "1",
                               "-tdc_runname",
                               "2",
                               "-tdc_rundescription",
                               "3",
                               "-tdc_group",
                               "4",
                               "-tdc_product",
                               "5",
                               "-tdc_variant=6",
                               "-tdc_userid",
                               "7",
                               "-tdc_vcsrevision",
                               "8",
                               "-tdc_vcsbranch",
                               "9"};
    Trial whole;
    EXPECT_TRUE(whole(arguments));
    for (std::size_t i = 7; i < 18; ++i) {
        Trial run;
        const std::string failing = writtenVariables()[i];
        run.parser.failSetting = [&](const std::string& name) { return name == failing; };
        EXPECT_TRUE(run(arguments));
        Environment expected = whole.environment;
        EXPECT_EQ(expected.erase(failing), 1u);
        EXPECT_EQ(run.environment, expected);
        EXPECT_EQ(run.parser.record(), whole.parser.record());
    }
}

TEST(TransportVariables, extraLayerIsNotSetAgain) {
    Trial run(Environment{{"ORVEX_GTC_USE_EXTRA_TL", ""}});
    run.parser.failSetting = [](const std::string& name) { return name == "ORVEX_GTC_USE_EXTRA_TL"; };
    EXPECT_TRUE(run({}));
}

// ---- parser: producer path ---------------------------------------------------------------------------

TEST(ProducerPathStep, condition) {
    for (const char* layers :
         {"DravikGTC", "DravikGTCx", "xDravikGTC", "DravikGigE:DravikGTC", "a,DravikGTC:b"}) {
        Trial run(Environment{{"GENICAM_GENTL64_PATH", "/x/gtl"}});
        EXPECT_TRUE(run({"-tl", layers}));
        EXPECT_EQ(run.get("GENICAM_GENTL64_PATH"), producerPath("/p", {{"GENICAM_GENTL64_PATH", "/x/gtl"}}));
    }
    for (const char* layers : {"DravikGigE", "dravikgtc", "Dravik,GTC", "DravikGT", ""}) {
        Trial run(Environment{{"GENICAM_GENTL64_PATH", "/x/gtl"}}, std::nullopt);
        EXPECT_TRUE(run({"-tl", layers}));
        EXPECT_EQ(run.get("GENICAM_GENTL64_PATH"), "/x/gtl");
    }
    Trial gone;
    EXPECT_TRUE(gone({}));
    EXPECT_EQ(gone.get("GENICAM_GENTL64_PATH"), "(unset)");
}

TEST(ProducerPathStep, secondParsePutsTheDirectoriesInFrontAgain) {
    Trial run;
    EXPECT_TRUE(run({"-tl", "DravikGTC"}));
    const std::string once = run.get("GENICAM_GENTL64_PATH");
    EXPECT_TRUE(run({}));
    EXPECT_EQ(run.get("GENICAM_GENTL64_PATH"), once + once);
}

TEST(ProducerPathStep, directoryFailure) {
    Trial run({}, std::nullopt);
    EXPECT_FALSE(run({"-tl", "DravikGTC", "-tdc_guid", "1", "-p", "a=b"}));
    EXPECT_EQ(run.get("GENICAM_GENTL64_PATH"), "(unset)");
    EXPECT_EQ(run.get("ORVEX_DEVICE_FILTER"), "DeviceClass=DravikGTC");
    EXPECT_EQ(run.get("TEST_PROPERTIES"), "a=b");
    EXPECT_EQ(run.get("TEST_SESSION_GUID"), "(unset)");
    EXPECT_EQ(run.get("TRANSPORT_LAYER"), "(unset)");
    EXPECT_EQ(run.parser.record(), emptyRecord);
    EXPECT_EQ(run.parser.tlList(), "DravikGTC");
}

TEST(ProducerPathStep, emptyDirectory) {
    Trial run({}, "");
    EXPECT_TRUE(run({"-tl", "DravikGTC"}));
    EXPECT_EQ(run.get("GENICAM_GENTL64_PATH"),
              "/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
              "/Frameworks/orvex.framework/Libraries/orvexCXP/bin:");
}

// ---- parser: record and session ----------------------------------------------------------------------

TEST(RecordTest, fieldOrder) {
    Strings names;
    for (const auto& [name, value] : emptyRecord.entries()) {
        names.push_back(name);
        EXPECT_EQ(value, "");
    }
    EXPECT_EQ(names,
              (Strings{"group", "guid", "runName", "runDescription", "product", "fixedZero", "userId",
                       "vcsRevision", "vcsBranch", "secondVcsRevision", "secondVcsBranch", "pcName", "osName",
                       "transportLayers", "tdcDravikXmlFilename", "testName", "osType", "bit"}));
}

TEST(RecordTest, withoutOptions) {
    Trial run;
    EXPECT_TRUE(run({}));
    Record expected;
    expected.group = "orvex";
    expected.fixedZero = "0";
    expected.transportLayers = "any";
    EXPECT_EQ(run.parser.record(), expected);
    EXPECT_NE(run.parser.record(), emptyRecord);
    for (std::size_t i = 8; i < 18; ++i) {
        EXPECT_EQ(run.get(writtenVariables()[i]), "(unset)");
    }
}

TEST(RecordTest, allOptions) {
    Trial run;
    EXPECT_TRUE(run({"-tdc_guid",
                     "guid",
                     "-tdc_runname",
                     "runname",
                     "-tdc_rundescription",
                     "rundesc",
                     "-tdc_group",
                     "group",
                     "-tdc_userid",
                     "user",
                     "-tdc_product",
                     "product",
                     "-tdc_vcsbranch",
                     "main",
                     "-tdc_vcsrevision",
                     "1a2b3c",
                     "-tdc_dxml",
                     "d.xml",
                     "-testname",
                     "test",
                     "-pcname",
                     "pc",
                     "-osname",
                     "os",
                     "-ostype",
                     "type",
                     "-bit",
                     "64",
                     "-tdc_variant=variant",
                     "-tl",
                     "A",
                     "-tl",
                     "B"}));
    Strings values;
    for (const auto& entry : run.parser.record().entries()) {
        values.push_back(entry.second);
    }
    EXPECT_EQ(values, (Strings{"group", "guid", "runname", "rundesc", "product", "0", "user", "1a2b3c",
                               "main", "1a2b3c", "main", "pc", "os", "A,B", "d.xml", "test", "type", "64"}));
    EXPECT_EQ(run.parser.tdcDravikXmlFilename(), "d.xml");
    EXPECT_EQ(run.get("TEST_SESSION_GUID"), "guid");
    EXPECT_EQ(run.get("TEST_SESSION_NAME"), "runname");
    EXPECT_EQ(run.get("TEST_SESSION_DESCRIPTION"), "rundesc");
    EXPECT_EQ(run.get("TEST_SESSION_GROUP"), "group");
    EXPECT_EQ(run.get("TEST_PRODUCT"), "product");
    EXPECT_EQ(run.get("TEST_PRODUCT_VARIANT"), "variant");
    EXPECT_EQ(run.get("USER_UID"), "user");
    EXPECT_EQ(run.get("VCS_REVISION"), "1a2b3c");
    EXPECT_EQ(run.get("VCS_BRANCH"), "main");
    EXPECT_EQ(run.get("TRANSPORT_LAYER"), "A B");
}

TEST(RecordTest, emptyValuesLeaveFieldsAndVariables) {
    Trial run(Environment{{"TEST_SESSION_GUID", "inherited"}});
    EXPECT_TRUE(run({"-tdc_group", "", "-tdc_guid", "", "-tdc_dxml="}));
    EXPECT_EQ(run.parser.record().group, "orvex");
    EXPECT_EQ(run.parser.record().guid, "");
    EXPECT_EQ(run.get("TEST_SESSION_GUID"), "inherited");
    EXPECT_EQ(run.get("TEST_SESSION_GROUP"), "(unset)");
}

TEST(RecordTest, advertisedNamesFillNothing) {
    Trial run;
    EXPECT_TRUE(run({"-tdc_name", "a", "-tdc_pcname", "b", "-tdc_osname=c"}));
    EXPECT_EQ(run.parser.record().testName, "");
    EXPECT_EQ(run.parser.record().pcName, "");
    EXPECT_EQ(run.parser.record().osName, "");
    EXPECT_EQ(run.parser.testPaths(), (Strings{"a", "b"}));
}

TEST(RecordTest, keptBetweenParses) {
    Trial run;
    EXPECT_TRUE(run({"-tdc_guid", "1", "-tdc_group", "g"}));
    EXPECT_TRUE(run({"-tdc_guid=", "-tdc_group="}));
    // The later empty value reads as none: the field stays, the group falls back.
    EXPECT_EQ(run.parser.record().guid, "1");
    EXPECT_EQ(run.parser.record().group, "orvex");
    EXPECT_EQ(run.get("TEST_SESSION_GROUP"), "g");
    // A parse that ends early changes nothing of it.
    EXPECT_FALSE(run({"-tdc_guid", "2", "-camemu", "x"}));
    EXPECT_EQ(run.parser.record().guid, "1");
    EXPECT_EQ(run.get("TEST_SESSION_GUID"), "1");
}

TEST(Session, variantAsTwoArguments) {
    Trial run(Environment{{"TEST_PRODUCT_VARIANT", "inherited"}});
    EXPECT_TRUE(run({"-tdc_variant", "V"}));
    EXPECT_EQ(run.get("TEST_PRODUCT_VARIANT"), "inherited");
    EXPECT_TRUE(run({"-tdc_variant=V"}));
    EXPECT_EQ(run.get("TEST_PRODUCT_VARIANT"), "V");
}

TEST(Session, inheritedBranch) {
    Trial run(Environment{{"VCS_BRANCH", "old"}});
    EXPECT_TRUE(run({}));
    EXPECT_EQ(run.get("VCS_BRANCH"), "old");
    EXPECT_TRUE(run({"-tdc_vcsbranch", "new"}));
    EXPECT_EQ(run.get("VCS_BRANCH"), "new");
}

// ---- help text ---------------------------------------------------------------------------------------

TEST(Help, head) {
    Trial run;
    EXPECT_EQ(run.parser.helpMessage("").find("[-?] [-camemu n] [-o filename]"), 0u);
    EXPECT_EQ(run.parser.helpMessage("runner").find("runner [-?] [-camemu n]"), 0u);
    EXPECT_TRUE(run.parser.parse({"./mytest"}));
    EXPECT_EQ(run.parser.helpMessage("").find("./mytest [-?]"), 0u);
    EXPECT_EQ(run.parser.helpMessage("runner").find("runner [-?]"), 0u);
}

TEST(Help, lines) {
    Trial run;
    const std::string text = run.parser.helpMessage("");
    Strings lines(1);
    for (const char byte : text) {
        if (byte == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += byte;
        }
    }
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[1], "Additional TDC parameters:");
    EXPECT_NE(lines[2].find("[-tdc_guid <guid>]  [-tdc_name <name>]"), std::string::npos);
    EXPECT_EQ(lines[3], "");
    EXPECT_EQ(lines[4].find("<deviceclass> := Any"), 0u);
    EXPECT_EQ(lines[5].find("<testpath>    := Testsuite"), 0u);
    EXPECT_EQ(lines[6], "");
    EXPECT_EQ(text.back(), '.');
}

TEST(Help, cCopy) {
    Trial run;
    EXPECT_TRUE(run({}));
    const std::string text = run.parser.helpMessage("prog");
    const std::size_t length = text.size();
    EXPECT_EQ(run.parser.cHelpMessage(std::nullopt, std::nullopt).result,
              run.parser.helpMessage("app").size() + 1);
    EXPECT_EQ(run.parser.cHelpMessage("prog", std::nullopt).result, length + 1);
    for (const std::size_t size : {std::size_t(0), std::size_t(1), length}) {
        const CHelp refused = run.parser.cHelpMessage("prog", size);
        EXPECT_EQ(refused.result, length + 1);
        EXPECT_EQ(refused.bytes, std::vector<char>(size, '\xAA'));
    }
    const CHelp exact = run.parser.cHelpMessage("prog", length + 1);
    EXPECT_EQ(exact.result, length);
    EXPECT_EQ(std::string(exact.bytes.begin(), exact.bytes.end()), text + '\0');
    const CHelp large = run.parser.cHelpMessage("prog", length + 3);
    EXPECT_EQ(large.result, length);
    EXPECT_EQ(std::string(large.bytes.begin(), large.bytes.end()), text + '\0' + "\xAA\xAA");
}

// ---- C copy of the record ----------------------------------------------------------------------------

std::array<char, 4096> slots(const std::map<int, std::string>& texts) {
    std::array<char, 4096> bytes{};
    for (const auto& [slot, text] : texts) {
        text.copy(&bytes[256 * static_cast<std::size_t>(slot)], 256);
    }
    return bytes;
}

TEST(CCopy, beforeAndAfterAPlainParse) {
    Trial run;
    EXPECT_EQ(run.parser.cBuffer().result, 1);
    EXPECT_EQ(run.parser.cBuffer().bytes, slots({}));
    EXPECT_TRUE(run({}));
    EXPECT_EQ(run.parser.cBuffer().result, 1);
    EXPECT_EQ(run.parser.cBuffer().bytes, slots({{0, "orvex"}, {5, "0"}, {13, "any"}}));
}

TEST(CCopy, everySlot) {
    const std::vector<std::pair<std::string, std::set<int>>> options = {
        {"tdc_group", {0}},
        {"tdc_guid", {1}},
        {"tdc_runname", {2}},
        {"tdc_rundescription", {3}},
        {"tdc_product", {4}},
        {"tdc_userid", {6}},
        {"tdc_vcsrevision", {7, 9}},
        {"tdc_vcsbranch", {8, 10}},
        {"pcname", {11}},
        {"osname", {12}},
        {"tl", {13}},
        {"tdc_dxml", {14}},
        {"testname", {15}},
        {"ostype", {}},
        {"bit", {}},
    };
    for (const auto& [option, places] : options) {
        for (const int length : {1, 255, 256, 300}) {
            Trial run;
            const std::string value(static_cast<std::size_t>(length), 'v');
            EXPECT_TRUE(run({"-" + option, value}));
            std::map<int, std::string> expected = {{0, "orvex"}, {5, "0"}, {13, "any"}};
            for (const int place : places) {
                expected[place] = value;
            }
            const bool refused = length > 255 && !places.empty();
            if (refused) {
                expected.erase(expected.lower_bound(*places.begin()), expected.end());
            }
            const CBuffer copy = run.parser.cBuffer();
            EXPECT_EQ(copy.result, refused ? 0 : 1) << option << length;
            EXPECT_EQ(copy.bytes, slots(expected)) << option << length;
            for (const int place : places) {
                EXPECT_EQ(run.parser.record().entries()[static_cast<std::size_t>(place)].second, value);
            }
        }
    }
}

TEST(CCopy, longRunName) {
    Trial run;
    EXPECT_TRUE(run({"-tdc_guid", "1", "-tdc_runname", std::string(300, 'r'), "-testname", "t"}));
    const CBuffer copy = run.parser.cBuffer();
    EXPECT_EQ(copy.result, 0);
    EXPECT_EQ(copy.bytes, slots({{0, "orvex"}, {1, "1"}}));
    EXPECT_EQ(run.parser.record().runName.size(), 300u);
}

}  // namespace
