#include "support/fault_injection.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define ORVEX_TESTS_REPLACE_FREE 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVEX_TESTS_REPLACE_FREE 0
#endif
#endif
#ifndef ORVEX_TESTS_REPLACE_FREE
#define ORVEX_TESTS_REPLACE_FREE 1
#endif

namespace {

// Plain data only: operator new is called before any constructor of this file has run.
bool* hasFailedWhileArmed = nullptr;  // null when no call is to fail
Function failingFunction = Function::OperatorNew;
Repetition failingRepetition = Repetition::Once;
std::size_t callsLeft = 0;

std::size_t allocations = 0;
std::size_t releases = 0;

const char* libraryFileName = nullptr;
const char* resolvedPath = nullptr;
std::vector<std::string>* setEnvNames = nullptr;

constexpr std::size_t maximalPaths = 16;
void* paths[maximalPaths] = {};

bool failsNow(Function function) {
    if (hasFailedWhileArmed == nullptr || function != failingFunction) {
        return false;
    }
    if (callsLeft > 1) {
        --callsLeft;
        return false;
    }
    const bool fails = failingRepetition == Repetition::FromThenOn || !*hasFailedWhileArmed;
    *hasFailedWhileArmed = true;
    return fails;
}

// Lets the test's own allocations succeed.
class Truce {
public:
    Truce() : interrupted(hasFailedWhileArmed) {
        hasFailedWhileArmed = nullptr;
    }
    ~Truce() {
        hasFailedWhileArmed = interrupted;
    }
    Truce(const Truce&) = delete;
    Truce& operator=(const Truce&) = delete;

private:
    bool* const interrupted;
};

template <typename Pointer>
Pointer original(const char* name) {
    return reinterpret_cast<Pointer>(dlsym(RTLD_NEXT, name));
}

void* allocateOrNull(std::size_t size) {
    if (failsNow(Function::OperatorNew)) {
        return nullptr;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) {
        ++allocations;
    }
    return memory;
}

void* allocate(std::size_t size) {
    void* const memory = allocateOrNull(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void release(void* memory) {
    if (memory != nullptr) {
        ++releases;
        std::free(memory);
    }
}

#if ORVEX_TESTS_REPLACE_FREE
void rememberPath(void* path) {
    for (void*& known : paths) {
        if (known == nullptr) {
            known = path;
            return;
        }
    }
    std::abort();
}
#endif

}  // namespace

FailingCall::FailingCall(Function function, std::size_t nth, Repetition repetition) {
    failingFunction = function;
    failingRepetition = repetition;
    callsLeft = nth;
    hasFailedWhileArmed = &failed;
}

FailingCall::~FailingCall() {
    hasFailedWhileArmed = nullptr;
}

bool FailingCall::hasFailed() const {
    return failed;
}

LibraryFileName::LibraryFileName(const char* name) {
    libraryFileName = name;
}

LibraryFileName::~LibraryFileName() {
    libraryFileName = nullptr;
}

ResolvedPath::ResolvedPath(const char* path) {
    resolvedPath = path;
}

ResolvedPath::~ResolvedPath() {
    resolvedPath = nullptr;
}

SetEnvRecord::SetEnvRecord() {
    setEnvNames = &calledFor;
}

SetEnvRecord::~SetEnvRecord() {
    setEnvNames = nullptr;
}

const std::vector<std::string>& SetEnvRecord::names() const {
    return calledFor;
}

std::size_t liveAllocations() {
    return allocations - releases;
}

std::size_t livePaths() {
    std::size_t count = 0;
    for (const void* path : paths) {
        count += path != nullptr ? 1 : 0;
    }
    return count;
}

void* operator new(std::size_t size) {
    return allocate(size);
}

void* operator new[](std::size_t size) {
    return allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocateOrNull(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocateOrNull(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete[](void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    release(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
    release(memory);
}

extern "C" {

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved.

int setenv(const char* name, const char* value, int overwrite) noexcept {
    if (setEnvNames != nullptr) {
        const Truce truce;
        setEnvNames->emplace_back(name);
    }
    if (failsNow(Function::SetEnv)) {
        return -1;
    }
    return original<int (*)(const char*, const char*, int)>("setenv")(name, value, overwrite);
}

char* realpath(const char* path, char* resolved) noexcept {
    if (failsNow(Function::RealPath)) {
        return nullptr;
    }
    char* const result = resolvedPath != nullptr
                             ? strdup(resolvedPath)
                             : original<char* (*)(const char*, char*)>("realpath")(path, resolved);
#if ORVEX_TESTS_REPLACE_FREE
    if (resolved == nullptr && result != nullptr) {
        rememberPath(result);
    }
#endif
    return result;
}

int dladdr(const void* address, Dl_info* information) noexcept {
    if (failsNow(Function::DlAddr)) {
        return 0;
    }
    const int result = original<int (*)(const void*, Dl_info*)>("dladdr")(address, information);
    if (libraryFileName != nullptr) {
        information->dli_fname = libraryFileName;
    }
    return result;
}

#if ORVEX_TESTS_REPLACE_FREE
// The C library's own name for the function that is replaced.
void __libc_free(void* memory);  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

void free(void* memory) noexcept {
    for (void*& path : paths) {
        if (path == memory) {
            path = nullptr;
        }
    }
    __libc_free(memory);
}
#endif

// NOLINTEND(readability-inconsistent-declaration-parameter-name)

}  // extern "C"
