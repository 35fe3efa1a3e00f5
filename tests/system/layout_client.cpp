// Prints the SDK's directory as the linked library finds it, and GENICAM_GENTL64_PATH after a parse that
// starts with "/x"; then the same path from a parse with each library file.
// Usage: layout_client DIRECTORY-TO-CHANGE-TO [FILE...]

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>

namespace {

void printPath(const char* library, int (*parse)(int, char**)) {
    setenv("GENICAM_GENTL64_PATH", "/x", 1);
    char name[] = "layout_client";
    char option[] = "-tl=DravikGTC";
    char* arguments[] = {name, option};
    const int result = parse(2, arguments);
    std::cout << library << " gives " << result << ": " << std::getenv("GENICAM_GENTL64_PATH") << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || chdir(argv[1]) != 0) {
        return EXIT_FAILURE;
    }
    try {
        std::cout << OrvexTestCommandLineParser::getApplicationDir() << '\n';
    } catch (const std::exception& exception) {
        std::cout << exception.what() << '\n';
    }
    printPath("linked", &OrvexTestCommandLineParser_Parse);
    for (int i = 2; i < argc; ++i) {
        void* const library = dlopen(argv[i], RTLD_NOW | RTLD_LOCAL);
        void* const function =
            library == nullptr ? nullptr : dlsym(library, "OrvexTestCommandLineParser_Parse");
        if (function == nullptr) {
            std::cout << dlerror() << '\n';
            return EXIT_FAILURE;
        }
        printPath("loaded", reinterpret_cast<int (*)(int, char**)>(function));
    }
    return EXIT_SUCCESS;
}
