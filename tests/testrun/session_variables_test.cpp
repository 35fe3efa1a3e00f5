#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <string>

namespace {

// What a parse sets in an empty environment whatever the options are.
const Environment defaults = {{"ORVEX_GTC_USE_EXTRA_TL", "1"}, {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}};

const Environment inheritedVariables = {
    {"TEST_SESSION_GUID", "inherited guid"},
    {"TEST_SESSION_NAME", "inherited name"},
    {"TEST_SESSION_DESCRIPTION", "inherited description"},
    {"TEST_SESSION_GROUP", "inherited group"},
    {"TEST_PRODUCT", "inherited product"},
    {"TEST_PRODUCT_VARIANT", "inherited variant"},
    {"USER_UID", "inherited user"},
    {"VCS_REVISION", "inherited revision"},
    {"VCS_BRANCH", "inherited branch"},
    {"TRANSPORT_LAYER", "inherited layer"},
};

struct SessionRow {
    const char* option;
    const char* variable;
};

const SessionRow sessionRows[] = {
    {"tdc_guid", "TEST_SESSION_GUID"},
    {"tdc_runname", "TEST_SESSION_NAME"},
    {"tdc_rundescription", "TEST_SESSION_DESCRIPTION"},
    {"tdc_group", "TEST_SESSION_GROUP"},
    {"tdc_product", "TEST_PRODUCT"},
    {"tdc_variant", "TEST_PRODUCT_VARIANT"},
    {"tdc_userid", "USER_UID"},
    {"tdc_vcsrevision", "VCS_REVISION"},
    {"tdc_vcsbranch", "VCS_BRANCH"},
    {"tl", "TRANSPORT_LAYER"},
};

class SessionTable : public CleanEnvironmentTest, public ::testing::WithParamInterface<SessionRow> {
protected:
    // The option with a value in one argument, the form that every row takes.
    static std::string given(const std::string& value) {
        return std::string("-") + GetParam().option + "=" + value;
    }

    // The environment without the device filter, which a transport layer sets as well.
    static Environment environmentWithoutFilter() {
        Environment environment = readEnvironment();
        environment.erase("ORVEX_DEVICE_FILTER");
        return environment;
    }

    OrvexTestCommandLineParser parser;
};

INSTANTIATE_TEST_SUITE_P(EachVariable, SessionTable, ::testing::ValuesIn(sessionRows),
                         [](const auto& row) { return std::string(row.param.variable); });

}  // namespace

TEST_P(SessionTable, OptionSetsItsVariableAndNoOther) {
    EXPECT_TRUE(parse(parser, {"app", given("value")}));
    EXPECT_EQ(environmentWithoutFilter(), changed(defaults, {{GetParam().variable, "value"}}));
}

TEST_P(SessionTable, OptionReplacesTheInheritedValueAndNoOther) {
    writeEnvironment(inheritedVariables);
    EXPECT_TRUE(parse(parser, {"app", given("value")}));
    EXPECT_EQ(environmentWithoutFilter(),
              changed(changed(inheritedVariables, defaults), {{GetParam().variable, "value"}}));
}

TEST_P(SessionTable, EmptyValueLeavesTheVariableUndefined) {
    EXPECT_TRUE(parse(parser, {"app", given("")}));
    EXPECT_EQ(readEnvironment(), defaults);
}

TEST_P(SessionTable, EmptyValueLeavesTheInheritedValue) {
    writeEnvironment(inheritedVariables);
    EXPECT_TRUE(parse(parser, {"app", given("")}));
    EXPECT_EQ(readEnvironment(), changed(inheritedVariables, defaults));
}

TEST_P(SessionTable, OptionWithoutValueLeavesTheInheritedValue) {
    writeEnvironment(inheritedVariables);
    EXPECT_TRUE(parse(parser, {"app", std::string("-") + GetParam().option}));
    EXPECT_EQ(readEnvironment(), changed(inheritedVariables, defaults));
}

