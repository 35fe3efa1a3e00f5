// The command line that every parser of the comparison is given, and the options that it may hold.

#ifndef ORVEX_BENCH_COMMAND_LINE_H
#define ORVEX_BENCH_COMMAND_LINE_H

#include <string>
#include <vector>

// The options that take one value, of several the last. Besides these there are "tl" and "p", which take
// several values, and "w", which takes none.
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

// How an option of more than one letter is joined with its value.
enum class Form { Separate, Joined };  // "--name value", "--name=value"

constexpr int argumentCount = 25;

// An argument vector that a parser may permute, as getopt_long does. argv()[argc()] is null.
class CommandLine {
public:
    explicit CommandLine(std::vector<std::string> list);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

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

// The program name and 25 arguments: two "tl", two "p", "w", two test paths and single values.
std::vector<std::string> typicalArguments(Form form);

#endif
