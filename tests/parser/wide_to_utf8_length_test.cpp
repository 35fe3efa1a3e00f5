// Strings whose UTF-8 has as many bytes as an int can count, and more. They take little memory: the same
// pages are mapped again and again.

#include "parser/wide_to_utf8.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstdio>
#include <limits>
#include <vector>

namespace {

constexpr std::size_t pieceSize = std::size_t{8} << 20;
constexpr std::size_t pieces = 256;
static_assert(pieceSize * pieces == std::size_t{1} << 31);

// 2^29 code points of four bytes each, all from one file, and then NULs that can be overwritten.
class RepeatedString {
public:
    RepeatedString() {
        const std::vector<wchar_t> piece(pieceSize / sizeof(wchar_t), L'\U0010FFFF');
        file = std::tmpfile();
        if (std::fwrite(piece.data(), 1, pieceSize, file) != pieceSize || std::fflush(file) != 0) {
            return;
        }
        void* const reserved = mmap(nullptr, pieceSize * (pieces + 1), PROT_READ | PROT_WRITE,
                                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        start = reserved == MAP_FAILED ? nullptr : static_cast<char*>(reserved);
        for (std::size_t i = 0; i < pieces && start != nullptr; ++i) {
            if (mmap(start + i * pieceSize, pieceSize, PROT_READ, MAP_SHARED | MAP_FIXED, fileno(file), 0) ==
                MAP_FAILED) {
                start = nullptr;
            }
        }
    }
    ~RepeatedString() {
        munmap(start, pieceSize * (pieces + 1));
        static_cast<void>(std::fclose(file));
    }
    RepeatedString(const RepeatedString&) = delete;
    RepeatedString& operator=(const RepeatedString&) = delete;

    const wchar_t* string() const {
        return reinterpret_cast<const wchar_t*>(start);
    }
    wchar_t* rest() const {
        return reinterpret_cast<wchar_t*>(start + pieceSize * pieces);
    }

private:
    std::FILE* file = nullptr;
    char* start = nullptr;
};

TEST(WideToUtf8Length, CountsUpToTheLargestIntAndRejectsOneByteMore) {
    const RepeatedString repeated;
    ASSERT_NE(repeated.string(), nullptr);
    // One code point less than there are, one of two bytes, and the terminator.
    repeated.rest()[0] = L'\u00FF';
    EXPECT_EQ(orvex::convertWideToUtf8(repeated.string() + 1, nullptr, 0), std::numeric_limits<int>::max());
    repeated.rest()[0] = L'\u0800';
    EXPECT_EQ(orvex::convertWideToUtf8(repeated.string() + 1, nullptr, 0), -2);
    EXPECT_EQ(orvex::convertWideToUtf8(repeated.string(), nullptr, 0), -2);
}

}  // namespace
