#include "parser/option_scanner.h"
#include "report.h"

#include <fmt/format.h>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

namespace tool {
namespace {

using Json = nlohmann::ordered_json;

// A string; or {"bytes": "61ff62"} if it is not UTF-8, which JSON cannot hold.
Json asJsonText(const std::string& text) {
    Json json = text;
    try {
        json.dump();
    } catch (const Json::type_error&) {
        std::string digits;
        for (const unsigned char byte : text) {
            digits += fmt::format("{:02x}", byte);
        }
        json = {{"bytes", digits}};
    }
    return json;
}

Json asJsonValue(const Value& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text == nullptr ? Json(std::get<bool>(value)) : asJsonText(*text);
}

// A list of what the function makes of each element.
template <typename Element, typename Function>
Json asList(const std::vector<Element>& elements, Function function) {
    Json json = Json::array();
    for (const Element& element : elements) {
        json.push_back(function(element));
    }
    return json;
}

const char* kindOf(const Argument& argument) {
    switch (argument.kind) {
        case orvex::Finding::DroppedProgramName:
            return "dropped program name";
        case orvex::Finding::Flag:
            return "flag";
        case orvex::Finding::Value:
            return "option";
        case orvex::Finding::InlineValue:
            return "option with value";
        case orvex::Finding::Positional:
            break;
    }
    return argument.isTestPath ? "test path" : "program name";
}

Json tokenAsJson(const Argument& argument, std::size_t index) {
    Json json = {{"text", asJsonText(argument.tokens[index])},
                 {"became", index == 0 ? kindOf(argument) : "value"}};
    if (isOption(argument)) {
        json["option"] = asJsonText(argument.name);
    }
    return json;
}

Json sourceAsJson(const Source& source, const std::vector<Argument>& arguments) {
    Json json = {{"name", source.name}, {"state", nameOf(source.state)}, {"tokens", Json::array()}};
    for (const Argument& argument : arguments) {
        for (std::size_t i = 0; argument.source == source.name && i < argument.tokens.size(); ++i) {
            json["tokens"].push_back(tokenAsJson(argument, i));
        }
    }
    if (!source.message.empty()) {
        json["message"] = source.message;
    }
    return json;
}

Json givenAsJson(const Argument& argument) {
    const bool isFlag = argument.kind == orvex::Finding::Flag;
    Json json = {{"source", argument.source},
                 {"value", isFlag ? Json(nullptr) : asJsonText(argument.value)},
                 {"outcome", nameOf(argument.outcome)}};
    if (!argument.note.empty()) {
        json["note"] = argument.note;
    }
    return json;
}

Json optionAsJson(const TracedOption& option, const std::vector<Argument>& arguments) {
    const auto given = [&](std::size_t index) { return givenAsJson(arguments[index]); };
    return {{"name", asJsonText(option.name)}, {"sets", option.sets}, {"given", asList(option.given, given)}};
}

Json variableAsJson(const Variable& variable, bool isDefault) {
    return {{"name", variable.name},
            {"state", nameOf(variable.state)},
            {"before", variable.before ? asJsonText(*variable.before) : Json(nullptr)},
            {"after", asJsonText(variable.after)},
            {"isDefault", isDefault}};
}

Json directoryAsJson(const Producers::Directory& directory) {
    return {{"path", asJsonText(directory.path)}, {"exists", directory.exists}};
}

Json producersAsJson(const Producers& producers) {
    return {{"library", asJsonText(producers.library)},
            {"directories", asList(producers.directories, directoryAsJson)}};
}

Json hintAsJson(const Hint& hint) {
    return {{"source", hint.source},
            {"argument", asJsonText(hint.argument)},
            {"message", hint.message},
            {"correction", hint.correction.empty() ? Json(nullptr) : Json(hint.correction)}};
}

}  // namespace

std::string asJson(const Report& report) {
    const Observation& seen = report.seen;
    const std::vector<Argument>& arguments = report.trace.arguments;
    Json json = {{"succeeded", seen.succeeded},
                 {"reason", report.reason.empty() ? Json(nullptr) : Json(report.reason)}};
    for (const Result& accessor : seen.accessors) {
        json[std::string(accessor.name)] = asJsonValue(accessor.value);
    }
    json["testPaths"] = asList(seen.testPaths, asJsonText);
    for (const Result& field : seen.record) {
        json["testRunInformation"][std::string(field.name)] = asJsonValue(field.value);
    }
    json["environment"] = asList(seen.variables, [&](const Variable& variable) {
        return variableAsJson(variable, isDefault(report, variable));
    });
    json["producers"] = report.producers ? producersAsJson(*report.producers) : Json(nullptr);
    json["options"] = asList(report.trace.options,
                             [&](const TracedOption& option) { return optionAsJson(option, arguments); });
    json["testPathOrigins"] = Json::array();
    for (const Argument& argument : arguments) {
        if (argument.isTestPath) {
            json["testPathOrigins"].push_back(givenAsJson(argument));
        }
    }
    json["sources"] =
        asList(report.trace.sources, [&](const Source& source) { return sourceAsJson(source, arguments); });
    json["hints"] = asList(report.hints, hintAsJson);
    return json.dump(2) + '\n';
}

}  // namespace tool
