#include "show_arguments.h"

#include <fmt/color.h>
#include <algorithm>

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

std::string show(const Json& value) {
    return value.is_boolean() ? value ? "yes" : "no" : printable(value.get<std::string>());
}

// The rows of the options; why one is ignored goes into hints.
Rows optionRows(const Json& options, Rows& hints) {
    Rows rows;
    for (const Json& option : options) {
        const std::string sets = option["sets"].is_null() ? "" : option["sets"];
        rows.emplace_back(typed(option["name"].get<std::string>()), sets.empty() ? "" : "sets " + sets);
        for (const Json& given : option["given"]) {
            const std::string outcome = given["outcome"];
            const std::string value = given["value"].is_null() ? "(flag)" : show(given["value"]);
            rows.emplace_back("  " + outcome,
                              fmt::format("{:17}  {}", given["source"].get<std::string>(), value));
            if (outcome == "ignored") {
                hints.emplace_back(given["note"], "");
            } else if (given.contains("note")) {
                rows.emplace_back("", given["note"]);
            }
        }
    }
    return rows;
}

// Nothing, not even a title, without rows.
std::string table(const char* title, const Rows& rows, bool hasColour) {
    constexpr std::size_t widestLabel = 25;
    std::size_t width = 0;
    for (const auto& row : rows) {
        width = std::max(width, std::min(row.first.size(), widestLabel));
    }
    const auto styled = [hasColour](const fmt::text_style& style, const std::string& text) {
        return hasColour ? fmt::format(style, "{}", text) : text;
    };
    std::string text = rows.empty() ? "" : fmt::format("\n{}\n", styled(fmt::emphasis::bold, title));
    for (const auto& [label, content] : rows) {
        fmt::text_style style;
        for (const char* good : {"succeeded", "  won", "  collected", "  counted"}) {
            style = label == good ? fmt::fg(fmt::terminal_color::green) : style;
        }
        for (const char* bad : {"failed", "  lost", "  refused", "  ignored", "  not used"}) {
            style = label == bad ? fmt::fg(fmt::terminal_color::red) : style;
        }
        const std::string padded = content.empty() ? label : fmt::format("{:{}}  ", label, width);
        text += fmt::format("  {}{}\n", styled(style, padded), content);
    }
    return text;
}

}  // namespace

std::string asText(const Json& report, bool hasColour) {
    const std::string reason = report["succeeded"] ? "" : report["reason"];
    Rows result = {{reason.empty() ? "succeeded" : "failed", reason}};
    Rows paths;
    Rows record;
    Rows variables;
    Rows hints;
    for (const char* name : {"applicationName", "helpRequested", "waitBeforeExit", "outputFilename",
                             "xmlFilename", "transportLayers"}) {
        result.emplace_back(name, show(report[name]));
    }
    for (const Json& source : report["sources"]) {
        // The program name in front does not count.
        const std::string count = fmt::format("scanned ({})", source["tokens"].size() - 1);
        result.emplace_back(source["name"], source["state"] == "scanned" ? count : show(source["state"]));
    }
    for (const Json& path : report["testPathOrigins"]) {
        const std::string note = path.contains("note") ? fmt::format("  ({})", show(path["note"])) : "";
        paths.emplace_back(path["source"], show(path["value"]) + note);
    }
    std::string empty;
    for (const auto& [name, text] : report["testRunInformation"].items()) {
        if (text.get<std::string>().empty()) {
            empty += (empty.empty() ? "" : ", ") + name;
        } else {
            record.emplace_back(name, show(text));
        }
    }
    record.emplace_back("(empty)", empty);
    for (const Json& change : report["environment"]) {
        const Json& before = change["before"];
        const std::string note = before.is_null() ? "" : fmt::format("  (was {})", show(before));
        variables.emplace_back(change["name"], show(change["after"]) + note);
    }
    const Rows options = optionRows(report["options"], hints);
    const char* pathsTitle = report["testPaths"].empty() ? "Test paths (not used)" : "Test paths";
    const std::string text = table("Result", result, hasColour) + table(pathsTitle, paths, hasColour) +
                             table("Test-run record", record, hasColour) +
                             table("Environment", variables, hasColour) +
                             table("Options", options, hasColour) + table("Hints", hints, hasColour);
    return text.substr(1);
}
