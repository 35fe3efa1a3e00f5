#include "parser/wide_to_utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using orvex::convertWideToUtf8;

static_assert(sizeof(wchar_t) == 4, "a wchar_t is a code point");

std::wstring codePoint(std::uint32_t value) {
    return std::wstring(1, static_cast<wchar_t>(value));
}

// A conversion into a buffer of this size. In the buffer and the two bytes after it, "Z" is a byte that was
// not written and "0" a NUL; no source here has either of them.
struct Conversion {
    int size;
    int result;
    std::string buffer;
};

void expectConversions(const std::wstring& source, const std::vector<Conversion>& rows) {
    for (const Conversion& row : rows) {
        std::string memory(static_cast<std::size_t>(row.size) + 2, 'Z');
        EXPECT_EQ(convertWideToUtf8(source.c_str(), memory.data(), row.size), row.result) << row.size;
        for (char& byte : memory) {
            byte = byte == '\0' ? '0' : byte;
        }
        EXPECT_EQ(memory, row.buffer + "ZZ") << row.size;
    }
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
        {0x20AC, "\xE2\x82\xAC"},
        {0xD800, "\xED\xA0\x80"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x1F600, "\xF0\x9F\x98\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
    };
    for (const auto& row : rows) {
        const int needed = static_cast<int>(row.bytes.size()) + 1;
        EXPECT_EQ(convertWideToUtf8(codePoint(row.value).c_str(), nullptr, 0), needed);
        expectConversions(codePoint(row.value), {{needed, needed, row.bytes + "0"}});
    }
}

TEST(WideToUtf8, RefusesLargerNumbers) {
    for (const std::uint32_t value : {0x110000U, 0x7FFFFFFFU, 0x80000041U, 0xFFFFFFFFU}) {
        EXPECT_EQ(convertWideToUtf8(codePoint(value).c_str(), nullptr, 0), -2) << value;
        expectConversions(L"ab" + codePoint(value), {{2, -2, "ab"}, {4, -2, "abZZ"}});
    }
    const std::wstring afterNul = L"a" + codePoint(0) + codePoint(0x110000);
    EXPECT_EQ(convertWideToUtf8(afterNul.c_str(), nullptr, 0), 2);
}

TEST(WideToUtf8, RefusesANullSourceAndANegativeSize) {
    std::string memory = "ZZZZ";
    EXPECT_EQ(convertWideToUtf8(nullptr, nullptr, 0), -1);
    EXPECT_EQ(convertWideToUtf8(nullptr, memory.data(), 4), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", memory.data(), -1), -1);
    EXPECT_EQ(convertWideToUtf8(codePoint(0x110000).c_str(), nullptr, std::numeric_limits<int>::min()), -1);
    EXPECT_EQ(memory, "ZZZZ");
}

TEST(WideToUtf8, MeasuresWithoutADestinationWhateverTheSize) {
    for (const int size : {0, 1, 6, 7, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(convertWideToUtf8(L"a\u00E9\u20AC", nullptr, size), 7) << size;
    }
}

TEST(WideToUtf8, WritesOnlyWholeSequencesThatFitAndGoesOnCounting) {
    expectConversions(L"", {{0, 1, ""}, {1, 1, "0"}, {2, 1, "0Z"}});
    expectConversions(
        L"\u20AC",
        {{0, 4, ""}, {1, -2, "Z"}, {2, -2, "ZZ"}, {3, 4, "\xE2\x82\xAC"}, {4, 4, "\xE2\x82\xAC\x30"}});
    expectConversions(L"AB\U0001F600C", {{1, 8, "A"},
                                         {2, 8, "AB"},
                                         {3, -2, "ABZ"},
                                         {6, 8, "AB\xF0\x9F\x98\x80"},
                                         {8, 8, "AB\xF0\x9F\x98\x80\x43\x30"}});
}

}  // namespace
