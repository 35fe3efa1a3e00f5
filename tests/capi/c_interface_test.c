/* Every function of the C interface, called from C: before any parse, and after parses. */

#include "OrvexTestCommandLineParserC.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <wchar.h>

static int checks = 0;
static int failures = 0;

/* Not assert, which a release build removes. */
#define CHECK(condition)                                                                  \
    do {                                                                                  \
        ++checks;                                                                         \
        if (!(condition)) {                                                               \
            ++failures;                                                                   \
            (void)fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
        }                                                                                 \
    } while (0)

/* Whether the bytes from begin to end are all zero. */
static int isZero(const char* buffer, size_t begin, size_t end) {
    for (size_t i = begin; i < end; ++i) {
        if (buffer[i] != '\0') {
            return 0;
        }
    }
    return 1;
}

/* Whether the slot holds the text and nothing but zeros after it. */
static int slotHolds(const char* buffer, size_t slot, const char* text) {
    const char* start = buffer + slot * ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE;
    return strncmp(start, text, ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE) == 0 &&
           isZero(start, strlen(text), ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE);
}

static int startsWith(const char* text, const char* beginning) {
    return strncmp(text, beginning, strlen(beginning)) == 0;
}

static const char* environmentText(const char* name) {
    const char* value = getenv(name);
    return value == NULL ? "(undefined)" : value;
}

static void checkHelpMessage(const char* name, const char* beginning) {
    const size_t size = OrvexTestCommandLineParser_GetHelpMessage(name, NULL, 0);
    char* text = malloc(size + 1);
    CHECK(text != NULL);
    if (text == NULL) {
        return;
    }
    memset(text, 'X', size + 1);
    CHECK(OrvexTestCommandLineParser_GetHelpMessage(name, text, size - 1) == size);
    CHECK(text[0] == 'X');
    CHECK(OrvexTestCommandLineParser_GetHelpMessage(name, text, size) == size - 1);
    CHECK(text[size] == 'X');
    CHECK(strlen(text) == size - 1);
    CHECK(startsWith(text, beginning));
    free(text);
}

static void checkBeforeAnyParse(void) {
    char information[ORVEX_TEST_RUN_INFORMATION_SIZE];

    CHECK(OrvexTestCommandLineParser_GetTestRunInformation(NULL) == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetApplicationName(), "") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetXmlFilename(), "") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetOutputFilename(), "") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetTestPath(), "") == 0);
    CHECK(OrvexTestCommandLineParser_GetWaitBeforeExit() == 0);
    CHECK(OrvexTestCommandLineParser_GetHelpRequested() == 0);
    checkHelpMessage(NULL, "[-?] [-camemu n]");
    memset(information, 'X', sizeof information);
    CHECK(OrvexTestCommandLineParser_GetTestRunInformation(information) == 1);
    CHECK(isZero(information, 0, sizeof information));
}

static void checkRefusedParses(void) {
    char name[] = "refused";
    char* arguments[] = {name, NULL};
    wchar_t wideName[] = L"refused";
    wchar_t* wideArguments[] = {wideName, NULL};

    CHECK(OrvexTestCommandLineParser_Parse(0, NULL) == 1);
    CHECK(OrvexTestCommandLineParser_Parse(-1, arguments) == 0);
    CHECK(OrvexTestCommandLineParser_Parse(1, NULL) == 0);
    CHECK(OrvexTestCommandLineParser_ParseW(0, NULL) == 1);
    CHECK(OrvexTestCommandLineParser_ParseW(-1, wideArguments) == 0);
    CHECK(OrvexTestCommandLineParser_ParseW(1, NULL) == 0);
    CHECK(OrvexTestCommandLineParser_ParseW(2, wideArguments) == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetApplicationName(), "") == 0);
}

