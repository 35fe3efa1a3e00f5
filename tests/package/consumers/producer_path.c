/* Prints the search path that a parse leaves, one directory a line. */

#include <OrvexTestCommandLineParserC.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    const char* path = NULL;
    if (!OrvexTestCommandLineParser_Parse(argc, argv)) {
        return EXIT_FAILURE;
    }
    path = getenv("GENICAM_GENTL64_PATH");
    if (path == NULL) {
        return EXIT_SUCCESS;
    }
    for (; *path != '\0'; ++path) {
        putchar(*path == ':' ? '\n' : *path);
    }
    putchar('\n');
    return EXIT_SUCCESS;
}
