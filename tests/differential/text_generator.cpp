#include "differential/text_generator.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace differential {
namespace {

constexpr std::string_view numericOptions[] = {"packetsize", "packetdelay", "socketbuffer", "camemu"};

const std::vector<std::string>& optionNames() {
    static const std::vector<std::string> names = {
        "o",
        "tl",
        "p",
        "packetsize",
        "packetdelay",
        "socketbuffer",
        "camemu",
        "x",
        "w",
        "testname",
        "pcname",
        "osname",
        "ostype",
        "bit",
        "?",
        "tdc_dxml",
        "tdc_guid",
        "tdc_runname",
        "tdc_group",
        "h",
        "H",
        "tdc_userid",
        "tdc_rundescription",
        "tdc_product",
        "tdc_variant",
        "help",
        "u",
        "tdc_vcsrevision",
        "tdc_vcsbranch",
        "tdc_name",
        "tdc_pcname",
        "tdc_osname",
        "TL",
        "HELP",
        "",
        "ow",
    };
    return names;
}

}  // namespace

std::string TextGenerator::programName() {
    static const std::vector<std::string> names = {"app", "app", "app",  "./mytest", "/opt/x y/test", "",
                                                   "-w",  "-5",  "-x=1", "-o",       "DravikGTC"};
    return choices.oneIn(32) ? bytes() : choices.oneOf(names);
}

std::string TextGenerator::number() {
    static const std::vector<std::string> texts = {
        "1500", "0",    "9",      "8192", "12abc",    "3x",  "x3",   "-5",    "-0.25", "-1e3",  " 5",
        "/",    ":",    "+5",     "-.5",  "-.",       "-e5", "-inf", "-nan",  "-0x1p", "-5abc", "-1e",
        "0x10", "1e99", "-1e999", "\t7",  "\xD9\xA3", "-i",  "-n",   "-infx", "00",    "- 5",   "--5"};
    return choices.oneOf(texts);
}

std::string TextGenerator::transportLayers() {
    static const std::vector<std::string> classes = {"DravikGigE", "DravikGTC",  "DravikUsb",  "A",
                                                     "B",          "dravikgige", "DravikGTCx", "DravikGigEx",
                                                     "",           "\xC3\xA9"};
    static const std::vector<std::string> drivers = {
        "", ":SocketDriver", ":WindowsFilterDriver", ":", ":A", ":\x80z", "::B", ":DravikGTC", ":B:C", ":z"};
    std::string list;
    for (std::uint32_t count = choices.below(6); count > 0; --count) {
        list += choices.oneOf(classes);
        list += choices.oneOf(drivers);
        list += choices.oneIn(12) ? ",," : (count > 1 ? "," : "");
    }
    return list;
}

std::string TextGenerator::longText() {
    // Around the size of a slot of the record's buffer.
    std::string text(choices.below(4) == 0 ? choices.below(1000) : 250 + choices.below(12), 'v');
    if (choices.oneIn(4)) {
        text += bytes();
    }
    return text;
}

std::string TextGenerator::bytes() {
    static constexpr std::string_view special = " \t\"'\\$%()=-:,|59aZ\n/.+en";
    std::string text;
    for (std::uint32_t count = choices.below(12); count > 0; --count) {
        text += choices.oneIn(4) ? static_cast<char>(1 + choices.below(255)) : choices.oneOf(special);
    }
    return text;
}

std::string TextGenerator::value() {
    static const std::vector<std::string> words = {
        "a",
        "result.xml",
        "Suite",
        "Suite::Case",
        "key=value",
        "my file",
        "$(HOMEDIR)/x",
        "%HOMEDIR%",
        "$(A=B)",
        "$$",
        "%",
        "a%b",
        "1a2b3c",
        "main",
        "it's",
        "say \"hello\"",
        "back\\",
        "",
        "=",
        "-",
        "--",
        "---",
        "-=",
        "x=y=z",
        "\xC3\xA9",
        "\xFF\xFE",
        "tab\there",
        "line\nbreak",
    };
    switch (choices.below(8)) {
        case 4:
            return number();
        case 5:
            return transportLayers();
        case 6:
            return bytes();
        case 7:
            return choices.oneIn(3) ? longText() : "word";
        default:
            return choices.oneOf(words);
    }
}

std::string TextGenerator::option() {
    static const std::vector<std::string> dashes = {"-", "-", "-", "-", "--", "---"};
    std::string text = choices.oneOf(dashes);
    text += choices.oneOf(optionNames());
    return text;
}

std::string TextGenerator::valueFor(const std::string& option) {
    if (choices.oneIn(8)) {
        return value();
    }
    const std::string name = option.substr(std::min(option.find_first_not_of('-'), option.size()));
    if (name == "tl") {
        return transportLayers();
    }
    if (std::find(std::begin(numericOptions), std::end(numericOptions), name) != std::end(numericOptions)) {
        // Mostly good ones, so that a parse gets to its end.
        return choices.oneIn(8) ? number() : std::to_string(choices.below(10000));
    }
    return value();
}

std::string TextGenerator::token() {
    switch (choices.below(4)) {
        case 0:
            return option();
        case 1: {
            const std::string name = option();
            const std::string text = valueFor(name);
            return name + "=" + text;
        }
        default:
            return value();
    }
}

std::vector<std::string> TextGenerator::tokens() {
    std::vector<std::string> list;
    for (std::uint32_t count = choices.below(choices.oneIn(16) ? 60 : 8); count > 0; --count) {
        if (choices.oneIn(3)) {
            list.push_back(token());
        } else {
            const std::string name = option();
            list.push_back(name);
            list.push_back(valueFor(name));
        }
    }
    return list;
}

std::string TextGenerator::inQuoting(const std::string& token) {
    constexpr std::uint32_t mixed = 4;
    const std::uint32_t style = choices.below(mixed + 1);
    std::string text;
    char open = '\0';
    const auto switchTo = [&](char quote) {
        if (open != quote) {
            text += open != '\0' ? std::string(1, open) : "";
            text += quote != '\0' ? std::string(1, quote) : "";
            open = quote;
        }
    };
    if (token.empty()) {
        return choices.oneIn(2) ? "''" : "\"\"";
    }
    for (const char c : token) {
        const std::uint32_t styleHere = style == mixed ? choices.below(mixed) : style;
        switchTo(styleHere == 1 ? '"' : styleHere == 2 ? '\'' : '\0');
        const bool isSpecial = open == '\0' ? std::string_view(" \t\"'\\").find(c) != std::string_view::npos
                                            : c == open || c == '\\';
        text += isSpecial || styleHere == 3 ? "\\" : "";
        text += c;
    }
    switchTo('\0');
    return text;
}

std::string TextGenerator::variableText() {
    static const std::vector<std::string> separators = {" ", " ", " ", "\t", "  ", " \t "};
    std::string text = choices.oneIn(8) ? choices.oneOf(separators) : "";
    for (const std::string& token : tokens()) {
        text += inQuoting(token);
        text += choices.oneOf(separators);
    }
    if (choices.oneIn(8)) {
        text += bytes();
    }
    if (choices.oneIn(12) && !text.empty()) {
        text.erase(choices.below(static_cast<std::uint32_t>(text.size())), 1);
    }
    return text;
}

}  // namespace differential
