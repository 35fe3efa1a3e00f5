#include "parser/argument_tokenizer.h"

#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orvex {
namespace {

// Appends the byte after a backslash. A trailing backslash is literal: get() fails and leaves it in byte. The
// check is therefore unreachable; it is kept on purpose.
void appendLiterally(std::istringstream& input, char& byte, std::string& token) {
    // GCOVR_EXCL_START: once a read has failed, the scan ends
    if (input.eof()) {
        throw std::runtime_error("Found Escape Character at end of file.");
    }
    // GCOVR_EXCL_STOP
    input.get(byte);
    token += byte;
}

}  // namespace

void splitArgumentString(const std::string& text, std::vector<std::string>& tokens) {
    enum class State { BetweenTokens, InToken, InQuote };

    State state = State::BetweenTokens;
    char openingQuote = '\0';
    std::string token;
    std::vector<std::string> result;
    std::istringstream input(text);

    char byte = '\0';
    while (input.get(byte)) {
        const bool isSeparator = byte == ' ' || byte == '\t';
        const bool isQuote = byte == '"' || byte == '\'';

        if (state == State::InQuote) {
            if (byte == openingQuote) {
                state = State::InToken;
            } else if (byte == '\\') {
                appendLiterally(input, byte, token);
            } else {
                token += byte;
            }
        } else if (isSeparator) {
            if (state == State::InToken) {
                result.push_back(std::move(token));
                token.clear();
                state = State::BetweenTokens;
            }
        } else if (isQuote) {
            openingQuote = byte;
            state = State::InQuote;
        } else {
            state = State::InToken;
            if (byte == '\\') {
                appendLiterally(input, byte, token);
            } else {
                token += byte;
            }
        }
    }

    if (state == State::InQuote) {
        throw std::runtime_error("Starting quote has no ending quote.");
    }
    if (state == State::InToken) {
        result.push_back(std::move(token));
    }
    tokens = std::move(result);
}

}  // namespace orvex
