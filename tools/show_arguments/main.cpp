// Shows what a test program sees of its arguments, and where each of them came from.
//
//     ORVEX_TEST_ARGS='-tl DravikGigE' show_arguments -o result.xml TestSuiteGigE
//
// SHOW_ARGUMENTS_FORMAT=json asks for JSON instead of text, NO_COLOR=1 for text without colour. Exits
// with 0; with 1, and the reason on standard error, when the arguments are bad; and with 2 when it cannot
// do its own work.

#include "show_arguments.h"

#include <unistd.h>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

int main(int argc, char** argv) try {
    const auto readVariable = [](const char* name) {
        const char* text = std::getenv(name);
        return std::string_view(text == nullptr ? "" : text);
    };
    const std::string_view format = readVariable("SHOW_ARGUMENTS_FORMAT");
    if (!format.empty() && format != "text" && format != "json") {
        throw std::runtime_error("SHOW_ARGUMENTS_FORMAT must be text or json");
    }
    OrvexTestCommandLineParser parser;
    const Json report = reportParse(parser, argc, argv);
    // The parser may have stopped before it came to this switch.
    const bool isHelpWanted =
        parser.helpRequested() || std::count(argv, argv + argc, std::string_view("-?")) != 0;
    if (format == "json") {
        std::cout << report.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    } else if (isHelpWanted) {
        std::cout << parser.getHelpMessage(argc > 0 ? argv[0] : "") << '\n';
    } else {
        const std::string_view terminal = readVariable("TERM");
        const bool hasColour = isatty(STDOUT_FILENO) != 0 && !terminal.empty() && terminal != "dumb";
        std::cout << asText(report, hasColour && readVariable("NO_COLOR").empty());
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("cannot write to standard output");
    }
    if (report["succeeded"]) {
        return 0;
    }
    std::cerr << "show_arguments: the parse failed: " << report["reason"].get<std::string>() << '\n'
              << (format == "json" || isHelpWanted ? "" : "-? shows the usage text\n");
    return 1;
} catch (const std::exception& error) {
    std::cerr << "show_arguments: " << error.what() << '\n';
    return 2;
}
