// Where the library finds the SDK that it belongs to, for each way in which it can be loaded.

#include "system/sdk_layout.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

class SdkLayout : public SdkLayoutTest {
protected:
    SdkLayout() {
        installSdk(base / "sdk");
    }

    // What the client prints when the SDK was found and the search path was not defined before.
    std::string found() const {
        return withBase(clientOutput("{base}/sdk", "{base}/sdk" GTL_ENTRY "{base}/sdk" CXP_ENTRY));
    }

    static std::string runFrom(const fs::path& libraryPath) {
        return runClient({{"LD_LIBRARY_PATH", libraryPath}});
    }
};

// ---- The search path from before

TEST_F(SdkLayout, UndefinedSearchPathLeavesAnEmptyEnd) {
    EXPECT_EQ(runFrom(base / "sdk" / librariesWithoutLinks), found());
}

TEST_F(SdkLayout, DirectoryOfTheLibraryIsTheOneInTheSearchPath) {
    EXPECT_TRUE(fs::equivalent(base / "sdk" / librariesWithoutLinks, base / "sdk" / librariesThroughLinks));
}

TEST_F(SdkLayout, EmptySearchPathLeavesAnEmptyEnd) {
    EXPECT_EQ(
        runClient({{"LD_LIBRARY_PATH", base / "sdk" / librariesWithoutLinks}, {"GENICAM_GENTL64_PATH", ""}}),
        found());
}

TEST_F(SdkLayout, SearchPathFromBeforeIsKeptAsItStands) {
    for (const char* before : {"/x/gtl", "/x/gtl:/y/gtl", ":", "$(HOME)/gtl", "%HOME%/gtl", "100%", "$$",
                               "$(", "%%", "$(GENICAM_GENTL64_PATH)", "/with blank"}) {
        SCOPED_TRACE(before);
        EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", base / "sdk" / librariesWithoutLinks},
                             {"GENICAM_GENTL64_PATH", before},
                             {"HOME", "/home/user"}}),
                  withBase(clientOutput(
                      "{base}/sdk", std::string("{base}/sdk" GTL_ENTRY "{base}/sdk" CXP_ENTRY) + before)));
    }
}

// ---- Links

TEST_F(SdkLayout, IsFoundThroughTheLibrariesLink) {
    EXPECT_EQ(runFrom(base / "sdk" / librariesThroughLinks), found());
}

TEST_F(SdkLayout, IsFoundThroughTheLinkToTheCurrentVersion) {
    EXPECT_EQ(runFrom(base / "sdk/Frameworks/orvex.framework/Versions/Current/Libraries"), found());
}

TEST_F(SdkLayout, IsFoundThroughALinkToTheSdk) {
    fs::create_directories(base / "elsewhere");
    fs::create_directory_symlink(base / "sdk", base / "elsewhere/link");
    EXPECT_EQ(runFrom(base / "elsewhere/link" / librariesWithoutLinks), found());
    EXPECT_EQ(runFrom(base / "elsewhere/link" / librariesThroughLinks), found());
}

TEST_F(SdkLayout, IsFoundThroughALinkToTheFrameworksDirectory) {
    fs::create_directories(base / "elsewhere/deeper");
    fs::create_directory_symlink("../../sdk/Frameworks", base / "elsewhere/deeper/Frameworks");
    EXPECT_EQ(runFrom(base / "elsewhere/deeper" / librariesThroughLinks), found());
}

TEST_F(SdkLayout, IsFoundThroughALinkToTheFramework) {
    fs::create_directories(base / "elsewhere/Frameworks");
    fs::create_directory_symlink(base / "sdk/Frameworks/orvex.framework",
                                 base / "elsewhere/Frameworks/orvex.framework");
    EXPECT_EQ(runFrom(base / "elsewhere" / librariesThroughLinks), found());
}

TEST_F(SdkLayout, IsFoundThroughALinkToTheDirectoryOfTheLibrary) {
    fs::create_directories(base / "a/b/c/d/e");
    fs::create_directory_symlink(base / "sdk" / librariesWithoutLinks, base / "a/b/c/d/e/link");
    EXPECT_EQ(runFrom(base / "a/b/c/d/e/link"), found());
}

TEST_F(SdkLayout, LinkInPlaceOfTheFileIsNotFollowed) {
    fs::create_directories(base / "other/b/c/d/e/f");
    fs::create_symlink(base / "sdk" / librariesWithoutLinks / libraryName,
                       base / "other/b/c/d/e/f" / libraryName);
    EXPECT_EQ(runFrom(base / "other/b/c/d/e/f"),
              withBase(clientOutput("{base}/other", "{base}/other" GTL_ENTRY "{base}/other" CXP_ENTRY)));
}

