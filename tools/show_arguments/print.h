// The report for people and for programs.

#ifndef ORVEX_SHOW_ARGUMENTS_PRINT_H
#define ORVEX_SHOW_ARGUMENTS_PRINT_H

#include "report.h"

#include <string>

namespace tool {

struct Screen {
    std::size_t columns = 0;  // 0 when lines are not to be wrapped
    bool hasColour = false;
};

std::string asText(const Report& report, const Screen& screen);
std::string asJson(const Report& report);

}  // namespace tool

#endif
