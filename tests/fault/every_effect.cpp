#include "fault/every_effect.h"

#include <algorithm>
#include <sstream>

namespace {

const char* const sdkEntries =
    "/sdk/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
    "/sdk/Frameworks/orvex.framework/Libraries/orvexCXP/bin:";

std::string lengthened(std::string text) {
    for (std::size_t i = text.find('~'); i != std::string::npos; i = text.find('~', i + 32)) {
        text.replace(i, 1, 32, '~');
    }
    return text;
}

const char* const prependedArguments = "-help First~ -o first~ -tl DravikGigE:Socket~ -p one~";
const char* const appendedArguments =
    "-tdc_userid user~ -tdc_vcsrevision revision~ -tdc_vcsbranch branch~ -tdc_dxml dravik~ -testname test~ "
    "-pcname computer~ -osname system~ -ostype type~ -bit bit~ -o output~ Last~";

// Its program name is an option, so that the next parse names the program.
const char* const earlierCommandLine =
    "-earlier -o old -x old -tdc_guid old -tdc_runname old -tdc_rundescription old -tdc_group old "
    "-tdc_product old -tdc_variant=old -tdc_userid old -tdc_vcsrevision old -tdc_vcsbranch old -tdc_dxml old "
    "-testname old -pcname old -osname old -ostype old -bit old";

std::vector<std::string> operator+(std::vector<std::string> left, const std::vector<std::string>& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

}  // namespace

const Environment argumentVariables = {{"ORVEX_TEST_ARGS", lengthened(prependedArguments)},
                                       {"_ORVEX_TEST_ARGS_", lengthened(appendedArguments)}};

std::vector<std::string> commandLine() {
    return longWords(
        "app~ -w -x xml~ Suite~ -tl DravikGTC,DravikGigE:Filter~ -p two~ -socketbuffer 1~ -packetsize 2~ "
        "-packetdelay 3~ -camemu 4~ -tdc_guid guid~ -tdc_runname name~ -tdc_rundescription description~ "
        "-tdc_group group~ -tdc_product product~ -tdc_variant=variant~");
}

const std::vector<Effect>& everyEffect() {
    static const std::vector<Effect> effects = [] {
        std::vector<Effect> list = {
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
            {"GENICAM_GENTL64_PATH", sdkEntries + std::string("/old")},
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
        for (Effect& effect : list) {
            effect.value = lengthened(effect.value);
        }
        return list;
    }();
    return effects;
}

bool Effect::isVariable() const {
    return name[0] >= 'A' && name[0] <= 'Z';
}

std::size_t positionOf(const std::string& name) {
    const std::vector<Effect>& effects = everyEffect();
    const auto found = std::find_if(effects.begin(), effects.end(),
                                    [&](const Effect& effect) { return effect.name == name; });
    return static_cast<std::size_t>(found - effects.begin());
}

std::vector<std::string> variables(const std::string& first, const std::string& last) {
    std::vector<std::string> names;
    for (std::size_t i = positionOf(first); i <= positionOf(last); ++i) {
        if (everyEffect()[i].isVariable()) {
            names.push_back(everyEffect()[i].name);
        }
    }
    return names;
}

std::vector<std::string> longWords(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(lengthened(word));
    }
    return words;
}

void PrintTo(Form form, std::ostream* stream) {
    *stream << (form == Form::Narrow ? "narrow" : form == Form::Wide ? "wide" : "packed");
}

FormedArguments::FormedArguments(Form form, const std::vector<std::string>& texts)
    : form(form), narrow(texts) {
    for (const std::string& text : texts) {
        wide.emplace_back(text.begin(), text.end());
        packed += text + '\0';
    }
    for (std::wstring& text : wide) {
        widePointers.push_back(text.data());
    }
}

bool FormedArguments::parse(OrvexTestCommandLineParser& parser) {
    return form == Form::Wide     ? parser.Parse(narrow.argc(), widePointers.data())
           : form == Form::Packed ? parser.Parse(narrow.argc(), packed.data())
                                  : parser.Parse(narrow.argc(), narrow.argv());
}

Snapshot stateOf(const OrvexTestCommandLineParser& parser) {
    return changed(changed(snapshotOf(parser), snapshotOf(parser.getTestRunInformation())),
                   readEnvironment());
}

void EveryEffectTest::prepare(OrvexTestCommandLineParser& parser) {
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, longWords(earlierCommandLine)));
    Environment environment = argumentVariables;
    for (const Effect& effect : everyEffect()) {
        // This one is only set where it is not defined.
        if (effect.isVariable() && effect.name != "ORVEX_GTC_USE_EXTRA_TL") {
            environment[effect.name] = "/old";
        }
    }
    writeEnvironment(environment);
}

