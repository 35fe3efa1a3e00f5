#include "differential/scenario.h"

#include <cstddef>
#include <string>
#include <utility>

namespace differential {

std::string shrink(const std::string& text, const std::function<bool(const std::string&)>& fails) {
    std::string best = text;
    const auto attempt = [&](std::string candidate) {
        const bool isBetter = candidate != best && fails(candidate);
        if (isBetter) {
            best = std::move(candidate);
        }
        return isBetter;
    };
    // Removes runs of bytes, long ones first, until no run can be removed.
    std::size_t before = 0;
    do {
        before = best.size();
        for (std::size_t length = best.size(); length > 0; length /= 2) {
            for (std::size_t start = 0; start < best.size();) {
                start += attempt(std::string(best).erase(start, length)) ? 0 : length;
            }
        }
    } while (best.size() < before);
    return best;
}

}  // namespace differential
