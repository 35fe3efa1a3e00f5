// Suggests a known option for a misspelt one.

#ifndef ORVEX_SHOW_ARGUMENTS_SUGGESTION_H
#define ORVEX_SHOW_ARGUMENTS_SUGGESTION_H

#include <cstddef>
#include <string_view>

namespace tool {

// Insertions, deletions, substitutions and transpositions of neighbours that turn one string into the
// other; any number above the limit when there are more than that.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit);

// The option that an unknown name probably means: the same name except for case, "-", "_" and "tdc_"; or
// the only option that begins with the name; or the one with the fewest typing errors. Empty if there is
// none, or if two are equally near.
std::string_view suggestOption(std::string_view name);

}  // namespace tool

#endif
