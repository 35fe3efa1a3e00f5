#include "command_line.h"
#include "peer.h"

#include <cstddef>
#include <cxxopts.hpp>
#include <iterator>

namespace {

Found parse(int argc, char** argv) {
    Variables variables;

    cxxopts::Options options("runner");
    cxxopts::OptionAdder add = options.add_options();
    for (std::size_t i = 0; i < std::size(valueOptions); ++i) {
        add(valueOptions[i], "", cxxopts::value(variables.values[i]));
    }
    add("tl", "", cxxopts::value(variables.transportLayers));
    add("p", "", cxxopts::value(variables.properties));
    add("w", "", cxxopts::value(variables.wait));
    add("testpaths", "", cxxopts::value(variables.testPaths));
    options.parse_positional("testpaths");
    options.parse(argc, argv);
    return variables.found();
}

[[maybe_unused]] const bool isRegistered = registerPeer("cxxopts", parse);

}  // namespace
