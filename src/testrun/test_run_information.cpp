#include "testrun/test_run_information.h"

#include "OrvexTestCommandLineParser.h"

#include <string>

namespace orvex {
namespace {

struct FieldSource {
    const char* option;
    std::string TestRunInformation::*field;
};

// In the order in which they are assigned.
constexpr FieldSource fieldSources[] = {
    {"tdc_guid", &TestRunInformation::guid},
    {"tdc_runname", &TestRunInformation::runName},
    {"tdc_rundescription", &TestRunInformation::runDescription},
    {"tdc_group", &TestRunInformation::group},
    {"tdc_userid", &TestRunInformation::userId},
    {"tdc_product", &TestRunInformation::product},
    {"tdc_vcsbranch", &TestRunInformation::vcsBranch},
    {"tdc_vcsrevision", &TestRunInformation::vcsRevision},
    {"tdc_vcsbranch", &TestRunInformation::secondVcsBranch},
    {"tdc_vcsrevision", &TestRunInformation::secondVcsRevision},
    {"tdc_dxml", &TestRunInformation::tdcDravikXmlFilename},
    {"testname", &TestRunInformation::testName},
    {"pcname", &TestRunInformation::pcName},
    {"osname", &TestRunInformation::osName},
    {"ostype", &TestRunInformation::osType},
    {"bit", &TestRunInformation::bit},
};

}  // namespace

void fillTestRunInformation(const OptionRegistry& options, const std::string& tlList,
                            TestRunInformation& information) {
    information.group = "orvex";
    information.fixedZero = "0";
    for (const FieldSource& source : fieldSources) {
        const std::string& value = options.getSingleValue(source.option);
        if (!value.empty()) {
            information.*source.field = value;
        }
    }
    information.transportLayers = tlList;
    if (information.transportLayers.empty()) {
        information.transportLayers = "any";
    }
}

}  // namespace orvex
