#include "observation.h"

#include "printable.h"

#include <map>
#include <stdexcept>
#include <string_view>

extern char** environ;

namespace {

std::map<std::string, std::string> readEnvironment() {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text(*entry);
        const std::size_t equals = text.find('=');
        if (equals != std::string_view::npos) {
            variables.emplace(text.substr(0, equals), text.substr(equals + 1));
        }
    }
    return variables;
}

std::vector<ChangedVariable> findChanges(const std::map<std::string, std::string>& before) {
    std::vector<ChangedVariable> changes;
    for (const auto& [name, value] : readEnvironment()) {
        const auto old = before.find(name);
        if (old == before.end()) {
            changes.push_back({name, std::nullopt, value});
        } else if (old->second != value) {
            changes.push_back({name, old->second, value});
        }
    }
    return changes;
}

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

// In the order in which Parse meets the reasons, so that the first one is the one.
std::string findFailure(const Trace& trace, const std::string& tlList) {
    for (const TracedSource& source : trace.sources) {
        if (source.state == SourceState::Malformed) {
            return source.name + ": " + source.message;
        }
    }
    for (const char* option : {"socketbuffer", "packetsize", "packetdelay", "camemu"}) {
        const Given* given = findWinner(trace, option);
        if (given != nullptr && !given->value->empty() && !isDigit(given->value->front())) {
            return "the value of " + typed(option) +
                   " does not begin with a digit: " + printable(*given->value) + " (" + given->source + ")";
        }
    }
    if (tlList.find("DravikGTC") != std::string::npos) {
        try {
            OrvexTestCommandLineParser::getApplicationDir();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
    return "an environment variable cannot be set, or memory ran out";
}

}  // namespace

Observation observeParse(OrvexTestCommandLineParser& parser, int argc, char** argv) {
    const std::map<std::string, std::string> before = readEnvironment();
    const bool succeeded = parser.Parse(argc, argv);
    Trace trace = traceArguments(argc, argv);
    const std::string failure = succeeded ? "" : findFailure(trace, parser.getTlList());
    return {parser, succeeded, failure, findChanges(before), std::move(trace)};
}
