#include "differential/comparison.h"

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"
#include "capi/parser_instance.h"
#include "differential/differences.h"
#include "differential/process_environment.h"
#include "differential/scenario.h"
#include "model/model.h"
#include "support/parser_snapshot.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace differential {
namespace {

// The process-wide parser as it is in a process that has just begun.
OrvexTestCommandLineParser& newProcessWideParser() {
    OrvexTestCommandLineParser& parser = orvex::getParserInstance();
    parser.~OrvexTestCommandLineParser();
    return *new (&parser) OrvexTestCommandLineParser();
}

// The file lies six levels below it; above the root there is nothing.
std::string findApplicationDir() {
    Dl_info library;
    if (dladdr(reinterpret_cast<const void*>(&OrvexTestCommandLineParser_Parse), &library) == 0) {
        throw std::logic_error("the library's file cannot be found");
    }
    std::filesystem::path directory = std::filesystem::canonical(library.dli_fname);
    for (int level = 0; level < 6; ++level) {
        directory = directory.parent_path();
    }
    return directory == "/" ? "" : directory.string();
}

// What a call returns, or the message of what it throws.
template <typename Function>
std::string outcomeOf(const Function& function) {
    try {
        return std::to_string(static_cast<int>(function()));
    } catch (const std::runtime_error& error) {
        return std::string("std::runtime_error: ") + error.what();
    }
}

// Of Variable: the names of the variable and of the program.
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
    const auto size = static_cast<int>(call.isWide() ? call.wideArguments.size() : call.arguments.size());
    const int count = call.count.value_or(size);
    if (call.form == Form::Packed) {
        // One more than there can be strings in the block is as good as any larger number.
        return std::min(count, call.isNull ? 0 : static_cast<int>(blockOf(call).size()) + 1);
    }
    return call.isNull ? count : std::min(count, size);
}

template <typename List>
List firstOf(const List& list, int count) {
    return List(list.begin(), list.begin() + count);
}

std::string playOnModel(const Call& call, model::Parser& parser) {
    const int count = countOf(call);
    return outcomeOf([&] {
        if (call.form == Form::Variable) {
            parser.scanVariable(call.isNull ? "" : argumentAt(call, 0), argumentAt(call, 1));
            return true;
        }
        if (call.isNull || count < 0) {
            return count == 0;
        }
        if (call.form == Form::Packed) {
            return parser.parsePacked(blockOf(call), count);
        }
        return call.isWide() ? parser.parseWide(firstOf(call.wideArguments, count))
                             : parser.parse(firstOf(call.arguments, count));
    });
}

int playNarrow(const Call& call, OrvexTestCommandLineParser& parser) {
    Strings texts = call.arguments;
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    char** const argv = call.isNull ? nullptr : pointers.data();
    return call.form == Form::NarrowC ? OrvexTestCommandLineParser_Parse(countOf(call), argv)
                                      : static_cast<int>(parser.Parse(countOf(call), argv));
}

int playWide(const Call& call, OrvexTestCommandLineParser& parser) {
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
    wchar_t** const argv = call.isNull ? nullptr : pointers.data();
    return call.form == Form::WideC ? OrvexTestCommandLineParser_ParseW(countOf(call), argv)
                                    : static_cast<int>(parser.Parse(countOf(call), argv));
}

std::string playOnLibrary(const Call& call, OrvexTestCommandLineParser& parser) {
    return outcomeOf([&] {
        if (call.form == Form::Variable) {
            const std::string name = argumentAt(call, 0);
            parser.ParseArgsFromEnvironmentVariable(call.isNull ? nullptr : name.c_str(),
                                                    argumentAt(call, 1).c_str());
            return 1;
        }
        if (call.form == Form::Packed) {
            std::string block = blockOf(call);
            return static_cast<int>(parser.Parse(countOf(call), call.isNull ? nullptr : block.data()));
        }
        return call.isWide() ? playWide(call, parser) : playNarrow(call, parser);
    });
}

