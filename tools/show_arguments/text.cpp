#include "report.h"

#include <fmt/color.h>
#include <algorithm>
#include <vector>

namespace {

struct Row {
    std::string label;
    std::string content;
    fmt::text_style style = {};  // of the label
};

fmt::text_style styleFor(bool isGood) {
    return fmt::fg(isGood ? fmt::terminal_color::green : fmt::terminal_color::red);
}

std::string show(const Json& value) {
    return value.is_boolean() ? value ? "yes" : "no" : printable(value.get<std::string>());
}

std::vector<Row> resultRows(const Json& report) {
    const bool succeeded = report["succeeded"];
    std::vector<Row> rows = {{"parse", succeeded ? "succeeded" : "failed", styleFor(succeeded)}};
    if (!succeeded) {
        rows.push_back({"reason", report["reason"]});
    }
    for (const char* name : {"applicationName", "helpRequested", "waitBeforeExit", "outputFilename",
                             "xmlFilename", "transportLayers"}) {
        rows.push_back({name, show(report[name])});
    }
    rows.push_back({"testPaths", fmt::to_string(report["testPaths"].size())});
    for (const Json& source : report["sources"]) {
        // The program name in front does not count.
        const std::string count = fmt::format("{} arguments", source["tokens"].size() - 1);
        rows.push_back(
            {source["name"], source["state"] == "scanned" ? count : source["state"].get<std::string>()});
    }
    return rows;
}

std::vector<Row> pathRows(const Json& report) {
    std::vector<Row> rows;
    for (const Json& path : report["testPathOrigins"]) {
        const std::string note = path.contains("note") ? fmt::format("  ({})", show(path["note"])) : "";
        rows.push_back({path["source"], show(path["value"]) + note});
    }
    return rows;
}

std::vector<Row> recordRows(const Json& report) {
    std::vector<Row> rows;
    Row empty = {"(empty)", ""};
    for (const auto& [name, text] : report["testRunInformation"].items()) {
        if (text != "") {
            rows.push_back({name, show(text)});
        } else {
            empty.content += (empty.content.empty() ? "" : ", ") + name;
        }
    }
    rows.push_back(empty);
    return rows;
}

std::vector<Row> variableRows(const Json& report) {
    std::vector<Row> rows;
    for (const Json& change : report["environment"]) {
        const Json& before = change["before"];
        const std::string note = before.is_null() ? "" : fmt::format("  (was {})", show(before));
        rows.push_back({change["name"], show(change["after"]) + note});
    }
    return rows;
}

// hints: where to put why options are ignored.
std::vector<Row> optionRows(const Json& report, std::vector<Row>& hints) {
    std::vector<Row> rows;
    for (const Json& option : report["options"]) {
        const std::string sets = option["sets"].is_null() ? "" : option["sets"];
        rows.push_back({typed(option["name"].get<std::string>()), sets.empty() ? "" : "sets " + sets});
        for (const Json& given : option["given"]) {
            const std::string outcome = given["outcome"];
            const bool counts = outcome == "won" || outcome == "collected" || outcome == "counted";
            rows.push_back({"  " + outcome,
                            fmt::format("{:17}  {}", given["source"].get<std::string>(),
                                        given["value"].is_null() ? "(flag)" : show(given["value"])),
                            styleFor(counts)});
            if (outcome == "ignored") {
                hints.push_back({given["note"], ""});
            } else if (given.contains("note")) {
                rows.push_back({"", given["note"]});
            }
        }
    }
    return rows;
}

// Nothing, not even a title, without rows.
std::string table(const char* title, const std::vector<Row>& rows, bool hasColour) {
    constexpr std::size_t widestLabel = 25;
    std::size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, std::min(row.label.size(), widestLabel));
    }
    const auto styled = [hasColour](const fmt::text_style& style, const std::string& text) {
        return hasColour ? fmt::format(style, "{}", text) : text;
    };
    std::string text = rows.empty() ? "" : fmt::format("\n{}\n", styled(fmt::emphasis::bold, title));
    for (const Row& row : rows) {
        const std::string label = row.content.empty() ? row.label : fmt::format("{:{}}  ", row.label, width);
        text += fmt::format("  {}{}\n", styled(row.style, label), row.content);
    }
    return text;
}

}  // namespace

std::string asText(const Json& report, bool hasColour) {
    std::vector<Row> hints;
    const std::vector<Row> options = optionRows(report, hints);
    const char* paths = report["testPaths"].empty() ? "Test paths (not used)" : "Test paths";
    const std::string text = table("Result", resultRows(report), hasColour) +
                             table(paths, pathRows(report), hasColour) +
                             table("Test-run record", recordRows(report), hasColour) +
                             table("Environment", variableRows(report), hasColour) +
                             table("Options", options, hasColour) + table("Hints", hints, hasColour);
    return text.substr(1);
}
