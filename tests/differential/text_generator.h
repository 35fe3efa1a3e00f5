// Random texts of every kind that the parser reads.

#ifndef ORVEX_TESTS_DIFFERENTIAL_TEXT_GENERATOR_H
#define ORVEX_TESTS_DIFFERENTIAL_TEXT_GENERATOR_H

#include "differential/choices.h"

#include <string>
#include <vector>

namespace differential {

// No text holds a zero byte.
class TextGenerator {
public:
    explicit TextGenerator(Choices& choices) : choices(choices) {}

    std::string programName();
    // Arguments without the program name.
    std::vector<std::string> tokens();
    // The text of an argument variable: tokens in random quoting, sometimes malformed.
    std::string variableText();
    // A value for anything.
    std::string value();

private:
    std::string number();
    std::string transportLayers();
    std::string longText();
    std::string bytes();
    std::string option();
    std::string valueFor(const std::string& option);
    std::string token();
    std::string inQuoting(const std::string& token);

    Choices& choices;
};

}  // namespace differential

#endif
