// A parse that changes everything that a parse can change, and these effects in their order.

#ifndef ORVEX_TESTS_EVERY_EFFECT_H
#define ORVEX_TESTS_EVERY_EFFECT_H

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/faults.h"
#include "support/parser_snapshot.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

using Texts = Strings;

// With so many "~" for each that no string holds the text without an allocation.
inline std::string lengthened(std::string text) {
    for (std::size_t i = text.find('~'); i != std::string::npos; i = text.find('~', i + 32)) {
        text.replace(i, 1, 32, '~');
    }
    return text;
}

inline Texts longWords(const std::string& text) {
    return words(lengthened(text));
}

// ---- The command line, and what is in the two variables

inline const Texts programName = longWords("app~");
inline const Texts options = longWords(
    "-w -x xml~ Suite~ -tl DravikGTC,DravikGigE:Filter~ -p two~ -socketbuffer 1~ -packetsize 2~ -packetdelay "
    "3~ "
    "-camemu 4~ -tdc_guid guid~ -tdc_runname name~ -tdc_rundescription description~ -tdc_group group~ "
    "-tdc_product product~ -tdc_variant=variant~");
inline const std::string prepended = lengthened("-help First~ -o first~ -tl DravikGigE:Socket~ -p one~");
inline const std::string appended = lengthened(
    "-tdc_userid user~ -tdc_vcsrevision revision~ -tdc_vcsbranch branch~ -tdc_dxml dravik~ -testname test~ "
    "-pcname computer~ -osname system~ -ostype type~ -bit bit~ -o output~ Last~");

// Of a parse before. Its program name is an option, so that the next parse names the program.
inline const Texts earlierCommandLine = longWords(
    "-earlier -o old -x old -tdc_guid old -tdc_runname old -tdc_rundescription old -tdc_group old "
    "-tdc_product old -tdc_variant=old -tdc_userid old -tdc_vcsrevision old -tdc_vcsbranch old -tdc_dxml old "
    "-testname old -pcname old -osname old -ostype old -bit old");

constexpr Form everyForm[] = {Form::Narrow, Form::Wide, Form::Packed};

inline void PrintTo(Form form, std::ostream* stream) {
    const char* const names[] = {"narrow", "wide", "packed"};
    *stream << names[static_cast<std::size_t>(form)];
}

// ---- The effects

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
        {"ORVEX_GIGE_STREAMPARAMS", "Type=Socket~ SocketBufferSize=1~"},
        {"ORVEX_GIGE_STREAM_GEVSCPS", "2~"},
        {"ORVEX_GIGE_STREAM_GEVSCPD", "3~"},
        {"ORVEX_CAMEMU", "4~"},
        {"TEST_PROPERTIES", "one~ two~"},
        {"GENICAM_GENTL64_PATH",
         "/sdk/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
         "/sdk/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/old"},
        {"group", "orvex"},
        {"fixedZero", "0"},
        {"guid", "guid~"},
        {"runName", "name~"},
        {"runDescription", "description~"},
        {"group", "group~"},
        {"userId", "user~"},
        {"product", "product~"},
        {"vcsBranch", "branch~"},
        {"vcsRevision", "revision~"},
        {"secondVcsBranch", "branch~"},
        {"secondVcsRevision", "revision~"},
        {"tdcDravikXmlFilename", "dravik~"},
        {"testName", "test~"},
        {"pcName", "computer~"},
        {"osName", "system~"},
        {"osType", "type~"},
        {"bit", "bit~"},
        {"transportLayers", "DravikGigE:Socket~,DravikGTC,DravikGigE:Filter~"},
        {"TEST_SESSION_GUID", "guid~"},
        {"TEST_SESSION_NAME", "name~"},
        {"TEST_SESSION_DESCRIPTION", "description~"},
        {"TEST_SESSION_GROUP", "group~"},
        {"TEST_PRODUCT", "product~"},
        {"TEST_PRODUCT_VARIANT", "variant~"},
        {"USER_UID", "user~"},
        {"VCS_REVISION", "revision~"},
        {"VCS_BRANCH", "branch~"},
        {"TRANSPORT_LAYER", "DravikGigE:Socket~ DravikGTC,DravikGigE:Filter~"},
    };
    for (Effect& effect : effects) {
        effect.value = lengthened(effect.value);
    }
    return effects;
}();

