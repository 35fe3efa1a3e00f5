// Tests of the comparison's own parts.

#include "differential/scenario.h"
#include "differential/differences.h"
#include "differential/process_environment.h"
#include "support/parser_test.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

namespace {

using namespace differential;

TEST(ScenarioText, ReadsBackAsTheSameScenario) {
    for (std::uint64_t seed = 1; seed <= 1000; ++seed) {
        const std::string text = describe(scenarioFromSeed(seed));
        ASSERT_EQ(describe(scenarioOf(text)), text);
    }
}

TEST(ScenarioText, CanBeAnyBytes) {
    const std::pair<const char*, const char*> examples[] = {
        {"", ""},
        {"app", ">narrow\n app\n"},
        {">\n>?", ">narrow\n>narrow\n"},
        {">n\n app\nx y\n\n =a\n  b", ">narrow\n app\n x y\n \n =a\n  b\n"},
        {">p\n>N\n>W\n>v\n NAME\n app", ">packed\n>NarrowC\n>WideC\n>variable\n NAME\n app\n"},
        {">w\n a\xFF\\1f600;\n \\null\n \\nullx", ">wide\n a\\FF;\\1F600;\n \\null\n \\5C;nullx\n"},
        {">w\n \\FFFFFFFF;\\100000000;\\;\\g", ">wide\n \\FFFFFFFF;\\5C;100000000;\\5C;;\\5C;g\n"},
        {">n\n \\A;\\0;\\100;", ">narrow\n \\A;\\0;\\5C;100;\n"},
        {">n3\n>p*\n>w*-2147483648\n>n99999999999", ">narrow3\n>packed*\n>wide*-2147483648\n>narrow\n"},
        {"=A=x=y\n=B=\\0;c\n=C\n==D\n!E\n!\n>n\n=A=z", "=A=z\n=B=\n!\n!E\n>narrow\n"},
        {">n\n>n\n>n\n>n\n>n\n>p\n x\n>n\n y", ">narrow\n>narrow\n>narrow\n>narrow\n>narrow\n>packed\n x\n"},
    };
    for (const auto& [text, scenario] : examples) {
        EXPECT_EQ(describe(scenarioOf(text)), scenario) << text;
    }
}

TEST(Shrink, LeavesOnlyWhatTheFailureNeeds) {
    const std::string text = "=A='x \"X\"'\n!B\n>wide*3\n app\n some \\FF;X\n>packed\n X\n";
    for (const std::string part : {"X", "=A=", ">p", "*3"}) {
        EXPECT_EQ(shrink(text, [&](const std::string& all) { return all.find(part) != std::string::npos; }),
                  part);
    }
}

TEST(Differences, ListEveryDifferenceWithItsContext) {
    Differences compare;
    compare("same", std::string("a"), "a");
    compare("string", std::string(50, 'a') + "\n", std::string(50, 'a'));
    compare("number", 1, 2);
    compare("list", Strings{"a", "b"}, Strings{"a"});
    EXPECT_EQ(compare.text,
              "  string: the library has ...aaaaaaaaaaaaaaaaaaaa\\n\", the model ...aaaaaaaaaaaaaaaaaaaa\"\n"
              "  number: the library has 1, the model 2\n"
              "  list: the library has { \"a\", \"b\" }, the model { \"a\" }\n");
}

TEST(ProcessEnvironment, ReplacesTheEnvironmentAndRestoresIt) {
    const Environment before = readEnvironment();
    {
        const ProcessEnvironment environment({{"A", "1"}}, {"ORVEX_CAMEMU"});
        EXPECT_EQ(setenv("A", "2", 1), 0);
        EXPECT_EQ(setenv("AB", "", 1), 0);
        // The library's calls to setenv are redirected, too.
        OrvexTestCommandLineParser parser;
        EXPECT_FALSE(parse(parser, words("app -camemu=2")));
        EXPECT_EQ(readEnvironment(), changed(defaultVariables, {{"A", "2"}, {"AB", ""}}));
    }
    EXPECT_EQ(readEnvironment(), before);
}

}  // namespace
