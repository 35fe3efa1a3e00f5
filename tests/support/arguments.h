// An argument vector as main receives one.

#ifndef ORVEX_TESTS_ARGUMENTS_H
#define ORVEX_TESTS_ARGUMENTS_H

#include "OrvexTestCommandLineParser.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

// The words of a text, with a single space between two of them.
inline std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, ' ');) {
        result.push_back(word);
    }
    return result;
}

// Owns the texts of an argument vector; argv()[argc()] is null.
class Arguments {
public:
    explicit Arguments(std::vector<std::string> list) : texts(std::move(list)) {
        for (std::string& text : texts) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    int argc() const {
        return static_cast<int>(texts.size());
    }
    char** argv() {
        return pointers.data();
    }

private:
    std::vector<std::string> texts;
    std::vector<char*> pointers;
};

// Parses the arguments, of which the first is the program name.
inline bool parse(OrvexTestCommandLineParser& parser, std::vector<std::string> list) {
    Arguments arguments(std::move(list));
    return parser.Parse(arguments.argc(), arguments.argv());
}

#endif
