// The library's calls to getenv and setenv, without its parse.

#ifndef ORVEX_BENCH_ENVIRONMENT_CALLS_H
#define ORVEX_BENCH_ENVIRONMENT_CALLS_H

#include "command_line.h"

#include <string>
#include <utility>
#include <vector>

class EnvironmentCalls {
public:
    // Takes the values from a parse of the typical arguments.
    explicit EnvironmentCalls(Form form);

    void make() const;

private:
    std::vector<std::pair<const char*, std::string>> variables;
};

#endif
