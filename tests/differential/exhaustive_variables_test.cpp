// Every short text in the two argument variables.

#include "differential/exhaustive.h"

namespace {

using namespace differential;

// One byte of each class; the newline and the last byte value stand for all bytes that are taken for
// something else elsewhere.
constexpr std::string_view classesWithNewline = " \t\"'\\a\n";
constexpr std::string_view classesWithHighByte = " \t\"'\\-\xFF";

void holdEveryText(const char* variable, std::string_view classes) {
    Cases cases;
    Scenario scenario;
    scenario.calls = {narrow({"app", "-o", "b"})};
    forEachSequence<std::string>(classes, quickOrDeep(5, 7), cases, [&](const std::string& text) {
        scenario.environment[variable] = text;
        holdScenario(cases, scenario);
    });
}

TEST(ExhaustiveVariables, EveryTextBeforeTheCommandLine) {
    holdEveryText("ORVEX_TEST_ARGS", classesWithNewline);
}

TEST(ExhaustiveVariables, EveryTextAfterTheCommandLine) {
    holdEveryText("_ORVEX_TEST_ARGS_", classesWithHighByte);
}

TEST(ExhaustiveVariables, EveryTextInAVariableOfTheCallersChoice) {
    Cases cases;
    Scenario scenario;
    scenario.calls = {variable("MY_ARGS", "app")};
    scenario.calls.push_back(narrow({"other", "-o", "b"}));
    forEachSequence<std::string>(classesWithNewline, quickOrDeep(4, 6), cases, [&](const std::string& text) {
        scenario.environment["MY_ARGS"] = text;
        holdScenario(cases, scenario);
    });
}

}  // namespace
