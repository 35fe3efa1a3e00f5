// Every short command line, argument variable, transport-layer list and packed block, and random scenarios.

#include "differential/exhaustive.h"
#include "differential/scenario.h"
#include "model/model.h"
#include "support/known_options.h"

#include <cstddef>
#include <cstdint>
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

model::Environment everyVariable(const std::string& value) {
    model::Environment environment;
    for (const char* name : knownVariables) {
        environment[name] = value;
    }
    return environment;
}

// All ways to write an option or a number, and every kind of option.
const Strings tokens = words(
    "'' a - -- --- -o --o ---o -o= -o=b -tl --tl -tl=A -tl= -p -p=k=v -w -w=1 -help -? -u -u=1 -= --=x "
    "-5 7 -.5e1 -packetsize -tdc_variant=V o=");

TEST(ExhaustiveTokens, MatchTheModelInEveryListWithAndWithoutAProgramName) {
    Cases cases;
    forEvery(tokens, quickOrDeep(3, 4), cases, [&](const Strings& list) {
        cases(Scenario{{narrow(list)}});
        cases(Scenario{{Call{Form::NarrowC, list}}});
    });
}

TEST(ExhaustiveTokens, MatchTheModelHoweverAListIsSpreadOverSourcesAndParses) {
    Cases cases;
    forEvery(tokens, quickOrDeep(2, 3), cases, [&](const Strings& list) {
        for (std::size_t first = 0; first <= list.size(); ++first) {
            const Strings beginning = part(list, 0, first);
            cases(Scenario{
                {narrow(beginning), Call{Form::Narrow, Strings{"other"} + part(list, first, list.size())}}});
            for (std::size_t second = first; second <= list.size(); ++second) {
                cases(Scenario{{narrow(part(list, first, second))},
                               {{"ORVEX_TEST_ARGS", joined(beginning)},
                                {"_ORVEX_TEST_ARGS_", joined(part(list, second, list.size()))}}});
            }
        }
    });
}

// All option names, those that only the usage text mentions, and two unknown names.
const Strings names = optionNames() + words("tdc_name tdc_pcname tdc_osname O u");

// The ways to give an option; "@" stands for its name.
const Strings ways = words("-@ 1|-@ a|-@ ''|--@=2|-@=|-@|@ 1", '|');

Strings given(std::string way, const std::string& name) {
    way.replace(way.find('@'), 1, name);
    return words(way);
}

TEST(ExhaustiveTokens, MatchTheModelForEveryPairOfOptionsInOneAndTwoParses) {
    Cases cases;
    Scenario scenario;
    // An old value shows which variables are set.
    scenario.environment = everyVariable("old");
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

// One byte of each kind that the tokenizer distinguishes, and a dash. The program name is an option, to see
// how often it is scanned.
TEST(ExhaustiveVariables, MatchTheModelForEveryValue) {
    Cases cases;
    for (const char* variable : {"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_", "MY_ARGS"}) {
        forEvery(std::string(" \t\"'\\-\n"), quickOrDeep(4, 6), cases, [&](const std::string& text) {
            cases(Scenario{{{Form::Variable, {"MY_ARGS", "app"}}, {Form::Narrow, {"-tl=A", "-o", "b"}}},
                           {{variable, text}}});
        });
    }
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

TEST(ExhaustiveTransport, MatchesTheModelForEveryListInOneAndSeveralOptions) {
    Cases cases;
    forEvery(transportLayers(), quickOrDeep(2, 4), cases, [&](const Strings& entries) {
        std::string list;
        Strings arguments = words("-socketbuffer 2048");
        for (const std::string& entry : entries) {
            list += entry + ",";
            arguments = arguments + Strings{"-tl", entry};
        }
        cases(Scenario{{narrow({"-tl", list}), narrow({})}});
        cases(Scenario{{narrow({"-tl", list.substr(0, list.rfind(','))})}});
        cases(Scenario{{narrow(arguments)}});
    });
}

TEST(ExhaustiveTransport, MatchesTheModelForEveryMixOfNumbers) {
    const Strings values = words("''|0|9x|x|/|:|-5| 5|5", '|');
    const std::vector<KnownOption> options = numbers();
    Cases cases;
    for (const std::string& layer : words("'' DravikUsb DravikGigE:SocketDriver DravikGTC")) {
        for (const model::Environment& environment : {model::Environment(), everyVariable("old")}) {
            forEvery(part(values, 0, quickOrDeep(6, values.size())), options.size(), cases,
                     [&](const Strings& chosen) {
                         Strings arguments = {"-tl=" + layer, "-p=k=v"};
                         for (std::size_t i = 0; i < chosen.size(); ++i) {
                             arguments.push_back("-" + std::string(options[i].name) + "=" + chosen[i]);
                         }
                         cases(Scenario{{narrow(arguments)}, environment});
                     });
        }
    }
}

TEST(ExhaustiveTransport, MatchesTheModelForEverySetOfVariablesThatCannotBeSet) {
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

// Each argument is a null pointer, empty, plain, several bytes long in UTF-8, or not convertible.
TEST(ExhaustiveWide, MatchesTheModelForEveryVectorAndCount) {
    const std::vector<WideArgument> items = {
        std::nullopt, U"", U"-w", U"\u00E9", U"\u20AC\U0001F600", std::u32string{0x110000}};
    Cases cases;
    forEvery(items, quickOrDeep(3, 4), cases, [&](const std::vector<WideArgument>& arguments) {
        for (int count = -1; count <= static_cast<int>(arguments.size()); ++count) {
            cases(Scenario{{{Form::Wide, {}, arguments, count}, {Form::WideC, {}, arguments, count}}});
        }
    });
}

TEST(ExhaustiveWide, MatchesTheModelForEveryPackedBlockAndCount) {
    Cases cases;
    // The NULs separate the arguments.
    forEvery(std::string("\0-wo5", 5), quickOrDeep(4, 6), cases, [&](const std::string& block) {
        for (int count = -1; count <= static_cast<int>(block.size()) + 1; ++count) {
            cases(Scenario{{Call{Form::Packed, {block}, {}, count}}});
        }
    });
}

TEST(RandomScenarios, BehaveLikeTheModel) {
    Cases cases;
    for (std::uint64_t seed = 1; seed <= quickOrDeep(20000, 200000) && cases; ++seed) {
        cases(scenarioFromSeed(seed));
    }
}

}  // namespace
