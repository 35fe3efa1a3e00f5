// A program that has fault_injection.cpp in it replaces the functions below for itself and for the
// libraries that it loads, and makes chosen calls of them fail.

#ifndef ORVEX_TESTS_FAULT_INJECTION_H
#define ORVEX_TESTS_FAULT_INJECTION_H

#include <cstddef>
#include <string>
#include <vector>

enum class Function {
    OperatorNew,  // fails by throwing std::bad_alloc
    SetEnv,       // fails with -1
    RealPath,     // fails with a null pointer
    DlAddr,       // fails with 0
};

enum class Repetition {
    Once,        // only the chosen call fails
    FromThenOn,  // the chosen call and all later ones fail
};

// While it lives, a call of the function fails: the first one when nth is 1, the second when it is 2.
// One lives at a time.
class FailingCall {
public:
    FailingCall(Function function, std::size_t nth, Repetition repetition = Repetition::Once);
    ~FailingCall();
    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;

    // Whether the call that is to fail was made.
    bool hasFailed() const;

private:
    bool failed = false;
};

// While it lives, dladdr names this file as the library's.
class LibraryFileName {
public:
    explicit LibraryFileName(const char* name);
    ~LibraryFileName();
    LibraryFileName(const LibraryFileName&) = delete;
    LibraryFileName& operator=(const LibraryFileName&) = delete;
};

// While it lives, realpath resolves everything to this path.
class ResolvedPath {
public:
    explicit ResolvedPath(const char* path);
    ~ResolvedPath();
    ResolvedPath(const ResolvedPath&) = delete;
    ResolvedPath& operator=(const ResolvedPath&) = delete;
};

// While it lives, the names of the variables that setenv is called for are kept.
class SetEnvRecord {
public:
    SetEnvRecord();
    ~SetEnvRecord();
    SetEnvRecord(const SetEnvRecord&) = delete;
    SetEnvRecord& operator=(const SetEnvRecord&) = delete;

    const std::vector<std::string>& names() const;

private:
    std::vector<std::string> calledFor;
};

// The number of allocations that were not released.
std::size_t liveAllocations();

// The number of buffers from realpath that were not released. Always 0 where AddressSanitizer, which
// owns free, looks for leaks itself.
std::size_t livePaths();

#endif
