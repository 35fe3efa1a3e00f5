#include "parser/argument_tokenizer.h"
#include "parser/option_scanner.h"
#include "show_arguments.h"

#include <fmt/format.h>
#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace {

// Notes what the scan of a source finds.
struct Tracer {
    const std::vector<std::string_view>& tokens;
    Json& source;
    Trace& trace;
    std::vector<std::string_view>::const_iterator next = tokens.begin();

    bool hasPositionals() const {
        return trace.hasProgramName;
    }
    static bool isValueOption(std::string_view name) {
        const OptionKind kind = findKnownOption(name).kind;
        return kind == OptionKind::Value || kind == OptionKind::Number;
    }
    static bool isMultiValueOption(std::string_view name) {
        return findKnownOption(name).kind == OptionKind::MultiValue;
    }
    static bool hasMode(std::uint32_t bit) {
        return bit == OptionRegistry::UnknownAsFlag;
    }

    void positional(std::string_view token) {
        const bool isTestPath = std::exchange(trace.hasProgramName, true);
        addToken({{"became", isTestPath ? "test path" : "program name"}});
        if (isTestPath) {
            const char* note = token.substr(0, 1) == "-" ? "begins with a number, so it is no option" : "";
            trace.testPaths.push_back({source["name"], std::string(token), "collected", note});
        }
    }
    void droppedProgramName(std::string_view /*token*/) {
        addToken({{"became", "dropped program name"}});
    }
    void flag(std::string_view name) {
        addToken({{"became", "flag"}, {"option", name}});
        addGiven(name, std::nullopt);
    }
    void value(std::string_view name, std::string_view value) {
        addToken({{"became", "option"}, {"option", name}});
        addToken({{"became", "value"}, {"option", name}});
        addGiven(name, std::string(value));
    }
    void inlineValue(std::string_view name, std::string_view value) {
        addToken({{"became", "option with value"}, {"option", name}});
        addGiven(name, std::string(value));
    }

    void addToken(const Json& role) {
        source["tokens"].push_back({{"text", *next++}});
        source["tokens"].back().update(role);
    }

    void addGiven(std::string_view name, const std::optional<std::string>& value) {
        auto option = std::find_if(trace.options.begin(), trace.options.end(),
                                   [name](const TracedOption& traced) { return traced.name == name; });
        if (option == trace.options.end()) {
            trace.options.push_back({std::string(name), findKnownOption(name), {}});
            option = trace.options.end() - 1;
        }
        const OptionKind kind = option->known.kind;
        Given given = {source["name"], value, kind == OptionKind::MultiValue ? "collected" : "won", ""};
        if (kind == OptionKind::Unread || (kind == OptionKind::Flag) == value.has_value()) {
            given.outcome = "ignored";
            given.note = explainIgnored(name, option->known, value.has_value());
        } else if (kind == OptionKind::Flag) {
            given.outcome = "counted";
        }
        option->given.push_back(given);
    }

    // Why the option that was found last has no effect, and what one might have meant.
    std::string explainIgnored(std::string_view name, const KnownOption& known, bool hasValue) const {
        const bool isLast = next == tokens.end();
        const bool isInline = known.kind == OptionKind::InlineValue;
        const bool isPathNext = !hasValue && !isLast && trace.hasProgramName && !orvex::isOptionToken(*next);
        const std::string following = isPathNext || !(isLast || isInline) ? printable(*next) : "VALUE";
        const std::string path = isPathNext ? fmt::format(", and {} became a test path", following) : "";
        std::string_view instead = nearestOption(name);
        const char* pattern =
            "{0} has no value, since {2} begins with a dash; if that is meant, write {0}={2}";
        if (known.kind == OptionKind::Unread && !known.sets.empty()) {
            pattern = "{0} is not read, although the usage text names it{1}; use {3}";
            instead = known.sets[0];
        } else if (known.kind == OptionKind::Unread) {
            pattern = instead.empty() ? "{0} is not read{1}" : "{0} is not read{1}; did you mean {3}?";
        } else if (hasValue) {
            pattern = "{0} counts only without a value";
        } else if (isInline) {
            pattern = "{0} has no value{1}; write {0}={2}";
        } else if (isLast) {
            pattern = "{0} has no value: it is the last argument ({4})";
        }
        return fmt::format(fmt::runtime(pattern), typed(name), path, following, typed(instead),
                           source["name"].get<std::string>());
    }
};

