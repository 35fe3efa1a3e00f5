// Aligned plain text for terminals and pipes.

#ifndef ORVEX_SHOW_ARGUMENTS_TEXT_PAGE_H
#define ORVEX_SHOW_ARGUMENTS_TEXT_PAGE_H

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

struct PageFormat {
    std::size_t columns = 0;  // 0: lines may be of any length
    bool hasColour = false;
};

// The format that suits standard output: the width of the terminal, and colour unless NO_COLOR is set;
// neither when it is not a terminal.
PageFormat formatForStandardOutput();

enum class Style { Plain, Title, Faint, Good, Bad };

struct Cell {
    std::string text;
    Style style = Style::Plain;
};

using Row = std::vector<Cell>;

class TextPage {
public:
    TextPage(std::ostream& out, PageFormat format) : out(out), format(format) {}

    void title(const std::string& text);

    // Rows with aligned columns; the last column is wrapped where the page ends.
    void rows(std::size_t indent, const std::vector<Row>& table);

    // The same under the names of the columns. Where the page is too narrow for that, each row becomes
    // a block: its first cell, and below it the others, each behind the name of its column.
    void table(const std::vector<std::string>& names, const std::vector<Row>& rows);

private:
    void write(const Cell& cell);
    std::string colourCode(Style style) const;

    std::ostream& out;
    PageFormat format;
    bool isFirst = true;
};

#endif
