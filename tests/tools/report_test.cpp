#include "show_arguments/report.h"

#include "show_arguments/print.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>

namespace {

using ::testing::Each;
using ::testing::EndsWith;
using ::testing::Field;
using ::testing::HasSubstr;

class ReportWithoutArguments : public CleanEnvironmentTest {};

TEST_F(ReportWithoutArguments, SaysThatNothingWasReadOrSet) {
    set("ORVEX_TEST_ARGS", "-w");
    set("ORVEX_CAMEMU", "1");
    const tool::Report report = tool::makeReport(0, nullptr);
    EXPECT_THAT(report.trace.sources, Each(Field(&tool::Source::state, tool::SourceState::NotReached)));
    EXPECT_EQ(report.seen.variable("ORVEX_CAMEMU").state, tool::VariableState::Kept);
    EXPECT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), "(undefined)");
    const std::string text = tool::asText(report, {});
    EXPECT_THAT(text, HasSubstr("\nEnvironment, kept from before\n  ORVEX_CAMEMU  1\n"));
    EXPECT_THAT(text, EndsWith("\n\nsucceeded\n"));
    EXPECT_THAT(tool::asJson(report), HasSubstr("\"succeeded\": true"));
}

}  // namespace
