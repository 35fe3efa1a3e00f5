// Functions of the platform that the tests replace. On ELF, a definition in the program replaces those in all
// libraries. On macOS, a library is linked to one particular definition; there, the replacements have other
// names and are in a library with a table from which the dynamic loader takes them.

#ifndef ORVEX_TESTS_REPLACED_FUNCTIONS_H
#define ORVEX_TESTS_REPLACED_FUNCTIONS_H

#include <dlfcn.h>

#ifdef __APPLE__

#define REPLACEMENT(name) replacement_##name
#define PLATFORM(name) (&::name)
#define PLATFORM_NOEXCEPT

struct Replacement {
    const void* replacement;
    const void* original;
};

#define REPLACE_BY(replacement, type, original) \
    { reinterpret_cast<const void*>(replacement), reinterpret_cast<const void*>(static_cast<type>(original)) }
#define REPLACE(name) REPLACE_BY(&replacement_##name, decltype(&::name), &::name)
#define REPLACEMENTS \
    __attribute__((used, section("__DATA,__interpose"))) static const Replacement replacements[]

#else

#define REPLACEMENT(name) name
#define PLATFORM(name) nextAfterProgram<decltype(&::name)>(#name)
#define PLATFORM_NOEXCEPT noexcept

template <typename Function>
Function nextAfterProgram(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

#endif

// If not null, called in place of setenv. Works in programs that link to "faults" or "replaced_setenv".
extern int (*setenvInstead)(const char* name, const char* value, int overwrite);

#endif
