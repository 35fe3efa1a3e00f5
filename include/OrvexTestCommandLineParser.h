/// @file
/// The command line of an Orvex test program.
///
/// A test program hands its argc and argv to OrvexTestCommandLineParser::Parse once, at start-up and
/// before it starts a thread. Parse reads the command line together with the arguments in the
/// environment variables ORVEX_TEST_ARGS (scanned before the command line) and `_ORVEX_TEST_ARGS_`
/// (scanned after it), sets the environment variables that the SDK reads when the test opens cameras
/// and those that describe the test session, and keeps what it parsed for the accessors.
///
///     int main(int argc, char** argv) {
///         OrvexTestCommandLineParser parser;
///         const bool parsed = parser.Parse(argc, argv);
///         if (!parsed || parser.helpRequested()) {
///             std::cout << parser.getHelpMessage("") << '\n';
///             return parsed ? 0 : 1;
///         }
///         return runTests(parser.getTestPaths());
///     }
///
/// Conventions:
/// - Strings are bytes. No locale is consulted, and no value is validated, except for the first byte of
///   a number.
/// - Parse reports failure by returning false. It prints nothing and does not undo what it has already done.
/// - References stay valid for the parser's lifetime; a later Parse or an assignment may change what they
///   refer to. Both invalidate references to single test paths.
/// - Nothing here is locked. Parse writes the process environment, which all threads share.
/// - The classes hold standard containers by value: build the program with the same standard library and
///   the same version of this header as the library. Otherwise it may link, and then read or write the wrong
///   memory. This header rejects a mix of libc++ and libstdc++: outside Apple platforms, the target and the
///   pkg-config file of a library that was built with libc++ define
///   ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_LIBCXX. It also rejects `_GLIBCXX_DEBUG` and
///   `_GLIBCXX_USE_CXX11_ABI=0`, which change libstdc++'s containers. Define
///   ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_THESE_CONTAINERS to switch these checks off if the library was
///   built with the same settings as the program.
///
/// Requires C++11 or later. C programs, and C++ programs that want the one process-wide parser, use
/// OrvexTestCommandLineParserC.h.

#ifndef ORVEX_TEST_COMMAND_LINE_PARSER_H
#define ORVEX_TEST_COMMAND_LINE_PARSER_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#ifndef ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_THESE_CONTAINERS
#if defined(__GLIBCXX__) && defined(ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_LIBCXX)
#error "This program uses libstdc++, but the library was built with libc++."
#elif defined(__GLIBCXX__) && (defined(_GLIBCXX_DEBUG) || !_GLIBCXX_USE_CXX11_ABI)
#error \
    "libstdc++ is configured differently from the build of the library (_GLIBCXX_DEBUG or the old ABI). If the \
library was built with the same settings, define ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_THESE_CONTAINERS."
#elif defined(_LIBCPP_VERSION) && !defined(__APPLE__) && \
    !defined(ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_LIBCXX)
#error \
    "This program uses libc++, but the library was built with libstdc++. If it was built with libc++, define \
ORVEX_TEST_COMMAND_LINE_PARSER_BUILT_WITH_LIBCXX."
#endif
#endif

#ifndef ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT
#define ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT __attribute__((visibility("default")))
#endif

/// What is known about the test run: eighteen strings, all empty after construction. They are filled near
/// the end of Parse; a Parse that fails earlier leaves them unchanged, and one that runs out of memory
/// at that point leaves some of them changed. A string whose option is absent or empty is left
/// unchanged, except for group, fixedZero and transportLayers. Nothing interprets the strings.
///
/// The order is part of the interface: the C interface copies the first sixteen fields, in this order,
/// into slots of 256 bytes.
struct TestRunInformation {
    std::string group;                 ///< -tdc_group, or "orvex"
    std::string guid;                  ///< -tdc_guid, the identifier of the test session
    std::string runName;               ///< -tdc_runname
    std::string runDescription;        ///< -tdc_rundescription
    std::string product;               ///< -tdc_product
    std::string fixedZero;             ///< "0"; no option sets it
    std::string userId;                ///< -tdc_userid
    std::string vcsRevision;           ///< -tdc_vcsrevision
    std::string vcsBranch;             ///< -tdc_vcsbranch
    std::string secondVcsRevision;     ///< -tdc_vcsrevision again
    std::string secondVcsBranch;       ///< -tdc_vcsbranch again
    std::string pcName;                ///< -pcname
    std::string osName;                ///< -osname
    std::string transportLayers;       ///< the -tl values joined by ",", or "any" if that is empty
    std::string tdcDravikXmlFilename;  ///< -tdc_dxml
    std::string testName;              ///< -testname
    std::string osType;                ///< -ostype; not reachable through the C interface
    std::string bit;                   ///< -bit; not reachable through the C interface
};

