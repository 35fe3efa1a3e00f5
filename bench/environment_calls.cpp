#include "environment_calls.h"

#include "OrvexTestCommandLineParser.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

// The variables that a parse of the typical arguments sets, in order, except for ORVEX_GTC_USE_EXTRA_TL,
// which only the first parse sets.
constexpr const char* writtenVariables[] = {"ORVEX_DEVICE_FILTER",
                                            "ORVEX_GIGE_STREAMPARAMS",
                                            "ORVEX_GIGE_STREAM_GEVSCPS",
                                            "ORVEX_GIGE_STREAM_GEVSCPD",
                                            "ORVEX_CAMEMU",
                                            "TEST_PROPERTIES",
                                            "TEST_SESSION_GUID",
                                            "TEST_SESSION_NAME",
                                            "TEST_SESSION_DESCRIPTION",
                                            "TEST_SESSION_GROUP",
                                            "TEST_PRODUCT",
                                            "USER_UID",
                                            "VCS_REVISION",
                                            "VCS_BRANCH",
                                            "TRANSPORT_LAYER"};

}  // namespace

EnvironmentCalls::EnvironmentCalls(Form form) {
    for (const char* name : writtenVariables) {
        unsetenv(name);
    }
    CommandLine commandLine(typicalArguments(form));
    OrvexTestCommandLineParser().Parse(commandLine.argc(), commandLine.argv());
    for (const char* name : writtenVariables) {
        if (const char* value = std::getenv(name)) {
            variables.emplace_back(name, value);
        }
    }
}

void EnvironmentCalls::make() const {
    for (const char* name : {"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_", "ORVEX_GTC_USE_EXTRA_TL"}) {
        benchmark::DoNotOptimize(std::getenv(name));
    }
    for (const auto& [name, value] : variables) {
        setenv(name, value.c_str(), 1);
    }
}