// ---- Relative paths

TEST_F(SdkLayout, IsFoundFromTheDirectoryOfTheLibrary) {
    EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", "."}}, base / "sdk" / librariesWithoutLinks), found());
    EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", "."}}, base / "sdk" / librariesThroughLinks), found());
}

TEST_F(SdkLayout, IsFoundFromTheDirectoryOfTheSdk) {
    EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", librariesThroughLinks}}, base / "sdk"), found());
}

TEST_F(SdkLayout, IsFoundFromADirectoryBesideTheSdk) {
    fs::create_directories(base / "beside");
    EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", fs::path("../sdk") / librariesThroughLinks}}, base / "beside"),
              found());
}

TEST_F(SdkLayout, RelativePathIsTakenFromTheCurrentDirectoryOfTheCall) {
    fs::create_directories(base / "other/b/c/d/e/f");
    EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", "."}}, base / "sdk" / librariesWithoutLinks,
                        {base / "other/b/c/d/e/f"}),
              withBase(clientOutput("{base}/other", "{base}/other" GTL_ENTRY "{base}/other" CXP_ENTRY)));
}

TEST_F(SdkLayout, RelativePathThatLeadsNowhereMakesParseFail) {
    EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", librariesThroughLinks}, {"GENICAM_GENTL64_PATH", "/x/gtl"}},
                        base / "sdk", {"/"}),
              "exception: OrvexTestCommandLineParser::getApplicationDir> realpath() failed\n"
              "parse: false\n"
              "path: /x/gtl\n");
}

// ---- A library that is loaded by its file name

TEST_F(SdkLayout, IsFoundForALibraryThatIsLoadedByItsFileName) {
    const std::string expected =
        withBase("parse: true\npath: {base}/sdk" GTL_ENTRY "{base}/sdk" CXP_ENTRY "/x\n");
    const Environment environment = {{"GENICAM_GENTL64_PATH", "/x"}};
    EXPECT_EQ(runLoader(base / "sdk" / librariesThroughLinks / libraryName, environment), expected);
    EXPECT_EQ(runLoader(fs::path(librariesThroughLinks) / libraryName, environment, base / "sdk"), expected);
    EXPECT_EQ(runLoader(std::string("./") + libraryName, environment, base / "sdk" / librariesWithoutLinks),
              expected);
}

TEST_F(SdkLayout, ColonInTheDirectoryIsKept) {
    installSdk(base / "a:b");
    EXPECT_EQ(runLoader(base / "a:b" / librariesThroughLinks / libraryName, {}),
              withBase("parse: true\npath: {base}/a:b" GTL_ENTRY "{base}/a:b" CXP_ENTRY "\n"));
}

// ---- Too near the root

struct Depth {
    const char* name;
    const char* directory;
    const char* expected;
};

void PrintTo(const Depth& depth, std::ostream* stream) {
    *stream << depth.name;
}

class NearTheRoot : public SdkLayoutTest, public ::testing::WithParamInterface<Depth> {
protected:
    NearTheRoot() : SdkLayoutTest("/tmp") {}
};

// The directory of the test lies two levels below the root.
const std::vector<Depth> depths = {
    {"TwoLevels", "", ""},       {"ThreeLevels", "c", ""},         {"FourLevels", "c/d", ""},
    {"FiveLevels", "c/d/e", ""}, {"SixLevels", "c/d/e/f", "/tmp"}, {"SevenLevels", "c/d/e/f/g", "{base}"},
};

TEST_P(NearTheRoot, DirectoryIsEmptyWhereTheClimbReachesTheRoot) {
    ASSERT_EQ(base.parent_path(), "/tmp");
    installLibrary(base / GetParam().directory);
    const std::string directory = GetParam().expected;
    EXPECT_EQ(runClient({{"LD_LIBRARY_PATH", base / GetParam().directory}, {"GENICAM_GENTL64_PATH", "/x"}}),
              withBase(clientOutput(directory, directory + GTL_ENTRY + directory + CXP_ENTRY + "/x")));
}

INSTANTIATE_TEST_SUITE_P(Depths, NearTheRoot, ::testing::ValuesIn(depths),
                         [](const auto& info) { return info.param.name; });

}  // namespace
