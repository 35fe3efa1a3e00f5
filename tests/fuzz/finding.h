// What a fuzz target does with a difference that it has found.

#ifndef ORVEX_TESTS_FUZZ_FINDING_H
#define ORVEX_TESTS_FUZZ_FINDING_H

#include <cstdlib>
#include <iostream>
#include <string>

namespace fuzz {

// Prints the report and ends the process, which is how a fuzzer and the replay learn of a finding.
[[noreturn]] inline void reportFinding(const std::string& report) {
    std::cerr << "the library and the model differ: " << report << std::endl;
    std::abort();
}

}  // namespace fuzz

#endif
