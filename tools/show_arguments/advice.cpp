#include "options.h"
#include "parser/option_scanner.h"
#include "quoting.h"
#include "report.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

extern char** environ;

namespace tool {
namespace {

// An argument, and how many there are from here on.
struct Place {
    const Argument& here;
    std::size_t count;

    // The next argument in the same source; null if this is the last one.
    const Argument* next() const {
        return count > 1 && (&here)[1].source == here.source ? &here + 1 : nullptr;
    }
    // Null if what follows at this distance is not a test path.
    const Argument* path(std::size_t distance) const {
        return distance < count && (&here)[distance].isTestPath ? &here + distance : nullptr;
    }
};

// What is wrong with an argument.
struct Slip {
    std::string message = {};
    std::string correction = {};
    std::size_t covered = 1;  // how many arguments it is about, and the correction replaces
};

using Advice = std::optional<Slip>;

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view spaces = " \t\r\n";
    const std::size_t start = std::min(text.find_first_not_of(spaces), text.size());
    return std::string(text.substr(start, text.find_last_not_of(spaces) + 1 - start));
}

std::string quotedFor(std::string_view source, std::string_view text) {
    return source == commandLine ? quotedForShell(text) : quotedForVariable(text);
}

std::string typed(const Place& place, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        for (const std::string& token : (&place.here)[i].tokens) {
            text += (text.empty() ? "" : " ") + quotedFor(place.here.source, token);
        }
    }
    return text;
}

// The option with the value, in a form that works; empty if there is none.
std::string correct(const Place& place, const ToolOption& option, std::string_view value) {
    if (!isUsableValue(option, value)) {
        return "";
    }
    if (option.kind == ToolOptionKind::InlineOnly || orvex::isOptionToken(value)) {
        return quotedFor(place.here.source, fmt::format("-{}={}", option.name, value));
    }
    return fmt::format("-{} {}", option.name, quotedFor(place.here.source, value));
}

// Replaces what was typed with the option and the value that was meant for it.
Slip useOption(const Place& place, const ToolOption& option, const std::string& message) {
    const std::string& token = place.here.tokens[0];
    const std::size_t equals = token.find('=');
    if (equals != std::string::npos) {
        return {message, correct(place, option, token.substr(equals + 1))};
    }
    if (option.kind == ToolOptionKind::Flag) {
        return {message, quotedFor(place.here.source, fmt::format("-{}", option.name))};
    }
    const Argument* path = place.path(1);
    if (path == nullptr) {
        return {message + " It needs a value."};
    }
    const bool isValue = !startsWith(path->value, "=");
    const std::string correction = isValue ? correct(place, option, path->value) : "";
    return {fmt::format("{} {} became a test path.", message, inQuotes(path->value)), correction,
            correction.empty() ? 1U : 2U};
}

// Hints about one argument or several consecutive ones.

Advice onlyUsageTextNamesOption(const Place& place) {
    const ToolOption& option = *place.here.option;
    return useOption(place, *findOption(option.instead),
                     fmt::format(R"("-{}" is in the usage text, but nothing reads it. Use "-{}".)",
                                 option.name, option.instead));
}

// The option with the longest name that the text begins with.
const ToolOption* findPrefix(std::string_view text) {
    const ToolOption* longest = nullptr;
    for (const ToolOption& option : toolOptions()) {
        const bool isLonger = longest == nullptr || option.name.size() > longest->name.size();
        if (isLonger && startsWith(text, option.name) && option.kind != ToolOptionKind::Unread) {
            longest = &option;
        }
    }
    return longest;
}

// "-oresult.txt", "-packetsize1500", "-packetsize:1500", "-o = f" as one argument
Advice valueIsAttached(const Place& place) {
    const std::string_view text = orvex::withoutLeadingDashes(place.here.tokens[0]);
    const ToolOption* option = findPrefix(text);
    if (option == nullptr) {
        return std::nullopt;
    }
    std::string_view value = text.substr(option->name.size());
    // "-output" is more likely a misspelt name than "-o utput".
    const bool isWord = value.find_first_of("abcdefghijklmnopqrstuvwxyz_-") == 0 &&
                        place.here.name.find_first_of("./") == std::string::npos;
    value.remove_prefix(std::min(value.find_first_not_of(": ="), value.size()));
    if (isWord || !isUsableValue(*option, value)) {
        return std::nullopt;
    }
    // If an argument was quoted as a whole, it may contain several options.
    const bool isOneOption = value.find(" -") == std::string_view::npos;
    return Slip{fmt::format("{} is not a known option. Separate the value from the name.",
                            inQuotes(place.here.tokens[0])),
                isOneOption ? correct(place, *option, value) : ""};
}

