// Random scenarios: strings of every kind that the parser reads, in all forms of a call.

#include "differential/scenario.h"
#include "model/model.h"
#include "support/known_options.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace differential {
namespace {

class Generator {
    std::mt19937_64 engine;

    std::uint32_t below(std::uint32_t bound) {
        return static_cast<std::uint32_t>(engine() % bound);
    }

    bool oneIn(std::uint32_t bound) {
        return below(bound) == 0;
    }

    template <typename List>
    auto oneOf(const List& list) {
        return list[below(static_cast<std::uint32_t>(std::size(list)))];
    }

public:
    explicit Generator(std::uint64_t seed) : engine(seed) {}

    Scenario scenario() {
        Scenario result;
        for (std::uint32_t count = 1 + below(3); count > 0; --count) {
            result.calls.push_back(oneIn(9) ? variableCall() : call());
        }
        auto& variables = result.environment;
        for (const char* name : {"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_"}) {
            if (oneIn(2)) {
                variables[name] = variableText();
            }
        }
        if (oneIn(4)) {
            variables["MY_ARGS"] = variableText();
        }
        if (oneIn(2)) {
            variables["GENICAM_GENTL64_PATH"] = value();
        }
        if (oneIn(4)) {
            variables["A"] = "B=C";
            variables["HOMEDIR"] = value();
        }
        for (std::uint32_t count = below(6); count > 0; --count) {
            variables[oneOf(knownVariables)] = value();
        }
        if (oneIn(12)) {
            result.refused.insert(oneOf(knownVariables));
        }
        return result;
    }

private:
    Call call() {
        constexpr Form forms[] = {Form::Narrow,  Form::Narrow, Form::Narrow, Form::NarrowC,
                                  Form::NarrowC, Form::Wide,   Form::WideC,  Form::Packed};
        Call result;
        result.form = oneOf(forms);
        Strings arguments = tokens();
        arguments.insert(arguments.begin(), programName());
        const auto size = static_cast<int>(arguments.size());
        if (result.isWide()) {
            for (const std::string& argument : arguments) {
                result.wideArguments.push_back(wideArgument(argument));
            }
        } else {
            result.arguments = std::move(arguments);
        }
        if (oneIn(24)) {
            result.count = oneOf(std::vector<int>{0, -1, INT_MIN, size - 1, size + 1});
            result.isNull = oneIn(2);
        }
        return result;
    }

    Call variableCall() {
        static const Strings names = words("MY_ARGS MY_ARGS ORVEX_TEST_ARGS UNSET '' A=B");
        return {Form::Variable, {oneOf(names), programName()}, {}, {}, oneIn(16)};
    }

