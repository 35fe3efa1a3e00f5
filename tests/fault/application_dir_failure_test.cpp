// The directory of the SDK, and the producer path made of it, for whatever the platform answers.

#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/faults.h"

#include <dlfcn.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

namespace {

using faults::CallLog;
using faults::Failure;
using faults::FaultyCall;
using faults::With;

using ApplicationDir = CleanEnvironmentTest;
using ProducerPath = CleanEnvironmentTest;

// The directory, or the message of the exception.
std::string applicationDir() {
    try {
        return OrvexTestCommandLineParser::getApplicationDir();
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(typeid(error), typeid(std::runtime_error));
        return error.what();
    }
}

TEST_F(ApplicationDir, NamesThePlatformFunctionThatFails) {
    {
        const Failure failure(FaultyCall::DlAddr);
        EXPECT_EQ(applicationDir(), "OrvexTestCommandLineParser::getApplicationDir> dladdr() failed");
    }
    const With library(faults::libraryFile, "/no such directory/library");
    EXPECT_EQ(applicationDir(), "OrvexTestCommandLineParser::getApplicationDir> realpath() failed");
}

TEST_F(ApplicationDir, IsSoughtFourLevelsAboveTheFile) {
    const With resolved(faults::resolvedPath, "/p/q");
    const char* const rows[][2] = {
        {"/p/q/r/s/t/u/library", "/p/q/r/s/t/u/../../../.."},
        {"/library", "/../../../.."},
        {"lib/library", "lib/../../../.."},
        {"/p//library", "/p//../../../.."},
        {"library", "library"},
        {"", ""},
    };
    for (const auto& [file, sought] : rows) {
        const With library(faults::libraryFile, file);
        const CallLog log;
        EXPECT_EQ(applicationDir(), "/p");
        ASSERT_EQ(log.calls, (std::vector<std::string>{"dladdr", std::string("realpath ") + sought}));
    }
}

TEST_F(ApplicationDir, IsCutAtTheLastSlashAndReleasesTheBuffer) {
    const char* const noSlash = "OrvexTestCommandLineParser::Parse> can't query path";
    const char* const rows[][2] = {
        {"/p/q", "/p"},
        {"/p", ""},
        {"/", ""},
        {"/a/b/c/d/e/f", "/a/b/c/d/e"},
        {"p/q", "p"},
        {"", noSlash},
        {"nowhere", noSlash},
        {"/\x80\xFF/q", "/\x80\xFF"},
    };
    for (const auto& [path, directory] : rows) {
        const With resolved(faults::resolvedPath, path);
        ASSERT_EQ(applicationDir(), directory) << path;
        ASSERT_EQ(faults::liveResolvedPaths(), 0U) << path;
    }
}

TEST_F(ApplicationDir, IsThatOfTheFileOfTheLibraryItself) {
    Dl_info library = {};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "OrvexTestCommandLineParser_Parse"), &library), 0);
    const std::string file = library.dli_fname;
    ASSERT_NE(file.find("testcommandlineparser."), std::string::npos);
    const CallLog log;
    applicationDir();
    EXPECT_EQ(log.calls.back(), "realpath " + file.substr(0, file.rfind('/')) + "/../../../..");
    EXPECT_EQ(faults::liveResolvedPaths(), 0U);
}

// The directory belongs to a text in which references are expanded. It stands there twice, so that a "%" in
// it always finds a second one.
struct SdkName {
    const char* name;
    Environment environment;
    // Of which "/x" is what it was before; "<gtl>" and "<cxp>" stand for what follows the directory's name.
    const char* path;
};

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

const SdkName sdkNames[] = {
    {"", {}, "<gtl><cxp>/x"},
    {"/sdk", {}, "/sdk<gtl>/sdk<cxp>/x"},
    {"/Orvex SDK 7", {}, "/Orvex SDK 7<gtl>/Orvex SDK 7<cxp>/x"},
    {"/\x80\xFF", {}, "/\x80\xFF<gtl>/\x80\xFF<cxp>/x"},

    // One "%" encloses, with its repetition, all that is between them.
    {"/50%off", {}, "/50off<cxp>/x"},
    {"/50%off", {{"off<gtl>/50", "(text)"}}, "/50(text)off<cxp>/x"},
    {"/a%NAME%b", {{"NAME", "value"}}, "/avalueb<gtl>/avalueb<cxp>/x"},
    {"/a%NAME%b", {}, "/ab<gtl>/ab<cxp>/x"},
    {"/a%$(NAME)%b", {{"NAME", "wrong"}, {"$(NAME)", "value"}}, "/avalueb<gtl>/avalueb<cxp>/x"},
    {"/a%%b", {}, "/a%%b<gtl>/a%%b<cxp>/x"},
    // The third "%" of the first directory takes the first one of the second directory.
    {"/a%B%c%d", {{"B", "(B)"}, {"c", "(c)"}}, "/a(B)cB(c)d<cxp>/x"},

    {"/a$(NAME)b", {{"NAME", "value"}}, "/avalueb<gtl>/avalueb<cxp>/x"},
    {"/a$(NAME)b", {}, "/ab<gtl>/ab<cxp>/x"},
    {"/a$(N%M)b", {{"N%M", "value"}}, "/avalueb<gtl>/avalueb<cxp>/x"},
    {"/a$(GENICAM_GENTL64_PATH)b", {}, "/a/xb<gtl>/a/xb<cxp>/x"},
    // The only ")" is that of the reference at the end of the whole text, which is lost with the rest.
    {"/a$(b", {}, "/a"},
    {"/a$(b", {{"b<gtl>/a$(b<cxp>$(GENICAM_GENTL64_PATH", "(text)"}}, "/a(text)"},

    {"/a$b", {{"b", "wrong"}}, "/a$b<gtl>/a$b<cxp>/x"},
    {"/a$$b", {}, "/a$b<gtl>/a$b<cxp>/x"},
    {"/a$$(NAME)b", {{"NAME", "wrong"}}, "/a$(NAME)b<gtl>/a$(NAME)b<cxp>/x"},
    {"/%NAME%$(NAME)",
     {{"NAME", "%OTHER%$$"}, {"OTHER", "wrong"}},
     "/%OTHER%$$%OTHER%$$<gtl>/%OTHER%$$%OTHER%$$<cxp>/x"},
};

TEST_F(ProducerPath, IsMadeOfTheDirectoryAndExpanded) {
    for (const SdkName& row : sdkNames) {
        SCOPED_TRACE(row.name);
        writeEnvironment({{"GENICAM_GENTL64_PATH", "/x"}});
        for (const auto& [name, value] : row.environment) {
            set(withEntries(name), value);
        }
        const std::string below = std::string(row.name) + "/q";
        const With resolved(faults::resolvedPath, below.c_str());
        // The directory itself is never expanded.
        ASSERT_EQ(applicationDir(), row.name);
        OrvexTestCommandLineParser parser;
        ASSERT_TRUE(parse(parser, {"app", "-tl", "DravikGTC"}));
        ASSERT_EQ(get("GENICAM_GENTL64_PATH"), withEntries(row.path));
    }
}

TEST_F(ProducerPath, NeedsNoDirectoryWithoutTheProducers) {
    const Failure failure(FaultyCall::DlAddr);
    OrvexTestCommandLineParser parser;
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGigE"}));
    EXPECT_FALSE(failure.happened());
}

}  // namespace
