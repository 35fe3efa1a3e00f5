// Quoting for terminals, shells and the argument variables.

#ifndef ORVEX_SHOW_ARGUMENTS_QUOTING_H
#define ORVEX_SHOW_ARGUMENTS_QUOTING_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// The string with escapes in place of what a terminal would not show: "\n", "\x1b", bytes that are not UTF-8.
std::string visible(std::string_view text);

// The same in double quotes, with "\" before each double quote and backslash.
std::string inQuotes(std::string_view text);

// Unquoted if unambiguous, otherwise quoted.
std::string plainOrQuoted(std::string_view text);

// The columns that a visible string takes in a terminal.
std::size_t columnsOf(std::string_view text);

// The string as one word for a POSIX shell.
std::string quotedForShell(std::string_view text);

// One argument in ORVEX_TEST_ARGS or _ORVEX_TEST_ARGS_.
std::string quotedForVariable(std::string_view text);

// What can be found in the value of such a variable without splitting it.
struct TextScan {
    std::optional<std::size_t> unterminatedQuote;  // its index
    std::optional<std::size_t> lineBreak;          // the index of the first one outside quotes
    std::string withoutLineBreaks;                 // with spaces in place of those outside quotes
};
TextScan scanText(const std::string& text);

}  // namespace tool

#endif
