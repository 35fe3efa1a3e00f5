// Classifies the tokens of a list as options, values and positional arguments.

#ifndef ORVEX_OPTION_SCANNER_H
#define ORVEX_OPTION_SCANNER_H

#include "OrvexTestCommandLineParser.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex {

// The string without its leading dashes; unchanged if it holds nothing but dashes.
inline std::string_view withoutLeadingDashes(std::string_view text) {
    const std::size_t start = text.find_first_not_of('-');
    return start == std::string_view::npos ? text : text.substr(start);
}

// Whether formatted extraction in the classic locale reads a double from the start of the token. The stream
// turns any exception during the extraction into a failure, so the result is false if memory runs out there.
bool isNumber(std::string_view token);

// Whether the token begins with a dash and is not a number.
inline bool isOptionToken(std::string_view token) {
    // After the sign, every standard library expects a digit, a decimal point, or the first letter of "inf"
    // or "nan". Looking at that byte first spares most options the cost of a stream.
    constexpr std::string_view startOfNumber = "0123456789.iInN";
    return !token.empty() && token.front() == '-' &&
           !(token.size() > 1 && startOfNumber.find(token[1]) != std::string_view::npos && isNumber(token));
}

// What a scan finds. The strings are views into the tokens.
struct Finding {
    enum Kind {
        Positional,          // value: the token
        DroppedProgramName,  // value: the token
        Flag,                // name: an option without a value
        Value,               // name: an option; value: the next token
        InlineValue          // name and value of "name=value"
    };

    Kind kind;
    std::string_view name;
    std::string_view value;
    std::size_t index;  // of the token, or of the option if its value is the next token
};

template <typename Sink>
class Scanner {
public:
    Scanner(const std::vector<std::string_view>& tokens, const OptionRegistry& grammar, const Sink& report)
        : tokens(tokens), grammar(grammar), report(report) {}

    void scan(bool hasProgramName) {
        while (index < tokens.size()) {
            const std::string_view token = tokens[index];
            if (isOptionToken(token)) {
                scanOption(token);
            } else {
                const bool isDropped = index == 0 && hasProgramName;
                report({isDropped ? Finding::DroppedProgramName : Finding::Positional, {}, token, index});
                ++index;
            }
        }
    }

private:
    // Advances index past the option and its value.
    void scanOption(std::string_view token) {
        const std::size_t first = index++;
        std::string_view name = withoutLeadingDashes(token);
        if (!grammar.hasMode(OptionRegistry::NoInlineValue)) {
            const std::size_t equals = name.find('=');
            if (equals != std::string_view::npos) {
                report({Finding::InlineValue, name.substr(0, equals), name.substr(equals + 1), first});
                return;
            }
        }
        const bool hasOneDash = token.size() == name.size() + 1;
        if (grammar.hasMode(OptionRegistry::GroupedShortFlags) && hasOneDash && !isValueOption(name)) {
            name = takeGroupedFlags(name, first);
            if (name.empty()) {
                return;
            }
        }
        if (index < tokens.size() && takesValue(name) && !isOptionToken(tokens[index])) {
            report({Finding::Value, name, tokens[index], first});
            ++index;
        } else {
            report({Finding::Flag, name, {}, first});
        }
    }

    // Returns the last letter if it is an option that takes a value, otherwise an empty string.
    std::string_view takeGroupedFlags(std::string_view letters, std::size_t first) {
        std::string_view valueLetter = letters.substr(letters.size() - 1);
        if (isValueOption(valueLetter)) {
            letters.remove_suffix(1);
        } else {
            valueLetter = std::string_view();
        }
        for (std::size_t i = 0; i < letters.size(); ++i) {
            report({Finding::Flag, letters.substr(i, 1), {}, first});
        }
        return valueLetter;
    }

    bool takesValue(std::string_view name) const {
        return isValueOption(name) || grammar.isMultiValueOption({name.data(), name.size()}) ||
               grammar.hasMode(OptionRegistry::UnknownTakesValue);
    }

    bool isValueOption(std::string_view name) const {
        return grammar.isValueOption({name.data(), name.size()});
    }

    const std::vector<std::string_view>& tokens;
    const OptionRegistry& grammar;
    const Sink& report;
    std::size_t index = 0;
};

// Calls the sink with each Finding, in order. The first token is the program name.
// grammar: the registered names and the mode.
// hasProgramName: whether an earlier scan has found a positional argument; if so, this program name is
// dropped.
template <typename Sink>
void scanTokens(const std::vector<std::string_view>& tokens, const OptionRegistry& grammar,
                bool hasProgramName, const Sink& sink) {
    Scanner<Sink>(tokens, grammar, sink).scan(hasProgramName);
}

}  // namespace orvex

#endif
