#include "command_line.h"
#include "peer.h"

#include <popt.h>

#include <cstdlib>
#include <iterator>
#include <stdexcept>

namespace {

std::size_t countAndFree(const char** list) {
    std::size_t count = 0;
    for (; list != nullptr && list[count] != nullptr; ++count) {
        std::free(const_cast<char*>(list[count]));
    }
    std::free(list);
    return count;
}

Found parse(int argc, char** argv) {
    char* values[std::size(valueOptions)] = {};
    const char** transportLayers = nullptr;
    const char** properties = nullptr;
    int wait = 0;

    poptOption options[std::size(valueOptions) + 4] = {};
    poptOption* next = options;
    for (std::size_t i = 0; i < std::size(valueOptions); ++i) {
        const char* name = valueOptions[i];
        const bool isShort = name[1] == '\0';
        *next++ = {isShort ? nullptr : name,
                   isShort ? name[0] : '\0',
                   POPT_ARG_STRING,
                   &values[i],
                   0,
                   nullptr,
                   nullptr};
    }
    *next++ = {"tl", '\0', POPT_ARG_ARGV, &transportLayers, 0, nullptr, nullptr};
    *next++ = {nullptr, 'p', POPT_ARG_ARGV, &properties, 0, nullptr, nullptr};
    *next = {nullptr, 'w', POPT_ARG_NONE, &wait, 0, nullptr, nullptr};

    poptContext context = poptGetContext(nullptr, argc, const_cast<const char**>(argv), options, 0);
    if (poptGetNextOpt(context) != -1) {
        throw std::runtime_error("popt stopped early");
    }
    Found found;
    found.wait = wait != 0;
    const char** testPaths = poptGetArgs(context);
    while (testPaths != nullptr && testPaths[found.testPaths] != nullptr) {
        ++found.testPaths;
    }
    poptFreeContext(context);

    found.transportLayers = countAndFree(transportLayers);
    countAndFree(properties);
    for (char* value : values) {
        std::free(value);
    }
    return found;
}

[[maybe_unused]] const bool isRegistered = registerPeer("popt", parse);

}  // namespace
