// Compares the option table of show_arguments with what the library does with each option.

#include "show_arguments/options.h"

#include "OrvexTestCommandLineParser.h"
#include "show_arguments/report.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/known_options.h"

#include <gmock/gmock.h>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using tool::ToolOption;
using tool::ToolOptionKind;
using Names = std::set<std::string_view>;
using Values = std::set<std::pair<std::string_view, tool::Value>>;

std::string dashed(const ToolOption& option) {
    return "-" + std::string(option.name);
}

tool::Observation observe(const std::string& commandLine) {
    writeEnvironment({});
    Arguments arguments(words("app " + commandLine));
    return tool::observeParse(arguments.argc(), arguments.argv());
}

// Everything that a parse sets, by name.
Values allValues(const std::string& commandLine) {
    const tool::Observation seen = observe(commandLine);
    Values values;
    for (const auto& results : {seen.accessors, seen.record}) {
        for (const tool::Result& result : results) {
            values.emplace(result.name, result.value);
        }
    }
    for (const tool::Variable& variable : seen.variables) {
        values.emplace(variable.name, variable.after);
    }
    return values;
}

// The names of what the second command line sets to other values than the first.
Names findDifferences(const std::string& first, const std::string& second) {
    const Values values = allValues(first);
    Names names;
    for (const auto& value : allValues(second)) {
        if (values.count(value) == 0) {
            names.insert(value.first);
        }
    }
    return names;
}

class ToolOptions : public CleanEnvironmentTest {};

TEST_F(ToolOptions, SetWhatTheTableSays) {
    for (const ToolOption& option : tool::toolOptions()) {
        const std::string value = option.name == "tl" ? "=DravikGTC,DravikGigE:Driver" : "=7";
        const bool isFlag = option.kind == ToolOptionKind::Flag;
        EXPECT_EQ(findDifferences("", dashed(option) + (isFlag ? "" : value)),
                  Names(option.sets.begin(), option.sets.end()))
            << dashed(option);
    }
}

TEST_F(ToolOptions, BehaveAsTheirKindSays) {
    for (const ToolOption& option : tool::toolOptions()) {
        const std::string name = dashed(option);
        const bool isNumber = option.kind == ToolOptionKind::Number;
        const bool isMultiValue = option.kind == ToolOptionKind::MultiValue;
        const bool takesNext = option.kind == ToolOptionKind::Value || isNumber || isMultiValue;
        EXPECT_EQ(observe(name + " 7").testPaths.empty(), takesNext) << name;
        EXPECT_EQ(observe(name + "=x").succeeded, !isNumber) << name;
        EXPECT_EQ(!findDifferences(name + "=2", name + "=1 " + name + "=2").empty(), isMultiValue) << name;
    }
}

TEST_F(ToolOptions, ListNumbersInTheOrderInWhichAParseChecksThem) {
    std::vector<const ToolOption*> numbers;
    for (const ToolOption& option : tool::toolOptions()) {
        if (option.kind == ToolOptionKind::Number) {
            numbers.push_back(&option);
        }
    }
    ASSERT_GE(numbers.size(), 4U);
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        const std::string earlier = dashed(*numbers[i - 1]);
        const std::string later = dashed(*numbers[i]);
        EXPECT_EQ(observe(earlier + " x " + later + " 1").findSet(numbers[i]->sets[0]), nullptr)
            << later << " is used after a bad " << earlier;
        EXPECT_NE(observe(earlier + " 1 " + later + " x").findSet(numbers[i - 1]->sets[0]), nullptr)
            << earlier << " is not used before a bad " << later;
    }
}

TEST(ToolOptionTable, HasEveryKnownOptionAndNoOther) {
    std::vector<std::string> names;
    for (const ToolOption& option : tool::toolOptions()) {
        if (option.kind != ToolOptionKind::Unread) {
            names.emplace_back(option.name);
        }
    }
    EXPECT_THAT(names, ::testing::UnorderedElementsAreArray(optionNames()));
}

TEST(ToolVariables, AreTheKnownOnesInOrder) {
    EXPECT_THAT(tool::variableNames(), ::testing::ElementsAreArray(knownVariables));
}

TEST(ToolOptionTable, NamesAWorkingOptionForEachThatOnlyTheUsageTextNames) {
    const std::string usage = OrvexTestCommandLineParser().getHelpMessage("");
    for (const ToolOption& option : tool::toolOptions()) {
        if (option.kind == ToolOptionKind::Unread) {
            EXPECT_THAT(usage, ::testing::HasSubstr("[" + dashed(option) + " "));
            ASSERT_NE(tool::findOption(option.instead), nullptr) << option.name;
            EXPECT_EQ(tool::findOption(option.instead)->kind, ToolOptionKind::Value) << option.name;
        }
    }
}

TEST(SuggestOption, FindsTheOptionThatWasMeant) {
    // The same name except for case, "-", "_" and "tdc_"; the start of one option; typing errors.
    for (const std::string& row : words("HELP=help O=o TL=tl packet-size=packetsize tdc-run-name=tdc_runname "
                                        "guid=tdc_guid tdc_testname=testname tdc_pc_name=pcname "
                                        "packets=packetsize tdc_prod=tdc_product cam=camemu hlep=help "
                                        "packetsise=packetsize pakcetsise=packetsize camemi=camemu "
                                        "ccamemu=camemu")) {
        const Strings names = words(row, '=');
        EXPECT_EQ(tool::suggestOption(names[0]), tool::findOption(names[1])) << row;
    }
}

TEST(SuggestOption, FindsNothingIfInDoubt) {
    // Two are equally near; too short a start; too many errors; names of three letters or fewer; not read.
    for (const char* name : {"packet", "hostname", "tdc_vcs", "pa", "he", "hallo", "pakcetzies", "bat", "tt",
                             "-", "--", "tdc", "tdc_", "", "version", "verbose", "name", "host", "xml"}) {
        EXPECT_EQ(tool::suggestOption(name), nullptr) << name;
    }
}

}  // namespace
