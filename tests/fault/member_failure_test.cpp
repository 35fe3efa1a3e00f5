// Everything besides a parse that needs memory, with the first, the second ... allocation failing.

#include "OrvexTestCommandLineParser.h"
#include "OrvexTestCommandLineParserC.h"

#include "capi/fresh_process.h"
#include "fault/parse_scenario.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/fault_injection.h"

#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace {

// Calls the body with the first, the second ... allocation failing, until it needs no more. Returns
// how often it threw; every other result than std::bad_alloc for a failure is an error, as is a leak.
template <typename Body>
std::size_t exhaustMemoryIn(Body body) {
    for (std::size_t nth = 1;; ++nth) {
        const std::size_t allocationsBefore = liveAllocations();
        bool hasFailed = false;
        bool hasThrown = false;
        try {
            const FailingCall failing(Function::OperatorNew, nth);
            body();
            hasFailed = failing.hasFailed();
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        EXPECT_FALSE(hasFailed) << "allocation " << nth << " failed unnoticed";
        if (!hasThrown) {
            return nth - 1;
        }
        EXPECT_EQ(liveAllocations(), allocationsBefore) << "after the failure of allocation " << nth;
    }
}

using MemberOutOfMemory = CleanEnvironmentTest;
using CFunctionOutOfMemory = CleanEnvironmentTest;

TEST_F(MemberOutOfMemory, ConstructorThrowsAndLeaksNothing) {
    EXPECT_GE(exhaustMemoryIn([] { const OrvexTestCommandLineParser parser; }), 1U);
}

TEST_F(MemberOutOfMemory, DestructorReleasesEverything) {
    const std::size_t allocationsBefore = liveAllocations();
    {
        OrvexTestCommandLineParser parser;
        prepare(everyEffect(), parser);
        EXPECT_TRUE(parse(parser, everyEffect().arguments));
    }
    EXPECT_EQ(liveAllocations(), allocationsBefore);
}

TEST_F(MemberOutOfMemory, HelpMessageThrowsAndLeavesTheParserUnchanged) {
    OrvexTestCommandLineParser parser;
    prepare(everyEffect(), parser);
    ASSERT_TRUE(parse(parser, everyEffect().arguments));
    const Snapshot before = visibleState(parser);
    const std::string message = parser.getHelpMessage("");

    const std::string name = "a program with a name that needs an allocation of its own";
    EXPECT_GE(exhaustMemoryIn([&] { parser.getHelpMessage(""); }), 1U);
    EXPECT_GE(exhaustMemoryIn([&] { parser.getHelpMessage(name); }), 1U);

    EXPECT_EQ(visibleState(parser), before);
    EXPECT_EQ(parser.getHelpMessage(""), message);
    EXPECT_EQ(parser.getHelpMessage(name).substr(0, name.size() + 5), name + " [-?]");
}

TEST_F(MemberOutOfMemory, AccessorsNeedNoMemory) {
    OrvexTestCommandLineParser parser;
    const FailingCall failing(Function::OperatorNew, 1, Repetition::FromThenOn);
    parser.getApplicationName();
    parser.getXmlFilename();
    parser.getOutputFilename();
    parser.getTestPaths();
    parser.getFirstTestPath();
    parser.getTlList();
    parser.helpRequested();
    parser.waitBeforeExit();
    parser.getTestRunInformation();
    parser.getTdcDravikXmlFilename();
    EXPECT_FALSE(failing.hasFailed());
}

TEST_F(MemberOutOfMemory, ParseOfNothingNeedsNoMemory) {
    OrvexTestCommandLineParser parser;
    set("ORVEX_TEST_ARGS", "-o output SuiteInAVariable");
    const FailingCall failing(Function::OperatorNew, 1, Repetition::FromThenOn);
    EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
    EXPECT_FALSE(failing.hasFailed());
}

// The two exceptions of the argument checks are replaced by one of memory exhaustion.
TEST_F(MemberOutOfMemory, ParseReturnsFalseWhenItCannotBuildTheMessageOfABadArgument) {
    OrvexTestCommandLineParser parser;
    char* noArguments[] = {nullptr};
    const FailingCall failing(Function::OperatorNew, 1, Repetition::FromThenOn);
    EXPECT_FALSE(parser.Parse(-1, noArguments));
    EXPECT_FALSE(parser.Parse(1, static_cast<char**>(nullptr)));
}

TEST_F(MemberOutOfMemory, ParseArgsFromEnvironmentVariableThrowsAndKeepsAPrefixOfTheArguments) {
    const std::vector<std::string> list = {"-o", "an output file with a name that is long enough",
                                           "-tl=a device class with a name that is long enough",
                                           "a test suite with a name that is long enough"};
    const ParseScenario scenario = {"",   {},   {},   {"a program with a name that is long enough"},
                                    list, true, false};
    Course scan = courseOfScan(scenario);
    std::size_t failures = 0;
    for (bool hasFailed = true; hasFailed;) {
        OrvexTestCommandLineParser parser;
        writeEnvironment({{"ARGUMENTS",
                           "-o 'an output file with a name that is long enough' "
                           "'-tl=a device class with a name that is long enough' "
                           "'a test suite with a name that is long enough'"}});
        const Snapshot before = visibleState(parser);
        hasFailed = false;
        try {
            const FailingCall failing(Function::OperatorNew, failures + 1);
            parser.ParseArgsFromEnvironmentVariable("ARGUMENTS", scenario.arguments.front().c_str());
        } catch (const std::bad_alloc&) {
            hasFailed = true;
            ++failures;
        }
        EXPECT_EQ(visibleState(parser), before) << failures;
        EXPECT_TRUE(scan.advanceTo(stateAfterLaterParse(parser))) << failures;
    }
    EXPECT_GE(failures, 4U);
    EXPECT_TRUE(scan.isAtEnd());
}

// Only the first call creates the parser; each body makes its calls in a process without one.

TEST_F(CFunctionOutOfMemory, EveryCallTriesToCreateTheParserUntilOneSucceeds) {
    inFreshProcess([] {
        EXPECT_GE(exhaustMemoryIn([] { OrvexTestCommandLineParser_GetHelpRequested(); }), 1U);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        Arguments arguments({"mytest", "-o", "output"});
        EXPECT_EQ(OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv()), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "output");
    });
}

