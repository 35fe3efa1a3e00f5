#include "OrvexTestCommandLineParser.h"
#include "options.h"
#include "parser/argument_tokenizer.h"
#include "parser/option_scanner.h"
#include "report.h"

#include <cstddef>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tool {
namespace {

void scan(std::string_view source, const std::vector<std::string_view>& tokens, Trace& trace) {
    const OptionRegistry grammar = makeGrammar();
    orvex::scanTokens(tokens, grammar, trace.hasProgramName, [&](const orvex::Finding& finding) {
        Argument& argument = trace.arguments.emplace_back(Argument{source, finding.kind});
        argument.tokens.emplace_back(tokens[finding.index]);
        if (finding.kind == orvex::Finding::Value) {
            argument.tokens.emplace_back(finding.value);
        }
        argument.name = finding.name;
        argument.value = finding.value;
        argument.option = findOption(finding.name);
        // The first positional argument is the program name.
        argument.isTestPath = finding.kind == orvex::Finding::Positional && trace.hasProgramName;
        trace.hasProgramName = trace.hasProgramName || finding.kind == orvex::Finding::Positional;
    });
}

// Splits the variable that the source is named after.
std::vector<std::string> readVariable(Source& source) {
    std::vector<std::string> words;
    if (const char* text = std::getenv(source.name.data())) {
        source.state = SourceState::Blank;
        source.text = text;
    } else {
        source.state = SourceState::NotSet;
    }
    try {
        orvex::splitArgumentString(source.text, words);
    } catch (const std::runtime_error& error) {
        source.state = SourceState::Malformed;
        source.message = error.what();
    }
    return words;
}

std::vector<TracedOption> groupByOption(const std::vector<Argument>& arguments) {
    std::vector<TracedOption> options;
    std::map<std::string_view, std::size_t> positions;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Argument& argument = arguments[i];
        if (isOption(argument)) {
            const auto [position, isNew] = positions.try_emplace(argument.name, options.size());
            if (isNew) {
                options.push_back({argument.name});
            }
            options[position->second].given.push_back(i);
        }
    }
    return options;
}

}  // namespace

Trace traceArguments(int argc, char** argv) {
    Trace trace;
    for (const std::string_view name : {firstVariable, commandLine, lastVariable}) {
        const bool isReached = argc > 0 && trace.findMalformed() == nullptr;
        Source& source = trace.sources.emplace_back(Source{name});
        std::vector<std::string> words;
        std::vector<std::string_view> tokens;
        if (isReached && name == commandLine) {
            tokens.assign(argv, argv + argc);
        } else if (isReached) {
            words = readVariable(source);
            tokens.assign(words.begin(), words.end());
        }
        // A variable that holds arguments is scanned as if it began with the program name.
        if (!words.empty()) {
            tokens.insert(tokens.begin(), argv[0]);
        }
        if (!tokens.empty()) {
            source.state = SourceState::Scanned;
            scan(name, tokens, trace);
        }
    }
    trace.options = groupByOption(trace.arguments);
    return trace;
}

}  // namespace tool
