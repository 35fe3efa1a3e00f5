/* Parses the command line through the C interface and prints what is known about the test run:
 *
 *     c_client -tdc_guid 1234 -tl DravikGigE */

#include "OrvexTestCommandLineParserC.h"

#include <stdio.h>
#include <stdlib.h>

/* The slots of the record, in order. */
static const char* const slot_names[] = {
    "group",         "session",  "run name",         "run description",  "product",
    "zero",          "user",     "revision",         "branch",           "second revision",
    "second branch", "computer", "operating system", "transport layers", "report file",
    "test name",
};

/* The first call returns the size, the second one copies. */
static int print_usage(FILE* stream) {
    const size_t size = OrvexTestCommandLineParser_GetHelpMessage(NULL, NULL, 0);
    char* text = malloc(size);
    if (text == NULL) {
        return 0;
    }
    OrvexTestCommandLineParser_GetHelpMessage(NULL, text, size);
    const int printed = fprintf(stream, "%s\n", text);
    free(text);
    return printed >= 0;
}

static int print_test_run_information(void) {
    char record[ORVEX_TEST_RUN_INFORMATION_SIZE];
    if (!OrvexTestCommandLineParser_GetTestRunInformation(record)) {
        (void)fprintf(stderr, "A string is too long for its slot.\n");
        return 0;
    }
    for (size_t i = 0; i < sizeof slot_names / sizeof slot_names[0]; ++i) {
        printf("%-16s  %s\n", slot_names[i], record + i * ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE);
    }
    return 1;
}

int main(int argc, char** argv) {
    if (!OrvexTestCommandLineParser_Parse(argc, argv)) {
        print_usage(stderr);
        return 1;
    }
    if (OrvexTestCommandLineParser_GetHelpRequested()) {
        return print_usage(stdout) ? 0 : 1;
    }
    return print_test_run_information() ? 0 : 1;
}
