// What each argument of each source became.

#ifndef ORVEX_SHOW_ARGUMENTS_TRACE_H
#define ORVEX_SHOW_ARGUMENTS_TRACE_H

#include "options.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

inline constexpr std::string_view firstVariable = "ORVEX_TEST_ARGS";
inline constexpr std::string_view commandLine = "command line";
inline constexpr std::string_view lastVariable = "_ORVEX_TEST_ARGS_";

enum class SourceState { NotReached, NotSet, Blank, Scanned, Malformed };

inline std::string_view nameOf(SourceState state) {
    constexpr std::string_view names[] = {"not reached", "not set", "blank", "scanned", "malformed"};
    return names[static_cast<std::size_t>(state)];
}

struct Source {
    std::string_view name;
    SourceState state = SourceState::NotReached;
    std::string text = {};     // of a variable
    std::string message = {};  // of the tokenizer, when the text is malformed
};

enum class ArgumentKind {
    ProgramName,
    DroppedProgramName,
    TestPath,
    Flag,        // an option without a value
    Value,       // an option, with its value in the next token
    InlineValue  // an option, with its value after a "="
};

inline std::string_view nameOf(ArgumentKind kind) {
    constexpr std::string_view names[] = {"program name", "dropped program name", "test path", "flag",
                                          "option",       "option with value"};
    return names[static_cast<std::size_t>(kind)];
}

enum class Outcome {
    Won,        // the value took effect
    Lost,       // a later value took its place
    Collected,  // it is one of several values, or a test path
    Counted,    // the flag took effect
    Empty,      // the last value, as if not given
    Refused,    // the value ended the parse
    Ignored,    // nothing reads it
    NotUsed     // the parse ended before
};

inline std::string_view nameOf(Outcome outcome) {
    constexpr std::string_view names[] = {"won",   "lost",    "collected", "counted",
                                          "empty", "refused", "ignored",   "not used"};
    return names[static_cast<std::size_t>(outcome)];
}

struct Argument {
    std::string_view source;
    ArgumentKind kind;
    std::vector<std::string> tokens;  // one, or two if the value is in the next token
    std::string name = {};            // of an option, without dashes
    std::string value = {};           // of an option; or the test path
    const ToolOption* option = nullptr;
    Outcome outcome = Outcome::NotUsed;
    std::string note = {};  // why
};

inline bool isOption(const Argument& argument) {
    return argument.kind == ArgumentKind::Flag || argument.kind == ArgumentKind::Value ||
           argument.kind == ArgumentKind::InlineValue;
}

// An option with all its arguments, as indexes into those of the trace.
struct TracedOption {
    std::string name;
    const ToolOption* option = nullptr;  // null for an unknown one
    std::vector<std::size_t> given = {};
    std::string value = {};                   // what a parse reads; values joined by commas
    std::vector<std::string_view> sets = {};  // accessors, fields of the record and variables
};

struct Trace {
    std::vector<Source> sources;        // in the order of the scan
    std::vector<Argument> arguments;    // likewise
    std::vector<TracedOption> options;  // in the order in which they were first given
};

// Scans what a Parse with these arguments scans, in the same order. Outcomes, notes, values and sets are
// left for later.
Trace traceArguments(int argc, char** argv);

// The source with an unterminated quote; null when there is none.
const Source* findMalformed(const Trace& trace);

// What the tokenizer makes of a text, as far as it can be seen without splitting it.
struct TextScan {
    std::optional<std::size_t> unterminatedQuote;  // its index
    std::string withoutLineEnds;                   // with spaces in place of those outside quotes
};
TextScan scanText(const std::string& text);

}  // namespace tool

#endif
