// Every small input, one after another.

#ifndef ORVEX_TESTS_DIFFERENTIAL_ENUMERATION_H
#define ORVEX_TESTS_DIFFERENTIAL_ENUMERATION_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace differential {

// Read at the start, before a scenario takes the environment away.
inline const bool isDeep = [] {
    const char* depth = std::getenv("DIFFERENTIAL_DEPTH");
    return depth != nullptr && std::string_view(depth) == "deep";
}();

// The size of the inputs of a test: the small one in the everyday suite, the large one when
// DIFFERENTIAL_DEPTH is "deep".
inline std::size_t quickOrDeep(std::size_t quick, std::size_t deep) {
    return isDeep ? deep : quick;
}

// Counts cases up to the first failing one, which it reports, and prints the number at the end.
class Cases {
public:
    Cases() = default;
    ~Cases() {
        EXPECT_GT(count, 0U);
        std::cout << "cases: " << count << '\n';
    }
    Cases(const Cases&) = delete;
    Cases& operator=(const Cases&) = delete;

    // describe gives the message, and is called for the first failing case only. number: how many cases
    // the comparison stands for.
    template <typename Describe>
    void hold(bool isGood, const Describe& describe, std::size_t number = 1) {
        count += number;
        if (!isGood && !hasFailed) {
            hasFailed = true;
            ADD_FAILURE() << describe();
        }
    }

    // Whether to go on.
    explicit operator bool() const {
        return !hasFailed;
    }

private:
    std::uint64_t count = 0;
    bool hasFailed = false;
};

// Goes on to the next sequence of the same length, the last place first. False after the last one.
template <typename Sequence, typename Vocabulary>
bool advance(std::vector<std::size_t>& digits, Sequence& sequence, const Vocabulary& vocabulary) {
    for (std::size_t place = digits.size(); place > 0; --place) {
        std::size_t& digit = digits[place - 1];
        digit = (digit + 1) % vocabulary.size();
        sequence[place - 1] = vocabulary[digit];
        if (digit != 0) {
            return true;
        }
    }
    return false;
}

// Visits every sequence of up to maximum items of a vocabulary, the empty one first, as long as the cases
// are good.
template <typename Sequence, typename Vocabulary, typename Visit>
void forEachSequence(const Vocabulary& vocabulary, std::size_t maximum, const Cases& cases,
                     const Visit& visit) {
    for (std::size_t length = 0; length <= maximum; ++length) {
        std::vector<std::size_t> digits(length);
        Sequence sequence(length, vocabulary[0]);
        do {
            visit(sequence);
        } while (cases && advance(digits, sequence, vocabulary));
    }
}

}  // namespace differential

#endif
