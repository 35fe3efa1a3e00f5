// The variables that describe the test session to later code and to child processes.

#ifndef ORVEX_SESSION_VARIABLES_H
#define ORVEX_SESSION_VARIABLES_H

#include "OrvexTestCommandLineParser.h"

namespace orvex {

// Sets the variable of each reporting option that has a value. All others stay as they are, and one
// that cannot be set is ignored.
void exportSessionVariables(const OptionRegistry& options);

}  // namespace orvex

#endif
