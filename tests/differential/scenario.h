// A whole use of the parser as data: the calls made on one parser, and the environment before them.

#ifndef ORVEX_TESTS_DIFFERENTIAL_SCENARIO_H
#define ORVEX_TESTS_DIFFERENTIAL_SCENARIO_H

#include "model/model.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace differential {

using model::Strings;
using model::WideArgument;

// The first five are the entry forms, of the class and of the C interface; the last one is
// ParseArgsFromEnvironmentVariable.
enum class Form { Narrow, Wide, Packed, NarrowC, WideC, Variable };

struct Call {
    Form form = Form::Narrow;
    // Of the narrow forms; of Packed, where a zero byte follows each; of Variable, where they are the names
    // of the variable and of the program. A zero byte ends them like any other string.
    Strings arguments = {};
    // Of the wide forms.
    std::vector<WideArgument> wideArguments = {};
    // When it is not the number of arguments: fewer (also below 0), and with Packed also more.
    std::optional<int> count = {};
    // Pass a null pointer for the arguments, or for the name of the variable.
    bool isNull = false;

    bool isWide() const {
        return form == Form::Wide || form == Form::WideC;
    }
};

struct Scenario {
    std::vector<Call> calls;
    // The whole process environment before the first call. Names hold no "=" and are not empty.
    std::map<std::string, std::string> environment = {};
    // The variables that the platform refuses to set.
    std::set<std::string> refused = {};
};

// A scenario as text, which is what a difference prints and what the fuzz corpus holds. The first byte of a
// line gives its kind:
//
//   =NAME=VALUE   a variable of the environment
//   !NAME         a variable that the platform refuses to set
//   >FORM         a call: narrow, wide, packed, NarrowC, WideC or variable, of which the first letter is
//   read. A "*"
//                 after it passes a null pointer for the arguments, and a number passes that count:
//                 >narrow*-1
//   anything else an argument of the last call. A blank in front is not part of it.
//
// "\1F600;" stands for the byte or the code point of that number, and the wide argument "\null" for a null
// pointer. Any text is a scenario; calls after the sixth are ignored.
std::string describe(const Scenario& scenario);
Scenario scenarioOf(std::string_view text);

// The bytes as they stand in such a text.
std::string escaped(const std::string& text);

// The words between the separators; '' is the empty one.
Strings words(std::string_view text, char separator = ' ');

// The smallest text that still fails, found by taking parts away from one that does.
std::string shrink(const std::string& text, const std::function<bool(const std::string&)>& fails);

// A random scenario. The same seed gives the same one on every platform.
Scenario scenarioFromSeed(std::uint64_t seed);

}  // namespace differential

#endif
