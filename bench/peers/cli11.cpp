#include "peer.h"

#include <CLI/CLI.hpp>

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

    CLI::App app;
    for (std::size_t i = 0; i < std::size(valueOptions); ++i) {
        const std::string name = valueOptions[i];
        app.add_option((name.size() == 1 ? "-" : "--") + name, values[i]);
    }
    app.add_option("--tl", transportLayers)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("-p", properties)->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_flag("-w", wait);
    app.add_option("testpaths", testPaths);
    app.parse(argc, argv);
    return {transportLayers.size(), testPaths.size(), wait};
}

[[maybe_unused]] const bool isRegistered = registerPeer("CLI11", parse);

}  // namespace
