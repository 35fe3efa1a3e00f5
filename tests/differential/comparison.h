// Compares the library with the model. Each function returns what differs, or nothing.

#ifndef ORVEX_TESTS_DIFFERENTIAL_COMPARISON_H
#define ORVEX_TESTS_DIFFERENTIAL_COMPARISON_H

#include "differential/scenario.h"
#include "model/model.h"

#include <optional>
#include <string>

namespace differential {

using Difference = std::optional<std::string>;

// Makes the calls of the scenario on a new parser of the library and of the model and compares, before the
// first call and after every call, all that can be observed: the result, every accessor of the class and of
// the C interface, the record, the usage text, the C buffers, and the whole environment.
//
// The parser of the library is the process-wide one, constructed again each time, so that both interfaces
// show the same object. The process environment is restored at the end. Not thread-safe.
Difference findDifference(const Scenario& scenario);

// The same, with the smallest scenario in which anything differs.
std::string reportDifference(const Scenario& scenario);

// The hidden functions, one by one.
Difference findTokenizerDifference(const std::string& text);
Difference findSplitDifference(const std::string& text, char delimiter);
Difference findConversionDifference(const std::u32string& text, int size);
Difference findTokenKindDifference(const std::string& token);
// The variables are those of the process environment.
Difference findExpansionDifference(const std::string& text, const model::Environment& variables);

// Runs one fuzzer input, or one file of the corpus.
Difference replayScenario(const std::string& text);
Difference replayTokenizer(const std::string& text);
Difference replayExpansion(const std::string& text);

}  // namespace differential

#endif
