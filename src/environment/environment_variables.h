// Reads and sets environment variables.

#ifndef ORVEX_ENVIRONMENT_VARIABLES_H
#define ORVEX_ENVIRONMENT_VARIABLES_H

#include <string>

namespace orvex {

// Reads the variable into value. Returns false, leaving value unchanged, if it is undefined; an empty
// variable is defined. name: not null.
bool getEnvironmentVariable(const char* name, std::string& value);

// Sets the variable, replacing its old value; the new one ends at its first NUL. Returns false if setenv
// fails. name: not null.
bool setEnvironmentVariable(const char* name, const std::string& value);

}  // namespace orvex

#endif
