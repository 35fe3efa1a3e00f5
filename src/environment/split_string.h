// Splits a string at a delimiter.

#ifndef ORVEX_SPLIT_STRING_H
#define ORVEX_SPLIT_STRING_H

#include <string>
#include <vector>

namespace orvex {

// Appends the parts of the text between the delimiters to parts, which is never cleared. Leading and doubled
// delimiters give empty parts; a trailing one gives no empty last part. Returns false, appending nothing, if
// the text is null or empty or the delimiter is NUL.
bool splitString(const char* text, char delimiter, std::vector<std::string>& parts);

}  // namespace orvex

#endif
