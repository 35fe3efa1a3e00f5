// Fuzz target: a whole scenario, which is an environment and some calls, against the model.
//
// An input that begins as a scenario's text is read as one, so that its bytes reach the parser as they
// are. Any other input is a list of decisions for the generator of the random scenarios, which know the
// options and nearly always get far.

#include "differential/comparison.h"
#include "differential/scenario.h"
#include "fuzz/finding.h"
#include "fuzz/scenario_text.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const differential::Scenario scenario = fuzz::isScenarioText(text)
                                                ? fuzz::scenarioFromText(text)
                                                : differential::scenarioFromBytes(data, size);
    if (differential::findDifference(scenario)) {
        fuzz::reportFinding(differential::reportDifference(scenario));
    }
    return 0;
}