TEST_P(SessionTable, ValueIsExportedAsItStands) {
    std::string value;
    for (int byte = 1; byte <= 0xFF; ++byte) {
        value += static_cast<char>(byte);
    }
    EXPECT_TRUE(parse(parser, {"app", given(value)}));
    EXPECT_EQ(get(GetParam().variable), value);
}

TEST_P(SessionTable, BlankValueIsAValue) {
    EXPECT_TRUE(parse(parser, {"app", given(" ")}));
    EXPECT_EQ(get(GetParam().variable), " ");
}

TEST_P(SessionTable, LongValueIsExportedWhole) {
    const std::string value(100000, 'v');
    EXPECT_TRUE(parse(parser, {"app", given(value)}));
    EXPECT_EQ(get(GetParam().variable), value);
}

TEST_P(SessionTable, EitherArgumentVariableSetsTheVariable) {
    for (const char* source : {"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_"}) {
        SCOPED_TRACE(source);
        writeEnvironment({{source, "'" + given("two words") + "'"}});
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app"}));
        EXPECT_EQ(get(GetParam().variable), "two words");
    }
}

TEST_P(SessionTable, ParseOfAnotherParserWithAnEmptyValueKeepsTheVariable) {
    EXPECT_TRUE(parse(parser, {"app", given("value")}));
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, {"app", given("")}));
    EXPECT_EQ(get(GetParam().variable), "value");
}

TEST_P(SessionTable, ParseOfAnotherParserWithoutTheOptionKeepsTheVariable) {
    EXPECT_TRUE(parse(parser, {"app", given("value")}));
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, {"app"}));
    EXPECT_EQ(get(GetParam().variable), "value");
}

TEST_P(SessionTable, SecondParseOfTheSameParserExportsAgain) {
    EXPECT_TRUE(parse(parser, {"app", given("value")}));
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get(GetParam().variable), "value");
}

TEST_P(SessionTable, FailedParseSetsNothing) {
    writeEnvironment(inheritedVariables);
    EXPECT_FALSE(parse(parser, {"app", given("value"), "-camemu", "x"}));
    EXPECT_EQ(environmentWithoutFilter(), changed(inheritedVariables, defaults));
}

class SessionExport : public CleanEnvironmentTest {
protected:
    OrvexTestCommandLineParser parser;
};

TEST_F(SessionExport, WithoutOptionsNoneOfTheVariablesIsTouched) {
    EXPECT_TRUE(parse(parser, {"app", "TestSuiteUsb", "-w"}));
    EXPECT_EQ(readEnvironment(), defaults);
}

TEST_F(SessionExport, WithoutOptionsInheritedVariablesStay) {
    writeEnvironment(inheritedVariables);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(readEnvironment(), changed(inheritedVariables, defaults));
}

TEST_F(SessionExport, AllOptionsTogether) {
    EXPECT_TRUE(parse(parser, {"app",
                               "-tdc_guid",
                               "1",
                               "-tdc_runname",
                               "2",
                               "-tdc_rundescription",
                               "3",
                               "-tdc_group",
                               "4",
                               "-tdc_product",
                               "5",
                               "-tdc_variant=6",
                               "-tdc_userid",
                               "7",
                               "-tdc_vcsrevision",
                               "8",
                               "-tdc_vcsbranch",
                               "9",
                               "-tl",
                               "10"}));
    EXPECT_EQ(readEnvironment(), changed(defaults, {{"ORVEX_DEVICE_FILTER", "DeviceClass=10"},
                                                    {"TEST_SESSION_GUID", "1"},
                                                    {"TEST_SESSION_NAME", "2"},
                                                    {"TEST_SESSION_DESCRIPTION", "3"},
                                                    {"TEST_SESSION_GROUP", "4"},
                                                    {"TEST_PRODUCT", "5"},
                                                    {"TEST_PRODUCT_VARIANT", "6"},
                                                    {"USER_UID", "7"},
                                                    {"VCS_REVISION", "8"},
                                                    {"VCS_BRANCH", "9"},
                                                    {"TRANSPORT_LAYER", "10"}}));
}

