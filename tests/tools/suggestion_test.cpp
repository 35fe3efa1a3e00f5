#include "show_arguments/suggestion.h"

#include "show_arguments/options.h"

#include <gtest/gtest.h>

namespace {

TEST(SuggestOption, FindsTheOneThatWasMeant) {
    const char* const rows[][2] = {
        // the same without regard to case, "-", "_" and "tdc_"
        {"HELP", "help"},
        {"O", "o"},
        {"TL", "tl"},
        {"packet-size", "packetsize"},
        {"tdc-run-name", "tdc_runname"},
        {"guid", "tdc_guid"},
        {"tdc_testname", "testname"},
        {"tdc_pc_name", "pcname"},
        // the start of one option
        {"packets", "packetsize"},
        {"tdc_prod", "tdc_product"},
        {"cam", "camemu"},
        // typing errors
        {"hlep", "help"},
        {"packetsise", "packetsize"},
        {"pakcetsise", "packetsize"},
        {"camemi", "camemu"},
    };
    for (const auto& [name, option] : rows) {
        EXPECT_EQ(tool::suggestOption(name), option) << name;
    }
}

TEST(SuggestOption, FindsNothingWhenInDoubt) {
    // Two are equally near; too short a start; too many errors; names of three letters or fewer.
    for (const char* name : {"packet", "hostname", "tdc_vcs", "pa", "he", "hallo", "pakcetzies", "bat", "tt",
                             "-", "--", "tdc", "tdc_", "", "version", "verbose", "name", "host", "xml"}) {
        EXPECT_EQ(tool::suggestOption(name), "") << name;
    }
}

TEST(SuggestOption, NeverNamesOneThatIsNotRead) {
    for (const tool::ToolOption& option : tool::toolOptions()) {
        const std::string_view suggestion = tool::suggestOption(option.name);
        if (!suggestion.empty()) {
            EXPECT_NE(tool::findOption(suggestion)->kind, tool::OptionKind::Unread) << option.name;
        }
    }
}

TEST(EditDistance, CountsATranspositionAsOne) {
    EXPECT_EQ(tool::editDistance("abcd", "abcd", 2), 0U);
    EXPECT_EQ(tool::editDistance("abcd", "abdc", 2), 1U);
    EXPECT_EQ(tool::editDistance("abcd", "abd", 2), 1U);
    EXPECT_EQ(tool::editDistance("abcd", "xabd", 2), 2U);
    EXPECT_EQ(tool::editDistance("", "ab", 2), 2U);
    EXPECT_GT(tool::editDistance("ab", "abcde", 2), 2U);
}

}  // namespace
