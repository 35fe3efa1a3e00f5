#include "OrvexTestCommandLineParser.h"

#include "support/clean_environment.h"

#include <dlfcn.h>

#include <filesystem>
#include <string>

namespace {

using ApplicationDir = CleanEnvironmentTest;

TEST_F(ApplicationDir, IsFiveLevelsAboveTheDirectoryOfTheLibrary) {
    Dl_info library = {};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "OrvexTestCommandLineParser_Parse"), &library), 0);
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    const Environment before = readEnvironment();
    std::filesystem::path directory = std::filesystem::canonical(library.dli_fname).parent_path();
    for (int level = 0; level < 5; ++level) {
        directory = directory.parent_path();
    }
    EXPECT_EQ(OrvexTestCommandLineParser::getApplicationDir(), directory == "/" ? "" : directory.string());
    EXPECT_EQ(readEnvironment(), before);
}

}  // namespace
