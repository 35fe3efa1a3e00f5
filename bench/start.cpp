// A program that parses its arguments once, with the parser of the one file of peers/ that it is linked with.
// Without one, it is the empty program to compare with.

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
    return !arguments.empty() && (parse == nullptr || parse(argc, argv).wait) ? 0 : 1;
}
