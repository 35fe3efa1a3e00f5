// The variables that describe the test session to later code and to child processes.

#ifndef ORVEX_SESSION_VARIABLES_H
#define ORVEX_SESSION_VARIABLES_H

#include "OrvexTestCommandLineParser.h"

namespace orvex {

// Sets the variable of each reporting option, and that of -tl, if it has a value. All others stay as they
// are, and a failure to set one is ignored.
void exportSessionVariables(const OptionRegistry& options);

}  // namespace orvex

#endif
