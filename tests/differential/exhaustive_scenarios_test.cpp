// Every short command line, argument variable, transport-layer list and packed block, and random scenarios.

#include "differential/exhaustive.h"
#include "differential/scenario.h"
#include "model/model.h"
#include "support/known_options.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace differential;

Strings part(const Strings& list, std::size_t first, std::size_t end) {
    return Strings(list.begin() + static_cast<std::ptrdiff_t>(first),
                   list.begin() + static_cast<std::ptrdiff_t>(end));
}

Call narrow(const Strings& arguments) {
    return {Form::Narrow, Strings{"app"} + arguments};
}

std::string joined(const Strings& list) {
    std::string text;
    for (const std::string& item : list) {
        text += (item.empty() ? "''" : item) + " ";
    }
    return text;
}

// All ways to write an option or a number, and every kind of option.
const Strings tokens = words(
    "'' a - -- --- -o --o ---o -o= -o=b -tl --tl -tl=A -tl= -p -p=k=v -w -w=1 -help -? -u -u=1 -= --=x "
    "-5 7 -.5e1 -packetsize -tdc_variant=V o=");

TEST(ExhaustiveTokens, EveryListAfterTheProgramName) {
    Cases cases;
    forEvery(tokens, quickOrDeep(3, 4), cases, [&](const Strings& list) { cases(Scenario{{narrow(list)}}); });
}

TEST(ExhaustiveTokens, EveryListWithAnythingAsTheProgramName) {
    Cases cases;
    forEvery(tokens, quickOrDeep(3, 4), cases, [&](const Strings& list) {
        cases(Scenario{{Call{Form::NarrowC, list}}});
    });
}

TEST(ExhaustiveTokens, EveryListSpreadOverTheThreeSources) {
    Cases cases;
    forEvery(tokens, quickOrDeep(2, 3), cases, [&](const Strings& list) {
        for (std::size_t first = 0; first <= list.size(); ++first) {
            for (std::size_t second = first; second <= list.size(); ++second) {
                cases(Scenario{{narrow(part(list, first, second))},
                               {{"ORVEX_TEST_ARGS", joined(part(list, 0, first))},
                                {"_ORVEX_TEST_ARGS_", joined(part(list, second, list.size()))}}});
            }
        }
    });
}

TEST(ExhaustiveTokens, EveryListSpreadOverTwoParses) {
    Cases cases;
    forEvery(tokens, quickOrDeep(2, 3), cases, [&](const Strings& list) {
        for (std::size_t first = 0; first <= list.size(); ++first) {
            cases(Scenario{{narrow(part(list, 0, first)),
                            Call{Form::Narrow, Strings{"other"} + part(list, first, list.size())}}});
        }
    });
}

// Also the names that only the usage text has, and two that nothing has.
const Strings names = optionNames() + words("tdc_name tdc_pcname tdc_osname O u");

// The ways of giving an option, each with its name in the place of the @.
const Strings ways = words("-@ 1|-@ a|-@ ''|--@=2|-@=|-@|@ 1", '|');

Strings given(std::string way, const std::string& name) {
    way.replace(way.find('@'), 1, name);
    return words(way);
}

TEST(ExhaustiveTokens, EveryPairOfOptionsInOneAndInTwoParses) {
    Cases cases;
    Scenario scenario;
    // An old value for variables that may be set, to see which ones are.
    for (const std::string& name :
         words("ORVEX_DEVICE_FILTER ORVEX_GIGE_STREAMPARAMS ORVEX_CAMEMU TEST_PROPERTIES "
               "TEST_SESSION_GUID TEST_PRODUCT VCS_BRANCH")) {
        scenario.environment[name] = "old";
    }
    for (const std::string& firstWay : part(ways, 0, quickOrDeep(1, ways.size()))) {
        for (const std::string& firstName : names) {
            for (const std::string& secondWay : ways) {
                for (const std::string& secondName : names) {
                    const Strings first = given(firstWay, firstName);
                    const Strings second = given(secondWay, secondName);
                    scenario.calls = {narrow(first + second)};
                    cases(scenario);
                    scenario.calls = {narrow(first), Call{Form::Packed, Strings{"app"} + second}};
                    cases(scenario);
                }
            }
        }
    }
}

