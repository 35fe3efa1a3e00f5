// The scan of a token list: which tokens are options, which are values, and which are arguments of their own.

#ifndef ORVEX_OPTION_SCANNER_H
#define ORVEX_OPTION_SCANNER_H

#include "OrvexTestCommandLineParser.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex {

// The string without its leading dashes; unchanged when it holds nothing but dashes.
inline std::string_view withoutLeadingDashes(std::string_view text) {
    const std::size_t start = text.find_first_not_of('-');
    return start == std::string_view::npos ? text : text.substr(start);
}

// Whether formatted extraction in the classic locale reads a double from the start of the token.
bool isNumber(std::string_view token);

// Whether the token begins with a dash and is not a number.
inline bool isOptionToken(std::string_view token) {
    // After the sign, every standard library expects a digit, a decimal point, or the first letter of "inf"
    // or "nan". Looking at that byte first spares most options the cost of a stream.
    constexpr std::string_view startOfNumber = "0123456789.iInN";
    return !token.empty() && token.front() == '-' &&
           !(token.size() > 1 && startOfNumber.find(token[1]) != std::string_view::npos && isNumber(token));
}

// One pass over a token list, the first token of which is the program name. The visitor is told, in
// order, what the tokens are:
//
//     positional(token)           an argument of its own
//     droppedProgramName(token)   the program name, when there is a positional argument already
//     flag(name)                  an option without a value
//     value(name, value)          an option, and its value in the next token
//     inlineValue(name, value)    an option, and its value after a "=" in the same token
//
// and is asked hasPositionals(), isValueOption(name), isMultiValueOption(name) and, for each bit of
// OptionRegistry::Mode, hasMode(bit). All strings are views into the tokens.
template <typename Visitor>
class OptionScanner {
public:
    OptionScanner(const std::vector<std::string_view>& tokens, Visitor& visitor)
        : tokens(tokens), visitor(visitor) {}

    void scan() {
        while (next < tokens.size()) {
            const std::string_view token = tokens[next];
            const bool isFirst = next == 0;
            ++next;
            if (isOptionToken(token)) {
                scanOption(token);
            } else if (isFirst && visitor.hasPositionals()) {
                visitor.droppedProgramName(token);
            } else {
                visitor.positional(token);
            }
        }
    }

private:
    void scanOption(std::string_view token) {
        std::string_view name = withoutLeadingDashes(token);
        const std::size_t equals =
            visitor.hasMode(OptionRegistry::NoInlineValue) ? std::string_view::npos : name.find('=');
        if (equals != std::string_view::npos) {
            visitor.inlineValue(name.substr(0, equals), name.substr(equals + 1));
            return;
        }
        const bool hasOneDash = token.size() == name.size() + 1;
        if (visitor.hasMode(OptionRegistry::GroupedShortFlags) && hasOneDash &&
            !visitor.isValueOption(name)) {
            name = takeGroupedFlags(name);
            if (name.empty()) {
                return;
            }
        }
        if (next < tokens.size() && takesValue(name) && !isOptionToken(tokens[next])) {
            visitor.value(name, tokens[next++]);
        } else {
            visitor.flag(name);
        }
    }

    // Returns the last letter if it is an option that takes a value, else nothing.
    std::string_view takeGroupedFlags(std::string_view letters) {
        std::string_view valueLetter = letters.substr(letters.size() - 1);
        if (visitor.isValueOption(valueLetter)) {
            letters.remove_suffix(1);
        } else {
            valueLetter = std::string_view();
        }
        for (std::size_t i = 0; i < letters.size(); ++i) {
            visitor.flag(letters.substr(i, 1));
        }
        return valueLetter;
    }

    bool takesValue(std::string_view name) const {
        return visitor.isMultiValueOption(name) || visitor.isValueOption(name) ||
               visitor.hasMode(OptionRegistry::UnknownTakesValue);
    }

    const std::vector<std::string_view>& tokens;
    Visitor& visitor;
    std::size_t next = 0;
};

}  // namespace orvex

#endif
