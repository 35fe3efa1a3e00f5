// A plain second implementation of the parser, with a map for the process environment, to compare the library
// with. It shares only the types of the public header with the library.

#ifndef ORVEX_TESTS_MODEL_H
#define ORVEX_TESTS_MODEL_H

#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace model {

using Environment = std::map<std::string, std::string>;

std::string trimLeadingDashes(const std::string& text);
bool isNumber(const std::string& token);
bool isOptionToken(const std::string& token);

struct Registry {
    // A combination of the bits of OptionRegistry::Mode.
    explicit Registry(std::uint32_t mode) : mode(mode) {}

    void parseTokens(const Strings& tokens);

    // Names have no dashes in front here.
    std::string getText(const std::string& name) const;
    std::string getJoinedValues(const std::string& name, const std::string& separator) const;

    std::uint32_t mode;
    std::map<std::string, std::string> values;
    std::map<std::string, Strings> multiValues;
    std::set<std::string> flags;
    Strings positionals;
    std::set<std::string> valueOptions;
    std::set<std::string> multiValueOptions;

private:
    void store(const std::string& name, const std::string& value);
};

// Throws std::runtime_error for an unterminated quote.
Strings splitArguments(const std::string& text);

// Appends to parts.
bool splitString(const std::string& text, char delimiter, Strings& parts);

// The number of references and the new text.
std::pair<int, std::string> expand(const std::string& text, const Environment& environment);

// Source and destination may be null.
int utf8(const char32_t* source, char* destination, int destinationSize);

class Parser {
public:
    // Setting a refused variable fails. The parser keeps a reference to the environment.
    Parser(Environment& environment, std::string applicationDir, std::set<std::string> refused);

    bool parse(const Strings& argv);
    bool parseWide(const std::vector<WideArgument>& argv);
    // Strings missing at the end of the block are empty.
    bool parsePacked(const std::string& block, int argc);
    // Throws std::runtime_error for an unterminated quote. An empty name is like a null pointer.
    void scanVariable(const std::string& name, const std::string& programName);

    std::string helpMessage(const std::string& name) const;
    // The result and the bytes that OrvexTestCommandLineParser_GetTestRunInformation gives.
    std::pair<int, std::string> recordBuffer() const;

    std::string applicationName;
    std::string xmlFilename;
    std::string outputFilename;
    Strings testPaths;
    std::string tlList;
    bool helpRequested = false;
    bool waitBeforeExit = false;
    TestRunInformation record;

private:
    // False when the variable is refused.
    bool setUnlessEmpty(const std::string& name, const std::string& value);
    void readOptions();
    void setTransportVariables();
    void setProducerPath();
    void fillRecord();
    void setSessionVariables();

    Environment& environment;
    const std::string applicationDir;
    const std::set<std::string> refused;
    Registry options;
};

}  // namespace model

#endif
