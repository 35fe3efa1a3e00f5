// In a program that is not position-independent, the address of a library function is inside the program
// itself. The library must find its own file all the same.

#include "OrvexTestCommandLineParser.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <filesystem>
#include <string>

namespace {

using Function = std::string (*)();

// Take the address at run time: the initialiser of a variable could be resolved by the dynamic loader.
Function addressOfGetApplicationDir() {
    const volatile Function address = &OrvexTestCommandLineParser::getApplicationDir;
    return address;
}

// The program is in another directory, so deep that five levels up differs from the library's.
TEST(NonPie, ApplicationDirIsThatOfTheLibrary) {
    Dl_info place;
    ASSERT_NE(dladdr(reinterpret_cast<const void*>(addressOfGetApplicationDir()), &place), 0);
    ASSERT_EQ(std::filesystem::path(place.dli_fname).filename(), "non_pie_tests");

    const std::string fourLevelsAbove = std::filesystem::canonical(LIBRARY_DIRECTORY "/../../../..").string();
    EXPECT_EQ(OrvexTestCommandLineParser::getApplicationDir(),
              fourLevelsAbove.substr(0, fourLevelsAbove.rfind('/')));
}

}  // namespace
