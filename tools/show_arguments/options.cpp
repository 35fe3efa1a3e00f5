#include "options.h"

#include "OrvexTestCommandLineParser.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {
namespace {

constexpr std::size_t noMatch = 100;

// A name in lower case, without "-", "_" and a leading "tdc".
std::string coreOf(std::string_view name) {
    std::string core;
    for (const char byte : name) {
        if (byte != '-' && byte != '_') {
            core += static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
        }
    }
    return core.rfind("tdc", 0) == 0 ? core.substr(3) : core;
}

// How far the name, which has this core, is from the option. Smaller is nearer.
std::size_t rank(std::string_view name, const std::string& core, std::string_view option) {
    const std::string optionCore = coreOf(option);
    if (core == optionCore) {
        return 0;
    }
    if (core.size() >= 3 && optionCore.rfind(core, 0) == 0) {
        return 1;
    }
    const std::size_t limit = name.size() <= 5 ? 1 : 2;
    const std::size_t distance = option.size() < 4 ? noMatch : editDistance(name, option, limit);
    return distance <= limit ? distance + 1 : noMatch;
}

}  // namespace

const std::vector<ToolOption>& toolOptions() {
    static const std::vector<ToolOption> options = {
        {"?", ToolOptionKind::Flag, {"helpRequested"}},
        {"h", ToolOptionKind::Flag, {"helpRequested"}},
        {"H", ToolOptionKind::Flag, {"helpRequested"}},
        {"help", ToolOptionKind::Flag, {"helpRequested"}},
        {"w", ToolOptionKind::Flag, {"waitBeforeExit"}},
        {"o", ToolOptionKind::Value, {"outputFilename"}},
        {"x", ToolOptionKind::Value, {"xmlFilename"}},
        {"tl",
         ToolOptionKind::MultiValue,
         {"transportLayers", "ORVEX_DEVICE_FILTER", "ORVEX_GIGE_STREAMPARAMS", "GENICAM_GENTL64_PATH",
          "TRANSPORT_LAYER"}},
        {"p", ToolOptionKind::MultiValue, {"TEST_PROPERTIES"}},
        {"socketbuffer", ToolOptionKind::Number, {"ORVEX_GIGE_STREAMPARAMS"}},
        {"packetsize", ToolOptionKind::Number, {"ORVEX_GIGE_STREAM_GEVSCPS"}},
        {"packetdelay", ToolOptionKind::Number, {"ORVEX_GIGE_STREAM_GEVSCPD"}},
        {"camemu", ToolOptionKind::Number, {"ORVEX_CAMEMU"}},
        {"tdc_group", ToolOptionKind::Value, {"group", "TEST_SESSION_GROUP"}},
        {"tdc_guid", ToolOptionKind::Value, {"guid", "TEST_SESSION_GUID"}},
        {"tdc_runname", ToolOptionKind::Value, {"runName", "TEST_SESSION_NAME"}},
        {"tdc_rundescription", ToolOptionKind::Value, {"runDescription", "TEST_SESSION_DESCRIPTION"}},
        {"tdc_product", ToolOptionKind::Value, {"product", "TEST_PRODUCT"}},
        {"tdc_variant", ToolOptionKind::InlineOnly, {"TEST_PRODUCT_VARIANT"}},
        {"tdc_userid", ToolOptionKind::Value, {"userId", "USER_UID"}},
        {"tdc_vcsrevision", ToolOptionKind::Value, {"vcsRevision", "secondVcsRevision", "VCS_REVISION"}},
        {"tdc_vcsbranch", ToolOptionKind::Value, {"vcsBranch", "secondVcsBranch", "VCS_BRANCH"}},
        {"tdc_dxml", ToolOptionKind::Value, {"tdcDravikXmlFilename"}},
        {"testname", ToolOptionKind::Value, {"testName"}},
        {"pcname", ToolOptionKind::Value, {"pcName"}},
        {"osname", ToolOptionKind::Value, {"osName"}},
        {"ostype", ToolOptionKind::Value, {"osType"}},
        {"bit", ToolOptionKind::Value, {"bit"}},
        {"tdc_name", ToolOptionKind::Unread, {}, "testname"},
        {"tdc_pcname", ToolOptionKind::Unread, {}, "pcname"},
        {"tdc_osname", ToolOptionKind::Unread, {}, "osname"},
    };
    return options;
}

const std::vector<std::string_view>& variableNames() {
    static const std::vector<std::string_view> names = {
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
    return names;
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
        if (option.kind == ToolOptionKind::Value || option.kind == ToolOptionKind::Number) {
            grammar.addValueOptions({option.name.data()});
        } else if (option.kind == ToolOptionKind::MultiValue) {
            grammar.addMultiValueOptions({option.name.data()});
        }
    }
    return grammar;
}

bool isUsableValue(const ToolOption& option, std::string_view value) {
    if (value.empty() || option.kind == ToolOptionKind::Flag) {
        return false;
    }
    return option.kind != ToolOptionKind::Number || (value.front() >= '0' && value.front() <= '9');
}

const ToolOption* suggestOption(std::string_view name) {
    const std::string core = coreOf(name);
    std::size_t best = noMatch;
    const ToolOption* suggestion = nullptr;
    for (const ToolOption& option : toolOptions()) {
        const std::size_t distance =
            option.kind == ToolOptionKind::Unread ? noMatch : rank(name, core, option.name);
        if (distance < best) {
            best = distance;
            suggestion = &option;
        } else if (distance == best) {
            suggestion = nullptr;
        }
    }
    return suggestion;
}

std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit) {
    if (std::max(left.size(), right.size()) > std::min(left.size(), right.size()) + limit) {
        return limit + 1;
    }
    // The distance between the first i bytes of left and the first j of right is at(i, j).
    std::vector<std::size_t> table((left.size() + 1) * (right.size() + 1));
    const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& {
        return table[i * (right.size() + 1) + j];
    };
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                at(i, j) = i + j;
                continue;
            }
            const std::size_t substitution = left[i - 1] == right[j - 1] ? 0 : 1;
            at(i, j) = std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, at(i - 1, j - 1) + substitution});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
                at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
            }
        }
    }
    return at(left.size(), right.size());
}

}  // namespace tool