Advice optionIsUnknown(const Place& place) {
    const std::string message = fmt::format("{} is not a known option", inQuotes(place.here.tokens[0]));
    if (const ToolOption* option = suggestOption(place.here.name)) {
        return useOption(place, *option, fmt::format(R"({}. Did you mean "-{}"?)", message, option->name));
    }
    const Argument* path = place.here.kind == orvex::Finding::Flag ? place.path(1) : nullptr;
    return Slip{message + " and is ignored." +
                (path == nullptr ? "" : fmt::format(" {} became a test path.", inQuotes(path->value)))};
}

Advice flagHasValue(const Place& place) {
    return Slip{fmt::format(R"("-{}" takes no value: {} is not read. Leave out the value to switch it on.)",
                            place.here.name, inQuotes(place.here.tokens[0])),
                quotedFor(place.here.source, fmt::format("-{}", place.here.name))};
}

Advice equalsSignIsSpaced(const Place& place) {
    const ToolOption& option = *place.here.option;
    const bool isInline = place.here.kind == orvex::Finding::InlineValue;
    // The text after the name, including the "=", joined from as many test paths as needed.
    std::string text = (isInline ? "=" : "") + place.here.value;
    std::size_t covered = 1;
    while ((text.empty() || text == "=") && place.path(covered) != nullptr) {
        text += place.path(covered)->value;
        ++covered;
    }
    const bool isSpaced = !isInline || covered > 1;
    const std::string value = text.substr(std::min(text.find_first_not_of('='), text.size()));
    if (!isSpaced || !startsWith(text, "=") || !isUsableValue(option, value)) {
        return std::nullopt;
    }
    return Slip{fmt::format(R"(There must be no space before or after the "=" of "-{}".)", option.name),
                correct(place, option, value), covered};
}

Advice equalsSignIsMissing(const Place& place) {
    return useOption(place, *place.here.option,
                     fmt::format(R"("-{}" takes a value only after "=".)", place.here.name));
}

Advice valueIsMissing(const Place& place) {
    const ToolOption& option = *place.here.option;
    const std::string message = fmt::format(R"("-{}" has no value)", option.name);
    const Argument* next = place.next();
    if (next == nullptr) {
        return Slip{message + ": it is the last argument."};
    }
    if (next->option != nullptr) {
        return Slip{fmt::format(R"({}: the next argument is the option "-{}".)", message, next->name)};
    }
    const std::string value = inQuotes(next->tokens[0]);
    const std::string correction = correct(place, option, next->tokens[0]);
    const bool isSlip = suggestOption(next->name) != nullptr || valueIsAttached({*next, place.count - 1});
    if (isSlip || correction.empty()) {
        return Slip{fmt::format("{}: the next argument, {}, begins with a dash.", message, value)};
    }
    return Slip{fmt::format(R"({}: the next argument begins with a dash. If {} is the value, use "=".)",
                            message, value),
                correction, 2};
}

// Whether the byte ends a part of a value of the option.
bool isSeparator(std::string_view option, char byte) {
    return option == "tl" ? byte == ',' || byte == ':' : option == "p" && byte == '=';
}

Advice quotesAreCurly(const Place& place) {
    constexpr std::string_view pairs[][2] = {{"\u201c", "\u201d"}, {"\u2018", "\u2019"}};
    for (const auto& [opening, closing] : pairs) {
        std::string text = place.here.value;
        const std::size_t start = text.find(opening);
        if (start == std::string::npos || (start > 0 && !isSeparator(place.here.name, text[start - 1]))) {
            continue;
        }
        const std::string message =
            fmt::format("The curly quote in {} does not group.", inQuotes(place.here.tokens.back()));
        text.erase(start, opening.size());
        const std::size_t end = text.find(closing);
        if (end == std::string::npos || end + closing.size() != text.size()) {
            return Slip{message};
        }
        text.erase(end);
        return Slip{message, isOption(place.here) ? correct(place, *place.here.option, text)
                                                  : quotedFor(place.here.source, text)};
    }
    return std::nullopt;
}

