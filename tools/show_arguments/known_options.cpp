#include "known_options.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr KnownOption knownOptions[] = {
    {"?", OptionKind::Flag, "help"},
    {"h", OptionKind::Flag, "help"},
    {"H", OptionKind::Flag, "help"},
    {"help", OptionKind::Flag, "help"},
    {"w", OptionKind::Flag, "wait before exit"},
    {"o", OptionKind::Value, "output file"},
    {"x", OptionKind::Value, "XML report file"},
    {"tl", OptionKind::MultiValue,
     "transportLayers, ORVEX_DEVICE_FILTER, ORVEX_GIGE_STREAMPARAMS, GENICAM_GENTL64_PATH, TRANSPORT_LAYER"},
    {"p", OptionKind::MultiValue, "TEST_PROPERTIES"},
    {"socketbuffer", OptionKind::Value, "ORVEX_GIGE_STREAMPARAMS"},
    {"packetsize", OptionKind::Value, "ORVEX_GIGE_STREAM_GEVSCPS"},
    {"packetdelay", OptionKind::Value, "ORVEX_GIGE_STREAM_GEVSCPD"},
    {"camemu", OptionKind::Value, "ORVEX_CAMEMU"},
    {"tdc_group", OptionKind::Value, "group, TEST_SESSION_GROUP"},
    {"tdc_guid", OptionKind::Value, "guid, TEST_SESSION_GUID"},
    {"tdc_runname", OptionKind::Value, "runName, TEST_SESSION_NAME"},
    {"tdc_rundescription", OptionKind::Value, "runDescription, TEST_SESSION_DESCRIPTION"},
    {"tdc_product", OptionKind::Value, "product, TEST_PRODUCT"},
    {"tdc_variant", OptionKind::InlineValue, "TEST_PRODUCT_VARIANT"},
    {"tdc_userid", OptionKind::Value, "userId, USER_UID"},
    {"tdc_vcsrevision", OptionKind::Value, "vcsRevision, secondVcsRevision, VCS_REVISION"},
    {"tdc_vcsbranch", OptionKind::Value, "vcsBranch, secondVcsBranch, VCS_BRANCH"},
    {"tdc_dxml", OptionKind::Value, "tdcDravikXmlFilename"},
    {"pcname", OptionKind::Value, "pcName"},
    {"osname", OptionKind::Value, "osName"},
    {"testname", OptionKind::Value, "testName"},
    {"ostype", OptionKind::Value, "osType"},
    {"bit", OptionKind::Value, "bit"},
};

}  // namespace

const KnownOption* findKnownOption(const std::string& name) {
    const auto* found = std::find_if(std::begin(knownOptions), std::end(knownOptions),
                                     [&name](const KnownOption& option) { return option.name == name; });
    return found == std::end(knownOptions) ? nullptr : found;
}

OptionRegistry makeRegistry() {
    OptionRegistry registry(OptionRegistry::UnknownAsFlag);
    for (const KnownOption& option : knownOptions) {
        if (option.kind == OptionKind::Value) {
            registry.addValueOptions({option.name});
        } else if (option.kind == OptionKind::MultiValue) {
            registry.addMultiValueOptions({option.name});
        }
    }
    return registry;
}
