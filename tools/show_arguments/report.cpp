#include "report.h"

#include "OrvexTestCommandLineParser.h"
#include "quoting.h"

#include <dlfcn.h>
#include <fmt/format.h>
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace tool {
namespace {

// The first element that fulfils the condition; null if there is none.
template <typename Element, typename Condition>
const Element* find(const std::vector<Element>& elements, Condition condition) {
    const auto found = std::find_if(elements.begin(), elements.end(), condition);
    return found == elements.end() ? nullptr : &*found;
}

std::string findReason(const Trace& trace) {
    if (const Source* source = trace.findMalformed()) {
        const std::size_t quote = scanText(source->text).unterminatedQuote.value_or(0);
        const char* kind = source->text[quote] == '"' ? "double" : "single";
        return fmt::format("{} has an unterminated {} quote at byte {}", source->name, kind, quote + 1);
    }
    for (const Argument& argument : trace.arguments) {
        if (argument.outcome == Outcome::Refused) {
            return fmt::format("the value of -{} does not begin with a digit: {} ({})", argument.name,
                               inQuotes(argument.value), argument.source);
        }
    }
    const TracedOption* layers = trace.findOption("tl");
    if (layers != nullptr && layers->value.find("DravikGTC") != std::string::npos) {
        try {
            OrvexTestCommandLineParser::getApplicationDir();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
    return "an environment variable cannot be set, or memory ran out";
}

std::string findLibraryFile() {
    // In a non-PIE program, "&" would give an address inside the program itself.
    void* function = dlsym(RTLD_DEFAULT, "OrvexTestCommandLineParser_Parse");
    Dl_info library = {};
    return function != nullptr && dladdr(function, &library) != 0 ? library.dli_fname : "";
}

Producers findProducers(const Variable& variable) {
    const std::string libraries =
        OrvexTestCommandLineParser::getApplicationDir() + "/Frameworks/orvex.framework/Libraries";
    Producers producers = {findLibraryFile(), {}, false};
    std::string expected;
    for (const char* directory : {"/gentlproducer/gtl", "/orvexCXP/bin"}) {
        const std::string path = libraries + directory;
        std::error_code ignored;
        producers.directories.push_back({path, std::filesystem::is_directory(path, ignored)});
        expected += path + ":";
    }
    producers.areSet = variable.after.rfind(expected, 0) == 0;
    return producers;
}

}  // namespace

const Source* Trace::findMalformed() const {
    return find(sources, [](const Source& source) { return source.state == SourceState::Malformed; });
}

const TracedOption* Trace::findOption(std::string_view name) const {
    return find(options, [name](const TracedOption& option) { return option.name == name; });
}

const Variable* Observation::findSet(std::string_view name) const {
    return find(variables, [name](const Variable& variable) {
        return variable.name == name && variable.state != VariableState::Kept;
    });
}

Report makeReport(int argc, char** argv) {
    Report report = {traceArguments(argc, argv), observeParse(argc, argv)};
    decideOutcomes(report.trace, report.seen);
    if (!report.seen.succeeded) {
        report.reason = findReason(report.trace);
    }
    if (const Variable* path = report.seen.findSet("GENICAM_GENTL64_PATH")) {
        report.producers = findProducers(*path);
    }
    report.hints = giveAdvice(report);
    return report;
}

bool isDefault(const Report& report, const Variable& variable) {
    const TracedOption* option = report.trace.findOption("packetsize");
    return variable.name == "ORVEX_GIGE_STREAM_GEVSCPS" && variable.state != VariableState::Kept &&
           (option == nullptr || option->value.empty());
}

const Argument* findHelpSwitch(const Trace& trace) {
    return find(trace.arguments, [](const Argument& argument) {
        return argument.outcome == Outcome::Counted && argument.option->sets[0] == "helpRequested";
    });
}

std::string_view nameOf(SourceState state) {
    constexpr std::string_view names[] = {"not reached", "not set", "blank", "scanned", "malformed"};
    return names[static_cast<std::size_t>(state)];
}

std::string_view nameOf(Outcome outcome) {
    constexpr std::string_view names[] = {"won",   "lost",    "collected", "counted",
                                          "empty", "refused", "ignored",   "not used"};
    return names[static_cast<std::size_t>(outcome)];
}

std::string_view nameOf(VariableState state) {
    constexpr std::string_view names[] = {"set", "set again", "kept"};
    return names[static_cast<std::size_t>(state)];
}

}  // namespace tool
