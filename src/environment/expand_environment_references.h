// Expands environment references in a string.

#ifndef ORVEX_EXPAND_ENVIRONMENT_REFERENCES_H
#define ORVEX_EXPAND_ENVIRONMENT_REFERENCES_H

#include <string>

namespace orvex {

// Replaces each "$(NAME)" and "%NAME%" in the text with the value of that variable, or with nothing if it is
// undefined. Values are not expanded again. "$$" becomes "$", a lone "%" becomes "%%", and "$()" and "%%" are
// unchanged. In strings of one or two bytes, only a lone "%" is doubled.
//
// Result: the number of references replaced; 1 for a string of one or two bytes whose "%" was doubled; -1 if
// memory runs out, with the text unchanged.
int expandEnvironmentReferences(std::string& text);

}  // namespace orvex

#endif
