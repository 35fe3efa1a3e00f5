// Exhaustive tests through the public interface.

#ifndef ORVEX_TESTS_DIFFERENTIAL_EXHAUSTIVE_H
#define ORVEX_TESTS_DIFFERENTIAL_EXHAUSTIVE_H

#include "differential/comparison.h"
#include "differential/enumeration.h"

namespace differential {

inline void holdScenario(Cases& cases, const Scenario& scenario, std::size_t number = 1) {
    cases.hold(
        !findDifference(scenario), [&scenario] { return reportDifference(scenario); }, number);
}

}  // namespace differential

#endif
