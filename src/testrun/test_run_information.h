// Fills the test-run record.

#ifndef ORVEX_TEST_RUN_INFORMATION_H
#define ORVEX_TEST_RUN_INFORMATION_H

#include "OrvexTestCommandLineParser.h"

#include <string>

namespace orvex {

// Sets group, fixedZero and transportLayers, to their defaults if there is no value, and each other field
// whose option has a value; the rest are unchanged. tlList: all -tl values, joined by ",".
void fillTestRunInformation(const OptionRegistry& options, const std::string& tlList,
                            TestRunInformation& information);

}  // namespace orvex

#endif
