// The SDK's directory, and the producer path made of it, for every answer of the platform.

#include "OrvexTestCommandLineParser.h"

#include "support/faults.h"
#include "support/parser_test.h"

#include <cstddef>
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

// "<gtl>" and "<cxp>" are what follows the SDK's directory in the path.
std::string withEntries(std::string text) {
    for (const auto& [placeholder, entry] :
         Environment{{"<gtl>", "/Frameworks/orvex.framework/Libraries/gentlproducer/gtl:"},
                     {"<cxp>", "/Frameworks/orvex.framework/Libraries/orvexCXP/bin:"}}) {
        for (std::size_t i = text.find(placeholder); i != std::string::npos; i = text.find(placeholder)) {
            text.replace(i, placeholder.size(), entry);
        }
    }
    return text;
}

// References in the SDK's directory are expanded, too. It occurs twice, so that a "%" in it pairs with the
// one in the copy.
TEST_F(ProducerPath, IsTheExpandedDirectoriesAndTheOldValue) {
    const struct {
        const char* directory;
        Environment environment;
        const char* path;
    } rows[] = {
        {"", {}, "<gtl><cxp>/x"},
        {"/Orvex SDK 7", {}, "/Orvex SDK 7<gtl>/Orvex SDK 7<cxp>/x"},
        {"/50%off", {}, "/50off<cxp>/x"},
        {"/50%off", {{"off<gtl>/50", "(value)"}}, "/50(value)off<cxp>/x"},
        {"/a%B%c%d", {{"B", "(B)"}, {"c", "(c)"}}, "/a(B)cB(c)d<cxp>/x"},
        {"/a$$$(NAME)b", {{"NAME", "%OTHER%"}, {"OTHER", "no"}}, "/a$%OTHER%b<gtl>/a$%OTHER%b<cxp>/x"},
        {"/a$(GENICAM_GENTL64_PATH)b", {}, "/a/xb<gtl>/a/xb<cxp>/x"},
        // The only ")" is that of the reference at the end of the path.
        {"/a$(b", {}, "/a"},
        {"/a$(b", {{"b<gtl>/a$(b<cxp>$(GENICAM_GENTL64_PATH", "(value)"}}, "/a(value)"},
    };
    for (const auto& row : rows) {
        writeEnvironment({{"GENICAM_GENTL64_PATH", "/x"}});
        for (const auto& [name, value] : row.environment) {
            set(withEntries(name), value);
        }
        const std::string below = std::string(row.directory) + "/q";
        const With resolved(faults::resolvedPath, below.c_str());
        EXPECT_EQ(applicationDir(), row.directory);
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, words("app -tl DravikGTC"))) << row.directory;
        EXPECT_EQ(get("GENICAM_GENTL64_PATH"), withEntries(row.path)) << row.directory;
    }
}

TEST_F(ProducerPath, NeedsTheDirectoryOnlyForDravikGTC) {
    const Failure failure(FaultyCall::DlAddr);
    EXPECT_TRUE(parse(parser, words("app -tl DravikGigE")));
    EXPECT_FALSE(failure.happened());
}

}  // namespace
