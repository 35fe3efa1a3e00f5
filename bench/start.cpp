// Parses its arguments once, with the parser from the one file of peers/ that is linked in. Linked without
// such a file, it is the empty program for comparison.

#include "command_line.h"
#include "peer.h"

#include <cstddef>
#include <string>
#include <vector>

namespace {

ParseOnce parse = nullptr;

}  // namespace

bool registerPeer(const char* /*name*/, ParseOnce parseOnce, std::size_t /*transportLayers*/) noexcept {
    parse = parseOnce;
    return true;
}

bool registerPeer(const char* name, Form /*form*/, ParseOnce parseOnce,
                  std::size_t transportLayers) noexcept {
    return registerPeer(name, parseOnce, transportLayers);
}

bool registerLibrary(ParseOnce parseOnce) noexcept {
    return registerPeer("library", parseOnce, 2);
}

int main(int argc, char** argv) {
    // Like every test program, the empty one uses the C++ library.
    const std::vector<std::string> arguments(argv, argv + argc);
    if (parse == nullptr) {
        return arguments.empty() ? 1 : 0;
    }
    const Found found = parse(argc, argv);
    return found.testPaths == 2 && found.wait ? 0 : 1;
}
