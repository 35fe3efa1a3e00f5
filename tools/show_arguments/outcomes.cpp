#include "environment/split_string.h"
#include "options.h"
#include "parser/option_scanner.h"
#include "quoting.h"
#include "report.h"

#include <fmt/format.h>
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {
namespace {

constexpr std::string_view streamParameters = "ORVEX_GIGE_STREAMPARAMS";

bool keepsAll(const ToolOption& option) {
    return option.kind == ToolOptionKind::Flag || option.kind == ToolOptionKind::MultiValue;
}

// A parse reads flags without a value, and all other options with one.
bool isRead(const Argument& argument) {
    const ToolOption* option = argument.option;
    return option != nullptr && option->kind != ToolOptionKind::Unread &&
           (option->kind == ToolOptionKind::Flag) == (argument.kind == orvex::Finding::Flag);
}

// Fills in what a parse reads.
void findValue(TracedOption& option, const std::vector<Argument>& arguments) {
    for (const std::size_t index : option.given) {
        const Argument& argument = arguments[index];
        if (!isRead(argument)) {
            continue;
        }
        if (!keepsAll(*argument.option)) {
            option.value.clear();
        } else if (!option.read.empty()) {
            option.value += ',';
        }
        option.value += argument.value;
        option.read.push_back(index);
    }
}

bool isSet(std::string_view name, std::string_view option, const Observation& seen) {
    const auto hasName = [name](const auto& item) { return item.name == name; };
    if (std::any_of(seen.accessors.begin(), seen.accessors.end(), hasName)) {
        return true;
    }
    if (std::any_of(seen.record.begin(), seen.record.end(), hasName)) {
        return seen.succeeded;
    }
    // Unless the variable begins with a driver, -socketbuffer has set it.
    const bool needsDriver = option == "tl" && name == streamParameters;
    const Variable* variable = seen.findSet(name);
    return variable != nullptr && (!needsDriver || variable->after.rfind("Type=", 0) == 0);
}

Outcome outcomeOf(const ToolOption& option, const TracedOption& traced) {
    if (option.kind == ToolOptionKind::Flag) {
        return Outcome::Counted;
    }
    if (traced.value.empty()) {
        return Outcome::Empty;
    }
    if (!isUsableValue(option, traced.value)) {
        return Outcome::Refused;
    }
    if (traced.sets.empty()) {
        return Outcome::NotUsed;
    }
    return option.kind == ToolOptionKind::MultiValue ? Outcome::Collected : Outcome::Won;
}

void settle(Trace& trace, const TracedOption& option, Outcome outcome) {
    const Argument& last = trace.arguments[option.read.back()];
    const bool isLastUsed = !keepsAll(*last.option) && outcome != Outcome::NotUsed;
    for (const std::size_t index : option.read) {
        Argument& argument = trace.arguments[index];
        argument.outcome = outcome;
        if (isLastUsed && &argument != &last) {
            argument.outcome = Outcome::Lost;
            argument.note = fmt::format("to the last value, from {}", last.source);
        } else if (outcome == Outcome::Empty) {
            argument.note = "as if not given";
        } else if (outcome == Outcome::Refused) {
            argument.note = "does not begin with a digit";
        }
    }
}

std::string explainLayer(const Layer& layer, const std::string& driver, bool isDriverSet) {
    const std::string deviceClass = fmt::format("class {}", plainOrQuoted(layer.deviceClass));
    if (!layer.driver) {
        return deviceClass + ", no driver";
    }
    const std::string withDriver = fmt::format("{}, driver {}", deviceClass, plainOrQuoted(*layer.driver));
    if (layer.deviceClass != "DravikGigE") {
        return withDriver + " ignored";
    }
    if (layer.driver != driver) {
        return withDriver + " lost to the last in byte order";
    }
    return withDriver + (isDriverSet ? " used" : " not used: the parse failed");
}

void explainTransportLayers(Trace& trace, const TracedOption& option, bool isDriverSet) {
    const std::string driver = findDriver(option.value);
    for (const std::size_t index : option.read) {
        std::string& note = trace.arguments[index].note;
        for (const Layer& layer : splitTransportLayers(trace.arguments[index].value)) {
            note += note.empty() ? "" : "; ";
            note += explainLayer(layer, driver, isDriverSet);
        }
    }
}

}  // namespace

void decideOutcomes(Trace& trace, const Observation& seen) {
    if (trace.findMalformed() != nullptr) {
        return;
    }
    for (Argument& argument : trace.arguments) {
        argument.outcome = argument.isTestPath ? Outcome::Collected : Outcome::Ignored;
    }
    bool isRefused = false;
    // The order of this table decides which of several bad numbers ends the parse.
    for (const ToolOption& option : toolOptions()) {
        const auto traced =
            std::find_if(trace.options.begin(), trace.options.end(),
                         [&](const TracedOption& other) { return other.name == option.name; });
        if (traced != trace.options.end()) {
            findValue(*traced, trace.arguments);
        }
        if (traced == trace.options.end() || traced->read.empty()) {
            continue;
        }
        for (const std::string_view name : option.sets) {
            if (isSet(name, option.name, seen) &&
                (option.kind == ToolOptionKind::Flag || !traced->value.empty())) {
                traced->sets.push_back(name);
            }
        }
        const Outcome outcome = outcomeOf(option, *traced);
        settle(trace, *traced, isRefused && outcome == Outcome::Refused ? Outcome::NotUsed : outcome);
        isRefused = isRefused || outcome == Outcome::Refused;
    }
    if (const TracedOption* layers = trace.findOption("tl")) {
        explainTransportLayers(trace, *layers, seen.findSet(streamParameters) != nullptr);
    }
}

std::vector<Layer> splitTransportLayers(const std::string& value) {
    std::vector<std::string> entries;
    orvex::splitString(value.c_str(), ',', entries);
    std::vector<Layer> layers;
    for (const std::string& entry : entries) {
        std::vector<std::string> parts;
        if (orvex::splitString(entry.c_str(), ':', parts)) {
            const bool hasDriver = parts.size() > 1;
            layers.push_back({entry, parts[0], hasDriver ? std::optional(parts[1]) : std::nullopt});
        }
    }
    return layers;
}

std::string findDriver(const std::string& transportLayers) {
    std::string driver;
    for (const Layer& layer : splitTransportLayers(transportLayers)) {
        if (layer.deviceClass == "DravikGigE") {
            driver = std::max(driver, layer.driver.value_or(""));
        }
    }
    return driver;
}

}  // namespace tool
