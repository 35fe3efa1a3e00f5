#include "parser/wide_to_utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using orvex::convertWideToUtf8;

static_assert(sizeof(wchar_t) == 4, "a wchar_t is a code point");

constexpr char untouched = '\x5A';

wchar_t wide(std::uint32_t codePoint) {
    return static_cast<wchar_t>(codePoint);
}

// What a conversion into a buffer of the given size does.
struct Conversion {
    int result;
    std::string buffer;  // the whole buffer
    std::string behind;  // eight bytes behind it
};

Conversion convert(const std::wstring& source, int size) {
    std::string memory(static_cast<std::size_t>(size) + 8, untouched);
    const int result = convertWideToUtf8(source.c_str(), memory.data(), size);
    return {result, memory.substr(0, static_cast<std::size_t>(size)),
            memory.substr(static_cast<std::size_t>(size))};
}

constexpr char untouchedBytes[] = "ZZZZZZZZ";

// The zero that ends the bytes is part of what is written.
std::string withZero(std::string bytes) {
    bytes.push_back('\0');
    return bytes;
}

TEST(WideToUtf8, CodePointsAtTheBoundsOfEachLength) {
    const struct {
        std::uint32_t codePoint;
        std::string bytes;
    } rows[] = {
        {0x01, "\x01"},
        {0x41, "A"},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0xBF, "\xC2\xBF"},
        {0xC0, "\xC3\x80"},
        {0xE9, "\xC3\xA9"},
        {0x7FF, "\xDF\xBF"},
        {0x800, "\xE0\xA0\x80"},
        {0xFFF, "\xE0\xBF\xBF"},
        {0x1000, "\xE1\x80\x80"},
        {0x20AC, "\xE2\x82\xAC"},
        {0xD7FF, "\xED\x9F\xBF"},
        {0xD800, "\xED\xA0\x80"},
        {0xDBFF, "\xED\xAF\xBF"},
        {0xDC00, "\xED\xB0\x80"},
        {0xDFFF, "\xED\xBF\xBF"},
        {0xE000, "\xEE\x80\x80"},
        {0xFEFF, "\xEF\xBB\xBF"},
        {0xFFFE, "\xEF\xBF\xBE"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x1F600, "\xF0\x9F\x98\x80"},
        {0x3FFFF, "\xF0\xBF\xBF\xBF"},
        {0x40000, "\xF1\x80\x80\x80"},
        {0xFFFFF, "\xF3\xBF\xBF\xBF"},
        {0x100000, "\xF4\x80\x80\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << std::hex << "code point 0x" << row.codePoint);
        const std::wstring source(1, wide(row.codePoint));
        const int needed = static_cast<int>(row.bytes.size()) + 1;
        EXPECT_EQ(convertWideToUtf8(source.c_str(), nullptr, 0), needed);
        const Conversion conversion = convert(source, needed);
        EXPECT_EQ(conversion.result, needed);
        EXPECT_EQ(conversion.buffer, withZero(row.bytes));
        EXPECT_EQ(conversion.behind, untouchedBytes);
    }
}

TEST(WideToUtf8, CodePointsAboveTheLastAreRejected) {
    for (const std::uint32_t codePoint :
         {0x110000U, 0x110001U, 0x1FFFFFU, 0x200000U, 0x7FFFFFFFU, 0x80000000U, 0x80000041U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(::testing::Message() << std::hex << "code point 0x" << codePoint);
        const std::wstring alone(1, wide(codePoint));
        EXPECT_EQ(convertWideToUtf8(alone.c_str(), nullptr, 0), -2);
        EXPECT_EQ(convert(alone, 100).result, -2);
        EXPECT_EQ(convert(L"ab" + alone, 100).result, -2);
        EXPECT_EQ(convert(alone + L"ab", 100).result, -2);
    }
}

TEST(WideToUtf8, CodePointsAboveTheLastAreRejectedWhereTheTextIsOnlyCounted) {
    const std::wstring source = L"ab" + std::wstring(1, wide(0x110000));
    EXPECT_EQ(convert(source, 0).result, -2);
    EXPECT_EQ(convert(source, 2).result, -2);
}

TEST(WideToUtf8, NothingBehindTheTerminatingZeroIsRead) {
    const wchar_t source[] = {L'a', 0, wide(0x110000), 0};
    EXPECT_EQ(convertWideToUtf8(source, nullptr, 0), 2);
}

TEST(WideToUtf8, NullSourceAndNegativeSizeAreRejected) {
    std::string memory = untouchedBytes;
    EXPECT_EQ(convertWideToUtf8(nullptr, nullptr, 0), -1);
    EXPECT_EQ(convertWideToUtf8(nullptr, memory.data(), 8), -1);
    EXPECT_EQ(convertWideToUtf8(nullptr, memory.data(), 0), -1);
    EXPECT_EQ(convertWideToUtf8(nullptr, nullptr, -1), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", memory.data(), -1), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", nullptr, -1), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", memory.data(), std::numeric_limits<int>::min()), -1);
    const wchar_t tooLarge[] = {wide(0x110000), 0};
    EXPECT_EQ(convertWideToUtf8(tooLarge, memory.data(), -1), -1);
    EXPECT_EQ(memory, untouchedBytes);
}

TEST(WideToUtf8, WithoutADestinationTheSizeIsOfNoAccount) {
    for (const int size : {0, 1, 2, 6, 7, 8, 100, std::numeric_limits<int>::max()}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(convertWideToUtf8(L"a\u00E9\u20AC", nullptr, size), 7);
        EXPECT_EQ(convertWideToUtf8(L"", nullptr, size), 1);
    }
}

TEST(WideToUtf8, TheEmptyTextIsItsTerminatingZero) {
    EXPECT_EQ(convertWideToUtf8(L"", nullptr, 0), 1);
    EXPECT_EQ(convert(L"", 0).result, 1);
    const Conversion conversion = convert(L"", 1);
    EXPECT_EQ(conversion.result, 1);
    EXPECT_EQ(conversion.buffer, withZero(""));
    EXPECT_EQ(conversion.behind, untouchedBytes);
}

struct SizeRow {
    int size;
    int result;
    std::string buffer;
};

void expectForEverySize(const std::wstring& source, const std::vector<SizeRow>& rows) {
    for (const SizeRow& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.size << " bytes");
        const Conversion conversion = convert(source, row.size);
        EXPECT_EQ(conversion.result, row.result);
        EXPECT_EQ(conversion.buffer, row.buffer);
        EXPECT_EQ(conversion.behind, untouchedBytes);
    }
}

