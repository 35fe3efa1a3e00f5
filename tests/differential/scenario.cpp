#include "differential/scenario.h"

#include <array>
#include <utility>

namespace differential {
namespace {

Call makeCall(Form form, std::vector<std::string> arguments) {
    Call call;
    call.form = form;
    call.arguments = std::move(arguments);
    return call;
}

Call makeCall(Form form, std::vector<WideArgument> arguments) {
    Call call;
    call.form = form;
    call.wideArguments = std::move(arguments);
    return call;
}

// Escapes of a fixed length, so that what follows is never taken as part of them.
std::string escaped(std::uint32_t value, int digits, const char* escape) {
    std::string text = escape;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        text += "0123456789abcdef"[(value >> shift) & 0xF];
    }
    return text;
}

std::string octal(unsigned char byte) {
    std::string text = "\\";
    for (const int shift : {6, 3, 0}) {
        text += static_cast<char>('0' + ((byte >> shift) & 7));
    }
    return text;
}

bool isPlain(std::uint32_t c) {
    return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

std::string quotedWide(const std::u32string& text) {
    std::string literal = "U\"";
    for (const char32_t c : text) {
        const auto value = static_cast<std::uint32_t>(c);
        if (isPlain(value)) {
            literal += static_cast<char>(value);
        } else if (value == '"' || value == '\\') {
            literal += std::string("\\") + static_cast<char>(value);
        } else {
            // A universal character name cannot stand for all of these values; end the literal behind it,
            // so that a digit that follows is not taken as part of it.
            literal += escaped(value, 8, "\\x") + "\" U\"";
        }
    }
    return literal + "\"";
}

template <typename Items, typename Write>
std::string braced(const Items& items, const Write& write) {
    std::string text = "{";
    for (const auto& item : items) {
        text += (text.size() > 1 ? ", " : "") + write(item);
    }
    return text + "}";
}

std::string describeText(const std::string& text) {
    return quoted(text);
}

std::string describeWide(const WideArgument& argument) {
    return argument ? quotedWide(*argument) : "std::nullopt";
}

}  // namespace

Call narrow(std::vector<std::string> arguments) {
    return makeCall(Form::Narrow, std::move(arguments));
}

Call wide(std::vector<WideArgument> arguments) {
    return makeCall(Form::Wide, std::move(arguments));
}

Call packed(std::vector<std::string> arguments) {
    return makeCall(Form::Packed, std::move(arguments));
}

Call cNarrow(std::vector<std::string> arguments) {
    return makeCall(Form::CNarrow, std::move(arguments));
}

Call cWide(std::vector<WideArgument> arguments) {
    return makeCall(Form::CWide, std::move(arguments));
}

Call variable(std::string name, std::string programName) {
    return makeCall(Form::Variable, std::vector<std::string>{std::move(name), std::move(programName)});
}

Call withCount(Call call, int count) {
    call.count = count;
    return call;
}

Call withNull(Call call, int count) {
    call.nullArguments = true;
    call.count = count;
    return call;
}

std::string quoted(const std::string& text) {
    std::string literal = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (isPlain(byte)) {
            literal += c;
        } else if (c == '"' || c == '\\') {
            literal += std::string("\\") + c;
        } else if (c == '\t') {
            literal += "\\t";
        } else if (c == '\n') {
            literal += "\\n";
        } else {
            literal += octal(byte);
        }
    }
    return literal + "\"";
}

std::string describe(const Call& call) {
    static constexpr std::array<const char*, 6> functions = {"narrow",  "wide",  "packed",
                                                             "cNarrow", "cWide", "variable"};
    std::string text = functions[static_cast<std::size_t>(call.form)];
    if (call.form == Form::Wide || call.form == Form::CWide) {
        text += "(" + braced(call.wideArguments, describeWide) + ")";
    } else if (call.form == Form::Variable) {
        std::vector<std::string> both = call.arguments;
        both.resize(2);
        text += "(" + quoted(both[0]) + ", " + quoted(both[1]) + ")";
    } else {
        text += "(" + braced(call.arguments, describeText) + ")";
    }
    if (call.nullArguments) {
        return "withNull(" + text + ", " + std::to_string(call.count.value_or(0)) + ")";
    }
    return call.count ? "withCount(" + text + ", " + std::to_string(*call.count) + ")" : text;
}

std::string describe(const Scenario& scenario) {
    std::string text = "Scenario scenario;\n";
    if (!scenario.environment.empty()) {
        text += "scenario.environment = " +
                braced(scenario.environment,
                       [](const auto& item) {
                           return "{" + quoted(item.first) + ", " + quoted(item.second) + "}";
                       }) +
                ";\n";
    }
    if (!scenario.refused.empty()) {
        text += "scenario.refused = " + braced(scenario.refused, describeText) + ";\n";
    }
    text += "scenario.calls = {";
    for (const Call& call : scenario.calls) {
        text += "\n    " + describe(call) + ",";
    }
    return text + "\n};\n";
}

}  // namespace differential
