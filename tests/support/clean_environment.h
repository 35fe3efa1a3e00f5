// A known process environment for each test.

#ifndef ORVEX_TESTS_CLEAN_ENVIRONMENT_H
#define ORVEX_TESTS_CLEAN_ENVIRONMENT_H

#include <gtest/gtest.h>

#include <map>
#include <string>

using Environment = std::map<std::string, std::string>;

// All variables of the process environment. An entry whose name occurs a second time is marked.
Environment readEnvironment();

// Makes the process environment consist of exactly these variables.
void writeEnvironment(const Environment& environment);

// A test that starts with an empty process environment and restores the old one at its end.
class CleanEnvironmentTest : public ::testing::Test {
protected:
    CleanEnvironmentTest();
    ~CleanEnvironmentTest() override;

    // Sets a variable through the platform, as the parent of a test program would.
    static void set(const std::string& name, const std::string& value);

    // The value of a variable, or "(undefined)".
    static std::string get(const std::string& name);

private:
    Environment saved;
};

#endif
