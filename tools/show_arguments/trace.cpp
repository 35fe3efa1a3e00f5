#include "trace.h"

#include "parser/argument_tokenizer.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <utility>

namespace {

// What the scan makes of an option token, given the token that follows it.
struct ScannedOption {
    std::string name;
    std::optional<std::string> value;
    bool takesNext;
};

// Two scans of this one step tell: an option with a value is not a flag, and an option whose value
// stands in the next token is a flag without that token.
ScannedOption scanOption(const std::string& token, const std::string* next) {
    const std::string name = OptionRegistry::trimLeadingDashes(token);
    OptionRegistry alone = makeRegistry();
    alone.parseTokens({"program", token});
    if (!alone.hasOption(name)) {
        const std::string key = name.substr(0, name.find('='));
        return {key, alone.getValue(key).str(), false};
    }
    if (next != nullptr) {
        OptionRegistry pair = makeRegistry();
        pair.parseTokens({"program", token, *next});
        if (!pair.hasOption(name)) {
            return {name, pair.getValue(name).str(), true};
        }
    }
    return {name, std::nullopt, false};
}

std::vector<Given>& occurrencesOf(const std::string& name, std::vector<TracedOption>& options) {
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&name](const TracedOption& option) { return option.name == name; });
    if (found != options.end()) {
        return found->given;
    }
    options.push_back({name, findKnownOption(name), {}});
    return options.back().given;
}

// Scans one list, which carries the program name in front. everything: what has scanned all earlier
// lists.
void scan(const std::vector<std::string>& list, OptionRegistry& everything, TracedSource& source,
          Trace& trace) {
    source.state = SourceState::Scanned;
    for (const std::string& text : list) {
        source.tokens.push_back({text, TokenRole::TestPath, ""});
    }
    std::vector<std::size_t> positionals;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (!OptionRegistry::isOptionToken(list[i])) {
            positionals.push_back(i);
            continue;
        }
        const ScannedOption option = scanOption(list[i], i + 1 < list.size() ? &list[i + 1] : nullptr);
        occurrencesOf(option.name, trace.options).push_back({source.name, option.value});
        if (option.takesNext) {
            source.tokens[i] = {list[i], TokenRole::Option, option.name};
            ++i;
            source.tokens[i] = {list[i], TokenRole::Value, option.name};
        } else {
            source.tokens[i].role = option.value ? TokenRole::OptionWithValue : TokenRole::Flag;
            source.tokens[i].option = option.name;
        }
    }

    // The very first positional argument is the program name; of a later list, only the program name
    // in front is dropped.
    const std::size_t keptBefore = everything.getPositionals().size();
    everything.parseTokens(list);
    const std::size_t kept = everything.getPositionals().size() - keptBefore;
    for (const std::size_t i : positionals) {
        if (i == positionals.front() && (keptBefore == 0 || kept < positionals.size())) {
            source.tokens[i].role = keptBefore == 0 ? TokenRole::ProgramName : TokenRole::DroppedProgramName;
        } else {
            trace.testPaths.push_back({source.name, list[i], Outcome::Collected});
        }
    }
}

void scanVariable(const char* programName, OptionRegistry& everything, TracedSource& source, Trace& trace) {
    const char* text = std::getenv(source.name.c_str());
    if (text == nullptr) {
        source.state = SourceState::NotSet;
        return;
    }
    std::vector<std::string> list;
    try {
        orvex::splitArgumentString(text, list);
    } catch (const std::runtime_error& error) {
        source.state = SourceState::Malformed;
        source.message = error.what();
        return;
    }
    if (list.empty()) {
        source.state = SourceState::Blank;
        return;
    }
    list.insert(list.begin(), programName);
    scan(list, everything, source, trace);
}

// Whether this occurrence has any effect, were it the only one.
void settleOne(const KnownOption* known, Given& given) {
    if (known == nullptr) {
        given = {given.source, given.value, Outcome::Ignored, "unknown option"};
    } else if (known->kind == OptionKind::Flag) {
        given.outcome = given.value ? Outcome::Ignored : Outcome::Counted;
        given.note = given.value ? "counts only without a value" : "";
    } else if (!given.value) {
        given.outcome = Outcome::Ignored;
        given.note = known->kind == OptionKind::InlineValue ? "needs the form name=value" : "has no value";
    } else {
        given.outcome = known->kind == OptionKind::MultiValue ? Outcome::Collected : Outcome::Lost;
    }
}

void settle(TracedOption& option) {
    Given* winner = nullptr;
    for (Given& given : option.given) {
        settleOne(option.known, given);
        if (given.outcome == Outcome::Lost) {
            winner = &given;
        }
    }
    if (winner != nullptr) {
        winner->outcome = Outcome::Won;
        winner->note = winner->value->empty() ? "empty, as if not given" : "";
    }
}

}  // namespace

Trace traceArguments(int argc, char** argv) {
    Trace trace;
    trace.sources = {{"ORVEX_TEST_ARGS"}, {"command line"}, {"_ORVEX_TEST_ARGS_"}};
    if (argc < 1) {
        return trace;
    }
    OptionRegistry everything = makeRegistry();
    TracedSource& prepended = trace.sources[0];
    TracedSource& appended = trace.sources[2];
    scanVariable(argv[0], everything, prepended, trace);
    if (prepended.state != SourceState::Malformed) {
        scan(std::vector<std::string>(argv, argv + argc), everything, trace.sources[1], trace);
        scanVariable(argv[0], everything, appended, trace);
    }
    if (appended.state == SourceState::Malformed) {
        // Parse ends here, before it looks at what it has scanned.
        for (Given& path : trace.testPaths) {
            path.outcome = Outcome::NotUsed;
        }
        return trace;
    }
    for (TracedOption& option : trace.options) {
        settle(option);
    }
    return trace;
}

const Given* findWinner(const Trace& trace, const std::string& option) {
    for (const TracedOption& traced : trace.options) {
        for (const Given& given : traced.given) {
            if (traced.name == option && given.outcome == Outcome::Won) {
                return &given;
            }
        }
    }
    return nullptr;
}

const char* describe(TokenRole role) {
    switch (role) {
        case TokenRole::ProgramName:
            return "program name";
        case TokenRole::DroppedProgramName:
            return "dropped program name";
        case TokenRole::TestPath:
            return "test path";
        case TokenRole::Flag:
            return "flag";
        case TokenRole::Option:
            return "option";
        case TokenRole::Value:
            return "value";
        case TokenRole::OptionWithValue:
            return "option with value";
    }
    return "";
}

const char* describe(SourceState state) {
    switch (state) {
        case SourceState::Scanned:
            return "scanned";
        case SourceState::NotSet:
            return "not set";
        case SourceState::Blank:
            return "blank";
        case SourceState::Malformed:
            return "malformed";
        case SourceState::NotReached:
            return "not reached";
    }
    return "";
}

const char* describe(Outcome outcome) {
    switch (outcome) {
        case Outcome::Won:
            return "won";
        case Outcome::Lost:
            return "lost";
        case Outcome::Collected:
            return "collected";
        case Outcome::Counted:
            return "counted";
        case Outcome::Ignored:
            return "ignored";
        case Outcome::NotUsed:
            return "not used";
    }
    return "";
}

std::string typed(const std::string& option) {
    return option.empty() || option[0] == '-' ? option : "-" + option;
}
