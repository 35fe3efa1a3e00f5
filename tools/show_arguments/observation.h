// What a test program sees after a parse.

#ifndef ORVEX_SHOW_ARGUMENTS_OBSERVATION_H
#define ORVEX_SHOW_ARGUMENTS_OBSERVATION_H

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tool {

struct Accessor {
    std::string_view name;
    std::variant<bool, std::string> value;
};

struct Field {
    std::string_view name;
    std::string value;
};

enum class VariableState {
    Absent,    // neither set nor inherited
    Set,       // set by the parse to another value than before
    SetAgain,  // set by the parse to the value that it had
    Kept       // inherited and left alone
};

inline std::string_view nameOf(VariableState state) {
    constexpr std::string_view names[] = {"absent", "set", "set again", "kept"};
    return names[static_cast<std::size_t>(state)];
}

struct Variable {
    std::string_view name;
    VariableState state;
    std::optional<std::string> before;
    std::optional<std::string> after;
};

inline bool isSet(const Variable& variable) {
    return variable.state == VariableState::Set || variable.state == VariableState::SetAgain;
}

struct Observation {
    bool succeeded = false;
    std::vector<Accessor> accessors;
    std::vector<std::string> testPaths;
    std::vector<Field> record;        // in the order of TestRunInformation
    std::vector<Variable> variables;  // every one that a parse can set, in the order in which it does

    const Variable& variable(std::string_view name) const;
};

// Parses the arguments. Afterwards, the environment is as this parse left it.
Observation observeParse(int argc, char** argv);

}  // namespace tool

#endif
