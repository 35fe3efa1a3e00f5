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

// What a conversion into a buffer of the given size does. In the buffer and in the two bytes after it,
// "Z" is a byte that was left alone and "0" a zero byte; no source here has either of them.
struct Conversion {
    int result;
    std::string buffer;
    std::string bytesAfter;
};

Conversion convert(const std::wstring& source, int size) {
    std::string memory(static_cast<std::size_t>(size) + 2, 'Z');
    const int result = convertWideToUtf8(source.c_str(), memory.data(), size);
    for (char& byte : memory) {
        byte = byte == '\0' ? '0' : byte;
    }
    return {result, memory.substr(0, static_cast<std::size_t>(size)),
            memory.substr(static_cast<std::size_t>(size))};
}

TEST(WideToUtf8, CodePointsAtTheBoundsOfEachLength) {
    const struct {
        std::uint32_t value;
        std::string bytes;
    } rows[] = {
        {0x01, "\x01"},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0xE9, "\xC3\xA9"},
        {0x7FF, "\xDF\xBF"},
        {0x800, "\xE0\xA0\x80"},
        {0x20AC, "\xE2\x82\xAC"},
        {0xD7FF, "\xED\x9F\xBF"},
        {0xD800, "\xED\xA0\x80"},
        {0xDFFF, "\xED\xBF\xBF"},
        {0xE000, "\xEE\x80\x80"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x1F600, "\xF0\x9F\x98\x80"},
        {0x40000, "\xF1\x80\x80\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << std::hex << "code point 0x" << row.value);
        const int needed = static_cast<int>(row.bytes.size()) + 1;
        ASSERT_EQ(convertWideToUtf8(codePoint(row.value).c_str(), nullptr, 0), needed);
        const Conversion conversion = convert(codePoint(row.value), needed);
        ASSERT_EQ(conversion.result, needed);
        ASSERT_EQ(conversion.buffer, row.bytes + "0");
        ASSERT_EQ(conversion.bytesAfter, "ZZ");
    }
}

TEST(WideToUtf8, CodePointsAboveTheLastAreRefused) {
    for (const std::uint32_t value : {0x110000U, 0x1FFFFFU, 0x7FFFFFFFU, 0x80000041U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(::testing::Message() << std::hex << "code point 0x" << value);
        ASSERT_EQ(convertWideToUtf8(codePoint(value).c_str(), nullptr, 0), -2);
        ASSERT_EQ(convert(L"ab" + codePoint(value), 100).result, -2);
        ASSERT_EQ(convert(L"ab" + codePoint(value), 2).result, -2) << "where the text is only counted";
    }
}

TEST(WideToUtf8, NothingAfterTheTerminatingZeroIsRead) {
    const std::wstring source = L"a" + std::wstring(1, L'\0') + codePoint(0x110000);
    EXPECT_EQ(convertWideToUtf8(source.c_str(), nullptr, 0), 2);
}

TEST(WideToUtf8, NullSourceAndNegativeSizeAreRefused) {
    std::string memory = "ZZZZ";
    EXPECT_EQ(convertWideToUtf8(nullptr, nullptr, 0), -1);
    EXPECT_EQ(convertWideToUtf8(nullptr, memory.data(), 4), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", memory.data(), -1), -1);
    EXPECT_EQ(convertWideToUtf8(L"a", nullptr, -1), -1);
    EXPECT_EQ(convertWideToUtf8(codePoint(0x110000).c_str(), nullptr, std::numeric_limits<int>::min()), -1);
    EXPECT_EQ(memory, "ZZZZ");
}

TEST(WideToUtf8, WithoutADestinationTheSizeDoesNotMatter) {
    for (const int size : {0, 1, 2, 6, 7, 8, std::numeric_limits<int>::max()}) {
        ASSERT_EQ(convertWideToUtf8(L"a\u00E9\u20AC", nullptr, size), 7) << size;
        ASSERT_EQ(convertWideToUtf8(L"", nullptr, size), 1) << size;
    }
}

struct SizeRow {
    int size;
    int result;
    std::string buffer;
};

void expectForEverySize(const std::wstring& source, const std::vector<SizeRow>& rows) {
    for (const SizeRow& row : rows) {
        SCOPED_TRACE(::testing::Message() << "size " << row.size);
        const Conversion conversion = convert(source, row.size);
        ASSERT_EQ(conversion.result, row.result);
        ASSERT_EQ(conversion.buffer, row.buffer);
        ASSERT_EQ(conversion.bytesAfter, "ZZ");
    }
}

TEST(WideToUtf8, OneByteInEveryBufferSize) {
    expectForEverySize(L"", {{0, 1, ""}, {1, 1, "0"}, {2, 1, "0Z"}});
    expectForEverySize(L"A", {{0, 2, ""}, {1, 2, "A"}, {2, 2, "A0"}, {3, 2, "A0Z"}});
}

TEST(WideToUtf8, SequencesThatTheEndOfTheBufferWouldCutAreRefused) {
    expectForEverySize(L"\u00E9", {{0, 3, ""}, {1, -2, "Z"}, {2, 3, "\xC3\xA9"}, {3, 3, "\xC3\xA9\x30"}});
    expectForEverySize(
        L"\u20AC",
        {{0, 4, ""}, {1, -2, "Z"}, {2, -2, "ZZ"}, {3, 4, "\xE2\x82\xAC"}, {4, 4, "\xE2\x82\xAC\x30"}});
    expectForEverySize(L"\U0001F600", {{0, 5, ""},
                                       {1, -2, "Z"},
                                       {2, -2, "ZZ"},
                                       {3, -2, "ZZZ"},
                                       {4, 5, "\xF0\x9F\x98\x80"},
                                       {5, 5, "\xF0\x9F\x98\x80\x30"}});
}

TEST(WideToUtf8, AFullBufferEndsTheWritingForGood) {
    expectForEverySize(L"AB\U0001F600C", {{1, 8, "A"},
                                          {2, 8, "AB"},
                                          {3, -2, "ABZ"},
                                          {6, 8, "AB\xF0\x9F\x98\x80"},
                                          {7, 8, "AB\xF0\x9F\x98\x80\x43"},
                                          {8, 8, "AB\xF0\x9F\x98\x80\x43\x30"}});
}

}  // namespace
