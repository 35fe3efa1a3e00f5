#include "parser/wide_to_utf8.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

namespace {

using orvex::convertWideToUtf8;

static_assert(sizeof(wchar_t) == 4, "a wchar_t is a code point");

std::wstring codePoint(std::uint32_t value) {
    return std::wstring(1, static_cast<wchar_t>(value));
}

// In the buffer and the byte after it, "Z" is a byte that was not written and "0" a NUL; no source here has
// either of them.
void expectConversion(const std::wstring& source, int size, int result, const std::string& buffer) {
    std::string memory(static_cast<std::size_t>(size) + 1, 'Z');
    EXPECT_EQ(convertWideToUtf8(source.c_str(), memory.data(), size), result) << size;
    for (char& byte : memory) {
        byte = byte == '\0' ? '0' : byte;
    }
    EXPECT_EQ(memory, buffer + "Z") << size;
}

TEST(WideToUtf8, ConvertsTheFirstAndTheLastCodePointOfEachLength) {
    const struct {
        std::uint32_t value;
        std::string bytes;
    } rows[] = {
        {0x01, "\x01"},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0x7FF, "\xDF\xBF"},
        {0x800, "\xE0\xA0\x80"},
        {0xD800, "\xED\xA0\x80"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
    };
    for (const auto& row : rows) {
        const int needed = static_cast<int>(row.bytes.size()) + 1;
        expectConversion(codePoint(row.value), needed, needed, row.bytes + "0");
    }
}

TEST(WideToUtf8, RejectsValuesAboveUnicodeBeforeTheTerminator) {
    expectConversion(L"ab" + codePoint(0x110000), 4, -2, "abZZ");
    expectConversion(codePoint(0x80000041), 1, -2, "Z");
    expectConversion(codePoint(0xFFFFFFFF), 1, -2, "Z");
    expectConversion(L"a" + codePoint(0) + codePoint(0x110000), 2, 2, "a0");
}

TEST(WideToUtf8, RejectsANullSourceAndANegativeSize) {
    char untouched = 'Z';
    EXPECT_EQ(convertWideToUtf8(nullptr, nullptr, 0), -1);
    EXPECT_EQ(convertWideToUtf8(nullptr, &untouched, 1), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", &untouched, -1), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", nullptr, std::numeric_limits<int>::min()), -1);
    EXPECT_EQ(untouched, 'Z');
}

TEST(WideToUtf8, MeasuresWithoutADestinationWhateverTheSize) {
    for (const int size : {0, 1, 6, 7, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(convertWideToUtf8(L"a\u00E9\u20AC", nullptr, size), 7) << size;
    }
}

TEST(WideToUtf8, WritesOnlyWholeSequencesThatFitAndGoesOnCounting) {
    expectConversion(L"", 0, 1, "");
    expectConversion(L"AB\U0001F600C", 1, 8, "A");
    expectConversion(L"AB\U0001F600C", 2, 8, "AB");
    expectConversion(L"AB\U0001F600C", 3, -2, "ABZ");
    expectConversion(L"AB\U0001F600C", 6, 8, "AB\xF0\x9F\x98\x80");
    expectConversion(L"AB\U0001F600C", 9, 8, "AB\xF0\x9F\x98\x80\x43\x30Z");
}

}  // namespace
