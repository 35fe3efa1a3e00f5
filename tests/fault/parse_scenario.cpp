#include "fault/parse_scenario.h"

#include "support/arguments.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace {

using Texts = std::vector<std::string>;

// A text that no string object can hold without an allocation.
std::string longText(const std::string& text) {
    return text + " and so on far beyond the length that a string object has room for";
}

Texts operator+(Texts left, const Texts& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

std::string quoted(const Texts& arguments) {
    std::string text;
    for (const std::string& argument : arguments) {
        text += '"' + argument + "\" ";
    }
    return text;
}

Texts prepended() {
    return {"-tl", "DravikGigE:SocketDriver",        "-p",    longText("first=1"),
            "-o",  longText("output in a variable"), "-help", longText("SuiteInAVariable")};
}

Texts options() {
    return {"-tl=DravikGTC,DravikGigE:" + longText("WindowsFilterDriver"),
            "-p",
            longText("second=2"),
            "-camemu",
            longText("3"),
            "-packetdelay",
            longText("17"),
            "-packetsize",
            longText("1500"),
            "-socketbuffer=" + longText("2048"),
            "-o",
            longText("output"),
            "-x",
            longText("report"),
            "-w",
            longText("Suite"),
            "-aFlagThatNobodyHasRegistered",
            "-tdc_guid",
            longText("guid"),
            "-tdc_runname",
            longText("run name"),
            "-tdc_rundescription",
            longText("run description"),
            "-tdc_group",
            longText("group"),
            "-tdc_product",
            longText("product"),
            "-tdc_variant=" + longText("variant")};
}

Texts appended() {
    return {"-tdc_userid",
            longText("user"),
            "-tdc_vcsrevision",
            longText("revision"),
            "-tdc_dxml",
            longText("dxml"),
            "-tdc_vcsbranch",
            longText("branch"),
            "-testname",
            longText("test"),
            "-pcname",
            longText("computer"),
            "-osname",
            longText("system"),
            "-ostype",
            longText("kind of system"),
            "-bit",
            longText("64"),
            "-o",
            longText("output in the end"),
            "-tl",
            longText("DravikUsb"),
            longText("SuiteInTheEnd")};
}

Environment argumentVariables() {
    return {{"ORVEX_TEST_ARGS", quoted(prepended())}, {"_ORVEX_TEST_ARGS_", quoted(appended())}};
}

// With values that an earlier process has left.
Environment allVariables() {
    Environment environment = argumentVariables();
    for (const std::string& name : transportVariables() + laterVariables()) {
        environment[name] = longText("old value of " + name);
    }
    return environment;
}

Environment with(Environment environment, const std::string& name, const std::string& value) {
    environment[name] = value;
    return environment;
}

// The fields and variables in the order in which a parse changes them.
Texts namesOfEffects() {
    const Texts fields = {"applicationName", "helpRequested", "testPaths", "waitBeforeExit",
                          "outputFilename",  "xmlFilename",   "tlList"};
    const Texts record = {"fixedZero",
                          "guid",
                          "runName",
                          "runDescription",
                          "group",
                          "userId",
                          "product",
                          "vcsBranch",
                          "vcsRevision",
                          "secondVcsBranch",
                          "secondVcsRevision",
                          "tdcDravikXmlFilename",
                          "testName",
                          "pcName",
                          "osName",
                          "osType",
                          "bit",
                          "transportLayers"};
    Texts sessionVariables = laterVariables();
    const std::string producerPath = sessionVariables.front();
    sessionVariables.erase(sessionVariables.begin());
    return fields + transportVariables() + Texts{producerPath} + record + sessionVariables;
}

// The state before the field or variable changes.
struct Step {
    std::string name;
    Snapshot state;
};

// One step for each effect, test paths being appended one by one, and one after the last.
std::vector<Step> stepsOf(const ParseScenario& scenario, const Snapshot& differentAtTheEnd) {
    OrvexTestCommandLineParser parser;
    prepare(scenario, parser);
    Snapshot state = visibleState(parser);
    const std::size_t held = parser.getTestPaths().size();
    EXPECT_EQ(parse(parser, scenario.arguments), scenario.succeeds);
    const Snapshot end = changed(visibleState(parser), differentAtTheEnd);

    std::vector<Step> steps;
    for (const std::string& name : namesOfEffects()) {
        steps.push_back({name, state});
        if (name == "testPaths") {
            for (std::size_t i = held; i < parser.getTestPaths().size(); ++i) {
                state[name] += parser.getTestPaths()[i] + " ";
                steps.push_back({name, state});
            }
        } else if (const auto found = end.find(name); found != end.end()) {
            state[name] = found->second;
        }
        if (name == "fixedZero" && scenario.succeeds) {
            state["group"] = "orvex";
        }
    }
    steps.push_back({"", state});
    return steps;
}

std::vector<Snapshot> statesOfEffects(const ParseScenario& scenario, const Snapshot& differentAtTheEnd) {
    std::vector<Snapshot> states;
    for (const Step& step : stepsOf(scenario, differentAtTheEnd)) {
        states.push_back(step.state);
    }
    return states;
}

}  // namespace

