#include "environment/split_string.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex {

bool splitString(const char* text, char delimiter, std::vector<std::string>& parts) {
    if (text == nullptr || delimiter == '\0' || *text == '\0') {
        return false;
    }
    const std::string_view whole(text);
    parts.reserve(parts.size() + std::count(whole.begin(), whole.end(), delimiter) + 1);
    std::size_t start = 0;
    for (std::size_t end = whole.find(delimiter); end != std::string_view::npos;
         end = whole.find(delimiter, start)) {
        parts.emplace_back(whole.substr(start, end - start));
        start = end + 1;
    }
    if (start < whole.size()) {
        parts.emplace_back(whole.substr(start));
    }
    return true;
}

}  // namespace orvex
