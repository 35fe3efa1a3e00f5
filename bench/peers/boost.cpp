#include "command_line.h"
#include "peer.h"

#include <boost/program_options.hpp>
#include <cstddef>
#include <iterator>
#include <string>

namespace {

namespace options = boost::program_options;

Found parse(int argc, char** argv) {
    Variables variables;

    options::options_description description;
    options::options_description_easy_init add = description.add_options();
    for (std::size_t i = 0; i < std::size(valueOptions); ++i) {
        const std::string name = valueOptions[i];
        add((name.size() == 1 ? "," + name : name).c_str(), options::value(&variables.values[i]));
    }
    add("tl", options::value(&variables.transportLayers));
    add(",p", options::value(&variables.properties));
    add(",w", options::bool_switch(&variables.wait));
    add("testpaths", options::value(&variables.testPaths));
    options::positional_options_description positionals;
    positionals.add("testpaths", -1);

    options::variables_map map;
    options::store(
        options::command_line_parser(argc, argv).options(description).positional(positionals).run(), map);
    options::notify(map);
    return variables.found();
}

[[maybe_unused]] const bool isRegistered = registerPeer("Boost.Program_options", parse);

}  // namespace
