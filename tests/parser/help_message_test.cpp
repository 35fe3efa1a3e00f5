#include "OrvexTestCommandLineParser.h"

#include "parser/parser_test.h"
#include "support/arguments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

// All of the text but the program name and the blank after it; with what looks like slips in it.
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

class HelpMessage : public ParserTest {
protected:
    const std::string withoutName = parser.getHelpMessage("");
};

TEST_F(HelpMessage, WithoutAnyNameTheTextBeginsWithTheBracket) {
    EXPECT_EQ(withoutName, usage);
    ASSERT_TRUE(parse(parser, {""}));
    EXPECT_EQ(parser.getHelpMessage(""), withoutName);
}

TEST_F(HelpMessage, WithoutAGivenNameTheParsedOneStandsInFront) {
    ASSERT_FALSE(parse(parser, words("./mytest -? -packetsize x TestSuiteUsb")));
    EXPECT_EQ(parser.getHelpMessage(""), "./mytest " + withoutName);
}

TEST_F(HelpMessage, AGivenNameReplacesTheParsedOneInTheTextAlone) {
    ASSERT_EQ(parser.getHelpMessage("runner"), "runner " + withoutName);
    ASSERT_TRUE(parse(parser, {"./mytest"}));
    EXPECT_EQ(parser.getHelpMessage("my \xC3\xA9%s"), "my \xC3\xA9%s " + withoutName);
    EXPECT_EQ(parser.getApplicationName(), "./mytest");
}

TEST_F(HelpMessage, AZeroByteInAGivenNameIsKept) {
    const std::string name("a\0b", 3);
    EXPECT_EQ(parser.getHelpMessage(name), name + " " + withoutName);
}

TEST_F(HelpMessage, HasSevenLineEndsTwoOfThemEmptyLinesAndNoneAtTheEnd) {
    EXPECT_EQ(std::count(withoutName.begin(), withoutName.end(), '\n'), 7);
    const std::size_t first = withoutName.find("\n\n");
    const std::size_t second = withoutName.find("\n\n", first + 1);
    EXPECT_LT(second, withoutName.size());
    EXPECT_EQ(withoutName.find("\n\n", second + 1), std::string::npos);
    EXPECT_EQ(withoutName.back(), '.');
}

}  // namespace
