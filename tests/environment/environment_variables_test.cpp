#include "environment/environment_variables.h"

#include "support/clean_environment.h"

#include <cstdlib>
#include <string>

namespace {

std::string everyByteButZero() {
    std::string bytes;
    for (int byte = 1; byte <= 0xFF; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

}  // namespace

class EnvironmentVariables : public CleanEnvironmentTest {};

TEST_F(EnvironmentVariables, GetReadsADefinedVariable) {
    set("NAME", "text");
    std::string value = "before";
    EXPECT_TRUE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_EQ(value, "text");
}

TEST_F(EnvironmentVariables, GetOfAnUndefinedVariableLeavesTheValueUntouched) {
    std::string value = "before";
    EXPECT_FALSE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_EQ(value, "before");
}

TEST_F(EnvironmentVariables, GetTakesAnEmptyVariableForDefined) {
    set("NAME", "");
    std::string value = "before";
    EXPECT_TRUE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_EQ(value, "");
}

TEST_F(EnvironmentVariables, GetDoesNotChangeTheEnvironment) {
    set("NAME", "text");
    const Environment before = readEnvironment();
    std::string value;
    EXPECT_TRUE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_FALSE(orvex::getEnvironmentVariable("OTHER_NAME", value));
    EXPECT_EQ(readEnvironment(), before);
}

TEST_F(EnvironmentVariables, GetComparesNamesByteByByte) {
    set("NAME", "text");
    std::string value = "before";
    EXPECT_FALSE(orvex::getEnvironmentVariable("name", value));
    EXPECT_FALSE(orvex::getEnvironmentVariable("NAM", value));
    EXPECT_FALSE(orvex::getEnvironmentVariable("NAME ", value));
    EXPECT_EQ(value, "before");
}

TEST_F(EnvironmentVariables, GetReadsEveryByte) {
    set("NAME", everyByteButZero());
    std::string value;
    EXPECT_TRUE(orvex::getEnvironmentVariable("NAME", value));
    EXPECT_EQ(value, everyByteButZero());
}

TEST_F(EnvironmentVariables, SetDefinesAVariableAndLeavesTheOthers) {
    set("OTHER_NAME", "other");
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", "text"));
    EXPECT_EQ(readEnvironment(), (Environment{{"NAME", "text"}, {"OTHER_NAME", "other"}}));
}

TEST_F(EnvironmentVariables, SetReplacesAnExistingValue) {
    set("NAME", "a longer text than the new one");
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", "text"));
    EXPECT_EQ(readEnvironment(), (Environment{{"NAME", "text"}}));
}

TEST_F(EnvironmentVariables, SetOfAnEmptyTextDefinesTheVariable) {
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", ""));
    EXPECT_EQ(readEnvironment(), (Environment{{"NAME", ""}}));
}

TEST_F(EnvironmentVariables, SetReplacesAnExistingValueByAnEmptyText) {
    set("NAME", "text");
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", ""));
    EXPECT_EQ(readEnvironment(), (Environment{{"NAME", ""}}));
}

TEST_F(EnvironmentVariables, SetWritesEveryByte) {
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", everyByteButZero()));
    EXPECT_EQ(readEnvironment(), (Environment{{"NAME", everyByteButZero()}}));
}

TEST_F(EnvironmentVariables, SetEndsTheValueAtItsFirstZeroByte) {
    EXPECT_TRUE(orvex::setEnvironmentVariable("NAME", std::string("te\0xt", 5)));
    EXPECT_EQ(readEnvironment(), (Environment{{"NAME", "te"}}));
}

TEST_F(EnvironmentVariables, SetOfANameThatTheEnvironmentRefusesIsFalse) {
    EXPECT_FALSE(orvex::setEnvironmentVariable("", "text"));
    EXPECT_FALSE(orvex::setEnvironmentVariable("NA=ME", "text"));
    EXPECT_EQ(readEnvironment(), Environment());
}
