#include "command_line.h"
#include "peer.h"

#include "OrvexTestCommandLineParser.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

Found parse(int argc, char** argv) {
    OrvexTestCommandLineParser parser;
    if (!parser.Parse(argc, argv)) {
        throw std::runtime_error("the parse failed");
    }
    // Every transport layer but the last is followed by a comma.
    return {parser.getTlList().find(',') == std::string::npos ? 1U : 2U, parser.getTestPaths().size(),
            parser.waitBeforeExit()};
}

Found construct(int /*argc*/, char** /*argv*/) {
    const OrvexTestCommandLineParser parser;
    return {2, 2, !parser.waitBeforeExit()};
}

// The variables that a parse sets, in its order. The one that it sets only where it is not defined is
// not among them: after the first parse it is.
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

// The variables that the parse of this command line leaves behind, with their values.
template <Form form>
std::vector<std::pair<const char*, std::string>> readWrittenVariables() {
    for (const char* name : writtenVariables) {
        unsetenv(name);
    }
    CommandLine commandLine(typicalArguments(form));
    parse(commandLine.argc(), commandLine.argv());
    std::vector<std::pair<const char*, std::string>> variables;
    for (const char* name : writtenVariables) {
        if (const char* value = std::getenv(name)) {
            variables.emplace_back(name, value);
        }
    }
    return variables;
}

// The least that the job takes: a bare parse and the same calls for the environment.
template <Form form>
Found doTheLeast(int argc, char** argv) {
    static const std::vector<std::pair<const char*, std::string>> variables = readWrittenVariables<form>();
    const Found found = parseWithGetoptLong(argc, argv);
    for (const char* name : {"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_", "ORVEX_GTC_USE_EXTRA_TL"}) {
        benchmark::DoNotOptimize(std::getenv(name));
    }
    for (const auto& [name, value] : variables) {
        setenv(name, value.c_str(), 1);
    }
    return found;
}

[[maybe_unused]] const bool isRegistered =
    registerPeer("floor", Form::Separate, doTheLeast<Form::Separate>) &&
    registerPeer("floor", Form::Joined, doTheLeast<Form::Joined>) && registerPeer("library", parse) &&
    registerPeer("library's constructor", Form::Separate, construct);

}  // namespace
