#include "command_line.h"
#include "peer.h"

#include <args.hxx>

#include <list>
#include <string>

namespace {

args::Matcher matcher(const std::string& name) {
    return name.size() == 1 ? args::Matcher{name[0]} : args::Matcher{name};
}

Found parse(int argc, char** argv) {
    args::ArgumentParser parser("");
    std::list<args::ValueFlag<std::string>> values;
    for (const std::string name : valueOptions) {
        values.emplace_back(parser, name, "", matcher(name));
    }
    args::ValueFlagList<std::string> transportLayers(parser, "tl", "", {"tl"});
    args::ValueFlagList<std::string> properties(parser, "p", "", {'p'});
    args::Flag wait(parser, "w", "", {'w'});
    args::PositionalList<std::string> testPaths(parser, "testpaths", "");
    parser.ParseCLI(argc, argv);
    return {transportLayers.Get().size(), testPaths.Get().size(), wait.Get()};
}

[[maybe_unused]] const bool isRegistered = registerPeer("args", parse);

}  // namespace
