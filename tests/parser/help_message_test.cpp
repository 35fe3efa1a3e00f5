#include "OrvexTestCommandLineParser.h"

#include "support/parser_test.h"
#include "support/usage_text.h"

#include <string>

namespace {

using HelpMessage = ParserTest;

TEST_F(HelpMessage, WithoutAnyNameIsTheUsageTextAlone) {
    EXPECT_EQ(parser.getHelpMessage(""), usageText);
    ASSERT_TRUE(parse(parser, {""}));
    EXPECT_EQ(parser.getHelpMessage(""), usageText);
}

TEST_F(HelpMessage, BeginsWithTheGivenNameOrElseTheParsedOne) {
    const std::string name("my \xC3\xA9%s a\0b", 11);
    EXPECT_EQ(parser.getHelpMessage(name), name + " " + usageText);
    ASSERT_FALSE(parse(parser, words("./mytest -? -packetsize x TestSuiteUsb")));
    EXPECT_EQ(parser.getHelpMessage(""), std::string("./mytest ") + usageText);
    EXPECT_EQ(parser.getHelpMessage("runner"), std::string("runner ") + usageText);
    EXPECT_EQ(parser.getApplicationName(), "./mytest");
}

}  // namespace
