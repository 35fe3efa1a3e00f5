#include <OrvexTestCommandLineParserC.h>
#include <stdio.h>
#include <stdlib.h>

static void printVariable(const char* name) {
    const char* value = getenv(name);
    puts(value == NULL ? "" : value);
}

int main(int argc, char** argv) {
    if (!OrvexTestCommandLineParser_Parse(argc, argv)) {
        return EXIT_FAILURE;
    }
    puts(OrvexTestCommandLineParser_GetOutputFilename());
    puts(OrvexTestCommandLineParser_GetTestPath());
    printVariable("ORVEX_DEVICE_FILTER");
    printVariable("GENICAM_GENTL64_PATH");
    return EXIT_SUCCESS;
}