    WideArgument wideArgument(const std::string& argument) {
        static constexpr char32_t boundaries[] = {0x7F,   0x80,   0x7FF,   0x800,    0xD800,  0xDFFF,
                                                  0xFFFD, 0xFFFF, 0x10000, 0x10FFFF, 0x1F600, 0xE9};
        static constexpr char32_t invalid[] = {0x110000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        std::u32string text;
        for (const char c : argument) {
            text += static_cast<char32_t>(static_cast<unsigned char>(c));
        }
        for (std::uint32_t count = oneIn(3) ? below(5) : 0; count > 0; --count) {
            text.insert(below(static_cast<std::uint32_t>(text.size() + 1)), 1, oneOf(boundaries));
        }
        if (oneIn(128)) {
            text += oneOf(invalid);
        }
        return oneIn(256) ? std::nullopt : WideArgument(text);
    }

    std::string programName() {
        static const Strings names =
            words("app|app|app|./mytest|/opt/x y/test|''|-w|-5|-x=1|-o|DravikGTC", '|');
        return oneIn(32) ? bytes() : oneOf(names);
    }

    // The arguments after the program name.
    Strings tokens() {
        Strings list;
        for (std::uint32_t count = below(oneIn(16) ? 60 : 8); count > 0; --count) {
            if (oneIn(3)) {
                list.push_back(oneIn(2) ? value() : option());
                continue;
            }
            const std::string name = option();
            const std::string text = valueFor(name);
            if (oneIn(3)) {
                list.push_back(name + "=" + text);
            } else {
                list.insert(list.end(), {name, text});
            }
        }
        return list;
    }

    std::string option() {
        // Names that are not options.
        static const Strings others = words("u tdc_name tdc_pcname tdc_osname TL HELP '' ow");
        const std::string dashes = oneIn(6) ? "--" : oneIn(12) ? "---" : "-";
        return dashes + (oneIn(5) ? oneOf(others) : oneOf(knownOptions).name);
    }

    std::string valueFor(const std::string& option) {
        const std::string name = model::trimLeadingDashes(option);
        const auto* const known =
            std::find_if(std::begin(knownOptions), std::end(knownOptions),
                         [&name](const KnownOption& candidate) { return candidate.name == name; });
        if (oneIn(8) || known == std::end(knownOptions)) {
            return value();
        }
        if (known->kind == OptionKind::Number) {
            // Mostly good ones, so that a parse gets to its end.
            return oneIn(8) ? number() : std::to_string(below(10000));
        }
        return name == "tl" ? transportLayers() : value();
    }

    std::string value() {
        static const Strings texts = words(
            "a|result.xml|Suite|Suite::Case|key=value|my "
            "file|$(HOMEDIR)/x|%HOMEDIR%|$(A=B)|$$|%|a%b|1a2b3c|main|"
            "it's|say \"hello\"|back\\|''|=|-|--|---|-=|x=y=z|\xC3\xA9|\xFF\xFE|tab\there|line\nbreak",
            '|');
        switch (below(8)) {
            case 0:
                return number();
            case 1:
                return transportLayers();
            case 2:
                return bytes();
            case 3:
                return oneIn(3) ? longText() : "word";
            default:
                return oneOf(texts);
        }
    }

    std::string number() {
        static const Strings texts = words(
            "1500|0|9|8192|12abc|3x|x3|-5|-0.25|-1e3| "
            "5|/|:|+5|-.5|-.|-e5|-inf|-nan|-0x1p|-5abc|-1e|0x10|1e99|-1e999|"
            "\t7|\xD9\xA3|-i|-n|-infx|00|- 5|--5",
            '|');
        return oneOf(texts);
    }

    std::string transportLayers() {
        static const Strings classes =
            words("DravikGigE DravikGTC DravikUsb A B dravikgige DravikGTCx DravikGigEx '' \xC3\xA9");
        static const Strings drivers =
            words("'' :SocketDriver :WindowsFilterDriver : :A :\x80z ::B :DravikGTC :B:C :z");
        std::string list;
        for (std::uint32_t count = below(6); count > 0; --count) {
            list += oneOf(classes) + oneOf(drivers) + (oneIn(12) ? ",," : count > 1 ? "," : "");
        }
        return list;
    }

    // Around the size of a slot of the record's buffer.
    std::string longText() {
        std::string text(oneIn(4) ? below(1000) : 250 + below(12), 'v');
        return oneIn(4) ? text + bytes() : text;
    }

    std::string bytes() {
        static constexpr std::string_view special = " \t\"'\\$%()=-:,|59aZ\n/.+en";
        std::string text;
        for (std::uint32_t count = below(12); count > 0; --count) {
            text += oneIn(4) ? static_cast<char>(1 + below(255)) : oneOf(special);
        }
        return text;
    }

    // The value of an argument variable: tokens in random quoting, sometimes malformed.
    std::string variableText() {
        static const Strings separators = words(" |\t|  | \t ", '|');
        std::string text = oneIn(8) ? oneOf(separators) : "";
        for (const std::string& token : tokens()) {
            text += quoted(token) + (oneIn(2) ? " " : oneOf(separators));
        }
        if (oneIn(8)) {
            text += bytes();
        }
        if (oneIn(12) && !text.empty()) {
            text.erase(below(static_cast<std::uint32_t>(text.size())), 1);
        }
        return text;
    }

    // In quotes of one kind, or with backslashes; what is special there is escaped.
    std::string quoted(const std::string& token) {
        const std::string quote = oneOf(words("'' \" ' '"));
        if (token.empty() && quote.empty()) {
            return "\"\"";
        }
        std::string text;
        for (const char c : token) {
            const std::string special = quote.empty() ? " \t\"'\\" : quote + "\\";
            const bool isEscaped = special.find(c) != std::string::npos || oneIn(8);
            text += (isEscaped ? "\\" : "") + std::string(1, c);
        }
        return quote + text + quote;
    }
};

}  // namespace

Scenario scenarioFromSeed(std::uint64_t seed) {
    return Generator(seed).scenario();
}

}  // namespace differential
