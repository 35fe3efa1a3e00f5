#include "OrvexTestCommandLineParser.h"
#include "support/parser_test.h"
#include "support/replaced_functions.h"

#include <cstddef>
#include <iterator>
#include <string>

namespace {

using ::testing::ContainerEq;

// In the order in which they are set.
const struct {
    std::string option;
    std::string variable;
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

using SessionVariables = ParserTest;

TEST_F(SessionVariables, AreSetByTheirOptionsInOrder) {
    static Strings settings;
    Strings arguments = {"app"};
    Strings expected;
    for (const auto& row : rows) {
        arguments.push_back(row.option + "=value of " + row.option);
        expected.push_back(row.variable + "=value of " + row.option);
    }
    setenvInstead = [](const char* name, const char* value, int /*overwrite*/) {
        settings.push_back(std::string(name) + "=" + value);
        return 0;
    };
    EXPECT_TRUE(parse(parser, arguments));
    setenvInstead = nullptr;
    ASSERT_GT(settings.size(), expected.size());
    settings.erase(settings.begin(), settings.end() - static_cast<std::ptrdiff_t>(std::size(rows)));
    EXPECT_EQ(settings, expected);
}

TEST_F(SessionVariables, EmptyOrAbsentValueLeavesTheVariableUnchanged) {
    Environment inherited = defaultVariables;
    Strings arguments = {"app"};
    for (const auto& row : rows) {
        inherited[row.variable] = "inherited";
        arguments.push_back(row.option + "=");
    }
    writeEnvironment(inherited);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_TRUE(parse(parser, arguments));
    EXPECT_THAT(readEnvironment(), ContainerEq(inherited));
}

TEST_F(SessionVariables, AreNotSetFromDefaultsOrOtherFieldsOfTheRecord) {
    EXPECT_TRUE(parse(parser, words("app -pcname a -osname b -tdc_dxml c -testname d -ostype e -bit f")));
    EXPECT_THAT(readEnvironment(), ContainerEq(defaultVariables));
    EXPECT_EQ(parser.getTestRunInformation().group, "orvex");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "any");
}

TEST_F(SessionVariables, VariantIsOnlyTakenAfterAnEqualsSign) {
    EXPECT_TRUE(parse(parser, words("app -tdc_variant value")));
    EXPECT_THAT(readEnvironment(), ContainerEq(defaultVariables));
    EXPECT_EQ(parser.getFirstTestPath(), "value");
}

TEST_F(SessionVariables, TransportLayersAreJoinedByOneSpaceInTheOrderGiven) {
    EXPECT_TRUE(parse(parser, words("app -tl DravikUsb -tl DravikGigE,A -tl=")));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "DravikUsb DravikGigE,A ");
}

TEST_F(SessionVariables, EveryParseExportsWhatEarlierOnesScanned) {
    EXPECT_TRUE(parse(parser, words("app -tdc_guid old -tdc_product kept")));
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, words("app -tdc_guid=")));
    EXPECT_THAT(readEnvironment(), ContainerEq(changed(defaultVariables, {{"TEST_PRODUCT", "kept"}})));
    EXPECT_EQ(parser.getTestRunInformation().guid, "old") << "the record keeps it";
}

}  // namespace
