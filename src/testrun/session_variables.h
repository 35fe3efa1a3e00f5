// Sets the variables that describe the test session to later code and to child processes.

#ifndef ORVEX_SESSION_VARIABLES_H
#define ORVEX_SESSION_VARIABLES_H

#include "OrvexTestCommandLineParser.h"

namespace orvex {

// Sets the session variable of each option that has a value, and TRANSPORT_LAYER. Ignores failures.
void exportSessionVariables(const OptionRegistry& options);

}  // namespace orvex

#endif
