// What a test program sees of a Parse.

#ifndef ORVEX_SHOW_ARGUMENTS_OBSERVATION_H
#define ORVEX_SHOW_ARGUMENTS_OBSERVATION_H

#include "OrvexTestCommandLineParser.h"
#include "trace.h"

#include <optional>
#include <string>
#include <vector>

struct ChangedVariable {
    std::string name;
    std::optional<std::string> before;  // none when it was not defined
    std::string after;
};

struct Observation {
    const OrvexTestCommandLineParser& parser;
    bool succeeded;
    std::string failure;                       // the reason, when the parse failed
    std::vector<ChangedVariable> environment;  // added or changed, sorted by name
    Trace trace;
};

// Parses the arguments with the parser, which must outlive the result.
Observation observeParse(OrvexTestCommandLineParser& parser, int argc, char** argv);

// The fields of the record, in order.
struct RecordField {
    const char* name;
    std::string TestRunInformation::*text;
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

#endif
