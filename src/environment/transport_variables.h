// Sets the variables that the SDK reads when a test opens cameras: device filter, stream parameters, camera
// emulation and test properties.

#ifndef ORVEX_TRANSPORT_VARIABLES_H
#define ORVEX_TRANSPORT_VARIABLES_H

#include "OrvexTestCommandLineParser.h"

#include <string>

namespace orvex {

// Validates and sets in a fixed order. On failure (a number that does not begin with a digit, a variable that
// cannot be set) it returns false: earlier variables stay set and later ones are untouched. The socket buffer
// is checked before the first variable is set.
// tlList: all -tl values, joined by ",".
bool exportTransportVariables(const OptionRegistry& options, const std::string& tlList);

}  // namespace orvex

#endif
