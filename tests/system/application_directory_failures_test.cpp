#include "system/order_of_effects_test.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>
#include <typeinfo>

namespace {

// The message of the error that the search for the SDK's directory ends with.
std::string messageOfGetApplicationDir() {
    try {
        return "(no error, but " + OrvexTestCommandLineParser::getApplicationDir() + ")";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(typeid(error), typeid(std::runtime_error));
        return error.what();
    }
}

struct DirectoryFault {
    const char* testName;
    bool dladdrFails;
    bool realpathFails;
    const char* resolvedPath;
    const char* message;
    std::size_t callsMade;
};

const DirectoryFault directoryFaults[] = {
    {"DladdrFails", true, false, "/p/q", "OrvexTestCommandLineParser::getApplicationDir> dladdr() failed", 8},
    {"RealpathFails", false, true, "/p/q", "OrvexTestCommandLineParser::getApplicationDir> realpath() failed",
     9},
    {"BothFail", true, true, "/p/q", "OrvexTestCommandLineParser::getApplicationDir> dladdr() failed", 8},
    {"ResolvedPathWithoutSlash", false, false, "nowhere",
     "OrvexTestCommandLineParser::Parse> can't query path", 9},
    {"EmptyResolvedPath", false, false, "", "OrvexTestCommandLineParser::Parse> can't query path", 9},
};

class DirectoryFaultTable : public OrderOfEffectsTest, public ::testing::WithParamInterface<DirectoryFault> {
protected:
    static void breakDirectory() {
        interposition().dladdrFails = GetParam().dladdrFails;
        interposition().realpathFails = GetParam().realpathFails;
        interposition().resolvedPath = GetParam().resolvedPath;
    }
};

INSTANTIATE_TEST_SUITE_P(EachFault, DirectoryFaultTable, ::testing::ValuesIn(directoryFaults),
                         [](const auto& row) { return std::string(row.param.testName); });

}  // namespace

TEST_P(DirectoryFaultTable, MessageOfGetApplicationDir) {
    breakDirectory();
    EXPECT_EQ(messageOfGetApplicationDir(), GetParam().message);
    EXPECT_EQ(interposition().resolvedPathsFreed, interposition().resolvedPathsGiven);
}

TEST_P(DirectoryFaultTable, ParseKeepsExactlyWhatWasDoneBefore) {
    breakDirectory();
    EXPECT_FALSE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), afterSetting(environmentBefore, {transportVariables(1)}));
    EXPECT_EQ(fields(), fieldsAfter(1, 1));
    EXPECT_EQ(record(), recordBefore());
    EXPECT_EQ(interposition().calls, firstCalls(GetParam().callsMade));
    EXPECT_EQ(interposition().resolvedPathsFreed, interposition().resolvedPathsGiven);
}

TEST_P(DirectoryFaultTable, SecondParseDoesEverything) {
    breakDirectory();
    EXPECT_FALSE(parseEveryOption());
    repair();
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(readEnvironment(),
              afterSetting(environmentBefore,
                           {transportVariables(2), producerPath("/x/gtl"), sessionVariables(2)}));
    EXPECT_EQ(fields(), fieldsAfter(2, 3));
    EXPECT_EQ(record(), recordAfter(2));
}

TEST_P(DirectoryFaultTable, ThirdParseEndsAtTheSameStepAndKeepsTheRecord) {
    breakDirectory();
    EXPECT_FALSE(parseEveryOption());
    repair();
    EXPECT_TRUE(parseEveryOption());
    writeEnvironment(environmentBefore);
    breakDirectory();
    EXPECT_FALSE(parseEveryOption());
    EXPECT_EQ(readEnvironment(), afterSetting(environmentBefore, {transportVariables(3)}));
    EXPECT_EQ(fields(), fieldsAfter(3, 6));
    EXPECT_EQ(record(), recordAfter(2));
}

