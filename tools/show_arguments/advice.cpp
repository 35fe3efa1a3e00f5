#include "advice.h"

#include "outcomes.h"
#include "parser/option_scanner.h"
#include "quoting.h"
#include "suggestion.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <regex>

extern char** environ;

namespace tool {
namespace {

// An argument and those that follow it in the same source.
struct Place {
    const Argument& here;
    std::size_t count;

    const Argument* next() const {
        return count > 1 ? &here + 1 : nullptr;
    }
    // Null when what follows at this distance is not a test path.
    const Argument* path(std::size_t distance) const {
        const bool isPath = distance < count && (&here)[distance].kind == ArgumentKind::TestPath;
        return isPath ? &here + distance : nullptr;
    }
};

struct Finding {
    std::string message;
    std::string correction = {};
    std::size_t covered = 1;  // how many arguments it is about, and the correction replaces
};

using Advice = std::optional<Finding>;
using Layer = std::vector<std::string>;

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isOf(OptionKind kind, const Argument& argument) {
    return argument.option != nullptr && argument.option->kind == kind;
}

bool isUnknownOption(const Argument& argument) {
    return isOption(argument) && argument.option == nullptr;
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

// The option with the value, in a form that works; empty when none does.
std::string correct(const Place& place, const ToolOption& option, std::string_view value) {
    if (!isUsableValue(option, value)) {
        return "";
    }
    if (option.kind == OptionKind::InlineValue || orvex::isOptionToken(value)) {
        return quotedFor(place.here.source, fmt::format("-{}={}", option.name, value));
    }
    return fmt::format("-{} {}", option.name, quotedFor(place.here.source, value));
}

// The option in place of a name that is not read, with the value that was meant for it.
Finding replaceName(const Place& place, const ToolOption& option, const std::string& message) {
    if (option.kind == OptionKind::Flag) {
        return {message, quotedFor(place.here.source, fmt::format("-{}", option.name))};
    }
    if (place.here.kind == ArgumentKind::InlineValue) {
        return {message, correct(place, option, place.here.value)};
    }
    const Argument* path = place.path(1);
    if (path == nullptr) {
        return {message + " It needs a value."};
    }
    const std::string correction = correct(place, option, path->value);
    return {fmt::format("{} {} became a test path.", message, inQuotes(path->value)), correction,
            correction.empty() ? 1U : 2U};
}

// The hints about one argument or several that follow each other.

Advice onlyUsageTextNamesOption(const Place& place) {
    if (!isOf(OptionKind::Unread, place.here)) {
        return std::nullopt;
    }
    const ToolOption& option = *place.here.option;
    return replaceName(place, *findOption(option.instead),
                       fmt::format(R"("-{}" is in the usage text, but nothing reads it. Use "-{}".)",
                                   option.name, option.instead));
}

struct AttachedValue {
    const ToolOption* option = nullptr;
    std::string_view value = {};
};

// An unknown option may be a known one with its value attached: "-oresult.txt", "-packetsize:1500".
AttachedValue findAttachedValue(const Argument& argument) {
    const std::string_view text = orvex::withoutLeadingDashes(argument.tokens[0]);
    AttachedValue found;
    for (const ToolOption& option : toolOptions()) {
        const bool isLonger = found.option == nullptr || option.name.size() > found.option->name.size();
        if (isLonger && startsWith(text, option.name) && option.kind != OptionKind::Unread) {
            found = {&option, text.substr(option.name.size())};
        }
    }
    const bool hasColon = startsWith(found.value, ":");
    found.value.remove_prefix(hasColon ? 1
                                       : std::min(found.value.find_first_not_of(' '), found.value.size()));
    if (found.option == nullptr || !isUsableValue(*found.option, found.value)) {
        return {};
    }
    // "-output" is more likely a misspelt name than "-o utput".
    const char first = found.value.front();
    const bool isWord =
        (std::islower(static_cast<unsigned char>(first)) != 0 || first == '_' || first == '-') &&
        argument.name.find_first_of("./") == std::string::npos;
    return hasColon || !isWord ? found : AttachedValue();
}

Advice valueIsAttached(const Place& place) {
    const AttachedValue attached =
        isUnknownOption(place.here) ? findAttachedValue(place.here) : AttachedValue();
    if (attached.option == nullptr) {
        return std::nullopt;
    }
    return Finding{fmt::format("{} is not a known option. A value is a separate argument.",
                               inQuotes(place.here.tokens[0])),
                   correct(place, *attached.option, attached.value)};
}

Advice optionIsUnknown(const Place& place) {
    if (!isUnknownOption(place.here)) {
        return std::nullopt;
    }
    const std::string message = fmt::format("{} is not a known option", inQuotes(place.here.tokens[0]));
    const std::string_view suggestion = suggestOption(place.here.name);
    if (suggestion.empty()) {
        const Argument* path = place.path(1);
        const bool isFollowed = place.here.kind == ArgumentKind::Flag && path != nullptr;
        return Finding{message + " and is ignored." +
                       (isFollowed ? fmt::format(" {} became a test path.", inQuotes(path->value)) : "")};
    }
    return replaceName(place, *findOption(suggestion),
                       fmt::format(R"({}. Did you mean "-{}"?)", message, suggestion));
}

Advice equalsSignIsSpaced(const Place& place) {
    const ToolOption* option = place.here.option;
    if (option == nullptr || option->kind == OptionKind::Flag) {
        return std::nullopt;
    }
    // What follows the name, "=" included, in as many test paths as it takes.
    std::string text = (place.here.kind == ArgumentKind::InlineValue ? "=" : "") + place.here.value;
    std::size_t covered = 1;
    while ((text.empty() || text == "=") && place.path(covered) != nullptr) {
        text += place.path(covered)->value;
        ++covered;
    }
    const bool isSpaced = place.here.kind != ArgumentKind::InlineValue || covered > 1;
    if (!isSpaced || !startsWith(text, "=") || !isUsableValue(*option, text.substr(1))) {
        return std::nullopt;
    }
    return Finding{fmt::format(R"(There must be no space before or after the "=" of "-{}".)", option->name),
                   correct(place, *option, text.substr(1)), covered};
}

Advice valueIsMissing(const Place& place) {
    const ToolOption* option = place.here.option;
    if (option == nullptr || place.here.kind != ArgumentKind::Flag || option->kind == OptionKind::Flag ||
        option->kind == OptionKind::InlineValue) {
        return std::nullopt;
    }
    const std::string message = fmt::format(R"("-{}" has no value)", option->name);
    const Argument* next = place.next();
    if (next == nullptr) {
        return Finding{message + ": it is the last argument."};
    }
    if (next->option != nullptr) {
        return Finding{fmt::format(R"({}: the next argument is the option "-{}".)", message, next->name)};
    }
    const std::string& value = next->tokens[0];
    const bool isSlip = !suggestOption(next->name).empty() || findAttachedValue(*next).option != nullptr;
    if (isSlip || !isUsableValue(*option, value)) {
        return Finding{
            fmt::format("{}: the next argument, {}, begins with a dash.", message, inQuotes(value))};
    }
    return Finding{fmt::format(R"({0}: the next argument begins with a dash. If {1} is the value, use "=".)",
                               message, inQuotes(value)),
                   correct(place, *option, value), 2};
}

Advice equalsSignIsMissing(const Place& place) {
    if (!isOf(OptionKind::InlineValue, place.here) || place.here.kind != ArgumentKind::Flag) {
        return std::nullopt;
    }
    return replaceName(place, *place.here.option,
                       fmt::format(R"("-{}" takes a value only after "=".)", place.here.name));
}

Advice flagHasValue(const Place& place) {
    if (!isOf(OptionKind::Flag, place.here) || place.here.kind == ArgumentKind::Flag) {
        return std::nullopt;
    }
    return replaceName(
        place, *place.here.option,
        fmt::format(R"("-{}" takes no value: {} is not read. Leave out the value to switch it on.)",
                    place.here.name, inQuotes(place.here.tokens[0])));
}

Advice quotesAreCurly(const Place& place) {
    constexpr std::string_view pairs[][2] = {{"\u201c", "\u201d"}, {"\u2018", "\u2019"}};
    const std::string& first = place.here.tokens.back();
    const std::size_t equals = first.find('=') + 1;
    for (const auto& [opening, closing] : pairs) {
        if (!startsWith(first, opening) && first.compare(equals, opening.size(), opening) != 0) {
            continue;
        }
        // The tokens up to the closing quote were meant as one.
        std::string text;
        std::size_t covered = 0;
        std::size_t end = std::string::npos;
        while (end == std::string::npos && covered < place.count) {
            const std::size_t start = text.size();
            text += covered == 0 ? first : fmt::format(" {}", fmt::join((&place.here)[covered].tokens, " "));
            end = text.find(closing, start);
            ++covered;
        }
        const std::string message = fmt::format("The curly quote in {} does not group.", inQuotes(first));
        if (end == std::string::npos) {
            return Finding{message, "", covered};
        }
        text.erase(end, closing.size());
        text.erase(text.find(opening), opening.size());
        const bool isValue = place.here.kind == ArgumentKind::Value;
        return Finding{message,
                       (isValue ? place.here.tokens[0] + ' ' : "") + quotedFor(place.here.source, text),
                       covered};
    }
    return std::nullopt;
}

Advice valueIsCutAtSpace(const Place& place) {
    const bool isLayers = place.here.name == "tl";
    if ((!isLayers && place.here.name != "p") || place.here.value.empty()) {
        return std::nullopt;
    }
    const ToolOption& option = *place.here.option;
    std::string layers = place.here.value;
    std::string properties = correct(place, option, place.here.value);
    std::vector<std::string> cut;
    while (const Argument* path = place.path(cut.size() + 1)) {
        const std::string& text = path->value;
        const bool hasComma = (!layers.empty() && layers.back() == ',') || startsWith(text, ",");
        const bool isLayer = startsWith(text, "Dravik") && text.find("::") == std::string::npos;
        const bool isProperty = text.find('=') != std::string::npos;
        if (isLayers ? !hasComma && !isLayer : !isProperty) {
            break;
        }
        layers += (hasComma ? "" : ",") + text;
        properties += ' ' + correct(place, option, text);
        cut.push_back(inQuotes(text));
    }
    if (cut.empty()) {
        return std::nullopt;
    }
    return Finding{fmt::format(R"(The value of "-{}" ends at a space: {} became {}.)", option.name,
                               fmt::join(cut, ", "), cut.size() == 1 ? "a test path" : "test paths"),
                   isLayers ? correct(place, option, layers) : properties, cut.size() + 1};
}

// The test path as the option that it names, "packetsize=1500" or "packetsize".
Finding addDash(const Place& place, std::string_view text, const std::string& message) {
    const std::size_t equals = text.find('=');
    const ToolOption* option = findOption(text.substr(0, equals));
    if (option == nullptr || option->kind == OptionKind::Unread) {
        return {message};
    }
    if (equals != std::string_view::npos) {
        return {message, correct(place, *option, text.substr(equals + 1))};
    }
    if (option->kind == OptionKind::Flag) {
        return {message, quotedFor(place.here.source, fmt::format("-{}", text))};
    }
    const Argument* path = place.path(1);
    const std::string correction = path == nullptr ? "" : correct(place, *option, path->value);
    return {message, correction, correction.empty() ? 1U : 2U};
}

Advice dashIsFromDocument(const Place& place) {
    constexpr std::string_view dashes[][2] = {
        {"\u2013", "an en dash"}, {"\u2014", "an em dash"}, {"\u2212", "a minus sign"}};
    const std::string& text = place.here.value;
    for (const auto& [dash, name] : dashes) {
        if (place.here.kind == ArgumentKind::TestPath && startsWith(text, dash)) {
            return addDash(place, std::string_view(text).substr(dash.size()),
                           fmt::format(R"({} became a test path: it begins with {} instead of "-".)",
                                       inQuotes(text), name));
        }
    }
    return std::nullopt;
}

Advice dashIsMissing(const Place& place) {
    if (place.here.kind != ArgumentKind::TestPath) {
        return std::nullopt;
    }
    const std::string& text = place.here.value;
    const Finding finding =
        addDash(place, text, fmt::format("{} became a test path: it has no dash in front.", inQuotes(text)));
    return finding.correction.empty() ? std::nullopt : Advice(finding);
}

Advice pathIsNumber(const Place& place) {
    const std::string& text = place.here.value;
    const bool isNumber = startsWith(text, "-") || (!text.empty() && isDigit(text.front()));
    // The hint about an unknown option names the path already. The program name precedes every place.
    const Argument& previous = *(&place.here - 1);
    const bool isMentioned = isUnknownOption(previous) && previous.kind == ArgumentKind::Flag;
    if (place.here.kind != ArgumentKind::TestPath || !isNumber || isMentioned) {
        return std::nullopt;
    }
    return Finding{fmt::format("{} became a test path: it begins with a number.", inQuotes(text))};
}

Advice valueIsEmpty(const Place& place) {
    if (place.here.outcome != Outcome::Empty) {
        return std::nullopt;
    }
    return Finding{
        fmt::format(R"(The value of "-{0}" is empty, as if "-{0}" were not given.)", place.here.name)};
}

Advice numberHasMore(const Place& place) {
    const std::string& value = place.here.value;
    if (!isOf(OptionKind::Number, place.here) || place.here.outcome != Outcome::Won ||
        value.find_first_not_of("0123456789") == std::string::npos) {
        return std::nullopt;
    }
    std::string digits;
    if (value.size() < 20 && std::regex_match(value, std::regex("[0-9]{1,3}([,_' ][0-9]{3})+"))) {
        std::copy_if(value.begin(), value.end(), std::back_inserter(digits), isDigit);
    }
    return Finding{
        fmt::format("{} does not end after its digits. It is passed on as written.", inQuotes(value)),
        correct(place, *place.here.option, digits)};
}

// The first one that finds something gives the hint.
constexpr Advice (*argumentAdvice[])(const Place&) = {
    onlyUsageTextNamesOption,
    valueIsAttached,
    optionIsUnknown,
    equalsSignIsSpaced,
    valueIsMissing,
    equalsSignIsMissing,
    flagHasValue,
    quotesAreCurly,
    valueIsCutAtSpace,
    dashIsFromDocument,
    dashIsMissing,
    pathIsNumber,
    valueIsEmpty,
    numberHasMore,
};

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

// The value with spaces, case and drivers put right. Only what follows an empty driver makes it one, so that
// such a value has no correction.
std::string correctLayers(const Place& place) {
    std::vector<std::string> entries;
    for (Layer& layer : splitTransportLayers(place.here.value)) {
        std::transform(layer.begin(), layer.end(), layer.begin(), trimmed);
        layer[0] = intendedClass(layer[0]);
        if (layer.size() > 2 && layer[1].empty()) {
            return "";
        }
        layer.resize(std::min<std::size_t>(layer.size(), layer[0] == "DravikGigE" ? 2 : 1));
        entries.push_back(fmt::format("{}", fmt::join(layer, ":")));
    }
    return correct(place, *place.here.option, fmt::format("{}", fmt::join(entries, ",")));
}

Advice layerHasSpaces(const Place& place, const Layer& layer, const std::string& /*driver*/) {
    const auto found = std::find_if(layer.begin(), layer.end(),
                                    [](const std::string& part) { return part != trimmed(part); });
    if (found == layer.end()) {
        return std::nullopt;
    }
    return Finding{fmt::format("The spaces in {} are part of the name.", inQuotes(*found)),
                   correctLayers(place)};
}

Advice classHasOtherCase(const Place& place, const Layer& layer, const std::string& /*driver*/) {
    const std::string name = trimmed(layer[0]);
    if (name == intendedClass(name)) {
        return std::nullopt;
    }
    return Finding{fmt::format("{} is not {}: classes are case-sensitive.", inQuotes(name),
                               inQuotes(intendedClass(name))),
                   correctLayers(place)};
}

Advice driverIsIgnored(const Place& place, const Layer& layer, const std::string& /*driver*/) {
    if (layer.size() == 1 || intendedClass(trimmed(layer[0])) == "DravikGigE") {
        return std::nullopt;
    }
    return Finding{fmt::format("The driver {} is ignored: only DravikGigE takes one.", inQuotes(layer[1])),
                   correctLayers(place)};
}

Advice restIsIgnored(const Place& place, const Layer& layer, const std::string& /*driver*/) {
    if (layer.size() < 3) {
        return std::nullopt;
    }
    return Finding{fmt::format("{} is ignored: it comes after a driver.", inQuotes(layer[2])),
                   correctLayers(place)};
}

Advice driverIsLost(const Place& /*place*/, const Layer& layer, const std::string& driver) {
    if (layer.size() == 1 || layer[0] != "DravikGigE" || layer[1] == driver) {
        return std::nullopt;
    }
    return Finding{
        fmt::format("The driver {} is not used: if there are several drivers, the last in byte order wins.",
                    inQuotes(layer[1]))};
}

Advice classIsOnlyMentioned(const Place& /*place*/, const Layer& layer, const std::string& /*driver*/) {
    const std::string entry = fmt::format("{}", fmt::join(layer, ":"));
    if (layer[0] == "DravikGTC" || entry.find("DravikGTC") == std::string::npos) {
        return std::nullopt;
    }
    return Finding{
        fmt::format(R"({} is not the class "DravikGTC", but contains the name. That is enough to set )"
                    "GENICAM_GENTL64_PATH.",
                    inQuotes(entry))};
}

constexpr Advice (*layerAdvice[])(const Place&, const Layer&, const std::string&) = {
    layerHasSpaces, classHasOtherCase, driverIsIgnored, restIsIgnored, driverIsLost, classIsOnlyMentioned,
};

// One hint of each kind is enough for a value, however many entries it has.
void adviseOnLayers(const Place& place, const std::string& driver, std::vector<Finding>& findings) {
    const std::vector<Layer> layers = splitTransportLayers(place.here.value);
    for (const auto advise : layerAdvice) {
        Advice advice;
        for (auto layer = layers.begin(); layer != layers.end() && !advice; ++layer) {
            advice = advise(place, *layer, driver);
        }
        if (advice) {
            findings.push_back(*advice);
        }
    }
}

Advice adviseOnArgument(const Place& place) {
    Advice advice;
    for (const auto advise : argumentAdvice) {
        advice = advice ? advice : advise(place);
    }
    return advice;
}

void adviseOnArguments(const Trace& trace, std::vector<Hint>& hints) {
    const auto layers = std::find_if(trace.options.begin(), trace.options.end(),
                                     [](const TracedOption& option) { return option.name == "tl"; });
    const std::string driver = layers == trace.options.end() ? "" : findDriver(layers->value);
    const auto end = trace.arguments.end();
    auto endOfSource = trace.arguments.begin();
    auto uncovered = endOfSource;
    for (auto argument = trace.arguments.begin(); argument != end; ++argument) {
        if (argument == endOfSource) {
            endOfSource = std::find_if(argument, end, [argument](const Argument& other) {
                return other.source != argument->source;
            });
            continue;  // the program name, which comes first in each source
        }
        const Place place = {*argument, static_cast<std::size_t>(endOfSource - argument)};
        std::vector<Finding> findings;
        if (argument >= uncovered) {
            if (Advice advice = adviseOnArgument(place)) {
                findings.push_back(*advice);
                uncovered = argument + static_cast<std::ptrdiff_t>(advice->covered);
            }
        }
        if (argument->name == "tl" && argument->outcome == Outcome::Collected) {
            adviseOnLayers(place, driver, findings);
        }
        for (const Finding& finding : findings) {
            hints.push_back(
                {argument->source, typed(place, finding.covered), finding.message, finding.correction});
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

void lineEndSeparatesNothing(const Trace& trace, const Source& source, std::vector<Hint>& hints) {
    const std::string corrected = scanText(source.text).withoutLineEnds;
    if (corrected == source.text) {
        return;
    }
    for (const Argument& argument : trace.arguments) {
        for (const std::string& token : argument.tokens) {
            if (argument.source == source.name && token.find_first_of("\r\n") != std::string::npos) {
                hints.push_back({source.name, source.text,
                                 fmt::format("{} is one argument: a line end does not separate arguments.",
                                             inQuotes(token)),
                                 corrected});
                return;
            }
        }
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
    if (const Source* source = findMalformed(trace)) {
        quoteIsUnterminated(*source, hints);
    } else {
        for (const Source& source : trace.sources) {
            lineEndSeparatesNothing(trace, source, hints);
        }
        adviseOnArguments(trace, hints);
    }
    if (report.producers && !report.producers->areSet) {
        producerPathIsExpanded(hints);
    }
    for (Hint& hint : hints) {
        // What a terminal does not show cannot be pasted.
        if (visible(hint.correction) != hint.correction) {
            hint.correction.clear();
        }
    }
    return hints;
}

}  // namespace tool
