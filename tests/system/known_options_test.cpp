// Each place that lists the options or the variables has those of support/known_options.h. The tests of
// show_arguments compare its table with the parser.

#include "support/known_options.h"

#include "support/parser_test.h"
#include "support/replaced_functions.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using ::testing::IsEmpty;

// The lines between the first that contains the beginning and the next that contains the end.
std::string section(const char* file, const std::string& beginning, const std::string& end) {
    std::ifstream stream(std::filesystem::path(SOURCE_DIRECTORY) / file);
    const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const std::size_t first = text.find(beginning);
    EXPECT_NE(first, std::string::npos) << file << " has no \"" << beginning << "\"";
    return first == std::string::npos ? "" : text.substr(first, text.find(end, first + 1) - first);
}

bool isNameByte(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '_' || byte == '?';
}

// The names after each occurrence of the mark, in order.
Strings namesAfter(const std::string& mark, const std::string& text) {
    Strings names;
    for (std::size_t i = text.find(mark); i != std::string::npos; i = text.find(mark, i + 1)) {
        const auto begin = text.begin() + static_cast<std::ptrdiff_t>(i + mark.size());
        const std::string name(begin, std::find_if_not(begin, text.end(), isNameByte));
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

Strings variableNames() {
    return Strings(std::begin(knownVariables), std::end(knownVariables));
}

// The expected names that are not there.
Strings missing(const Strings& expected, const Strings& names) {
    Strings result;
    std::copy_if(expected.begin(), expected.end(), std::back_inserter(result), [&](const std::string& name) {
        return std::find(names.begin(), names.end(), name) == names.end();
    });
    return result;
}

void expectSame(const Strings& names, const Strings& known, const char* place) {
    EXPECT_THAT(missing(known, names), IsEmpty()) << "missing in " << place;
    EXPECT_THAT(missing(names, known), IsEmpty()) << "unknown, in " << place;
}

TEST(KnownOptions, AreTheRowsOfTheReadme) {
    Strings names;
    for (const std::string& line : words(section("README.md", "\n## Options\n", "\n## "), '\n')) {
        if (line.compare(0, 4, "| `-") == 0) {
            names = names + namesAfter("`-", line.substr(0, line.find(" |", 1)));
        }
    }
    expectSame(names, optionNames(), "the option table of README.md");
}

TEST(KnownOptions, AreInTheHeader) {
    const char* const file = "include/OrvexTestCommandLineParser.h";
    const std::string header = section(file, "struct", "no such text");
    EXPECT_THAT(missing(optionNames(), namesAfter(" -", header) + namesAfter("(-", header)), IsEmpty())
        << "missing in " << file;
}

TEST(KnownOptions, AreInTheDictionaryOfTheFuzzer) {
    const std::string entries = section("tests/fuzz/dictionaries/scenario.txt", "# The options.", "\n#");
    expectSame(namesAfter("\n\"-", entries), optionNames(), "the dictionary");
}

TEST(KnownVariables, AreInTheReadme) {
    const std::string text = section("README.md", "\n## Options\n", "\n## Intentional");
    EXPECT_THAT(missing(variableNames(), namesAfter("`", text)), IsEmpty()) << "missing in README.md";
}

TEST(KnownVariables, AreTheListOfTheHeaderInOrder) {
    const std::string list =
        section("include/OrvexTestCommandLineParser.h", "/// Writes, in this order:", "    /// Apart");
    EXPECT_EQ(namesAfter("\n    ///     ", list), variableNames());
}

TEST(KnownVariables, EndTheDictionaryOfTheFuzzerInOrder) {
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
