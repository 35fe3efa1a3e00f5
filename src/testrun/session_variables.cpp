#include "testrun/session_variables.h"

#include "OrvexTestCommandLineParser.h"
#include "environment/environment_variables.h"

#include <string>

namespace orvex {
namespace {

struct SessionVariable {
    const char* option;
    const char* variable;
};

// In the order in which they are set.
constexpr SessionVariable sessionVariables[] = {
    {"tdc_guid", "TEST_SESSION_GUID"},
    {"tdc_runname", "TEST_SESSION_NAME"},
    {"tdc_rundescription", "TEST_SESSION_DESCRIPTION"},
    {"tdc_group", "TEST_SESSION_GROUP"},
    {"tdc_product", "TEST_PRODUCT"},
    // Not a registered option: only -tdc_variant=VALUE gives it a value.
    {"tdc_variant", "TEST_PRODUCT_VARIANT"},
    {"tdc_userid", "USER_UID"},
    {"tdc_vcsrevision", "VCS_REVISION"},
    {"tdc_vcsbranch", "VCS_BRANCH"},
};

// Unlike with the transport variables, a failure to set one of these is ignored.
void exportIgnoringFailure(const char* name, const std::string& value) {
    if (!value.empty()) {
        setEnvironmentVariable(name, value);
    }
}

}  // namespace

void exportSessionVariables(const OptionRegistry& options) {
    for (const SessionVariable& row : sessionVariables) {
        exportIgnoringFailure(row.variable, options.getSingleValue(row.option));
    }
    exportIgnoringFailure("TRANSPORT_LAYER", options.getJoinedValues("tl", " "));
}

}  // namespace orvex
