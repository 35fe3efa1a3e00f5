// Sets the variables that describe the test session to later code and to child processes.

#ifndef ORVEX_SESSION_VARIABLES_H
#define ORVEX_SESSION_VARIABLES_H

#include "OrvexTestCommandLineParser.h"

namespace orvex {

// Sets the variable of each reporting option, and that of -tl, if the option has a value. Ignores failures.
void exportSessionVariables(const OptionRegistry& options);

}  // namespace orvex

#endif
