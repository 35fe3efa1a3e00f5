// The options that the parser looks at, and what each of them sets.

#ifndef ORVEX_SHOW_ARGUMENTS_OPTIONS_H
#define ORVEX_SHOW_ARGUMENTS_OPTIONS_H

#include <string>
#include <string_view>
#include <vector>

enum class OptionKind {
    Flag,         // counts when it is given without a value
    Value,        // keeps the last value given
    Number,       // as Value, but a value that does not begin with a digit ends the parse
    MultiValue,   // keeps every value given
    InlineValue,  // as Value, but only name=value gives it one
    Unread
};

struct KnownOption {
    std::string_view name;
    OptionKind kind;
    // Accessors, fields of the record and variables. For an unread option, the one that works instead.
    std::vector<std::string> sets;
};

// The numbers are in the order in which the parser checks them. The last row, which has no name, stands
// for all options that are not known.
const std::vector<KnownOption>& knownOptions();
const KnownOption& findKnownOption(std::string_view name);

// The option that an unknown name resembles: in another case, misspelt, or with "tdc_" too many or too
// few. Empty when there is none.
std::string_view nearestOption(std::string_view name);

// The option as one would type it.
std::string typed(std::string_view name);

// The text itself; in quotes and escaped when a terminal would not show what it is.
std::string printable(std::string_view text);

#endif
