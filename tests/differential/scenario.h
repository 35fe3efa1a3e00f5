// The calls made on one parser and the environment before them, as data.

#ifndef ORVEX_TESTS_DIFFERENTIAL_SCENARIO_H
#define ORVEX_TESTS_DIFFERENTIAL_SCENARIO_H

#include "support/arguments.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace differential {

struct Scenario {
    std::vector<Call> calls;
    // The whole process environment before the first call. Names hold no "=" and are not empty.
    std::map<std::string, std::string> environment = {};
    // The variables that the platform refuses to set.
    std::set<std::string> refused = {};
};

// A scenario as text: a difference is printed like this, and the fuzz corpus holds such files. The first byte
// of a line gives its kind:
//
//   =NAME=VALUE    a variable of the environment
//   !NAME          a variable that the platform refuses to set
//   >FORM          a call: narrow, wide, packed, NarrowC, WideC or variable; only the first letter matters.
//                  "*" after it passes a null pointer for the arguments, a number passes that argc:
//                  >narrow*-1
//   anything else  an argument of the last call; one leading space is dropped
//
// "\1F600;" is the byte or the code point of that number, and the wide argument "\null" is a null pointer.
// Any text is a scenario; calls after the sixth are ignored.
std::string describe(const Scenario& scenario);
Scenario scenarioOf(std::string_view text);

// The bytes as they appear in such a text.
std::string escaped(const std::string& text);

// The smallest text that still fails, found by removing parts of one that does.
std::string shrink(const std::string& text, const std::function<bool(const std::string&)>& fails);

// A random scenario. The same seed gives the same one on every platform.
Scenario scenarioFromSeed(std::uint64_t seed);

}  // namespace differential

#endif