// The position of the first effect with this name.
inline std::size_t positionOf(const std::string& name) {
    return static_cast<std::size_t>(std::find_if(everyEffect.begin(), everyEffect.end(),
                                                 [&](const Effect& effect) { return effect.name == name; }) -
                                    everyEffect.begin());
}

// The variables that are set, from the first to the last named.
inline Texts variables(const std::string& first, const std::string& last) {
    Texts names;
    for (std::size_t i = positionOf(first); i <= positionOf(last); ++i) {
        if (everyEffect[i].isVariable()) {
            names.push_back(everyEffect[i].name);
        }
    }
    return names;
}

// The calls of the whole parse.
inline Texts everyCall() {
    Texts calls = {"getenv ORVEX_TEST_ARGS", "getenv _ORVEX_TEST_ARGS_", "getenv ORVEX_GTC_USE_EXTRA_TL"};
    for (const Effect& effect : everyEffect) {
        if (effect.name == "GENICAM_GENTL64_PATH") {
            calls = calls + Texts{"dladdr", "realpath /p/q/../../../..", "getenv GENICAM_GENTL64_PATH"};
        }
        if (effect.isVariable()) {
            calls.push_back("setenv " + effect.name + "=" + effect.value);
        }
    }
    return calls;
}

// ---- Comparison, for messages that can be read

inline std::string firstDifference(const Texts& expected, const Texts& actual) {
    const auto at = [](const Texts& list, std::size_t i) { return i < list.size() ? list[i] : "(nothing)"; };
    for (std::size_t i = 0; i < expected.size() || i < actual.size(); ++i) {
        if (at(expected, i) != at(actual, i)) {
            return at(actual, i) + " instead of " + at(expected, i);
        }
    }
    return "";
}

inline std::string firstDifference(const Snapshot& expected, const Snapshot& actual) {
    const auto lines = [](const Snapshot& state, const Snapshot& other) {
        Texts list;
        for (const auto& [name, value] : changed(other, state)) {
            const auto found = state.find(name);
            list.push_back(name + "=" + (found == state.end() ? "(undefined)" : found->second));
        }
        return list;
    };
    return firstDifference(lines(expected, actual), lines(actual, expected));
}

// A test in which the SDK is in /sdk.
class EveryEffectTest : public CleanEnvironmentTest {
protected:
    // Not in the middle of a test: what the states are taken from changes the environment.
    EveryEffectTest() {
        statesOfEffects();
        statesOfScan();
    }

    // Lets a new parser parse a command line with other values, and gives all variables other values, so that
    // each value is one that can be kept or lost.
    static void prepare(OrvexTestCommandLineParser& parser) {
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, earlierCommandLine));
        Environment environment = {{"ORVEX_TEST_ARGS", prepended}, {"_ORVEX_TEST_ARGS_", appended}};
        for (const Effect& effect : everyEffect) {
            // This one is only set where it is not defined.
            if (effect.isVariable() && effect.name != "ORVEX_GTC_USE_EXTRA_TL") {
                environment[effect.name] = "/old";
            }
        }
        writeEnvironment(environment);
    }

    // Everything that can be seen from outside: accessors, record and environment.
    static Snapshot stateOf(const OrvexTestCommandLineParser& parser) {
        return changed(snapshotOf(parser), readEnvironment());
    }

    // The state after one more parse, which shows what has been scanned before. Its environment is empty, and
    // test paths that the parser held already are left out.
    static Snapshot stateAfterLaterParse(OrvexTestCommandLineParser& parser, const Texts& more = {}) {
        const std::size_t held = snapshotOf(parser).at("testPaths").size();
        writeEnvironment({});
        EXPECT_TRUE(parse(parser, Texts{"later"} + more));
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

    // What stateAfterLaterParse gives for a parser that has scanned nothing, the program name, and one, two,
    // three ... of the arguments of all sources.
    static const std::vector<Snapshot>& statesOfScan() {
        static const std::vector<Snapshot> states = [] {
            const Texts all = programName + words(prepended) + options + words(appended);
            std::vector<Snapshot> list;
            for (auto end = all.begin();; ++end) {
                OrvexTestCommandLineParser parser;
                writeEnvironment({});
                EXPECT_TRUE(parse(parser, earlierCommandLine + Texts(all.begin(), end)));
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
