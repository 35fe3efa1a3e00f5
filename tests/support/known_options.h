// The options, the variables and the fields of the record, written by hand. The tests check the library, its
// documents and its tools against these tables.

#ifndef ORVEX_TESTS_KNOWN_OPTIONS_H
#define ORVEX_TESTS_KNOWN_OPTIONS_H

#include "OrvexTestCommandLineParser.h"

#include <string>
#include <vector>

enum class OptionKind {
    Flag,
    Value,       // the last one wins
    Number,      // a value that must begin with a digit
    MultiValue,  // all of them take effect
    InlineOnly   // a value, but only as name=value
};

struct KnownOption {
    const char* name;
    OptionKind kind;
    const char* sdkVariable = nullptr;
    const char* sessionVariable = nullptr;
    std::string TestRunInformation::*field = nullptr;
    std::string TestRunInformation::*secondField = nullptr;
};

// In the order in which a parse sets their variables. ORVEX_DEVICE_FILTER comes before all of these; -tl also
// adds to ORVEX_GIGE_STREAMPARAMS and sets GENICAM_GENTL64_PATH.
inline constexpr KnownOption knownOptions[] = {
    {"socketbuffer", OptionKind::Number, "ORVEX_GIGE_STREAMPARAMS"},
    {"packetsize", OptionKind::Number, "ORVEX_GIGE_STREAM_GEVSCPS"},
    {"packetdelay", OptionKind::Number, "ORVEX_GIGE_STREAM_GEVSCPD"},
    {"camemu", OptionKind::Number, "ORVEX_CAMEMU"},
    {"p", OptionKind::MultiValue, "TEST_PROPERTIES"},
    {"tdc_guid", OptionKind::Value, nullptr, "TEST_SESSION_GUID", &TestRunInformation::guid},
    {"tdc_runname", OptionKind::Value, nullptr, "TEST_SESSION_NAME", &TestRunInformation::runName},
    {"tdc_rundescription", OptionKind::Value, nullptr, "TEST_SESSION_DESCRIPTION",
     &TestRunInformation::runDescription},
    {"tdc_group", OptionKind::Value, nullptr, "TEST_SESSION_GROUP", &TestRunInformation::group},
    {"tdc_product", OptionKind::Value, nullptr, "TEST_PRODUCT", &TestRunInformation::product},
    {"tdc_variant", OptionKind::InlineOnly, nullptr, "TEST_PRODUCT_VARIANT"},
    {"tdc_userid", OptionKind::Value, nullptr, "USER_UID", &TestRunInformation::userId},
    {"tdc_vcsrevision", OptionKind::Value, nullptr, "VCS_REVISION", &TestRunInformation::vcsRevision,
     &TestRunInformation::secondVcsRevision},
    {"tdc_vcsbranch", OptionKind::Value, nullptr, "VCS_BRANCH", &TestRunInformation::vcsBranch,
     &TestRunInformation::secondVcsBranch},
    {"tl", OptionKind::MultiValue, "ORVEX_DEVICE_FILTER", "TRANSPORT_LAYER",
     &TestRunInformation::transportLayers},
    {"tdc_dxml", OptionKind::Value, nullptr, nullptr, &TestRunInformation::tdcDravikXmlFilename},
    {"testname", OptionKind::Value, nullptr, nullptr, &TestRunInformation::testName},
    {"pcname", OptionKind::Value, nullptr, nullptr, &TestRunInformation::pcName},
    {"osname", OptionKind::Value, nullptr, nullptr, &TestRunInformation::osName},
    {"ostype", OptionKind::Value, nullptr, nullptr, &TestRunInformation::osType},
    {"bit", OptionKind::Value, nullptr, nullptr, &TestRunInformation::bit},
    {"o", OptionKind::Value},
    {"x", OptionKind::Value},
    {"?", OptionKind::Flag},
    {"h", OptionKind::Flag},
    {"H", OptionKind::Flag},
    {"help", OptionKind::Flag},
    {"w", OptionKind::Flag},
};

// Every variable that a parse sets, in the order in which it does.
inline constexpr const char* knownVariables[] = {
    "ORVEX_GTC_USE_EXTRA_TL",
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

// The options whose value must begin with a digit.
inline std::vector<KnownOption> numbers() {
    std::vector<KnownOption> found;
    for (const KnownOption& option : knownOptions) {
        if (option.kind == OptionKind::Number) {
            found.push_back(option);
        }
    }
    return found;
}

inline std::vector<std::string> optionNames() {
    std::vector<std::string> names;
    for (const KnownOption& option : knownOptions) {
        names.emplace_back(option.name);
    }
    return names;
}

#endif
