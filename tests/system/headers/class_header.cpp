// The class header needs no other before it and may be included twice.

#include "OrvexTestCommandLineParser.h"

// A second time.
#include "OrvexTestCommandLineParser.h"  // NOLINT(readability-duplicate-include)
