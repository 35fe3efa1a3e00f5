// Every short input of the hidden functions.

#include "differential/enumeration.h"
#include "differential/process_environment.h"
#include "environment/expand_environment_references.h"
#include "environment/split_string.h"
#include "model/model.h"
#include "parser/argument_tokenizer.h"
#include "parser/wide_to_utf8.h"

#include <climits>
#include <optional>
#include <stdexcept>
#include <utility>

namespace {

using namespace differential;
using Texts = std::vector<std::string>;

TEST(ExhaustiveFunctions, EveryTextToTheTokenizer) {
    Cases cases;
    const Texts before = {"before"};
    forEachSequence<std::string>(
        std::string_view(" \t\"'\\a\n\xFF"), quickOrDeep(5, 7), cases, [&](const std::string& text) {
            Texts tokens = before;
            std::string error;
            try {
                orvex::splitArgumentString(text, tokens);
            } catch (const std::runtime_error& exception) {
                error = exception.what();
            }
            std::string expectedError;
            const std::optional<Texts> expected = model::splitArguments(text, expectedError);
            cases.hold(tokens == expected.value_or(before) && error == expectedError, [&text, &tokens] {
                return ::testing::PrintToString(text) + " gives " + ::testing::PrintToString(tokens);
            });
        });
}

TEST(ExhaustiveFunctions, EveryTextToSplitString) {
    Cases cases;
    const std::string symbols(",:a\xFF\0", 5);
    for (const char delimiter : symbols) {
        forEachSequence<std::string>(symbols, quickOrDeep(5, 7), cases, [&](const std::string& text) {
            Texts parts = {"before"};
            Texts expected = parts;
            const bool result = orvex::splitString(text.c_str(), delimiter, parts);
            const bool expectedResult = model::splitString(text.c_str(), delimiter, expected);
            cases.hold(result == expectedResult && parts == expected,
                       [&text, &parts] { return ::testing::PrintToString(std::make_pair(text, parts)); });
        });
    }
}

TEST(ExhaustiveFunctions, EveryTextToTheReferenceExpansion) {
    // Names that are defined, defined as nothing, and not defined; values that look like references.
    const model::Environment variables = {
        {"A", "$(B)%A%"}, {"AA", ""}, {"$", "dollar"}, {"(", "paren"}, {"B", "A=C"}};
    const std::set<std::string> refused;
    const ProcessEnvironment environment(variables, refused);
    Cases cases;
    forEachSequence<std::string>(
        std::string("$()%AB=\0", 8), quickOrDeep(7, 8), cases, [&](const std::string& text) {
            std::string expanded = text;
            const int result = orvex::expandEnvironmentReferences(expanded);
            const auto expected = model::expand(text, variables);
            cases.hold(std::make_pair(result, expanded) == expected, [&text, &expanded] {
                return ::testing::PrintToString(std::make_pair(text, expanded));
            });
        });
}

// Converts into a buffer that is a bit larger than its size says, and compares all of it.
void holdConversion(Cases& cases, const std::u32string& text, int size) {
    constexpr std::size_t room = 24;
    std::wstring wide(text.begin(), text.end());
    char bytes[room];
    char expectedBytes[room];
    std::fill(std::begin(bytes), std::end(bytes), '\xAA');
    std::fill(std::begin(expectedBytes), std::end(expectedBytes), '\xAA');
    const int result = orvex::convertWideToUtf8(wide.c_str(), bytes, size);
    const int expected = model::utf8(text.c_str(), expectedBytes, size);
    // What a refused conversion leaves in the buffer is compared too, up to the refused sequence.
    cases.hold(result == expected && std::equal(std::begin(bytes), std::end(bytes), expectedBytes), [&] {
        return ::testing::PrintToString(wide) + " into " + std::to_string(size) + " bytes gives " +
               std::to_string(result) + " instead of " + std::to_string(expected);
    });
}

TEST(ExhaustiveFunctions, EveryCodePointToTheConversion) {
    Cases cases;
    const auto step = static_cast<std::uint32_t>(quickOrDeep(13, 1));
    for (std::uint32_t c = 0; c < 0x110000 + 64 && cases; c += step) {
        const std::u32string text(1, static_cast<char32_t>(c));
        // Every size from none to one more than the sequence and its terminator need.
        for (int size = 0; size <= 6; ++size) {
            holdConversion(cases, text, size);
            holdConversion(cases, U"a" + text + U"b", size + 1);
        }
    }
}

TEST(ExhaustiveFunctions, EveryShortTextOfBoundariesToTheConversion) {
    const std::u32string boundaries = {U'a',    0x7F,     0x80,     0x7FF,      0x800,      0xD800,    0xFFFF,
                                       0x10000, 0x10FFFF, 0x110000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    Cases cases;
    forEachSequence<std::u32string>(boundaries, quickOrDeep(3, 4), cases, [&](const std::u32string& text) {
        const std::wstring wide(text.begin(), text.end());
        for (int size = -1; size <= 18; ++size) {
            holdConversion(cases, text, size);
        }
        for (const int size : {INT_MIN, -1, 0, 1, INT_MAX}) {
            const int result = orvex::convertWideToUtf8(wide.c_str(), nullptr, size);
            cases.hold(result == model::utf8(text.c_str(), nullptr, size), [&wide, size] {
                return "counting " + ::testing::PrintToString(wide) + " with " + std::to_string(size);
            });
        }
    });
}

}  // namespace
