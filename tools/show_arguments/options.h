// The options that a parse reads, what each of them sets, and which one a misspelt name means.

#ifndef ORVEX_SHOW_ARGUMENTS_OPTIONS_H
#define ORVEX_SHOW_ARGUMENTS_OPTIONS_H

#include "OrvexTestCommandLineParser.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool {

enum class OptionKind {
    Flag,         // given without a value
    Value,        // the last value wins
    Number,       // as Value, but a value that does not begin with a digit ends the parse
    MultiValue,   // the values accumulate
    InlineValue,  // as Value, but only --name=value gives it one
    Unread        // only the usage text names it
};

struct ToolOption {
    std::string_view name;
    OptionKind kind;
    std::vector<std::string_view> sets = {};  // accessors, fields of the test-run record and variables
    std::string_view instead = {};            // the option that works in place of an unread one
};

// The numbers are in the order in which a parse checks them.
const std::vector<ToolOption>& toolOptions();

// The variables that a parse sets, in order.
inline constexpr std::string_view variableNames[] = {
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

// Null when there is no such option.
const ToolOption* findOption(std::string_view name);

// A registry in which the options are registered as the parser registers them.
OptionRegistry makeGrammar();

// Whether a parse with this value of the option sets anything.
bool isUsableValue(const ToolOption& option, std::string_view value);

// The option that an unknown name probably means: the same name except for case, "-", "_" and "tdc_"; or
// the only option that begins with the name; or the one with the fewest typing errors. Null if there is
// none, or if two are equally near.
const ToolOption* suggestOption(std::string_view name);

// Insertions, deletions, substitutions and transpositions of neighbours that turn one string into the
// other; any number above the limit if there are more than that.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit);

}  // namespace tool

#endif