std::vector<std::string> transportVariables() {
    return {"ORVEX_GTC_USE_EXTRA_TL",
            "ORVEX_DEVICE_FILTER",
            "ORVEX_GIGE_STREAMPARAMS",
            "ORVEX_GIGE_STREAM_GEVSCPS",
            "ORVEX_GIGE_STREAM_GEVSCPD",
            "ORVEX_CAMEMU",
            "TEST_PROPERTIES"};
}

std::vector<std::string> laterVariables() {
    return {"GENICAM_GENTL64_PATH", "TEST_SESSION_GUID", "TEST_SESSION_NAME",    "TEST_SESSION_DESCRIPTION",
            "TEST_SESSION_GROUP",   "TEST_PRODUCT",      "TEST_PRODUCT_VARIANT", "USER_UID",
            "VCS_REVISION",         "VCS_BRANCH",        "TRANSPORT_LAYER"};
}

ParseScenario everyEffect() {
    return {"EveryEffect",
            with(argumentVariables(), "GENICAM_GENTL64_PATH", longText("/old")),
            {},
            Texts{longText("./mytest")} + options(),
            prepended() + options() + appended(),
            true,
            true};
}

std::vector<ParseScenario> parseScenarios() {
    const Texts program = {longText("./mytest")};
    const Texts earlier = {longText("./earlier"),         "-tl",
                           longText("EarlierClass"),      "-o",
                           longText("earlier output"),    "-tdc_guid",
                           longText("earlier guid"),      "-bit",
                           longText("earlier word size"), longText("EarlierSuite")};
    const Texts badNumber = options() + Texts{"-camemu", "x3"};
    return {
        everyEffect(),
        {"EveryEffectOverOldValues", allVariables(), earlier, program + options(),
         prepended() + options() + appended(), true, true},
        {"ProgramNameAlone", {}, {}, program, {}, true, false},
        {"BadNumber",
         allVariables(),
         {},
         program + badNumber,
         prepended() + badNumber + appended(),
         false,
         false},
        {"OpenQuoteBeforeTheScan",
         {{"ORVEX_TEST_ARGS", longText("'open")}},
         {},
         program + options(),
         {},
         false,
         false},
        {"OpenQuoteAfterTheScan",
         {{"_ORVEX_TEST_ARGS_", longText("-w \"open")}},
         {},
         program + options(),
         options(),
         false,
         false},
    };
}

std::ostream& operator<<(std::ostream& stream, const ParseScenario& scenario) {
    return stream << scenario.name;
}

