#include "fuzz/scenario_text.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace {

struct Example {
    std::string text;
    std::string calls;
};

std::string describeCalls(const differential::Scenario& scenario) {
    std::string text;
    for (const differential::Call& call : scenario.calls) {
        text += differential::describe(call) + ";";
    }
    return text;
}

TEST(ScenarioText, HoldsCallsOfEveryForm) {
    const std::string zero(1, '\0');
    const Example examples[] = {
        {"", ""},
        {">n", "narrow({});"},
        {">", "narrow({});"},
        {">?", "narrow({});"},
        {">n\n app\n-o\nx y\n", R"(narrow({"app", "-o", "x y"});)"},
        {"app", R"(narrow({"app"});)"},
        {">n\n\n =a\n  b", R"(narrow({"", "=a", " b"});)"},
        {">n\n a" + zero + "b\n c", R"(narrow({"a", "c"});)"},
        {">p\n a\n>N\n b", R"(packed({"a"});cNarrow({"b"});)"},
        {">w\n a\xFF", R"(wide({U"a\x000000ff" U""});)"},
        {">W\n \\1F600;\n \\null\n \\nullx", R"(cWide({U"\x0001f600" U"", std::nullopt, U"\\nullx"});)"},
        {">w\n \\FFFFFFFF;\n \\100000000;\n \\;\n \\a\n a\\0;b",
         R"(wide({U"\xffffffff" U"", U"\\100000000;", U"\\;", U"\\a", U"a"});)"},
        {">v\n NAME\n app", R"(variable("NAME", "app");)"},
        {">n3\n a", R"(withCount(narrow({"a"}), 3);)"},
        {">n-1\n a", R"(withCount(narrow({"a"}), -1);)"},
        {">n99999999999\n a", R"(narrow({"a"});)"},
        {">p*", "withNull(packed({}), 0);"},
        {">w*-2147483648", "withNull(wide({}), -2147483648);"},
        {">n\n>n\n>n\n>n\n>n\n>p\n x\n>n\n y",
         R"(narrow({});narrow({});narrow({});narrow({});narrow({});packed({"x"});)"},
    };
    for (const Example& example : examples) {
        EXPECT_EQ(describeCalls(fuzz::scenarioFromText(example.text)), example.calls) << example.text;
    }
}

TEST(ScenarioText, HoldsVariablesAndRefusals) {
    const differential::Scenario scenario = fuzz::scenarioFromText("=A=x=y\n=B=\n=C\n==D\n!E\n!\n>n\n=A=z");
    const std::map<std::string, std::string> environment = {{"A", "z"}, {"B", ""}};
    const std::set<std::string> refused = {"", "E"};
    EXPECT_EQ(scenario.environment, environment);
    EXPECT_EQ(scenario.refused, refused);
    EXPECT_EQ(describeCalls(scenario), "narrow({});");
}

TEST(ScenarioText, IsKnownByItsFirstByte) {
    EXPECT_TRUE(fuzz::isScenarioText(">n"));
    EXPECT_TRUE(fuzz::isScenarioText("=A=B"));
    EXPECT_TRUE(fuzz::isScenarioText("!A"));
    EXPECT_FALSE(fuzz::isScenarioText(" >n"));
    EXPECT_FALSE(fuzz::isScenarioText(""));
}

}  // namespace
