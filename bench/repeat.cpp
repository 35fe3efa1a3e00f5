// Repeats a construction or a parse, for tools that count instructions or allocations. Subtract two runs with
// different counts to cancel out process start-up.
//
//     bench_repeat construct|--name=value|"--name value" TIMES

#include "command_line.h"

#include "OrvexTestCommandLineParser.h"

#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    const std::string what = argv[1];
    CommandLine commandLine(
        typicalArguments(what == "--name value" ? Form::NameValue : Form::NameEqualsValue));
    for (long left = std::strtol(argv[2], nullptr, 10); left > 0; --left) {
        OrvexTestCommandLineParser parser;
        if (what != "construct" && !parser.Parse(commandLine.argc(), commandLine.argv())) {
            return 1;
        }
    }
    return 0;
}
