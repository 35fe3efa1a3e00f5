// The name that someone probably meant.

#ifndef ORVEX_SHOW_ARGUMENTS_SUGGESTION_H
#define ORVEX_SHOW_ARGUMENTS_SUGGESTION_H

#include <cstddef>
#include <string_view>

namespace tool {

// Insertions, deletions, substitutions and transpositions of neighbours that turn one string into the
// other; any number above the limit when there are more than that.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit);

// The option that an unknown name stands for: the same without regard to case, "-", "_" and "tdc_"; or
// the only one that begins so; or the one with the fewest typing errors. Empty when there is none, or
// when two are equally near.
std::string_view suggestOption(std::string_view name);

}  // namespace tool

#endif
