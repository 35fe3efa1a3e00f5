// The options that a parse reads, what each of them sets, and which one a misspelt name means.

#ifndef ORVEX_SHOW_ARGUMENTS_OPTIONS_H
#define ORVEX_SHOW_ARGUMENTS_OPTIONS_H

#include "OrvexTestCommandLineParser.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool {

enum class ToolOptionKind {
    Flag,        // given without a value
    Value,       // the last value wins
    Number,      // as Value, but a value that does not begin with a digit ends the parse
    MultiValue,  // the values accumulate
    InlineOnly,  // as Value, but only --name=value gives it one
    Unread       // only the usage text names it
};

struct ToolOption {
    std::string_view name;
    ToolOptionKind kind;
    std::vector<std::string_view> sets = {};  // accessors, fields of the test-run record and variables
    std::string_view instead = {};            // the option that works in place of an unread one
};

// The numbers are in the order in which a parse checks them.
const std::vector<ToolOption>& toolOptions();

// The variables that a parse sets, in order.
const std::vector<std::string_view>& variableNames();

// Null when there is no such option.
const ToolOption* findOption(std::string_view name);

// A registry in which the options are registered as the parser registers them.
OptionRegistry makeGrammar();

// Whether a parse with this value of the option sets anything.
bool isUsableValue(const ToolOption& option, std::string_view value);

// The option that an unknown name probably means: the same name except for case, "-", "_" and "tdc_"; or
// the only option that begins with the name; or the one with the fewest typing errors. Null if there is
// none, or if two are equally near.
const ToolOption* suggestOption(std::string_view name);

// The number of insertions, deletions, substitutions and transpositions of neighbours that it takes to turn
// one string into the other; some number above the limit if it takes more than that.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit);

}  // namespace tool

#endif
