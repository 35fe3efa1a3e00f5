#include "options.h"
#include "parser/option_scanner.h"
#include "quoting.h"
#include "report.h"

#include <fmt/color.h>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tool {
namespace {

enum class Style { Plain, Title, Good, Bad };

struct Row {
    std::string label;
    std::string content;
    Style style = Style::Plain;  // of the label
};

// Titles, labelled rows and paragraphs, wrapped between words.
class Page {
public:
    explicit Page(const Screen& screen) : screen(screen) {}

    void addTitle(std::string_view title) {
        addLine((text.empty() ? "" : "\n") + styled(Style::Title, title));
    }

    // Adds nothing, not even the title, if there are no rows.
    void addSection(std::string_view title, const std::vector<Row>& rows) {
        constexpr std::size_t widestLabel = 25;
        std::size_t width = 0;
        for (const Row& row : rows) {
            width = std::max(width, std::min(columnsOf(row.label), widestLabel));
        }
        if (!rows.empty()) {
            addTitle(title);
        }
        for (const Row& row : rows) {
            const std::string label =
                row.content.empty() ? row.label : fmt::format("{:{}}  ", row.label, width);
            const std::size_t column = 2 + columnsOf(label);
            const bool isNarrow = screen.columns < 2 * column;
            addLine("  " + styled(row.style, label) + wrapped(row.content, column, isNarrow ? 6 : column));
        }
    }

    void addParagraph(std::string_view content, std::size_t indent, Style style = Style::Plain) {
        addLine(styled(style, std::string(indent, ' ') + wrapped(content, indent, indent)));
    }

    // A line that stays whole, so that it can be pasted.
    void addLine(std::string_view line) {
        text += line;
        text += '\n';
    }

    // The line around a byte, and a caret below the byte. No byte takes more than one column once it is
    // visible, so what is left always fits.
    void addExcerpt(std::string_view line, std::size_t caret) {
        const std::size_t columns = screen.columns == 0 ? 80 : std::max<std::size_t>(screen.columns, 24);
        const std::size_t width = columns - 12;  // without the indent and the dots
        const std::string before = visible(line.substr(0, caret));
        const std::string after = visible(line.substr(caret));
        std::size_t end = std::min(after.size(), width - std::min(before.size(), width / 2));
        while (isInsideCharacter(after, end)) {
            --end;
        }
        std::size_t start = before.size() - std::min(before.size(), width - end);
        while (isInsideCharacter(before, start)) {
            ++start;
        }
        const std::string first = (start > 0 ? "      ..." : "      ") + before.substr(start);
        addLine(first + after.substr(0, end) + (end < after.size() ? "..." : ""));
        addLine(std::string(columnsOf(first), ' ') + '^');
    }

    const std::string& getText() const {
        return text;
    }

private:
    // Whether cutting the UTF-8 string there would split a character.
    static bool isInsideCharacter(const std::string& utf8, std::size_t index) {
        return index < utf8.size() && (static_cast<unsigned char>(utf8[index]) & 0xc0U) == 0x80;
    }

    std::string styled(Style style, std::string_view content) const {
        if (!screen.hasColour || style == Style::Plain) {
            return std::string(content);
        }
        fmt::text_style look = fmt::emphasis::bold;
        if (style != Style::Title) {
            look = fmt::fg(style == Style::Good ? fmt::terminal_color::green : fmt::terminal_color::red);
        }
        return fmt::format(look, "{}", content);
    }

    // Breaks between words. The content starts at the column, its further lines at the indent.
    std::string wrapped(std::string_view content, std::size_t column, std::size_t indent) const {
        std::string lines;
        while (!content.empty()) {
            const std::size_t spaces = std::min(content.find_first_not_of(' '), content.size());
            const std::size_t end = std::min(content.find(' ', spaces), content.size());
            const std::string_view word = content.substr(spaces, end - spaces);
            const std::size_t width = columnsOf(word);
            if (screen.columns != 0 && column > indent && column + spaces + width > screen.columns) {
                lines += '\n' + std::string(indent, ' ');
                column = indent;
            } else {
                lines += content.substr(0, spaces);
                column += spaces;
            }
            lines += word;
            column += width;
            content.remove_prefix(end);
        }
        return lines;
    }