// The registered option names, and what scans of token lists have found. Declared here only because the
// parser holds one by value: it is not exported, and test programs use OrvexTestCommandLineParser instead.
// The parser does not use getValue, trimLeadingDashes, isNumber, isOptionToken or any mode but UnknownAsFlag;
// they belong to the registry's general interface.
//
// Option names are passed with or without dashes (`o`, `-o` and `--o` are the same) and compared byte by
// byte. Scans only add; nothing is ever removed. References stay valid for the registry's lifetime, but a
// scan may change what they refer to. No function reads or writes an environment variable. Running out of
// memory throws std::bad_alloc, except during the extraction in isNumber.
class OptionRegistry {
public:
    // Bits of the mode word.
    enum Mode : std::uint32_t {
        // An unregistered option takes no value from the next token. This holds whenever UnknownTakesValue is
        // clear; no code tests this bit.
        UnknownAsFlag = 1,
        // An unregistered option takes the next token as its value, unless that is an option.
        UnknownTakesValue = 2,
        // "name=value" is not split: all of it is the name.
        NoInlineValue = 4,
        // "-abc" is the flags a, b and c, unless abc is registered by addValueOptions. If the last letter is
        // itself registered by addValueOptions, it takes a value.
        GroupedShortFlags = 8
    };

    // An option name. Non-owning: a view of the caller's string.
    struct Name {
        Name(const char* name) : begin(name), size(std::char_traits<char>::length(name)) {}
        Name(const std::string& name) : begin(name.data()), size(name.size()) {}
        Name(const char* first, std::size_t count) : begin(first), size(count) {}

        const char* begin;  // not null; need not be NUL-terminated
        std::size_t size;   // in bytes
    };

    // mode: any combination of the Mode bits.
    explicit OptionRegistry(std::uint32_t mode);

    // Registers options that take a value; if one is repeated, the last value wins.
    // names: NUL-terminated strings, not null, copied. Registering a name twice has no effect.
    void addValueOptions(std::initializer_list<const char*> names);

    // Registers options whose values accumulate, in order. names: as above.
    void addMultiValueOptions(std::initializer_list<const char*> names);

    // Scans argv[0] to argv[argc - 1] as parseTokens does. argc: 0 or more. argv: at least argc
    // NUL-terminated strings, copied, none of them null or pointing into this registry's own strings.
    void parseArgv(int argc, const char* const* argv);

    // Scans a token list: the program name, then the arguments. It is copied and must not be a list of this
    // registry. A program name that is not an option is dropped if there is a positional argument already.
    void parseTokens(const std::vector<std::string>& tokens);

    // Whether the option was given without a value.
    bool hasOption(Name name) const;

    // A stream over the last value. For a multi-value option, a stream over all values joined by one space,
    // which is empty if there are none. For another option without a value, an empty stream that has already
    // failed.
    std::istringstream getValue(Name name) const;

    // The last value of an option that is not a multi-value option, or an empty string.
    const std::string& getSingleValue(Name name) const;

    // All values of a multi-value option with the separator in between, or an empty string.
    std::string getJoinedValues(Name name, const std::string& separator) const;

    // The positional argument at the index (0 is the program name), valid until the next scan; an empty
    // string if the index is out of range.
    const std::string& getPositional(std::size_t index) const;

