// The process environment while a scenario runs.

#ifndef ORVEX_TESTS_DIFFERENTIAL_PROCESS_ENVIRONMENT_H
#define ORVEX_TESTS_DIFFERENTIAL_PROCESS_ENVIRONMENT_H

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace differential {

// Unless null, answers every call of setenv.
extern int (*setenvInstead)(const char* name, const char* value, int overwrite);

// Takes the place of the process environment as long as it lives. Only one at a time.
//
// The platform's setenv keeps every text that it was ever given, so millions of scenarios would use up the
// memory. This class answers setenv itself and releases the texts with the scenario.
class ProcessEnvironment {
public:
    ProcessEnvironment(const std::map<std::string, std::string>& variables,
                       const std::set<std::string>& refused);
    ~ProcessEnvironment();
    ProcessEnvironment(const ProcessEnvironment&) = delete;
    ProcessEnvironment& operator=(const ProcessEnvironment&) = delete;

    // What the process sees now.
    static std::map<std::string, std::string> read();

    // Does what setenv does.
    int set(const char* name, const char* value, bool overwrite);

private:
    std::deque<std::string> texts;
    std::vector<char*> entries;
    const std::set<std::string>& refused;
    char** const saved;
};

}  // namespace differential

#endif
