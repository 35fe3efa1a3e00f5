#include "print.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tool {
namespace {

using Json = nlohmann::ordered_json;

// A string; or {"bytes": "61ff62"} when it is not UTF-8, which JSON cannot hold.
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

Json asJsonText(const std::optional<std::string>& text) {
    return text ? asJsonText(*text) : Json(nullptr);
}

// Maps each element to JSON.
template <typename Range, typename Function>
Json asList(const Range& range, Function function) {
    Json json = Json::array();
    for (const auto& element : range) {
        json.push_back(function(element));
    }
    return json;
}

Json tokensAsJson(const Argument& argument) {
    Json json = Json::array();
    for (const std::string& token : argument.tokens) {
        const bool isValue = &token != &argument.tokens.front();
        json.push_back({{"text", asJsonText(token)}, {"became", isValue ? "value" : nameOf(argument.kind)}});
        if (isOption(argument)) {
            json.back()["option"] = asJsonText(argument.name);
        }
    }
    return json;
}

Json sourceAsJson(const Source& source, const std::vector<Argument>& arguments) {
    Json json = {{"name", source.name}, {"state", nameOf(source.state)}, {"tokens", Json::array()}};
    for (const Argument& argument : arguments) {
        if (argument.source == source.name) {
            const Json tokens = tokensAsJson(argument);
            json["tokens"].insert(json["tokens"].end(), tokens.begin(), tokens.end());
        }
    }
    if (!source.message.empty()) {
        json["message"] = source.message;
    }
    return json;
}

Json givenAsJson(const Argument& argument) {
    const bool isFlag = argument.kind == ArgumentKind::Flag;
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

Json variablesAsJson(const Report& report) {
    Json json = Json::array();
    for (const Variable& variable : report.seen.variables) {
        if (variable.state != VariableState::Absent) {
            json.push_back({{"name", variable.name},
                            {"state", nameOf(variable.state)},
                            {"before", asJsonText(variable.before)},
                            {"after", asJsonText(variable.after)},
                            {"isDefault", isDefault(report, variable)}});
        }
    }
    return json;
}

Json directoryAsJson(const Producers::Directory& directory) {
    return {{"path", asJsonText(directory.path)}, {"exists", directory.exists}};
}

Json hintAsJson(const Hint& hint) {
    return {{"source", hint.source},
            {"argument", asJsonText(hint.argument)},
            {"message", hint.message},
            {"correction", hint.correction.empty() ? Json(nullptr) : Json(hint.correction)}};
}

}  // namespace

std::string asJson(const Report& report) {
    const std::vector<Argument>& arguments = report.trace.arguments;
    Json json = {{"succeeded", report.seen.succeeded},
                 {"reason", report.reason.empty() ? Json(nullptr) : Json(report.reason)}};
    for (const Accessor& accessor : report.seen.accessors) {
        const auto* text = std::get_if<std::string>(&accessor.value);
        json[std::string(accessor.name)] =
            text == nullptr ? Json(std::get<bool>(accessor.value)) : asJsonText(*text);
    }
    json["testPaths"] =
        asList(report.seen.testPaths, [](const std::string& path) { return asJsonText(path); });
    for (const Field& field : report.seen.record) {
        json["testRunInformation"][std::string(field.name)] = asJsonText(field.value);
    }
    json["environment"] = variablesAsJson(report);
    json["producers"] = nullptr;
    if (report.producers) {
        json["producers"] = {{"library", asJsonText(report.producers->library)},
                             {"directories", asList(report.producers->directories, directoryAsJson)}};
    }
    json["options"] = asList(report.trace.options,
                             [&](const TracedOption& option) { return optionAsJson(option, arguments); });
    json["testPathOrigins"] = Json::array();
    for (const Argument& argument : arguments) {
        if (argument.kind == ArgumentKind::TestPath) {
            json["testPathOrigins"].push_back(givenAsJson(argument));
        }
    }
    json["sources"] =
        asList(report.trace.sources, [&](const Source& source) { return sourceAsJson(source, arguments); });
    json["hints"] = asList(report.hints, hintAsJson);
    return json.dump(2) + '\n';
}

}  // namespace tool
