// The options that the parser looks at, and what each of them sets.

#ifndef ORVEX_SHOW_ARGUMENTS_KNOWN_OPTIONS_H
#define ORVEX_SHOW_ARGUMENTS_KNOWN_OPTIONS_H

#include "OrvexTestCommandLineParser.h"

#include <string>

enum class OptionKind {
    Flag,        // counts when it is given without a value
    Value,       // keeps the last value given
    MultiValue,  // keeps every value given
    InlineValue  // as Value, but only name=value gives it one
};

struct KnownOption {
    const char* name;
    OptionKind kind;
    const char* sets;
};

// Null when the parser does not look at an option of this name.
const KnownOption* findKnownOption(const std::string& name);

// A registry that has scanned nothing, with the names that the parser registers.
OptionRegistry makeRegistry();

#endif
