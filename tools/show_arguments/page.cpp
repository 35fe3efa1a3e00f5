#include "page.h"

#include "quoting.h"

#include <fmt/color.h>
#include <algorithm>

namespace tool {
namespace {

// Whether a string can be cut there.
bool startsCharacter(std::string_view text, std::size_t index) {
    return index >= text.size() || (static_cast<unsigned char>(text[index]) & 0xc0U) != 0x80;
}

// As much of the start of a visible string as fits into the columns.
std::string_view fittingStart(std::string_view text, std::size_t columns) {
    std::size_t size = std::min(text.size(), 4 * columns);
    while (!startsCharacter(text, size) || columnsOf(text.substr(0, size)) > columns) {
        --size;
    }
    return text.substr(0, size);
}

std::string_view fittingEnd(std::string_view text, std::size_t columns) {
    std::size_t start = text.size() - std::min(text.size(), 4 * columns);
    while (!startsCharacter(text, start) || columnsOf(text.substr(start)) > columns) {
        ++start;
    }
    return text.substr(start);
}

}  // namespace

void Page::addTitle(std::string_view title) {
    text += fmt::format("{}{}\n", text.empty() ? "" : "\n", styled(Style::Title, title));
}

void Page::addSection(std::string_view title, const std::vector<Row>& rows) {
    constexpr std::size_t widestLabel = 25;
    std::size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, std::min(columnsOf(row.label), widestLabel));
    }
    if (!rows.empty()) {
        addTitle(title);
    }
    for (const Row& row : rows) {
        const std::string label = row.content.empty() ? row.label : fmt::format("{:{}}  ", row.label, width);
        const std::size_t column = 2 + columnsOf(label);
        const bool isNarrow = screen.columns < 2 * column;
        text += fmt::format("  {}{}\n", styled(row.style, label),
                            wrapped(row.content, column, isNarrow ? 6 : column));
    }
}

void Page::addParagraph(std::string_view content, std::size_t indent, Style style) {
    addLine(styled(style, std::string(indent, ' ') + wrapped(content, indent, indent)));
}

void Page::addLine(std::string_view line) {
    text += fmt::format("{}\n", line);
}

void Page::addExcerpt(std::string_view line, std::size_t caret) {
    constexpr std::size_t indent = 6;
    constexpr std::size_t columnsInFile = 80;
    constexpr std::string_view mark = "...";
    const std::size_t columns =
        screen.columns == 0 ? columnsInFile : std::max<std::size_t>(screen.columns, 24);
    const std::size_t half = (columns - indent) / 2 - mark.size();
    const std::string before = visible(line.substr(0, caret));
    const std::string after = visible(line.substr(caret));
    const std::string_view start = fittingEnd(before, half);
    const std::string_view end = fittingStart(after, half);
    const std::string first =
        fmt::format("{:{}}{}{}", "", indent, start.size() < before.size() ? mark : "", start);
    addLine(fmt::format("{}{}{}", first, end, end.size() < after.size() ? mark : ""));
    addLine(fmt::format("{:{}}^", "", columnsOf(first)));
}

std::string Page::styled(Style style, std::string_view content) const {
    if (!screen.hasColour || style == Style::Plain) {
        return std::string(content);
    }
    fmt::text_style look = fmt::emphasis::bold;
    if (style == Style::Good) {
        look = fmt::fg(fmt::terminal_color::green);
    } else if (style == Style::Bad) {
        look = fmt::fg(fmt::terminal_color::red);
    }
    return fmt::format(look, "{}", content);
}

// Breaks between words. The content starts at the column, its further lines at the indent.
std::string Page::wrapped(std::string_view content, std::size_t column, std::size_t indent) const {
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

}  // namespace tool
