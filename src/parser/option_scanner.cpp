#include "parser/option_scanner.h"

#include <locale>
#include <sstream>
#include <string>
#include <string_view>

namespace orvex {

bool isNumber(std::string_view token) {
    std::istringstream stream{std::string(token)};
    // A test program that sets a global locale must not change what counts as a number.
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return !stream.fail();
}

}  // namespace orvex
