// A doctest program. Arguments before the first "--" are for the parser, those after it for doctest:
//
//     doctest_suite -tl DravikGigE:SocketDriver -packetsize 1500 PacketSize -- --success --out=report.txt
//
// Without "--", doctest gets no arguments. The parser treats "--" as an ordinary unknown option, so the
// program splits the arguments before parsing. doctest reports success when a test path selects nothing.

#include "OrvexTestCommandLineParser.h"

#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace {

std::string readVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

TEST_CASE("PacketSize::FitsJumboFrame") {
    CHECK(std::strtol(readVariable("ORVEX_GIGE_STREAM_GEVSCPS").c_str(), nullptr, 10) <= 9000);
}

TEST_CASE("DeviceFilter::IncludesGigECameras") {
    CHECK(readVariable("ORVEX_DEVICE_FILTER").find("DeviceClass=DravikGigE") != std::string::npos);
}

}  // namespace

int main(int argc, char** argv) {
    char** const end = argv + argc;
    char** const cut = std::find(argv, end, std::string_view("--"));
    OrvexTestCommandLineParser parser;
    const bool parsed = parser.Parse(static_cast<int>(cut - argv), argv);
    if (!parsed || parser.helpRequested()) {
        (parsed ? std::cout : std::cerr) << parser.getHelpMessage("") << '\n';
        return parsed ? 0 : 2;
    }

    doctest::Context context;
    // A test path selects the test cases whose names begin with it.
    for (const std::string& path : parser.getTestPaths()) {
        context.addFilter("test-case", (path + "*").c_str());
    }
    if (cut != end) {
        // doctest's arguments, too, begin with the program name.
        *cut = argv[0];
        context.applyCommandLine(static_cast<int>(end - cut), cut);
    }
    return context.run();
}
