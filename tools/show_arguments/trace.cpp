#include "trace.h"

#include "parser/argument_tokenizer.h"
#include "parser/option_scanner.h"

#include <cstdlib>
#include <map>
#include <stdexcept>

namespace tool {
namespace {

Argument makeArgument(std::string_view source, const std::vector<std::string_view>& tokens,
                      const orvex::Finding& finding, bool hasProgramName) {
    const auto token = tokens.begin() + static_cast<std::ptrdiff_t>(finding.index);
    Argument argument = {source, ArgumentKind::Flag, {token, token + 1}};
    argument.name = finding.name;
    argument.value = finding.value;
    switch (finding.kind) {
        case orvex::Finding::Positional:
            argument.kind = hasProgramName ? ArgumentKind::TestPath : ArgumentKind::ProgramName;
            return argument;
        case orvex::Finding::DroppedProgramName:
            argument.kind = ArgumentKind::DroppedProgramName;
            return argument;
        case orvex::Finding::Flag:
            break;
        case orvex::Finding::Value:
            argument.kind = ArgumentKind::Value;
            argument.tokens.emplace_back(token[1]);
            break;
        case orvex::Finding::InlineValue:
            argument.kind = ArgumentKind::InlineValue;
            break;
    }
    argument.option = findOption(finding.name);
    return argument;
}

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
            orvex::scanTokens(tokens, grammar, hasProgramName, [&](const orvex::Finding& finding) {
                trace.arguments.push_back(makeArgument(name, tokens, finding, hasProgramName));
                hasProgramName = hasProgramName || finding.kind == orvex::Finding::Positional;
            });
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
