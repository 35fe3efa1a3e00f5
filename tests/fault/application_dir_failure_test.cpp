// The SDK's directory, and the producer path derived from it, for every result of dladdr and realpath.

#include "OrvexTestCommandLineParser.h"

#include "support/faults.h"
#include "support/parser_test.h"

#include <stdexcept>
#include <string>
#include <typeinfo>

namespace {

using faults::CallLog;
using faults::Failure;
using faults::FaultyCall;
using faults::With;

using ApplicationDir = ParserTest;
using ProducerPath = ParserTest;

// The directory, or the message of the exception.
std::string applicationDir() {
    try {
        return OrvexTestCommandLineParser::getApplicationDir();
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(typeid(error), typeid(std::runtime_error));
        return error.what();
    }
}

TEST_F(ApplicationDir, ErrorNamesThePlatformFunctionThatFailed) {
    {
        const Failure failure(FaultyCall::DlAddr);
        EXPECT_EQ(applicationDir(), "OrvexTestCommandLineParser::getApplicationDir> dladdr() failed");
    }
    const With library(faults::libraryFile, "/no such directory/library");
    EXPECT_EQ(applicationDir(), "OrvexTestCommandLineParser::getApplicationDir> realpath() failed");
}

TEST_F(ApplicationDir, IsResolvedFourLevelsAboveTheDirectoryOfTheLibrary) {
    const With resolved(faults::resolvedPath, "/p/q");
    const char* const rows[][2] = {
        {"/p/q/r/s/t/u/library", "/p/q/r/s/t/u/../../../.."},
        {"/library", "/../../../.."},
        {"lib/library", "lib/../../../.."},
        {"library", "library"},
        {"", ""},
    };
    for (const auto& [file, path] : rows) {
        const With library(faults::libraryFile, file);
        const CallLog log;
        EXPECT_EQ(applicationDir(), "/p");
        EXPECT_EQ(log.calls, (Strings{"dladdr", std::string("realpath ") + path}));
    }
}

TEST_F(ApplicationDir, EndsBeforeTheLastSlashAndReleasesTheBuffer) {
    const char* const noSlash = "OrvexTestCommandLineParser::Parse> can't query path";
    const char* const rows[][2] = {
        {"/p/q", "/p"}, {"/p", ""}, {"/", ""}, {"p/q", "p"}, {"", noSlash}, {"nowhere", noSlash},
    };
    for (const auto& [path, directory] : rows) {
        const With resolved(faults::resolvedPath, path);
        EXPECT_EQ(applicationDir(), directory) << path;
        EXPECT_EQ(faults::liveResolvedPaths(), 0U) << path;
    }
}

// References in the SDK's directory are expanded, too. It occurs twice, so a "%" in it pairs with the one in
// the second copy.
TEST_F(ProducerPath, ConsistsOfTheExpandedDirectoriesAndTheOldValue) {
    const std::string gtl = "/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:";
    const std::string cxp = "/Frameworks/orvex.framework/Libraries/orvexCXP/bin:";
    const struct {
        std::string directory;
        Environment environment;
        std::string path;
    } rows[] = {
        {"", {}, gtl + cxp + "/x"},
        {"/Orvex SDK 7", {}, "/Orvex SDK 7" + gtl + "/Orvex SDK 7" + cxp + "/x"},
        {"/50%off", {}, "/50off" + cxp + "/x"},
        {"/50%off", {{"off" + gtl + "/50", "(value)"}}, "/50(value)off" + cxp + "/x"},
        {"/a%B%c%d", {{"B", "(B)"}, {"c", "(c)"}}, "/a(B)cB(c)d" + cxp + "/x"},
        {"/a$$b$(NAME)", {{"NAME", "%OTHER%"}}, "/a$b%OTHER%" + gtl + "/a$b%OTHER%" + cxp + "/x"},
        {"/a$(GENICAM_GENTL64_PATH)b", {}, "/a/xb" + gtl + "/a/xb" + cxp + "/x"},
        // The only ")" is that of the reference at the end of the path.
        {"/a$(b", {}, "/a"},
        {"/a$(b", {{"b" + gtl + "/a$(b" + cxp + "$(GENICAM_GENTL64_PATH", "(value)"}}, "/a(value)"},
    };
    for (const auto& row : rows) {
        writeEnvironment(changed(row.environment, {{"GENICAM_GENTL64_PATH", "/x"}}));
        const std::string below = row.directory + "/q";
        const With resolved(faults::resolvedPath, below.c_str());
        EXPECT_EQ(applicationDir(), row.directory);
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, words("app -tl DravikGTC"))) << row.directory;
        EXPECT_EQ(get("GENICAM_GENTL64_PATH"), row.path) << row.directory;
    }
}

TEST_F(ProducerPath, NeedsTheDirectoryOnlyForDravikGTC) {
    const Failure failure(FaultyCall::DlAddr);
    EXPECT_TRUE(parse(parser, words("app -tl DravikGigE")));
    EXPECT_FALSE(failure.happened());
}

}  // namespace
