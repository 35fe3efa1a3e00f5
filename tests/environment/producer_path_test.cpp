#include "OrvexTestCommandLineParserC.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace {

namespace fs = std::filesystem;

// The file that the shared library was loaded from.
fs::path libraryFile() {
    Dl_info library = {};
    void* function = dlsym(RTLD_DEFAULT, "OrvexTestCommandLineParser_Parse");
    EXPECT_NE(dladdr(function, &library), 0);
    return library.dli_fname;
}

// The text before the last component of a resolved path.
std::string cutLastComponent(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

// Five levels above the directory that holds the file.
std::string fiveLevelsAbove(const fs::path& file) {
    const fs::path directory = fs::canonical(file.parent_path());
    const fs::path fourAbove = directory.parent_path().parent_path().parent_path().parent_path();
    return cutLastComponent(fourAbove.string());
}

std::string producerDirectories(const std::string& applicationDir) {
    const std::string libraries = applicationDir + "/Frameworks/orvex.framework/Libraries";
    return libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:";
}

}  // namespace

class ProducerPath : public CleanEnvironmentTest {
protected:
    OrvexTestCommandLineParser parser;
    const std::string directories = producerDirectories(fiveLevelsAbove(libraryFile()));
};

TEST_F(ProducerPath, ApplicationDirIsFiveLevelsAboveTheDirectoryOfTheLibrary) {
    EXPECT_EQ(OrvexTestCommandLineParser::getApplicationDir(), fiveLevelsAbove(libraryFile()));
}

TEST_F(ProducerPath, ApplicationDirLeavesTheEnvironmentAlone) {
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    const Environment before = readEnvironment();
    OrvexTestCommandLineParser::getApplicationDir();
    EXPECT_EQ(readEnvironment(), before);
}

TEST_F(ProducerPath, ProducerDirectoriesStandInFrontOfTheOldValue) {
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGTC"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + "/x/gtl");
}

TEST_F(ProducerPath, WithoutAnOldValueNothingFollowsTheLastColon) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGTC"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories);
}

TEST_F(ProducerPath, EmptyOldValueIsLikeNone) {
    set("GENICAM_GENTL64_PATH", "");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGTC"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories);
}

TEST_F(ProducerPath, ReferencesInTheOldValueAreNotExpandedAgain) {
    set("HOMEDIR", "/h");
    for (const char* value :
         {"$(HOMEDIR)", "%HOMEDIR%", "a%b", "%", "$$", "%%", "$(GENICAM_GENTL64_PATH)", "$("}) {
        SCOPED_TRACE(value);
        set("GENICAM_GENTL64_PATH", value);
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "-tl", "DravikGTC"}));
        EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + value);
    }
}

TEST_F(ProducerPath, EveryByteOfTheOldValueIsKept) {
    std::string value;
    for (int byte = 1; byte <= 0xFF; ++byte) {
        value += static_cast<char>(byte);
    }
    set("GENICAM_GENTL64_PATH", value);
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGTC"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + value);
}

TEST_F(ProducerPath, SecondParsePutsTheDirectoriesInFrontOnceMore) {
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGTC"}));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + directories + "/x/gtl");
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, {"app", "-tl", "DravikGTC"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + directories + directories + "/x/gtl");
}

TEST_F(ProducerPath, NameAnywhereInTheListAsksForTheProducers) {
    for (const char* tlList : {"DravikGTC", "DravikGTCx", "xDravikGTC", "DravikGigE:DravikGTC", "A,DravikGTC",
                               "A,B:DravikGTC:C", "DravikGTC,A", " DravikGTC ", "DravikDravikGTC"}) {
        SCOPED_TRACE(tlList);
        set("GENICAM_GENTL64_PATH", "/x/gtl");
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "-tl", tlList}));
        EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + "/x/gtl");
    }
}

TEST_F(ProducerPath, ListWithoutTheNameLeavesTheVariable) {
    for (const char* tlList : {"", "DravikGigE", "dravikgtc", "DRAVIKGTC", "DravikGTc", "DravikGT",
                               "Dravik,GTC", "GTC", "Dravik GTC", "DravikGigE:SocketDriver,DravikG"}) {
        SCOPED_TRACE(tlList);
        set("GENICAM_GENTL64_PATH", "/x/gtl");
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "-tl", tlList}));
        EXPECT_EQ(get("GENICAM_GENTL64_PATH"), "/x/gtl");
    }
}

