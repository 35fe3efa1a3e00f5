// The observation as JSON for programs.

#ifndef ORVEX_SHOW_ARGUMENTS_REPORT_JSON_H
#define ORVEX_SHOW_ARGUMENTS_REPORT_JSON_H

#include "observation.h"

#include <iosfwd>

// One object and a line end. JSON knows no bytes that are not UTF-8: they become U+FFFD.
void reportAsJson(const Observation& observation, std::ostream& out);

#endif
