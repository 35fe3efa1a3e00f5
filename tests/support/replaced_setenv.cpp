#include "support/replaced_functions.h"

#include <stdlib.h>

int (*setenvInstead)(const char* name, const char* value, int overwrite) = nullptr;

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int REPLACEMENT(setenv)(const char* name, const char* value, int overwrite) PLATFORM_NOEXCEPT {
    static const auto platform = PLATFORM(setenv);
    return (setenvInstead != nullptr ? setenvInstead : platform)(name, value, overwrite);
}

#ifdef __APPLE__
REPLACEMENTS = {REPLACE(setenv)};
#endif
