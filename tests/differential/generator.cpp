// Random scenarios, from a grammar of their text form.

#include "differential/scenario.h"
#include "support/arguments.h"
#include "support/known_options.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <random>
#include <string>

namespace differential {
namespace {

// "{name}" is replaced by a random alternative of the rule of that name. "|" separates alternatives; '' is
// the empty one. Each alternative of a row is entered as many times as the row's weight.
const struct {
    const char* rule;
    int weight;
    const char* alternatives;
} rows[] = {
    {"scenario", 1, "{variables}{call}|{variables}{call}{call}|{variables}{call}{call}{call}"},
    {"variables", 1, "{before}{after}{own}{path}{referenced}{old}{refused}"},
    {"before", 1, "|=ORVEX_TEST_ARGS={words}\n"},
    {"after", 1, "|=_ORVEX_TEST_ARGS_={words}\n"},
    {"own", 1, "|||=MY_ARGS={words}\n"},
    {"path", 1, "|=GENICAM_GENTL64_PATH={value}\n"},
    {"referenced", 1, "|||=A=B=C\n=HOMEDIR={value}\n"},
    {"old", 1, "|={variable}={value}\n{old}|={variable}={value}\n{old}"},
    {"refused", 11, "''"},
    {"refused", 1, "!{variable}\n"},

    {"call", 8, ">{form}{count}\n {program}\n{arguments}"},
    {"call", 1, ">variable{null}\n {own name}\n {program}\n"},
    {"form", 1, "narrow|narrow|narrow|NarrowC|NarrowC|wide|WideC|packed"},
    {"count", 200, "''"},
    {"count", 1, "0|-1|-2147483648|1|9|*|*0|*1|*-1"},
    {"own name", 1, "MY_ARGS|MY_ARGS|ORVEX_TEST_ARGS|UNSET||A=B"},
    {"null", 15, "''"},
    {"null", 1, "*"},
    {"program", 4, "app|app|app|./mytest|/opt/x y/test||-w|-5|-x=1|-o|DravikGTC"},
    {"program", 1, "{bytes}"},

    // The arguments of a call, each on a line of its own.
    {"arguments", 4, "{argument}{arguments}"},
    {"arguments", 1, "''"},
    {"argument", 20, " {option}\n| {value}\n| {value}\n"},
    {"argument", 40, " {option}={value}\n| {option}\n {value}\n"},
    {"argument", 20, " {dashes}{number option}={size}\n| {dashes}{number option}\n {size}\n"},
    {"argument", 20, " {dashes}tl={layers}\n| {dashes}tl\n {layers}\n"},
    {"argument", 1, " \\null\n| {beyond Unicode}\n"},

    // The value of an argument variable, sometimes malformed.
    {"words", 6, "{word} {words}|{word}\t{words}|\t {word}  {words}"},
    {"words", 4, "''"},
    {"words", 1, "{bytes}"},
    {"word", 2, "{option}|{value}|''|'{value}'|\"{value}\"|it\\'s| \\ \\\""},
    {"word", 2, "{option}={value}|{option} '{value}'|{option} \"{value}\"|\"{option}={value}\""},
    {"word", 4, "{dashes}{number option}={size}|{dashes}{number option} {size}"},
    {"word", 4, "{dashes}tl={layers}|{dashes}tl '{layers}'"},

    {"option", 4, "{dashes}{known option}"},
    {"option", 1, "{dashes}{unknown option}"},
    {"unknown option", 1, "u|tdc_name|tdc_pcname|tdc_osname|TL|HELP||ow"},
    {"dashes", 1, "-|-|-|-|-|-|-|-|-|--|--|---"},

    {"value", 1,
     "a|result.xml|Suite|Suite::Case|key=value|my file|$(HOMEDIR)/x|%HOMEDIR%|$(A=B)|$$|%|a%b|1a2b3c"},
    {"value", 1,
     "main|it's|say \"hello\"|back\\||=|-|--|---|-=|x=y=z|\\E9;|\\FF;\\FE;|tab\there|line\\A;break"},
    {"value", 3, "{number}|{layers}|{bytes}|{code points}"},
    {"value", 1, "word|word|{long}|{long}{bytes}"},

    // Mostly valid numbers, so that most parses run to completion.
    {"size", 7, "{digit}|15{digit}{digit}"},
    {"size", 1, "{number}|{number}"},
    {"number", 1, "1500|0|9|8192|12abc|3x|x3|-5|-0.25|-1e3| 5|/|:|+5|-.5|-.|-e5|-inf|-nan|-0x1p|-5abc|-1e"},
    {"number", 1, "0x10|1e99|-1e999|\t7|\\D9;\\A3;|-i|-n|-infx|00|- 5|--5"},
    {"digit", 1, "0|1|2|3|4|5|6|7|8|9"},

    {"layers", 1, "|{layer}|{layer},{layers}|{layer},{layers}|{layer},{layers}"},
    {"layer", 1, "{class}{driver}"},
    {"class", 1, "DravikGigE|DravikGTC|DravikUsb|A|B|dravikgige|DravikGTCx|DravikGigEx||\\E9;"},
    {"driver", 1, "|:SocketDriver|:WindowsFilterDriver|:|:A|:\\80;z|::B|:DravikGTC|:B:C|:z"},

    {"bytes", 1, "|{byte}{bytes}|{byte}{bytes}|{byte}{bytes}|{byte}{bytes}|{byte}{bytes}"},
    {"byte", 1, " |\t|\"|'|\\|$|%|(|)|=|-|:|,|5|9|a|Z|/|.|+|e|n|\\7C;|\\A;|\\{hex}{hex};|\\{hex}{hex};"},
    {"hex", 1, "{digit}|{digit}|A|B|C|D|E|F"},
    {"code points", 1, "{code point}|{code point}{code points}|a{code points}"},
    {"code point", 1,
     "\\7F;|\\80;|\\7FF;|\\800;|\\D800;|\\DFFF;|\\FFFD;|\\FFFF;|\\10000;|\\10FFFF;|\\1F600;"},
    {"beyond Unicode", 1, "\\110000;|\\7FFFFFFF;|\\80000000;|a\\FFFFFFFF;"},
};

using Grammar = std::map<std::string, Strings>;

Grammar readGrammar() {
    Grammar grammar = {{"known option", optionNames()},
                       {"variable", Strings(std::begin(knownVariables), std::end(knownVariables))}};
    for (const KnownOption& option : numbers()) {
        grammar["number option"].emplace_back(option.name);
    }
    // Around the size of a slot of the record's buffer.
    for (const std::size_t length : {250, 251, 252, 253, 254, 255, 256, 257, 258, 259, 260, 1000}) {
        grammar["long"].emplace_back(length, 'v');
    }
    for (const auto& row : rows) {
        for (int i = 0; i < row.weight; ++i) {
            grammar[row.rule] = grammar[row.rule] + words(row.alternatives, '|');
        }
    }
    return grammar;
}

std::string randomText(const std::string& rule, std::mt19937_64& random) {
    static const Grammar grammar = readGrammar();
    const Strings& alternatives = grammar.at(rule);
    const std::string& chosen = alternatives[random() % alternatives.size()];
    std::string text;
    std::size_t position = 0;
    for (std::size_t begin = chosen.find('{'); begin != std::string::npos;
         begin = chosen.find('{', position)) {
        const std::size_t end = chosen.find('}', begin);
        text += chosen.substr(position, begin - position);
        text += randomText(chosen.substr(begin + 1, end - begin - 1), random);
        position = end + 1;
    }
    return text + chosen.substr(position);
}

}  // namespace

Scenario scenarioFromSeed(std::uint64_t seed) {
    std::mt19937_64 random(seed);
    return scenarioOf(randomText("scenario", random));
}

}  // namespace differential
