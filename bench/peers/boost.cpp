#include "peer.h"

#include <boost/program_options.hpp>

#include <iterator>
#include <string>
#include <vector>

namespace {

namespace options = boost::program_options;

Found parse(int argc, char** argv) {
    std::string values[std::size(valueOptions)];
    std::vector<std::string> transportLayers;
    std::vector<std::string> properties;
    std::vector<std::string> testPaths;
    bool wait = false;

    options::options_description description;
    options::options_description_easy_init add = description.add_options();
    for (std::size_t i = 0; i < std::size(valueOptions); ++i) {
        const std::string name = valueOptions[i];
        add((name.size() == 1 ? "," + name : name).c_str(), options::value(&values[i]));
    }
    add("tl", options::value(&transportLayers));
    add(",p", options::value(&properties));
    add(",w", options::bool_switch(&wait));
    add("testpaths", options::value(&testPaths));
    options::positional_options_description positionals;
    positionals.add("testpaths", -1);

    options::variables_map map;
    options::store(
        options::command_line_parser(argc, argv).options(description).positional(positionals).run(), map);
    options::notify(map);
    return {transportLayers.size(), testPaths.size(), wait};
}

[[maybe_unused]] const bool isRegistered = registerPeer("Boost.Program_options", parse);

}  // namespace