void compareAccessors(const OrvexTestCommandLineParser& library, const model::Parser& model,
                      Differences& compare) {
    const std::string firstTestPath = model.testPaths.empty() ? "" : model.testPaths.front();
    compare("getApplicationName", library.getApplicationName(), model.applicationName);
    compare("getXmlFilename", library.getXmlFilename(), model.xmlFilename);
    compare("getOutputFilename", library.getOutputFilename(), model.outputFilename);
    compare("getTestPaths", library.getTestPaths(), model.testPaths);
    compare("getFirstTestPath", library.getFirstTestPath(), firstTestPath);
    compare("getTlList", library.getTlList(), model.tlList);
    compare("helpRequested", library.helpRequested(), model.helpRequested);
    compare("waitBeforeExit", library.waitBeforeExit(), model.waitBeforeExit);
    for (const RecordField& row : recordFields) {
        compare(row.name, library.getTestRunInformation().*row.field, model.record.*row.field);
    }
    compare("getTdcDravikXmlFilename", library.getTdcDravikXmlFilename(), model.record.tdcDravikXmlFilename);

    compare("C GetApplicationName", OrvexTestCommandLineParser_GetApplicationName(), model.applicationName);
    compare("C GetXmlFilename", OrvexTestCommandLineParser_GetXmlFilename(), model.xmlFilename);
    compare("C GetOutputFilename", OrvexTestCommandLineParser_GetOutputFilename(), model.outputFilename);
    compare("C GetTestPath", OrvexTestCommandLineParser_GetTestPath(), firstTestPath);
    compare("C GetHelpRequested", OrvexTestCommandLineParser_GetHelpRequested(), model.helpRequested ? 1 : 0);
    compare("C GetWaitBeforeExit", OrvexTestCommandLineParser_GetWaitBeforeExit(),
            model.waitBeforeExit ? 1 : 0);
}

constexpr char untouched = '\xAA';

void compareRecordBuffer(const model::Parser& model, Differences& compare) {
    constexpr std::size_t margin = 64;
    const auto [expected, bytes] = model.recordBuffer();
    static std::string memory;
    memory.assign(bytes.size() + 2 * margin, untouched);
    static std::string expectedMemory;
    expectedMemory = memory;
    expectedMemory.replace(margin, bytes.size(), bytes);
    compare("C GetTestRunInformation", OrvexTestCommandLineParser_GetTestRunInformation(&memory[margin]),
            expected);
    compare("C record buffer", memory, expectedMemory);
}

// The library must not write past the size that it is given, nor at all when it refuses.
void compareHelpBuffer(const char* name, std::size_t size, const std::string& text, Differences& compare) {
    const bool hasRoom = size > text.size();
    std::string memory(size + 1, untouched);
    const std::size_t result =
        OrvexTestCommandLineParser_GetHelpMessage(name, size == 0 ? nullptr : memory.data(), size);
    compare("C GetHelpMessage", result, hasRoom ? text.size() : text.size() + 1);
    const std::string written = hasRoom ? text + '\0' : "";
    compare("C help buffer", memory, written + std::string(memory.size() - written.size(), untouched));
}

void compareHelp(const OrvexTestCommandLineParser& library, const model::Parser& model,
                 Differences& compare) {
    const std::string text = model.helpMessage("");
    compare("getHelpMessage of no name", library.getHelpMessage(""), text);
    compare("getHelpMessage of runner", library.getHelpMessage("runner"), model.helpMessage("runner"));
    compareHelpBuffer(nullptr, 0, text, compare);
    compareHelpBuffer(nullptr, text.size(), text, compare);
    compareHelpBuffer("", text.size() + 1, text, compare);
}

}  // namespace

Difference findDifference(const Scenario& scenario) {
    static const std::string applicationDir = findApplicationDir();

    OrvexTestCommandLineParser& library = newProcessWideParser();
    model::Environment environment = scenario.environment;
    model::Parser model(environment, applicationDir, scenario.refused);
    const ProcessEnvironment processEnvironment(scenario.environment, scenario.refused);

    for (std::size_t i = 0; i <= scenario.calls.size(); ++i) {
        Differences compare;
        if (i > 0) {
            const Call& call = scenario.calls[i - 1];
            compare("result", playOnLibrary(call, library), playOnModel(call, model));
        }
        compareAccessors(library, model, compare);
        compare(ProcessEnvironment::read(), environment);
        if (compare.text.empty()) {
            // These hold the same strings once more.
            compareRecordBuffer(model, compare);
            compareHelp(library, model, compare);
        }
        if (!compare.text.empty()) {
            return (i == 0 ? "before the first call:\n" : "after call " + std::to_string(i) + ":\n") +
                   compare.text;
        }
    }
    return std::nullopt;
}

std::string reportDifference(const Scenario& scenario) {
    const Scenario smallest = scenarioOf(shrink(describe(scenario), [](const std::string& text) {
        return findDifference(scenarioOf(text)).has_value();
    }));
    return findDifference(smallest).value_or("no difference\n") +
           "in this scenario, which can go into tests/fuzz/corpus/scenario:\n" + describe(smallest);
}

Difference replayScenario(const std::string& text) {
    const Scenario scenario = scenarioOf(text);
    return findDifference(scenario) ? Difference(reportDifference(scenario)) : std::nullopt;
}

}  // namespace differential
