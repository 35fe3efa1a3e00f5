#include "environment/environment_variables.h"

#include "support/clean_environment.h"

#include <string>

namespace {

using EnvironmentVariables = CleanEnvironmentTest;

TEST_F(EnvironmentVariables, GetReadsADefinedVariable) {
    set("NAME", "\x01 text\n\x80\xFF");
    std::string value = "before";
    EXPECT_TRUE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_EQ(value, "\x01 text\n\x80\xFF");
}

TEST_F(EnvironmentVariables, GetTakesAnEmptyVariableForDefined) {
    set("NAME", "");
    std::string value = "before";
    EXPECT_TRUE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_EQ(value, "");
}

TEST_F(EnvironmentVariables, GetOfAnUndefinedVariableLeavesTheValueUntouched) {
    set("NAME", "text");
    std::string value = "before";
    EXPECT_FALSE(orvex::getEnvironmentVariable("name", value));
    EXPECT_FALSE(orvex::getEnvironmentVariable("NAM", value));
    EXPECT_EQ(value, "before");
}

TEST_F(EnvironmentVariables, SetDefinesAVariableAndLeavesTheOthers) {
    set("OTHER_NAME", "other");
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", "\x01 text\n\x80\xFF"));
    EXPECT_TRUE(orvex::setEnvironmentVariable("EMPTY", ""));
    EXPECT_EQ(readEnvironment(),
              (Environment{{"NAME", "\x01 text\n\x80\xFF"}, {"OTHER_NAME", "other"}, {"EMPTY", ""}}));
}

TEST_F(EnvironmentVariables, SetReplacesAnExistingValue) {
    set("NAME", "a longer text than the new one");
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", "text"));
    EXPECT_EQ(get("NAME"), "text");
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", ""));
    EXPECT_EQ(get("NAME"), "");
}

TEST_F(EnvironmentVariables, SetEndsTheValueAtItsFirstZeroByte) {
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", std::string("te\0xt", 5)));
    EXPECT_EQ(get("NAME"), "te");
}

TEST_F(EnvironmentVariables, SetOfANameThatTheEnvironmentRefusesIsFalse) {
    EXPECT_FALSE(orvex::setEnvironmentVariable("", "text"));
    EXPECT_FALSE(orvex::setEnvironmentVariable("NA=ME", "text"));
    EXPECT_EQ(readEnvironment(), Environment());
}

}  // namespace
