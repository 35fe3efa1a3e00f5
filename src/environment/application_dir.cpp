#include "environment/application_dir.h"

#include <dlfcn.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace orvex {

std::string getApplicationDir() {
    Dl_info library;
    if (dladdr(reinterpret_cast<void*>(&getApplicationDir), &library) == 0) {
        throw std::runtime_error("OrvexTestCommandLineParser::getApplicationDir> dladdr() failed");
    }
    std::string path = library.dli_fname;
    const std::size_t fileSeparator = path.rfind('/');
    if (fileSeparator != std::string::npos) {
        path.erase(fileSeparator);
        path += "/../../../..";
    }

    const std::unique_ptr<char, void (*)(void*)> resolved(realpath(path.c_str(), nullptr), std::free);
    if (resolved == nullptr) {
        throw std::runtime_error("OrvexTestCommandLineParser::getApplicationDir> realpath() failed");
    }
    std::string directory = resolved.get();
    const std::size_t lastSeparator = directory.rfind('/');
    if (lastSeparator == std::string::npos) {
        // The message is fixed; it names Parse, not this function.
        throw std::runtime_error("OrvexTestCommandLineParser::Parse> can't query path");
    }
    directory.erase(lastSeparator);
    return directory;
}

}  // namespace orvex
