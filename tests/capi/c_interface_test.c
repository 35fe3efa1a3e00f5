/* A narrow and a wide parse, called from C. */

#include "OrvexTestCommandLineParserC.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <wchar.h>

static int failures = 0;

/* Not assert, which a release build removes. */
#define CHECK(condition)                                                                  \
    do {                                                                                  \
        if (!(condition)) {                                                               \
            ++failures;                                                                   \
            (void)fprintf(stderr, "%s:%d: failed: %s\n", __FILE__, __LINE__, #condition); \
        }                                                                                 \
    } while (0)

static void checkParse(void) {
    char name[] = "./mytest";
    char xml[] = "-x=report.xml";
    char output[] = "-o=out.txt";
    char path[] = "TestSuiteUsb";
    char* arguments[] = {name, xml, output, path};
    char slots[16][ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE];

    CHECK(OrvexTestCommandLineParser_Parse(4, arguments) == 1);
    CHECK(strcmp(OrvexTestCommandLineParser_GetApplicationName(), "./mytest") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetXmlFilename(), "report.xml") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetOutputFilename(), "out.txt") == 0);
    CHECK(strcmp(OrvexTestCommandLineParser_GetTestPath(), "TestSuiteUsb") == 0);
    CHECK(OrvexTestCommandLineParser_GetTestRunInformation(slots[0]) == 1);
    CHECK(strcmp(slots[0], "orvex") == 0);
    CHECK(strcmp(slots[13], "any") == 0);
}

static void checkWideParse(void) {
    wchar_t name[] = L"wide";
    wchar_t output[] = {L'-', L'o', L'=', 0xE9, 0};
    wchar_t wait[] = L"-w";
    wchar_t help[] = L"-?";
    wchar_t* arguments[] = {name, output, wait, help};

    CHECK(OrvexTestCommandLineParser_ParseW(4, arguments) == 1);
    CHECK(strcmp(OrvexTestCommandLineParser_GetOutputFilename(), "\xC3\xA9") == 0);
    CHECK(OrvexTestCommandLineParser_GetWaitBeforeExit() == 1);
    CHECK(OrvexTestCommandLineParser_GetHelpRequested() == 1);
}

int main(void) {
    checkParse();
    checkWideParse();
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
