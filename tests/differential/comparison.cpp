#include "differential/comparison.h"

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"
#include "differential/observation.h"
#include "differential/process_environment.h"
#include "model/model.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

namespace differential {
namespace {

// The C interface does not hand out its parser. The application name is a text inside that object as long
// as it is empty, at the same distance from the object's beginning as in any other.
OrvexTestCommandLineParser& findProcessWideParser() {
    const OrvexTestCommandLineParser probe;
    const std::ptrdiff_t distance = probe.getApplicationName().data() - reinterpret_cast<const char*>(&probe);
    if (distance < 0 || distance >= static_cast<std::ptrdiff_t>(sizeof(probe)) ||
        *OrvexTestCommandLineParser_GetApplicationName() != '\0') {
        throw std::logic_error("the process-wide parser cannot be found");
    }
    char* const name = const_cast<char*>(OrvexTestCommandLineParser_GetApplicationName());
    return *reinterpret_cast<OrvexTestCommandLineParser*>(name - distance);
}

// The process-wide parser as it is in a process that has just begun.
OrvexTestCommandLineParser& newProcessWideParser() {
    static OrvexTestCommandLineParser& parser = findProcessWideParser();
    parser.~OrvexTestCommandLineParser();
    return *new (&parser) OrvexTestCommandLineParser();
}

struct Free {
    void operator()(char* memory) const {
        std::free(memory);
    }
};

std::optional<std::string> findApplicationDir() {
    const void* address = dlsym(RTLD_DEFAULT, "OrvexTestCommandLineParser_Parse");
    if (address == nullptr) {
        // Linked into this program instead of loaded.
        address = reinterpret_cast<const void*>(&OrvexTestCommandLineParser_Parse);
    }
    Dl_info library;
    if (dladdr(address, &library) == 0) {
        return std::nullopt;
    }
    const std::string file = library.dli_fname;
    const std::size_t slash = file.rfind('/');
    const std::string directory = slash == std::string::npos ? "." : file.substr(0, slash + 1);
    const std::unique_ptr<char, Free> resolved(realpath(directory.c_str(), nullptr));
    return resolved == nullptr
               ? std::nullopt
               : std::make_optional(model::applicationDirOf(resolved.get() + std::string("/file")));
}

// What a call returns: the number, or what was thrown.
struct Outcome {
    int result = 0;
    std::string exception;
};

Outcome outcomeOf(bool result) {
    return {result ? 1 : 0, ""};
}

template <typename Scan>
Outcome outcomeOfScan(const Scan& scan) {
    try {
        scan();
        return {};
    } catch (const std::runtime_error& error) {
        return {0, std::string("std::runtime_error: ") + error.what()};
    } catch (const std::exception& error) {
        return {0, std::string("std::exception: ") + error.what()};
    }
}

std::string argumentAt(const Call& call, std::size_t index) {
    return index < call.arguments.size() ? call.arguments[index] : std::string();
}

std::string blockOf(const Call& call) {
    std::string block;
    for (const std::string& argument : call.arguments) {
        block += argument + '\0';
    }
    return block;
}

// The count that is passed: never more than there is to read.
int countOf(const Call& call) {
    const bool isWide = call.form == Form::Wide || call.form == Form::CWide;
    const auto size = static_cast<int>(isWide ? call.wideArguments.size() : call.arguments.size());
    const int count = call.count.value_or(size);
    if (call.form == Form::Packed) {
        // One more than there can be texts in the block is as good as any larger number.
        return std::min(count, call.nullArguments ? 0 : static_cast<int>(blockOf(call).size()) + 1);
    }
    return call.nullArguments ? count : std::min(count, size);
}

template <typename List>
List firstOf(const List& list, int count) {
    return List(list.begin(), list.begin() + count);
}

Outcome playOnModel(const Call& call, model::Parser& parser) {
    const int count = countOf(call);
    switch (call.form) {
        case Form::Narrow:
        case Form::CNarrow:
            return outcomeOf(call.nullArguments || count < 0 ? model::Parser::parseNullArgv(count)
                                                             : parser.parse(firstOf(call.arguments, count)));
        case Form::Wide:
        case Form::CWide:
            return outcomeOf(call.nullArguments || count < 0
                                 ? model::Parser::parseNullWide(count)
                                 : parser.parseWideWithNulls(firstOf(call.wideArguments, count)));
        case Form::Packed:
            return outcomeOf(parser.parsePacked(blockOf(call), count));
        case Form::Variable:
            break;
    }
    return outcomeOfScan([&] {
        parser.parseArgsFromEnvironmentVariable(call.nullArguments ? "" : argumentAt(call, 0),
                                                argumentAt(call, 1));
    });
}

Outcome playNarrow(const Call& call, OrvexTestCommandLineParser& parser) {
    std::vector<std::string> texts = call.arguments;
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    char** const argv = call.nullArguments ? nullptr : pointers.data();
    if (call.form == Form::CNarrow) {
        return {OrvexTestCommandLineParser_Parse(countOf(call), argv), ""};
    }
    return outcomeOf(parser.Parse(countOf(call), argv));
}

Outcome playWide(const Call& call, OrvexTestCommandLineParser& parser) {
    std::vector<std::wstring> texts;
    for (const WideArgument& argument : call.wideArguments) {
        const std::u32string text = argument.value_or(U"");
        texts.emplace_back(text.begin(), text.end());
    }
    std::vector<wchar_t*> pointers;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        pointers.push_back(call.wideArguments[i] ? texts[i].data() : nullptr);
    }
    pointers.push_back(nullptr);
    wchar_t** const argv = call.nullArguments ? nullptr : pointers.data();
    if (call.form == Form::CWide) {
        return {OrvexTestCommandLineParser_ParseW(countOf(call), argv), ""};
    }
    return outcomeOf(parser.Parse(countOf(call), argv));
}

Outcome playOnLibrary(const Call& call, OrvexTestCommandLineParser& parser) {
    switch (call.form) {
        case Form::Narrow:
        case Form::CNarrow:
            return playNarrow(call, parser);
        case Form::Wide:
        case Form::CWide:
            return playWide(call, parser);
        case Form::Packed: {
            std::string block = blockOf(call);
            return outcomeOf(parser.Parse(countOf(call), call.nullArguments ? nullptr : block.data()));
        }
        case Form::Variable:
            break;
    }
    return outcomeOfScan([&] {
        const std::string name = argumentAt(call, 0);
        parser.ParseArgsFromEnvironmentVariable(call.nullArguments ? nullptr : name.c_str(),
                                                argumentAt(call, 1).c_str());
    });
}

std::string toText(const Outcome& outcome) {
    return outcome.exception.empty() ? std::to_string(outcome.result) : outcome.exception;
}

std::optional<std::string> findOutcomeDifference(const Outcome& library, const Outcome& model) {
    if (library.result == model.result && library.exception == model.exception) {
        return std::nullopt;
    }
    return "result:\n  library: " + toText(library) + "\n  model:   " + toText(model);
}

}  // namespace