// Returns why the text cannot be split; empty when it can.
std::string split(const std::string& text, std::vector<std::string>& list) {
    try {
        orvex::splitArgumentString(text, list);
        return "";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

// Returns why the text of the variable is bad; empty when it is not.
std::string readVariable(const char* name, Json& source, std::vector<std::string>& list) {
    const char* value = std::getenv(name);
    const std::string text = value == nullptr ? "" : value;
    const std::string message = split(text, list);
    source["state"] = value == nullptr ? "not set" : "blank";
    if (message.empty()) {
        return "";
    }
    source.update({{"state", "malformed"}, {"message", message}});
    // The longest start of the text that can be split ends at the quote.
    std::vector<std::string> ignored;
    std::size_t quote = text.size();
    do {
        quote = text.find_last_of("\"'", quote - 1);
    } while (!split(text.substr(0, quote), ignored).empty());
    return fmt::format("{}: the quote at byte {} is not closed: {} (the whole value: {})", name, quote + 1,
                       printable(text.substr(quote)), printable(text));
}

// Of several values the last one wins. The first number that is refused ends the parse, and nothing looks
// at those after it.
void settle(TracedOption& option, bool isUsed, std::string& failure) {
    Given* winner = nullptr;
    for (auto given = option.given.rbegin(); given != option.given.rend(); ++given) {
        if (!isUsed) {
            *given = {given->source, given->value, "not used", ""};
        } else if (given->outcome == "won" && winner != nullptr) {
            given->outcome = "lost";
            given->note = fmt::format("to {} from {}", printable(*winner->value), winner->source);
        } else if (given->outcome == "won") {
            winner = &*given;
            winner->note = winner->value->empty() ? "empty, as if not given" : "";
        }
    }
    if (winner != nullptr && option.known.kind == OptionKind::Number &&
        (*winner->value + "0").find_first_of("0123456789") != 0) {
        winner->outcome = failure.empty() ? "refused" : "not used";
        winner->note = "does not begin with a digit";
        failure += failure.empty() ? fmt::format("the value of {} {}: {} ({})", typed(option.name),
                                                 winner->note, printable(*winner->value), winner->source)
                                   : "";
    }
}

}  // namespace

Trace traceArguments(int argc, char** argv) {
    Trace trace;
    for (const char* name : {"ORVEX_TEST_ARGS", "command line", "_ORVEX_TEST_ARGS_"}) {
        trace.sources.push_back({{"name", name}, {"state", "not reached"}, {"tokens", Json::array()}});
        Json& source = trace.sources.back();
        if (argc < 1 || !trace.failure.empty()) {
            continue;
        }
        std::vector<std::string> list;
        std::vector<std::string_view> tokens(argv, argv + argc);
        if (name != std::string_view("command line")) {
            trace.failure = readVariable(name, source, list);
            tokens.resize(list.empty() ? 0 : 1);
            tokens.insert(tokens.end(), list.begin(), list.end());
        }
        if (!tokens.empty()) {
            source["state"] = "scanned";
            Tracer tracer{tokens, source, trace};
            orvex::OptionScanner(tokens, tracer).scan();
        }
    }
    // After a quote that is not closed, the parser does not look at what it has scanned.
    const bool isUsed = trace.failure.empty();
    for (Given& path : trace.testPaths) {
        path.outcome = isUsed ? path.outcome : "not used";
    }
    for (const KnownOption& known : knownOptions()) {
        for (TracedOption& option : trace.options) {
            if (&option.known == &known) {
                settle(option, isUsed, trace.failure);
            }
        }
    }
    return trace;
}
