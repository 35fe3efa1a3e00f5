// A fuzz target that compares the library with the model for any bytes. REPLAY names the comparison.

#include "differential/comparison.h"

#include <cstdlib>
#include <iostream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const auto difference = differential::REPLAY(std::string(data, data + size))) {
        std::cerr << "the library and the model differ: " << *difference << std::endl;
        std::abort();
    }
    return 0;
}
