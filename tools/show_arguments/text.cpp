#include "page.h"
#include "print.h"
#include "quoting.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tool {
namespace {

Style styleOf(Outcome outcome) {
    switch (outcome) {
        case Outcome::Won:
        case Outcome::Collected:
        case Outcome::Counted:
            return Style::Good;
        case Outcome::Refused:
            return Style::Bad;
        default:
            return Style::Plain;
    }
}

std::string show(const Accessor& accessor) {
    if (const auto* text = std::get_if<std::string>(&accessor.value)) {
        return plainOrQuoted(*text);
    }
    return std::get<bool>(accessor.value) ? "yes" : "no";
}

std::string show(const Argument& argument) {
    if (argument.kind != ArgumentKind::Flag) {
        return plainOrQuoted(argument.value);
    }
    const bool needsValue = argument.option != nullptr && argument.option->kind != OptionKind::Flag;
    return needsValue ? "(no value)" : "(flag)";
}

std::vector<Row> resultRows(const Report& report) {
    std::vector<Row> rows;
    for (const Accessor& accessor : report.seen.accessors) {
        rows.push_back({std::string(accessor.name), show(accessor)});
    }
    return rows;
}

std::vector<Row> sourceRows(const Report& report) {
    std::vector<Row> rows;
    for (const Source& source : report.trace.sources) {
        std::size_t count = 0;
        for (const Argument& argument : report.trace.arguments) {
            count += argument.source == source.name ? argument.tokens.size() : 0;
        }
        const std::string_view state = nameOf(source.state);
        // The program name in front does not count.
        rows.push_back({std::string(source.name), source.state == SourceState::Scanned
                                                      ? fmt::format("{} ({})", state, count - 1)
                                                      : std::string(state)});
    }
    return rows;
}

std::vector<Row> testPathRows(const Report& report) {
    std::vector<Row> rows;
    for (const Argument& argument : report.trace.arguments) {
        if (argument.kind == ArgumentKind::TestPath) {
            const bool isUsed = argument.outcome == Outcome::Collected;
            rows.push_back({std::string(argument.source),
                            plainOrQuoted(argument.value) + (isUsed ? "" : "  (not used)")});
        }
    }
    return rows;
}

std::vector<Row> recordRows(const Report& report) {
    std::vector<Row> rows;
    std::vector<std::string_view> empty;
    for (const Field& field : report.seen.record) {
        if (field.value.empty()) {
            empty.push_back(field.name);
        } else {
            rows.push_back({std::string(field.name), plainOrQuoted(field.value)});
        }
    }
    if (!empty.empty()) {
        rows.push_back({"(empty)", fmt::format("{}", fmt::join(empty, ", "))});
    }
    return rows;
}

std::vector<Row> variableRows(const Report& report, VariableState state) {
    std::vector<Row> rows;
    for (const Variable& variable : report.seen.variables) {
        if (variable.state != state) {
            continue;
        }
        std::vector<std::string> notes;
        if (isDefault(report, variable)) {
            notes.emplace_back("the default");
        }
        if (state == VariableState::Set && variable.before) {
            notes.push_back("was " + plainOrQuoted(*variable.before));
        }
        rows.push_back({std::string(variable.name),
                        plainOrQuoted(*variable.after) +
                            (notes.empty() ? "" : fmt::format("  ({})", fmt::join(notes, "; ")))});
    }
    return rows;
}

std::vector<Row> producerRows(const Producers& producers) {
    std::vector<Row> rows = {{"library", plainOrQuoted(producers.library)}};
    for (const Producers::Directory& directory : producers.directories) {
        rows.push_back({directory.exists ? "exists" : "missing", plainOrQuoted(directory.path)});
    }
    return rows;
}

std::vector<Row> optionRows(const Trace& trace) {
    std::vector<Row> rows;
    for (const TracedOption& option : trace.options) {
        const bool isDashes = option.name.rfind('-', 0) == 0;
        rows.push_back({plainOrQuoted((isDashes ? "" : "-") + option.name),
                        option.sets.empty() ? "" : fmt::format("sets {}", fmt::join(option.sets, ", "))});
        for (const std::size_t index : option.given) {
            const Argument& argument = trace.arguments[index];
            rows.push_back({fmt::format("  {}", nameOf(argument.outcome)),
                            fmt::format("{:17}  {}", argument.source, show(argument)),
                            styleOf(argument.outcome)});
            if (!argument.note.empty()) {
                rows.push_back({"", argument.note});
            }
        }
    }
    return rows;
}

void addHints(Page& page, const std::vector<Hint>& hints) {
    if (!hints.empty()) {
        page.addTitle("Hints");
    }
    for (const Hint& hint : hints) {
        page.addParagraph(fmt::format("{}: {}", hint.source, hint.message), 2);
        if (hint.quote) {
            page.addExcerpt(hint.argument, *hint.quote);
        }
        if (!hint.correction.empty()) {
            page.addLine("      " + hint.correction);
        }
    }
}

}  // namespace

std::string asText(const Report& report, const Screen& screen) {
    Page page(screen);
    page.addSection("Result", resultRows(report));
    page.addSection("Sources", sourceRows(report));
    page.addSection("Test paths", testPathRows(report));
    page.addSection("Test-run record", recordRows(report));
    page.addSection("Environment, set by this parse", variableRows(report, VariableState::Set));
    page.addSection("Environment, set to what it was already", variableRows(report, VariableState::SetAgain));
    page.addSection("Environment, kept from before", variableRows(report, VariableState::Kept));
    if (report.producers) {
        page.addSection("Producer directories of the loaded library", producerRows(*report.producers));
    }
    page.addSection("Options", optionRows(report.trace));
    addHints(page, report.hints);
    page.addLine("");
    if (const Argument* helpSwitch = findHelpSwitch(report.trace)) {
        page.addParagraph(fmt::format("help requested by {} ({})", plainOrQuoted(helpSwitch->tokens[0]),
                                      helpSwitch->source),
                          0);
    }
    if (!report.reason.empty()) {
        page.addParagraph("failed: " + report.reason, 0, Style::Bad);
        return page.getText();
    }
    const std::size_t count = report.hints.size();
    const std::string verdict =
        count == 0 ? "succeeded" : fmt::format("succeeded, {} {}", count, count == 1 ? "hint" : "hints");
    page.addParagraph(verdict, 0, Style::Good);
    return page.getText();
}

}  // namespace tool
