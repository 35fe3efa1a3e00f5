// Every list of the options or the variables matches support/known_options.h. The tests of show_arguments
// compare its table with the parser.

#include "support/known_options.h"

#include "support/parser_test.h"
#include "support/replaced_functions.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAreArray;

// The lines between the first that contains the beginning and the next that contains the end.
std::string section(const char* file, const std::string& beginning, const std::string& end) {
    std::ifstream stream(std::filesystem::path(SOURCE_DIRECTORY) / file);
    const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const std::size_t first = text.find(beginning);
    EXPECT_NE(first, std::string::npos) << file << " has no \"" << beginning << "\"";
    return first == std::string::npos ? "" : text.substr(first, text.find(end, first + 1) - first);
}

// The variables of the SDK that these options set, then those of the test session, each in order.
Strings variablesOf(const Strings& options) {
    Strings sdkVariables;
    Strings sessionVariables;
    for (const KnownOption& option : knownOptions) {
        const bool isNamed = std::count(options.begin(), options.end(), option.name) != 0;
        if (isNamed && option.sdkVariable != nullptr) {
            sdkVariables.emplace_back(option.sdkVariable);
        }
        if (isNamed && option.sessionVariable != nullptr) {
            sessionVariables.emplace_back(option.sessionVariable);
        }
    }
    return sdkVariables + sessionVariables;
}

// The names after each occurrence of the mark, a regular expression, in order.
Strings namesAfter(const std::string& mark, const std::string& text) {
    const std::regex pattern(mark + "([A-Za-z0-9_?]+)");
    Strings names;
    for (auto match = std::sregex_iterator(text.begin(), text.end(), pattern);
         match != std::sregex_iterator(); ++match) {
        names.push_back((*match)[1]);
    }
    return names;
}

Strings variableNames() {
    return Strings(std::begin(knownVariables), std::end(knownVariables));
}

TEST(KnownOptions, MatchTheRowsOfTheReadmeWithTheirVariables) {
    const Strings variables = variableNames();
    Strings all;
    for (const std::string& line : words(section("README.md", "\n## Options\n", "\n## "), '\n')) {
        if (line.compare(0, 4, "| `-") == 0) {
            const std::size_t end = line.find(" |", 1);
            const Strings options = namesAfter("`-", line.substr(0, end));
            Strings written = namesAfter("`", line.substr(end));
            written.erase(std::remove_if(written.begin(), written.end(),
                                         [&](const std::string& name) {
                                             return std::count(variables.begin(), variables.end(), name) == 0;
                                         }),
                          written.end());
            const Strings more = {"ORVEX_GIGE_STREAMPARAMS", "GENICAM_GENTL64_PATH"};
            EXPECT_EQ(written, variablesOf(options) + (options[0] == "tl" ? more : Strings())) << line;
            all = all + options;
        }
    }
    EXPECT_THAT(all, UnorderedElementsAreArray(optionNames()));
}

TEST(KnownOptions, AreInTheHeader) {
    const std::string header = section("include/OrvexTestCommandLineParser.h", "struct", "no such text");
    EXPECT_THAT(namesAfter("[ (]-", header), IsSupersetOf(optionNames()));
}

TEST(KnownOptions, AreInTheFuzzerDictionary) {
    const std::string entries = section("tests/fuzz/dictionaries/scenario.txt", "# The options.", "\n#");
    EXPECT_THAT(namesAfter("\n\"-", entries), UnorderedElementsAreArray(optionNames()));
}

TEST(KnownVariables, AreInTheReadme) {
    const std::string text = section("README.md", "\n## Options\n", "\n## Intentional");
    EXPECT_THAT(namesAfter("`", text), IsSupersetOf(variableNames()));
}

TEST(KnownVariables, MatchTheListInTheHeaderInOrderWithTheirOptions) {
    const std::string list =
        section("include/OrvexTestCommandLineParser.h", "/// Writes, in this order:", "    /// Apart");
    Strings variables;
    std::set<std::string> written;
    for (const std::string& name : namesAfter("(?:\n    ///     |[ (]-)", list)) {
        if (name[0] >= 'A' && name[0] <= 'Z') {
            variables.push_back(name);
        } else {
            written.insert(variables.back() + " " + name);
        }
    }
    EXPECT_EQ(variables, variableNames());
    std::set<std::string> expected = {"ORVEX_GIGE_STREAMPARAMS tl", "GENICAM_GENTL64_PATH tl"};
    for (const std::string& option : optionNames()) {
        for (const std::string& variable : variablesOf({option})) {
            expected.insert(variable + " " + option);
        }
    }
    EXPECT_EQ(written, expected);
}

TEST(KnownVariables, AreLastInTheFuzzerDictionaryInOrder) {
    const Strings names =
        namesAfter("\n\"", section("tests/fuzz/dictionaries/scenario.txt", "\"\\x0A=\"\n", "no such text"));
    EXPECT_EQ(names, variableNames());
}

TEST(KnownVariables, AreInThePythonClientInOrder) {
    EXPECT_EQ(namesAfter("\"", section("examples/python_client.py", "\nVARIABLES", "\n)")), variableNames());
}

using Library = ParserTest;

TEST_F(Library, RegistersTheKnownOptionsThatTakeTheNextArgument) {
    for (const KnownOption& option : knownOptions) {
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", std::string("-") + option.name, "1"}));
        const bool takesNext = option.kind != OptionKind::Flag && option.kind != OptionKind::InlineOnly;
        EXPECT_EQ(fresh.getTestPaths().empty(), takesNext) << option.name;
    }
}

TEST_F(Library, SetsTheKnownVariablesInOrder) {
    static Strings names;
    Strings arguments = words("app -tl=DravikGTC,DravikGigE:A");
    for (const std::string& name : optionNames()) {
        arguments.push_back("-" + name + "=1");
    }
    setenvInstead = [](const char* name, const char* /*value*/, int /*overwrite*/) {
        names.emplace_back(name);
        return 0;
    };
    EXPECT_TRUE(parse(parser, arguments));
    setenvInstead = nullptr;
    EXPECT_EQ(names, variableNames());
}

}  // namespace