    // All positional arguments in scan order.
    const std::vector<std::string>& getPositionals() const;

    // The string without its leading dashes; unchanged if it holds nothing but dashes.
    static std::string trimLeadingDashes(const std::string& text);

    // Whether formatted extraction in the classic locale reads a double from the start of the token. Returns
    // false for any exception during the extraction, including std::bad_alloc.
    static bool isNumber(const std::string& token);

    // Whether the token begins with a dash and is not a number.
    static bool isOptionToken(const std::string& token);

    bool isValueOption(Name name) const;       // registered by addValueOptions
    bool isMultiValueOption(Name name) const;  // registered by addMultiValueOptions
    bool hasMode(std::uint32_t bit) const;     // whether the mode word has the bit

private:
    class Store;

    // Shorter names first: lengths usually differ, so most comparisons touch no bytes.
    struct NameOrder {
        using is_transparent = void;  // lookups need no std::string

        template <typename Left, typename Right>
        bool operator()(const Left& left, const Right& right) const {
            return left.size() != right.size() ? left.size() < right.size() : left < right;
        }
    };

    std::map<std::string, std::string, NameOrder> values;
    std::vector<std::string> positionals;
    std::multiset<std::string, NameOrder> flags;
    std::vector<std::string> valueOptions;
    std::uint32_t mode;
    std::string emptyValue;
    std::vector<std::string> multiValueOptions;
    std::map<std::string, std::vector<std::string>, NameOrder> multiValues;
};

/// Parses a test program's arguments and keeps what it found.
class ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT OrvexTestCommandLineParser {
public:
    /// A parser that has parsed nothing: all strings and lists empty, all flags false.
    /// Throws std::bad_alloc when memory runs out. Neither reads nor writes environment variables.
    OrvexTestCommandLineParser();

    /// Releases the memory and does nothing else: the environment stays as Parse left it.
    ~OrvexTestCommandLineParser();

    /// A copy is independent of its original.
    OrvexTestCommandLineParser(const OrvexTestCommandLineParser&) = default;
    OrvexTestCommandLineParser& operator=(const OrvexTestCommandLineParser&) = default;  ///< as above

