#include "command_line.h"
#include "peer.h"

#include "OrvexTestCommandLineParser.h"

#include <stdexcept>
#include <string>

namespace {

Found parse(int argc, char** argv) {
    OrvexTestCommandLineParser parser;
    if (!parser.Parse(argc, argv)) {
        throw std::runtime_error("the parse failed");
    }
    // A comma follows every transport layer but the last.
    return {parser.getTlList().find(',') == std::string::npos ? 1U : 2U, parser.getTestPaths().size(),
            parser.waitBeforeExit()};
}

[[maybe_unused]] const bool isRegistered = registerLibrary(parse);

}  // namespace
