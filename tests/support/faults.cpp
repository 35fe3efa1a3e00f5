#include "support/faults.h"

#include "support/replaced_functions.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <typeinfo>
#include <utility>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define OWNS_FREE 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define OWNS_FREE 0
#endif
#endif
#ifndef OWNS_FREE
#define OWNS_FREE 1
#endif

namespace faults {

std::set<std::string, std::less<>> refusedVariables;
const char* libraryFile = nullptr;
const char* resolvedPath = nullptr;
bool allocationsAreSlow = false;

namespace {

// Plain data only: the functions below are called before this file's constructors run.
Failure* failure = nullptr;
CallLog* callLog = nullptr;
std::atomic<std::size_t> allocationCount{0};
std::atomic<std::size_t> releaseCount{0};
std::atomic<std::size_t> resolvedPathCount{0};
std::atomic<void*> lastResolvedPath{nullptr};

bool failsNow(FaultyCall call) {
    return failure != nullptr && failure->failsNow(call);
}

// Allocations of the log itself do not fail.
void record(const char* function, const char* first = "", const char* second = "", const char* third = "") {
    if (callLog != nullptr) {
        Failure* const interrupted = std::exchange(failure, nullptr);
        callLog->calls.push_back(std::string(function) + first + second + third);
        failure = interrupted;
    }
}

void* allocate(std::size_t size) {
    if (allocationsAreSlow) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    if (failsNow(FaultyCall::NonStandardAllocation)) {
        throw 42;
    }
    void* const memory = failsNow(FaultyCall::Allocation) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++allocationCount;
    return memory;
}

int setenvOrFail(const char* name, const char* value, int overwrite) {
    static const auto platform = PLATFORM(setenv);
    record(overwrite == 1 ? "setenv " : "setenv otherwise ", name, "=", value);
    if (refusedVariables.count(std::string_view(name)) != 0) {
        errno = ENOMEM;
        return -1;
    }
    return platform(name, value, overwrite);
}

[[maybe_unused]] const bool isSetenvReplaced = (setenvInstead = &setenvOrFail) != nullptr;

void release(void* memory) noexcept {
    if (memory != nullptr) {
        ++releaseCount;
        std::free(memory);
    }
}

}  // namespace

Failure::Failure(FaultyCall call, std::size_t nth, Times times) : call(call), times(times), callsLeft(nth) {
    failure = this;
}

Failure::~Failure() {
    failure = nullptr;
}

bool Failure::happened() const {
    return hasFailed;
}

bool Failure::failsNow(FaultyCall made) {
    if (made != call) {
        return false;
    }
    if (callsLeft > 1) {
        --callsLeft;
        return false;
    }
    return !std::exchange(hasFailed, true) || times == Times::FromThenOn;
}

CallLog::CallLog() {
    callLog = this;
}

CallLog::~CallLog() {
    callLog = nullptr;
}

std::size_t allocations() {
    return allocationCount;
}

std::size_t liveAllocations() {
    return allocationCount - releaseCount;
}

std::size_t liveResolvedPaths() {
    return resolvedPathCount;
}

}  // namespace faults

using namespace faults;

// The platform's names are reserved, as are those of its parameters.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name,bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

extern "C" {

// Every throw expression calls this, with these types.
[[noreturn]] void __cxa_throw(void* exception, void* type, void (*destroy)(void*));

char* REPLACEMENT(getenv)(const char* name) PLATFORM_NOEXCEPT {
    static const auto platform = PLATFORM(getenv);
    record("getenv ", name);
    return platform(name);
}

int REPLACEMENT(dladdr)(const void* address, Dl_info* information) PLATFORM_NOEXCEPT {
    static const auto platform = PLATFORM(dladdr);
    record("dladdr");
    if (failsNow(FaultyCall::DlAddr)) {
        return 0;
    }
    const int result = platform(address, information);
    if (libraryFile != nullptr) {
        information->dli_fname = libraryFile;
    }
    return result;
}

char* REPLACEMENT(realpath)(const char* path, char* buffer) PLATFORM_NOEXCEPT {
    static const auto platform = PLATFORM(realpath);
    record("realpath ", path);
    char* const result = resolvedPath != nullptr ? strdup(resolvedPath) : platform(path, buffer);
#if OWNS_FREE
    if (result != nullptr && buffer == nullptr) {
        ++resolvedPathCount;
        lastResolvedPath = result;
    }
#endif
    return result;
}

#if OWNS_FREE
void REPLACEMENT(free)(void* memory) PLATFORM_NOEXCEPT {
    // Looking up the platform's function may itself release memory.
    static decltype(&::free) platform = nullptr;
    static bool isSearching = false;
    if (memory == nullptr || isSearching) {
        return;
    }
    if (platform == nullptr) {
        isSearching = true;
        platform = PLATFORM(free);
        isSearching = false;
    }
    if (memory == lastResolvedPath) {
        lastResolvedPath = nullptr;
        --resolvedPathCount;
    }
    platform(memory);
}
#endif

[[noreturn]] void REPLACEMENT(__cxa_throw)(void* exception, void* type, void (*destroy)(void*)) {
    static const auto platform = PLATFORM(__cxa_throw);
    const std::type_info& thrown = *static_cast<std::type_info*>(type);
    if (thrown == typeid(std::invalid_argument)) {
        record("throw invalid_argument: ", static_cast<std::invalid_argument*>(exception)->what());
    } else if (thrown == typeid(std::runtime_error)) {
        record("throw runtime_error: ", static_cast<std::runtime_error*>(exception)->what());
    } else {
        record("throw ", thrown.name());
    }
    platform(exception, type, destroy);
    std::abort();
}

}  // extern "C"

// NOLINTEND(readability-inconsistent-declaration-parameter-name,bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

#ifndef __APPLE__

// The other forms of operator new and delete call these.

void* operator new(std::size_t size) {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

#else

namespace {

// Sized operator delete; the size is not needed.
void releaseSized(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

REPLACEMENTS = {
    REPLACE(getenv),
    REPLACE(dladdr),
    REPLACE(realpath),
    REPLACE(__cxa_throw),
#if OWNS_FREE
    REPLACE(free),
#endif
    REPLACE_BY(&allocate, void* (*)(std::size_t), &::operator new),
    REPLACE_BY(&release, void (*)(void*) noexcept, &::operator delete),
    REPLACE_BY(&releaseSized, void (*)(void*, std::size_t) noexcept, &::operator delete),
};

}  // namespace

#endif