    /// Parses the arguments in ORVEX_TEST_ARGS, then argv, then the arguments in `_ORVEX_TEST_ARGS_`, fills
    /// the accessors and sets the variables below. If an option is repeated, the last value wins;
    /// transport layers (-tl), properties (-p) and test paths accumulate.
    ///
    /// - argc: the number of arguments, the program name included. 0 returns true at once, with
    ///     nothing read or changed, whatever argv is.
    /// - argv: argc pointers to NUL-terminated strings, none of them null. Read during the call only.
    /// - Result: false for any failure in the first table; otherwise true. Prints nothing.
    /// - Errors: throws nothing. An exception that is not a std::exception (only a replaced allocation
    ///     function or a new-handler can throw one) leads to std::terminate.
    ///
    /// The failures, and what Parse has done by then and does not undo:
    ///
    ///     argc is negative or argv is null   nothing
    ///     ORVEX_TEST_ARGS has an             nothing
    ///     unterminated quote
    ///     _ORVEX_TEST_ARGS_ has an           the other sources are scanned; no accessor has changed
    ///     unterminated quote
    ///     -socketbuffer is not empty and     the accessors have their new values, except for the record;
    ///     does not begin with a digit        no variable is set
    ///     -packetsize, -packetdelay or       the accessors as above; the variables listed below before
    ///     -camemu likewise                   the option's own are set
    ///     one of the variables up to         the accessors as above; the variables before it are set
    ///     TEST_PROPERTIES cannot be set
    ///     the SDK's directory, needed for    the accessors as above; the variables before that one are set
    ///     GENICAM_GENTL64_PATH, is not found
    ///     memory runs out                    what came before; the step it interrupts may be half done
    ///
    /// Ignored failures: GENICAM_GENTL64_PATH or a later variable cannot be set; memory runs out while that
    /// path is expanded (its references stay as they are).
    ///
    /// Reads ORVEX_TEST_ARGS and `_ORVEX_TEST_ARGS_`; whether ORVEX_GTC_USE_EXTRA_TL is defined; and, for
    /// GENICAM_GENTL64_PATH, its old value, which is not expanded, and variables that the SDK's directory
    /// references as `%NAME%` or `$(NAME)`. The directory appears twice in the new path, unescaped: "$$"
    /// becomes "$", a single "%" pairs with the one in the second copy, and an unmatched "$(" pairs with the
    /// next ")", which may be that of the reference to the old value: then the old value is lost.
    ///
    /// Writes, in this order:
    ///
    ///     ORVEX_GTC_USE_EXTRA_TL      "1", only if it is not defined
    ///     ORVEX_DEVICE_FILTER         "DeviceClass=" and a class, for each different class in -tl, sorted
    ///                                 and joined by "||"; only if -tl has a non-empty entry
    ///     ORVEX_GIGE_STREAMPARAMS     "Type=" and the driver named after "DravikGigE:" in -tl (if there
    ///                                 are several, the last in byte order), "SocketBufferSize=" and
    ///                                 -socketbuffer, or both with a space between
    ///     ORVEX_GIGE_STREAM_GEVSCPS   -packetsize, or "8192"
    ///     ORVEX_GIGE_STREAM_GEVSCPD   -packetdelay
    ///     ORVEX_CAMEMU                -camemu
    ///     TEST_PROPERTIES             the -p values joined by one space
    ///     GENICAM_GENTL64_PATH        the producer directories of the SDK that this library belongs
    ///                                 to, in front of the old value; only if -tl contains "DravikGTC"
    ///                                 anywhere
    ///     TEST_SESSION_GUID           -tdc_guid
    ///     TEST_SESSION_NAME           -tdc_runname
    ///     TEST_SESSION_DESCRIPTION    -tdc_rundescription
    ///     TEST_SESSION_GROUP          -tdc_group
    ///     TEST_PRODUCT                -tdc_product
    ///     TEST_PRODUCT_VARIANT        -tdc_variant=VALUE, in this form only
    ///     USER_UID                    -tdc_userid
    ///     VCS_REVISION                -tdc_vcsrevision
    ///     VCS_BRANCH                  -tdc_vcsbranch
    ///     TRANSPORT_LAYER             the -tl values joined by one space
    ///
    /// Apart from the first and ORVEX_GIGE_STREAM_GEVSCPS, a variable is left unchanged if its value would
    /// be empty. Empty values of -tl and -p are joined like others: "-p= -p=" sets one space. An empty driver
    /// takes effect as well: "-tl DravikGigE::more" sets "Type=".
    ///
    /// A second Parse adds to what the first one scanned: options that it does not repeat keep their values,
    /// which are applied again, and all test paths scanned so far, earlier parses included, are appended.
    bool Parse(int argc, char** argv) noexcept;

    /// Parses wide arguments: converts them to UTF-8 and hands them to the narrow Parse.
    ///
    /// - argc: as above; if it is negative, the result is false.
    /// - argv: argc pointers to NUL-terminated strings of UTF-32 code points. Surrogates are converted
    ///     like any other code point. Read during the call only.
    /// - Result: that of the narrow Parse; false with nothing parsed when argv is null and argc is
    ///     positive, when an argument is null, when a code point lies above 0x10FFFF, or when the UTF-8
    ///     of one argument has more bytes than an int can count.
    /// - Errors: throws std::bad_alloc when there is no memory for the converted arguments.
    /// - Environment: as the narrow Parse.
    bool Parse(int argc, wchar_t** argv);

    /// Parses a block of argc NUL-terminated strings, stored one directly after another.
    ///
    /// - argc: as above; if it is negative, the result is false.
    /// - args: the first byte of the block; not null unless argc is 0. What follows the last string
    ///     is not read. Read during the call only.
    /// - Result: that of the narrow Parse; false with nothing parsed when one of the strings is empty. An
    ///     empty argument therefore cannot be passed in this form.
    /// - Errors: throws std::bad_alloc when there is no memory for argc pointers.
    /// - Environment: as the narrow Parse.
    bool Parse(int argc, char* args);

