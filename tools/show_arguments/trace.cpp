#include "trace.h"

#include "parser/argument_tokenizer.h"
#include "parser/option_scanner.h"

#include <cstdlib>
#include <map>
#include <stdexcept>
#include <utility>

namespace tool {
namespace {

// Receives what the scan of one source finds.
class Tracer {
public:
    Tracer(std::string_view source, const std::vector<std::string_view>& tokens,
           const OptionRegistry& grammar, std::vector<Argument>& arguments, bool& hasProgramName)
        : source(source),
          nextToken(tokens.begin()),
          grammar(grammar),
          arguments(arguments),
          hasProgramName(hasProgramName) {}

    bool hasPositionals() const {
        return hasProgramName;
    }
    bool isValueOption(std::string_view name) const {
        return grammar.isValueOption(std::string(name));
    }
    bool isMultiValueOption(std::string_view name) const {
        return grammar.isMultiValueOption(std::string(name));
    }
    bool hasMode(std::uint32_t bit) const {
        return grammar.hasMode(bit);
    }

    void positional(std::string_view token) {
        const bool isTestPath = std::exchange(hasProgramName, true);
        add(isTestPath ? ArgumentKind::TestPath : ArgumentKind::ProgramName, 1).value = token;
    }
    void droppedProgramName(std::string_view token) {
        add(ArgumentKind::DroppedProgramName, 1).value = token;
    }
    void flag(std::string_view name) {
        addOption(ArgumentKind::Flag, 1, name);
    }
    void value(std::string_view name, std::string_view value) {
        addOption(ArgumentKind::Value, 2, name).value = value;
    }
    void inlineValue(std::string_view name, std::string_view value) {
        addOption(ArgumentKind::InlineValue, 1, name).value = value;
    }

private:
    Argument& add(ArgumentKind kind, std::ptrdiff_t count) {
        arguments.push_back({source, kind, {nextToken, nextToken + count}});
        nextToken += count;
        return arguments.back();
    }
    Argument& addOption(ArgumentKind kind, std::ptrdiff_t count, std::string_view name) {
        Argument& argument = add(kind, count);
        argument.name = name;
        argument.option = findOption(name);
        return argument;
    }

    std::string_view source;
    std::vector<std::string_view>::const_iterator nextToken;
    const OptionRegistry& grammar;
    std::vector<Argument>& arguments;
    bool& hasProgramName;
};

// The arguments in the variable that the source is named after.
std::vector<std::string> readVariable(Source& source) {
    std::vector<std::string> tokens;
    const char* text = std::getenv(source.name.data());
    source.state = text == nullptr ? SourceState::NotSet : SourceState::Blank;
    if (text == nullptr) {
        return tokens;
    }
    source.text = text;
    try {
        orvex::splitArgumentString(source.text, tokens);
    } catch (const std::runtime_error& error) {
        source.state = SourceState::Malformed;
        source.message = error.what();
    }
    return tokens;
}

std::vector<TracedOption> groupByOption(const std::vector<Argument>& arguments) {
    std::vector<TracedOption> options;
    std::map<std::string_view, std::size_t> positions;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Argument& argument = arguments[i];
        if (!isOption(argument)) {
            continue;
        }
        const auto [position, isNew] = positions.try_emplace(argument.name, options.size());
        if (isNew) {
            options.push_back({argument.name, argument.option});
        }
        options[position->second].given.push_back(i);
    }
    return options;
}

}  // namespace

Trace traceArguments(int argc, char** argv) {
    Trace trace;
    const OptionRegistry grammar = makeGrammar();
    bool hasProgramName = false;
    for (const std::string_view name : {firstVariable, commandLine, lastVariable}) {
        const bool isReached = argc > 0 && findMalformed(trace) == nullptr;
        Source& source = trace.sources.emplace_back(Source{name});
        if (!isReached) {
            continue;
        }
        std::vector<std::string> words;
        std::vector<std::string_view> tokens(argv, argv + argc);
        if (name != commandLine) {
            words = readVariable(source);
            tokens.resize(words.empty() ? 0 : 1);
            tokens.insert(tokens.end(), words.begin(), words.end());
        }
        if (!tokens.empty()) {
            source.state = SourceState::Scanned;
            Tracer tracer(name, tokens, grammar, trace.arguments, hasProgramName);
            orvex::OptionScanner(tokens, tracer).scan();
        }
    }
    trace.options = groupByOption(trace.arguments);
    return trace;
}

const Source* findMalformed(const Trace& trace) {
    for (const Source& source : trace.sources) {
        if (source.state == SourceState::Malformed) {
            return &source;
        }
    }
    return nullptr;
}

TextScan scanText(const std::string& text) {
    TextScan scan = {std::nullopt, text};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscaped = text[i] == '\\' && i + 1 < text.size();
        if (isEscaped) {
            ++i;
        } else if (scan.unterminatedQuote && text[i] == text[*scan.unterminatedQuote]) {
            scan.unterminatedQuote.reset();
        } else if (!scan.unterminatedQuote && (text[i] == '"' || text[i] == '\'')) {
            scan.unterminatedQuote = i;
        }
        if (!scan.unterminatedQuote && (text[i] == '\n' || text[i] == '\r')) {
            scan.withoutLineEnds[i] = ' ';
            scan.withoutLineEnds[i - (isEscaped ? 1 : 0)] = ' ';
        }
    }
    return scan;
}

}  // namespace tool
