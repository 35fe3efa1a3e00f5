// What a parse made of the arguments that were scanned.

#ifndef ORVEX_SHOW_ARGUMENTS_OUTCOMES_H
#define ORVEX_SHOW_ARGUMENTS_OUTCOMES_H

#include "observation.h"
#include "trace.h"

#include <string>
#include <vector>

namespace tool {

// Fills in the outcomes and notes of the arguments, and the values and sets of the options. Arguments that
// a parse has scanned but not looked at, because a source is malformed, stay as they are.
void decideOutcomes(Trace& trace, const Observation& seen);

// The entries of a -tl value, each split at its colons: class, driver, and what nothing reads. A parse
// skips empty entries, and so does this.
std::vector<std::vector<std::string>> splitTransportLayers(const std::string& value);

// Of the DravikGigE drivers in all -tl values, the last in byte order, which is the one that is set.
std::string findDriver(const std::string& transportLayers);

}  // namespace tool

#endif
