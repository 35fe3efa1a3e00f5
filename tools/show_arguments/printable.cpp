#include "printable.h"

#include <algorithm>
#include <iterator>

namespace {

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The well-formed UTF-8 sequences without the control characters, by their first two bytes.
struct Sequences {
    unsigned char firstLow, firstHigh;
    unsigned char secondLow, secondHigh;
    std::size_t length;
};
constexpr Sequences sequences[] = {
    {0x20, 0x7E, 0x00, 0xFF, 1}, {0xC2, 0xC2, 0xA0, 0xBF, 2}, {0xC3, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
};

// The length of the sequence at the position; 0 when there is none that can be printed.
std::size_t sequenceLength(const std::string& text, std::size_t position) {
    // Behind the last byte stands a zero, which continues no sequence.
    const auto first = static_cast<unsigned char>(text[position]);
    const auto second = static_cast<unsigned char>(text[position + 1]);
    const auto* row = std::find_if(std::begin(sequences), std::end(sequences), [&](const Sequences& range) {
        return first >= range.firstLow && first <= range.firstHigh && second >= range.secondLow &&
               second <= range.secondHigh;
    });
    if (row == std::end(sequences)) {
        return 0;
    }
    for (std::size_t i = 2; i < row->length; ++i) {
        if (!isContinuation(text[position + i])) {
            return 0;
        }
    }
    return row->length;
}

std::string escaped(char character) {
    switch (character) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            break;
    }
    constexpr const char* digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(character);
    return {'\\', 'x', digits[byte >> 4], digits[byte & 0xF]};
}

}  // namespace

std::string printable(const std::string& text) {
    bool isPlain = !text.empty() && text.front() != ' ' && text.back() != ' ' && text.front() != '"' &&
                   text.front() != '(';
    std::string quoted = "\"";
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = sequenceLength(text, i);
        isPlain = isPlain && length != 0;
        if (length == 0 || text[i] == '"' || text[i] == '\\') {
            quoted += escaped(text[i++]);
        } else {
            quoted.append(text, i, length);
            i += length;
        }
    }
    return isPlain ? text : quoted + '"';
}

std::size_t columnsOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !isContinuation(byte); }));
}

std::vector<std::string> wrap(const std::string& text, std::size_t columns) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (columns != 0 && columnsOf(text.substr(start)) > columns) {
        std::size_t end = start;
        for (std::size_t column = 0; column < columns; ++column) {
            do {
                ++end;
            } while (isContinuation(text[end]));
        }
        const std::size_t separator = text.find_last_of(" /:,|", end - 1);
        if (separator != std::string::npos && separator > start) {
            end = separator + 1;
        }
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
    lines.push_back(text.substr(start));
    return lines;
}
