#include "differential/process_environment.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <string_view>

// Not declared by every platform.
extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace differential {
namespace {

ProcessEnvironment* active = nullptr;

}  // namespace

ProcessEnvironment::ProcessEnvironment(const std::map<std::string, std::string>& variables,
                                       const std::set<std::string>& refused)
    : refused(refused), saved(environ) {
    entries.reserve(variables.size() + 32);
    for (const auto& [name, value] : variables) {
        std::string& text = texts.emplace_back(name);
        text += '=';
        text += value;
        entries.push_back(text.data());
    }
    entries.push_back(nullptr);
    environ = entries.data();
    active = this;
    setenvInstead = [](const char* name, const char* value, int overwrite) {
        return active->set(name, value, overwrite != 0);
    };
}

ProcessEnvironment::~ProcessEnvironment() {
    setenvInstead = nullptr;
    environ = saved;
}

std::map<std::string, std::string> ProcessEnvironment::read() {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text(*entry);
        const std::size_t equals = text.find('=');
        const bool isNew = variables.emplace(text.substr(0, equals), text.substr(equals + 1)).second;
        if (!isNew) {
            variables.emplace(std::string(text) + " (again)", "");
        }
    }
    return variables;
}

int ProcessEnvironment::set(const char* name, const char* value, bool overwrite) {
    if (name == nullptr || *name == '\0' || std::strchr(name, '=') != nullptr) {
        errno = EINVAL;
        return -1;
    }
    if (refused.count(name) != 0) {
        errno = ENOMEM;
        return -1;
    }
    const std::string beginning = std::string(name) + "=";
    for (char*& entry : entries) {
        if (entry != nullptr && std::strncmp(entry, beginning.c_str(), beginning.size()) == 0) {
            if (overwrite) {
                entry = texts.emplace_back(beginning + value).data();
            }
            return 0;
        }
    }
    entries.back() = texts.emplace_back(beginning + value).data();
    entries.push_back(nullptr);
    environ = entries.data();
    return 0;
}

}  // namespace differential