// "-tl A, B", "-tl A DravikB", "-tl A : B"; "-p a=1 b=2", "-p a = 1"
Advice valueIsCutAtSpace(const Place& place) {
    const std::string_view name = place.here.name;
    const bool isLayers = name == "tl";
    if ((!isLayers && name != "p") || place.here.value.empty()) {
        return std::nullopt;
    }
    std::vector<std::string> values = {place.here.value};
    std::string last = place.here.value;
    std::vector<std::string> cut;
    while (const Argument* path = place.path(cut.size() + 1)) {
        const std::string& text = path->value;
        const bool isLayer = startsWith(text, "Dravik") && text.find("::") == std::string::npos;
        const bool isProperty = text.find('=') != std::string::npos;
        // A property may have an empty value: "-p a=".
        const bool isOpen = isSeparator(name, values.back().back()) && (isLayers || last == "=");
        if (isOpen || isSeparator(name, text[0])) {
            values.back() += text;
        } else if (isLayers ? isLayer : isProperty) {
            values.push_back(text);
        } else {
            break;
        }
        cut.push_back(inQuotes(text));
        last = text;
    }
    if (cut.empty()) {
        return std::nullopt;
    }
    if (isLayers) {
        values = {fmt::format("{}", fmt::join(values, ","))};
    }
    for (std::string& value : values) {
        value = correct(place, *place.here.option, value);
    }
    return Slip{fmt::format(R"(The value of "-{}" ends at a space: {} became {}.)", place.here.name,
                            fmt::join(cut, ", "), cut.size() == 1 ? "a test path" : "test paths"),
                fmt::format("{}", fmt::join(values, " ")), cut.size() + 1};
}

// The test path as the option that the text names: "packetsize=1500" or "packetsize".
Slip addDash(const Place& place, std::string_view text, const std::string& message) {
    const ToolOption* option = findOption(text.substr(0, text.find('=')));
    const bool isRead = option != nullptr && option->kind != ToolOptionKind::Unread;
    Slip slip = isRead ? useOption(place, *option, message) : Slip();
    slip.message = message;
    return slip;
}

Advice dashIsFromDocument(const Place& place) {
    constexpr std::string_view dashes[][2] = {
        {"\u2013", "an en dash"}, {"\u2014", "an em dash"}, {"\u2212", "a minus sign"}};
    const std::string& text = place.here.value;
    for (const auto& [dash, name] : dashes) {
        if (!startsWith(text, dash)) {
            continue;
        }
        const std::string_view rest = std::string_view(text).substr(dash.size());
        const std::string cause = fmt::format(R"(it begins with {} instead of "-")", name);
        if (place.here.isTestPath) {
            return addDash(place, rest, fmt::format("{} became a test path: {}.", inQuotes(text), cause));
        }
        if (findOption(rest.substr(0, rest.find('='))) != nullptr) {
            return Slip{
                fmt::format(R"({} became the value of "-{}": {}.)", inQuotes(text), place.here.name, cause)};
        }
    }
    return std::nullopt;
}

Advice dashIsMissing(const Place& place) {
    const std::string& text = place.here.value;
    const Slip slip =
        addDash(place, text, fmt::format("{} became a test path: it has no dash in front.", inQuotes(text)));
    return slip.correction.empty() ? std::nullopt : Advice(slip);
}

Advice valueIsEmpty(const Place& place) {
    if (place.here.outcome != Outcome::Empty) {
        return std::nullopt;
    }
    return Slip{
        fmt::format(R"(The value of "-{0}" is empty, as if "-{0}" were not given.)", place.here.name)};
}

Advice numberHasMore(const Place& place) {
    const std::string& value = place.here.value;
    const bool isUsed =
        place.here.option->kind == ToolOptionKind::Number && place.here.outcome == Outcome::Won;
    if (!isUsed || value.find_first_not_of("0123456789") == std::string::npos) {
        return std::nullopt;
    }
    return Slip{fmt::format("{} is not all digits. It is passed on as written.", inQuotes(value))};
}

// The hints about an entry of a -tl value.

// The class that the name differs from only in case; else the name itself.
std::string intendedClass(const std::string& name) {
    for (const std::string_view known : {"DravikGigE", "DravikGTC"}) {
        const auto isSame = [](unsigned char left, unsigned char right) {
            return std::tolower(left) == std::tolower(right);
        };
        if (std::equal(name.begin(), name.end(), known.begin(), known.end(), isSame)) {
            return std::string(known);
        }
    }
    return name;
}

