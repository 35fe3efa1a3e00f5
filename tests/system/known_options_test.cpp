// Each place that lists the options names every one of support/known_options.h, and the library has no other.
// The table of show_arguments is held to the parser by its own tests.

#include "support/known_options.h"

#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(SOURCE_DIRECTORY / path);
    EXPECT_TRUE(stream.is_open()) << path;
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

// What the first group of the pattern matches.
std::set<std::string> findAll(const std::string& text, const char* pattern) {
    const std::regex regex(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), regex); match != std::sregex_iterator();
         ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

void expectEveryOption(const std::set<std::string>& names, const char* place) {
    for (const KnownOption& option : knownOptions) {
        EXPECT_EQ(names.count(option.name), 1U) << "-" << option.name << " is missing in " << place;
    }
}

TEST(KnownOptions, AreInTheOptionTableOfTheReadme) {
    const std::string readme = readFile("README.md");
    const std::size_t begin = readme.find("\n## Options\n");
    ASSERT_NE(begin, std::string::npos);
    const std::string section = readme.substr(begin, readme.find("\n## ", begin + 1) - begin);
    std::string cells;
    for (const std::string& cell : findAll(section, "\n\\| (`-[^|\n]*)")) {
        cells += cell;
    }
    expectEveryOption(findAll(cells, "`-([A-Za-z_]+|\\?)"), "the option table of README.md");
}

TEST(KnownOptions, AreInTheHeader) {
    const char* header = "include/OrvexTestCommandLineParser.h";
    expectEveryOption(findAll(readFile(header), "[ (]-([A-Za-z_]+|\\?)"), header);
}

TEST(KnownOptions, AreInTheDictionaryOfTheFuzzer) {
    const char* dictionary = "tests/fuzz/dictionaries/scenario.txt";
    expectEveryOption(findAll(readFile(dictionary), "\n\"-([^\"=]+)=?\""), dictionary);
}

class KnownOptionsOfAParse : public CleanEnvironmentTest {};

TEST_F(KnownOptionsOfAParse, TakeTheNextArgumentUnlessTheyAreFlagsOrInlineOnly) {
    for (const KnownOption& option : knownOptions) {
        const bool isRegistered = option.kind != OptionKind::Flag && option.kind != OptionKind::InlineOnly;
        OrvexTestCommandLineParser parser;
        ASSERT_TRUE(parse(parser, {"app", "-" + std::string(option.name), "1", "Suite"}));
        EXPECT_EQ(parser.getFirstTestPath(), isRegistered ? "Suite" : "1") << "-" << option.name;
    }
}

TEST(OptionsOfTheLibrary, AreAllKnown) {
    std::set<std::string> known;
    for (const KnownOption& option : knownOptions) {
        known.insert(option.name);
    }
    const std::string source = readFile("src/parser/OrvexTestCommandLineParser.cpp");
    const std::size_t constructor = source.find("options.add");
    ASSERT_NE(constructor, std::string::npos);
    const std::string registrations =
        source.substr(constructor, source.find("\n}", constructor) - constructor);
    for (const std::string& name : findAll(registrations, "\"([^\"]+)\"")) {
        EXPECT_EQ(known.count(name), 1U) << "-" << name << " is missing in tests/support/known_options.h";
    }
}

TEST(VariablesOfTheLibrary, AreAllKnown) {
    std::set<std::string> named;
    for (const char* file : {"src/environment/transport_variables.cpp", "src/environment/producer_path.cpp",
                             "src/testrun/session_variables.cpp"}) {
        named.merge(findAll(readFile(file), "\"([A-Z0-9]+_[A-Z0-9_]+)\""));
    }
    for (const char* name : knownVariables) {
        EXPECT_EQ(named.erase(name), 1U) << name << " is missing in src";
    }
    for (const std::string& name : named) {
        ADD_FAILURE() << name << " is missing in tests/support/known_options.h";
    }
}

}  // namespace
