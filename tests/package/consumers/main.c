#include <OrvexTestCommandLineParserC.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    const char* deviceFilter = NULL;
    if (!OrvexTestCommandLineParser_Parse(argc, argv)) {
        return EXIT_FAILURE;
    }
    deviceFilter = getenv("ORVEX_DEVICE_FILTER");
    printf("%s\n%s\n%s\n", OrvexTestCommandLineParser_GetOutputFilename(),
           OrvexTestCommandLineParser_GetTestPath(), deviceFilter == NULL ? "" : deviceFilter);
    return EXIT_SUCCESS;
}
