#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>

namespace {

// All of the text but the program name and the blank behind it.
constexpr char usage[] =
    "[-?] [-camemu n] [-o filename] [-p <property=value>...] [-packetdelay n] [-packetsize <n>]"
    " [-socketbuffer <n>] [-tl <deviceclass>...] [-w] [-x <filename>] [<testpath>...]"
    "\n"
    "Additional TDC parameters:"
    "\n"
    "[-tdc_dxml <filename>] [-tdc_guid <guid>]  [-tdc_name <name>] [-tdc_runname <runname>]"
    " [-tdc_pcname <pcname>] [-tdc_osname <osname>] [-tdc_rundescription <description>]"
    " [-tdc_group <group>] [-tdc_userid <user defined id>] [-tdc_product <product name>]"
    " [-tdc_vcsbranch <branchname>] [-tdc_vcsrevision <githash>]"
    "\n"
    "\n"
    "<deviceclass> := Any valid DeviceClass string."
    " When using DravikGigE you can also append the driver type"
    " (i.e.: DravikGigE:SocketDriver or DravikGigE:WindowsFilterDriver)"
    "\n"
    "<testpath>    := Testsuite or testcase to run in <classname>[::<methodname>] format"
    " (i.e TestSuiteUsb or TestSuiteGigE::DynamicHeartbeatTest)"
    "\n"
    "\n"
    "The environment variables ORVEX_TEST_ARGS or _ORVEX_TEST_ARGS_ can be used to pass argument."
    " The contents of ORVEX_TEST_ARGS will prepended to the arguments pased con the command line."
    " The contents of _ORVEX_TEST_ARGS_ will appended to the arguments passed con the command line.";

using HelpMessageTest = CleanEnvironmentTest;

static_assert(std::is_same<decltype(std::declval<const OrvexTestCommandLineParser&>().getHelpMessage("")),
                           std::string>::value,
              "a constant parser gives a new text");

TEST_F(HelpMessageTest, WithoutAnyNameTheTextBeginsWithTheBracket) {
    const OrvexTestCommandLineParser parser;
    EXPECT_EQ(parser.getHelpMessage(""), usage);
}

TEST_F(HelpMessageTest, AGivenNameStandsInFront) {
    const OrvexTestCommandLineParser parser;
    EXPECT_EQ(parser.getHelpMessage("runner"), std::string("runner ") + usage);
}

TEST_F(HelpMessageTest, WithoutAGivenNameTheParsedOneStandsInFront) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {"./mytest", "TestSuiteUsb"}));
    EXPECT_EQ(parser.getHelpMessage(""), std::string("./mytest ") + usage);
}

TEST_F(HelpMessageTest, AGivenNameReplacesTheParsedOne) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {"./mytest"}));
    EXPECT_EQ(parser.getHelpMessage("runner"), std::string("runner ") + usage);
    EXPECT_EQ(parser.getApplicationName(), "./mytest");
    EXPECT_EQ(parser.getHelpMessage(""), std::string("./mytest ") + usage);
}

TEST_F(HelpMessageTest, AnEmptyParsedNameCountsAsNone) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {""}));
    EXPECT_EQ(parser.getHelpMessage(""), usage);
}

TEST_F(HelpMessageTest, NamesAreTakenAsTheyStand) {
    const OrvexTestCommandLineParser parser;
    for (const std::string name : {" ", "my test", "%s", "\xC3\xA9", "-?", "a\n"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(parser.getHelpMessage(name), std::string(name).append(" ").append(usage));
    }
}

TEST_F(HelpMessageTest, HasSevenLineEndsTwoOfThemEmptyLinesAndNoneAtTheEnd) {
    const std::string text = OrvexTestCommandLineParser().getHelpMessage("runner");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 7);
    const std::size_t first = text.find("\n\n");
    ASSERT_NE(first, std::string::npos);
    const std::size_t second = text.find("\n\n", first + 1);
    ASSERT_NE(second, std::string::npos);
    EXPECT_EQ(text.find("\n\n", second + 1), std::string::npos);
    EXPECT_EQ(text.back(), '.');
    EXPECT_EQ(text.find('\r'), std::string::npos);
}

TEST_F(HelpMessageTest, IsTheSameAfterAskingForHelpAndAfterAFailure) {
    OrvexTestCommandLineParser parser;
    ASSERT_TRUE(parse(parser, {"mytest", "-?", "-tl", "A"}));
    EXPECT_EQ(parser.getHelpMessage(""), std::string("mytest ") + usage);
    ASSERT_FALSE(parse(parser, {"mytest", "-packetsize", "x"}));
    EXPECT_EQ(parser.getHelpMessage(""), std::string("mytest ") + usage);
}

}  // namespace
