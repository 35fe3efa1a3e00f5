// Scenarios as texts, one line for each part, so that a fuzzer's bytes reach the parser as they are.

#ifndef ORVEX_TESTS_FUZZ_SCENARIO_TEXT_H
#define ORVEX_TESTS_FUZZ_SCENARIO_TEXT_H

#include "differential/scenario.h"

#include <string_view>

namespace fuzz {

// Whether the text begins with a line of one of the three kinds.
bool isScenarioText(std::string_view text);

// The scenario that a text stands for. The first byte of a line gives its kind:
//
//   =NAME=VALUE   a variable of the environment
//   !NAME         a variable that the platform refuses to set
//   >f            a call, where f is one of n (narrow), w (wide), p (packed), N and W (the same through the
//                 C interface), v (from a variable). A "*" behind it passes a null pointer for the
//                 arguments, and a number passes that count: >n*-1
//   anything else an argument of the last call. A blank in front is not part of it.
//
// A line ends at its first zero byte. In a wide argument "\1F600;" is a code point in hexadecimal digits;
// the wide argument "\null" is a null pointer. Every text is a valid scenario; calls behind the sixth are
// left out.
differential::Scenario scenarioFromText(std::string_view text);

}  // namespace fuzz

#endif
