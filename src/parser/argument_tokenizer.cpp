#include "parser/argument_tokenizer.h"

#include <stdexcept>
#include <utility>

namespace orvex {
namespace {

// Reads a string byte by byte, and reports its end only once a read has found nothing.
class ByteReader {
public:
    explicit ByteReader(const std::string& text) : text(text) {}

    // False, with byte as it was, when nothing is left.
    bool read(char& byte) {
        if (position == text.size()) {
            hasReportedEnd = true;
            return false;
        }
        byte = text[position++];
        return true;
    }

    bool atReportedEnd() const {
        return hasReportedEnd;
    }

private:
    const std::string& text;
    std::size_t position = 0;
    bool hasReportedEnd = false;
};

// Appends the byte after a backslash. A backslash at the end of the text stands for itself, because the
// read then leaves it in byte. So the check before the read never fires; it is kept on purpose.
void appendLiterally(ByteReader& reader, char& byte, std::string& token) {
    // GCOVR_EXCL_START: once a read has found nothing, the scan ends
    if (reader.atReportedEnd()) {
        throw std::runtime_error("Found Escape Character at end of file.");
    }
    // GCOVR_EXCL_STOP
    reader.read(byte);
    token += byte;
}

}  // namespace

void splitArgumentString(const std::string& text, std::vector<std::string>& tokens) {
    enum class State { BetweenTokens, InToken, InQuote };

    State state = State::BetweenTokens;
    char openingQuote = '\0';
    std::string token;
    std::vector<std::string> result;
    ByteReader reader(text);

    char byte = '\0';
    while (reader.read(byte)) {
        const bool isSeparator = byte == ' ' || byte == '\t';
        const bool isQuote = byte == '"' || byte == '\'';

        if (state == State::InQuote) {
            if (byte == openingQuote) {
                state = State::InToken;
            } else if (byte == '\\') {
                appendLiterally(reader, byte, token);
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
                appendLiterally(reader, byte, token);
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