// The value with spaces, case and drivers put right.
std::string correctLayers(const Place& place) {
    std::vector<std::string> entries;
    for (const Layer& layer : splitTransportLayers(place.here.value)) {
        const std::string deviceClass = intendedClass(trimmed(layer.deviceClass));
        const bool hasDriver = layer.driver && deviceClass == "DravikGigE";
        entries.push_back(deviceClass + (hasDriver ? ":" + trimmed(*layer.driver) : ""));
    }
    return correct(place, *place.here.option, fmt::format("{}", fmt::join(entries, ",")));
}

Advice layerHasSpaces(const Place& place, const Layer& layer) {
    for (const std::string& name : {layer.deviceClass, layer.driver.value_or("")}) {
        if (name != trimmed(name)) {
            return Slip{fmt::format("The spaces in {} are part of the name.", inQuotes(name)),
                        correctLayers(place)};
        }
    }
    return std::nullopt;
}

Advice classHasOtherCase(const Place& place, const Layer& layer) {
    const std::string name = trimmed(layer.deviceClass);
    if (name == intendedClass(name)) {
        return std::nullopt;
    }
    return Slip{fmt::format("{} is not {}: classes are case-sensitive.", inQuotes(name),
                            inQuotes(intendedClass(name))),
                correctLayers(place)};
}

Advice driverIsIgnored(const Place& place, const Layer& layer) {
    if (!layer.driver || intendedClass(trimmed(layer.deviceClass)) == "DravikGigE") {
        return std::nullopt;
    }
    return Slip{fmt::format("The driver {} is ignored: only DravikGigE takes one.", inQuotes(*layer.driver)),
                correctLayers(place)};
}

Advice classIsOnlyMentioned(const Place& /*place*/, const Layer& layer) {
    if (layer.deviceClass == "DravikGTC" || layer.text.find("DravikGTC") == std::string::npos) {
        return std::nullopt;
    }
    return Slip{
        fmt::format(R"({} is not the class "DravikGTC", but contains the name. That is enough to set )"
                    "GENICAM_GENTL64_PATH.",
                    inQuotes(layer.text))};
}

// The first slip found, trying these functions in order.
Advice findFirst(const Place& place, std::initializer_list<Advice (*)(const Place&)> functions) {
    Advice advice;
    for (const auto function : functions) {
        advice = advice ? advice : function(place);
    }
    return advice;
}

Advice adviseOnArgument(const Place& place) {
    const bool hasValue = place.here.kind != orvex::Finding::Flag;
    if (place.here.isTestPath) {
        return findFirst(place, {dashIsFromDocument, dashIsMissing, quotesAreCurly});
    }
    if (!isOption(place.here)) {
        return std::nullopt;  // the program name
    }
    if (place.here.option == nullptr) {
        return findFirst(place, {valueIsAttached, optionIsUnknown});
    }
    if (place.here.option->kind == ToolOptionKind::Unread) {
        return onlyUsageTextNamesOption(place);
    }
    if (place.here.option->kind == ToolOptionKind::Flag) {
        return hasValue ? flagHasValue(place) : std::nullopt;
    }
    if (hasValue) {
        return findFirst(place, {equalsSignIsSpaced, dashIsFromDocument, quotesAreCurly, valueIsCutAtSpace,
                                 valueIsEmpty, numberHasMore});
    }
    const bool needsEqualsSign = place.here.option->kind == ToolOptionKind::InlineOnly;
    return findFirst(place, {equalsSignIsSpaced, needsEqualsSign ? equalsSignIsMissing : valueIsMissing});
}

// One hint of each kind is enough for a value, however many entries it has.
void adviseOnLayers(const Place& place, const std::string& driver, std::vector<Slip>& slips) {
    const std::vector<Layer> layers = splitTransportLayers(place.here.value);
    for (const auto advise : {layerHasSpaces, classHasOtherCase, driverIsIgnored, classIsOnlyMentioned}) {
        Advice advice;
        for (auto layer = layers.begin(); layer != layers.end() && !advice; ++layer) {
            advice = advise(place, *layer);
        }
        if (advice) {
            slips.push_back(*advice);
        }
    }
    for (const Layer& layer : layers) {
        if (layer.deviceClass == "DravikGigE" && layer.driver.value_or(driver) != driver) {
            slips.push_back({fmt::format(
                "The driver {} is not used: if there are several drivers, the last in byte order wins.",
                inQuotes(*layer.driver))});
            return;
        }
    }
}