// The C interface copies these into slots of a fixed size.
TEST(ExhaustiveTokens, EveryLengthOfEveryValue) {
    Cases cases;
    for (const std::string& name : names) {
        for (std::size_t length = quickOrDeep(253, 0); length <= quickOrDeep(258, 600); ++length) {
            cases(Scenario{{Call{Form::NarrowC, {"app", "-" + name + "=" + std::string(length, '5')}}}});
        }
    }
}

// One byte of each kind that the tokenizer distinguishes, and one that matters elsewhere.
void compareEveryValue(const char* variable, const std::string& classes, std::size_t maximum,
                       const std::vector<Call>& calls) {
    Cases cases;
    Scenario scenario;
    scenario.calls = calls;
    forEvery(classes, maximum, cases, [&](const std::string& text) {
        scenario.environment[variable] = text;
        cases(scenario);
    });
}

// The program name is an option, to see how often it is scanned.
TEST(ExhaustiveVariables, EveryValueBeforeTheCommandLine) {
    compareEveryValue("ORVEX_TEST_ARGS", " \t\"'\\a\n", quickOrDeep(5, 7),
                      {{Form::Narrow, {"-tl=A", "-o", "b"}}});
}

TEST(ExhaustiveVariables, EveryValueAfterTheCommandLine) {
    compareEveryValue("_ORVEX_TEST_ARGS_", " \t\"'\\-\xFF", quickOrDeep(5, 7), {narrow({"-o", "b"})});
}

TEST(ExhaustiveVariables, EveryValueOfAVariableOfTheCaller) {
    compareEveryValue("MY_ARGS", " \t\"'\\a\n", quickOrDeep(4, 6),
                      {Call{Form::Variable, {"MY_ARGS", "app"}}, narrow({"-o", "b"})});
}

Strings transportLayers() {
    Strings entries;
    for (const std::string& deviceClass : words("DravikGigE DravikGTC DravikUsb dravikgige ''")) {
        for (const std::string& driver : words("'' : :SocketDriver :WindowsFilterDriver :A:B")) {
            entries.push_back(deviceClass + driver);
        }
    }
    return entries;
}

TEST(ExhaustiveTransport, EveryListInOneOption) {
    Cases cases;
    forEvery(transportLayers(), quickOrDeep(2, 4), cases, [&](const Strings& entries) {
        std::string list;
        for (const std::string& entry : entries) {
            list += entry + ",";
        }
        // With a comma at the end, and without it.
        cases(Scenario{{narrow({"-tl", list})}});
        if (!list.empty()) {
            list.pop_back();
            cases(Scenario{{narrow({"-tl", list}), narrow({})}});
        }
    });
}

TEST(ExhaustiveTransport, EveryListInOptionsOfTheirOwn) {
    Cases cases;
    forEvery(transportLayers(), quickOrDeep(2, 4), cases, [&](const Strings& entries) {
        Strings arguments = words("-socketbuffer 2048");
        for (const std::string& entry : entries) {
            arguments.insert(arguments.end(), {"-tl", entry});
        }
        cases(Scenario{{narrow(arguments)}});
    });
}

TEST(ExhaustiveTransport, EveryMixOfNumbers) {
    const Strings texts = words("''|0|9x|x|/|:|-5| 5|5", '|');
    Strings options;
    for (const KnownOption& option : numbers()) {
        options.push_back(std::string("-") + option.name + "=");
    }
    model::Environment allSet;
    for (const char* name : knownVariables) {
        allSet[name] = "old";
    }
    allSet["ORVEX_GTC_USE_EXTRA_TL"] = "";
    Cases cases;
    for (const std::string& layer : words("'' DravikUsb DravikGigE:SocketDriver DravikGTC")) {
        for (const model::Environment& environment : {model::Environment(), allSet}) {
            forEvery(part(texts, 0, quickOrDeep(6, texts.size())), options.size(), cases,
                     [&](const Strings& values) {
                         Strings arguments = {"-tl=" + layer, "-p=k=v"};
                         for (std::size_t i = 0; i < values.size(); ++i) {
                             arguments.push_back(options[i] + values[i]);
                         }
                         cases(Scenario{{narrow(arguments)}, environment});
                     });
        }
    }
}

