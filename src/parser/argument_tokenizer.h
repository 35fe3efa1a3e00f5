// Splits the value of an argument variable into arguments.

#ifndef ORVEX_ARGUMENT_TOKENIZER_H
#define ORVEX_ARGUMENT_TOKENIZER_H

#include <string>
#include <vector>

namespace orvex {

// Replaces tokens with the arguments in the text: spaces and tabs separate, both kinds of quotes group, and a
// backslash makes the next byte literal. Throws std::runtime_error for an unterminated quote and leaves
// tokens unchanged.
void splitArgumentString(const std::string& text, std::vector<std::string>& tokens);

}  // namespace orvex

#endif
