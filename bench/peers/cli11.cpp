#include "command_line.h"
#include "peer.h"

#include <CLI/CLI.hpp>
#include <cstddef>
#include <iterator>
#include <string>

namespace {

Found parse(int argc, char** argv) {
    Variables variables;

    CLI::App app;
    for (std::size_t i = 0; i < std::size(valueOptions); ++i) {
        const std::string name = valueOptions[i];
        app.add_option((name.size() == 1 ? "-" : "--") + name, variables.values[i]);
    }
    app.add_option("--tl", variables.transportLayers)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("-p", variables.properties)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_flag("-w", variables.wait);
    app.add_option("testpaths", variables.testPaths);
    app.parse(argc, argv);
    return variables.found();
}

[[maybe_unused]] const bool isRegistered = registerPeer("CLI11", parse);

}  // namespace
