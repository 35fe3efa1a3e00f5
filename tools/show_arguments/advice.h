// Hints: what someone probably did not mean, and what to type instead.

#ifndef ORVEX_SHOW_ARGUMENTS_ADVICE_H
#define ORVEX_SHOW_ARGUMENTS_ADVICE_H

#include "report.h"

#include <vector>

namespace tool {

// Expects everything in the report but the hints. After an unterminated quote, only that is worth a hint.
std::vector<Hint> giveAdvice(const Report& report);

}  // namespace tool

#endif
