#include "text_page.h"

#include "printable.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <string_view>

namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t narrowestColumn = 20;

// All columns but the last, with their gaps.
std::vector<std::size_t> widthsOf(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size() - 1));
        for (std::size_t i = 0; i + 1 < row.size(); ++i) {
            widths[i] = std::max(widths[i], columnsOf(row[i].text) + gap);
        }
    }
    return widths;
}

std::size_t sumOf(const std::vector<std::size_t>& widths) {
    std::size_t sum = 0;
    for (const std::size_t width : widths) {
        sum += width;
    }
    return sum;
}

}  // namespace

PageFormat formatForStandardOutput() {
    if (isatty(STDOUT_FILENO) == 0) {
        return {};
    }
    winsize size = {};
    const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
    const char* terminal = std::getenv("TERM");
    const bool isDumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return {isKnown ? size.ws_col : std::size_t{0}, std::getenv("NO_COLOR") == nullptr && !isDumb};
}

void TextPage::title(const std::string& text) {
    if (!isFirst) {
        out << '\n';
    }
    isFirst = false;
    write({text, Style::Title});
    out << '\n';
}

void TextPage::rows(std::size_t indent, const std::vector<Row>& table) {
    const std::vector<std::size_t> widths = widthsOf(table);
    const std::size_t lastStart = indent + sumOf(widths);
    const std::size_t lastWidth =
        format.columns == 0 ? 0 : std::max(format.columns, lastStart + narrowestColumn) - lastStart;
    for (const Row& row : table) {
        out << std::string(indent, ' ');
        for (std::size_t i = 0; i + 1 < row.size(); ++i) {
            write(row[i]);
            out << std::string(widths[i] - columnsOf(row[i].text), ' ');
        }
        bool isContinued = false;
        for (const std::string& piece : wrap(row.back().text, lastWidth)) {
            out << std::string(isContinued ? lastStart : 0, ' ');
            write({piece, row.back().style});
            out << '\n';
            isContinued = true;
        }
    }
}

void TextPage::table(const std::vector<std::string>& names, const std::vector<Row>& rows) {
    Row head;
    for (const std::string& name : names) {
        head.push_back({name, Style::Faint});
    }
    std::vector<Row> withHead = {head};
    withHead.insert(withHead.end(), rows.begin(), rows.end());
    if (format.columns == 0 || gap + sumOf(widthsOf(withHead)) + narrowestColumn <= format.columns) {
        this->rows(gap, withHead);
        return;
    }
    for (const Row& row : rows) {
        this->rows(gap, {{row.front()}});
        std::vector<Row> others;
        for (std::size_t i = 1; i < row.size(); ++i) {
            others.push_back({head[i], row[i]});
        }
        this->rows(2 * gap, others);
    }
}

void TextPage::write(const Cell& cell) {
    const std::string code = colourCode(cell.style);
    out << code << cell.text << (code.empty() ? "" : "\033[0m");
}

std::string TextPage::colourCode(Style style) const {
    if (!format.hasColour) {
        return "";
    }
    switch (style) {
        case Style::Plain:
            return "";
        case Style::Title:
            return "\033[1m";
        case Style::Faint:
            return "\033[2m";
        case Style::Good:
            return "\033[32m";
        case Style::Bad:
            return "\033[31m";
    }
    return "";
}
