// The two headers in one program.

#include "OrvexTestCommandLineParserC.h"

#include "OrvexTestCommandLineParser.h"
