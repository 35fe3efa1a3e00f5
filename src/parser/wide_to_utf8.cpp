#include "parser/wide_to_utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace orvex {
namespace {

// Encodes a code point of at most 0x10FFFF and returns the number of bytes, 1 to 4.
int encode(std::uint32_t c, char* bytes) {
    const auto trailing = [c](int shift) { return static_cast<char>(0x80 + ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        bytes[0] = static_cast<char>(c);
        return 1;
    }
    if (c < 0x800) {
        bytes[0] = static_cast<char>(0xC0 + (c >> 6));
        bytes[1] = trailing(0);
        return 2;
    }
    if (c <= 0xFFFF) {
        bytes[0] = static_cast<char>(0xE0 + (c >> 12));
        bytes[1] = trailing(6);
        bytes[2] = trailing(0);
        return 3;
    }
    bytes[0] = static_cast<char>(0xF0 + (c >> 18));
    bytes[1] = trailing(12);
    bytes[2] = trailing(6);
    bytes[3] = trailing(0);
    return 4;
}

}  // namespace

int convertWideToUtf8(const wchar_t* source, char* destination, int destinationSize) {
    if (source == nullptr || destinationSize < 0) {
        return -1;
    }
    const int capacity = destination == nullptr ? 0 : destinationSize;
    int length = 0;
    bool ended = false;
    while (!ended) {
        const auto c = static_cast<std::make_unsigned_t<wchar_t>>(*source++);
        ended = c == 0;
        if (c > 0x10FFFF) {
            return -2;
        }
        char sequence[4];
        const int sequenceLength = encode(c, sequence);
        if (length > std::numeric_limits<int>::max() - sequenceLength) {
            return -2;
        }
        if (length < capacity) {
            if (capacity - length < sequenceLength) {
                return -2;
            }
            std::memcpy(destination + length, sequence, static_cast<std::size_t>(sequenceLength));
        }
        length += sequenceLength;
    }
    return length;
}

}  // namespace orvex
