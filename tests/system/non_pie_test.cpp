// A program that is not position-independent takes the address of a library's function in the program
// itself. The library must find its own file all the same.

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>

#include <dlfcn.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

using NonPie = CleanEnvironmentTest;

constexpr const char* libraryDirectory = LIBRARY_DIRECTORY;

using Function = std::string (*)();

// Taken by code: in the initialiser of a variable it could be left to the dynamic loader.
Function addressOfGetApplicationDir() {
    const volatile Function address = &OrvexTestCommandLineParser::getApplicationDir;
    return address;
}

std::string fiveLevelsAbove(const fs::path& directory) {
    const std::string fourLevels = fs::canonical(directory / "../../../..").string();
    return fourLevels.substr(0, fourLevels.rfind('/'));
}

fs::path programDirectory() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

// Without these the tests below would prove nothing.
TEST_F(NonPie, AddressOfTheFunctionLiesInTheProgram) {
    Dl_info place;
    ASSERT_NE(dladdr(reinterpret_cast<const void*>(addressOfGetApplicationDir()), &place), 0);
    EXPECT_FALSE(fs::equivalent(fs::path(place.dli_fname).parent_path(), libraryDirectory));
    EXPECT_TRUE(fs::equivalent(fs::path(place.dli_fname).parent_path(), programDirectory()));
}

TEST_F(NonPie, DirectoriesOfProgramAndLibraryCanBeToldApart) {
    EXPECT_NE(fiveLevelsAbove(programDirectory()), fiveLevelsAbove(libraryDirectory));
}

TEST_F(NonPie, ApplicationDirIsThatOfTheLibrary) {
    EXPECT_EQ(addressOfGetApplicationDir()(), fiveLevelsAbove(libraryDirectory));
    EXPECT_EQ(OrvexTestCommandLineParser::getApplicationDir(), fiveLevelsAbove(libraryDirectory));
}

TEST_F(NonPie, ProducerPathIsThatOfTheLibrary) {
    OrvexTestCommandLineParser parser;
    EXPECT_TRUE(parse(parser, {"mytest", "-tl", "DravikGTC"}));
    EXPECT_THAT(get("GENICAM_GENTL64_PATH"),
                ::testing::StartsWith(fiveLevelsAbove(libraryDirectory) + "/Frameworks/orvex.framework/"));
}

}  // namespace
