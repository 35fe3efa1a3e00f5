// A parse that changes everything that a parse can change, and its effects, in order.

#ifndef ORVEX_TESTS_EVERY_EFFECT_H
#define ORVEX_TESTS_EVERY_EFFECT_H

#include "support/arguments.h"
#include "support/faults.h"
#include "support/known_options.h"
#include "support/parser_test.h"

#include <regex>
#include <string>
#include <vector>

// Replaces each "~" with 32 of them, so that every such string needs an allocation.
inline std::string lengthened(const std::string& text) {
    return std::regex_replace(text, std::regex("~"), std::string(32, '~'));
}

inline std::string shortened(const std::string& text) {
    return std::regex_replace(text, std::regex("~+"), "~");
}

inline Strings longWords(const std::string& text) {
    return words(lengthened(text));
}

// "-NAME VALUE " for each option but -tl that fills a field of the record; the value is "NAME~" unless it is
// given.
inline std::string recordOptions(const std::string& value = "") {
    std::string text;
    for (const KnownOption& option : knownOptions) {
        if (option.kind == OptionKind::Value && option.field != nullptr) {
            text += std::string("-") + option.name + " " +
                    (value.empty() ? option.name + std::string("~") : value) + " ";
        }
    }
    return text;
}

inline std::string numberFor(const KnownOption& option) {
    return std::string("7") + option.name + "~";
}

inline std::string numberOptions() {
    std::string text;
    for (const KnownOption& option : numbers()) {
        text += std::string("-") + option.name + " " + numberFor(option) + " ";
    }
    return text;
}

// The command line and the two argument variables

inline const Strings programName = longWords("app~");
inline const Strings options = longWords("-w -x xml~ Suite~ -tl DravikGTC,DravikGigE:Filter~ -p two~ " +
                                         numberOptions() + "-tdc_variant=tdc_variant~");
inline const std::string prepended = lengthened("-help First~ -o first~ -tl DravikGigE:Socket~ -p one~");
inline const std::string appended = lengthened(recordOptions() + "-o output~ Last~");

// The command line of an earlier parse. Its argv[0] is an option, so that the next parse sets the application
// name.
inline const Strings earlierCommandLine =
    words("-earlier -o old -x old -tdc_variant=old " + recordOptions("old"));

// The effects

struct Effect {
    std::string name;  // of a variable, an accessor or a field of the record
    std::string value;

    bool isVariable() const {
        return name[0] >= 'A' && name[0] <= 'Z';
    }
};

