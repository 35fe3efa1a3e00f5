// Strings whose UTF-8 has as many bytes as an int can count, and more.

#include "parser/wide_to_utf8.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstdio>
#include <limits>
#include <vector>

namespace {

constexpr std::size_t pieceSize = std::size_t{8} << 20;
constexpr std::size_t pieces = 256;
constexpr std::size_t codePoints = pieceSize * pieces / sizeof(wchar_t);

// 2^29 code points of four bytes each, and then NULs. They take little memory, because one small file is
// mapped repeatedly. The mappings stay until the program ends.
wchar_t* mapCodePoints() {
    const std::vector<wchar_t> piece(pieceSize / sizeof(wchar_t), L'\U0010FFFF');
    std::FILE* const file = std::tmpfile();
    EXPECT_EQ(std::fwrite(piece.data(), 1, pieceSize, file), pieceSize);
    EXPECT_EQ(std::fflush(file), 0);
    char* const start = static_cast<char*>(mmap(nullptr, pieceSize * (pieces + 1), PROT_READ | PROT_WRITE,
                                                MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
    for (std::size_t i = 0; i < pieces; ++i) {
        char* const place = start + i * pieceSize;
        EXPECT_EQ(mmap(place, pieceSize, PROT_READ, MAP_SHARED | MAP_FIXED, fileno(file), 0), place);
    }
    return reinterpret_cast<wchar_t*>(start);
}

TEST(WideToUtf8Length, CountsUpToTheLargestIntAndRejectsOneByteMore) {
    static_assert(codePoints == std::size_t{1} << 29);
    wchar_t* const string = mapCodePoints();
    ASSERT_FALSE(HasFailure());
    // From string + 1: all four-byte code points but one, a two-byte one, and the terminator.
    string[codePoints] = L'\u00FF';
    EXPECT_EQ(orvex::convertWideToUtf8(string + 1, nullptr, 0), std::numeric_limits<int>::max());
    string[codePoints] = L'\u0800';
    EXPECT_EQ(orvex::convertWideToUtf8(string + 1, nullptr, 0), -2);
    EXPECT_EQ(orvex::convertWideToUtf8(string, nullptr, 0), -2);
}

}  // namespace
