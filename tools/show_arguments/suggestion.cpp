#include "suggestion.h"

#include "options.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tool {
namespace {

constexpr std::size_t noMatch = 100;

char lowerCase(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

// What is left of a name when case, "-", "_" and "tdc_" do not matter.
std::string coreOf(std::string_view name) {
    std::string core;
    for (const char byte : name) {
        if (byte != '-' && byte != '_') {
            core += lowerCase(byte);
        }
    }
    return core.rfind("tdc", 0) == 0 ? core.substr(3) : core;
}

// How far the name, which has this core, is from the option. Smaller is nearer.
std::size_t rank(std::string_view name, const std::string& core, std::string_view option) {
    const std::string optionCore = coreOf(option);
    if (core == optionCore) {
        return 0;
    }
    if (core.size() >= 3 && optionCore.rfind(core, 0) == 0) {
        return 1;
    }
    const std::size_t limit = name.size() <= 5 ? 1 : 2;
    const std::size_t distance = option.size() < 4 ? noMatch : editDistance(name, option, limit);
    return distance <= limit ? distance + 1 : noMatch;
}

}  // namespace

std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit) {
    if (std::max(left.size(), right.size()) > std::min(left.size(), right.size()) + limit) {
        return limit + 1;
    }
    // The distance between the first i bytes of left and the first j of right is at(i, j).
    std::vector<std::size_t> table((left.size() + 1) * (right.size() + 1));
    const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& {
        return table[i * (right.size() + 1) + j];
    };
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                at(i, j) = i + j;
                continue;
            }
            const std::size_t substitution = left[i - 1] == right[j - 1] ? 0 : 1;
            at(i, j) = std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, at(i - 1, j - 1) + substitution});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
                at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
            }
        }
    }
    return at(left.size(), right.size());
}

std::string_view suggestOption(std::string_view name) {
    const std::string core = coreOf(name);
    std::size_t best = noMatch;
    std::string_view suggestion;
    for (const ToolOption& option : toolOptions()) {
        if (core.empty() || option.kind == OptionKind::Unread) {
            continue;
        }
        const std::size_t distance = rank(name, core, option.name);
        if (distance < best) {
            best = distance;
            suggestion = option.name;
        } else if (distance == best) {
            suggestion = {};
        }
    }
    return suggestion;
}

}  // namespace tool
