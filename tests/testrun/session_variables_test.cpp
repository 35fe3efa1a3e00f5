#include "OrvexTestCommandLineParser.h"
#include "support/known_options.h"
#include "support/parser_test.h"

#include <string>

namespace {

using ::testing::ContainerEq;

using SessionVariables = ParserTest;

// system/known_options_test.cpp checks the order.
TEST_F(SessionVariables, AreSetByTheirOptionsUnlessTheValueIsEmptyOrAbsent) {
    Environment inherited = defaultVariables;
    Environment replaced = changed(defaultVariables, {{"ORVEX_DEVICE_FILTER", "DeviceClass=value of tl"}});
    Strings emptyValues = {"app"};
    Strings values = {"app"};
    for (const KnownOption& option : knownOptions) {
        if (option.sessionVariable != nullptr) {
            const std::string name = option.name;
            inherited[option.sessionVariable] = "inherited";
            replaced[option.sessionVariable] = "value of " + name;
            emptyValues.push_back("-" + name + "=");
            values.push_back("-" + name + "=value of " + name);
        }
    }
    writeEnvironment(inherited);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_TRUE(parse(parser, emptyValues));
    EXPECT_THAT(readEnvironment(), ContainerEq(inherited));
    OrvexTestCommandLineParser fresh;
    EXPECT_TRUE(parse(fresh, values));
    EXPECT_THAT(readEnvironment(), ContainerEq(replaced));
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
