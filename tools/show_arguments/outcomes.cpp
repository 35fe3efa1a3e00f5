#include "outcomes.h"

#include "environment/split_string.h"
#include "quoting.h"

#include <fmt/format.h>
#include <algorithm>

namespace tool {
namespace {

constexpr std::string_view streamParameters = "ORVEX_GIGE_STREAMPARAMS";

// Flags are read without a value, all other options with one.
bool isRead(const Argument& argument) {
    return argument.option != nullptr && argument.option->kind != OptionKind::Unread &&
           (argument.option->kind == OptionKind::Flag) == (argument.kind == ArgumentKind::Flag);
}

bool keepsAll(OptionKind kind) {
    return kind == OptionKind::Flag || kind == OptionKind::MultiValue;
}

std::vector<Argument*> findReadArguments(Trace& trace, const TracedOption& option) {
    std::vector<Argument*> found;
    for (const std::size_t index : option.given) {
        if (isRead(trace.arguments[index])) {
            found.push_back(&trace.arguments[index]);
        }
    }
    return found;
}

std::string joinValues(const std::vector<Argument*>& arguments) {
    std::string joined;
    for (const Argument* argument : arguments) {
        joined += (argument == arguments.front() ? "" : ",") + argument->value;
    }
    return joined;
}

std::vector<std::string_view> findSets(const TracedOption& option, const Observation& seen) {
    const ToolOption& known = *option.option;
    std::vector<std::string_view> sets;
    if (option.value.empty() && known.kind != OptionKind::Flag) {
        return sets;
    }
    if (!known.accessor.empty()) {
        sets.push_back(known.accessor);
    }
    if (seen.succeeded) {
        sets.insert(sets.end(), known.fields.begin(), known.fields.end());
    }
    for (const std::string_view name : known.variables) {
        const Variable& variable = seen.variable(name);
        // The value begins with the driver. Without a driver, -socketbuffer has set it.
        const bool needsDriver = name == streamParameters && known.kind == OptionKind::MultiValue;
        const bool hasDriver = variable.after.value_or("").rfind("Type=", 0) == 0;
        if (isSet(variable) && (hasDriver || !needsDriver)) {
            sets.push_back(name);
        }
    }
    return sets;
}

// The first number that is bad, in the order in which a parse checks them.
const TracedOption* findRefused(const std::vector<TracedOption>& options) {
    for (const ToolOption& known : toolOptions()) {
        for (const TracedOption& option : options) {
            if (known.kind == OptionKind::Number && option.option == &known && !option.value.empty() &&
                !isUsableValue(known, option.value)) {
                return &option;
            }
        }
    }
    return nullptr;
}

Outcome outcomeOf(const TracedOption& option, bool isRefused) {
    if (option.option->kind == OptionKind::Flag) {
        return Outcome::Counted;
    }
    if (option.value.empty()) {
        return Outcome::Empty;
    }
    if (isRefused) {
        return Outcome::Refused;
    }
    if (option.sets.empty()) {
        return Outcome::NotUsed;
    }
    return option.option->kind == OptionKind::MultiValue ? Outcome::Collected : Outcome::Won;
}

void settle(const std::vector<Argument*>& arguments, const TracedOption& option, Outcome outcome) {
    const Argument& last = *arguments.back();
    for (Argument* argument : arguments) {
        argument->outcome = outcome;
        if (argument != &last && !keepsAll(option.option->kind) && outcome != Outcome::NotUsed) {
            argument->outcome = Outcome::Lost;
            argument->note = fmt::format("to the last value, from {}", last.source);
        } else if (outcome == Outcome::Empty) {
            argument->note = "as if not given";
        } else if (outcome == Outcome::Refused) {
            argument->note = "does not begin with a digit";
        }
    }
}

std::string explainLayer(const std::vector<std::string>& parts, const std::string& driver, bool isDriverSet) {
    const std::string deviceClass = fmt::format("class {}", plainOrQuoted(parts[0]));
    if (parts.size() == 1) {
        return deviceClass + ", no driver";
    }
    const std::string withDriver = fmt::format("{}, driver {}", deviceClass, plainOrQuoted(parts[1]));
    if (parts[0] != "DravikGigE") {
        return withDriver + " ignored";
    }
    if (parts[1] != driver) {
        return withDriver + " lost to the last in byte order";
    }
    return withDriver + (isDriverSet ? " taken" : " not used: the parse failed");
}

void explainTransportLayers(const std::vector<Argument*>& arguments, const std::string& value,
                            bool isDriverSet) {
    const std::string driver = findDriver(value);
    for (Argument* argument : arguments) {
        for (const std::vector<std::string>& parts : splitTransportLayers(argument->value)) {
            argument->note += argument->note.empty() ? "" : "; ";
            argument->note += explainLayer(parts, driver, isDriverSet);
        }
    }
}

}  // namespace

void decideOutcomes(Trace& trace, const Observation& seen) {
    if (findMalformed(trace) != nullptr) {
        return;
    }
    for (Argument& argument : trace.arguments) {
        argument.outcome = argument.kind == ArgumentKind::TestPath ? Outcome::Collected : Outcome::Ignored;
    }
    for (TracedOption& option : trace.options) {
        const std::vector<Argument*> arguments = findReadArguments(trace, option);
        if (!arguments.empty()) {
            option.value = keepsAll(option.option->kind) ? joinValues(arguments) : arguments.back()->value;
            option.sets = findSets(option, seen);
        }
    }
    const TracedOption* refused = seen.succeeded ? nullptr : findRefused(trace.options);
    for (const TracedOption& option : trace.options) {
        const std::vector<Argument*> arguments = findReadArguments(trace, option);
        if (arguments.empty()) {
            continue;
        }
        settle(arguments, option, outcomeOf(option, &option == refused));
        if (option.name == "tl") {
            explainTransportLayers(arguments, option.value, isSet(seen.variable(streamParameters)));
        }
    }
}

std::vector<std::vector<std::string>> splitTransportLayers(const std::string& value) {
    std::vector<std::string> entries;
    orvex::splitString(value.c_str(), ',', entries);
    std::vector<std::vector<std::string>> layers;
    for (const std::string& entry : entries) {
        std::vector<std::string> parts;
        if (orvex::splitString(entry.c_str(), ':', parts)) {
            layers.push_back(std::move(parts));
        }
    }
    return layers;
}

std::string findDriver(const std::string& transportLayers) {
    std::string driver;
    for (const std::vector<std::string>& parts : splitTransportLayers(transportLayers)) {
        if (parts.size() > 1 && parts[0] == "DravikGigE") {
            driver = std::max(driver, parts[1]);
        }
    }
    return driver;
}

}  // namespace tool
