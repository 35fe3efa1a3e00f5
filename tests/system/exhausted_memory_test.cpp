#include "system/order_of_effects_test.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

// Longer than what a string holds without an allocation.
std::string longText(const std::string& text) {
    return text + " of more than thirty-two bytes in all";
}

// One effect of a parse: the accessor, variable or field that changes, and to what. The state before an
// effect that needs memory is what a parse leaves that finds none.
struct Effect {
    std::string name;
    std::string value;
    bool needsMemory;
};

// Far more allocations than a parse makes: where the loops over them end even if nothing succeeds.
constexpr std::size_t enough = 10000;

// In the order in which they happen.
std::vector<Effect> effectsInOrder() {
    return {
        {"get applicationName", longText("app"), true},
        {"get helpRequested", "yes", false},
        {"get testPaths", longText("path") + " ", true},
        {"get waitBeforeExit", "yes", false},
        {"get outputFilename", longText("out"), true},
        {"get xmlFilename", longText("xml"), true},
        {"get tlList", longText("DravikGigE:driver"), true},
        {"set ORVEX_GTC_USE_EXTRA_TL", "1", true},
        {"set ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE", false},
        {"set ORVEX_GIGE_STREAMPARAMS", "Type=" + longText("driver") + " SocketBufferSize=" + longText("1"),
         false},
        {"set ORVEX_GIGE_STREAM_GEVSCPS", longText("2"), false},
        {"set ORVEX_GIGE_STREAM_GEVSCPD", longText("3"), false},
        {"set ORVEX_CAMEMU", longText("4"), false},
        {"set TEST_PROPERTIES", longText("property"), false},
        {"field group", "orvex", false},
        {"field fixedZero", "0", false},
        {"field guid", longText("guid"), true},
        {"field runName", longText("run name"), true},
        {"field runDescription", longText("description"), true},
        {"field group", longText("group"), true},
        {"field userId", longText("user"), true},
        {"field product", longText("product"), true},
        {"field vcsBranch", longText("branch"), true},
        {"field vcsRevision", longText("revision"), true},
        {"field secondVcsBranch", longText("branch"), true},
        {"field secondVcsRevision", longText("revision"), true},
        {"field tdcDravikXmlFilename", longText("dravik"), true},
        {"field testName", longText("test"), true},
        {"field pcName", longText("computer"), true},
        {"field osName", longText("system"), true},
        {"field osType", longText("type"), true},
        {"field bit", longText("bit"), true},
        {"field transportLayers", longText("DravikGigE:driver"), true},
        {"set TEST_SESSION_GUID", longText("guid"), false},
        {"set TEST_SESSION_NAME", longText("run name"), false},
        {"set TEST_SESSION_DESCRIPTION", longText("description"), false},
        {"set TEST_SESSION_GROUP", longText("group"), false},
        {"set TEST_PRODUCT", longText("product"), false},
        {"set TEST_PRODUCT_VARIANT", longText("variant"), false},
        {"set USER_UID", longText("user"), false},
        {"set VCS_REVISION", longText("revision"), false},
        {"set VCS_BRANCH", longText("branch"), false},
        {"set TRANSPORT_LAYER", longText("DravikGigE:driver"), true},
    };
}

std::vector<std::string> commandLine() {
    return {longText("app"),
            longText("path"),
            "-h",
            "-w",
            "-o",
            longText("out"),
            "-x",
            longText("xml"),
            "-tl",
            longText("DravikGigE:driver"),
            "-socketbuffer",
            longText("1"),
            "-packetsize",
            longText("2"),
            "-packetdelay",
            longText("3"),
            "-camemu",
            longText("4"),
            "-p",
            longText("property"),
            "-tdc_guid",
            longText("guid"),
            "-tdc_runname",
            longText("run name"),
            "-tdc_rundescription",
            longText("description"),
            "-tdc_group",
            longText("group"),
            "-tdc_userid",
            longText("user"),
            "-tdc_product",
            longText("product"),
            "-tdc_vcsbranch",
            longText("branch"),
            "-tdc_vcsrevision",
            longText("revision"),
            "-tdc_dxml",
            longText("dravik"),
            "-tdc_variant=" + longText("variant"),
            "-testname",
            longText("test"),
            "-pcname",
            longText("computer"),
            "-osname",
            longText("system"),
            "-ostype",
            longText("type"),
            "-bit",
            longText("bit")};
}

// Accessors, fields and environment in one.
Snapshot wholeState(const OrvexTestCommandLineParser& parser) {
    Snapshot state;
    for (const auto& [name, text] : snapshotOf(parser)) {
        state["get " + name] = text;
    }
    for (const auto& [name, text] : snapshotOf(parser.getTestRunInformation())) {
        state["field " + name] = text;
    }
    for (const auto& [name, text] : readEnvironment()) {
        state["set " + name] = text;
    }
    return state;
}

// The states that a parse goes through, the first being that before any effect.
std::vector<Snapshot> statesInOrder(const Snapshot& before) {
    std::vector<Snapshot> states = {before};
    for (const Effect& effect : effectsInOrder()) {
        states.push_back(changed(states.back(), {{effect.name, effect.value}}));
    }
    return states;
}

// The positions of those states that are left when the next effect finds no memory.
std::set<std::size_t> statesBeforeAnAllocation() {
    std::set<std::size_t> positions;
    const std::vector<Effect> effects = effectsInOrder();
    for (std::size_t i = 0; i < effects.size(); ++i) {
        if (effects[i].needsMemory) {
            positions.insert(i);
        }
    }
    return positions;
}

