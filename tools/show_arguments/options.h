// The options that a parse reads, and what each of them sets.

#ifndef ORVEX_SHOW_ARGUMENTS_OPTIONS_H
#define ORVEX_SHOW_ARGUMENTS_OPTIONS_H

#include "OrvexTestCommandLineParser.h"

#include <string_view>
#include <vector>

namespace tool {

enum class OptionKind {
    Flag,         // given without a value
    Value,        // the last value wins
    Number,       // as Value, but a value that does not begin with a digit ends the parse
    MultiValue,   // the values accumulate
    InlineValue,  // as Value, but only --name=value gives it one
    Unread        // only the usage text names it
};

struct ToolOption {
    std::string_view name;
    OptionKind kind;
    std::string_view accessor = {};
    std::vector<std::string_view> fields = {};  // of the test-run record
    std::vector<std::string_view> variables = {};
    std::string_view instead = {};  // the option that works in place of an unread one
};

// The numbers are in the order in which a parse checks them.
const std::vector<ToolOption>& toolOptions();

// Null when there is no such option.
const ToolOption* findOption(std::string_view name);

// A registry in which the options are registered as the parser registers them.
OptionRegistry makeGrammar();

// Whether a parse with this value of the option sets anything.
bool isUsableValue(const ToolOption& option, std::string_view value);

}  // namespace tool

#endif
