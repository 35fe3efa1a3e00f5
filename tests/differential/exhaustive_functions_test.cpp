// Every short input of the hidden functions, and of the registry in all of its modes.

#include "OrvexTestCommandLineParser.h"
#include "differential/comparison.h"
#include "differential/differences.h"
#include "differential/exhaustive.h"
#include "differential/process_environment.h"
#include "differential/scenario.h"
#include "model/model.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace differential;

TEST(ExhaustiveFunctions, TokenizerMatchesTheModelForEveryString) {
    Cases cases;
    forEvery(std::string(" \t\"'\\a\n\xFF"), quickOrDeep(5, 7), cases,
             [&](const std::string& text) { cases(findTokenizerDifference(text)); });
}

TEST(ExhaustiveFunctions, SplitStringMatchesTheModelForEveryString) {
    Cases cases;
    const std::string symbols(",:a\xFF\0", 5);
    for (const char delimiter : symbols) {
        forEvery(symbols, quickOrDeep(5, 7), cases,
                 [&](const std::string& text) { cases(findSplitDifference(text, delimiter)); });
    }
}

TEST(ExhaustiveFunctions, ExpansionMatchesTheModelForEveryString) {
    // Names that are defined, empty and undefined; values that look like references.
    const model::Environment variables = {
        {"A", "$(B)%A%"}, {"AA", ""}, {"$", "dollar"}, {"(", "paren"}, {"B", "A=C"}};
    const ProcessEnvironment environment(variables);
    Cases cases;
    forEvery(std::string("$()%AB=\0", 8), quickOrDeep(7, 8), cases,
             [&](const std::string& text) { cases(findExpansionDifference(text, variables)); });
}

TEST(ExhaustiveFunctions, ConversionMatchesTheModelForEveryCodePoint) {
    Cases cases;
    const auto step = static_cast<std::uint32_t>(quickOrDeep(13, 1));
    for (std::uint32_t c = 0; c < 0x110000 + 64 && cases; c += step) {
        const std::u32string text(1, static_cast<char32_t>(c));
        // Every size from none to one more than the sequence and its terminator need.
        for (int size = 0; size <= 6; ++size) {
            cases(findConversionDifference(text, size));
            cases(findConversionDifference(U"a" + text + U"b", size + 1));
        }
    }
}

TEST(ExhaustiveFunctions, ConversionMatchesTheModelForEveryStringOfBoundaries) {
    const std::u32string boundaries = {U'a',    0x7F,     0x80,     0x7FF,      0x800,      0xD800,    0xFFFF,
                                       0x10000, 0x10FFFF, 0x110000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    Cases cases;
    forEvery(boundaries, quickOrDeep(3, 4), cases, [&](const std::u32string& text) {
        for (int size = -1; size <= 18; ++size) {
            cases(findConversionDifference(text, size));
        }
        cases(findConversionDifference(text, INT_MIN));
        cases(findConversionDifference(text, INT_MAX));
    });
}

TEST(ExhaustiveTokenKinds, MatchTheModelForEveryStringOfNumberCharacters) {
    Cases cases;
    forEvery(std::string("-+0.5eExXinfaN \t"), quickOrDeep(4, 5), cases, [&](const std::string& text) {
        cases(findTokenKindDifference(text));
        cases(findTokenKindDifference("-" + text));
    });
}

TEST(ExhaustiveTokenKinds, MatchTheModelForEveryByteAfterADash) {
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
    }
    Cases cases;
    forEvery(allBytes, 2, cases, [&](const std::string& text) {
        for (const std::string& token : {text, "-" + text, "-" + text + "5"}) {
            cases(findTokenKindDifference(token));
        }
    });
}

// "b" is registered both ways; "ab" and "v" take a value, "m" takes several.
const Strings tokens = words("'' a - -- -v --v -m -b -u -uv -uvm -vu --uv -ab -v=1 -m=1 -u=v -= -5 7");

// Every name that those tokens can leave in the registry, with dashes in front of some.
const Strings names = words("'' - -- v -v m --m b u uv uvm vu ab a v=1 m=1 u=v = 1 -= x");

