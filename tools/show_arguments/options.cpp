#include "show_arguments.h"

#include <fmt/format.h>
#include <algorithm>
#include <cctype>

const std::vector<KnownOption>& knownOptions() {
    static const std::vector<KnownOption> options = {
        {"?", OptionKind::Flag, {"helpRequested"}},
        {"h", OptionKind::Flag, {"helpRequested"}},
        {"H", OptionKind::Flag, {"helpRequested"}},
        {"help", OptionKind::Flag, {"helpRequested"}},
        {"w", OptionKind::Flag, {"waitBeforeExit"}},
        {"o", OptionKind::Value, {"outputFilename"}},
        {"x", OptionKind::Value, {"xmlFilename"}},
        {"tl",
         OptionKind::MultiValue,
         {"transportLayers", "ORVEX_DEVICE_FILTER", "ORVEX_GIGE_STREAMPARAMS", "GENICAM_GENTL64_PATH",
          "TRANSPORT_LAYER"}},
        {"p", OptionKind::MultiValue, {"TEST_PROPERTIES"}},
        {"socketbuffer", OptionKind::Number, {"ORVEX_GIGE_STREAMPARAMS"}},
        {"packetsize", OptionKind::Number, {"ORVEX_GIGE_STREAM_GEVSCPS"}},
        {"packetdelay", OptionKind::Number, {"ORVEX_GIGE_STREAM_GEVSCPD"}},
        {"camemu", OptionKind::Number, {"ORVEX_CAMEMU"}},
        {"tdc_group", OptionKind::Value, {"group", "TEST_SESSION_GROUP"}},
        {"tdc_guid", OptionKind::Value, {"guid", "TEST_SESSION_GUID"}},
        {"tdc_runname", OptionKind::Value, {"runName", "TEST_SESSION_NAME"}},
        {"tdc_rundescription", OptionKind::Value, {"runDescription", "TEST_SESSION_DESCRIPTION"}},
        {"tdc_product", OptionKind::Value, {"product", "TEST_PRODUCT"}},
        {"tdc_variant", OptionKind::InlineValue, {"TEST_PRODUCT_VARIANT"}},
        {"tdc_userid", OptionKind::Value, {"userId", "USER_UID"}},
        {"tdc_vcsrevision", OptionKind::Value, {"vcsRevision", "secondVcsRevision", "VCS_REVISION"}},
        {"tdc_vcsbranch", OptionKind::Value, {"vcsBranch", "secondVcsBranch", "VCS_BRANCH"}},
        {"tdc_dxml", OptionKind::Value, {"tdcDravikXmlFilename"}},
        {"testname", OptionKind::Value, {"testName"}},
        {"pcname", OptionKind::Value, {"pcName"}},
        {"osname", OptionKind::Value, {"osName"}},
        {"ostype", OptionKind::Value, {"osType"}},
        {"bit", OptionKind::Value, {"bit"}},
        // The usage text names these three.
        {"tdc_name", OptionKind::Unread, {"testname"}},
        {"tdc_pcname", OptionKind::Unread, {"pcname"}},
        {"tdc_osname", OptionKind::Unread, {"osname"}},
        {"", OptionKind::Unread, {}},
    };
    return options;
}

const KnownOption& findKnownOption(std::string_view name) {
    const std::vector<KnownOption>& options = knownOptions();
    return *std::find_if(options.begin(), options.end() - 1,
                         [name](const KnownOption& option) { return option.name == name; });
}

std::string_view nearestOption(std::string_view name) {
    const auto isSame = [](unsigned char byte, unsigned char other) {
        return std::tolower(byte) == std::tolower(other);
    };
    std::size_t least = name.size() / 3 + 1;
    std::string_view nearest;
    for (const auto& [option, kind, sets] : knownOptions()) {
        const auto start = std::mismatch(name.begin(), name.end(), option.begin(), option.end(), isSame);
        const auto end = std::mismatch(name.rbegin(), name.rend(), option.rbegin(), option.rend(), isSame);
        const auto same = static_cast<std::size_t>(start.first - name.begin() + (end.first - name.rbegin()));
        // As many bytes as lie between the same start and the same end.
        std::size_t distance = std::max({name.size(), option.size(), same}) - same;
        if (fmt::format("tdc_{}", option) == name || fmt::format("tdc_{}", name) == option) {
            distance = 0;
        }
        if (kind != OptionKind::Unread && distance < least) {
            least = distance;
            nearest = option;
        }
    }
    return nearest;
}

std::string typed(std::string_view name) {
    return printable(fmt::format("{}{}", name.substr(0, 1) == "-" ? "" : "-", name));
}

std::string printable(std::string_view text) {
    std::string quoted = fmt::format("{:?}", text);
    const bool isPlain = quoted.size() == text.size() + 2 && !text.empty() && text.front() != ' ' &&
                         text.back() != ' ' && text.front() != '(';
    return isPlain ? std::string(text) : quoted;
}