// Where the state stands in the list from a position on, or the length of the list.
std::size_t positionFrom(std::size_t start, const std::vector<Snapshot>& states, const Snapshot& state) {
    std::size_t position = start;
    while (position < states.size() && states[position] != state) {
        ++position;
    }
    return position;
}

class ExhaustedMemory : public OrderOfEffectsTest {
protected:
    ExhaustedMemory() {
        interposition().isRecording = false;
    }

    struct Outcome {
        bool hasFailed;  // whether there was an allocation to fail
        bool result;
        Snapshot state;
        Snapshot stateAfterSecondParse;
    };

    // What a parse leaves when the allocation with this index fails, and a second parse after it.
    static Outcome outcomeOfFailure(std::size_t index) {
        writeEnvironment(environmentBefore);
        OrvexTestCommandLineParser fresh;
        Arguments arguments(commandLine());
        allocation::failAt(index, allocation::Failure::badAlloc);
        const bool result = fresh.Parse(arguments.argc(), arguments.argv());
        const bool hasFailed = allocation::stopFailing();
        const Snapshot state = wholeState(fresh);
        parse(fresh, {longText("app"), "-tdc_guid", "second", "-packetsize", "1500"});
        return {hasFailed, result, state, wholeState(fresh)};
    }

    // The outcomes of all failures, and last the one without.
    static std::vector<Outcome> outcomesOfAllFailures() {
        std::vector<Outcome> outcomes = {outcomeOfFailure(0)};
        while (outcomes.back().hasFailed && outcomes.size() < enough) {
            outcomes.push_back(outcomeOfFailure(outcomes.size()));
        }
        return outcomes;
    }

    // The result of a parse, the producer path and the group that it leaves.
    using ProducerOutcome = std::tuple<bool, std::string, std::string>;

    // With the allocation of this index after the answer of realpath failing.
    static ProducerOutcome producerOutcomeOfFailure(std::size_t index) {
        writeEnvironment(environmentBefore);
        OrvexTestCommandLineParser fresh;
        Arguments arguments({"app", "-tl", "DravikGTC"});
        interposition().failingAllocationAfterRealpath = index;
        const bool result = fresh.Parse(arguments.argc(), arguments.argv());
        allocation::stopFailing();
        return {result, get("GENICAM_GENTL64_PATH"), fresh.getTestRunInformation().group};
    }
};

}  // namespace

TEST_F(ExhaustedMemory, EveryAllocationThatFailsLeavesOneOfTheStatesInTheirOrder) {
    const std::vector<Snapshot> states = statesInOrder(wholeState(parser));
    std::set<std::size_t> seen;
    std::size_t position = 0;
    for (const Outcome& outcome : outcomesOfAllFailures()) {
        EXPECT_NE(outcome.result, outcome.hasFailed);
        position = positionFrom(position, states, outcome.state);
        ASSERT_LT(position, states.size()) << ::testing::PrintToString(outcome.state);
        seen.insert(position);
    }
    EXPECT_EQ(position, states.size() - 1);
    EXPECT_THAT(seen, ::testing::IsSupersetOf(statesBeforeAnAllocation()));
}

TEST_F(ExhaustedMemory, SecondParseAfterEachAllocationThatFailsSucceeds) {
    for (const Outcome& outcome : outcomesOfAllFailures()) {
        EXPECT_THAT(outcome.stateAfterSecondParse,
                    ::testing::IsSupersetOf(Snapshot{{"get applicationName", longText("app")},
                                                     {"set ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                                                     {"field guid", "second"},
                                                     {"field fixedZero", "0"},
                                                     {"set TEST_SESSION_GUID", "second"}}));
    }
}

// A failure before the expansion ends the parse; one within it leaves the reference in the variable and
// does not.
TEST_F(ExhaustedMemory, ProducerPathIsExportedWithItsReferenceWhenTheExpansionFails) {
    const std::string longDirectory = "/" + longText("directory");
    const std::string libraries = longDirectory + "/Frameworks/orvex.framework/Libraries";
    const std::string directories = libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:";
    interposition().resolvedPath = longDirectory + "/q";

    std::vector<ProducerOutcome> outcomes = {producerOutcomeOfFailure(0)};
    while (std::get<1>(outcomes.back()) != directories + "/x/gtl" && outcomes.size() < enough) {
        outcomes.push_back(producerOutcomeOfFailure(outcomes.size()));
    }
    outcomes.pop_back();
    outcomes.erase(std::unique(outcomes.begin(), outcomes.end()), outcomes.end());
    EXPECT_EQ(outcomes,
              (std::vector<ProducerOutcome>{{false, "/x/gtl", ""},
                                            {true, directories + "$(GENICAM_GENTL64_PATH)", "orvex"}}));
    EXPECT_EQ(interposition().resolvedPathsFreed, interposition().resolvedPathsGiven);
}

TEST_F(ExhaustedMemory, ResolvedPathIsReleasedWhenItCannotBeCopied) {
    interposition().resolvedPath = "/" + longText("directory") + "/q";
    interposition().failingAllocationAfterRealpath = 0;
    EXPECT_THROW(OrvexTestCommandLineParser::getApplicationDir(), std::bad_alloc);
    EXPECT_EQ(interposition().resolvedPathsGiven, 1);
    EXPECT_EQ(interposition().resolvedPathsFreed, 1);
}

TEST_F(ExhaustedMemory, ResolvedPathIsReleasedWhenTheErrorCannotBeBuilt) {
    interposition().resolvedPath = "nowhere";
    interposition().failingAllocationAfterRealpath = 0;
    EXPECT_THROW(OrvexTestCommandLineParser::getApplicationDir(), std::exception);
    EXPECT_EQ(interposition().resolvedPathsGiven, 1);
    EXPECT_EQ(interposition().resolvedPathsFreed, 1);
}
