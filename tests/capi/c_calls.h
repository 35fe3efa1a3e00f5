// Calls of the C interface with what C++ tests have at hand, and buffers that show every write.

#ifndef ORVEX_TESTS_C_CALLS_H
#define ORVEX_TESTS_C_CALLS_H

#include "OrvexTestCommandLineParserC.h"
#include "support/arguments.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

inline int parseNarrow(std::vector<std::string> list) {
    Arguments arguments(std::move(list));
    return OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv());
}

inline int parseWide(std::vector<std::wstring> list) {
    std::vector<wchar_t*> pointers;
    pointers.reserve(list.size());
    for (std::wstring& text : list) {
        pointers.push_back(text.data());
    }
    return OrvexTestCommandLineParser_ParseW(static_cast<int>(pointers.size()), pointers.data());
}

constexpr std::size_t guardSize = 64;
constexpr char untouched = 'X';

// A buffer whose every byte is known, so that each write beyond what was asked for shows.
struct GuardedBuffer {
    explicit GuardedBuffer(std::size_t size) : size(size), bytes(size + 2 * guardSize, untouched) {}

    char* data() {
        return bytes.data() + guardSize;
    }
    std::string text(std::size_t offset, std::size_t length) const {
        return bytes.substr(guardSize + offset, length);
    }
    void expectGuardsUntouched() const {
        EXPECT_THAT(bytes.substr(0, guardSize), ::testing::Each(untouched));
        EXPECT_THAT(bytes.substr(guardSize + size), ::testing::Each(untouched));
    }

    std::size_t size;
    std::string bytes;
};

// Compares all 4096 bytes; a slot that is not named is all zeros.
inline void expectInformation(int expectedResult, const std::map<std::size_t, std::string>& expectedSlots) {
    GuardedBuffer buffer(4096);
    ASSERT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(buffer.data()), expectedResult);
    std::map<std::size_t, std::string> slots;
    for (std::size_t slot = 0; slot < 16; ++slot) {
        const std::string bytes = buffer.text(256 * slot, 256);
        const std::size_t last = bytes.find_last_not_of('\0');
        if (last != std::string::npos) {
            slots[slot] = bytes.substr(0, last + 1);
        }
    }
    ASSERT_THAT(slots, ::testing::ContainerEq(expectedSlots));
    buffer.expectGuardsUntouched();
}

inline std::string fill(std::size_t length) {
    return std::string(length, 'v');
}

#endif
