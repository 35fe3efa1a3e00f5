// What the program shows: one value, of which text and JSON are two views.

#ifndef ORVEX_SHOW_ARGUMENTS_REPORT_H
#define ORVEX_SHOW_ARGUMENTS_REPORT_H

#include "observation.h"
#include "trace.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

// Something that needs attention.
struct Hint {
    std::string_view source;                // where the argument came from
    std::string argument;                   // as one would type it there
    std::string message;                    // whole sentences
    std::string correction = {};            // what to type there instead; empty when only the user can tell
    std::optional<std::size_t> quote = {};  // the index of an unterminated quote in the argument
};

// Where a DravikGTC transport layer makes the SDK look for GenTL producers.
struct Producers {
    struct Directory {
        std::string path;
        bool exists;
    };
    std::string library;  // the file of the library, from which the directories are derived
    std::vector<Directory> directories;
    bool areSet;  // false when the variable holds something else
};

struct Report {
    Trace trace;
    Observation seen;
    std::string reason = {};  // why the parse failed; empty when it succeeded
    std::optional<Producers> producers = {};
    std::vector<Hint> hints = {};
};

// Traces and parses the arguments.
Report makeReport(int argc, char** argv);

// Whether the variable was set to the default of an option.
bool isDefault(const Report& report, const Variable& variable);

// The first argument that requests help; null when there is none, or the parse did not look at it.
const Argument* findHelpSwitch(const Trace& trace);

}  // namespace tool

#endif
