// A parse that changes everything that a parse can change, and these effects in their order.

#ifndef ORVEX_TESTS_EVERY_EFFECT_H
#define ORVEX_TESTS_EVERY_EFFECT_H

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/faults.h"
#include "support/parser_snapshot.h"

#include <ostream>
#include <string>
#include <vector>

// The words between blanks. A "~" stands for so many of them that no string holds it without an allocation.
std::vector<std::string> longWords(const std::string& text);

enum class Form { Narrow, Wide, Packed };
constexpr Form everyForm[] = {Form::Narrow, Form::Wide, Form::Packed};
void PrintTo(Form form, std::ostream* stream);

// Owns an argument vector in one of the forms, so that a parse of it needs no memory of the test.
class FormedArguments {
public:
    // ASCII only, and no empty text.
    FormedArguments(Form form, const std::vector<std::string>& texts);

    bool parse(OrvexTestCommandLineParser& parser);

private:
    const Form form;
    Arguments narrow;
    std::vector<std::wstring> wide;
    std::vector<wchar_t*> widePointers;
    std::string packed;
};

struct Effect {
    std::string name;  // of a variable, an accessor or a field of the record
    std::string value;

    bool isVariable() const;
};

// What the command line does, in its order. The SDK is in /sdk.
const std::vector<Effect>& everyEffect();

// The position of the first effect with this name.
std::size_t positionOf(const std::string& name);

// The variables that are set, from the first to the last named.
std::vector<std::string> variables(const std::string& first, const std::string& last);

// The command line; variables add to it in front and at the end.
std::vector<std::string> commandLine();
extern const Environment argumentVariables;

// Everything that can be seen from outside: accessors, record and environment.
Snapshot stateOf(const OrvexTestCommandLineParser& parser);

// A test in which the SDK is in /sdk.
class EveryEffectTest : public CleanEnvironmentTest {
protected:
    // Lets a new parser parse a command line with other values, and gives all variables other values, so that
    // each value is one that can be kept or lost.
    static void prepare(OrvexTestCommandLineParser& parser);

    // The state before each effect, and after all of them.
    static const std::vector<Snapshot>& statesOfEffects();

    // What stateAfterLaterParse gives for a parser that has scanned nothing, the program name, and one, two,
    // three ... of the arguments of all sources.
    static const std::vector<Snapshot>& statesOfScan();

    // The state after one more parse, which shows what has been scanned before. Its environment is empty, and
    // test paths that the parser held already are left out.
    static Snapshot stateAfterLaterParse(OrvexTestCommandLineParser& parser, const std::string& more = "");

    // The calls that the whole parse makes.
    static std::vector<std::string> everyCall();

    const faults::With<const char*> libraryFile{faults::libraryFile, "/p/q/library"};
    const faults::With<const char*> resolvedPath{faults::resolvedPath, "/sdk/q"};
};

// The first call that is not as expected, for a message that can be read.
std::string firstDifference(const std::vector<std::string>& expected, const std::vector<std::string>& actual);

// What is in one state and not in the other, for a message that can be read.
std::string differences(const Snapshot& expected, const Snapshot& actual);

#endif
