// What the program shows, as one value, and the steps that make it. Text and JSON are two views of it.

#ifndef ORVEX_SHOW_ARGUMENTS_REPORT_H
#define ORVEX_SHOW_ARGUMENTS_REPORT_H

#include "options.h"
#include "parser/option_scanner.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tool {

inline constexpr std::string_view firstVariable = "ORVEX_TEST_ARGS";
inline constexpr std::string_view commandLine = "command line";
inline constexpr std::string_view lastVariable = "_ORVEX_TEST_ARGS_";

enum class SourceState { NotReached, NotSet, Blank, Scanned, Malformed };

struct Source {
    std::string_view name;
    SourceState state = SourceState::NotReached;
    std::string text = {};     // of a variable
    std::string message = {};  // of the tokenizer, if the text is malformed
};

enum class Outcome {
    Won,        // the value took effect
    Lost,       // a later value took its place
    Collected,  // it is one of several values, or a test path
    Counted,    // the flag took effect
    Empty,      // the last value is empty, which is the same as no value
    Refused,    // the value ended the parse
    Ignored,    // nothing reads it
    NotUsed     // the parse ended before it was used
};

struct Argument {
    std::string_view source;
    orvex::Finding::Kind kind;
    bool isTestPath = false;
    std::vector<std::string> tokens = {};  // one, or two if the value is in the next token
    std::string name = {};                 // of an option, without dashes
    std::string value = {};                // of an option; or the test path
    const ToolOption* option = nullptr;    // null if it is not a known option
    Outcome outcome = Outcome::NotUsed;
    std::string note = {};  // why
};

inline bool isOption(const Argument& argument) {
    return argument.kind != orvex::Finding::Positional && argument.kind != orvex::Finding::DroppedProgramName;
}

// An option with all its arguments, as indexes into those of the trace.
struct TracedOption {
    std::string name;
    std::vector<std::size_t> given = {};
    std::vector<std::size_t> read = {};       // those in a form that a parse reads
    std::string value = {};                   // what a parse reads; values joined by commas
    std::vector<std::string_view> sets = {};  // accessors, fields of the record and variables
};

struct Trace {
    std::vector<Source> sources;        // in the order of the scan
    std::vector<Argument> arguments;    // likewise
    bool hasProgramName = false;        // whether one of them is the program name
    std::vector<TracedOption> options;  // in the order in which they were first given

    const Source* findMalformed() const;                          // null if no quote is unterminated
    const TracedOption* findOption(std::string_view name) const;  // null if it was not given
};

using Value = std::variant<bool, std::string>;

// What an accessor returns, or a field of the test-run record holds.
struct Result {
    std::string_view name;
    Value value;
};

enum class VariableState {
    Set,       // set by the parse to a different value than before
    SetAgain,  // set by the parse to the value that it had
    Kept       // inherited and left alone
};

struct Variable {
    std::string_view name;
    VariableState state;
    std::optional<std::string> before;
    std::string after;
};

// What a test program sees after a parse.
struct Observation {
    bool succeeded = false;
    std::vector<Result> accessors = {};
    std::vector<std::string> testPaths = {};
    std::vector<Result> record = {};       // in the order of TestRunInformation
    std::vector<Variable> variables = {};  // those that exist, in the order in which a parse sets them

    const Variable* findSet(std::string_view name) const;  // null if the parse did not set the variable
};

// Where a DravikGTC transport layer makes the SDK look for GenTL producers.
struct Producers {
    struct Directory {
        std::string path;
        bool exists;
    };
    std::string library;  // the file of the library, from which the directories are derived
    std::vector<Directory> directories;
    bool areSet;  // false if the variable holds something else
};

// Something that needs attention.
struct Hint {
    std::string_view source;                // where the argument came from
    std::string argument;                   // as one would type it there
    std::string message;                    // whole sentences
    std::string correction = {};            // what to type there instead; empty if only the user can tell
    std::optional<std::size_t> caret = {};  // the index of the byte in the argument that is at fault
};

struct Report {
    Trace trace;
    Observation seen;
    std::string reason = {};  // why the parse failed; empty if it succeeded
    std::optional<Producers> producers = {};
    std::vector<Hint> hints = {};
};

// Traces and parses the arguments. Afterwards, the environment is as this parse left it.
Report makeReport(int argc, char** argv);

// The steps of makeReport, in order.

// Scans what a Parse with these arguments scans. Leaves outcomes, and what an option sets, for later.
Trace traceArguments(int argc, char** argv);

Observation observeParse(int argc, char** argv);

// Fills in the outcomes and notes of the arguments, and what the options set. If a source is malformed, the
// parse has not looked at any argument, and they stay as they are.
void decideOutcomes(Trace& trace, const Observation& seen);

// An entry of a -tl value.
struct Layer {
    std::string text;
    std::string deviceClass;
    std::optional<std::string> driver = {};
};

// The entries of a -tl value. A parse skips empty ones, and so does this.
std::vector<Layer> splitTransportLayers(const std::string& value);

// The DravikGigE driver that is set: the last in byte order of those in all -tl values.
std::string findDriver(const std::string& transportLayers);

// Reads everything in the report but its hints. If a source is malformed, the arguments get no hints.
std::vector<Hint> giveAdvice(const Report& report);

// The two views.

struct Screen {
    std::size_t columns = 0;  // 0 if lines are not to be wrapped
    bool hasColour = false;
};

std::string asText(const Report& report, const Screen& screen);
std::string asJson(const Report& report);

// Names used by both views.
std::string_view nameOf(SourceState state);
std::string_view nameOf(Outcome outcome);
std::string_view nameOf(VariableState state);

// Whether the variable was set to the default of an option.
bool isDefault(const Report& report, const Variable& variable);

// The first argument that requests help; null if there is none, or the parse did not look at it.
const Argument* findHelpSwitch(const Trace& trace);

}  // namespace tool

#endif
