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

Json asJsonText(const std::vector<std::string>& texts) {
    Json json = Json::array();
    for (const std::string& text : texts) {
        json.push_back(asJsonText(text));
    }
    return json;
}

// The role of a token of the argument; the second one is always a value.
const char* roleOf(const Argument& argument, bool isFirst) {
    switch (argument.kind) {
        case ArgumentKind::ProgramName:
            return "program name";
        case ArgumentKind::DroppedProgramName:
            return "dropped program name";
        case ArgumentKind::TestPath:
            return "test path";
        case ArgumentKind::Flag:
            return "flag";
        case ArgumentKind::InlineValue:
            return "option with value";
        case ArgumentKind::Value:
            break;
    }
    return isFirst ? "option" : "value";
}

Json tokensAsJson(const Report& report, const Source& source) {
    Json json = Json::array();
    for (const Argument& argument : report.trace.arguments) {
        if (argument.source != source.name) {
            continue;
        }
        for (const std::string& token : argument.tokens) {
            const bool isFirst = &token == &argument.tokens.front();
            json.push_back({{"text", asJsonText(token)}, {"became", roleOf(argument, isFirst)}});
            if (isOption(argument)) {
                json.back()["option"] = asJsonText(argument.name);
            }
        }
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

Json optionsAsJson(const Trace& trace) {
    Json json = Json::array();
    for (const TracedOption& option : trace.options) {
        json.push_back({{"name", asJsonText(option.name)}, {"sets", option.sets}, {"given", Json::array()}});
        for (const std::size_t index : option.given) {
            json.back()["given"].push_back(givenAsJson(trace.arguments[index]));
        }
    }
    return json;
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

Json producersAsJson(const std::optional<Producers>& producers) {
    if (!producers) {
        return nullptr;
    }
    Json json = {{"library", asJsonText(producers->library)}, {"directories", Json::array()}};
    for (const Producers::Directory& directory : producers->directories) {
        json["directories"].push_back({{"path", asJsonText(directory.path)}, {"exists", directory.exists}});
    }
    return json;
}

Json hintsAsJson(const std::vector<Hint>& hints) {
    Json json = Json::array();
    for (const Hint& hint : hints) {
        const Json correction = hint.correction.empty() ? Json(nullptr) : Json(hint.correction);
        json.push_back({{"source", hint.source},
                        {"argument", asJsonText(hint.argument)},
                        {"message", hint.message},
                        {"correction", correction}});
    }
    return json;
}

}  // namespace

std::string asJson(const Report& report) {
    const Observation& seen = report.seen;
    Json json = {{"succeeded", seen.succeeded},
                 {"reason", report.reason.empty() ? Json(nullptr) : Json(report.reason)}};
    for (const Accessor& accessor : seen.accessors) {
        const auto* text = std::get_if<std::string>(&accessor.value);
        json[std::string(accessor.name)] =
            text == nullptr ? Json(std::get<bool>(accessor.value)) : asJsonText(*text);
    }
    json["testPaths"] = asJsonText(seen.testPaths);
    for (const Field& field : seen.record) {
        json["testRunInformation"][std::string(field.name)] = asJsonText(field.value);
    }
    json["environment"] = variablesAsJson(report);
    json["producers"] = producersAsJson(report.producers);
    json["options"] = optionsAsJson(report.trace);
    json["testPathOrigins"] = Json::array();
    for (const Argument& argument : report.trace.arguments) {
        if (argument.kind == ArgumentKind::TestPath) {
            json["testPathOrigins"].push_back(givenAsJson(argument));
        }
    }
    json["sources"] = Json::array();
    for (const Source& source : report.trace.sources) {
        json["sources"].push_back({{"name", source.name},
                                   {"state", nameOf(source.state)},
                                   {"tokens", tokensAsJson(report, source)}});
        if (!source.message.empty()) {
            json["sources"].back()["message"] = source.message;
        }
    }
    json["hints"] = hintsAsJson(report.hints);
    return json.dump(2) + '\n';
}

}  // namespace tool
