// Where the library finds its SDK, for each layout on disk and each way to load the library.

#include "support/clean_environment.h"

#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

#define FRAMEWORK "Frameworks/orvex.framework/"
#define LIBRARIES FRAMEWORK "Libraries"

// On macOS, the dynamic loader itself resolves relative paths and links when it loads a library.
constexpr bool isMacos = IS_MACOS == 1;

// What the client prints for a library that finds the SDK in this directory.
std::string path(const char* library, const std::string& sdk) {
    return library + (" gives 1: " + sdk) + "/" LIBRARIES "/gentlproducer/gtl:" + sdk +
           "/" LIBRARIES "/orvexCXP/bin:/x\n";
}

// An SDK, and a copy of the client, in a new directory.
class SdkLayout : public CleanEnvironmentTest {
protected:
    SdkLayout() {
        std::string name = "/tmp/sdk_layout_XXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        base = fs::canonical(name);
        installSdk(base + "/sdk");
        fs::copy_file(CLIENT_FILE, base + "/client");
    }
    ~SdkLayout() override {
        fs::remove_all(base);
    }

    static void installLibrary(const fs::path& directory) {
        fs::create_directories(directory);
        fs::copy_file(LIBRARY_FILE, directory / LIBRARY_NAME);
    }

    static void installSdk(const fs::path& sdk) {
        installLibrary(sdk / FRAMEWORK "Versions/A/Libraries");
        fs::create_directory_symlink("A", sdk / FRAMEWORK "Versions/Current");
        fs::create_directory_symlink("Versions/Current/Libraries", sdk / LIBRARIES);
    }

    void link(const fs::path& file, const fs::path& target) const {
        fs::create_directories(base / file.parent_path());
        fs::create_symlink(base / target, base / file);
    }

    // The output of the client if the dynamic loader links it to the library in this directory.
    std::string runClient(const fs::path& libraryDirectory, const std::string& startDirectory = "/",
                          const std::string& laterDirectory = ".",
                          const std::vector<std::string>& load = {}) const {
        // On macOS, the client can also find the library through a link next to it: the variable may not
        // reach the client, and it must not be set when the client loads files, because dlopen searches the
        // directory in the variable first.
        fs::remove(base + "/library");
        fs::create_directory_symlink(startDirectory / libraryDirectory, base + "/library");
        std::string command = "cd '" + startDirectory + "' && ";
        if (!isMacos || load.empty()) {
            command += LIBRARY_PATH_VARIABLE "='" + libraryDirectory.string() + "' ";
        }
        command += "exec " CLIENT_EMULATOR " '" + base + "/client' '" + laterDirectory + "'";
        for (const std::string& file : load) {
            command += " '" + file + "'";
        }
        command += " 2>&1";
        FILE* const output = popen(command.c_str(), "r");  // NOLINT(cert-env33-c): fixed commands
        std::string text;
        for (int byte = getc(output); byte != EOF; byte = getc(output)) {
            text += static_cast<char>(byte);
        }
        const int status = pclose(output);
        return status == 0 ? text : text + "ended with status " + std::to_string(status) + '\n';
    }

    static std::string found(const std::string& sdk) {
        return sdk + "\n" + path("linked", sdk);
    }

    std::string base;
};

// Paths are relative to the new directory. A libraryDirectory without a leading slash is passed as it is.
struct Place {
    const char* name;
    const char* libraryDirectory;
    const char* startDirectory;
    const char* laterDirectory;
    const char* sdk;
};

void PrintTo(const Place& place, std::ostream* stream) {
    *stream << place.name;
}

const Place places[] = {
    {"WithoutLinks", "/sdk/" FRAMEWORK "Versions/A/Libraries", "", "", "/sdk"},
    {"LinkToLibraries", "/sdk/" LIBRARIES, "", "", "/sdk"},
    {"LinkToCurrentVersion", "/sdk/" FRAMEWORK "Versions/Current/Libraries", "", "", "/sdk"},
    {"LinkToSdk", "/links/sdk/" LIBRARIES, "", "", "/sdk"},
    {"LinkToFrameworks", "/links/a/" LIBRARIES, "", "", "/sdk"},
    {"LinkToFramework", "/links/b/" LIBRARIES, "", "", "/sdk"},
    {"LinkToDirectory", "/links/c/d/e/f/link", "", "", "/sdk"},
    {"RelativeFromItsDirectory", ".", "/sdk/" LIBRARIES, "/sdk/" LIBRARIES, "/sdk"},
    {"RelativeFromTheSdk", LIBRARIES, "/sdk", "/sdk", "/sdk"},
    {"RelativeFromBesideTheSdk", "../sdk/" LIBRARIES, "/links", "/links", "/sdk"},
    // Each call resolves the path again, from the current directory.
    {"RelativeFromAnotherDirectory", ".", "/sdk/" LIBRARIES, "/other/b/c/d/e/f", isMacos ? "/sdk" : "/other"},
    {"LinkToFile", "/other/b/c/d/e/f", "", "", isMacos ? "/sdk" : "/other"},
};

class SdkPlace : public SdkLayout, public ::testing::WithParamInterface<Place> {};

INSTANTIATE_TEST_SUITE_P(Places, SdkPlace, ::testing::ValuesIn(places), ::testing::PrintToStringParamName());

TEST_P(SdkPlace, IsFound) {
    link("links/sdk", "sdk");
    link("links/a/Frameworks", "sdk/Frameworks");
    link("links/b/Frameworks/orvex.framework", "sdk/Frameworks/orvex.framework");
    link("links/c/d/e/f/link", "sdk/" LIBRARIES);
    link(fs::path("other/b/c/d/e/f") / LIBRARY_NAME, fs::path("sdk/" LIBRARIES) / LIBRARY_NAME);
    const Place& place = GetParam();
    const std::string directory = place.libraryDirectory;
    EXPECT_EQ(runClient(directory[0] == '/' ? base + directory : directory, base + place.startDirectory,
                        base + place.laterDirectory),
              found(base + place.sdk));
}

TEST_F(SdkLayout, RelativePathThatLeadsNowhereMakesParseFail) {
    EXPECT_EQ(runClient(LIBRARIES, base + "/sdk", "/"),
              isMacos
                  ? found(base + "/sdk")
                  : "OrvexTestCommandLineParser::getApplicationDir> realpath() failed\nlinked gives 0: /x\n");
}

// A copy of the library that is loaded with dlopen calls its own functions, not those of the linked copy.
TEST_F(SdkLayout, EveryCopyInAProcessFindsItsOwnSdk) {
    for (const char* name : {"second", "Orvex SDK 7", "a:b", "Ger\xC3\xA4t"}) {
        SCOPED_TRACE(name);
        const std::string sdk = base + "/" + name;
        installSdk(sdk);
        ASSERT_EQ(runClient(base + "/sdk/" LIBRARIES, sdk, ".",
                            {sdk + "/" LIBRARIES "/" LIBRARY_NAME, "./" LIBRARIES "/" LIBRARY_NAME}),
                  found(base + "/sdk") + path("loaded", sdk) + path("loaded", sdk));
    }
}

}  // namespace
