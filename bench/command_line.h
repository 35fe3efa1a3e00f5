// The command line that every parser in the comparison parses, and its options.

#ifndef ORVEX_BENCH_COMMAND_LINE_H
#define ORVEX_BENCH_COMMAND_LINE_H

#include <string>
#include <vector>

// The options that take a value; the last one wins. In addition, the values of "tl" and "p" accumulate, and
// "w" is a flag.
constexpr const char* valueOptions[] = {"o",
                                        "x",
                                        "camemu",
                                        "packetdelay",
                                        "packetsize",
                                        "socketbuffer",
                                        "testname",
                                        "pcname",
                                        "osname",
                                        "ostype",
                                        "bit",
                                        "tdc_dxml",
                                        "tdc_guid",
                                        "tdc_runname",
                                        "tdc_rundescription",
                                        "tdc_group",
                                        "tdc_userid",
                                        "tdc_product",
                                        "tdc_vcsbranch",
                                        "tdc_vcsrevision"};

enum class Form { NameValue, NameEqualsValue };  // "--name value", "--name=value"

constexpr int argumentCount = 25;

// An argument vector that a parser may permute, as getopt_long does. argv()[argc()] is null.
class CommandLine {
public:
    explicit CommandLine(std::vector<std::string> arguments);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    int argc() const {
        return static_cast<int>(strings.size());
    }
    char** argv() {
        return pointers.data();
    }

private:
    std::vector<std::string> strings;
    std::vector<char*> pointers;
};

// The program name and 25 arguments: two "tl", two "p", "w", two test paths and single values.
std::vector<std::string> typicalArguments(Form form);

#endif
