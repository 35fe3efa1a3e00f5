// Every small input, one after another.

#ifndef ORVEX_TESTS_DIFFERENTIAL_EXHAUSTIVE_H
#define ORVEX_TESTS_DIFFERENTIAL_EXHAUSTIVE_H

#include "differential/comparison.h"
#include "differential/scenario.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

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

// Counts cases up to the first in which anything differs, which it reports.
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

// Goes on to the next sequence of the same length, the last place first. False after the last one.
template <typename Sequence>
bool advance(std::vector<std::size_t>& digits, Sequence& sequence, const Sequence& items) {
    for (std::size_t place = digits.size(); place > 0; --place) {
        std::size_t& digit = digits[place - 1];
        digit = (digit + 1) % items.size();
        sequence[place - 1] = items[digit];
        if (digit != 0) {
            return true;
        }
    }
    return false;
}

// Visits every sequence of up to maximum of the items, the empty one first, as long as nothing differs.
template <typename Sequence, typename Visit>
void forEvery(const Sequence& items, std::size_t maximum, const Cases& cases, const Visit& visit) {
    for (std::size_t length = 0; length <= maximum; ++length) {
        std::vector<std::size_t> digits(length);
        Sequence sequence(length, items[0]);
        do {
            visit(sequence);
        } while (cases && advance(digits, sequence, items));
    }
}

}  // namespace differential

#endif
