#include "differential/comparison.h"

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"
#include "capi/parser_instance.h"
#include "differential/differences.h"
#include "differential/process_environment.h"
#include "differential/scenario.h"
#include "model/model.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
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

// Replaces the process-wide parser with a new one, as at process start.
OrvexTestCommandLineParser& newProcessWideParser() {
    OrvexTestCommandLineParser& parser = orvex::getParserInstance();
    parser.~OrvexTestCommandLineParser();
    return *new (&parser) OrvexTestCommandLineParser();
}

// Six levels above the library's file; empty if that is the root or would be above it.
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

// The same call, with its count limited so that no read goes beyond the arguments.
Call readable(Call call) {
    if (call.form == Form::Packed) {
        // A count above the number of strings that the block can hold behaves like any larger one.
        const int most = call.isNull ? 0 : static_cast<int>(packed(call.arguments).size()) + 1;
        call.count = std::min(call.argc(), most);
    } else if (!call.isNull) {
        const std::size_t size = call.isWide() ? call.wideArguments.size() : call.arguments.size();
        call.count = std::min(call.argc(), static_cast<int>(size));
    }
    return call;
}

template <typename List>
List firstOf(const List& list, int count) {
    return List(list.begin(), list.begin() + count);
}

std::string makeOnModel(const Call& call, model::Parser& parser) {
    return outcomeOf([&] {
        if (call.form == Form::Variable) {
            const Strings names = call.arguments + Strings(2);
            parser.scanVariable(call.isNull ? "" : names[0], names[1]);
            return true;
        }
        if (call.isNull || call.argc() < 0) {
            return call.argc() == 0;
        }
        if (call.form == Form::Packed) {
            const std::vector<char> block = packed(call.arguments);
            return parser.parsePacked(std::string(block.begin(), block.end()), call.argc());
        }
        return call.isWide() ? parser.parseWide(firstOf(call.wideArguments, call.argc()))
                             : parser.parse(firstOf(call.arguments, call.argc()));
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

// tests/capi covers other buffer sizes and writes out of bounds.
void compareBuffers(const model::Parser& model, Differences& compare) {
    const auto [expected, expectedBytes] = model.recordBuffer();
    std::string bytes(expectedBytes.size(), '\xAA');
    compare("C GetTestRunInformation", OrvexTestCommandLineParser_GetTestRunInformation(bytes.data()),
            expected);
    compare("C record buffer", bytes, expectedBytes);

    const std::string text = model.helpMessage("");
    std::string help(text.size() + 1, '\xAA');
    compare("C GetHelpMessage", OrvexTestCommandLineParser_GetHelpMessage("", help.data(), help.size()),
            text.size());
    compare("C help buffer", help, text + '\0');
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
            const Call call = readable(scenario.calls[i - 1]);
            compare("result", outcomeOf([&] { return make(call, library); }), makeOnModel(call, model));
        }
        compareAccessors(library, model, compare);
        compare("environment", readEnvironment(), environment);
        if (compare.text.empty()) {
            // These return the same strings again.
            compare("getHelpMessage", library.getHelpMessage("runner"), model.helpMessage("runner"));
            compareBuffers(model, compare);
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