// In the tables below a Z is a byte that the conversion must leave alone; -2 means that the end of the
// buffer would cut a sequence in two.
static_assert(untouched == 'Z', "the tables name the untouched byte");

TEST(WideToUtf8, EveryBufferSizeForOneByte) {
    expectForEverySize(L"A", {{0, 2, ""}, {1, 2, "A"}, {2, 2, withZero("A")}, {3, 2, withZero("A") + "Z"}});
}

TEST(WideToUtf8, EveryBufferSizeForTwoBytes) {
    expectForEverySize(L"\u00E9", {{0, 3, ""},
                                   {1, -2, "Z"},
                                   {2, 3, "\xC3\xA9"},
                                   {3, 3, withZero("\xC3\xA9")},
                                   {4, 3, withZero("\xC3\xA9") + "Z"}});
}

TEST(WideToUtf8, EveryBufferSizeForThreeBytes) {
    expectForEverySize(L"\u20AC", {{0, 4, ""},
                                   {1, -2, "Z"},
                                   {2, -2, "ZZ"},
                                   {3, 4, "\xE2\x82\xAC"},
                                   {4, 4, withZero("\xE2\x82\xAC")},
                                   {5, 4, withZero("\xE2\x82\xAC") + "Z"}});
}

TEST(WideToUtf8, EveryBufferSizeForFourBytes) {
    expectForEverySize(L"\U0001F600", {{0, 5, ""},
                                       {1, -2, "Z"},
                                       {2, -2, "ZZ"},
                                       {3, -2, "ZZZ"},
                                       {4, 5, "\xF0\x9F\x98\x80"},
                                       {5, 5, withZero("\xF0\x9F\x98\x80")},
                                       {6, 5, withZero("\xF0\x9F\x98\x80") + "Z"}});
}

TEST(WideToUtf8, EveryBufferSizeForAMixedText) {
    expectForEverySize(L"\u00E9A\u20AC", {{0, 7, ""},
                                          {1, -2, "Z"},
                                          {2, 7, "\xC3\xA9"},
                                          {3, 7, "\xC3\xA9\x41"},
                                          {4, -2, "\xC3\xA9\x41Z"},
                                          {5, -2, "\xC3\xA9\x41ZZ"},
                                          {6, 7, "\xC3\xA9\x41\xE2\x82\xAC"},
                                          {7, 7, withZero("\xC3\xA9\x41\xE2\x82\xAC")},
                                          {8, 7, withZero("\xC3\xA9\x41\xE2\x82\xAC") + "Z"}});
}

TEST(WideToUtf8, AFullBufferEndsTheWritingForGood) {
    expectForEverySize(L"AB\U0001F600C", {{1, 8, "A"},
                                          {2, 8, "AB"},
                                          {3, -2, "ABZ"},
                                          {6, 8, "AB\xF0\x9F\x98\x80"},
                                          {7, 8, "AB\xF0\x9F\x98\x80\x43"}});
}

// The code point that the bytes from position on encode; moves position behind them.
std::uint32_t decode(const std::string& bytes, std::size_t& position) {
    const std::uint32_t first = static_cast<unsigned char>(bytes[position++]);
    const int trailing = first < 0xC0 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    std::uint32_t codePoint = trailing == 0 ? first : first & (0x3FU >> trailing);
    for (int i = 0; i < trailing; ++i) {
        codePoint = (codePoint << 6) | (static_cast<unsigned char>(bytes[position++]) & 0x3FU);
    }
    return codePoint;
}

TEST(WideToUtf8, AllCodePointsAreEncodedReversibly) {
    std::wstring source;
    for (std::uint32_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        source += wide(codePoint);
    }
    // 127 of one byte, 1,920 of two, 63,488 of three, 1,048,576 of four, and the terminating zero.
    constexpr int size = 127 + 1920 * 2 + 63488 * 3 + 1048576 * 4 + 1;
    ASSERT_EQ(convertWideToUtf8(source.c_str(), nullptr, 0), size);
    const Conversion conversion = convert(source, size);
    ASSERT_EQ(conversion.result, size);

    std::size_t position = 0;
    for (std::uint32_t codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        ASSERT_EQ(decode(conversion.buffer, position), codePoint);
    }
    EXPECT_EQ(position, conversion.buffer.size() - 1);
    EXPECT_EQ(conversion.buffer.back(), '\0');
}

}  // namespace
