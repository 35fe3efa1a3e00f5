#include "quoting.h"

#include <fmt/format.h>
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

std::string visible(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\"\\"), text.size());
        const std::string piece = inQuotes(text.substr(0, end));
        result += piece.substr(1, piece.size() - 2);
        result += text.substr(end, 1);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

std::string inQuotes(std::string_view text) {
    return fmt::format("{:?}", text);
}

std::string plainOrQuoted(std::string_view text) {
    std::string result = inQuotes(text);
    const bool isPlain = result.size() == text.size() + 2 && !text.empty() && text.front() != ' ' &&
                         text.back() != ' ' && text.front() != '(';
    return isPlain ? std::string(text) : result;
}

std::size_t columnsOf(std::string_view text) {
    // No character takes more columns than bytes, so padding the string to its size in bytes shows how many
    // columns it takes.
    const std::size_t padded = fmt::format("{:{}}", text, text.size()).size();
    return 2 * text.size() - padded;
}

std::string quotedForShell(std::string_view text) {
    constexpr std::string_view safe =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=:,./@%";
    if (!text.empty() && text.find_first_not_of(safe) == std::string_view::npos) {
        return std::string(text);
    }
    std::string result = "'";
    for (const char byte : text) {
        result += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    }
    return result + "'";
}

std::string quotedForVariable(std::string_view text) {
    if (!text.empty() && text.find_first_of(" \t\"'\\") == std::string_view::npos) {
        return std::string(text);
    }
    std::string result = "\"";
    for (const char byte : text) {
        if (byte == '"' || byte == '\\') {
            result += '\\';
        }
        result += byte;
    }
    return result + "\"";
}

TextScan scanText(const std::string& text) {
    TextScan scan = {std::nullopt, std::nullopt, text};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t start = i;
        if (text[i] == '\\' && i + 1 < text.size()) {
            ++i;
        } else if (scan.unterminatedQuote && text[i] == text[*scan.unterminatedQuote]) {
            scan.unterminatedQuote.reset();
        } else if (!scan.unterminatedQuote && (text[i] == '"' || text[i] == '\'')) {
            scan.unterminatedQuote = i;
        }
        if (!scan.unterminatedQuote && (text[i] == '\n' || text[i] == '\r')) {
            scan.lineBreak = scan.lineBreak.value_or(i);
            scan.withoutLineBreaks[start] = ' ';
            scan.withoutLineBreaks[i] = ' ';
        }
    }
    return scan;
}

}  // namespace tool
