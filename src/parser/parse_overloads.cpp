#include "OrvexTestCommandLineParser.h"
#include "parser/wide_to_utf8.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

bool OrvexTestCommandLineParser::Parse(int argc, wchar_t** argv) {
    if (argc < 0 || (argc > 0 && argv == nullptr)) {
        return false;
    }
    std::size_t size = 0;
    for (int i = 0; i < argc; ++i) {
        const int length = orvex::convertWideToUtf8(argv[i], nullptr, 0);
        if (length < 0) {
            return false;
        }
        size += static_cast<std::size_t>(length);
    }

    std::vector<char> buffer(size);
    std::vector<char*> arguments(static_cast<std::size_t>(argc));
    char* position = buffer.data();
    for (int i = 0; i < argc; ++i) {
        const std::size_t left = size - static_cast<std::size_t>(position - buffer.data());
        const int capacity = static_cast<int>(std::min<std::size_t>(left, std::numeric_limits<int>::max()));
        const int length = orvex::convertWideToUtf8(argv[i], position, capacity);
        // GCOVR_EXCL_START: cannot fail: the same string was measured above
        if (length < 0) {
            return false;
        }
        // GCOVR_EXCL_STOP
        arguments[static_cast<std::size_t>(i)] = position;
        position += length;
    }
    return Parse(argc, arguments.data());
}

bool OrvexTestCommandLineParser::Parse(int argc, char* args) {
    if (argc < 0) {
        return false;
    }
    std::vector<char*> arguments(static_cast<std::size_t>(argc));
    for (char*& argument : arguments) {
        if (*args == '\0') {
            return false;
        }
        argument = args;
        args += std::strlen(args) + 1;
    }
    return Parse(argc, arguments.data());
}
