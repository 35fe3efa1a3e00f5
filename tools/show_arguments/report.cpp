#include "environment/split_string.h"
#include "show_arguments.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <stdexcept>

extern char** environ;

namespace {

using Variables = std::map<std::string, std::string>;

Variables readEnvironment() {
    Variables variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string text(*entry);
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos) {
            variables.emplace(text.substr(0, equals), text.substr(equals + 1));
        }
    }
    return variables;
}

Json recordAsJson(const TestRunInformation& record) {
    Json json;
#define ADD_FIELD(name) json[#name] = record.name;
    NLOHMANN_JSON_EXPAND(NLOHMANN_JSON_PASTE(ADD_FIELD, group, guid, runName, runDescription, product,
                                             fixedZero, userId, vcsRevision, vcsBranch, secondVcsRevision,
                                             secondVcsBranch, pcName, osName, transportLayers,
                                             tdcDravikXmlFilename, testName, osType, bit))
#undef ADD_FIELD
    return json;
}

Json givenAsJson(const std::vector<Given>& list) {
    Json json = Json::array();
    for (const Given& given : list) {
        const Json value = given.value ? Json(*given.value) : Json(nullptr);
        json.push_back({{"source", given.source}, {"value", value}, {"outcome", given.outcome}});
        if (!given.note.empty()) {
            json.back()["note"] = given.note;
        }
    }
    return json;
}

std::string findFailure(const std::string& tlList) {
    if (tlList.find("DravikGTC") != std::string::npos) {
        try {
            OrvexTestCommandLineParser::getApplicationDir();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
    return "an environment variable cannot be set, or memory ran out";
}

// The value that counts, or all of them joined by commas; "true" for a flag that counts; else empty.
std::string textOf(const TracedOption& option) {
    std::vector<std::string_view> values;
    for (const Given& given : option.given) {
        if (given.outcome == "counted") {
            return "true";
        }
        if (given.outcome == "won" || given.outcome == "collected") {
            values.push_back(*given.value);
        }
    }
    return fmt::format("{}", fmt::join(values, ","));
}

// The names of what the parse has set because of the option, joined by commas; null when nothing reads it.
// seen: what accessors, the record and variables hold. changed: the variables that have changed.
Json findTargets(const TracedOption& option, const Json& seen, const Variables& changed) {
    const std::string text = textOf(option);
    if (text.empty()) {
        return option.known.kind == OptionKind::Unread ? Json(nullptr) : Json(text);
    }
    const Json value = option.known.kind == OptionKind::Flag ? Json(true) : Json(text);
    std::string targets;
    for (const std::string& target : option.known.sets) {
        const auto variable = changed.find(target);
        // A driver stands first in it; otherwise it is set because of -socketbuffer.
        const bool needsDriver = target == "ORVEX_GIGE_STREAMPARAMS" && option.name == "tl";
        if (variable == changed.end() ? seen.value(target, Json()) == value
                                      : !needsDriver || variable->second.rfind("Type=", 0) == 0) {
            targets += (targets.empty() ? "" : ", ") + target;
        }
    }
    return targets;
}

std::vector<std::string> splitAt(char delimiter, const std::string& text) {
    std::vector<std::string> parts;
    orvex::splitString(text.c_str(), delimiter, parts);
    return parts;
}

// layer: an entry of -tl, split at its colons. taken: the driver that the parser takes.
std::string explain(const std::vector<std::string>& layer, const std::string& taken, bool isSet) {
    const char* pattern =
        isSet ? "class {}, driver {} taken" : "class {}, driver {} not used: the parse failed";
    if (layer.size() == 1) {
        pattern = "class {}, no driver";
    } else if (layer[0] != "DravikGigE") {
        pattern = "class {}, driver {} ignored: only DravikGigE takes one, with these capitals";
    } else if (layer[1] != taken) {
        pattern = "class {}, driver {} lost to {}, the last in byte order";
    }
    return fmt::format(fmt::runtime(pattern), printable(layer[0]),
                       printable(layer.size() > 1 ? layer[1] : ""), printable(taken)) +
           (layer.size() > 2 ? "; what follows is ignored" : "");
}

void explainTransportLayers(TracedOption& option, bool isSet) {
    std::string taken;
    for (const std::string& entry : splitAt(',', textOf(option))) {
        const std::vector<std::string> layer = splitAt(':', entry);
        taken = layer.size() > 1 && layer[0] == "DravikGigE" ? std::max(taken, layer[1]) : taken;
    }
    for (Given& given : option.given) {
        for (const std::string& entry : splitAt(',', given.outcome == "collected" ? *given.value : "")) {
            if (!entry.empty()) {
                given.note += (given.note.empty() ? "" : "; ") + explain(splitAt(':', entry), taken, isSet);
            }
        }
    }
}

}  // namespace

Json reportParse(OrvexTestCommandLineParser& parser, int argc, char** argv) {
    const Variables before = readEnvironment();
    const bool succeeded = parser.Parse(argc, argv);
    const Variables after = readEnvironment();
    Variables changed;
    Json environment = Json::array();
    for (const auto& [name, value] : after) {
        const auto old = before.find(name);
        const Json oldValue = old == before.end() ? Json(nullptr) : Json(old->second);
        if (oldValue != value) {
            changed.emplace(name, value);
            environment.push_back({{"name", name}, {"before", oldValue}, {"after", value}});
        }
    }
    Trace trace = traceArguments(argc, argv);
    const Json record = recordAsJson(parser.getTestRunInformation());
    const Json accessors = {
        {"applicationName", parser.getApplicationName()}, {"helpRequested", parser.helpRequested()},
        {"waitBeforeExit", parser.waitBeforeExit()},      {"outputFilename", parser.getOutputFilename()},
        {"xmlFilename", parser.getXmlFilename()},         {"transportLayers", parser.getTlList()}};
    // A variable that has kept its value was set to it if the parse got to its end.
    Json seen = succeeded ? Json(after) : Json::object();
    seen.update(record);
    seen.update(accessors);
    Json options = Json::array();
    for (TracedOption& option : trace.options) {
        if (option.name == "tl") {
            explainTransportLayers(option, succeeded || changed.count("ORVEX_GIGE_STREAMPARAMS") != 0);
        }
        options.push_back({{"name", option.name},
                           {"sets", findTargets(option, seen, changed)},
                           {"given", givenAsJson(option.given)}});
    }
    Json report = {{"succeeded", succeeded}, {"reason", nullptr}};
    if (!succeeded) {
        report["reason"] = trace.failure.empty() ? findFailure(parser.getTlList()) : trace.failure;
    }
    report.update(accessors);
    report.update({{"testPaths", parser.getTestPaths()},
                   {"testRunInformation", record},
                   {"environment", environment},
                   {"options", options},
                   {"testPathOrigins", givenAsJson(trace.testPaths)},
                   {"sources", trace.sources}});
    return report;
}
