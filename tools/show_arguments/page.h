// Text for a terminal: sections of labelled rows, lines that wrap between words, colours.

#ifndef ORVEX_SHOW_ARGUMENTS_PAGE_H
#define ORVEX_SHOW_ARGUMENTS_PAGE_H

#include "print.h"

#include <string>
#include <string_view>
#include <vector>

namespace tool {

enum class Style { Plain, Title, Good, Bad };

struct Row {
    std::string label;
    std::string content;
    Style style = Style::Plain;  // of the label
};

class Page {
public:
    explicit Page(const Screen& screen) : screen(screen) {}

    void addTitle(std::string_view title);

    // Adds nothing, not even the title, if there are no rows.
    void addSection(std::string_view title, const std::vector<Row>& rows);

    void addParagraph(std::string_view content, std::size_t indent, Style style = Style::Plain);

    // A line that stays whole, so that it can be pasted.
    void addLine(std::string_view line);

    // The line around a byte, as much as fits, and a caret below the byte.
    void addExcerpt(std::string_view line, std::size_t caret);

    const std::string& getText() const {
        return text;
    }

private:
    std::string styled(Style style, std::string_view content) const;
    std::string wrapped(std::string_view content, std::size_t column, std::size_t indent) const;

    Screen screen;
    std::string text;
};

}  // namespace tool

#endif
