// Holds the library to the reference model.

#ifndef ORVEX_TESTS_DIFFERENTIAL_COMPARISON_H
#define ORVEX_TESTS_DIFFERENTIAL_COMPARISON_H

#include "differential/scenario.h"

#include <optional>
#include <string>

namespace differential {

// Plays the scenario on a new parser of the library and on one of the model and compares, before the
// first call and after every call, all that can be observed: the result, every accessor of the class and
// of the C interface, the record, the usage text, the C buffer, and the whole environment.
// Returns a description of the first difference; nothing when there is none.
//
// The parser of the library is the process-wide one, made anew each time, so that both interfaces show
// the same object. The process environment is put back at the end. Not for several threads at once.
std::optional<std::string> findDifference(const Scenario& scenario);

// The report of a failing scenario: its smallest form and what differs in it.
std::string reportDifference(const Scenario& scenario);

}  // namespace differential

#endif
