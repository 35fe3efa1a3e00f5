// Fault injection: interposes functions of the platform and operator new, fails chosen calls and records
// calls. Works in programs that link to "faults".

#ifndef ORVEX_TESTS_FAULTS_H
#define ORVEX_TESTS_FAULTS_H

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace faults {

enum class FaultyCall {
    Allocation,             // operator new; fails with std::bad_alloc
    NonStandardAllocation,  // operator new; fails with an exception that is not a std::exception
    DlAddr,                 // fails with 0
};

enum class Times { Once, FromThenOn };

// During its lifetime, makes the nth call fail, counted from 1. Only one may exist at a time.
class Failure {
public:
    explicit Failure(FaultyCall call, std::size_t nth = 1, Times times = Times::Once);
    ~Failure();
    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;

    // Whether the call that was to fail has been made.
    bool happened() const;

    // Counts a call and returns whether it fails.
    bool failsNow(FaultyCall made);

private:
    const FaultyCall call;
    const Times times;
    std::size_t callsLeft;
    bool hasFailed = false;
};

// Changes one of the variables below during its lifetime.
template <typename Type>
class With {
public:
    With(Type& variable, std::common_type_t<Type> value)
        : variable(variable), old(std::exchange(variable, std::move(value))) {}
    ~With() {
        variable = std::move(old);
    }
    With(const With&) = delete;
    With& operator=(const With&) = delete;

private:
    Type& variable;
    Type old;
};

extern std::set<std::string, std::less<>> refusedVariables;  // setenv fails for these
extern const char* libraryFile;                              // unless null, the file that dladdr names
extern const char* resolvedPath;                             // unless null, what realpath returns
extern bool allocationsAreSlow;                              // gives other threads time to catch up

// During its lifetime, records what is called and thrown: "getenv NAME", "setenv NAME=value" ("setenv
// otherwise" unless its flag is 1), "dladdr", "realpath PATH", "throw TYPE: message".
class CallLog {
public:
    CallLog();
    ~CallLog();
    CallLog(const CallLog&) = delete;
    CallLog& operator=(const CallLog&) = delete;

    std::vector<std::string> calls;
};

// How many allocations have been made so far, and how many of them have not been released.
std::size_t allocations();
std::size_t liveAllocations();

// How many buffers from realpath have not been released. Always 0 under a sanitizer: it owns free, and looks
// for leaks itself.
std::size_t liveResolvedPaths();

}  // namespace faults

#endif
