#include "peer.h"

#include <cxxopts.hpp>

#include <iterator>
#include <string>
#include <vector>

namespace {

Found parse(int argc, char** argv) {
    std::string values[std::size(valueOptions)];
    std::vector<std::string> transportLayers;
    std::vector<std::string> properties;
    std::vector<std::string> testPaths;
    bool wait = false;

    cxxopts::Options options("runner");
    cxxopts::OptionAdder add = options.add_options();
    for (std::size_t i = 0; i < std::size(valueOptions); ++i) {
        add(valueOptions[i], "", cxxopts::value(values[i]));
    }
    add("tl", "", cxxopts::value(transportLayers));
    add("p", "", cxxopts::value(properties));
    add("w", "", cxxopts::value(wait));
    add("testpaths", "", cxxopts::value(testPaths));
    options.parse_positional("testpaths");
    options.parse(argc, argv);
    return {transportLayers.size(), testPaths.size(), wait};
}

[[maybe_unused]] const bool isRegistered = registerPeer("cxxopts", parse);

}  // namespace
