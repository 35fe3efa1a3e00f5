#include "command_line.h"
#include "peer.h"

#include <tclap/CmdLine.h>

#include <list>
#include <string>

namespace {

Found parse(int argc, char** argv) {
    TCLAP::CmdLine commandLine("", ' ', "none", false);
    std::list<TCLAP::ValueArg<std::string>> values;
    for (const std::string name : valueOptions) {
        const bool isShort = name.size() == 1;
        values.emplace_back(isShort ? name : "", isShort ? "long_" + name : name, "", false, "", "",
                            commandLine);
    }
    TCLAP::MultiArg<std::string> transportLayers("", "tl", "", false, "", commandLine);
    TCLAP::MultiArg<std::string> properties("p", "property", "", false, "", commandLine);
    TCLAP::SwitchArg wait("w", "wait", "", commandLine);
    TCLAP::UnlabeledMultiArg<std::string> testPaths("testpaths", "test paths", false, "", commandLine);
    commandLine.parse(argc, argv);
    return {transportLayers.getValue().size(), testPaths.getValue().size(), wait.getValue()};
}

[[maybe_unused]] const bool isRegistered = registerPeer("TCLAP", Form::NameValue, parse);

}  // namespace
