// The harness itself: what it prints, what it generates, and how it makes a scenario smaller.

#include "differential/scenario.h"

#include "differential/comparison.h"
#include "differential/enumeration.h"
#include "differential/process_environment.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using namespace differential;

bool holds(const Scenario& scenario, const std::string& text) {
    return describe(scenario).find(text) != std::string::npos;
}

TEST(Scenario, IsPrintedAsTheCodeThatMakesIt) {
    Scenario scenario;
    scenario.environment = {{"ORVEX_TEST_ARGS",
                             "-o \"a\\b\"\t\x01"
                             "7"}};
    scenario.refused = {"VCS_BRANCH"};
    scenario.calls = {narrow({"app", ""}), wide({U"\u00E9", std::nullopt}), withCount(packed({"a"}), 2),
                      withNull(cNarrow({}), -1), variable("NAME", "app")};
    EXPECT_EQ(describe(scenario),
              "Scenario scenario;\n"
              "scenario.environment = {{\"ORVEX_TEST_ARGS\", \"-o \\\"a\\\\b\\\"\\t\\0017\"}};\n"
              "scenario.refused = {\"VCS_BRANCH\"};\n"
              "scenario.calls = {\n"
              "    narrow({\"app\", \"\"}),\n"
              "    wide({U\"\\x000000e9\" U\"\", std::nullopt}),\n"
              "    withCount(packed({\"a\"}), 2),\n"
              "    withNull(cNarrow({}), -1),\n"
              "    variable(\"NAME\", \"app\"),\n"
              "};\n");
}

TEST(Scenario, IsTheSameForTheSameSeed) {
    EXPECT_EQ(describe(scenarioFromSeed(7)), describe(scenarioFromSeed(7)));
    EXPECT_NE(describe(scenarioFromSeed(7)), describe(scenarioFromSeed(8)));
}

TEST(Scenario, OfNoBytesIsOneCallWithTheProgramNameOnly) {
    EXPECT_EQ(describe(scenarioFromBytes(nullptr, 0)),
              "Scenario scenario;\nscenario.calls = {\n    narrow({\"app\"}),\n};\n");
}

TEST(Scenario, RandomOnesReachEveryForm) {
    for (const char* text : {"narrow({", "wide({", "packed({", "cNarrow({", "cWide({", "variable(\"MY_ARGS\"",
                             "withCount(", "withNull(", "std::nullopt", "scenario.refused", "x00110000"}) {
        bool isFound = false;
        for (std::uint64_t seed = 0; seed < 4000 && !isFound; ++seed) {
            isFound = holds(scenarioFromSeed(seed), text);
        }
        EXPECT_TRUE(isFound) << text;
    }
}

TEST(Shrink, LeavesOnlyWhatTheFailureNeeds) {
    Scenario scenario = scenarioFromSeed(3);
    scenario.calls.push_back(cWide({U"app", U"some text with an X in it", U"more"}));
    const Scenario smallest =
        shrink(scenario, [](const Scenario& candidate) { return holds(candidate, "X"); });
    EXPECT_EQ(describe(smallest), "Scenario scenario;\nscenario.calls = {\n    narrow({\"X\"}),\n};\n");
}

TEST(Shrink, KeepsAScenarioThatCannotBeMadeSmaller) {
    Scenario scenario;
    scenario.environment = {{"A", "a"}};
    scenario.refused = {"B"};
    scenario.calls = {withCount(packed({"a"}), 0)};
    const std::string text = describe(scenario);
    EXPECT_EQ(
        describe(shrink(scenario, [&](const Scenario& candidate) { return describe(candidate) == text; })),
        text);
}

TEST(Enumeration, VisitsEverySequenceOnceTheShortOnesFirst) {
    Cases cases;
    std::vector<std::string> visited;
    forEachSequence<std::string>(std::string("ab"), 2, cases, [&](const std::string& sequence) {
        visited.push_back(sequence);
        cases.hold(true, [] { return ""; });
    });
    EXPECT_EQ(visited, (std::vector<std::string>{"", "a", "b", "aa", "ab", "ba", "bb"}));
}

TEST(ProcessEnvironment, ReplacesTheEnvironmentAndPutsItBack) {
    const auto before = ProcessEnvironment::read();
    {
        const std::set<std::string> refused;
        const ProcessEnvironment environment({{"A", "1"}}, refused);
        EXPECT_STREQ(std::getenv("A"), "1");
        EXPECT_EQ(setenv("A", "2", 0), 0);
        EXPECT_STREQ(std::getenv("A"), "1");
        EXPECT_EQ(setenv("A", "2", 1), 0);
        EXPECT_EQ(setenv("AB", "", 1), 0);
        EXPECT_EQ(ProcessEnvironment::read(), (std::map<std::string, std::string>{{"A", "2"}, {"AB", ""}}));
    }
    EXPECT_EQ(ProcessEnvironment::read(), before);
}

TEST(ProcessEnvironment, RefusesWhatItIsToldToRefuse) {
    if (!canRefuseSettings) {
        GTEST_SKIP() << "setenv cannot be replaced here";
    }
    const std::set<std::string> refused = {"B"};
    const ProcessEnvironment environment({}, refused);
    EXPECT_EQ(setenv("B", "1", 1), -1);
    EXPECT_EQ(setenv("", "1", 1), -1);
    EXPECT_EQ(setenv("A=B", "1", 1), -1);
    EXPECT_TRUE(ProcessEnvironment::read().empty());
}

// Without this, a scenario in which the library's own calls of setenv pass by the harness would go unseen.
TEST(FindDifference, MakesTheLibrarysSettingsFail) {
    if (!canRefuseSettings) {
        GTEST_SKIP() << "setenv cannot be replaced here";
    }
    const auto before = ProcessEnvironment::read();
    Scenario scenario;
    scenario.refused = {"ORVEX_CAMEMU"};
    scenario.calls = {narrow({"app", "-camemu", "2"})};
    EXPECT_EQ(findDifference(scenario), std::nullopt);
    EXPECT_EQ(ProcessEnvironment::read(), before);
}

}  // namespace
