// Stands between the shared library and the platform. The test program defines getenv, setenv, dladdr,
// realpath, free and the function behind throw itself, so that the library calls these definitions; they
// forward to the platform's unless a test tells them to fail or to answer something else.

#ifndef ORVEX_TESTS_INTERPOSED_FUNCTIONS_H
#define ORVEX_TESTS_INTERPOSED_FUNCTIONS_H

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

struct SetenvCall {
    std::string name;
    std::string value;
    int overwrite;
};

struct Interposition {
    // The faults, all absent at first.
    std::set<std::string, std::less<>> refusedVariables;  // setenv fails for these
    bool dladdrFails = false;
    bool realpathFails = false;
    std::optional<std::string> libraryFile;   // what dladdr answers as file name
    std::optional<std::string> resolvedPath;  // what realpath answers

    // The index of the allocation that fails, counted from the answer of realpath.
    std::optional<std::size_t> failingAllocationAfterRealpath;

    // What was called. Without the recording, none of the functions allocates with operator new.
    bool isRecording = true;
    std::vector<std::string> variablesRead;
    std::vector<SetenvCall> setenvCalls;
    std::vector<std::string> realpathArguments;
    std::vector<std::string> calls;   // "dladdr", "realpath", or the name of the variable that was set
    std::vector<std::string> thrown;  // "runtime_error: message", or the name of any other type
    int resolvedPathsGiven = 0;

    // How many answers of realpath were released with free. Sanitizers bring a free of their own and
    // report a leak themselves; under them each answer counts as released.
    int resolvedPathsFreed = 0;
};

// The one that the interposed functions consult; assign {} to return to plain forwarding.
Interposition& interposition();

#endif
