#include "show_arguments/report.h"

#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>

namespace {

using ::testing::Each;
using ::testing::Field;
using ::testing::HasSubstr;

class Observation : public CleanEnvironmentTest {};

TEST_F(Observation, LeavesTheEnvironmentAsTheParseLeavesIt) {
    Arguments arguments(words("app -tl DravikGTC,DravikGigE:S -packetdelay 7 -tdc_guid 1 -camemu x"));
    const Environment before = {{"ORVEX_DEVICE_FILTER", "old"}, {"TEST_PROPERTIES", "kept"}, {"OTHER", "x"}};
    writeEnvironment(before);
    OrvexTestCommandLineParser().Parse(arguments.argc(), arguments.argv());
    const Environment expected = readEnvironment();
    writeEnvironment(before);
    tool::observeParse(arguments.argc(), arguments.argv());
    EXPECT_EQ(readEnvironment(), expected);
}

class Report : public CleanEnvironmentTest {};

TEST_F(Report, SaysThatNothingWasReadOrSetIfThereIsNotEvenAProgramName) {
    set("ORVEX_TEST_ARGS", "-w");
    set("ORVEX_CAMEMU", "1");
    const tool::Report report = tool::makeReport(0, nullptr);
    EXPECT_THAT(report.trace.sources, Each(Field(&tool::Source::state, tool::SourceState::NotReached)));
    EXPECT_THAT(tool::asText(report, {}),
                HasSubstr("\nEnvironment, kept from before\n  ORVEX_CAMEMU  1\n\nsucceeded\n"));
    EXPECT_THAT(tool::asJson(report), HasSubstr("\"succeeded\": true"));
}

}  // namespace
