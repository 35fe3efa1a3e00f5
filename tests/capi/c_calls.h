// Calls to the C interface from C++, and buffers that reveal every write.

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

inline int parseNarrow(Strings list) {
    Arguments arguments(std::move(list));
    return OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv());
}

inline int parseWide(std::vector<std::wstring> list) {
    ArgumentVector<wchar_t> arguments(std::move(list));
    return OrvexTestCommandLineParser_ParseW(arguments.argc(), arguments.argv());
}

constexpr std::size_t guardSize = 64;
constexpr char untouched = 'X';

// A buffer with guards on both sides, to detect out-of-bounds writes.
struct GuardedBuffer {
    explicit GuardedBuffer(std::size_t size) : size(size), bytes(size + 2 * guardSize, untouched) {}

    char* data() {
        return bytes.data() + guardSize;
    }
    std::string content() const {
        return bytes.substr(guardSize, size);
    }
    void expectGuardsUntouched() const {
        EXPECT_THAT(bytes.substr(0, guardSize), ::testing::Each(untouched));
        EXPECT_THAT(bytes.substr(guardSize + size), ::testing::Each(untouched));
    }

    std::size_t size;
    std::string bytes;
};

using Slots = std::map<std::size_t, std::string>;

// Compares all 4096 bytes; a slot that is not given is all NULs.
inline void expectInformation(int expectedResult, const Slots& slots) {
    std::string expected(4096, '\0');
    for (const auto& [slot, value] : slots) {
        expected.replace(256 * slot, value.size(), value);
    }
    GuardedBuffer buffer(expected.size());
    EXPECT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(buffer.data()), expectedResult);
    EXPECT_EQ(buffer.content(), expected);
    buffer.expectGuardsUntouched();
}

inline std::string fill(std::size_t length) {
    return std::string(length, 'v');
}

#endif
