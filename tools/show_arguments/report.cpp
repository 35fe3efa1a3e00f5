#include "report.h"

#include "OrvexTestCommandLineParser.h"
#include "advice.h"
#include "outcomes.h"
#include "quoting.h"

#include <dlfcn.h>
#include <fmt/format.h>
#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace tool {
namespace {

constexpr std::string_view producerPath = "GENICAM_GENTL64_PATH";

const TracedOption* findTraced(const Trace& trace, std::string_view name) {
    const auto found = std::find_if(trace.options.begin(), trace.options.end(),
                                    [name](const TracedOption& option) { return option.name == name; });
    return found == trace.options.end() ? nullptr : &*found;
}

std::string findReason(const Trace& trace) {
    if (const Source* source = findMalformed(trace)) {
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
    const TracedOption* layers = findTraced(trace, "tl");
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
    // A non-PIE program would get an address in itself from the "&" operator.
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
    producers.areSet = variable.after == expected + variable.before.value_or("");
    return producers;
}

}  // namespace

Report makeReport(int argc, char** argv) {
    Report report = {traceArguments(argc, argv), observeParse(argc, argv)};
    decideOutcomes(report.trace, report.seen);
    if (!report.seen.succeeded) {
        report.reason = findReason(report.trace);
    }
    const Variable& path = report.seen.variable(producerPath);
    if (isSet(path)) {
        report.producers = findProducers(path);
    }
    report.hints = giveAdvice(report);
    return report;
}

bool isDefault(const Report& report, const Variable& variable) {
    const TracedOption* option = findTraced(report.trace, "packetsize");
    return variable.name == "ORVEX_GIGE_STREAM_GEVSCPS" && isSet(variable) &&
           (option == nullptr || option->value.empty());
}

const Argument* findHelpSwitch(const Trace& trace) {
    for (const Argument& argument : trace.arguments) {
        if (argument.outcome == Outcome::Counted && argument.option->accessor == "helpRequested") {
            return &argument;
        }
    }
    return nullptr;
}

}  // namespace tool
