// Environment references in a string.

#ifndef ORVEX_EXPAND_ENVIRONMENT_REFERENCES_H
#define ORVEX_EXPAND_ENVIRONMENT_REFERENCES_H

#include <string>

namespace orvex {

// Replaces each "$(NAME)" and "%NAME%" in the text with the value of that variable, or with nothing when
// it is not defined. Values are not looked at again. "$$" becomes "$", a lone "%" becomes "%%", and
// "$()" and "%%" stay. Strings of one and two bytes follow rules of their own: only a lone "%" in them
// is doubled.
//
// Result: the number of references replaced; 0 for a string that it leaves alone; 1 for a short one
// whose "%" it doubled; -1, with the text unchanged, when memory runs out.
int expandEnvironmentReferences(std::string& text);

}  // namespace orvex

#endif
