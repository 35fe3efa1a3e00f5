#include "support/clean_environment.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

// Not declared by every platform.
extern char** environ;  // NOLINT(readability-redundant-declaration)

Environment readEnvironment() {
    Environment environment;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text(*entry);
        const std::size_t equals = text.find('=', 1);
        if (!environment.emplace(text.substr(0, equals), text.substr(equals + 1)).second) {
            environment.emplace(std::string(text) + " (again)", "");
        }
    }
    return environment;
}

void writeEnvironment(const Environment& environment) {
    for (const auto& variable : readEnvironment()) {
        unsetenv(variable.first.c_str());
    }
    for (const auto& [name, value] : environment) {
        EXPECT_EQ(setenv(name.c_str(), value.c_str(), 1), 0) << name;
    }
}

CleanEnvironmentTest::CleanEnvironmentTest() : saved(readEnvironment()) {
    writeEnvironment({});
}

CleanEnvironmentTest::~CleanEnvironmentTest() {
    writeEnvironment(saved);
}

void CleanEnvironmentTest::set(const std::string& name, const std::string& value) {
    ASSERT_EQ(setenv(name.c_str(), value.c_str(), 1), 0) << name;
}

std::string CleanEnvironmentTest::get(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? "(undefined)" : value;
}
