#include "environment/environment_variables.h"

#include "support/clean_environment.h"

#include <string>

namespace {

using EnvironmentVariables = CleanEnvironmentTest;

const char* const everyKindOfByte = "\x01 value\n\x80\xFF";

TEST_F(EnvironmentVariables, GetReadsADefinedVariable) {
    writeEnvironment({{"NAME", everyKindOfByte}, {"EMPTY", ""}});
    std::string value = "before";
    EXPECT_TRUE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_EQ(value, everyKindOfByte);
    EXPECT_TRUE(orvex::getEnvironmentVariable("EMPTY", value));
    EXPECT_EQ(value, "");
}

TEST_F(EnvironmentVariables, GetLeavesTheValueUnchangedIfTheVariableIsUndefined) {
    set("NAME", "value");
    std::string value = "before";
    EXPECT_FALSE(orvex::getEnvironmentVariable("NAM", value));
    EXPECT_EQ(value, "before");
}

TEST_F(EnvironmentVariables, SetDefinesOrReplacesOneVariable) {
    writeEnvironment({{"OTHER", "other"}, {"OLD", "a longer value than the new one"}});
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", everyKindOfByte));
    EXPECT_TRUE(orvex::setEnvironmentVariable("OLD", "new"));
    EXPECT_TRUE(orvex::setEnvironmentVariable("NUL", std::string("va\0lue", 6)));
    EXPECT_EQ(readEnvironment(),
              (Environment{{"OTHER", "other"}, {"OLD", "new"}, {"NAME", everyKindOfByte}, {"NUL", "va"}}));
}

TEST_F(EnvironmentVariables, SetReturnsFalseForANameThatThePlatformRefuses) {
    EXPECT_FALSE(orvex::setEnvironmentVariable("NA=ME", "value"));
    EXPECT_EQ(readEnvironment(), Environment());
}

}  // namespace
