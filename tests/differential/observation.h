// What a parser shows between two calls.

#ifndef ORVEX_TESTS_DIFFERENTIAL_OBSERVATION_H
#define ORVEX_TESTS_DIFFERENTIAL_OBSERVATION_H

#include "OrvexTestCommandLineParser.h"
#include "model/model.h"

#include <optional>
#include <string>

namespace differential {

// Compares what the two parsers show, and the process environment with that of the model. The library's
// parser must be the process-wide one, since the C interface is asked as well.
std::optional<std::string> findVisibleDifference(const OrvexTestCommandLineParser& library,
                                                 const model::Parser& model,
                                                 const model::Environment& environment);

}  // namespace differential

#endif
