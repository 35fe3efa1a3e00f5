#include "options.h"

#include <algorithm>

namespace tool {

const std::vector<ToolOption>& toolOptions() {
    static const std::vector<ToolOption> options = {
        {"?", OptionKind::Flag, "helpRequested"},
        {"h", OptionKind::Flag, "helpRequested"},
        {"H", OptionKind::Flag, "helpRequested"},
        {"help", OptionKind::Flag, "helpRequested"},
        {"w", OptionKind::Flag, "waitBeforeExit"},
        {"o", OptionKind::Value, "outputFilename"},
        {"x", OptionKind::Value, "xmlFilename"},
        {"tl",
         OptionKind::MultiValue,
         "transportLayers",
         {},
         {"ORVEX_DEVICE_FILTER", "ORVEX_GIGE_STREAMPARAMS", "GENICAM_GENTL64_PATH", "TRANSPORT_LAYER"}},
        {"p", OptionKind::MultiValue, "", {}, {"TEST_PROPERTIES"}},
        {"socketbuffer", OptionKind::Number, "", {}, {"ORVEX_GIGE_STREAMPARAMS"}},
        {"packetsize", OptionKind::Number, "", {}, {"ORVEX_GIGE_STREAM_GEVSCPS"}},
        {"packetdelay", OptionKind::Number, "", {}, {"ORVEX_GIGE_STREAM_GEVSCPD"}},
        {"camemu", OptionKind::Number, "", {}, {"ORVEX_CAMEMU"}},
        {"tdc_group", OptionKind::Value, "", {"group"}, {"TEST_SESSION_GROUP"}},
        {"tdc_guid", OptionKind::Value, "", {"guid"}, {"TEST_SESSION_GUID"}},
        {"tdc_runname", OptionKind::Value, "", {"runName"}, {"TEST_SESSION_NAME"}},
        {"tdc_rundescription", OptionKind::Value, "", {"runDescription"}, {"TEST_SESSION_DESCRIPTION"}},
        {"tdc_product", OptionKind::Value, "", {"product"}, {"TEST_PRODUCT"}},
        {"tdc_variant", OptionKind::InlineValue, "", {}, {"TEST_PRODUCT_VARIANT"}},
        {"tdc_userid", OptionKind::Value, "", {"userId"}, {"USER_UID"}},
        {"tdc_vcsrevision", OptionKind::Value, "", {"vcsRevision", "secondVcsRevision"}, {"VCS_REVISION"}},
        {"tdc_vcsbranch", OptionKind::Value, "", {"vcsBranch", "secondVcsBranch"}, {"VCS_BRANCH"}},
        {"tdc_dxml", OptionKind::Value, "", {"tdcDravikXmlFilename"}},
        {"testname", OptionKind::Value, "", {"testName"}},
        {"pcname", OptionKind::Value, "", {"pcName"}},
        {"osname", OptionKind::Value, "", {"osName"}},
        {"ostype", OptionKind::Value, "", {"osType"}},
        {"bit", OptionKind::Value, "", {"bit"}},
        {"tdc_name", OptionKind::Unread, "", {}, {}, "testname"},
        {"tdc_pcname", OptionKind::Unread, "", {}, {}, "pcname"},
        {"tdc_osname", OptionKind::Unread, "", {}, {}, "osname"},
    };
    return options;
}

const ToolOption* findOption(std::string_view name) {
    const std::vector<ToolOption>& options = toolOptions();
    const auto found = std::find_if(options.begin(), options.end(),
                                    [name](const ToolOption& option) { return option.name == name; });
    return found == options.end() ? nullptr : &*found;
}

OptionRegistry makeGrammar() {
    OptionRegistry grammar(OptionRegistry::UnknownAsFlag);
    for (const ToolOption& option : toolOptions()) {
        if (option.kind == OptionKind::Value || option.kind == OptionKind::Number) {
            grammar.addValueOptions({option.name.data()});
        } else if (option.kind == OptionKind::MultiValue) {
            grammar.addMultiValueOptions({option.name.data()});
        }
    }
    return grammar;
}

bool isUsableValue(const ToolOption& option, std::string_view value) {
    if (value.empty() || option.kind == OptionKind::Flag) {
        return false;
    }
    return option.kind != OptionKind::Number || (value.front() >= '0' && value.front() <= '9');
}

}  // namespace tool