// The SDK is in /sdk.
inline const std::vector<Effect> everyEffect = [] {
    std::vector<Effect> effects = {
        {"applicationName", "app~"},
        {"helpRequested", "yes"},
        {"testPaths", "First~ "},
        {"testPaths", "First~ Suite~ "},
        {"testPaths", "First~ Suite~ Last~ "},
        {"waitBeforeExit", "yes"},
        {"outputFilename", "output~"},
        {"xmlFilename", "xml~"},
        {"tlList", "DravikGigE:Socket~,DravikGTC,DravikGigE:Filter~"},
        {"ORVEX_GTC_USE_EXTRA_TL", "1"},
        {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC||DeviceClass=DravikGigE"},
    };
    for (const KnownOption& option : numbers()) {
        const bool isSocketBuffer = option.name == std::string("socketbuffer");
        effects.push_back({option.sdkVariable,
                           (isSocketBuffer ? "Type=Socket~ SocketBufferSize=" : "") + numberFor(option)});
    }
    effects.insert(effects.end(), {
                                      {"TEST_PROPERTIES", "one~ two~"},
                                      {"GENICAM_GENTL64_PATH",
                                       "/sdk/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
                                       "/sdk/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/old"},
                                      {"group", "orvex"},
                                      {"fixedZero", "0"},
                                      {"guid", "tdc_guid~"},
                                      {"runName", "tdc_runname~"},
                                      {"runDescription", "tdc_rundescription~"},
                                      {"group", "tdc_group~"},
                                      {"userId", "tdc_userid~"},
                                      {"product", "tdc_product~"},
                                      {"vcsBranch", "tdc_vcsbranch~"},
                                      {"vcsRevision", "tdc_vcsrevision~"},
                                      {"secondVcsBranch", "tdc_vcsbranch~"},
                                      {"secondVcsRevision", "tdc_vcsrevision~"},
                                      {"tdcDravikXmlFilename", "tdc_dxml~"},
                                      {"testName", "testname~"},
                                      {"pcName", "pcname~"},
                                      {"osName", "osname~"},
                                      {"osType", "ostype~"},
                                      {"bit", "bit~"},
                                      {"transportLayers", "DravikGigE:Socket~,DravikGTC,DravikGigE:Filter~"},
                                  });
    for (const KnownOption& option : knownOptions) {
        if (option.sessionVariable != nullptr && option.kind != OptionKind::MultiValue) {
            effects.push_back({option.sessionVariable, std::string(option.name) + "~"});
        }
    }
    effects.push_back({"TRANSPORT_LAYER", "DravikGigE:Socket~ DravikGTC,DravikGigE:Filter~"});
    for (Effect& effect : effects) {
        effect.value = lengthened(effect.value);
    }
    return effects;
}();

// The variables that are set, in order.
inline Strings variables() {
    Strings names;
    for (const Effect& effect : everyEffect) {
        if (effect.isVariable()) {
            names.push_back(effect.name);
        }
    }
    return names;
}

// All calls that the parse makes.
inline Strings everyCall() {
    Strings calls = {"getenv ORVEX_TEST_ARGS", "getenv _ORVEX_TEST_ARGS_", "getenv ORVEX_GTC_USE_EXTRA_TL"};
    for (const Effect& effect : everyEffect) {
        if (effect.name == "GENICAM_GENTL64_PATH") {
            calls = calls + Strings{"dladdr", "realpath /p/q/../../../..", "getenv GENICAM_GENTL64_PATH"};
        }
        if (effect.isVariable()) {
            calls.push_back("setenv " + effect.name + "=" + effect.value);
        }
    }
    return calls;
}

// The first difference, or nothing

inline std::string firstDifference(const Strings& expected, const Strings& actual) {
    const auto at = [](const Strings& list, std::size_t i) {
        return i < list.size() ? list[i] : "(nothing)";
    };
    for (std::size_t i = 0; i < expected.size() || i < actual.size(); ++i) {
        if (at(expected, i) != at(actual, i)) {
            return shortened(at(actual, i) + " instead of " + at(expected, i));
        }
    }
    return "";
}

inline std::string firstDifference(const Snapshot& expected, const Snapshot& actual) {
    const auto valueIn = [](const Snapshot& state, const std::string& name) {
        const auto found = state.find(name);
        return found == state.end() ? "(undefined)" : found->second;
    };
    for (const auto& entry : changed(expected, actual)) {
        const std::string wanted = valueIn(expected, entry.first);
        const std::string now = valueIn(actual, entry.first);
        if (wanted != now) {
            return shortened(entry.first + ": " + now + " instead of " + wanted);
        }
    }
    return "";
}

// A test in which the SDK is in /sdk.
class EveryEffectTest : public CleanEnvironmentTest {
protected:
    // Compute the states before the test starts, because computing them changes the environment.
    EveryEffectTest() {
        statesOfEffects();
        statesOfScan();
    }

    // Fills a new parser and all variables with values that differ from those of the parse, so that a test
    // can tell whether each was replaced.
    static void prepare(OrvexTestCommandLineParser& parser) {
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, earlierCommandLine));
        Environment environment = {{"ORVEX_TEST_ARGS", prepended}, {"_ORVEX_TEST_ARGS_", appended}};
        for (const std::string& name : variables()) {
            environment[name] = "/old";
        }
        environment.erase("ORVEX_GTC_USE_EXTRA_TL");  // otherwise it would not be set
        writeEnvironment(environment);
    }

    // Everything that can be seen from outside: accessors, record and environment.
    static Snapshot stateOf(const OrvexTestCommandLineParser& parser) {
        return changed(snapshotOf(parser), readEnvironment());
    }

    // The state after one more parse in an empty environment, which shows what was scanned before; without
    // the test paths that the parser held already.
    static Snapshot stateAfterLaterParse(OrvexTestCommandLineParser& parser) {
        const std::size_t held = snapshotOf(parser).at("testPaths").size();
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, {"later"}));
        Snapshot state = stateOf(parser);
        state.at("testPaths").erase(0, held);
        return state;
    }

    // The state before each effect, and after all of them.
    static const std::vector<Snapshot>& statesOfEffects() {
        static const std::vector<Snapshot> states = [] {
            OrvexTestCommandLineParser parser;
            prepare(parser);
            std::vector<Snapshot> list = {stateOf(parser)};
            for (const Effect& effect : everyEffect) {
                list.push_back(changed(list.back(), {{effect.name, effect.value}}));
            }
            return list;
        }();
        return states;
    }

    // What stateAfterLaterParse returns for a parser that has scanned nothing, then only the program name,
    // then also one, two, three ... of the arguments of all sources.
    static const std::vector<Snapshot>& statesOfScan() {
        static const std::vector<Snapshot> states = [] {
            const Strings all = programName + words(prepended) + options + words(appended);
            std::vector<Snapshot> list;
            for (auto end = all.begin();; ++end) {
                OrvexTestCommandLineParser parser;
                writeEnvironment({});
                EXPECT_TRUE(parse(parser, earlierCommandLine + Strings(all.begin(), end)));
                list.push_back(stateAfterLaterParse(parser));
                if (end == all.end()) {
                    return list;
                }
            }
        }();
        return states;
    }

    const faults::With<const char*> libraryFile{faults::libraryFile, "/p/q/library"};
    const faults::With<const char*> resolvedPath{faults::resolvedPath, "/sdk/q"};
};

#endif
