#include "environment/expand_environment_references.h"

#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace orvex {
namespace {

// One or two bytes cannot hold a reference: only a lone "%" is doubled, and "$$" stays as it is.
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
    // Searching no further than the last ")" keeps the expansion linear even with many unmatched "$(".
    const std::string_view sourceToLastParenthesis = source.substr(0, source.rfind(')') + 1);
    std::string output;
    output.reserve(4 * text.size());
    int count = 0;
    std::size_t i = 0;
    while (i < source.size()) {
        const bool isPercent = source[i] == '%';
        if (!isPercent && source.compare(i, 2, "$(") != 0) {
            output += source[i];
            i += source.compare(i, 2, "$$") == 0 ? 2 : 1;
            continue;
        }
        const std::size_t start = isPercent ? i + 1 : i + 2;
        const std::size_t end =
            isPercent ? source.find('%', start) : sourceToLastParenthesis.find(')', start);
        if (end == std::string_view::npos) {
            output += isPercent ? "%%" : "$(";
            i = start;
            continue;
        }
        if (end == start) {
            output += isPercent ? "%%" : "$()";
        } else {
            appendVariable(source.substr(start, end - start), output);
            ++count;
        }
        i = end + 1;
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
