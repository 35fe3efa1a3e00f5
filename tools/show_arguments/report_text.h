// The observation as text for people.

#ifndef ORVEX_SHOW_ARGUMENTS_REPORT_TEXT_H
#define ORVEX_SHOW_ARGUMENTS_REPORT_TEXT_H

#include "observation.h"
#include "text_page.h"

#include <iosfwd>

void reportAsText(const Observation& observation, PageFormat format, std::ostream& out);

#endif
