// Every short transport-layer list, every mix of numeric texts, every set of variables that cannot be set.

#include "differential/exhaustive.h"
#include "model/model.h"

namespace {

using namespace differential;
using Tokens = std::vector<std::string>;

Tokens transportLayers() {
    Tokens entries;
    for (const char* deviceClass : {"DravikGigE", "DravikGTC", "DravikUsb", "dravikgige", ""}) {
        for (const char* driver : {"", ":", ":SocketDriver", ":WindowsFilterDriver", ":A:B"}) {
            entries.push_back(std::string(deviceClass) + driver);
        }
    }
    return entries;
}

TEST(ExhaustiveTransport, EveryListInOneOption) {
    Cases cases;
    Scenario scenario;
    forEachSequence<Tokens>(transportLayers(), quickOrDeep(2, 4), cases, [&](const Tokens& entries) {
        std::string list;
        for (const std::string& entry : entries) {
            list += entry + ",";
        }
        // With a comma at the end, and without it.
        scenario.calls = {narrow({"app", "-tl", list})};
        holdScenario(cases, scenario);
        if (!list.empty()) {
            list.pop_back();
            scenario.calls = {narrow({"app", "-tl", list}), narrow({"app"})};
            holdScenario(cases, scenario);
        }
    });
}

TEST(ExhaustiveTransport, EveryListInOptionsOfTheirOwn) {
    Cases cases;
    Scenario scenario;
    forEachSequence<Tokens>(transportLayers(), quickOrDeep(2, 4), cases, [&](const Tokens& entries) {
        Tokens arguments = {"app", "-socketbuffer", "2048"};
        for (const std::string& entry : entries) {
            arguments.insert(arguments.end(), {"-tl", entry});
        }
        scenario.calls = {narrow(std::move(arguments))};
        holdScenario(cases, scenario);
    });
}

// The texts of one option after the other, in every combination.
TEST(ExhaustiveTransport, EveryMixOfNumericTexts) {
    const Tokens texts = {"", "0", "9x", "x", "/", ":", "-5", " 5", "5"};
    const std::size_t numberOfTexts = quickOrDeep(6, texts.size());
    const Tokens shortened(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(numberOfTexts));
    const Tokens transport = {"", "DravikUsb", "DravikGigE:SocketDriver", "DravikGTC"};
    const Tokens options = {"-socketbuffer=", "-packetsize=", "-packetdelay=", "-camemu="};
    Cases cases;
    for (const std::string& tl : transport) {
        for (const bool isSet : {false, true}) {
            Scenario scenario;
            if (isSet) {
                for (const std::string& name : model::writtenVariables()) {
                    scenario.environment[name] = name == "ORVEX_GTC_USE_EXTRA_TL" ? "" : "old";
                }
            }
            forEachSequence<Tokens>(shortened, options.size(), cases, [&](const Tokens& values) {
                Tokens arguments = {"app", "-tl=" + tl, "-p=k=v"};
                for (std::size_t i = 0; i < values.size(); ++i) {
                    arguments.push_back(options[i] + values[i]);
                }
                scenario.calls = {narrow(std::move(arguments))};
                holdScenario(cases, scenario);
            });
        }
    }
}

// A command line that sets every variable.
const Tokens everything = {"app",
                           "-tl=DravikGTC,DravikGigE:A",
                           "-socketbuffer=1",
                           "-packetsize=2",
                           "-packetdelay=3",
                           "-camemu=4",
                           "-p=k=v",
                           "-tdc_guid=a",
                           "-tdc_runname=b",
                           "-tdc_rundescription=c",
                           "-tdc_group=d",
                           "-tdc_product=e",
                           "-tdc_variant=f",
                           "-tdc_userid=g",
                           "-tdc_vcsrevision=h",
                           "-tdc_vcsbranch=i"};

TEST(ExhaustiveTransport, EverySetOfVariablesThatCannotBeSet) {
    const Tokens& names = model::writtenVariables();
    const std::size_t numberOfSets = std::size_t{1} << names.size();
    // In the quick suite, those sets whose bits make a number with few others near it.
    const std::size_t step = quickOrDeep(61, 1);
    Cases cases;
    Scenario scenario;
    scenario.calls = {narrow(everything)};
    for (std::size_t bits = 0; bits < numberOfSets && cases; bits += step) {
        scenario.refused.clear();
        for (std::size_t i = 0; i < names.size(); ++i) {
            if ((bits >> i & 1) != 0) {
                scenario.refused.insert(names[i]);
            }
        }
        holdScenario(cases, scenario);
    }
}

TEST(ExhaustiveTransport, EveryVariableThatCannotBeSetOnItsOwn) {
    Cases cases;
    for (const std::string& name : model::writtenVariables()) {
        Scenario scenario;
        scenario.refused = {name};
        scenario.calls = {narrow(everything), narrow({"app", "-w"})};
        holdScenario(cases, scenario);
    }
}

}  // namespace
