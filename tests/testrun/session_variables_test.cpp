#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using ::testing::ContainerEq;

// What a parse sets in an empty environment whatever the options are.
const Environment defaults = {{"ORVEX_GTC_USE_EXTRA_TL", "1"}, {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}};

const struct {
    std::string option;
    const char* variable;
} rows[] = {
    {"-tdc_guid", "TEST_SESSION_GUID"},
    {"-tdc_runname", "TEST_SESSION_NAME"},
    {"-tdc_rundescription", "TEST_SESSION_DESCRIPTION"},
    {"-tdc_group", "TEST_SESSION_GROUP"},
    {"-tdc_product", "TEST_PRODUCT"},
    {"-tdc_variant", "TEST_PRODUCT_VARIANT"},
    {"-tdc_userid", "USER_UID"},
    {"-tdc_vcsrevision", "VCS_REVISION"},
    {"-tdc_vcsbranch", "VCS_BRANCH"},
    {"-tl", "TRANSPORT_LAYER"},
};

class SessionVariables : public CleanEnvironmentTest {
protected:
    // The environment after a parse in which all ten variables are inherited, without the device filter.
    static Environment afterParse(const std::string& argument) {
        writeEnvironment(inherited());
        OrvexTestCommandLineParser parser;
        EXPECT_TRUE(parse(parser, {"app", argument}));
        Environment environment = readEnvironment();
        environment.erase("ORVEX_DEVICE_FILTER");
        return environment;
    }

    static Environment inherited() {
        Environment environment = defaults;
        for (const auto& row : rows) {
            environment[row.variable] = std::string("inherited ") + row.variable;
        }
        return environment;
    }

    OrvexTestCommandLineParser parser;
};

TEST_F(SessionVariables, AnOptionSetsItsVariableAndNoOther) {
    for (const auto& row : rows) {
        ASSERT_THAT(afterParse(row.option + "=a value"),
                    ContainerEq(changed(inherited(), {{row.variable, "a value"}})))
            << row.option;
    }
}

TEST_F(SessionVariables, AnEmptyOrAbsentValueLeavesTheVariable) {
    for (const auto& row : rows) {
        ASSERT_THAT(afterParse(row.option + "="), ContainerEq(inherited())) << row.option;
        ASSERT_THAT(afterParse(row.option), ContainerEq(inherited())) << row.option;
    }
}

TEST_F(SessionVariables, WithoutOptionsNoneIsDefined) {
    EXPECT_TRUE(parse(parser, words("app TestSuiteUsb -w")));
    EXPECT_THAT(readEnvironment(), ContainerEq(defaults));
    // The defaults of the record are not exported.
    EXPECT_EQ(parser.getTestRunInformation().group, "orvex");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "any");
}

TEST_F(SessionVariables, FieldsOfTheRecordWithoutAVariableAreNotExported) {
    EXPECT_TRUE(parse(parser, words("app -pcname a -osname b -tdc_dxml c -testname d -ostype e -bit f")));
    EXPECT_THAT(readEnvironment(), ContainerEq(defaults));
}

TEST_F(SessionVariables, TransportLayersAreJoinedByOneBlankInTheOrderGiven) {
    EXPECT_TRUE(parse(parser, words("app -tl DravikUsb -tl DravikGigE,A")));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "DravikUsb DravikGigE,A");
    EXPECT_EQ(parser.getTlList(), "DravikUsb,DravikGigE,A");
    EXPECT_TRUE(parse(parser, words("app -tl B")));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "DravikUsb DravikGigE,A B");
}

TEST_F(SessionVariables, TwoEmptyTransportLayersAreABlank) {
    EXPECT_TRUE(parse(parser, words("app -tl= -tl=")));
    EXPECT_EQ(get("TRANSPORT_LAYER"), " ");
}

TEST_F(SessionVariables, TheVariantInTwoArgumentsSetsNothing) {
    EXPECT_TRUE(parse(parser, words("app -tdc_variant value")));
    EXPECT_THAT(readEnvironment(), ContainerEq(defaults));
    EXPECT_EQ(parser.getFirstTestPath(), "value");
}

TEST_F(SessionVariables, TheLastValueOfTheThreeSourcesIsExportedAsItStands) {
    set("ORVEX_TEST_ARGS", "-tdc_guid first -tdc_product first -tdc_userid ' \x01\x80\xFF'");
    set("_ORVEX_TEST_ARGS_", "-tdc_guid third");
    EXPECT_TRUE(parse(parser, words("app -tdc_guid second -tdc_product second")));
    EXPECT_EQ(get("TEST_SESSION_GUID"), "third");
    EXPECT_EQ(get("TEST_PRODUCT"), "second");
    EXPECT_EQ(get("USER_UID"), " \x01\x80\xFF");
}

TEST_F(SessionVariables, EveryParseExportsAgainWhatIsStillGiven) {
    EXPECT_TRUE(parse(parser, words("app -tdc_guid old -tdc_product kept")));
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, words("app -tdc_guid=")));
    EXPECT_THAT(readEnvironment(), ContainerEq(changed(defaults, {{"TEST_PRODUCT", "kept"}})));
    EXPECT_EQ(parser.getTestRunInformation().guid, "old") << "the record keeps it";
}

TEST_F(SessionVariables, AnInheritedBranchGivesWayOnlyToAGivenOne) {
    set("VCS_BRANCH", "inherited");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get("VCS_BRANCH"), "inherited");
    EXPECT_TRUE(parse(parser, words("app -tdc_vcsbranch main")));
    EXPECT_EQ(get("VCS_BRANCH"), "main");
}

TEST_F(SessionVariables, AParseThatFailsBeforeSetsNone) {
    EXPECT_FALSE(parse(parser, words("app -tdc_guid 1 -tl A -camemu x")));
    EXPECT_THAT(readEnvironment(),
                ContainerEq(changed(defaults, {{"ORVEX_DEVICE_FILTER", "DeviceClass=A"}})));
}

}  // namespace