OptionRegistry newRegistry(std::uint32_t mode) {
    OptionRegistry registry(mode);
    registry.addValueOptions({"v", "-ab", "b", "--v"});
    registry.addMultiValueOptions({"--m", "b"});
    return registry;
}

model::Registry newModel(std::uint32_t mode) {
    model::Registry registry(mode);
    registry.valueOptions = {"v", "ab", "b"};
    registry.multiValueOptions = {"m", "b"};
    return registry;
}

// If allQueries is set, also compares getPositional, the queries that build a stream, and those whose results
// no scan changes.
void compareQueries(const OptionRegistry& registry, const model::Registry& model, bool allQueries,
                    Differences& compare) {
    compare("getPositionals", registry.getPositionals(), model.positionals);
    for (const std::string& name : names) {
        const std::string key = model::trimLeadingDashes(name);
        const auto single = model.values.find(key);
        const bool isSingle = single != model.values.end();
        compare("hasOption", registry.hasOption(name), model.flags.count(key) != 0);
        compare("getSingleValue", registry.getSingleValue(name), isSingle ? single->second : "");
        compare("getJoinedValues", registry.getJoinedValues(name, "||"), model.getJoinedValues(key, "||"));
        if (allQueries) {
            const bool isMultiValue = model.multiValueOptions.count(key) != 0;
            const std::istringstream stream = registry.getValue(name);
            compare("getValue", stream.str(), model.getText(key));
            compare("getValue().fail()", stream.fail(), !isMultiValue && !isSingle);
            compare("isValueOption", registry.isValueOption(name), model.valueOptions.count(key) != 0);
            compare("isMultiValueOption", registry.isMultiValueOption(name), isMultiValue);
        }
    }
    for (std::size_t i = 0; allQueries && i <= model.positionals.size() + 1; ++i) {
        compare("getPositional", registry.getPositional(i),
                i < model.positionals.size() ? model.positionals[i] : "");
    }
    for (std::uint32_t bit = 1; allQueries && bit != 0; bit <<= 1) {
        compare("hasMode", registry.hasMode(bit), (model.mode & bit) != 0);
    }
}

class ExhaustiveRegistry : public ::testing::TestWithParam<std::uint32_t> {
protected:
    // Scans the first tokens as an argument vector and the others as a list.
    static void compareScans(Cases& cases, const Strings& list, std::size_t first, bool allQueries) {
        const auto middle = list.begin() + static_cast<std::ptrdiff_t>(first);
        auto registry = newRegistry(GetParam());
        auto model = newModel(GetParam());
        std::vector<const char*> argv;
        for (auto token = list.begin(); token != middle; ++token) {
            argv.push_back(token->c_str());
        }
        registry.parseArgv(static_cast<int>(first), argv.data());
        model.parseTokens(Strings(list.begin(), middle));
        registry.parseTokens(Strings(middle, list.end()));
        model.parseTokens(Strings(middle, list.end()));
        Differences compare;
        compareQueries(registry, model, allQueries, compare);
        cases(compare.text.empty()
                  ? std::nullopt
                  : Difference(::testing::PrintToString(list) + ", the first " + std::to_string(first) +
                               " as an argument vector:\n" + compare.text));
    }
};

TEST_P(ExhaustiveRegistry, MatchesTheModelForEveryList) {
    Cases cases;
    forEvery(tokens, quickOrDeep(3, 4), cases,
             [&](const Strings& list) { compareScans(cases, list, 0, list.size() <= 2); });
}

TEST_P(ExhaustiveRegistry, MatchesTheModelForEveryPairOfScans) {
    Cases cases;
    forEvery(tokens, quickOrDeep(2, 3), cases, [&](const Strings& list) {
        for (std::size_t first = 0; first <= list.size(); ++first) {
            compareScans(cases, list, first, false);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Mode, ExhaustiveRegistry, ::testing::Range(0U, 16U),
                         [](const auto& instance) { return std::to_string(instance.param); });

}  // namespace
