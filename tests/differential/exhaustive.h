// Every small input, one after another.

#ifndef ORVEX_TESTS_DIFFERENTIAL_EXHAUSTIVE_H
#define ORVEX_TESTS_DIFFERENTIAL_EXHAUSTIVE_H

#include "differential/comparison.h"
#include "differential/scenario.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace differential {

// Read at the start, before a scenario replaces the environment.
inline const bool isDeep = [] {
    const char* depth = std::getenv("DIFFERENTIAL_DEPTH");
    return depth != nullptr && std::string_view(depth) == "deep";
}();

// How far a test goes: the small number in the everyday suite, the large one when DIFFERENTIAL_DEPTH is
// "deep".
inline std::size_t quickOrDeep(std::size_t quick, std::size_t deep) {
    return isDeep ? deep : quick;
}

// Counts the cases, and reports the first one in which anything differs.
class Cases {
public:
    Cases() = default;
    ~Cases() {
        EXPECT_GT(count, 0U);
        std::cout << "cases: " << count << '\n';
    }
    Cases(const Cases&) = delete;
    Cases& operator=(const Cases&) = delete;

    void operator()(const Scenario& scenario) {
        ++count;
        if (*this && findDifference(scenario)) {
            fail(reportDifference(scenario));
        }
    }

    void operator()(const Difference& difference) {
        ++count;
        if (*this && difference) {
            fail(*difference);
        }
    }

    // Whether to go on.
    explicit operator bool() const {
        return !hasFailed;
    }

private:
    void fail(const std::string& report) {
        hasFailed = true;
        ADD_FAILURE() << report;
    }

    std::uint64_t count = 0;
    bool hasFailed = false;
};

// Visits the sequence and each longer one that starts with it, up to this many items, as long as nothing
// differs.
template <typename Sequence, typename Visit>
void forEvery(const Sequence& items, std::size_t maximum, const Cases& cases, const Visit& visit,
              const Sequence& start = {}) {
    visit(start);
    for (std::size_t i = 0; i < items.size() && start.size() < maximum && cases; ++i) {
        Sequence longer = start;
        longer.push_back(items[i]);
        forEvery(items, maximum, cases, visit, longer);
    }
}

}  // namespace differential

#endif
