// Fuzz target: any bytes as the text of an argument variable.

#include "differential/scenario.h"
#include "fuzz/finding.h"
#include "model/model.h"
#include "parser/argument_tokenizer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

std::string describe(const Texts& tokens, const std::string& error) {
    std::string text = error.empty() ? "" : "error " + differential::quoted(error) + ", ";
    text += "tokens {";
    for (const std::string& token : tokens) {
        text += " " + differential::quoted(token);
    }
    return text + " }";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    // A failing call leaves what was there before.
    const Texts before = {"before"};

    Texts tokens = before;
    std::string error;
    try {
        orvex::splitArgumentString(text, tokens);
    } catch (const std::runtime_error& exception) {
        error = exception.what();
    }

    std::string expectedError;
    const std::optional<Texts> split = model::splitArguments(text, expectedError);
    const Texts& expected = split ? *split : before;
    if (tokens != expected || error != expectedError) {
        fuzz::reportFinding("splitArgumentString of " + differential::quoted(text) + "\n  library: " +
                            describe(tokens, error) + "\n  model:   " + describe(expected, expectedError));
    }
    return 0;
}
