#include "fuzz/scenario_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

namespace fuzz {
namespace {

using differential::Call;
using differential::Form;
using differential::Scenario;
using differential::WideArgument;

constexpr std::size_t mostCalls = 6;

Form formOf(char letter) {
    switch (letter) {
        case 'w':
            return Form::Wide;
        case 'p':
            return Form::Packed;
        case 'N':
            return Form::CNarrow;
        case 'W':
            return Form::CWide;
        case 'v':
            return Form::Variable;
        default:
            return Form::Narrow;
    }
}

Call callOf(std::string_view text) {
    Call call;
    if (!text.empty()) {
        call.form = formOf(text[0]);
        text.remove_prefix(1);
    }
    if (!text.empty() && text[0] == '*') {
        call.nullArguments = true;
        text.remove_prefix(1);
    }
    int count = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), count).ec == std::errc()) {
        call.count = count;
    }
    return call;
}

// Reads "\1F600;" into codePoint and returns its length; 0 when the text does not begin with such a thing.
std::size_t readCodePoint(std::string_view text, std::uint32_t& codePoint) {
    if (text[0] != '\\') {
        return 0;
    }
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data() + 1, end, codePoint, 16);
    const bool isClosed = error == std::errc() && next != end && *next == ';';
    return isClosed ? static_cast<std::size_t>(next + 1 - text.data()) : 0;
}

WideArgument wideArgumentOf(std::string_view text) {
    if (text == "\\null") {
        return std::nullopt;
    }
    std::u32string argument;
    while (!text.empty()) {
        std::uint32_t codePoint = 0;
        std::size_t length = readCodePoint(text, codePoint);
        if (length == 0) {
            codePoint = static_cast<unsigned char>(text[0]);
            length = 1;
        }
        if (codePoint == 0) {
            break;
        }
        argument += static_cast<char32_t>(codePoint);
        text.remove_prefix(length);
    }
    return argument;
}

void addVariable(std::string_view text, Scenario& scenario) {
    const std::string_view name = text.substr(0, text.find('='));
    if (!name.empty() && name.size() < text.size()) {
        scenario.environment[std::string(name)] = text.substr(name.size() + 1);
    }
}

void addArgument(std::string_view text, Scenario& scenario) {
    if (scenario.calls.empty()) {
        scenario.calls.emplace_back();
    }
    Call& call = scenario.calls.back();
    if (call.form == Form::Wide || call.form == Form::CWide) {
        call.wideArguments.push_back(wideArgumentOf(text));
    } else {
        call.arguments.emplace_back(text);
    }
}

// False when the line begins a call too many.
bool addLine(std::string_view line, Scenario& scenario) {
    const char kind = line.empty() ? ' ' : line[0];
    const std::string_view rest = line.substr(line.empty() ? 0 : 1);
    switch (kind) {
        case '=':
            addVariable(rest, scenario);
            return true;
        case '!':
            scenario.refused.emplace(rest);
            return true;
        case '>':
            if (scenario.calls.size() == mostCalls) {
                return false;
            }
            scenario.calls.push_back(callOf(rest));
            return true;
        case ' ':
            addArgument(rest, scenario);
            return true;
        default:
            addArgument(line, scenario);
            return true;
    }
}

}  // namespace

bool isScenarioText(std::string_view text) {
    return !text.empty() && std::string_view("=!>").find(text[0]) != std::string_view::npos;
}

Scenario scenarioFromText(std::string_view text) {
    Scenario scenario;
    bool mayGoOn = true;
    while (mayGoOn && !text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        mayGoOn = addLine(line.substr(0, line.find('\0')), scenario);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return scenario;
}

}  // namespace fuzz