    Screen screen;
    std::string text;
};

Style styleOf(Outcome outcome) {
    if (outcome == Outcome::Refused) {
        return Style::Bad;
    }
    const bool isUsed =
        outcome == Outcome::Won || outcome == Outcome::Collected || outcome == Outcome::Counted;
    return isUsed ? Style::Good : Style::Plain;
}

std::string show(const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return plainOrQuoted(*text);
    }
    return std::get<bool>(value) ? "yes" : "no";
}

std::string show(const Argument& argument) {
    if (argument.kind != orvex::Finding::Flag) {
        return plainOrQuoted(argument.value);
    }
    const bool needsValue = argument.option != nullptr && argument.option->kind != ToolOptionKind::Flag;
    return needsValue ? "(no value)" : "(flag)";
}

std::vector<Row> resultRows(const Report& report) {
    std::vector<Row> rows;
    for (const Result& accessor : report.seen.accessors) {
        rows.push_back({std::string(accessor.name), show(accessor.value)});
    }
    return rows;
}

std::vector<Row> sourceRows(const Trace& trace) {
    std::vector<Row> rows;
    for (const Source& source : trace.sources) {
        std::string state(nameOf(source.state));
        if (source.state == SourceState::Scanned) {
            std::size_t count = 0;
            for (const Argument& argument : trace.arguments) {
                count += argument.source == source.name ? argument.tokens.size() : 0;
            }
            --count;  // the program name
            state += fmt::format(" ({} argument{})", count, count == 1 ? "" : "s");
        }
        rows.push_back({std::string(source.name), state});
    }
    return rows;
}

std::vector<Row> testPathRows(const Trace& trace) {
    std::vector<Row> rows;
    for (const Argument& argument : trace.arguments) {
        if (argument.isTestPath) {
            const char* note = argument.outcome == Outcome::Collected ? "" : "  (not used)";
            rows.push_back({std::string(argument.source), plainOrQuoted(argument.value) + note});
        }
    }
    return rows;
}

std::vector<Row> recordRows(const Report& report) {
    std::vector<Row> rows;
    std::vector<std::string_view> empty;
    for (const Result& field : report.seen.record) {
        if (field.value == Value(std::string())) {
            empty.push_back(field.name);
        } else {
            rows.push_back({std::string(field.name), show(field.value)});
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
                        plainOrQuoted(variable.after) +
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

void addHints(const std::vector<Hint>& hints, Page& page) {
    if (!hints.empty()) {
        page.addTitle("Hints");
    }
    for (const Hint& hint : hints) {
        page.addParagraph(fmt::format("{}: {}", hint.source, hint.message), 2);
        if (hint.caret) {
            page.addExcerpt(hint.argument, *hint.caret);
        }
        if (!hint.correction.empty()) {
            page.addLine("      " + hint.correction);
        }
    }
}

void addVerdict(const Report& report, Page& page) {
    page.addLine("");
    if (const Argument* helpSwitch = findHelpSwitch(report.trace)) {
        const std::string shown = plainOrQuoted(helpSwitch->tokens[0]);
        page.addParagraph(fmt::format("help requested by {} ({})", shown, helpSwitch->source), 0);
    }
    const std::size_t count = report.hints.size();
    if (!report.reason.empty()) {
        page.addParagraph("failed: " + report.reason, 0, Style::Bad);
    } else if (count == 0) {
        page.addParagraph("succeeded", 0, Style::Good);
    } else {
        page.addParagraph(fmt::format("succeeded, {} hint{}", count, count == 1 ? "" : "s"), 0, Style::Good);
    }
}

}  // namespace

std::string asText(const Report& report, const Screen& screen) {
    Page page(screen);
    page.addSection("Result", resultRows(report));
    page.addSection("Sources", sourceRows(report.trace));
    page.addSection("Test paths", testPathRows(report.trace));
    page.addSection("Test-run record", recordRows(report));
    page.addSection("Environment, set by this parse", variableRows(report, VariableState::Set));
    page.addSection("Environment, set to the value it already had",
                    variableRows(report, VariableState::SetAgain));
    page.addSection("Environment, kept from before", variableRows(report, VariableState::Kept));
    if (report.producers) {
        page.addSection("Producer directories of the library", producerRows(*report.producers));
    }
    page.addSection("Options", optionRows(report.trace));
    addHints(report.hints, page);
    addVerdict(report, page);
    return page.getText();
}

}  // namespace tool
