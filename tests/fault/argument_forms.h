// One argument vector in each of the forms that a parser accepts.

#ifndef ORVEX_TESTS_ARGUMENT_FORMS_H
#define ORVEX_TESTS_ARGUMENT_FORMS_H

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"

#include <new>
#include <string>
#include <vector>

enum class ArgumentForm { Narrow, Wide, Packed };

// How a parse ended.
enum class Outcome { False, True, BadAlloc };

// Owns the texts in all three forms, so that the parse itself needs no memory of the test.
class ArgumentsInForm {
public:
    // texts: ASCII only, none empty.
    ArgumentsInForm(const std::vector<std::string>& texts, ArgumentForm form) : narrow(texts), form(form) {
        for (const std::string& text : texts) {
            wideTexts.emplace_back(text.begin(), text.end());
            packed += text + '\0';
        }
        for (std::wstring& text : wideTexts) {
            widePointers.push_back(text.data());
        }
    }

    Outcome parse(OrvexTestCommandLineParser& parser) {
        try {
            return parseInForm(parser) ? Outcome::True : Outcome::False;
        } catch (const std::bad_alloc&) {
            return Outcome::BadAlloc;
        }
    }

private:
    bool parseInForm(OrvexTestCommandLineParser& parser) {
        switch (form) {
            case ArgumentForm::Wide:
                return parser.Parse(narrow.argc(), widePointers.data());
            case ArgumentForm::Packed:
                return parser.Parse(narrow.argc(), packed.data());
            default:
                return parser.Parse(narrow.argc(), narrow.argv());
        }
    }

    Arguments narrow;
    std::vector<std::wstring> wideTexts;
    std::vector<wchar_t*> widePointers;
    std::string packed;
    const ArgumentForm form;
};

#endif
