#include "differential/scenario.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace differential {
namespace {

using Lines = std::vector<std::string>;

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

class Shrinker {
public:
    Shrinker(const std::string& text, const std::function<bool(const std::string&)>& fails) : fails(fails) {
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);) {
            best.push_back(line);
        }
    }

    std::string run() {
        bool isSmaller = true;
        while (isSmaller) {
            isSmaller = removeRuns([](Lines& lines) -> Lines& { return lines; }, 0);
            isSmaller |= simplifyLines();
        }
        return joined(best);
    }

private:
    template <typename Change>
    bool attempt(const Change& change) {
        Lines candidate = best;
        change(candidate);
        if (candidate == best || !fails(joined(candidate))) {
            return false;
        }
        best = std::move(candidate);
        return true;
    }

    // Removes runs of items, long ones first, from the list that the function finds in the lines.
    template <typename Find>
    bool removeRuns(const Find& find, std::size_t first) {
        bool isSmaller = false;
        for (std::size_t length = find(best).size(); length > 0; length /= 2) {
            std::size_t start = first;
            while (start + length <= find(best).size()) {
                const bool isRemoved = attempt([&](Lines& lines) {
                    auto& items = find(lines);
                    const auto begin = items.begin() + static_cast<std::ptrdiff_t>(start);
                    items.erase(begin, begin + static_cast<std::ptrdiff_t>(length));
                });
                isSmaller |= isRemoved;
                start += isRemoved ? 0 : 1;
            }
        }
        return isSmaller;
    }

    bool simplifyLines() {
        bool isSimpler = false;
        for (std::size_t i = 0; i < best.size(); ++i) {
            isSimpler |= best[i][0] == '>' ? simplifyCall(i) : simplifyText(i);
        }
        return isSimpler;
    }

    bool simplifyCall(std::size_t i) {
        return attempt([i](Lines& lines) { lines[i] = ">narrow"; }) || attempt([i](Lines& lines) {
                   lines[i].erase(std::min(lines[i].find_first_of("*-0123456789"), lines[i].size()));
               });
    }

    // Without quotes first, so that what is left at the end is plain.
    bool simplifyText(std::size_t i) {
        bool isSimpler = attempt([i](Lines& lines) {
            std::string plain;
            for (const char c : lines[i]) {
                plain += c == '"' || c == '\'' || c == '\\' ? "" : std::string(1, c);
            }
            lines[i] = plain;
        });
        isSimpler |= removeRuns([i](Lines& lines) -> std::string& { return lines[i]; }, 1);
        for (std::size_t place = 1; place < best[i].size(); ++place) {
            isSimpler |= attempt([i, place](Lines& lines) { lines[i][place] = 'a'; });
        }
        return isSimpler;
    }

    Lines best;
    const std::function<bool(const std::string&)>& fails;
};

}  // namespace

std::string shrink(const std::string& text, const std::function<bool(const std::string&)>& fails) {
    return Shrinker(text, fails).run();
}

}  // namespace differential
