// Shows what a test program sees of its arguments, and where each of them came from.
//
//     ORVEX_TEST_ARGS='-tl DravikGigE' show_arguments -o result.xml TestSuiteGigE
//
// The manual page, show_arguments(1), says how it is used and how it exits.

#include "OrvexTestCommandLineParser.h"
#include "report.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace {

using namespace tool;

std::string_view readVariable(const char* name) {
    const char* text = std::getenv(name);
    return text == nullptr ? "" : text;
}

bool isTerminal() {
    return isatty(STDOUT_FILENO) != 0;
}

Screen findScreen() {
    if (!isTerminal()) {
        return {};
    }
    winsize size = {};
    const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    const std::string_view terminal = readVariable("TERM");
    const bool hasColour = !terminal.empty() && terminal != "dumb" && readVariable("NO_COLOR").empty();
    return {isKnown ? size.ws_col : std::size_t{80}, hasColour};
}

// With other arguments, print the report: the help switch may be one of the things that the user wants
// explained.
bool isUsageWanted(const Report& report) {
    const std::vector<Argument>& arguments = report.trace.arguments;
    return arguments.size() == 2 && findHelpSwitch(report.trace) == &arguments[1] &&
           arguments[1].source == commandLine;
}

int showArguments(int argc, char** argv) {
    const std::string_view format = readVariable("SHOW_ARGUMENTS_FORMAT");
    if (!format.empty() && format != "text" && format != "json") {
        throw std::runtime_error("SHOW_ARGUMENTS_FORMAT must be text or json");
    }
    const Report report = makeReport(argc, argv);
    if (format == "json") {
        std::cout << asJson(report);
    } else if (isUsageWanted(report)) {
        std::cout << OrvexTestCommandLineParser().getHelpMessage(argv[0])
                  << "\n\nThe manual page of this program: show_arguments(1)\n";
    } else {
        std::cout << asText(report, findScreen());
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("cannot write to standard output");
    }
    if (report.seen.succeeded) {
        return 0;
    }
    // On a terminal, the report already ends with the reason.
    if (format == "json" || !isTerminal()) {
        std::cerr << "show_arguments: the parse failed: " << report.reason << '\n';
    }
    return 1;
}

}  // namespace

int main(int argc, char** argv) try {
    return showArguments(argc, argv);
} catch (const std::exception& error) {
    std::cerr << "show_arguments: " << error.what() << '\n';
    return 2;
}
