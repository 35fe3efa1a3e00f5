// Shows what a test program sees of its arguments, and where each of them came from.
//
//     ORVEX_TEST_ARGS='-tl DravikGigE' show_arguments -o result.xml TestSuiteGigE
//     SHOW_ARGUMENTS_FORMAT=json show_arguments -packetsize 1500
//
// Exits with 0; with 1, and the usage text on standard error, when the arguments are bad; and with 2
// when it cannot do its own work.

#include "observation.h"
#include "report_json.h"
#include "report_text.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

bool isJsonWanted() {
    const char* variable = std::getenv("SHOW_ARGUMENTS_FORMAT");
    const std::string format = variable == nullptr ? "" : variable;
    if (!format.empty() && format != "text" && format != "json") {
        throw std::runtime_error("SHOW_ARGUMENTS_FORMAT must be text or json");
    }
    return format == "json";
}

int showArguments(int argc, char** argv) {
    const bool isJson = isJsonWanted();
    OrvexTestCommandLineParser parser;
    const Observation observation = observeParse(parser, argc, argv);
    const std::string usage = parser.getHelpMessage(argc > 0 ? argv[0] : "");

    if (isJson) {
        reportAsJson(observation, std::cout);
    } else if (observation.succeeded && parser.helpRequested()) {
        std::cout << usage << '\n';
    } else {
        reportAsText(observation, formatForStandardOutput(), std::cout);
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("cannot write to standard output");
    }
    if (!observation.succeeded) {
        std::cerr << "show_arguments: the parse failed: " << observation.failure << "\n\n" << usage << '\n';
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return showArguments(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "show_arguments: " << error.what() << '\n';
        return 2;
    }
}