const std::vector<Snapshot>& EveryEffectTest::statesOfEffects() {
    static const std::vector<Snapshot> states = [] {
        OrvexTestCommandLineParser parser;
        prepare(parser);
        std::vector<Snapshot> list = {stateOf(parser)};
        for (const Effect& effect : everyEffect()) {
            list.push_back(changed(list.back(), {{effect.name, effect.value}}));
        }
        return list;
    }();
    return states;
}

const std::vector<Snapshot>& EveryEffectTest::statesOfScan() {
    static const std::vector<Snapshot> states = [] {
        const std::vector<std::string> options = commandLine();
        std::vector<std::string> scanned = longWords(earlierCommandLine);
        const auto stateAfterScan = [&scanned] {
            OrvexTestCommandLineParser parser;
            writeEnvironment({});
            EXPECT_TRUE(parse(parser, scanned));
            return stateAfterLaterParse(parser);
        };
        std::vector<Snapshot> list = {stateAfterScan()};
        for (const std::string& argument : std::vector<std::string>{options.front()} +
                                               longWords(prependedArguments) +
                                               std::vector<std::string>(options.begin() + 1, options.end()) +
                                               longWords(appendedArguments)) {
            scanned.push_back(argument);
            list.push_back(stateAfterScan());
        }
        return list;
    }();
    return states;
}

Snapshot EveryEffectTest::stateAfterLaterParse(OrvexTestCommandLineParser& parser, const std::string& more) {
    const std::size_t held = snapshotOf(parser).at("testPaths").size();
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, longWords("later " + more)));
    Snapshot state = stateOf(parser);
    state.at("testPaths").erase(0, held);
    return state;
}

std::vector<std::string> EveryEffectTest::everyCall() {
    std::vector<std::string> calls = {"getenv ORVEX_TEST_ARGS", "getenv _ORVEX_TEST_ARGS_",
                                      "getenv ORVEX_GTC_USE_EXTRA_TL"};
    for (const Effect& effect : everyEffect()) {
        if (effect.name == "GENICAM_GENTL64_PATH") {
            calls.insert(calls.end(), {"dladdr", "realpath /p/q/../../../..", "getenv GENICAM_GENTL64_PATH"});
        }
        if (effect.isVariable()) {
            calls.push_back("setenv " + effect.name + "=" + effect.value);
        }
    }
    return calls;
}

std::string firstDifference(const std::vector<std::string>& expected,
                            const std::vector<std::string>& actual) {
    const auto at = [](const std::vector<std::string>& list, std::size_t i) {
        return i < list.size() ? list[i] : "(nothing)";
    };
    for (std::size_t i = 0; i < expected.size() || i < actual.size(); ++i) {
        if (at(expected, i) != at(actual, i)) {
            return at(actual, i) + " instead of " + at(expected, i);
        }
    }
    return "";
}

std::string differences(const Snapshot& expected, const Snapshot& actual) {
    std::string text;
    for (const auto& [name, value] : expected) {
        const auto found = actual.find(name);
        const std::string other = found == actual.end() ? "(undefined)" : found->second;
        if (other != value) {
            text += name + " is " + other + " instead of " + value + "\n";
        }
    }
    for (const auto& [name, value] : actual) {
        if (expected.find(name) == expected.end()) {
            text += name + " is " + value + " instead of undefined\n";
        }
    }
    return text;
}