void adviseOnArguments(const Trace& trace, std::vector<Hint>& hints) {
    const TracedOption* layers = trace.findOption("tl");
    const std::string driver = layers == nullptr ? "" : findDriver(layers->value);
    std::size_t uncovered = 0;  // the first argument that no hint is about
    for (std::size_t i = 0; i < trace.arguments.size(); ++i) {
        const Argument& argument = trace.arguments[i];
        const Place place = {argument, trace.arguments.size() - i};
        std::vector<Slip> slips;
        const Advice advice = i < uncovered ? std::nullopt : adviseOnArgument(place);
        if (advice) {
            slips.push_back(*advice);
            uncovered = i + advice->covered;
        }
        // Skip values in curly quotes: the quotes would be taken as part of the first and the last name.
        if (argument.name == "tl" && !quotesAreCurly(place)) {
            adviseOnLayers(place, driver, slips);
        }
        for (const Slip& slip : slips) {
            hints.push_back({argument.source, typed(place, slip.covered), slip.message, slip.correction});
        }
    }
}

// The hints about a source as a whole, and about the environment.

void quoteIsUnterminated(const Source& source, std::vector<Hint>& hints) {
    const std::size_t quote = scanText(source.text).unterminatedQuote.value_or(0);
    const char before = quote == 0 ? ' ' : source.text[quote - 1];
    Hint hint = {source.name, source.text, "", source.text, quote};
    if (source.text[quote] == '"') {
        hint.message = "The double quote is unterminated. Another one at the end closes it.";
        hint.correction += '"';
    } else if (before == ' ' || before == '\t' || before == '=') {
        hint.message = "The single quote is unterminated. Another one at the end closes it.";
        hint.correction += '\'';
    } else {
        hint.message = "The single quote is unterminated. Write an apostrophe as \\'.";
        hint.correction.insert(quote, 1, '\\');
    }
    // The rest of the text may have an unterminated quote, too.
    if (scanText(hint.correction).unterminatedQuote) {
        hint.correction.clear();
    }
    hints.push_back(hint);
}

void lineBreakSeparatesNothing(const Source& source, std::vector<Hint>& hints) {
    const TextScan scan = scanText(source.text);
    if (scan.lineBreak) {
        hints.push_back({source.name, source.text, "A line break does not separate arguments.",
                         scan.withoutLineBreaks, scan.lineBreak});
    }
}

void variableIsMisspelt(std::string_view name, std::string_view value, std::vector<Hint>& hints) {
    // A missing underscore is likelier than an extra one.
    for (const std::string_view meant : {lastVariable, firstVariable}) {
        if (editDistance(name, meant, 1) == 1) {
            const std::string text = quotedForShell(value);
            const bool isFree = std::getenv(meant.data()) == nullptr;
            hints.push_back({"environment", fmt::format("{}={}", name, text),
                             fmt::format("{} is not read. Did you mean {}?", inQuotes(name), inQuotes(meant)),
                             isFree ? fmt::format("{}={}", meant, text) : ""});
            return;
        }
    }
}

void producerPathIsExpanded(std::vector<Hint>& hints) {
    hints.push_back({"environment", "GENICAM_GENTL64_PATH",
                     R"(The SDK's path holds "%", "$(" or "$$", which a parse expands. GENICAM_GENTL64_PATH )"
                     "does not begin with the producer directories."});
}

}  // namespace

std::vector<Hint> giveAdvice(const Report& report) {
    std::vector<Hint> hints;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::size_t equals = text.find('=');
        if (equals != std::string_view::npos) {
            variableIsMisspelt(text.substr(0, equals), text.substr(equals + 1), hints);
        }
    }
    const Trace& trace = report.trace;
    if (const Source* source = trace.findMalformed()) {
        quoteIsUnterminated(*source, hints);
    } else {
        for (const Source& source : trace.sources) {
            lineBreakSeparatesNothing(source, hints);
        }
        adviseOnArguments(trace, hints);
    }
    if (report.producers && !report.producers->areSet) {
        producerPathIsExpanded(hints);
    }
    for (Hint& hint : hints) {
        // A correction that a terminal does not show in full cannot be pasted.
        if (visible(hint.correction) != hint.correction) {
            hint.correction.clear();
        }
    }
    return hints;
}

}  // namespace tool
