// Random scenarios. DIFFERENTIAL_CASES and DIFFERENTIAL_SEED choose how many, and the seed of the first;
// every further one has the next seed.

#include "differential/comparison.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

std::uint64_t numberFromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

TEST(RandomScenarios, BehaveAsTheModel) {
    const std::uint64_t cases = numberFromEnvironment("DIFFERENTIAL_CASES", 20000);
    ASSERT_GT(cases, 0U) << "DIFFERENTIAL_CASES is not a number of cases";
    const std::uint64_t seed = numberFromEnvironment("DIFFERENTIAL_SEED", 1);
    for (std::uint64_t i = 0; i < cases; ++i) {
        const differential::Scenario scenario = differential::scenarioFromSeed(seed + i);
        if (differential::findDifference(scenario)) {
            FAIL() << "seed " << seed + i << " (DIFFERENTIAL_SEED=" << seed + i << " DIFFERENTIAL_CASES=1)\n"
                   << differential::reportDifference(scenario);
        }
    }
}

}  // namespace
