// Prints where the library that it is linked against believes the SDK to be. With an argument, it
// changes to that directory first.

#include "OrvexTestCommandLineParser.h"

#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace {

void printApplicationDir() {
    try {
        const std::string directory = OrvexTestCommandLineParser::getApplicationDir();
        std::cout << "directory: " << directory << '\n';
    } catch (const std::exception& exception) {
        std::cout << "exception: " << exception.what() << '\n';
    }
}

void printParse() {
    char name[] = "layout_client";
    char option[] = "-tl";
    char value[] = "DravikGTC";
    char* arguments[] = {name, option, value};
    OrvexTestCommandLineParser parser;
    std::cout << "parse: " << (parser.Parse(3, arguments) ? "true" : "false") << '\n';
    const char* path = std::getenv("GENICAM_GENTL64_PATH");
    std::cout << "path: " << (path == nullptr ? "(undefined)" : path) << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && chdir(argv[1]) != 0) {
        return EXIT_FAILURE;
    }
    printApplicationDir();
    printParse();
    return EXIT_SUCCESS;
}