std::optional<std::string> findDifference(const Scenario& scenario) {
    static const std::optional<std::string> applicationDir = findApplicationDir();
    const std::set<std::string> refused = canRefuseSettings ? scenario.refused : std::set<std::string>();

    OrvexTestCommandLineParser& library = newProcessWideParser();
    model::Environment environment = scenario.environment;
    model::Parser model(environment, applicationDir);
    if (!refused.empty()) {
        model.failSetting = [&refused](const std::string& name) { return refused.count(name) != 0; };
    }
    const ProcessEnvironment processEnvironment(scenario.environment, refused);

    if (const auto difference = findVisibleDifference(library, model, environment)) {
        return "before the first call, " + *difference;
    }
    for (std::size_t i = 0; i < scenario.calls.size(); ++i) {
        const Outcome libraryOutcome = playOnLibrary(scenario.calls[i], library);
        const Outcome modelOutcome = playOnModel(scenario.calls[i], model);
        std::optional<std::string> difference = findOutcomeDifference(libraryOutcome, modelOutcome);
        if (!difference) {
            difference = findVisibleDifference(library, model, environment);
        }
        if (difference) {
            return "after call " + std::to_string(i + 1) + ", " + *difference;
        }
    }
    return std::nullopt;
}

std::string reportDifference(const Scenario& scenario) {
    const Scenario smallest =
        shrink(scenario, [](const Scenario& smaller) { return findDifference(smaller).has_value(); });
    return findDifference(smallest).value_or("no difference") + "\nin\n" + describe(smallest);
}

}  // namespace differential
