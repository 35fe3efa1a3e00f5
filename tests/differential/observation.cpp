#include "differential/observation.h"

#include "OrvexTestCommandLineParserC.h"
#include "differential/process_environment.h"
#include "differential/scenario.h"

#include <algorithm>
#include <array>
#include <map>
#include <vector>

namespace differential {
namespace {

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

}  // namespace

std::optional<std::string> findVisibleDifference(const OrvexTestCommandLineParser& library,
                                                 const model::Parser& model,
                                                 const model::Environment& environment) {
    Comparison compare;
    compareAccessors(library, model, compare);
    compareCAccessors(model, compare);
    compareRecords(library.getTestRunInformation(), model.record(), compare);
    compareRecordBuffers(model, compare);
    compareHelp(library, model, compare);
    compare("environment", ProcessEnvironment::read(), environment);
    return compare.difference;
}

}  // namespace differential
