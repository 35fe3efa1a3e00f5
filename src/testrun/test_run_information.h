// Fills the test-run record.

#ifndef ORVEX_TEST_RUN_INFORMATION_H
#define ORVEX_TEST_RUN_INFORMATION_H

#include "OrvexTestCommandLineParser.h"

#include <string>

namespace orvex {

// Sets each field whose option has a value. Otherwise group, fixedZero and transportLayers get their
// defaults, and the other fields are left unchanged.
// tlList: all -tl values, joined by ",".
void fillTestRunInformation(const OptionRegistry& options, const std::string& tlList,
                            TestRunInformation& information);

}  // namespace orvex

#endif
