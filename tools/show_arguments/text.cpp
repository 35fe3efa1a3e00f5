#include "report.h"

#include <fmt/color.h>
#include <algorithm>

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

// hints: where to put why options are ignored.
std::vector<Row> optionRows(const Json& options, std::vector<Row>& hints) {
    std::vector<Row> rows;
    for (const Json& option : options) {
        const std::string sets = option["sets"].is_null() ? "" : option["sets"];
        rows.push_back({typed(option["name"].get<std::string>()), sets.empty() ? "" : "sets " + sets});
        for (const Json& given : option["given"]) {
            const std::string outcome = given["outcome"];
            const bool counts = outcome == "won" || outcome == "collected" || outcome == "counted";
            const std::string value = given["value"].is_null() ? "(flag)" : show(given["value"]);
            rows.push_back({"  " + outcome,
                            fmt::format("{:17}  {}", given["source"].get<std::string>(), value),
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
    const bool succeeded = report["succeeded"];
    std::vector<Row> result = {{"parse", succeeded ? "succeeded" : "failed", styleFor(succeeded)}};
    std::vector<Row> paths;
    std::vector<Row> record;
    std::vector<Row> environment;
    std::vector<Row> hints;
    for (const auto& [name, value] : report.items()) {
        if (name == "reason" ? !succeeded
                             : value.is_string() || (value.is_boolean() && name != "succeeded")) {
            result.push_back({name, name == "reason" ? value.get<std::string>() : show(value)});
        }
    }
    for (const Json& source : report["sources"]) {
        // The program name in front does not count.
        const std::string count = fmt::format("{} arguments", source["tokens"].size() - 1);
        result.push_back({source["name"], source["state"] == "scanned" ? count : show(source["state"])});
    }
    for (const Json& path : report["testPathOrigins"]) {
        const std::string note = path.contains("note") ? fmt::format("  ({})", show(path["note"])) : "";
        paths.push_back({path["source"], show(path["value"]) + note});
    }
    std::string empty;
    for (const auto& [name, text] : report["testRunInformation"].items()) {
        if (text == "") {
            empty += (empty.empty() ? "" : ", ") + name;
        } else {
            record.push_back({name, show(text)});
        }
    }
    record.push_back({"(empty)", empty});
    for (const Json& change : report["environment"]) {
        const Json& before = change["before"];
        const std::string note = before.is_null() ? "" : fmt::format("  (was {})", show(before));
        environment.push_back({change["name"], show(change["after"]) + note});
    }
    const std::vector<Row> options = optionRows(report["options"], hints);
    const char* pathsTitle = report["testPaths"].empty() ? "Test paths (not used)" : "Test paths";
    return (table("Result", result, hasColour) + table(pathsTitle, paths, hasColour) +
            table("Test-run record", record, hasColour) + table("Environment", environment, hasColour) +
            table("Options", options, hasColour) + table("Hints", hints, hasColour))
        .substr(1);
}