void prepare(const ParseScenario& scenario, OrvexTestCommandLineParser& parser) {
    writeEnvironment({});
    if (!scenario.earlier.empty()) {
        EXPECT_TRUE(parse(parser, scenario.earlier));
    }
    writeEnvironment(scenario.environment);
}

Snapshot visibleState(const OrvexTestCommandLineParser& parser) {
    return changed(changed(snapshotOf(parser), snapshotOf(parser.getTestRunInformation())),
                   readEnvironment());
}

Snapshot stateAfterLaterParse(OrvexTestCommandLineParser& parser) {
    const std::size_t held = parser.getTestPaths().size();
    writeEnvironment({});
    const bool result = parse(parser, {"later"});
    std::string newTestPaths;
    for (std::size_t i = held; i < parser.getTestPaths().size(); ++i) {
        newTestPaths += parser.getTestPaths()[i] + " ";
    }
    return changed(visibleState(parser),
                   {{"testPaths", newTestPaths}, {"result", result ? "true" : "false"}});
}

std::string differences(const Snapshot& expected, const Snapshot& actual) {
    std::string text;
    for (const auto& [name, value] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end() || found->second != value) {
            text.append("missing: ").append(name).append("=").append(value).append("\n");
        }
    }
    for (const auto& [name, value] : actual) {
        const auto found = expected.find(name);
        if (found == expected.end() || found->second != value) {
            text.append("surplus: ").append(name).append("=").append(value).append("\n");
        }
    }
    return text;
}

Snapshot stateBeforeEffect(const ParseScenario& scenario, const std::string& name) {
    const std::vector<Step> steps = stepsOf(scenario, {});
    const auto found =
        std::find_if(steps.begin(), steps.end(), [&](const Step& step) { return step.name == name; });
    return found->state;
}

Snapshot stateAfterAllEffects(const ParseScenario& scenario) {
    return statesOfEffects(scenario, {}).back();
}

Course::Course(std::vector<Snapshot> states) : line(std::move(states)) {}

bool Course::advanceTo(const Snapshot& state) {
    for (std::size_t i = position; i < line.size(); ++i) {
        if (line[i] == state) {
            position = i;
            return true;
        }
    }
    return false;
}

const Snapshot& Course::current() const {
    return line.at(position);
}

bool Course::isAtStart() const {
    return line.at(position) == line.front();
}

bool Course::isAtEnd() const {
    return line.at(position) == line.back();
}

Course courseOfEffects(const ParseScenario& scenario) {
    return Course(statesOfEffects(scenario, {}));
}

Course courseWithoutExpansion(const ParseScenario& scenario) {
    if (!scenario.needsProducerPath) {
        return Course({});
    }
    const std::string libraries =
        OrvexTestCommandLineParser::getApplicationDir() + "/Frameworks/orvex.framework/Libraries";
    return Course(
        statesOfEffects(scenario, {{"GENICAM_GENTL64_PATH", libraries + "/gentlproducer/gtl:" + libraries +
                                                                "/orvexCXP/bin:$(GENICAM_GENTL64_PATH)"}}));
}

Course courseOfScan(const ParseScenario& scenario) {
    std::vector<Snapshot> states;
    OrvexTestCommandLineParser nothingScanned;
    prepare(scenario, nothingScanned);
    states.push_back(stateAfterLaterParse(nothingScanned));
    for (std::size_t count = 0; count <= scenario.scanned.size(); ++count) {
        OrvexTestCommandLineParser parser;
        prepare(scenario, parser);
        // A flag that nobody asks for, so that the list is not empty.
        const Texts arguments(scenario.scanned.begin(),
                              scenario.scanned.begin() + static_cast<std::ptrdiff_t>(count));
        writeEnvironment({{"FIRST_ARGUMENTS", "-unobserved " + quoted(arguments)}});
        parser.ParseArgsFromEnvironmentVariable("FIRST_ARGUMENTS", scenario.arguments.front().c_str());
        states.push_back(stateAfterLaterParse(parser));
    }
    return Course(std::move(states));
}
