// Everything that a parser shows, as one value that can be compared.

#ifndef ORVEX_TESTS_PARSER_SNAPSHOT_H
#define ORVEX_TESTS_PARSER_SNAPSHOT_H

#include "OrvexTestCommandLineParser.h"

#include <map>
#include <string>

using Snapshot = std::map<std::string, std::string>;

struct RecordField {
    const char* name;
    std::string TestRunInformation::*field;
};

// In the order of the slots of the C interface; the last two have none.
inline constexpr RecordField recordFields[] = {
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

// What the accessors return, and the fields of the record. A space follows each test path.
inline Snapshot snapshotOf(const OrvexTestCommandLineParser& parser) {
    std::string testPaths;
    for (const std::string& testPath : parser.getTestPaths()) {
        testPaths += testPath + " ";
    }
    Snapshot snapshot = {
        {"applicationName", parser.getApplicationName()},
        {"xmlFilename", parser.getXmlFilename()},
        {"outputFilename", parser.getOutputFilename()},
        {"testPaths", testPaths},
        {"tlList", parser.getTlList()},
        {"helpRequested", parser.helpRequested() ? "yes" : "no"},
        {"waitBeforeExit", parser.waitBeforeExit() ? "yes" : "no"},
    };
    for (const RecordField& field : recordFields) {
        snapshot[field.name] = parser.getTestRunInformation().*field.field;
    }
    return snapshot;
}

// The snapshot (or environment) with these entries changed or added.
inline Snapshot changed(Snapshot snapshot, const Snapshot& changes) {
    for (const auto& [name, value] : changes) {
        snapshot[name] = value;
    }
    return snapshot;
}

#endif
