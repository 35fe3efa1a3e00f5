// Every code point through the wide forms, and every shape of the packed form.

#include "differential/exhaustive.h"

#include <climits>

namespace {

using namespace differential;

constexpr std::uint32_t firstInvalid = 0x110000;

TEST(ExhaustiveWide, EveryCodePoint) {
    Cases cases;
    Scenario scenario;
    const auto step = static_cast<std::uint32_t>(quickOrDeep(7, 1));
    constexpr std::size_t atOnce = 64;
    std::vector<WideArgument> arguments = {U"app"};
    for (std::uint32_t c = 0; c < firstInvalid && cases; c += step) {
        arguments.push_back(std::u32string{U'a', static_cast<char32_t>(c), U'b'});
        if (arguments.size() > atOnce || c + step >= firstInvalid) {
            scenario.calls = {wide(arguments)};
            holdScenario(cases, scenario, arguments.size() - 1);
            arguments.resize(1);
        }
    }
}

TEST(ExhaustiveWide, EveryCodePointNearABoundary) {
    Cases cases;
    for (const std::uint32_t boundary : {0x0U, 0x80U, 0x800U, 0xD800U, 0xE000U, 0x10000U, firstInvalid,
                                         0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        for (std::uint32_t distance = 0; distance < 32; ++distance) {
            const auto c = static_cast<char32_t>(boundary + distance - 16);
            for (const std::u32string& text :
                 {std::u32string{c}, std::u32string{U'a', c}, std::u32string{c, U'b', c}}) {
                Scenario scenario;
                scenario.calls = {wide({text}), cWide({U"app", text}), wide({U"app", U"-o", text, U"-x"})};
                holdScenario(cases, scenario);
            }
        }
    }
}

// Each argument a null pointer, empty, plain, two bytes long in UTF-8, or not convertible.
TEST(ExhaustiveWide, EveryVectorAndCount) {
    const std::vector<WideArgument> arguments = {std::nullopt, U"", U"-w", U"\u00E9",
                                                 std::u32string{0x110000}};
    Cases cases;
    forEachSequence<std::vector<WideArgument>>(
        arguments, quickOrDeep(3, 4), cases, [&](const std::vector<WideArgument>& vector) {
            for (int count = -1; count <= static_cast<int>(vector.size()); ++count) {
                Scenario scenario;
                scenario.calls = {withCount(wide(vector), count), withCount(cWide(vector), count)};
                holdScenario(cases, scenario);
            }
        });
}

TEST(ExhaustiveWide, EveryPackedBlockAndCount) {
    Cases cases;
    // The zero bytes in the text separate the arguments.
    forEachSequence<std::string>(
        std::string("\0-wo5", 5), quickOrDeep(4, 6), cases, [&](const std::string& block) {
            for (int count = -1; count <= static_cast<int>(block.size()) + 1; ++count) {
                Scenario scenario;
                scenario.calls = {withCount(packed({block}), count)};
                holdScenario(cases, scenario);
            }
        });
}

TEST(ExhaustiveWide, EveryCountWithoutArguments) {
    Cases cases;
    for (const int count : {INT_MIN, -2, -1, 0, 1, 2, INT_MAX}) {
        for (const Call& call : {narrow({}), wide({}), packed({}), cNarrow({}), cWide({})}) {
            Scenario scenario;
            scenario.environment["ORVEX_TEST_ARGS"] = "-o a";
            scenario.calls = {withNull(call, count), narrow({"app"}), withNull(call, count)};
            holdScenario(cases, scenario);
            scenario.calls = {withCount(call, count), narrow({"app"}), withCount(call, count)};
            holdScenario(cases, scenario);
        }
    }
}

}  // namespace