TEST_P(DirectoryFaultTable, DoesNotMatterWithoutTheProducers) {
    breakDirectory();
    EXPECT_TRUE(parseArguments({"app", "-tl", "DravikGigE"}));
    EXPECT_EQ(readEnvironment(),
              changed(environmentBefore, {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                          {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
                                          {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"},
                                          {"TRANSPORT_LAYER", "DravikGigE"}}));
    EXPECT_EQ(record(), changed(recordBefore(),
                                {{"group", "orvex"}, {"fixedZero", "0"}, {"transportLayers", "DravikGigE"}}));
}

struct ClimbRow {
    const char* testName;
    const char* libraryFile;
    const char* resolvedFrom;
};

class Climb : public OrderOfEffectsTest, public ::testing::WithParamInterface<ClimbRow> {};

const ClimbRow climbRows[] = {
    {"DeepFile", "/p/q/r/s/t/u/file.dylib", "/p/q/r/s/t/u/../../../.."},
    {"FileInTheRoot", "/file.dylib", "/../../../.."},
    {"RelativeFile", "lib/file.dylib", "lib/../../../.."},
    {"DoubledSlash", "/p//file.dylib", "/p//../../../.."},
    {"NoSlashMeansNoClimb", "file.dylib", "file.dylib"},
    {"EmptyName", "", ""},
};
INSTANTIATE_TEST_SUITE_P(EachFile, Climb, ::testing::ValuesIn(climbRows),
                         [](const auto& row) { return std::string(row.param.testName); });

TEST_P(Climb, FileNameGivesWayToFourLevels) {
    interposition().libraryFile = GetParam().libraryFile;
    EXPECT_EQ(OrvexTestCommandLineParser::getApplicationDir(), "/p");
    EXPECT_EQ(interposition().realpathArguments, std::vector<std::string>{GetParam().resolvedFrom});
}

struct LastCutRow {
    const char* testName;
    const char* resolvedPath;
    const char* applicationDir;
};

class LastCut : public OrderOfEffectsTest, public ::testing::WithParamInterface<LastCutRow> {};

const LastCutRow lastCutRows[] = {
    {"TwoLevels", "/p/q", "/p"}, {"OneLevel", "/p", ""},
    {"Root", "/", ""},           {"ManyLevels", "/a/b/c/d/e/f", "/a/b/c/d/e"},
    {"Relative", "p/q", "p"},    {"HighBytes", "/\x80\xFF/q", "/\x80\xFF"},
};
INSTANTIATE_TEST_SUITE_P(EachPath, LastCut, ::testing::ValuesIn(lastCutRows),
                         [](const auto& row) { return std::string(row.param.testName); });

TEST_P(LastCut, ApplicationDirIsWhatStandsBeforeTheLastSlash) {
    interposition().resolvedPath = GetParam().resolvedPath;
    EXPECT_EQ(OrvexTestCommandLineParser::getApplicationDir(), GetParam().applicationDir);
    EXPECT_EQ(interposition().resolvedPathsGiven, 1);
    EXPECT_EQ(interposition().resolvedPathsFreed, 1);
}

class ApplicationDirectory : public OrderOfEffectsTest {};

TEST_F(ApplicationDirectory, FileThatIsResolvedIsTheLibraryItself) {
    Dl_info library = {};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "OrvexTestCommandLineParser_Parse"), &library), 0);
    const std::string file = library.dli_fname;
    ASSERT_NE(file.find("testcommandlineparser."), std::string::npos);
    interposition().calls.clear();
    OrvexTestCommandLineParser::getApplicationDir();
    EXPECT_EQ(interposition().realpathArguments,
              std::vector<std::string>{file.substr(0, file.rfind('/')) + "/../../../.."});
    EXPECT_EQ(interposition().calls, (std::vector<std::string>{"dladdr", "realpath"}));
}

TEST_F(ApplicationDirectory, PathThatThePlatformResolvesIsReleased) {
    interposition().resolvedPath.reset();
    OrvexTestCommandLineParser::getApplicationDir();
    EXPECT_EQ(interposition().resolvedPathsGiven, 1);
    EXPECT_EQ(interposition().resolvedPathsFreed, 1);
}

TEST_F(ApplicationDirectory, MissingDirectoryIsAFailureOfThePlatform) {
    interposition().resolvedPath.reset();
    interposition().libraryFile = "/no such directory/file.dylib";
    EXPECT_EQ(messageOfGetApplicationDir(),
              "OrvexTestCommandLineParser::getApplicationDir> realpath() failed");
}

TEST_F(ApplicationDirectory, FileWithoutSlashIsResolvedAgainstTheCurrentDirectory) {
    interposition().resolvedPath.reset();
    interposition().libraryFile = "no such file.dylib";
    EXPECT_EQ(messageOfGetApplicationDir(),
              "OrvexTestCommandLineParser::getApplicationDir> realpath() failed");
    interposition().libraryFile = ".";
    const std::string current = OrvexTestCommandLineParser::getApplicationDir();
    EXPECT_EQ(interposition().realpathArguments.back(), ".");
    EXPECT_EQ(current.rfind('/', 0) == 0 || current.empty(), true) << current;
}

struct InstallationRow {
    const char* testName;
    const char* resolvedPath;
    const char* producerPath;
};

class Installation : public OrderOfEffectsTest, public ::testing::WithParamInterface<InstallationRow> {};

const InstallationRow installationRows[] = {
    {"Plain", "/p/q",
     "/p/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "/p/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"Root", "/q",
     "/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"PercentReference", "/%HOMEDIR%/q",
     "//h/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "//h/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"UndefinedPercentReference", "/a%UNSET_NAME%b/q",
     "/ab/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "/ab/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"ParenthesisReference", "/$(HOMEDIR)/q",
     "//h/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "//h/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"TwoPercentsStay", "/a%%b/q",
     "/a%%b/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "/a%%b/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"TwoDollarsBecomeOne", "/a$$b/q",
     "/a$b/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "/a$b/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"LoneDollarStays", "/a$b/q",
     "/a$b/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "/a$b/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    // The directory stands in the path twice, so that its one percent sign opens and closes a reference.
    {"LonePercentMeetsItself", "/a%b/q", "/ab/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"LonePercentMeetsItselfAroundADefinedName", "/a%d/q",
     "/a(defined)d/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
    {"HighBytes", "/\x80\xFF/q",
     "/\x80\xFF/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"
     "/\x80\xFF/Frameworks/orvex.framework/Libraries/orvexCXP/bin:/x/gtl"},
};
INSTANTIATE_TEST_SUITE_P(EachDirectory, Installation, ::testing::ValuesIn(installationRows),
                         [](const auto& row) { return std::string(row.param.testName); });

TEST_P(Installation, ProducerPathIsBuiltFromTheDirectoryAndExpanded) {
    set("HOMEDIR", "/h");
    set("d/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:/a", "(defined)");
    interposition().resolvedPath = GetParam().resolvedPath;
    EXPECT_TRUE(parseArguments({"app", "-tl", "DravikGTC"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), GetParam().producerPath);
}

TEST_F(ApplicationDirectory, SecondParsePutsTheDirectoriesInFrontOnceMore) {
    EXPECT_TRUE(parseEveryOption());
    EXPECT_TRUE(parseEveryOption());
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), producerDirectories + producerDirectories + "/x/gtl");
}