TEST_F(CFunctionOutOfMemory, ParseThrowsWhenItCannotCreateTheParserAndChangesNothing) {
    inFreshProcess([] {
        Arguments arguments({"mytest", "-o", "output"});
        const Environment before = readEnvironment();
        {
            const FailingCall failing(Function::OperatorNew, 1);
            EXPECT_THROW(OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv()),
                         std::bad_alloc);
        }
        EXPECT_EQ(readEnvironment(), before);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "");
        EXPECT_EQ(OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv()), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetOutputFilename(), "output");
    });
}

TEST_F(CFunctionOutOfMemory, ParseReturnsZeroOnceTheParserExists) {
    inFreshProcess([] {
        Arguments arguments({"mytest", "-o", "an output file with a name that is long enough"});
        OrvexTestCommandLineParser_GetHelpRequested();
        const FailingCall failing(Function::OperatorNew, 1, Repetition::FromThenOn);
        EXPECT_EQ(OrvexTestCommandLineParser_Parse(arguments.argc(), arguments.argv()), 0);
    });
}

TEST_F(CFunctionOutOfMemory, ParseWThrowsOnceTheParserExists) {
    inFreshProcess([] {
        wchar_t program[] = L"mytest";
        wchar_t* arguments[] = {program};
        OrvexTestCommandLineParser_GetHelpRequested();
        {
            const FailingCall failing(Function::OperatorNew, 1);
            EXPECT_THROW(OrvexTestCommandLineParser_ParseW(1, arguments), std::bad_alloc);
        }
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "");
        EXPECT_EQ(OrvexTestCommandLineParser_ParseW(1, arguments), 1);
        EXPECT_STREQ(OrvexTestCommandLineParser_GetApplicationName(), "mytest");
    });
}

TEST_F(CFunctionOutOfMemory, HelpMessageThrowsAndWritesNothing) {
    inFreshProcess([] {
        OrvexTestCommandLineParser_GetHelpRequested();
        const char* const name = "a program with a name that is long enough to need an allocation";
        std::vector<char> buffer(OrvexTestCommandLineParser_GetHelpMessage(name, nullptr, 0), '#');
        for (std::size_t nth = 1; nth <= 2; ++nth) {
            const FailingCall failing(Function::OperatorNew, nth);
            EXPECT_THROW(OrvexTestCommandLineParser_GetHelpMessage(name, buffer.data(), buffer.size()),
                         std::bad_alloc);
        }
        EXPECT_EQ(std::string(buffer.begin(), buffer.end()), std::string(buffer.size(), '#'));
        EXPECT_EQ(OrvexTestCommandLineParser_GetHelpMessage(name, buffer.data(), buffer.size()),
                  buffer.size() - 1);
        EXPECT_EQ(std::strncmp(buffer.data(), name, std::strlen(name)), 0);
        EXPECT_GE(exhaustMemoryIn([&] { OrvexTestCommandLineParser_GetHelpMessage(name, nullptr, 0); }), 1U);
    });
}

TEST_F(CFunctionOutOfMemory, GettersNeedNoMemoryOnceTheParserExists) {
    inFreshProcess([] {
        std::vector<char> information(ORVEX_TEST_RUN_INFORMATION_SIZE, '#');
        OrvexTestCommandLineParser_GetHelpRequested();
        const FailingCall failing(Function::OperatorNew, 1, Repetition::FromThenOn);
        OrvexTestCommandLineParser_GetApplicationName();
        OrvexTestCommandLineParser_GetXmlFilename();
        OrvexTestCommandLineParser_GetOutputFilename();
        OrvexTestCommandLineParser_GetTestPath();
        OrvexTestCommandLineParser_GetWaitBeforeExit();
        OrvexTestCommandLineParser_GetHelpRequested();
        OrvexTestCommandLineParser_GetTestRunInformation(information.data());
        EXPECT_FALSE(failing.hasFailed());
    });
}

}  // namespace
