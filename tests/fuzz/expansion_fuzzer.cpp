// Fuzz target: any bytes as a text with environment references.

#include "differential/process_environment.h"
#include "differential/scenario.h"
#include "environment/expand_environment_references.h"
#include "fuzz/finding.h"
#include "model/model.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>

namespace {

// Values that look like references, empty ones, and names that are made of the special bytes.
const model::Environment& variables() {
    static const model::Environment environment = {
        {"A", "$(B)%A%"},  {"B", "100%"},    {"C", "$("},  {"D", "$$"},   {"E", ""},
        {"HOMEDIR", "/h"}, {" ", "blank"},   {"$", "%%"},  {"(", "$(A)"}, {"$(A", "%E%"},
        {"\xFF", "\x80%"}, {"\n", "line\n"}, {"F", "x=y"}, {"%", "lone"}, {"a)b", "never"}};
    return environment;
}

std::string describe(const std::pair<int, std::string>& expansion) {
    return std::to_string(expansion.first) + ", " + differential::quoted(expansion.second);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::set<std::string> refused;
    const differential::ProcessEnvironment environment(variables(), refused);
    const std::string text(data, data + size);

    std::pair<int, std::string> expansion(0, text);
    expansion.first = orvex::expandEnvironmentReferences(expansion.second);

    const std::pair<int, std::string> expected = model::expand(text, variables());
    if (expansion != expected) {
        fuzz::reportFinding("expandEnvironmentReferences of " + differential::quoted(text) +
                            "\n  library: " + describe(expansion) + "\n  model:   " + describe(expected));
    }
    return 0;
}
