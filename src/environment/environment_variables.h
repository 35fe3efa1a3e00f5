// Reading and setting environment variables.

#ifndef ORVEX_ENVIRONMENT_VARIABLES_H
#define ORVEX_ENVIRONMENT_VARIABLES_H

#include <string>

namespace orvex {

// Reads the variable into value. False, with value untouched, when it is not defined; a variable that
// is defined but empty counts as defined. name: not null.
bool getEnvironmentVariable(const char* name, std::string& value);

// Sets the variable, replacing what it held; value ends at its first zero byte. False when the
// environment refuses. name: not null.
bool setEnvironmentVariable(const char* name, const std::string& value);

}  // namespace orvex

#endif