TEST_F(ProducerPath, ListWithoutTheNameLeavesTheVariableUndefined) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGigE"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), "(undefined)");
}

TEST_F(ProducerPath, NameElsewhereThanInTheTransportLayersDoesNotCount) {
    EXPECT_TRUE(parse(
        parser, {"app", "DravikGTC", "-o", "DravikGTC", "-p", "DravikGTC", "-tdc_product", "DravikGTC"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), "(undefined)");
}

TEST_F(ProducerPath, NameInEitherArgumentVariableCounts) {
    for (const char* variable : {"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_"}) {
        SCOPED_TRACE(variable);
        writeEnvironment({{variable, "-tl DravikGTC"}});
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app"}));
        EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories);
    }
}

TEST_F(ProducerPath, ChangesNoOtherVariable) {
    const Environment before = {{"UNRELATED", "text"}, {"GENICAM_GENTL32_PATH", "/y"}};
    writeEnvironment(before);
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGTC"}));
    EXPECT_EQ(readEnvironment(), changed(before, {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                                  {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC"},
                                                  {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"},
                                                  {"GENICAM_GENTL64_PATH", directories},
                                                  {"TRANSPORT_LAYER", "DravikGTC"}}));
}

// A copy of the library in a directory of the test's own.
class InstalledCopy : public CleanEnvironmentTest {
protected:
    InstalledCopy() {
        std::string name = (fs::canonical("/tmp") / "producer_path_test.XXXXXX").string();
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        root = name;
    }
    ~InstalledCopy() override {
        fs::remove_all(root);
    }

    fs::path copyTo(const fs::path& file) const {
        fs::create_directories((root / file).parent_path());
        fs::copy_file(libraryFile(), root / file);
        return root / file;
    }

    // What getApplicationDir of the library in that file returns.
    static std::string applicationDirOf(const fs::path& file) {
        const std::unique_ptr<void, int (*)(void*)> library(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL),
                                                            dlclose);
        if (library == nullptr) {
            return dlerror();
        }
        // The name depends on the standard library's string.
        void* function = dlsym(library.get(), "_ZN26OrvexTestCommandLineParser17getApplicationDirB5cxx11Ev");
        if (function == nullptr) {
            function = dlsym(library.get(), "_ZN26OrvexTestCommandLineParser17getApplicationDirEv");
        }
        if (function == nullptr) {
            return "(not found)";
        }
        return reinterpret_cast<std::string (*)()>(function)();
    }

    fs::path root;
};

TEST_F(InstalledCopy, ApplicationDirIsFiveLevelsAboveTheDirectory) {
    const fs::path file = copyTo("p/q/r/s/t/u/file.dylib");
    EXPECT_EQ(applicationDirOf(file), (root / "p").string());
}

TEST_F(InstalledCopy, FileNameIsCutBeforeSymbolicLinksAreResolved) {
    const fs::path file = copyTo("elsewhere/file.dylib");
    fs::create_directories(root / "p/q/r/s/t/u");
    fs::create_symlink(file, root / "p/q/r/s/t/u/link.dylib");
    EXPECT_EQ(applicationDirOf(root / "p/q/r/s/t/u/link.dylib"), (root / "p").string());
}

TEST_F(InstalledCopy, LinkedDirectoryIsResolvedBeforeTheClimb) {
    copyTo("p/q/r/s/t/u/file.dylib");
    fs::create_directories(root / "a/b/c/d/e");
    fs::create_directory_symlink(root / "p/q/r/s/t/u", root / "a/b/c/d/e/link");
    EXPECT_EQ(applicationDirOf(root / "a/b/c/d/e/link/file.dylib"), (root / "p").string());
}

TEST_F(InstalledCopy, LinkedDirectoryInTheMiddleIsResolvedBeforeTheClimb) {
    copyTo("p/q/r/s/t/u/file.dylib");
    fs::create_directories(root / "a/b/c");
    fs::create_directory_symlink(root / "p/q/r/s", root / "a/b/c/link");
    EXPECT_EQ(applicationDirOf(root / "a/b/c/link/t/u/file.dylib"), (root / "p").string());
}

TEST_F(InstalledCopy, ClimbThatReachesTheRootGivesTheEmptyText) {
    const fs::path file = copyTo("file.dylib");
    EXPECT_EQ(applicationDirOf(file), "");
}

TEST_F(InstalledCopy, ClimbThatStopsBelowTheRootGivesTheEmptyText) {
    const fs::path file = copyTo("q/r/s/file.dylib");
    EXPECT_EQ(applicationDirOf(file), "");
}
