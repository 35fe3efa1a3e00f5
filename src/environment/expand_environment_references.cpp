#include "environment/expand_environment_references.h"

#include <cstdlib>
#include <exception>
#include <string_view>
#include <utility>

namespace orvex {
namespace {

// In a string of one or two bytes a "%" can only stand for itself, and "$$" stays as it is.
int expandShortText(std::string& text) {
    if (text == "%") {
        text = "%%";
        return 1;
    }
    if (text.size() == 2 && (text[0] == '%') != (text[1] == '%')) {
        text.insert(1, 1, '%');
        return 1;
    }
    return 0;
}

void appendVariable(std::string_view name, std::string& output) {
    const char* value = std::getenv(std::string(name).c_str());
    if (value != nullptr) {
        output += value;
    }
}

int expandLongText(std::string& text) {
    const std::string_view source(text.c_str());
    std::string output;
    output.reserve(4 * text.size());
    int count = 0;
    std::size_t i = 0;
    // Once a search for the closing parenthesis has failed, so would every later one.
    bool mayCloseParenthesis = true;
    while (i < source.size()) {
        const char c = source[i];
        // After the last byte stands the terminating zero.
        const char next = text[i + 1];
        if (c == '$' && next == '$') {
            output += '$';
            i += 2;
        } else if (c == '$' && next == '(' && mayCloseParenthesis) {
            const std::size_t end = source.find(')', i + 2);
            mayCloseParenthesis = end != std::string_view::npos;
            if (!mayCloseParenthesis || end == i + 2) {
                output += '$';
                ++i;
            } else {
                appendVariable(source.substr(i + 2, end - i - 2), output);
                ++count;
                i = end + 1;
            }
        } else if (c != '%') {
            output += c;
            ++i;
        } else if (const std::size_t end = source.find('%', i + 1); end == std::string_view::npos) {
            output += "%%";
            ++i;
        } else if (end == i + 1) {
            output += "%%";
            i += 2;
        } else {
            appendVariable(source.substr(i + 1, end - i - 1), output);
            ++count;
            i = end + 1;
        }
    }
    text = std::move(output);
    return count;
}

}  // namespace

int expandEnvironmentReferences(std::string& text) {
    try {
        if (text.find_first_of("$%") == std::string::npos) {
            return 0;
        }
        return text.size() > 2 ? expandLongText(text) : expandShortText(text);
    } catch (const std::exception&) {
        return -1;
    }
}

}  // namespace orvex
