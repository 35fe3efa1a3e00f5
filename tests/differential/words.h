// Lists of words, written as one string.

#ifndef ORVEX_TESTS_DIFFERENTIAL_WORDS_H
#define ORVEX_TESTS_DIFFERENTIAL_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace differential {

// The words between the separators; '' is the empty one.
inline std::vector<std::string> words(std::string_view text, char separator = ' ') {
    std::vector<std::string> list(1);
    for (const char c : text) {
        if (c == separator) {
            list.emplace_back();
        } else {
            list.back() += c;
        }
    }
    for (std::string& word : list) {
        word = word == "''" ? "" : word;
    }
    return list;
}

}  // namespace differential

#endif
