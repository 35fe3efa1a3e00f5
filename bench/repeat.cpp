// Does one thing a number of times, for tools that count what a process does. The difference between two
// numbers is the thing itself, without the start of the process.
//
//     bench_repeat construct|joined|separate TIMES

#include "command_line.h"

#include "OrvexTestCommandLineParser.h"

#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    const std::string what = argv[1];
    CommandLine commandLine(typicalArguments(what == "separate" ? Form::Separate : Form::Joined));
    for (long left = std::strtol(argv[2], nullptr, 10); left > 0; --left) {
        OrvexTestCommandLineParser parser;
        if (what != "construct" && !parser.Parse(commandLine.argc(), commandLine.argv())) {
            return 1;
        }
    }
    return 0;
}
