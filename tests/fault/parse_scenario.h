// Parses that are interrupted, and what they may leave behind.

#ifndef ORVEX_TESTS_PARSE_SCENARIO_H
#define ORVEX_TESTS_PARSE_SCENARIO_H

#include "OrvexTestCommandLineParser.h"

#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

struct ParseScenario {
    std::string name;
    Environment environment;             // before the parse
    std::vector<std::string> earlier;    // what the same parser has parsed before, unless empty
    std::vector<std::string> arguments;  // with the program name
    std::vector<std::string> scanned;    // the arguments of all sources, in the order of the scan
    bool succeeds;                       // what the parse returns
    bool needsProducerPath;              // whether it sets GENICAM_GENTL64_PATH
};

std::vector<ParseScenario> parseScenarios();

// One that changes every field and variable there is.
ParseScenario everyEffect();

std::ostream& operator<<(std::ostream& stream, const ParseScenario& scenario);

// Makes the environment that of the scenario and lets the parser parse what it is to parse earlier.
void prepare(const ParseScenario& scenario, OrvexTestCommandLineParser& parser);

// Everything that can be seen from outside: the fields, the record and the environment.
Snapshot visibleState(const OrvexTestCommandLineParser& parser);

// What this parser shows when it parses a command line of one argument in an empty environment. Test
// paths that it held before are left out, so that what it had scanned is left.
Snapshot stateAfterLaterParse(OrvexTestCommandLineParser& parser);

// What is in one state and not in the other, for a message that can be read.
std::string differences(const Snapshot& expected, const Snapshot& actual);

// The variables that a parse sets, in their order: those whose failure ends the parse, and all others.
std::vector<std::string> transportVariables();
std::vector<std::string> laterVariables();

// The visible state when the parse comes to the field or variable, and when it is over.
Snapshot stateBeforeEffect(const ParseScenario& scenario, const std::string& name);
Snapshot stateAfterAllEffects(const ParseScenario& scenario);

// A line of states that a parse passes through.
class Course {
public:
    explicit Course(std::vector<Snapshot> states);

    // Whether the state is on the line, not before the last state that was found there.
    bool advanceTo(const Snapshot& state);

    bool isAtStart() const;
    bool isAtEnd() const;

    // The state that was found last.
    const Snapshot& current() const;

private:
    std::vector<Snapshot> line;
    std::size_t position = 0;
};

// The visible states between the effects of the parse.
Course courseOfEffects(const ParseScenario& scenario);

// The same when memory runs out while the references in the producer path are expanded, which does
// not end the parse. Without any state when the parse does not need that path.
Course courseWithoutExpansion(const ParseScenario& scenario);

// The states after a later parse, when the parse has scanned nothing, the program name alone, one
// argument, two arguments ... and all of them.
Course courseOfScan(const ParseScenario& scenario);

#endif
