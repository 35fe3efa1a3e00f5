// Fills the test-run record.

#ifndef ORVEX_TEST_RUN_INFORMATION_H
#define ORVEX_TEST_RUN_INFORMATION_H

#include "OrvexTestCommandLineParser.h"

#include <string>

namespace orvex {

// Resets the fields that have a fixed start value and fills those whose options have a value; the others are
// unchanged. tlList: all -tl values, joined by ",".
void fillTestRunInformation(const OptionRegistry& options, const std::string& tlList,
                            TestRunInformation& information);

}  // namespace orvex

#endif
