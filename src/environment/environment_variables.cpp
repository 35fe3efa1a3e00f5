#include "environment/environment_variables.h"

#include <cstdlib>
#include <string>

namespace orvex {

bool getEnvironmentVariable(const char* name, std::string& value) {
    const char* text = std::getenv(name);
    if (text == nullptr) {
        return false;
    }
    value = text;
    return true;
}

bool setEnvironmentVariable(const char* name, const std::string& value) {
    return setenv(name, value.c_str(), 1) == 0;
}

}  // namespace orvex
