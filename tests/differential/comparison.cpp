#include "differential/comparison.h"

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"
#include "differential/process_environment.h"
#include "model/model.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace differential {
namespace {

// ---- the two sides -----------------------------------------------------------------------------------

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
            return outcomeOf(call.nullArguments || count < 0 ? parser.parseNullArgv(count)
                                                             : parser.parse(firstOf(call.arguments, count)));
        case Form::Wide:
        case Form::CWide:
            return outcomeOf(call.nullArguments || count < 0
                                 ? parser.parseNullWide(count)
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

// ---- what they show ----------------------------------------------------------------------------------

std::string toText(const std::string& text) {
    return quoted(text);
}

std::string toText(std::size_t number) {
    return std::to_string(number);
}

std::string toText(int number) {
    return std::to_string(number);
}

std::string toText(bool flag) {
    return flag ? "true" : "false";
}

std::string toText(const std::vector<std::string>& texts) {
    std::string list = "{";
    for (const std::string& text : texts) {
        list += (list.size() > 1 ? ", " : "") + quoted(text);
    }
    return list + "}";
}

std::string toText(const std::map<std::string, std::string>& variables) {
    std::string list = "{";
    for (const auto& [name, value] : variables) {
        list += (list.size() > 1 ? ", " : "") + name + "=" + quoted(value);
    }
    return list + "}";
}

// Compares one thing after another and keeps the first difference.
class Comparison {
public:
    template <typename Value>
    void operator()(const char* what, const Value& library, const Value& model) {
        if (!difference && !(library == model)) {
            difference =
                std::string(what) + ":\n  library: " + toText(library) + "\n  model:   " + toText(model);
        }
    }

    std::optional<std::string> difference;
};

void compareAccessors(const OrvexTestCommandLineParser& library, const model::Parser& model,
                      Comparison& compare) {
    compare("getApplicationName", library.getApplicationName(), model.applicationName());
    compare("getXmlFilename", library.getXmlFilename(), model.xmlFilename());
    compare("getOutputFilename", library.getOutputFilename(), model.outputFilename());
    compare("getTestPaths", library.getTestPaths(), model.testPaths());
    compare("getFirstTestPath", library.getFirstTestPath(), model.firstTestPath());
    compare("getTlList", library.getTlList(), model.tlList());
    compare("helpRequested", library.helpRequested(), model.helpRequested());
    compare("waitBeforeExit", library.waitBeforeExit(), model.waitBeforeExit());
    compare("getTdcDravikXmlFilename", library.getTdcDravikXmlFilename(), model.tdcDravikXmlFilename());
}

void compareCAccessors(const model::Parser& model, Comparison& compare) {
    const auto compareTexts = [&compare](const char* what, const char* library, const std::string& model) {
        // The model's texts hold no zero byte.
        if (model != library) {
            compare(what, std::string(library), model);
        }
    };
    compareTexts("C GetApplicationName", OrvexTestCommandLineParser_GetApplicationName(),
                 model.applicationName());
    compareTexts("C GetXmlFilename", OrvexTestCommandLineParser_GetXmlFilename(), model.xmlFilename());
    compareTexts("C GetOutputFilename", OrvexTestCommandLineParser_GetOutputFilename(),
                 model.outputFilename());
    compareTexts("C GetTestPath", OrvexTestCommandLineParser_GetTestPath(), model.firstTestPath());
    compare("C GetHelpRequested", OrvexTestCommandLineParser_GetHelpRequested(),
            model.helpRequested() ? 1 : 0);
    compare("C GetWaitBeforeExit", OrvexTestCommandLineParser_GetWaitBeforeExit(),
            model.waitBeforeExit() ? 1 : 0);
}

void compareRecords(const TestRunInformation& library, const model::Record& model, Comparison& compare) {
    compare("record.group", library.group, model.group);
    compare("record.guid", library.guid, model.guid);
    compare("record.runName", library.runName, model.runName);
    compare("record.runDescription", library.runDescription, model.runDescription);
    compare("record.product", library.product, model.product);
    compare("record.fixedZero", library.fixedZero, model.fixedZero);
    compare("record.userId", library.userId, model.userId);
    compare("record.vcsRevision", library.vcsRevision, model.vcsRevision);
    compare("record.vcsBranch", library.vcsBranch, model.vcsBranch);
    compare("record.secondVcsRevision", library.secondVcsRevision, model.secondVcsRevision);
    compare("record.secondVcsBranch", library.secondVcsBranch, model.secondVcsBranch);
    compare("record.pcName", library.pcName, model.pcName);
    compare("record.osName", library.osName, model.osName);
    compare("record.transportLayers", library.transportLayers, model.transportLayers);
    compare("record.tdcDravikXmlFilename", library.tdcDravikXmlFilename, model.tdcDravikXmlFilename);
    compare("record.testName", library.testName, model.testName);
    compare("record.osType", library.osType, model.osType);
    compare("record.bit", library.bit, model.bit);
}

constexpr char untouched = static_cast<char>(0xAA);

void compareRecordBuffers(const model::Parser& model, Comparison& compare) {
    constexpr std::size_t margin = 64;
    static std::array<char, ORVEX_TEST_RUN_INFORMATION_SIZE + 2 * margin> memory;
    memory.fill(untouched);
    const int result = OrvexTestCommandLineParser_GetTestRunInformation(memory.data() + margin);
    const model::CBuffer expected = model.cBuffer();
    compare("C GetTestRunInformation", result, expected.result);

    static std::array<char, ORVEX_TEST_RUN_INFORMATION_SIZE + 2 * margin> expectedMemory;
    expectedMemory.fill(untouched);
    std::copy(expected.bytes.begin(), expected.bytes.end(), expectedMemory.begin() + margin);
    if (memory != expectedMemory) {
        const auto first = std::mismatch(memory.begin(), memory.end(), expectedMemory.begin());
        const auto offset = static_cast<int>(first.first - memory.begin()) - static_cast<int>(margin);
        compare(("C record buffer, byte " + std::to_string(offset)).c_str(), static_cast<int>(*first.first),
                static_cast<int>(*first.second));
    }
}

void compareHelpBuffer(const model::Parser& model, const std::optional<std::string>& name,
                       std::optional<std::size_t> size, Comparison& compare) {
    // The library must not write past the size that it is given, nor at all when it refuses.
    std::vector<char> memory(size.value_or(0) + 1, untouched);
    const std::size_t result = OrvexTestCommandLineParser_GetHelpMessage(
        name ? name->c_str() : nullptr, size ? memory.data() : nullptr, size.value_or(0));
    model::CHelp expected = model.cHelpMessage(name, size);
    expected.bytes.push_back(untouched);
    compare("C GetHelpMessage", result, expected.result);
    if (memory != expected.bytes) {
        compare("C help buffer", std::string(memory.begin(), memory.end()),
                std::string(expected.bytes.begin(), expected.bytes.end()));
    }
}

void compareHelp(const OrvexTestCommandLineParser& library, const model::Parser& model, Comparison& compare) {
    const std::string text = model.helpMessage("");
    compare("getHelpMessage(\"\")", library.getHelpMessage(""), text);
    compare("getHelpMessage(\"runner\")", library.getHelpMessage("runner"), model.helpMessage("runner"));
    compareHelpBuffer(model, std::nullopt, std::nullopt, compare);
    compareHelpBuffer(model, std::nullopt, text.size(), compare);
    compareHelpBuffer(model, "", text.size() + 1, compare);
}

void compareAll(const OrvexTestCommandLineParser& library, const model::Parser& model,
                const model::Environment& environment, Comparison& compare) {
    compareAccessors(library, model, compare);
    compareCAccessors(model, compare);
    compareRecords(library.getTestRunInformation(), model.record(), compare);
    compareRecordBuffers(model, compare);
    compareHelp(library, model, compare);
    compare("environment", ProcessEnvironment::read(), environment);
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

    Comparison compare;
    compareAll(library, model, environment, compare);
    if (compare.difference) {
        return "before the first call, " + *compare.difference;
    }
    for (std::size_t i = 0; i < scenario.calls.size(); ++i) {
        const Outcome libraryOutcome = playOnLibrary(scenario.calls[i], library);
        const Outcome modelOutcome = playOnModel(scenario.calls[i], model);
        compare("exception", libraryOutcome.exception, modelOutcome.exception);
        compare("result", libraryOutcome.result, modelOutcome.result);
        compareAll(library, model, environment, compare);
        if (compare.difference) {
            return "after call " + std::to_string(i + 1) + ", " + *compare.difference;
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
