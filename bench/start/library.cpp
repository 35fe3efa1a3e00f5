#include "OrvexTestCommandLineParser.h"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    OrvexTestCommandLineParser parser;
    return !arguments.empty() && parser.Parse(argc, argv) ? 0 : 1;
}
