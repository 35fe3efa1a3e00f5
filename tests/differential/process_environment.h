// The process environment while a scenario runs.

#ifndef ORVEX_TESTS_DIFFERENTIAL_PROCESS_ENVIRONMENT_H
#define ORVEX_TESTS_DIFFERENTIAL_PROCESS_ENVIRONMENT_H

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace differential {

// Replaces the process environment during its lifetime. Only one instance may exist at a time.
//
// The platform's setenv keeps every string that it was ever given, so millions of scenarios would use up the
// memory. This class handles setenv itself, always overwrites, and releases the strings with the scenario.
class ProcessEnvironment {
public:
    explicit ProcessEnvironment(const std::map<std::string, std::string>& variables,
                                std::set<std::string> refused = {});
    ~ProcessEnvironment();
    ProcessEnvironment(const ProcessEnvironment&) = delete;
    ProcessEnvironment& operator=(const ProcessEnvironment&) = delete;

private:
    int set(const char* name, const char* value);

    static ProcessEnvironment* active;
    std::deque<std::string> strings;
    std::vector<char*> entries;
    const std::set<std::string> refused;
    char** const saved;
};

}  // namespace differential

#endif
