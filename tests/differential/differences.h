// What differs between the library and the model, as text.

#ifndef ORVEX_TESTS_DIFFERENTIAL_DIFFERENCES_H
#define ORVEX_TESTS_DIFFERENTIAL_DIFFERENCES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace differential {

// Compares one thing after another and keeps a line for each that differs.
class Differences {
public:
    template <typename Library, typename Model>
    void operator()(const char* what, const Library& library, const Model& model) {
        if (!(library == model)) {
            const std::string first = ::testing::PrintToString(library);
            const std::string second = ::testing::PrintToString(model);
            const auto place = std::mismatch(first.begin(), first.end(), second.begin(), second.end()).first;
            const auto equal = static_cast<std::size_t>(place - first.begin());
            const std::size_t start = equal > 40 ? equal - 20 : 0;
            const char* const cut = start > 0 ? "..." : "";
            text += std::string("  ") + what + ": the library has " + cut + first.substr(start, 100) +
                    ", the model " + cut + second.substr(start, 100) + "\n";
        }
    }

    std::string text;
};

// The result of a call, or the message of its exception.
template <typename Function>
std::string outcomeOf(const Function& function) {
    try {
        return std::to_string(static_cast<int>(function()));
    } catch (const std::runtime_error& error) {
        return std::string("std::runtime_error: ") + error.what();
    }
}

}  // namespace differential

#endif
