// What show_arguments prints.

#ifndef ORVEX_SHOW_ARGUMENTS_REPORT_H
#define ORVEX_SHOW_ARGUMENTS_REPORT_H

#include "OrvexTestCommandLineParser.h"
#include "trace.h"

// Parses the arguments, and tells what a test program then sees and where it came from.
Json reportParse(OrvexTestCommandLineParser& parser, int argc, char** argv);

// The same for people.
std::string asText(const Json& report, bool hasColour);

#endif
