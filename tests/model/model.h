#ifndef MODEL_H
#define MODEL_H

// A plain second writing of the command line parser, over a map instead of the process environment.
// It shares no code with the library and is the oracle that the library is compared with.

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace model {

using Environment = std::map<std::string, std::string>;

// ---- environment -------------------------------------------------------------------------------------

// What getenv finds: nullopt when the variable is not defined. Names and values end at their first NUL.
// A name that itself holds "=" is matched as a text against "NAME=VALUE", as the GNU C library does it:
// with A defined as B=C, the name "A=B" finds C.
std::optional<std::string> lookUp(const Environment& environment, const std::string& name);

// The eighteen variables that a parse may set, in the order in which it sets them.
const std::vector<std::string>& writtenVariables();

// ---- option registry ---------------------------------------------------------------------------------

constexpr std::uint32_t unknownAsFlag = 1;
constexpr std::uint32_t unknownTakesValue = 2;
constexpr std::uint32_t noInlineValue = 4;
constexpr std::uint32_t groupedShortFlags = 8;

std::string trimLeadingDashes(const std::string& text);
bool isNumber(const std::string& token);
bool isOptionToken(const std::string& token);

class Registry {
public:
    explicit Registry(std::uint32_t modeWord);

    void addValueOptions(const std::vector<std::string>& names);
    void addMultiValueOptions(const std::vector<std::string>& names);

    // Element 0 is the program name. parseArgv is the same scan over an argument vector.
    void parseTokens(const std::vector<std::string>& tokens);
    void parseArgv(const std::vector<std::string>& argv);

    bool hasOption(const std::string& name) const;
    // The text of the stream; nullopt stands for the empty stream whose fail bit is already set.
    std::optional<std::string> getValue(const std::string& name) const;
    // The text of the same stream, where absent and empty are the same.
    std::string getText(const std::string& name) const;
    std::string getJoinedValues(const std::string& name, const std::string& separator) const;
    const std::string& getPositional(std::size_t index) const;
    const std::vector<std::string>& getPositionals() const;

    bool isValueOption(const std::string& name) const;
    bool isMultiValueOption(const std::string& name) const;
    bool hasMode(std::uint32_t bit) const;

    // Open to the tests, in the order of declaration.
    std::map<std::string, std::string> values;
    std::vector<std::string> positionals;
    std::multiset<std::string> flags;
    std::set<std::string> valueOptions;
    std::uint32_t mode;
    std::string emptyValue;
    std::set<std::string> multiValueOptions;
    std::map<std::string, std::vector<std::string>> multiValues;
};

// ---- free functions ----------------------------------------------------------------------------------

// Splits the text of an argument variable. On failure returns nullopt and puts the message into error;
// on success error is left as it was.
std::optional<std::vector<std::string>> splitArguments(const std::string& text, std::string& error);

// Appends the parts of text to parts. The text may be null.
bool splitString(const char* text, char delimiter, std::vector<std::string>& parts);

// The number of references expanded (or the 1 of the short texts) and the new text.
std::pair<int, std::string> expand(const std::string& text, const Environment& environment);

// Converts a zero-terminated text of code points; source and destination may be null.
int utf8(const char32_t* source, char* destination, int destinationSize);

// Device classes and GigE driver types of a comma-joined transport layer list.
std::set<std::string> deviceClasses(const std::string& tlList);
std::set<std::string> driverTypes(const std::string& tlList);
std::string deviceFilter(const std::string& tlList);
std::string streamParameters(const std::string& tlList, const std::string& socketBuffer);
bool startsWithDigit(const std::string& text);

// The application directory for a library file whose absolute path holds no symbolic links, no "." and
// no "..": what is left after the climb of four levels and the final cut.
std::string applicationDirOf(const std::string& libraryFile);

// The value built for GENICAM_GENTL64_PATH, before and after the expansion.
std::string producerPathText(const std::string& applicationDir);
std::string producerPath(const std::string& applicationDir, const Environment& environment);

// ---- test run record ---------------------------------------------------------------------------------

struct Record {
    std::string group;
    std::string guid;
    std::string runName;
    std::string runDescription;
    std::string product;
    std::string fixedZero;
    std::string userId;
    std::string vcsRevision;
    std::string vcsBranch;
    std::string secondVcsRevision;
    std::string secondVcsBranch;
    std::string pcName;
    std::string osName;
    std::string transportLayers;
    std::string tdcDravikXmlFilename;
    std::string testName;
    std::string osType;
    std::string bit;

    struct Field {
        const char* name;
        std::string Record::*member;
    };
    // All eighteen, in order; use as record.*field.member.
    static const std::array<Field, 18>& fields();
    // (name, value) in order.
    std::vector<std::pair<std::string, std::string>> entries() const;

    bool operator==(const Record& other) const;
    bool operator!=(const Record& other) const;
};

// ---- parser ------------------------------------------------------------------------------------------

struct CBuffer {
    int result;
    std::array<char, 4096> bytes;
};

struct CHelp {
    std::size_t result;
    std::vector<char> bytes;
};

class Parser {
public:
    // Keeps a reference to the environment. Without an application directory, asking for it throws.
    Parser(Environment& environment, std::optional<std::string> applicationDir);

    // When set and true for a name, setting the variable of that name fails.
    std::function<bool(const std::string& name)> failSetting;

    bool parse(const std::vector<std::string>& argv);
    // A null argument vector with any count.
    static bool parseNullArgv(int argc);

    bool parseWide(const std::vector<std::u32string>& argv);
    // The same, where nullopt is a null argument.
    bool parseWideWithNulls(const std::vector<std::optional<std::u32string>>& argv);
    // A null vector of wide arguments with any count.
    static bool parseNullWide(int argc);

    // The block is followed by one NUL more than it holds itself. Strings missing at its end count as
    // empty ones.
    bool parsePacked(const std::string& block, int argc);

    // Throws std::runtime_error for a malformed value. An empty variable name stands for a null one too.
    void parseArgsFromEnvironmentVariable(const std::string& variableName, const std::string& programName);

    const std::string& applicationName() const;
    const std::string& xmlFilename() const;
    const std::string& outputFilename() const;
    const std::vector<std::string>& testPaths() const;
    const std::string& firstTestPath() const;
    const std::string& tlList() const;
    bool helpRequested() const;
    bool waitBeforeExit() const;
    const Record& record() const;
    const std::string& tdcDravikXmlFilename() const;
    const Registry& registry() const;

    std::string helpMessage(const std::string& name) const;

    // The C copy of the record into a buffer whose bytes are all 0xAA before the call.
    CBuffer cBuffer() const;
    // The C copy of the help text, likewise. No name is a null pointer, no size is a null buffer.
    CHelp cHelpMessage(const std::optional<std::string>& name, std::optional<std::size_t> bufferSize) const;

private:
    bool setVariable(const std::string& name, const std::string& value);
    void parseBody(const std::vector<std::string>& argv, bool& result);
    bool setTransportVariables(const std::string& cameras, const std::string& packetDelay,
                               std::string packetSize, const std::string& socketBuffer,
                               const std::string& properties);
    void setProducerPath();
    void fillRecord();
    void exportSession();

    Environment& environment_;
    std::optional<std::string> applicationDir_;
    std::string applicationName_;
    std::string xmlFilename_;
    std::string outputFilename_;
    std::vector<std::string> testPaths_;
    bool helpRequested_ = false;
    bool waitBeforeExit_ = false;
    std::string tlList_;
    Registry options_;
    Record record_;
};

}  // namespace model

#endif
