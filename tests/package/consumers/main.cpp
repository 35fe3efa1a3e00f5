#include <OrvexTestCommandLineParser.h>

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    OrvexTestCommandLineParser parser;
    if (!parser.Parse(argc, argv)) {
        return EXIT_FAILURE;
    }
    const char* deviceFilter = std::getenv("ORVEX_DEVICE_FILTER");
    std::cout << parser.getOutputFilename() << '\n'
              << parser.getFirstTestPath() << '\n'
              << (deviceFilter == nullptr ? "" : deviceFilter) << '\n';
    return EXIT_SUCCESS;
}
