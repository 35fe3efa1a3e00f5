#include "differential/process_environment.h"

#include "support/replaced_functions.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

// Not declared by every platform.
extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace differential {

ProcessEnvironment* ProcessEnvironment::active = nullptr;

ProcessEnvironment::ProcessEnvironment(const std::map<std::string, std::string>& variables,
                                       std::set<std::string> refused)
    : refused(std::move(refused)), saved(environ) {
    entries.reserve(variables.size() + 32);
    for (const auto& [name, value] : variables) {
        entries.push_back(strings.emplace_back(name + "=" + value).data());
    }
    entries.push_back(nullptr);
    environ = entries.data();
    active = this;
    setenvInstead = [](const char* name, const char* value, int /*overwrite*/) {
        return active->set(name, value);
    };
}

ProcessEnvironment::~ProcessEnvironment() {
    setenvInstead = nullptr;
    environ = saved;
}

int ProcessEnvironment::set(const char* name, const char* value) {
    if (refused.count(name) != 0) {
        errno = ENOMEM;
        return -1;
    }
    const std::string beginning = std::string(name) + "=";
    for (char*& entry : entries) {
        if (entry != nullptr && std::strncmp(entry, beginning.c_str(), beginning.size()) == 0) {
            entry = strings.emplace_back(beginning + value).data();
            return 0;
        }
    }
    entries.back() = strings.emplace_back(beginning + value).data();
    entries.push_back(nullptr);
    environ = entries.data();
    return 0;
}

}  // namespace differential
