// The process-wide parser behind the C functions.

#ifndef ORVEX_PARSER_INSTANCE_H
#define ORVEX_PARSER_INSTANCE_H

#include "OrvexTestCommandLineParser.h"

namespace orvex {

// The first call constructs the parser; it is destroyed at process exit. If the constructor throws, the next
// call tries again.
OrvexTestCommandLineParser& getParserInstance();

}  // namespace orvex

#endif
