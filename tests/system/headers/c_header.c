/* The C header needs no other before it and may be included twice. */

#include "OrvexTestCommandLineParserC.h"

/* A second time. */
#include "OrvexTestCommandLineParserC.h" /* NOLINT(readability-duplicate-include) */
