#include "system/interposed_functions.h"

#include "system/allocation_hook.h"

#include <dlfcn.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <typeinfo>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ORVEX_TESTS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define ORVEX_TESTS_SANITIZED 1
#endif
#endif

namespace {

#ifndef ORVEX_TESTS_SANITIZED
void* lastResolvedPath = nullptr;
#endif

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

Interposition& interposition() {
    // Never destroyed: the platform's functions are called until the very end of the process.
    static auto* const instance = new Interposition();
    return *instance;
}

// The platform declares these functions with names that are reserved to it.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name,bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" char* getenv(const char* name) noexcept {
    static auto* const platform = next<char*(const char*)>("getenv");
    Interposition& state = interposition();
    if (state.isRecording) {
        state.variablesRead.emplace_back(name);
    }
    return platform(name);
}

extern "C" int setenv(const char* name, const char* value, int overwrite) noexcept {
    static auto* const platform = next<int(const char*, const char*, int)>("setenv");
    Interposition& state = interposition();
    if (state.isRecording) {
        state.setenvCalls.push_back({name, value, overwrite});
        state.calls.emplace_back(name);
    }
    if (state.refusedVariables.find(std::string_view(name)) != state.refusedVariables.end()) {
        errno = ENOMEM;
        return -1;
    }
    return platform(name, value, overwrite);
}

extern "C" int dladdr(const void* address, Dl_info* information) noexcept {
    static auto* const platform = next<int(const void*, Dl_info*)>("dladdr");
    Interposition& state = interposition();
    if (state.isRecording) {
        state.calls.emplace_back("dladdr");
    }
    if (state.dladdrFails) {
        return 0;
    }
    const int result = platform(address, information);
    if (state.libraryFile) {
        information->dli_fname = state.libraryFile->c_str();
    }
    return result;
}

extern "C" char* realpath(const char* path, char* resolved) noexcept {
    static auto* const platform = next<char*(const char*, char*)>("realpath");
    Interposition& state = interposition();
    if (state.isRecording) {
        state.calls.emplace_back("realpath");
        state.realpathArguments.emplace_back(path);
    }
    if (state.realpathFails) {
        errno = ENOENT;
        return nullptr;
    }
    char* result = state.resolvedPath ? strdup(state.resolvedPath->c_str()) : platform(path, resolved);
    if (result == nullptr) {
        return nullptr;
    }
    ++state.resolvedPathsGiven;
#ifdef ORVEX_TESTS_SANITIZED
    ++state.resolvedPathsFreed;
#else
    lastResolvedPath = result;
#endif
    if (state.failingAllocationAfterRealpath) {
        allocation::failAt(*state.failingAllocationAfterRealpath, allocation::Failure::badAlloc);
    }
    return result;
}

// What every throw expression calls, with the types under which the compiler knows it.
extern "C" [[noreturn]] void __cxa_throw(void* exception, void* type, void (*destroy)(void*)) {
    static auto* const platform = next<void(void*, void*, void (*)(void*))>("__cxa_throw");
    Interposition& state = interposition();
    const std::type_info& thrown = *static_cast<std::type_info*>(type);
    if (state.isRecording && thrown == typeid(std::invalid_argument)) {
        state.thrown.push_back(std::string("invalid_argument: ") +
                               static_cast<std::invalid_argument*>(exception)->what());
    } else if (state.isRecording && thrown == typeid(std::runtime_error)) {
        state.thrown.push_back(std::string("runtime_error: ") +
                               static_cast<std::runtime_error*>(exception)->what());
    } else if (state.isRecording) {
        state.thrown.emplace_back(thrown.name());
    }
    platform(exception, type, destroy);
    std::abort();
}

#ifndef ORVEX_TESTS_SANITIZED
extern "C" void free(void* memory) noexcept {
    static void (*platform)(void*) = nullptr;
    static bool isLookingUp = false;
    if (memory == nullptr || isLookingUp) {
        return;
    }
    if (platform == nullptr) {
        isLookingUp = true;
        platform = next<void(void*)>("free");
        isLookingUp = false;
    }
    if (memory == lastResolvedPath) {
        lastResolvedPath = nullptr;
        ++interposition().resolvedPathsFreed;
    }
    platform(memory);
}
#endif
// NOLINTEND(readability-inconsistent-declaration-parameter-name,bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
