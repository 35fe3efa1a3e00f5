// Hints about likely mistakes, with corrections.

#ifndef ORVEX_SHOW_ARGUMENTS_ADVICE_H
#define ORVEX_SHOW_ARGUMENTS_ADVICE_H

#include "report.h"

#include <vector>

namespace tool {

// Reads everything in the report but its hints. If a quote is unterminated, the arguments get no hints.
std::vector<Hint> giveAdvice(const Report& report);

}  // namespace tool

#endif
