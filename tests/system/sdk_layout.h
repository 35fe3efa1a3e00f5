// The built library on disk as in an installed SDK, and programs that load it from there.

#ifndef ORVEX_TESTS_SDK_LAYOUT_H
#define ORVEX_TESTS_SDK_LAYOUT_H

#include "support/clean_environment.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

// A test with a directory of its own, which is removed when it ends.
class SdkLayoutTest : public ::testing::Test {
protected:
    // parent: an existing directory.
    explicit SdkLayoutTest(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
    ~SdkLayoutTest() override;

    // Puts the library with its links into a directory, which is created.
    static void installLibrary(const std::filesystem::path& directory);

    // Makes the directory an SDK:
    // Frameworks/orvex.framework/Versions/A/Libraries with the library in it,
    // Frameworks/orvex.framework/Versions/Current -> A, and
    // Frameworks/orvex.framework/Libraries -> Versions/Current/Libraries.
    static void installSdk(const std::filesystem::path& sdk);

    // Runs the client, which is linked against the library, in the current directory with nothing in
    // its environment but the variables. Returns what it printed.
    static std::string runClient(const Environment& environment,
                                 const std::filesystem::path& currentDirectory = "/",
                                 const std::vector<std::string>& arguments = {});

    // Runs the loader, which loads the library from the file.
    static std::string runLoader(const std::string& file, const Environment& environment,
                                 const std::filesystem::path& currentDirectory = "/");

    // What the client prints: the application directory and the search path.
    static std::string clientOutput(const std::string& directory, const std::string& path);

    // The text with each "{base}" replaced by the directory of the test.
    std::string withBase(std::string text) const;

    std::filesystem::path base;
};

// The directory in which the library lies in an SDK, without links and through the usual one.
constexpr const char* librariesWithoutLinks = "Frameworks/orvex.framework/Versions/A/Libraries";
constexpr const char* librariesThroughLinks = "Frameworks/orvex.framework/Libraries";
constexpr const char* libraryName = "libtestcommandlineparser.so.0";

// What follows the directory of the SDK in the two entries of the search path. They are macros so that
// expected texts can be written as one literal.
#define GTL_ENTRY "/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
#define CXP_ENTRY "/Frameworks/orvex.framework/Libraries/orvexCXP/bin:"

#endif
