#include "report_json.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json toJson(const TestRunInformation& information) {
    Json record = Json::object();
    for (const RecordField& field : recordFields) {
        record[field.name] = information.*field.text;
    }
    return record;
}

Json toJson(const std::vector<ChangedVariable>& environment) {
    Json variables = Json::array();
    for (const ChangedVariable& variable : environment) {
        variables.push_back(
            {{"name", variable.name}, {"before", toJson(variable.before)}, {"after", variable.after}});
    }
    return variables;
}

Json toJson(const std::vector<Given>& occurrences) {
    Json list = Json::array();
    for (const Given& given : occurrences) {
        Json entry = {
            {"source", given.source}, {"value", toJson(given.value)}, {"outcome", describe(given.outcome)}};
        if (!given.note.empty()) {
            entry["note"] = given.note;
        }
        list.push_back(entry);
    }
    return list;
}

Json toJson(const std::vector<TracedOption>& options) {
    Json list = Json::array();
    for (const TracedOption& option : options) {
        list.push_back({{"name", option.name},
                        {"sets", option.known == nullptr ? Json(nullptr) : Json(option.known->sets)},
                        {"given", toJson(option.given)}});
    }
    return list;
}

Json toJson(const TracedSource& source) {
    Json tokens = Json::array();
    for (const TracedToken& token : source.tokens) {
        Json entry = {{"text", token.text}, {"became", describe(token.role)}};
        const bool isPositional = token.role == TokenRole::ProgramName ||
                                  token.role == TokenRole::DroppedProgramName ||
                                  token.role == TokenRole::TestPath;
        if (!isPositional) {
            entry["option"] = token.option;
        }
        tokens.push_back(entry);
    }
    Json entry = {{"name", source.name}, {"state", describe(source.state)}, {"tokens", tokens}};
    if (source.state == SourceState::Malformed) {
        entry["message"] = source.message;
    }
    return entry;
}

}  // namespace

void reportAsJson(const Observation& observation, std::ostream& out) {
    const OrvexTestCommandLineParser& parser = observation.parser;
    Json sources = Json::array();
    for (const TracedSource& source : observation.trace.sources) {
        sources.push_back(toJson(source));
    }
    const Json report = {{"succeeded", observation.succeeded},
                         {"reason", observation.succeeded ? Json(nullptr) : Json(observation.failure)},
                         {"applicationName", parser.getApplicationName()},
                         {"helpRequested", parser.helpRequested()},
                         {"waitBeforeExit", parser.waitBeforeExit()},
                         {"outputFilename", parser.getOutputFilename()},
                         {"xmlFilename", parser.getXmlFilename()},
                         {"transportLayers", parser.getTlList()},
                         {"testPaths", parser.getTestPaths()},
                         {"testRunInformation", toJson(parser.getTestRunInformation())},
                         {"environment", toJson(observation.environment)},
                         {"options", toJson(observation.trace.options)},
                         {"testPathOrigins", toJson(observation.trace.testPaths)},
                         {"sources", sources}};
    out << report.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}
