// Every list of the options or the variables matches support/known_options.h. The tests of show_arguments
// compare its table with the parser.

#include "support/known_options.h"

#include "support/parser_test.h"
#include "support/replaced_functions.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
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

TEST(KnownOptions, MatchTheRowsOfTheReadme) {
    Strings names;
    for (const std::string& line : words(section("README.md", "\n## Options\n", "\n## "), '\n')) {
        if (line.compare(0, 4, "| `-") == 0) {
            names = names + namesAfter("`-", line.substr(0, line.find(" |", 1)));
        }
    }
    EXPECT_THAT(names, UnorderedElementsAreArray(optionNames()));
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

TEST(KnownVariables, MatchTheListInTheHeaderInOrder) {
    const std::string list =
        section("include/OrvexTestCommandLineParser.h", "/// Writes, in this order:", "    /// Apart");
    EXPECT_EQ(namesAfter("\n    ///     ", list), variableNames());
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
