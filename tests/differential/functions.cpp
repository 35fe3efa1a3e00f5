// Compares the hidden functions of the library with those of the model.

#include "OrvexTestCommandLineParser.h"
#include "differential/comparison.h"
#include "differential/differences.h"
#include "differential/process_environment.h"
#include "differential/scenario.h"
#include "environment/expand_environment_references.h"
#include "environment/split_string.h"
#include "model/model.h"
#include "parser/argument_tokenizer.h"
#include "parser/wide_to_utf8.h"

#include <optional>
#include <string>

namespace differential {
namespace {

Difference differenceFor(const std::string& input, const Differences& differences) {
    return differences.text.empty() ? std::nullopt
                                    : Difference("\"" + escaped(input) + "\":\n" + differences.text);
}

}  // namespace

Difference findTokenizerDifference(const std::string& text) {
    // A call that fails leaves the tokens unchanged.
    Strings tokens = {"before"};
    Strings expected = tokens;
    const std::string error = outcomeOf([&] {
        orvex::splitArgumentString(text, tokens);
        return 0;
    });
    const std::string expectedError = outcomeOf([&] {
        expected = model::splitArguments(text);
        return 0;
    });
    Differences compare;
    compare("error", error, expectedError);
    compare("tokens", tokens, expected);
    return differenceFor(text, compare);
}

Difference findSplitDifference(const std::string& text, char delimiter) {
    Strings parts = {"before"};
    Strings expected = parts;
    Differences compare;
    const bool result = orvex::splitString(text.c_str(), delimiter, parts);
    compare("result", result, model::splitString(text, delimiter, expected));
    compare("parts", parts, expected);
    return differenceFor(text + " at " + delimiter, compare);
}

Difference findExpansionDifference(const std::string& text, const model::Environment& variables) {
    std::string expanded = text;
    const int count = orvex::expandEnvironmentReferences(expanded);
    const auto [expectedCount, expected] = model::expand(text, variables);
    Differences compare;
    compare("count", count, expectedCount);
    compare("text", expanded, expected);
    return differenceFor(text, compare);
}

Difference findConversionDifference(const std::u32string& text, int size) {
    const std::wstring wide(text.begin(), text.end());
    Differences compare;
    compare("count", orvex::convertWideToUtf8(wide.c_str(), nullptr, size),
            model::utf8(text.c_str(), nullptr, size));
    // The buffer is larger than the size. A refused conversion must leave the same bytes, too.
    std::string bytes(24, '\xAA');
    std::string expectedBytes = bytes;
    if (size <= static_cast<int>(bytes.size())) {
        const int result = orvex::convertWideToUtf8(wide.c_str(), bytes.data(), size);
        compare("result", result, model::utf8(text.c_str(), expectedBytes.data(), size));
        compare("bytes", bytes, expectedBytes);
    }
    if (compare.text.empty()) {
        return std::nullopt;
    }
    return describe({{Call{Form::Wide, {}, {text}}}}) + "into " + std::to_string(size) + " bytes:\n" +
           compare.text;
}

Difference findTokenKindDifference(const std::string& token) {
    Differences compare;
    compare("isNumber", OptionRegistry::isNumber(token), model::isNumber(token));
    compare("isOptionToken", OptionRegistry::isOptionToken(token), model::isOptionToken(token));
    compare("trimLeadingDashes", OptionRegistry::trimLeadingDashes(token), model::trimLeadingDashes(token));
    return differenceFor(token, compare);
}

Difference replayTokenizer(const std::string& text) {
    return findTokenizerDifference(text);
}

Difference replayExpansion(const std::string& text) {
    // Values that look like references, empty ones, and names of special bytes.
    static const model::Environment variables = {
        {"A", "$(B)%A%"},  {"B", "100%"},    {"C", "$("},  {"D", "$$"},   {"E", ""},
        {"HOMEDIR", "/h"}, {" ", "space"},   {"$", "%%"},  {"(", "$(A)"}, {"$(A", "%E%"},
        {"\xFF", "\x80%"}, {"\n", "line\n"}, {"F", "x=y"}, {"%", "lone"}, {"a)b", "never"}};
    const ProcessEnvironment environment(variables);
    return findExpansionDifference(text, variables);
}

}  // namespace differential
