// The option table of show_arguments, row by row, against what the library does with the option.

#include "show_arguments/options.h"

#include "show_arguments/observation.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/known_options.h"

#include <gmock/gmock.h>
#include <algorithm>
#include <iterator>
#include <set>

namespace {

using ::testing::ElementsAreArray;

using Names = std::set<std::string_view>;

tool::Observation observe(const std::string& commandLine) {
    Arguments arguments(words("app " + commandLine));
    return tool::observeParse(arguments.argc(), arguments.argv());
}

std::string dashed(const tool::ToolOption& option) {
    return "-" + std::string(option.name);
}

// A value that makes the option set all that it can.
std::string valueFor(const tool::ToolOption& option) {
    return option.name == "tl" ? "DravikGTC,DravikGigE:Driver" : "7";
}

// The names of what the two parses leave different.
Names findDifferences(const tool::Observation& left, const tool::Observation& right) {
    Names names;
    for (std::size_t i = 0; i < left.accessors.size(); ++i) {
        if (left.accessors[i].value != right.accessors[i].value) {
            names.insert(left.accessors[i].name);
        }
    }
    for (std::size_t i = 0; i < left.record.size(); ++i) {
        if (left.record[i].value != right.record[i].value) {
            names.insert(left.record[i].name);
        }
    }
    for (std::size_t i = 0; i < left.variables.size(); ++i) {
        if (left.variables[i].after != right.variables[i].after) {
            names.insert(left.variables[i].name);
        }
    }
    return names;
}

class ToolOptions : public CleanEnvironmentTest {
protected:
    static std::vector<const tool::ToolOption*> numbers() {
        std::vector<const tool::ToolOption*> found;
        for (const tool::ToolOption& option : tool::toolOptions()) {
            if (option.kind == tool::OptionKind::Number) {
                found.push_back(&option);
            }
        }
        return found;
    }
};

TEST_F(ToolOptions, SetWhatTheTableSays) {
    for (const tool::ToolOption& option : tool::toolOptions()) {
        writeEnvironment({});
        const tool::Observation without = observe("");
        writeEnvironment({});
        const bool isFlag = option.kind == tool::OptionKind::Flag;
        const tool::Observation with = observe(dashed(option) + (isFlag ? "" : "=" + valueFor(option)));
        Names expected(option.fields.begin(), option.fields.end());
        expected.insert(option.variables.begin(), option.variables.end());
        if (!option.accessor.empty()) {
            expected.insert(option.accessor);
        }
        EXPECT_EQ(findDifferences(without, with), expected) << dashed(option);
    }
}

TEST_F(ToolOptions, TakeTheNextArgumentAsTheirKindSays) {
    for (const tool::ToolOption& option : tool::toolOptions()) {
        const bool isTaken = option.kind == tool::OptionKind::Value ||
                             option.kind == tool::OptionKind::Number ||
                             option.kind == tool::OptionKind::MultiValue;
        EXPECT_EQ(observe(dashed(option) + " " + valueFor(option)).testPaths.empty(), isTaken)
            << dashed(option);
    }
}

TEST_F(ToolOptions, AccumulateOrKeepTheLastValueAsTheirKindSays) {
    for (const tool::ToolOption& option : tool::toolOptions()) {
        if (option.kind == tool::OptionKind::Flag || option.kind == tool::OptionKind::Unread) {
            continue;
        }
        const std::string argument = dashed(option) + "=";
        writeEnvironment({});
        const tool::Observation last = observe(argument + "2");
        writeEnvironment({});
        const tool::Observation both = observe(argument + "1 " + argument + "2");
        EXPECT_EQ(findDifferences(last, both).empty(), option.kind != tool::OptionKind::MultiValue)
            << dashed(option);
    }
}

TEST_F(ToolOptions, EndTheParseIfTheyAreNumbersWithoutADigit) {
    for (const tool::ToolOption& option : tool::toolOptions()) {
        EXPECT_EQ(observe(dashed(option) + "=x").succeeded, option.kind != tool::OptionKind::Number)
            << dashed(option);
    }
}

TEST_F(ToolOptions, HaveTheNumbersInTheOrderInWhichAParseChecksThem) {
    const std::vector<const tool::ToolOption*> options = numbers();
    ASSERT_GE(options.size(), 4U);
    for (std::size_t i = 1; i < options.size(); ++i) {
        const std::string_view earlier = options[i - 1]->variables.at(0);
        const std::string_view later = options[i]->variables.at(0);
        writeEnvironment({});
        const tool::Observation first = observe(dashed(*options[i - 1]) + " x " + dashed(*options[i]) + " 1");
        EXPECT_FALSE(isSet(first.variable(later))) << later << " is set after a bad " << earlier;
        writeEnvironment({});
        const tool::Observation second =
            observe(dashed(*options[i - 1]) + " 1 " + dashed(*options[i]) + " x");
        EXPECT_TRUE(isSet(second.variable(earlier))) << earlier << " is not set before a bad " << later;
    }
}

TEST(ToolOptionTable, HasEveryKnownOptionAndNoOther) {
    Names known;
    for (const KnownOption& option : knownOptions) {
        known.insert(option.name);
    }
    Names inTable;
    for (const tool::ToolOption& option : tool::toolOptions()) {
        if (option.kind != tool::OptionKind::Unread) {
            EXPECT_TRUE(inTable.insert(option.name).second) << option.name;
        }
    }
    EXPECT_EQ(inTable, known);
}

TEST(ToolOptionTable, NamesAnOptionThatWorksForEachOneThatOnlyTheUsageTextNames) {
    const std::string usage = OrvexTestCommandLineParser().getHelpMessage("");
    for (const tool::ToolOption& option : tool::toolOptions()) {
        if (option.kind == tool::OptionKind::Unread) {
            EXPECT_THAT(usage, ::testing::HasSubstr("[" + dashed(option) + " "));
            ASSERT_NE(tool::findOption(option.instead), nullptr) << option.name;
            EXPECT_EQ(tool::findOption(option.instead)->kind, tool::OptionKind::Value) << option.name;
        }
    }
}

class ObservedVariables : public CleanEnvironmentTest {};

TEST_F(ObservedVariables, AreAllThatAParseCanSetInTheOrderInWhichItDoes) {
    std::vector<std::string_view> names;
    for (const tool::Variable& variable : tool::observeParse(0, nullptr).variables) {
        names.push_back(variable.name);
    }
    EXPECT_THAT(names, ElementsAreArray(knownVariables));
}

TEST_F(ObservedVariables, LeaveTheEnvironmentAsTheParseLeavesIt) {
    const std::string commandLine = "-tl DravikGTC,DravikGigE:S -packetdelay 7 -tdc_guid 1 -camemu x";
    const Environment before = {{"ORVEX_DEVICE_FILTER", "old"}, {"TEST_PROPERTIES", "kept"}, {"OTHER", "x"}};
    writeEnvironment(before);
    OrvexTestCommandLineParser parser;
    parse(parser, words("app " + commandLine));
    const Environment expected = readEnvironment();
    writeEnvironment(before);
    observe(commandLine);
    EXPECT_EQ(readEnvironment(), expected);
}

}  // namespace