TEST(ExhaustiveTransport, EverySetOfVariablesThatCannotBeSet) {
    const std::size_t sets = std::size_t{1} << std::size(knownVariables);
    Cases cases;
    Scenario scenario;
    Strings arguments = words("-tl=DravikGTC,DravikGigE:A");
    for (const std::string& name : optionNames()) {
        arguments.push_back("-" + name + "=1");
    }
    scenario.calls = {narrow(arguments)};
    // In the quick suite, sets that differ in many variables from one to the next.
    for (std::size_t bits = 0; bits < sets && cases; bits += quickOrDeep(61, 1)) {
        scenario.refused.clear();
        for (std::size_t i = 0; i < std::size(knownVariables); ++i) {
            if ((bits >> i & 1) != 0) {
                scenario.refused.insert(knownVariables[i]);
            }
        }
        cases(scenario);
    }
}

constexpr std::uint32_t firstInvalid = 0x110000;

TEST(ExhaustiveWide, EveryCodePointNearABoundary) {
    Cases cases;
    for (const std::uint32_t boundary : {0x0U, 0x80U, 0x800U, 0xD800U, 0xE000U, 0x10000U, firstInvalid,
                                         0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        for (std::uint32_t distance = 0; distance < 32; ++distance) {
            const auto c = static_cast<char32_t>(boundary + distance - 16);
            for (const std::u32string& text : {std::u32string{c}, {U'a', c}, {c, U'b', c}}) {
                cases(Scenario{{Call{Form::Wide, {}, {text}}, Call{Form::WideC, {}, {U"app", text}},
                                Call{Form::Wide, {}, {U"app", U"-o", text, U"-x"}}}});
            }
        }
    }
}

// Each argument a null pointer, empty, plain, two bytes long in UTF-8, or not convertible.
TEST(ExhaustiveWide, EveryVectorAndCount) {
    const std::vector<WideArgument> items = {std::nullopt, U"", U"-w", U"\u00E9",
                                             std::u32string{firstInvalid}};
    Cases cases;
    forEvery(items, quickOrDeep(3, 4), cases, [&](const std::vector<WideArgument>& arguments) {
        for (int count = -1; count <= static_cast<int>(arguments.size()); ++count) {
            cases(Scenario{{{Form::Wide, {}, arguments, count}, {Form::WideC, {}, arguments, count}}});
        }
    });
}

TEST(ExhaustiveWide, EveryPackedBlockAndCount) {
    Cases cases;
    // The NULs separate the arguments.
    forEvery(std::string("\0-wo5", 5), quickOrDeep(4, 6), cases, [&](const std::string& block) {
        for (int count = -1; count <= static_cast<int>(block.size()) + 1; ++count) {
            cases(Scenario{{Call{Form::Packed, {block}, {}, count}}});
        }
    });
}

TEST(ExhaustiveWide, EveryCountWithoutArguments) {
    Cases cases;
    for (const int count : {INT_MIN, -2, -1, 0, 1, 2, INT_MAX}) {
        for (const Form form : {Form::Narrow, Form::Wide, Form::Packed, Form::NarrowC, Form::WideC}) {
            for (const bool isNull : {false, true}) {
                const Call counted = {form, {}, {}, count, isNull};
                cases(Scenario{{counted, narrow({}), counted}, {{"ORVEX_TEST_ARGS", "-o a"}}});
            }
        }
    }
}

std::uint64_t numberFromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

// DIFFERENTIAL_SEED and DIFFERENTIAL_CASES choose the seed of the first and how many; each further one has
// the next.
TEST(RandomScenarios, BehaveAsTheModel) {
    const std::uint64_t count = numberFromEnvironment("DIFFERENTIAL_CASES", quickOrDeep(20000, 200000));
    const std::uint64_t first = numberFromEnvironment("DIFFERENTIAL_SEED", 1);
    Cases cases;
    for (std::uint64_t seed = first; seed < first + count && cases; ++seed) {
        SCOPED_TRACE("DIFFERENTIAL_SEED=" + std::to_string(seed));
        cases(scenarioFromSeed(seed));
    }
}

}  // namespace