TEST_F(SessionExport, DefaultsOfTheRecordAreNotExported) {
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(parser.getTestRunInformation().group, "orvex");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "any");
    EXPECT_EQ(get("TEST_SESSION_GROUP"), "(undefined)");
    EXPECT_EQ(get("TRANSPORT_LAYER"), "(undefined)");
}

TEST_F(SessionExport, ValueKeptInTheRecordIsNotExportedWhenTheOptionIsEmptyNow) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "old"}));
    writeEnvironment({});
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", ""}));
    EXPECT_EQ(parser.getTestRunInformation().guid, "old");
    EXPECT_EQ(readEnvironment(), defaults);
}

TEST_F(SessionExport, FieldsWithoutAVariableAreNotExported) {
    EXPECT_TRUE(parse(parser, {"app", "-pcname", "a", "-osname", "b", "-tdc_dxml", "c", "-testname", "d",
                               "-ostype", "e", "-bit", "f", "-o", "g", "-x", "h"}));
    EXPECT_EQ(readEnvironment(), defaults);
}

TEST_F(SessionExport, TransportLayersAreJoinedByOneBlankInTheOrderGiven) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikUsb", "-tl", "DravikGigE"}));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "DravikUsb DravikGigE");
    EXPECT_EQ(parser.getTlList(), "DravikUsb,DravikGigE");
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "DravikUsb,DravikGigE");
}

TEST_F(SessionExport, CommaWithinATransportLayerStays) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "A,B", "-tl", "C"}));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "A,B C");
}

TEST_F(SessionExport, TransportLayersOfAllThreeSources) {
    set("ORVEX_TEST_ARGS", "-tl A");
    set("_ORVEX_TEST_ARGS_", "-tl C");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "B"}));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "A B C");
}

TEST_F(SessionExport, TwoEmptyTransportLayersAreABlank) {
    EXPECT_TRUE(parse(parser, {"app", "-tl=", "-tl="}));
    EXPECT_EQ(get("TRANSPORT_LAYER"), " ");
}

TEST_F(SessionExport, SecondParseAddsTransportLayers) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "A"}));
    EXPECT_TRUE(parse(parser, {"app", "-tl", "B"}));
    EXPECT_EQ(get("TRANSPORT_LAYER"), "A B");
}

TEST_F(SessionExport, VariantInTwoArgumentsLeavesTheVariable) {
    set("TEST_PRODUCT_VARIANT", "inherited");
    EXPECT_TRUE(parse(parser, {"app", "-tdc_variant", "value"}));
    EXPECT_EQ(get("TEST_PRODUCT_VARIANT"), "inherited");
    EXPECT_EQ(parser.getFirstTestPath(), "value");
}

TEST_F(SessionExport, VariantInTwoArgumentsLeavesTheVariableUndefined) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_variant", "value"}));
    EXPECT_EQ(get("TEST_PRODUCT_VARIANT"), "(undefined)");
}

TEST_F(SessionExport, RegisteredOptionsTakeTheirValueFromTwoArguments) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "1234", "--tdc_userid", "user"}));
    EXPECT_EQ(readEnvironment(), changed(defaults, {{"TEST_SESSION_GUID", "1234"}, {"USER_UID", "user"}}));
}

TEST_F(SessionExport, LastValueOfTheThreeSourcesWins) {
    set("ORVEX_TEST_ARGS", "-tdc_guid first -tdc_product first -tdc_userid first");
    set("_ORVEX_TEST_ARGS_", "-tdc_guid third");
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "second", "-tdc_product", "second"}));
    EXPECT_EQ(get("TEST_SESSION_GUID"), "third");
    EXPECT_EQ(get("TEST_PRODUCT"), "second");
    EXPECT_EQ(get("USER_UID"), "first");
}

TEST_F(SessionExport, InheritedBranchGivesWayOnlyToAGivenOne) {
    set("VCS_BRANCH", "inherited");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get("VCS_BRANCH"), "inherited");
    EXPECT_TRUE(parse(parser, {"app", "-tdc_vcsbranch", "main"}));
    EXPECT_EQ(get("VCS_BRANCH"), "main");
}
