// Random scenarios. DIFFERENTIAL_SEED and DIFFERENTIAL_CASES choose the seed of the first, and how many;
// every further one has the next seed.

#include "differential/exhaustive.h"

namespace {

using namespace differential;

std::uint64_t numberFromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

TEST(RandomScenarios, BehaveAsTheModel) {
    const std::uint64_t count = numberFromEnvironment("DIFFERENTIAL_CASES", quickOrDeep(20000, 200000));
    const std::uint64_t first = numberFromEnvironment("DIFFERENTIAL_SEED", 1);
    Cases cases;
    for (std::uint64_t seed = first; seed < first + count && cases; ++seed) {
        SCOPED_TRACE("DIFFERENTIAL_SEED=" + std::to_string(seed));
        cases(scenarioFromSeed(seed));
    }
}

}  // namespace
