// Texts from anywhere, made fit for a terminal.

#ifndef ORVEX_SHOW_ARGUMENTS_PRINTABLE_H
#define ORVEX_SHOW_ARGUMENTS_PRINTABLE_H

#include <cstddef>
#include <string>
#include <vector>

// The text itself; or, where that would not show what it holds (it is empty, begins or ends with a
// blank, begins with a quote or a parenthesis, or has control characters or bytes that are not UTF-8),
// the text in double quotes with backslash escapes.
std::string printable(const std::string& text);

// The number of code points in a printable text.
std::size_t columnsOf(const std::string& text);

// Cuts a printable text into lines of at most the given number of columns, after blanks and other
// separators where there are any. The lines put together are the text. columns: 0 for no limit.
std::vector<std::string> wrap(const std::string& text, std::size_t columns);

#endif
