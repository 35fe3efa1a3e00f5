#include "differential/scenario.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <sstream>
#include <string>
#include <system_error>
#include <type_traits>

namespace differential {
namespace {

constexpr std::array<const char*, 6> formNames = {"narrow", "wide", "packed", "NarrowC", "WideC", "variable"};
constexpr std::size_t mostCalls = 6;

template <typename Text>
std::string escape(const Text& text) {
    std::ostringstream result;
    result << std::hex << std::uppercase;
    for (const auto character : text) {
        const auto c = static_cast<std::make_unsigned_t<typename Text::value_type>>(character);
        if (c >= 0x20 && c < 0x7F && c != '\\') {
            result << static_cast<char>(c);
        } else {
            result << '\\' << static_cast<std::uint32_t>(c) << ';';
        }
    }
    return result.str();
}

template <typename Text>
Text unescape(std::string_view text) {
    using Character = std::make_unsigned_t<typename Text::value_type>;
    Text result;
    while (!text.empty()) {
        std::uint32_t c = static_cast<unsigned char>(text[0]);
        std::size_t length = 1;
        if (text[0] == '\\') {
            std::uint32_t number = 0;
            const char* const end = text.data() + text.size();
            const auto [next, error] = std::from_chars(text.data() + 1, end, number, 16);
            if (error == std::errc() && next != end && *next == ';' &&
                static_cast<Character>(number) == number) {
                c = number;
                length = static_cast<std::size_t>(next - text.data()) + 1;
            }
        }
        result += static_cast<typename Text::value_type>(c);
        text.remove_prefix(length);
    }
    return result;
}

Call callOf(std::string_view text) {
    Call call;
    for (std::size_t form = 0; form < formNames.size(); ++form) {
        if (!text.empty() && text[0] == *formNames[form]) {
            call.form = static_cast<Form>(form);
        }
    }
    text.remove_prefix(std::min(text.find_first_of("*-0123456789"), text.size()));
    if (!text.empty() && text[0] == '*') {
        call.isNull = true;
        text.remove_prefix(1);
    }
    int count = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), count).ec == std::errc()) {
        call.count = count;
    }
    return call;
}

void addVariable(std::string_view text, Scenario& scenario) {
    auto variable = unescape<std::string>(text);
    variable.erase(std::min(variable.find('\0'), variable.size()));
    const std::size_t equals = variable.find('=');
    if (equals != 0 && equals != std::string::npos) {
        scenario.environment[variable.substr(0, equals)] = variable.substr(equals + 1);
    }
}

void addArgument(std::string_view text, Call& call) {
    if (!call.isWide()) {
        call.arguments.emplace_back(unescape<std::string>(text));
    } else if (text == "\\null") {
        call.wideArguments.emplace_back();
    } else {
        call.wideArguments.emplace_back(unescape<std::u32string>(text));
    }
}

}  // namespace

std::string escaped(const std::string& text) {
    return escape(text);
}

std::string describe(const Scenario& scenario) {
    std::string text;
    for (const auto& [name, value] : scenario.environment) {
        text += "=" + escape(name + "=" + value) + "\n";
    }
    for (const std::string& name : scenario.refused) {
        text += "!" + escape(name) + "\n";
    }
    for (const Call& call : scenario.calls) {
        text += std::string(">") + formNames[static_cast<std::size_t>(call.form)] + (call.isNull ? "*" : "") +
                (call.count ? std::to_string(*call.count) : "") + "\n";
        for (const std::string& argument : call.arguments) {
            text += " " + escape(argument) + "\n";
        }
        for (const WideArgument& argument : call.wideArguments) {
            text += " " + (argument ? escape(*argument) : "\\null") + "\n";
        }
    }
    return text;
}

Scenario scenarioOf(std::string_view text) {
    Scenario scenario;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        const char kind = line.empty() ? ' ' : line[0];
        const std::string_view rest = line.substr(line.empty() ? 0 : 1);
        if (kind == '=') {
            addVariable(rest, scenario);
        } else if (kind == '!') {
            scenario.refused.insert(unescape<std::string>(rest));
        } else if (kind == '>') {
            if (scenario.calls.size() == mostCalls) {
                break;
            }
            scenario.calls.push_back(callOf(rest));
        } else {
            if (scenario.calls.empty()) {
                scenario.calls.emplace_back();
            }
            addArgument(kind == ' ' ? rest : line, scenario.calls.back());
        }
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return scenario;
}

}  // namespace differential
