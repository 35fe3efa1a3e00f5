// Every short command line.

#include "differential/exhaustive.h"

namespace {

using namespace differential;
using Tokens = std::vector<std::string>;

// Every dash form, "=" form, number form and kind of option.
const Tokens vocabulary = {
    "",
    "a",
    "-",
    "--",
    "---",
    "-o",
    "--o",
    "---o",
    "-o=",
    "-o=b",
    "-tl",
    "--tl",
    "-tl=A",
    "-tl=",
    "-p",
    "-p=k=v",
    "-w",
    "-w=1",
    "-help",
    "-?",
    "-u",
    "-u=1",
    "-=",
    "--=x",
    "-5",
    "7",
    "-.5e1",
    "-packetsize",
    "-tdc_variant=V",
    "o=",
};

TEST(ExhaustiveTokens, EveryListAfterTheProgramName) {
    Cases cases;
    Scenario scenario;
    forEachSequence<Tokens>(vocabulary, quickOrDeep(3, 4), cases, [&](Tokens tokens) {
        tokens.insert(tokens.begin(), "app");
        scenario.calls = {narrow(std::move(tokens))};
        holdScenario(cases, scenario);
    });
}

TEST(ExhaustiveTokens, EveryListWithAnythingAsTheProgramName) {
    Cases cases;
    Scenario scenario;
    forEachSequence<Tokens>(vocabulary, quickOrDeep(3, 4), cases, [&](const Tokens& tokens) {
        scenario.calls = {cNarrow(tokens)};
        holdScenario(cases, scenario);
    });
}

std::string joined(const Tokens& tokens, std::size_t first, std::size_t end) {
    std::string text;
    for (std::size_t i = first; i < end; ++i) {
        text += tokens[i].empty() ? "''" : tokens[i];
        text += ' ';
    }
    return text;
}

TEST(ExhaustiveTokens, EveryListSpreadOverTheThreeSources) {
    Cases cases;
    Scenario scenario;
    forEachSequence<Tokens>(vocabulary, quickOrDeep(2, 3), cases, [&](const Tokens& tokens) {
        for (std::size_t first = 0; first <= tokens.size(); ++first) {
            for (std::size_t second = first; second <= tokens.size(); ++second) {
                scenario.environment["ORVEX_TEST_ARGS"] = joined(tokens, 0, first);
                scenario.environment["_ORVEX_TEST_ARGS_"] = joined(tokens, second, tokens.size());
                Tokens arguments(tokens.begin() + static_cast<std::ptrdiff_t>(first),
                                 tokens.begin() + static_cast<std::ptrdiff_t>(second));
                arguments.insert(arguments.begin(), "app");
                scenario.calls = {narrow(std::move(arguments))};
                holdScenario(cases, scenario);
            }
        }
    });
}

TEST(ExhaustiveTokens, EveryListSpreadOverTwoParses) {
    Cases cases;
    Scenario scenario;
    forEachSequence<Tokens>(vocabulary, quickOrDeep(2, 3), cases, [&](const Tokens& tokens) {
        for (std::size_t first = 0; first <= tokens.size(); ++first) {
            const auto middle = tokens.begin() + static_cast<std::ptrdiff_t>(first);
            Tokens before(tokens.begin(), middle);
            Tokens after(middle, tokens.end());
            before.insert(before.begin(), "app");
            after.insert(after.begin(), "other");
            scenario.calls = {narrow(std::move(before)), narrow(std::move(after))};
            holdScenario(cases, scenario);
        }
    });
}

// All names with a meaning, all names that the usage text shows, and two without any.
const Tokens names = {
    "camemu",
    "o",
    "packetdelay",
    "packetsize",
    "socketbuffer",
    "x",
    "testname",
    "pcname",
    "osname",
    "ostype",
    "bit",
    "tl",
    "p",
    "tdc_dxml",
    "tdc_guid",
    "tdc_runname",
    "tdc_rundescription",
    "tdc_group",
    "tdc_userid",
    "tdc_product",
    "tdc_vcsbranch",
    "tdc_vcsrevision",
    "tdc_variant",
    "tdc_name",
    "tdc_pcname",
    "tdc_osname",
    "?",
    "h",
    "H",
    "help",
    "w",
    "O",
    "u",
};

// The ways of giving an option.
const std::vector<Tokens (*)(const std::string&)> ways = {
    [](const std::string& name) {
        return Tokens{"-" + name, "1"};
    },
    [](const std::string& name) {
        return Tokens{"-" + name, "a"};
    },
    [](const std::string& name) {
        return Tokens{"-" + name, ""};
    },
    [](const std::string& name) { return Tokens{"--" + name + "=2"}; },
    [](const std::string& name) { return Tokens{"-" + name + "="}; },
    [](const std::string& name) { return Tokens{"-" + name}; },
    [](const std::string& name) {
        return Tokens{name, "1"};
    },
};

TEST(ExhaustiveTokens, EveryPairOfOptionsInOneAndInTwoParses) {
    Cases cases;
    Scenario scenario;
    // A value for every variable that may be set, so that one that is left alone shows.
    for (const char* variable : {"ORVEX_DEVICE_FILTER", "ORVEX_GIGE_STREAMPARAMS", "ORVEX_CAMEMU",
                                 "TEST_PROPERTIES", "TEST_SESSION_GUID", "TEST_PRODUCT", "VCS_BRANCH"}) {
        scenario.environment[variable] = "old";
    }
    const std::size_t firstWays = quickOrDeep(1, ways.size());
    for (std::size_t way = 0; way < firstWays; ++way) {
        for (const std::string& firstName : names) {
            for (const auto& secondWay : ways) {
                for (const std::string& secondName : names) {
                    if (!cases) {
                        return;
                    }
                    Tokens first = ways[way](firstName);
                    first.insert(first.begin(), "app");
                    Tokens second = secondWay(secondName);
                    Tokens both = first;
                    both.insert(both.end(), second.begin(), second.end());
                    second.insert(second.begin(), "app");
                    scenario.calls = {narrow(both)};
                    holdScenario(cases, scenario);
                    scenario.calls = {narrow(first), packed(second)};
                    holdScenario(cases, scenario);
                }
            }
        }
    }
}

// The texts that the C interface copies into slots of a fixed size.
TEST(ExhaustiveTokens, EveryLengthOfEveryText) {
    Cases cases;
    Scenario scenario;
    const std::size_t longest = quickOrDeep(258, 600);
    const std::size_t shortest = quickOrDeep(253, 0);
    for (const std::string& name : names) {
        for (std::size_t length = shortest; length <= longest && cases; ++length) {
            scenario.calls = {cNarrow({"app", "-" + name + "=" + std::string(length, '5')})};
            holdScenario(cases, scenario);
        }
    }
}

}  // namespace