    /// Scans the arguments in an environment variable, as Parse does for its own two, and does nothing
    /// else. Accessors do not change until the next Parse, which also applies these arguments.
    ///
    /// Spaces and tabs separate arguments. Double and single quotes group: a quote of the other kind inside
    /// them is an ordinary byte, adjacent text belongs to the same argument, and an empty pair is an empty
    /// argument. A backslash, inside quotes or not, makes the next byte literal; a trailing backslash is
    /// literal itself.
    ///
    /// - variableName: the variable to read. Null or empty: nothing happens.
    /// - programName: a NUL-terminated string, not null, which takes the place of argv[0].
    /// - Errors: throws std::runtime_error, with nothing scanned, for an unterminated quote, and
    ///     std::bad_alloc when memory runs out, except while a number such as "-5" is extracted.
    /// - Reads the named variable; one that is undefined, empty or all spaces and tabs adds nothing. Writes
    ///     no variable.
    void ParseArgsFromEnvironmentVariable(const char* variableName, const char* programName);

    /// The program name: the first argument ever scanned that is neither an option nor an option's value, as
    /// of the last Parse that reached the accessors. That is the argv[0] of the first Parse that scanned
    /// anything, unless it looks like an option or ParseArgsFromEnvironmentVariable was called before with
    /// another program name.
    const std::string& getApplicationName() const noexcept;

    /// The name of the XML report file, -x; empty when it was not given.
    const std::string& getXmlFilename() const noexcept;

    /// The name of the output file, -o; empty when it was not given.
    const std::string& getOutputFilename() const noexcept;

    /// The test suites and test cases to run, "Suite" or "Suite::Case", in the order given.
    const std::vector<std::string>& getTestPaths() const noexcept;

    /// The first of the test paths, valid until the next Parse or assignment; if there is none, an empty
    /// string, valid until exit handlers run.
    const std::string& getFirstTestPath() const noexcept;

    /// All transport layers, the -tl values, joined by a comma.
    const std::string& getTlList() const noexcept;

    /// Whether one of -?, -h, -H and -help was given without a value ("-h=1" does not count).
    bool helpRequested() const noexcept;

    /// Whether -w was given without a value: the program should wait before it exits.
    bool waitBeforeExit() const noexcept;

    /// What is known about the test run.
    const TestRunInformation& getTestRunInformation() const noexcept;

    /// The name of the report file of the test data collector, -tdc_dxml.
    const std::string& getTdcDravikXmlFilename() const noexcept;

    /// The usage text: several lines, without a line feed after the last.
    /// - applicationName: the program name at its head, copied whole, NULs included; if it is empty,
    ///     getApplicationName() is used.
    /// - Errors: throws std::bad_alloc when memory runs out.
    std::string getHelpMessage(const std::string& applicationName) const;

    /// The directory that the SDK is installed in: five levels above the directory of this library's file,
    /// with symbolic links in that directory's path resolved; empty if that is the root or would be above it.
    /// If the dynamic loader reports the file without a slash in its name, the result is the directory of the
    /// file itself, after all links are resolved. If the library was loaded by a relative name, the working
    /// directory must still be the one in which it was loaded.
    /// - Errors: throws std::runtime_error when the file or the directory cannot be found, which includes
    ///     running out of memory in realpath, and std::bad_alloc when memory runs out elsewhere.
    /// - Neither reads nor writes environment variables.
    static std::string getApplicationDir();

private:
    std::string applicationName;
    std::string xmlFilename;
    std::string outputFilename;
    std::vector<std::string> testPaths;
    bool helpRequestedFlag = false;
    bool waitBeforeExitFlag = false;
    std::string tlList;
    OptionRegistry options;
    TestRunInformation testRunInformation;
};

#endif
