// The arguments of a parse, in every form in which a program can pass them.

#ifndef ORVEX_TESTS_ARGUMENTS_H
#define ORVEX_TESTS_ARGUMENTS_H

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"

#include <cstddef>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using Strings = std::vector<std::string>;

// The words between the separators; '' is the empty one.
inline Strings words(const std::string& text, char separator = ' ') {
    Strings result;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, separator);) {
        result.push_back(word == "''" ? "" : word);
    }
    return result;
}

inline Strings operator+(Strings left, const Strings& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// Owns the strings of an argument vector; argv()[argc()] is null.
template <typename Character>
class ArgumentVector {
public:
    using String = std::basic_string<Character>;

    explicit ArgumentVector(std::vector<String> list) : strings(std::move(list)) {
        pointers.reserve(strings.size() + 1);
        for (String& string : strings) {
            pointers.push_back(string.data());
        }
        pointers.push_back(nullptr);
    }
    ArgumentVector(const ArgumentVector&) = delete;
    ArgumentVector& operator=(const ArgumentVector&) = delete;

    int argc() const {
        return static_cast<int>(strings.size());
    }
    Character** argv() {
        return pointers.data();
    }

private:
    std::vector<String> strings;
    std::vector<Character*> pointers;
};

using Arguments = ArgumentVector<char>;

// Parses the arguments, of which the first is the program name.
inline bool parse(OrvexTestCommandLineParser& parser, Strings list) {
    Arguments arguments(std::move(list));
    return parser.Parse(arguments.argc(), arguments.argv());
}

// The forms of Parse, those of the C interface, and ParseArgsFromEnvironmentVariable.
enum class Form { Narrow, Wide, Packed, NarrowC, WideC, Variable };

// An argument of the wide forms; without a value it is a null pointer.
using WideArgument = std::optional<std::u32string>;

// A call to the parser, as data.
struct Call {
    Form form = Form::Narrow;
    // Of all forms but the wide ones. Those of Variable are the names of the variable and of the program.
    Strings arguments = {};
    std::vector<WideArgument> wideArguments = {};
    // The argc to pass, if it is not the number of arguments.
    std::optional<int> count = {};
    // Passes a null pointer for the arguments, or for the name of the variable.
    bool isNull = false;

    bool isWide() const {
        return form == Form::Wide || form == Form::WideC;
    }
    int argc() const {
        return count.value_or(static_cast<int>(isWide() ? wideArguments.size() : arguments.size()));
    }
};

// A call with the same arguments in any form; wide ones get a code point for each byte.
inline Call callIn(Form form, const Strings& arguments) {
    Call call = {form, arguments};
    for (const std::string& argument : arguments) {
        call.wideArguments.emplace_back(std::u32string(argument.begin(), argument.end()));
    }
    return call;
}

// The block of the packed form: each argument with its terminator, and nothing else. It is on the heap, where
// a memory checker sees a read beyond its end.
inline std::vector<char> packed(const Strings& arguments) {
    std::vector<char> block;
    for (const std::string& argument : arguments) {
        block.insert(block.end(), argument.c_str(), argument.c_str() + argument.size() + 1);
    }
    block.shrink_to_fit();
    return block;
}

// Owns what a call passes, so that the test allocates nothing while making the call.
class PreparedCall {
public:
    explicit PreparedCall(const Call& call)
        : form(call.form),
          argc(call.argc()),
          isNull(call.isNull),
          narrow(call.isWide() ? Strings() : call.arguments),
          wide(wideStrings(call)),
          block(form == Form::Packed ? packed(call.arguments) : std::vector<char>()) {
        if (form == Form::Packed && argc > narrow.argc()) {
            block.push_back('\0');  // the first string that is missing is empty
        }
        for (std::size_t i = 0; call.isWide() && i < call.wideArguments.size(); ++i) {
            wide.argv()[i] = call.wideArguments[i] ? wide.argv()[i] : nullptr;
        }
    }

    // The result of the call; 1 for ParseArgsFromEnvironmentVariable, which returns nothing.
    int make(OrvexTestCommandLineParser& parser) {
        char** const argv = isNull ? nullptr : narrow.argv();
        wchar_t** const wideArgv = isNull ? nullptr : wide.argv();
        switch (form) {
            case Form::Narrow:
                return static_cast<int>(parser.Parse(argc, argv));
            case Form::Wide:
                return static_cast<int>(parser.Parse(argc, wideArgv));
            case Form::Packed:
                return static_cast<int>(parser.Parse(argc, isNull ? nullptr : block.data()));
            case Form::NarrowC:
                return OrvexTestCommandLineParser_Parse(argc, argv);
            case Form::WideC:
                return OrvexTestCommandLineParser_ParseW(argc, wideArgv);
            case Form::Variable:
                parser.ParseArgsFromEnvironmentVariable(isNull ? nullptr : argumentAt(0), argumentAt(1));
        }
        return 1;
    }

private:
    static std::vector<std::wstring> wideStrings(const Call& call) {
        std::vector<std::wstring> strings;
        for (std::size_t i = 0; call.isWide() && i < call.wideArguments.size(); ++i) {
            const std::u32string string = call.wideArguments[i].value_or(U"");
            strings.emplace_back(string.begin(), string.end());
        }
        return strings;
    }

    const char* argumentAt(int index) {
        return index < narrow.argc() ? narrow.argv()[index] : "";
    }

    const Form form;
    const int argc;
    const bool isNull;
    Arguments narrow;
    ArgumentVector<wchar_t> wide;
    std::vector<char> block;
};

inline int make(const Call& call, OrvexTestCommandLineParser& parser) {
    return PreparedCall(call).make(parser);
}

#endif
