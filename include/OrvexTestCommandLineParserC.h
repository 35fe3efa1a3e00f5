/** @file
 * The command line of an Orvex test program, for C and for languages that call C.
 *
 * All functions work on one parser for the whole process. The first call that needs it creates it, even
 * if several threads make that call at once, and an exit handler destroys it.
 * It is an OrvexTestCommandLineParser; OrvexTestCommandLineParser.h says in full what a parse does,
 * which environment variables it reads and writes, and when it fails.
 *
 *     int main(int argc, char** argv) {
 *         if (!OrvexTestCommandLineParser_Parse(argc, argv)) {
 *             return 1;
 *         }
 *         return run_tests(OrvexTestCommandLineParser_GetTestPath());
 *     }
 *
 * Conventions:
 * - Functions returning int return 1 for success or true, 0 for failure or false.
 * - A string that a function returns belongs to the parser: it is NUL-terminated, never null, and must
 *   be neither changed nor freed. It is valid until the next parse, and not after exit handlers have
 *   begun to run or the library has been unloaded. It is empty until a parse has filled it.
 * - Call no function after the parser is destroyed: not from an exit handler or a destructor of a static
 *   object that may run later, nor after dlclose.
 * - Parse before other threads start. Apart from the creation of the parser, nothing is locked.
 * - Except in the parse itself, a function that runs out of memory throws a C++ exception. If that happens
 *   while the parser is created, the next call tries again.
 * - Only the two parse functions read or write environment variables. A runtime that keeps a copy of the
 *   environment (Python's os.environ, Go's os.Getenv) does not see what they set; child processes do,
 *   unless they are given such a copy.
 *
 * Requires C99 or later, or C++. */

#ifndef ORVEX_TEST_COMMAND_LINE_PARSER_C_H
#define ORVEX_TEST_COMMAND_LINE_PARSER_C_H

#include <stddef.h>

#ifndef ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT
#define ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT __attribute__((visibility("default")))
#endif

/** The size in bytes of the buffer for OrvexTestCommandLineParser_GetTestRunInformation. */
#define ORVEX_TEST_RUN_INFORMATION_SIZE 4096
/** The size in bytes of each of its sixteen slots. */
#define ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE 256

#ifdef __cplusplus
extern "C" {
#endif

/** Parses the command line and the arguments in ORVEX_TEST_ARGS and `_ORVEX_TEST_ARGS_`.
 * - argc: the number of arguments, the program name included; 0 returns 1 and does nothing else.
 * - argv: argc NUL-terminated strings, none null; read during the call only.
 * - Result: 1; or 0 when the arguments are bad, when a variable that the SDK reads cannot be set (except for
 *     GENICAM_GENTL64_PATH), when the SDK's directory is needed and not found, or when memory runs out. What
 *     was done up to the failure is kept. A failure to set another variable is ignored. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT int OrvexTestCommandLineParser_Parse(int argc, char** argv);

/** The same for wide arguments, which are converted to UTF-8. Each wchar_t is one UTF-32 code point.
 * - Result: also 0, with nothing parsed, if argc is negative, if argv is null and argc is positive,
 *     if an argument is null, if a code point is above 0x10FFFF, or if the UTF-8 of one argument has more
 *     bytes than an int can count. Running out of memory during the conversion throws a C++ exception. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT int OrvexTestCommandLineParser_ParseW(int argc, wchar_t** argv);

/** The program name: the first argument ever scanned that is neither an option nor an option's value, usually
 * the argv[0] of the first parse. A parse that fails early does not update it. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT const char* OrvexTestCommandLineParser_GetApplicationName(void);

/** The name of the XML report file, -x; empty when it was not given. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT const char* OrvexTestCommandLineParser_GetXmlFilename(void);

/** The name of the output file, -o; empty when it was not given. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT const char* OrvexTestCommandLineParser_GetOutputFilename(void);

/** The first test suite or test case to run; empty when there is none. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT const char* OrvexTestCommandLineParser_GetTestPath(void);

/** Whether -w was given without a value: the program should wait before it exits. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT int OrvexTestCommandLineParser_GetWaitBeforeExit(void);

/** Whether one of -?, -h, -H and -help was given without a value. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT int OrvexTestCommandLineParser_GetHelpRequested(void);

/** Copies the usage text.
 * - applicationName: the program name at its head; null or empty: what
 *     OrvexTestCommandLineParser_GetApplicationName returns.
 * - buffer: where the text goes, or null.
 * - bufferSize: the size of the buffer in bytes.
 * - Result: with a buffer large enough for the text and its terminator, the length of the text without
 *     the terminator. Otherwise nothing is written, and the result is the size needed, which is one
 *     more than that length.
 *
 * For example:
 *
 *     size_t size = OrvexTestCommandLineParser_GetHelpMessage(NULL, NULL, 0);
 *     char* text = malloc(size);
 *     if (text != NULL) {
 *         OrvexTestCommandLineParser_GetHelpMessage(NULL, text, size);
 *     } */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT size_t
OrvexTestCommandLineParser_GetHelpMessage(const char* applicationName, char* buffer, size_t bufferSize);

/** Copies what is known about the test run.
 * - buffer: ORVEX_TEST_RUN_INFORMATION_SIZE writable bytes, which become sixteen slots of
 *     ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE bytes: a NUL-terminated string each, and zeros up to the end
 *     of the slot. In order: group, session identifier, run name, run description, product, "0", user
 *     identifier, revision, branch, revision again, branch again, computer name, operating system,
 *     transport layers, report file, test name. All, "0" included, are empty until a parse has filled them.
 * - Result: 1; or 0 when buffer is null or a string has more than 255 bytes. In the second case, the
 *     earlier slots are filled; that string's slot and all later ones are zero. */
ORVEX_TEST_COMMAND_LINE_PARSER_EXPORT int OrvexTestCommandLineParser_GetTestRunInformation(char* buffer);

#ifdef __cplusplus
}
#endif

#endif
