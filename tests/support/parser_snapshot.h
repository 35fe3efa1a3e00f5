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

// The eighteen fields of the record by name.
inline Snapshot snapshotOf(const TestRunInformation& information) {
    Snapshot snapshot;
    for (const RecordField& field : recordFields) {
        snapshot[field.name] = information.*field.field;
    }
    return snapshot;
}

// What the accessors return, without the record. Test paths are each followed by a blank.
inline Snapshot snapshotOf(const OrvexTestCommandLineParser& parser) {
    std::string testPaths;
    for (const std::string& testPath : parser.getTestPaths()) {
        testPaths += testPath + " ";
    }
    return {
        {"applicationName", parser.getApplicationName()},
        {"xmlFilename", parser.getXmlFilename()},
        {"outputFilename", parser.getOutputFilename()},
        {"testPaths", testPaths},
        {"tlList", parser.getTlList()},
        {"helpRequested", parser.helpRequested() ? "yes" : "no"},
        {"waitBeforeExit", parser.waitBeforeExit() ? "yes" : "no"},
    };
}

// The snapshot (or environment) with these entries changed or added.
inline Snapshot changed(Snapshot snapshot, const Snapshot& changes) {
    for (const auto& [name, text] : changes) {
        snapshot[name] = text;
    }
    return snapshot;
}

#endif
