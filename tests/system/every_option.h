// A command line that has an effect on everything, and what these effects are.

#ifndef ORVEX_TESTS_EVERY_OPTION_H
#define ORVEX_TESTS_EVERY_OPTION_H

#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <string>
#include <utility>
#include <vector>

using Variables = std::vector<std::pair<std::string, std::string>>;

inline const std::vector<std::string> everyOption = {"app",
                                                     "SuiteA",
                                                     "-h",
                                                     "-w",
                                                     "-o",
                                                     "out.xml",
                                                     "-x",
                                                     "report.xml",
                                                     "-tl",
                                                     "DravikGTC",
                                                     "-tl",
                                                     "DravikGigE:SocketDriver",
                                                     "-socketbuffer",
                                                     "11",
                                                     "-packetsize",
                                                     "12",
                                                     "-packetdelay",
                                                     "13",
                                                     "-camemu",
                                                     "14",
                                                     "-p",
                                                     "a=1",
                                                     "-p",
                                                     "b=2",
                                                     "-tdc_guid",
                                                     "guid",
                                                     "-tdc_runname",
                                                     "run name",
                                                     "-tdc_rundescription",
                                                     "description",
                                                     "-tdc_group",
                                                     "group",
                                                     "-tdc_userid",
                                                     "user",
                                                     "-tdc_product",
                                                     "product",
                                                     "-tdc_vcsbranch",
                                                     "branch",
                                                     "-tdc_vcsrevision",
                                                     "revision",
                                                     "-tdc_dxml",
                                                     "dravik.xml",
                                                     "-tdc_variant=variant",
                                                     "-testname",
                                                     "test",
                                                     "-pcname",
                                                     "computer",
                                                     "-osname",
                                                     "system",
                                                     "-ostype",
                                                     "type",
                                                     "-bit",
                                                     "64"};

inline std::vector<std::string> everyOptionAnd(const std::vector<std::string>& more) {
    std::vector<std::string> result = everyOption;
    result.insert(result.end(), more.begin(), more.end());
    return result;
}

// The text as often as that with the separator between.
inline std::string repeated(const std::string& text, int times, const std::string& separator) {
    std::string result;
    for (int i = 0; i < times; ++i) {
        result += (i == 0 ? "" : separator) + text;
    }
    return result;
}

// The variables that are set when this command line has been scanned so many times by one parser, in the
// order in which they are set: seven before the SDK's directory is looked for, then the producer path,
// then the ten of the session. The SDK is in /p.
inline Variables transportVariables(int scans) {
    return {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
            {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC||DeviceClass=DravikGigE"},
            {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver SocketBufferSize=11"},
            {"ORVEX_GIGE_STREAM_GEVSCPS", "12"},
            {"ORVEX_GIGE_STREAM_GEVSCPD", "13"},
            {"ORVEX_CAMEMU", "14"},
            {"TEST_PROPERTIES", repeated("a=1 b=2", scans, " ")}};
}

inline const std::string producerDirectories =
    "/p/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
    "/p/Frameworks/orvex.framework/Libraries/orvexCXP/bin:";

inline Variables producerPath(const std::string& oldValue) {
    return {{"GENICAM_GENTL64_PATH", producerDirectories + oldValue}};
}

inline Variables sessionVariables(int scans) {
    return {{"TEST_SESSION_GUID", "guid"},
            {"TEST_SESSION_NAME", "run name"},
            {"TEST_SESSION_DESCRIPTION", "description"},
            {"TEST_SESSION_GROUP", "group"},
            {"TEST_PRODUCT", "product"},
            {"TEST_PRODUCT_VARIANT", "variant"},
            {"USER_UID", "user"},
            {"VCS_REVISION", "revision"},
            {"VCS_BRANCH", "branch"},
            {"TRANSPORT_LAYER", repeated("DravikGTC DravikGigE:SocketDriver", scans, " ")}};
}

// An environment in which all of them hold something else, but for the one that is only set when it is
// not defined.
inline const Environment environmentBefore = {{"ORVEX_DEVICE_FILTER", "before 2"},
                                              {"ORVEX_GIGE_STREAMPARAMS", "before 3"},
                                              {"ORVEX_GIGE_STREAM_GEVSCPS", "before 4"},
                                              {"ORVEX_GIGE_STREAM_GEVSCPD", "before 5"},
                                              {"ORVEX_CAMEMU", "before 6"},
                                              {"TEST_PROPERTIES", "before 7"},
                                              {"GENICAM_GENTL64_PATH", "/x/gtl"},
                                              {"TEST_SESSION_GUID", "before 9"},
                                              {"TEST_SESSION_NAME", "before 10"},
                                              {"TEST_SESSION_DESCRIPTION", "before 11"},
                                              {"TEST_SESSION_GROUP", "before 12"},
                                              {"TEST_PRODUCT", "before 13"},
                                              {"TEST_PRODUCT_VARIANT", "before 14"},
                                              {"USER_UID", "before 15"},
                                              {"VCS_REVISION", "before 16"},
                                              {"VCS_BRANCH", "before 17"},
                                              {"TRANSPORT_LAYER", "before 18"},
                                              {"UNRELATED", "unrelated"}};

// The environment after these variables were set one after another.
inline Environment afterSetting(Environment environment, const std::vector<Variables>& groups) {
    for (const Variables& group : groups) {
        for (const auto& [name, value] : group) {
            environment[name] = value;
        }
    }
    return environment;
}

inline Variables firstOf(Variables variables, std::size_t count) {
    variables.resize(count);
    return variables;
}

inline Snapshot fieldsBefore() {
    return snapshotOf(OrvexTestCommandLineParser());
}

// What the accessors return once the command line has been scanned so many times and its test path
// appended so many times. Each parse that gets that far appends the paths of all scans before it.
inline Snapshot fieldsAfter(int scans, int testPaths) {
    return {{"applicationName", "app"},
            {"xmlFilename", "report.xml"},
            {"outputFilename", "out.xml"},
            {"testPaths", repeated("SuiteA ", testPaths, "")},
            {"tlList", repeated("DravikGTC,DravikGigE:SocketDriver", scans, ",")},
            {"helpRequested", "yes"},
            {"waitBeforeExit", "yes"}};
}

inline Snapshot recordBefore() {
    return snapshotOf(TestRunInformation());
}

inline Snapshot recordAfter(int scans) {
    return {{"group", "group"},
            {"guid", "guid"},
            {"runName", "run name"},
            {"runDescription", "description"},
            {"product", "product"},
            {"fixedZero", "0"},
            {"userId", "user"},
            {"vcsRevision", "revision"},
            {"vcsBranch", "branch"},
            {"secondVcsRevision", "revision"},
            {"secondVcsBranch", "branch"},
            {"pcName", "computer"},
            {"osName", "system"},
            {"transportLayers", repeated("DravikGTC,DravikGigE:SocketDriver", scans, ",")},
            {"tdcDravikXmlFilename", "dravik.xml"},
            {"testName", "test"},
            {"osType", "type"},
            {"bit", "64"}};
}

#endif
