// Every short token list in all sixteen modes of the registry, and every short token in the number test.

#include "OrvexTestCommandLineParser.h"
#include "differential/enumeration.h"
#include "model/model.h"

#include <utility>

namespace {

using namespace differential;
using Tokens = std::vector<std::string>;

// "b" is registered both ways; "ab" and "v" take a value, "m" takes several.
const Tokens vocabulary = {"",     "a",   "-",    "--",  "-v",   "--v",  "-m",   "-b", "-u", "-uv",
                           "-uvm", "-vu", "--uv", "-ab", "-v=1", "-m=1", "-u=v", "-=", "-5", "7"};

// Every name that those tokens can leave in the registry, with dashes in front of some.
const Tokens names = {"",   "-",  "--", "v",   "-v",  "m",   "--m", "b", "u",  "uv", "uvm",
                      "vu", "ab", "a",  "v=1", "m=1", "u=v", "=",   "1", "-=", "x"};

template <typename Registry>
Registry newRegistry(std::uint32_t mode) {
    Registry registry(mode);
    registry.addValueOptions({"v", "-ab", "b", "--v"});
    registry.addMultiValueOptions({"--m", "b"});
    return registry;
}

std::string differenceOf(const OptionRegistry& registry, const model::Registry& expected) {
    if (registry.getPositionals() != expected.getPositionals()) {
        return "positionals";
    }
    for (const std::string& name : names) {
        if (registry.hasOption(name) != expected.hasOption(name)) {
            return "hasOption " + name;
        }
        if (registry.getSingleValue(name) !=
            (expected.isMultiValueOption(name) ? "" : expected.getText(name))) {
            return "getSingleValue " + name;
        }
        if (registry.getJoinedValues(name, "||") != expected.getJoinedValues(name, "||")) {
            return "getJoinedValues " + name;
        }
    }
    return "";
}

// The queries that cost a stream, and those that a scan does not change.
std::string furtherDifferenceOf(const OptionRegistry& registry, const model::Registry& expected) {
    for (const std::string& name : names) {
        const std::istringstream stream = registry.getValue(name);
        const std::optional<std::string> text = expected.getValue(name);
        if (stream.str() != text.value_or("") || stream.fail() == text.has_value()) {
            return "getValue " + name;
        }
        if (registry.isValueOption(name) != expected.isValueOption(name) ||
            registry.isMultiValueOption(name) != expected.isMultiValueOption(name)) {
            return "registration of " + name;
        }
    }
    for (std::size_t i = 0; i <= expected.getPositionals().size() + 1; ++i) {
        if (registry.getPositional(i) != expected.getPositional(i)) {
            return "getPositional " + std::to_string(i);
        }
    }
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        if (registry.hasMode(bit) != expected.hasMode(bit)) {
            return "hasMode " + std::to_string(bit);
        }
    }
    return "";
}

std::string describe(std::uint32_t mode, const Tokens& tokens, const std::string& difference) {
    return "mode " + std::to_string(mode) + ", " + ::testing::PrintToString(tokens) + ": " + difference;
}

void holdEveryList(std::uint32_t mode) {
    Cases cases;
    forEachSequence<Tokens>(vocabulary, quickOrDeep(3, 4), cases, [&](const Tokens& tokens) {
        auto registry = newRegistry<OptionRegistry>(mode);
        auto expected = newRegistry<model::Registry>(mode);
        registry.parseTokens(tokens);
        expected.parseTokens(tokens);
        std::string difference = differenceOf(registry, expected);
        if (difference.empty() && tokens.size() <= 2) {
            difference = furtherDifferenceOf(registry, expected);
        }
        cases.hold(difference.empty(), [&] { return describe(mode, tokens, difference); });
    });
}

class ExhaustiveRegistry : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(ExhaustiveRegistry, EveryList) {
    holdEveryList(GetParam());
}

TEST_P(ExhaustiveRegistry, EveryListInTwoScans) {
    Cases cases;
    forEachSequence<Tokens>(vocabulary, quickOrDeep(2, 3), cases, [&](const Tokens& tokens) {
        for (std::size_t first = 0; first <= tokens.size(); ++first) {
            const auto middle = tokens.begin() + static_cast<std::ptrdiff_t>(first);
            auto registry = newRegistry<OptionRegistry>(GetParam());
            auto expected = newRegistry<model::Registry>(GetParam());
            std::vector<const char*> argv;
            for (auto token = tokens.begin(); token != middle; ++token) {
                argv.push_back(token->c_str());
            }
            registry.parseArgv(static_cast<int>(first), argv.data());
            expected.parseArgv(Tokens(tokens.begin(), middle));
            registry.parseTokens(Tokens(middle, tokens.end()));
            expected.parseTokens(Tokens(middle, tokens.end()));
            const std::string difference = differenceOf(registry, expected);
            cases.hold(difference.empty(), [&] { return describe(GetParam(), tokens, difference); });
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Mode, ExhaustiveRegistry, ::testing::Range(0U, 16U),
                         [](const auto& instance) { return std::to_string(instance.param); });

TEST(ExhaustiveTokenKinds, EveryTextOfTheCharactersOfNumbers) {
    Cases cases;
    forEachSequence<std::string>(
        std::string_view("-+0.5eExXinfaN \t"), quickOrDeep(4, 5), cases, [&](const std::string& text) {
            for (const std::string& token : {text, "-" + text}) {
                cases.hold(OptionRegistry::isNumber(token) == model::isNumber(token) &&
                               OptionRegistry::isOptionToken(token) == model::isOptionToken(token) &&
                               OptionRegistry::trimLeadingDashes(token) == model::trimLeadingDashes(token),
                           [&token] { return ::testing::PrintToString(token); });
            }
        });
}

TEST(ExhaustiveTokenKinds, EveryByteBehindADash) {
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
    }
    Cases cases;
    forEachSequence<std::string>(allBytes, 2, cases, [&](const std::string& text) {
        for (const std::string& token : {text, "-" + text, "-" + text + "5"}) {
            cases.hold(OptionRegistry::isNumber(token) == model::isNumber(token) &&
                           OptionRegistry::isOptionToken(token) == model::isOptionToken(token),
                       [&token] { return ::testing::PrintToString(token); });
        }
    });
}

}  // namespace
