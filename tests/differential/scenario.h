// A whole use of the parser as data: the environment before, and the calls made on one parser.

#ifndef ORVEX_TESTS_DIFFERENTIAL_SCENARIO_H
#define ORVEX_TESTS_DIFFERENTIAL_SCENARIO_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace differential {

// The first five are the entry forms, of the class and of the C interface; the last one is
// ParseArgsFromEnvironmentVariable.
enum class Form { Narrow, Wide, Packed, CNarrow, CWide, Variable };

using WideArgument = std::optional<std::u32string>;

// One call that parses something.
struct Call {
    Form form = Form::Narrow;
    // Of the narrow forms; of Packed, where each text is followed by a zero byte; of Variable, where they
    // are the name of the variable and the program name. Texts end at their first zero byte.
    std::vector<std::string> arguments;
    // Of the wide forms. No value stands for a null pointer.
    std::vector<WideArgument> wideArguments;
    // When it is not the number of arguments: fewer (also below 0), and with Packed also more.
    std::optional<int> count;
    // Pass a null pointer for the argument vector, or for the name of the variable.
    bool nullArguments = false;
};

struct Scenario {
    // The whole process environment before the first call. Names hold no "=" and are not empty.
    std::map<std::string, std::string> environment;
    // The variables that the platform refuses to set.
    std::set<std::string> refused;
    std::vector<Call> calls;
};

Call narrow(std::vector<std::string> arguments);
Call wide(std::vector<WideArgument> arguments);
Call packed(std::vector<std::string> arguments);
Call cNarrow(std::vector<std::string> arguments);
Call cWide(std::vector<WideArgument> arguments);
Call variable(std::string name, std::string programName);
// The call with another count, or with a null pointer for its arguments.
Call withCount(Call call, int count);
Call withNull(Call call, int count);

// The scenario as C++ text made of the functions above, which can be pasted into a test.
std::string describe(const Scenario& scenario);
std::string describe(const Call& call);
// A text as a C++ literal.
std::string quoted(const std::string& text);

// The scenario that belongs to a seed. The same seed gives the same scenario on every platform.
Scenario scenarioFromSeed(std::uint64_t seed);

// The scenario that a fuzzer's bytes stand for. Every input is a valid scenario; the empty input is one
// call without arguments.
Scenario scenarioFromBytes(const std::uint8_t* data, std::size_t size);

// The smallest scenario that still fails, found by taking parts away from one that does.
Scenario shrink(Scenario scenario, const std::function<bool(const Scenario&)>& fails);

}  // namespace differential

#endif
