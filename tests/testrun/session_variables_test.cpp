#include "OrvexTestCommandLineParser.h"
#include "support/parser_test.h"
#include "support/replaced_functions.h"

#include <cstddef>
#include <string>

namespace {

using ::testing::ContainerEq;

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

class SessionVariables : public ParserTest {
protected:
    // The environment after a parse in which all ten variables are inherited, without the device filter.
    static Environment afterParse(const std::string& argument) {
        writeEnvironment(inherited());
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", argument}));
        Environment environment = readEnvironment();
        environment.erase("ORVEX_DEVICE_FILTER");
        return environment;
    }

    static Environment inherited() {
        Environment environment = defaultVariables;
        for (const auto& row : rows) {
            environment[row.variable] = "inherited " + row.variable;
        }
        return environment;
    }
};

TEST_F(SessionVariables, EachIsSetByItsOption) {
    for (const auto& row : rows) {
        EXPECT_THAT(afterParse(row.option + "=a value"),
                    ContainerEq(changed(inherited(), {{row.variable, "a value"}})));
    }
}

TEST_F(SessionVariables, AreSetInTheirOrder) {
    static Strings names;
    Strings arguments = {"app"};
    Strings expected;
    for (const auto& row : rows) {
        arguments.push_back(row.option + "=value");
        expected.push_back(row.variable);
    }
    setenvInstead = [](const char* name, const char* /*value*/, int /*overwrite*/) {
        names.push_back(name);
        return 0;
    };
    EXPECT_TRUE(parse(parser, arguments));
    setenvInstead = nullptr;
    ASSERT_GT(names.size(), expected.size());
    names.erase(names.begin(), names.end() - static_cast<std::ptrdiff_t>(expected.size()));
    EXPECT_EQ(names, expected);
}

TEST_F(SessionVariables, EmptyOrAbsentValueLeavesTheVariableUnchanged) {
    for (const auto& row : rows) {
        EXPECT_THAT(afterParse(row.option + "="), ContainerEq(inherited()));
        EXPECT_THAT(afterParse(row.option), ContainerEq(inherited()));
    }
}

TEST_F(SessionVariables, AreNotSetFromTheDefaultsAndTheOtherFieldsOfTheRecord) {
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
    EXPECT_TRUE(parse(parser, words("app -tl B")));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "DravikUsb DravikGigE,A  B");
}

TEST_F(SessionVariables, EveryParseExportsWhatEarlierOnesScanned) {
    EXPECT_TRUE(parse(parser, words("app -tdc_guid old -tdc_product kept")));
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, words("app -tdc_guid=")));
    EXPECT_THAT(readEnvironment(), ContainerEq(changed(defaultVariables, {{"TEST_PRODUCT", "kept"}})));
    EXPECT_EQ(parser.getTestRunInformation().guid, "old") << "the record keeps it";
}

}  // namespace
