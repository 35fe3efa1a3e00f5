#include "OrvexTestCommandLineParser.h"
#include "options.h"
#include "report.h"

#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {
namespace {

constexpr std::string_view extraTransportLayer = "ORVEX_GTC_USE_EXTRA_TL";

std::optional<std::string> readVariable(std::string_view name) {
    const char* value = std::getenv(name.data());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

// Parses again in an environment without the variables. Those that exist afterwards are the ones that the
// parse sets. The exception is the extra transport layer, which a parse sets only if it is undefined.
void findSetVariables(std::vector<Variable>& variables, int argc, char** argv) {
    for (const Variable& variable : variables) {
        unsetenv(variable.name.data());
    }
    OrvexTestCommandLineParser().Parse(argc, argv);
    for (Variable& variable : variables) {
        const bool isSet =
            variable.name == extraTransportLayer ? !variable.before : readVariable(variable.name).has_value();
        if (isSet) {
            variable.state = variable.before == variable.after ? VariableState::SetAgain : VariableState::Set;
        }
        setenv(variable.name.data(), variable.after.c_str(), 1);
    }
}

}  // namespace

Observation observeParse(int argc, char** argv) {
    Observation seen;
    std::vector<std::optional<std::string>> before;
    for (const std::string_view name : variableNames()) {
        before.push_back(readVariable(name));
    }
    OrvexTestCommandLineParser parser;
    seen.succeeded = parser.Parse(argc, argv);
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (const std::optional<std::string> after = readVariable(variableNames()[i])) {
            seen.variables.push_back({variableNames()[i], VariableState::Kept, before[i], *after});
        }
    }
    findSetVariables(seen.variables, argc, argv);
    seen.accessors = {
        {"applicationName", parser.getApplicationName()}, {"helpRequested", parser.helpRequested()},
        {"waitBeforeExit", parser.waitBeforeExit()},      {"outputFilename", parser.getOutputFilename()},
        {"xmlFilename", parser.getXmlFilename()},         {"transportLayers", parser.getTlList()},
    };
    seen.testPaths = parser.getTestPaths();
    const TestRunInformation& record = parser.getTestRunInformation();
    seen.record = {{"group", record.group},
                   {"guid", record.guid},
                   {"runName", record.runName},
                   {"runDescription", record.runDescription},
                   {"product", record.product},
                   {"fixedZero", record.fixedZero},
                   {"userId", record.userId},
                   {"vcsRevision", record.vcsRevision},
                   {"vcsBranch", record.vcsBranch},
                   {"secondVcsRevision", record.secondVcsRevision},
                   {"secondVcsBranch", record.secondVcsBranch},
                   {"pcName", record.pcName},
                   {"osName", record.osName},
                   {"transportLayers", record.transportLayers},
                   {"tdcDravikXmlFilename", record.tdcDravikXmlFilename},
                   {"testName", record.testName},
                   {"osType", record.osType},
                   {"bit", record.bit}};
    return seen;
}

}  // namespace tool
