#include "observation.h"

#include "OrvexTestCommandLineParser.h"

#include <algorithm>
#include <cstdlib>

namespace tool {
namespace {

constexpr std::string_view extraTransportLayer = "ORVEX_GTC_USE_EXTRA_TL";

constexpr std::string_view variableNames[] = {
    extraTransportLayer,
    "ORVEX_DEVICE_FILTER",
    "ORVEX_GIGE_STREAMPARAMS",
    "ORVEX_GIGE_STREAM_GEVSCPS",
    "ORVEX_GIGE_STREAM_GEVSCPD",
    "ORVEX_CAMEMU",
    "TEST_PROPERTIES",
    "GENICAM_GENTL64_PATH",
    "TEST_SESSION_GUID",
    "TEST_SESSION_NAME",
    "TEST_SESSION_DESCRIPTION",
    "TEST_SESSION_GROUP",
    "TEST_PRODUCT",
    "TEST_PRODUCT_VARIANT",
    "USER_UID",
    "VCS_REVISION",
    "VCS_BRANCH",
    "TRANSPORT_LAYER",
};

struct RecordField {
    std::string_view name;
    std::string TestRunInformation::*field;
};

constexpr RecordField recordFields[] = {
    {"group", &TestRunInformation::group},
    {"guid", &TestRunInformation::guid},
    {"runName", &TestRunInformation::runName},
    {"runDescription", &TestRunInformation::runDescription},
    {"product", &TestRunInformation::product},
    {"fixedZero", &TestRunInformation::fixedZero},
    {"userId", &TestRunInformation::userId},
    {"vcsRevision", &TestRunInformation::vcsRevision},
    {"vcsBranch", &TestRunInformation::vcsBranch},
    {"secondVcsRevision", &TestRunInformation::secondVcsRevision},
    {"secondVcsBranch", &TestRunInformation::secondVcsBranch},
    {"pcName", &TestRunInformation::pcName},
    {"osName", &TestRunInformation::osName},
    {"transportLayers", &TestRunInformation::transportLayers},
    {"tdcDravikXmlFilename", &TestRunInformation::tdcDravikXmlFilename},
    {"testName", &TestRunInformation::testName},
    {"osType", &TestRunInformation::osType},
    {"bit", &TestRunInformation::bit},
};

std::optional<std::string> readVariable(std::string_view name) {
    const char* value = std::getenv(name.data());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

VariableState stateOf(const Variable& variable, bool isSet) {
    if (!variable.after) {
        return VariableState::Absent;
    }
    if (!isSet) {
        return VariableState::Kept;
    }
    return variable.before == variable.after ? VariableState::SetAgain : VariableState::Set;
}

// Parses again in an environment without the variables. The parse has set those that exist afterwards. The
// exception is the extra transport layer, which a parse sets only if it is undefined.
void findSetVariables(std::vector<Variable>& variables, int argc, char** argv) {
    for (const Variable& variable : variables) {
        if (variable.name != extraTransportLayer) {
            unsetenv(variable.name.data());
        }
    }
    OrvexTestCommandLineParser().Parse(argc, argv);
    for (Variable& variable : variables) {
        const bool isSet =
            variable.name == extraTransportLayer ? !variable.before : readVariable(variable.name).has_value();
        variable.state = stateOf(variable, isSet);
        if (variable.after) {
            setenv(variable.name.data(), variable.after->c_str(), 1);
        } else {
            unsetenv(variable.name.data());
        }
    }
}

}  // namespace

const Variable& Observation::variable(std::string_view name) const {
    return *std::find_if(variables.begin(), variables.end(),
                         [name](const Variable& variable) { return variable.name == name; });
}

Observation observeParse(int argc, char** argv) {
    Observation seen;
    for (const std::string_view name : variableNames) {
        seen.variables.push_back({name, VariableState::Absent, readVariable(name), std::nullopt});
    }
    OrvexTestCommandLineParser parser;
    seen.succeeded = parser.Parse(argc, argv);
    for (Variable& variable : seen.variables) {
        variable.after = readVariable(variable.name);
    }
    findSetVariables(seen.variables, argc, argv);
    seen.accessors = {
        {"applicationName", parser.getApplicationName()}, {"helpRequested", parser.helpRequested()},
        {"waitBeforeExit", parser.waitBeforeExit()},      {"outputFilename", parser.getOutputFilename()},
        {"xmlFilename", parser.getXmlFilename()},         {"transportLayers", parser.getTlList()},
    };
    seen.testPaths = parser.getTestPaths();
    for (const RecordField& field : recordFields) {
        seen.record.push_back({field.name, parser.getTestRunInformation().*field.field});
    }
    return seen;
}

}  // namespace tool