static void checkParse(void) {
    char name[] = "./mytest";
    char xml[] = "-x=report.xml";
    char output[] = "-o";
    char outputFilename[] = "out.txt";
    char guid[] = "-tdc_guid";
    char guidText[] = "1234";
    char path[] = "TestSuiteUsb";
    char* arguments[] = {name, xml, output, outputFilename, guid, guidText, path};
    char information[ORVEX_TEST_RUN_INFORMATION_SIZE];

    CHECK(OrvexTestCommandLineParser_Parse(7, arguments) == 1);
    CHECK(strcmp(OrvexTestCommandLineParser_GetApplicationName(), "./mytest") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetXmlFilename(), "report.xml") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetOutputFilename(), "out.txt") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetTestPath(), "TestSuiteUsb") == 0);
    CHECK(OrvexTestCommandLineParser_GetWaitBeforeExit() == 0);
    CHECK(OrvexTestCommandLineParser_GetHelpRequested() == 0);
    CHECK(strcmp(environmentText("TEST_SESSION_GUID"), "1234") == 0);
    CHECK(strcmp(environmentText("ORVEX_GIGE_STREAM_GEVSCPS"), "8192") == 0);
    checkHelpMessage(NULL, "./mytest [-?] [-camemu n]");
    checkHelpMessage("", "./mytest [-?] [-camemu n]");
    checkHelpMessage("prog", "prog [-?] [-camemu n]");

    memset(information, 'X', sizeof information);
    CHECK(OrvexTestCommandLineParser_GetTestRunInformation(information) == 1);
    CHECK(slotHolds(information, 0, "orvex"));
    CHECK(slotHolds(information, 1, "1234"));
    CHECK(isZero(information, 512, 1280));
    CHECK(slotHolds(information, 5, "0"));
    CHECK(isZero(information, 1536, 3328));
    CHECK(slotHolds(information, 13, "any"));
    CHECK(isZero(information, 3584, sizeof information));
}

static void checkWideParse(void) {
    wchar_t name[] = L"wide";
    wchar_t output[] = L"-o";
    wchar_t outputFilename[] = {0xE9, L'.', L't', L'x', L't', 0};
    wchar_t wait[] = L"-w";
    wchar_t help[] = L"-?";
    wchar_t* arguments[] = {name, output, outputFilename, wait, help};

    CHECK(OrvexTestCommandLineParser_ParseW(5, arguments) == 1);
    CHECK(strcmp(OrvexTestCommandLineParser_GetApplicationName(), "./mytest") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetOutputFilename(), "\xC3\xA9.txt") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetTestPath(), "TestSuiteUsb") == 0);
    CHECK(OrvexTestCommandLineParser_GetWaitBeforeExit() == 1);
    CHECK(OrvexTestCommandLineParser_GetHelpRequested() == 1);
}

static void checkTextThatIsTooLong(void) {
    char name[] = "long";
    char runName[] = "-tdc_runname";
    char text[301];
    char* arguments[] = {name, runName, text};
    char information[ORVEX_TEST_RUN_INFORMATION_SIZE];

    memset(text, 'r', 300);
    text[300] = '\0';
    CHECK(OrvexTestCommandLineParser_Parse(3, arguments) == 1);
    memset(information, 'X', sizeof information);
    CHECK(OrvexTestCommandLineParser_GetTestRunInformation(information) == 0);
    CHECK(slotHolds(information, 0, "orvex"));
    CHECK(slotHolds(information, 1, "1234"));
    CHECK(isZero(information, 512, sizeof information));

    text[255] = '\0';
    CHECK(OrvexTestCommandLineParser_Parse(3, arguments) == 1);
    CHECK(OrvexTestCommandLineParser_GetTestRunInformation(information) == 1);
    CHECK(slotHolds(information, 2, text));
}

static void checkParseThatFails(void) {
    char name[] = "failing";
    char output[] = "-o=failed.txt";
    char packetSize[] = "-packetsize=large";
    char* arguments[] = {name, output, packetSize};

    CHECK(OrvexTestCommandLineParser_Parse(3, arguments) == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetOutputFilename(), "failed.txt") == 0);
}

int main(void) {
    checkBeforeAnyParse();
    checkRefusedParses();
    checkParse();
    checkWideParse();
    checkTextThatIsTooLong();
    checkParseThatFails();
    (void)printf("%d checks, %d failures\n", checks, failures);
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
