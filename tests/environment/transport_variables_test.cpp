#include "OrvexTestCommandLineParser.h"
#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using ::testing::ContainerEq;

// What every successful parse sets in an empty environment.
const Environment defaults = {{"ORVEX_GTC_USE_EXTRA_TL", "1"}, {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}};

// The environment without the variables that other steps derive from the transport layers.
Environment transportVariables() {
    Environment variables = readEnvironment();
    variables.erase("TRANSPORT_LAYER");
    variables.erase("GENICAM_GENTL64_PATH");
    return variables;
}

// What tables of transport layers name often.
const char* const none = "(undefined)";
const char* const gigeOnly = "DeviceClass=DravikGigE";

class TransportVariables : public CleanEnvironmentTest {
protected:
    struct Row {
        const char* arguments;
        Environment variables;
    };
    static void expectVariables(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.arguments);
            writeEnvironment({});
            OrvexTestCommandLineParser parser;
            ASSERT_TRUE(parse(parser, words(row.arguments)));
            ASSERT_THAT(transportVariables(), ContainerEq(changed(defaults, row.variables)));
        }
    }

    struct LayerRow {
        const char* tlList;
        const char* deviceFilter;
        const char* streamParameters;
    };
    static void expectLayers(const std::vector<LayerRow>& rows) {
        for (const LayerRow& row : rows) {
            SCOPED_TRACE(row.tlList);
            writeEnvironment({});
            OrvexTestCommandLineParser parser;
            ASSERT_TRUE(parse(parser, {"app", "-tl", row.tlList}));
            ASSERT_EQ(get("ORVEX_DEVICE_FILTER"), row.deviceFilter);
            ASSERT_EQ(get("ORVEX_GIGE_STREAMPARAMS"), row.streamParameters);
        }
    }

    OrvexTestCommandLineParser parser;
};

TEST_F(TransportVariables, Examples) {
    expectVariables({
        {"app", {}},
        {"app -tl DravikGigE", {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"}}},
        {"app -tl DravikGTC,DravikGigE:SocketDriver -socketbuffer 2048",
         {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC||DeviceClass=DravikGigE"},
          {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver SocketBufferSize=2048"}}},
        {"app -tl DravikGTC -tl DravikGigE:SocketDriver -socketbuffer 2048",
         {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC||DeviceClass=DravikGigE"},
          {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver SocketBufferSize=2048"}}},
        {"app -tl DravikGigE:SocketDriver -tl DravikGigE:WindowsFilterDriver -packetsize 1500 -packetdelay 0",
         {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
          {"ORVEX_GIGE_STREAMPARAMS", "Type=WindowsFilterDriver"},
          {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
          {"ORVEX_GIGE_STREAM_GEVSCPD", "0"}}},
        {"app -socketbuffer 4096", {{"ORVEX_GIGE_STREAMPARAMS", "SocketBufferSize=4096"}}},
        {"app -camemu 3", {{"ORVEX_CAMEMU", "3"}}},
        {"app -p key1=value1 -p key2=value2", {{"TEST_PROPERTIES", "key1=value1 key2=value2"}}},
    });
}

TEST_F(TransportVariables, EmptyTextsAndOptionsWithoutAValueLeaveTheDefaults) {
    expectVariables({
        {"app -tl= -socketbuffer= -packetsize= -packetdelay= -camemu= -p=", {}},
        {"app -tl -socketbuffer -packetsize -packetdelay -camemu -p", {}},
        {"app -tl= -tl=", {}},
        {"app -p= -p=", {{"TEST_PROPERTIES", " "}}},
        {"app -p a -p= -p b", {{"TEST_PROPERTIES", "a  b"}}},
    });
}

TEST_F(TransportVariables, DeviceClassesAreUniqueAndInByteOrder) {
    expectLayers({
        {"c,a,b", "DeviceClass=a||DeviceClass=b||DeviceClass=c", none},
        {"a,b,a", "DeviceClass=a||DeviceClass=b", none},
        {"DravikGigE,DravikGTC", "DeviceClass=DravikGTC||DeviceClass=DravikGigE", none},
        {"AB,A", "DeviceClass=A||DeviceClass=AB", none},
        {"\xFF,\x80,z", "DeviceClass=z||DeviceClass=\x80||DeviceClass=\xFF", none},
        {" no such|class=", "DeviceClass= no such|class=", none},
    });
}

TEST_F(TransportVariables, EmptyEntriesAreSkippedAndEmptyClassesAreNot) {
    expectLayers({
        {"a,,b", "DeviceClass=a||DeviceClass=b", none},
        {",a", "DeviceClass=a", none},
        {"a,b,", "DeviceClass=a||DeviceClass=b", none},
        {":SocketDriver", "DeviceClass=", none},
        {":", "DeviceClass=", none},
        {"A,:x", "DeviceClass=||DeviceClass=A", none},
    });
}

TEST_F(TransportVariables, OnlyTheSecondPartAfterDravikGigEIsADriver) {
    expectLayers({
        {"DravikGigE:SocketDriver", gigeOnly, "Type=SocketDriver"},
        {"DravikGigE:SocketDriver:more", gigeOnly, "Type=SocketDriver"},
        {"DravikGigE,DravikGigE:SocketDriver", gigeOnly, "Type=SocketDriver"},
        {"DravikGigE:", gigeOnly, none},
        {"DravikGigE::more", gigeOnly, "Type="},
        {"OtherClass:SocketDriver", "DeviceClass=OtherClass", none},
        {"dravikgige:SocketDriver", "DeviceClass=dravikgige", none},
        {"DravikGigEx:SocketDriver", "DeviceClass=DravikGigEx", none},
    });
}

TEST_F(TransportVariables, OfSeveralDriversTheLastInByteOrderCounts) {
    expectLayers({
        {"DravikGigE:SocketDriver,DravikGigE:WindowsFilterDriver", gigeOnly, "Type=WindowsFilterDriver"},
        {"DravikGigE:WindowsFilterDriver,DravikGigE:SocketDriver", gigeOnly, "Type=WindowsFilterDriver"},
        {"DravikGigE:a,DravikGigE:Z", gigeOnly, "Type=a"},
        {"DravikGigE:\x80,DravikGigE:z", gigeOnly, "Type=\x80"},
        {"DravikGigE:A,DravikGigE::more", gigeOnly, "Type=A"},
    });
}

TEST_F(TransportVariables, ABlankStandsBetweenDriverAndSocketBuffer) {
    EXPECT_TRUE(parse(parser, words("app -tl DravikGigE::more -socketbuffer 77")));
    EXPECT_EQ(get("ORVEX_GIGE_STREAMPARAMS"), "Type= SocketBufferSize=77");
}

struct NumericOption {
    const char* name;
    const char* variable;
    const char* prefix;
};

const NumericOption numericOptions[] = {
    {"-socketbuffer=", "ORVEX_GIGE_STREAMPARAMS", "SocketBufferSize="},
    {"-packetsize=", "ORVEX_GIGE_STREAM_GEVSCPS", ""},
    {"-packetdelay=", "ORVEX_GIGE_STREAM_GEVSCPD", ""},
    {"-camemu=", "ORVEX_CAMEMU", ""},
};

TEST_F(TransportVariables, ANumberThatBeginsWithADigitIsExportedAsItStands) {
    for (const NumericOption& option : numericOptions) {
        for (const char* value :
             {"0", "9", "12abc", "3x", "007 ", "5\xFF\n", "99999999999999999999", "6$(A)%"}) {
            SCOPED_TRACE(std::string(option.name) + value);
            OrvexTestCommandLineParser fresh;
            ASSERT_TRUE(parse(fresh, {"app", std::string(option.name) + value}));
            ASSERT_EQ(get(option.variable), std::string(option.prefix) + value);
        }
    }
}

TEST_F(TransportVariables, ANumberThatBeginsWithAnythingElseFails) {
    for (const NumericOption& option : numericOptions) {
        set(option.variable, "before");
        for (const char* value : {"x3", " 1", "-1", "+1", ".5", "\t1", "inf", "\xB2", "/1", ":1"}) {
            SCOPED_TRACE(std::string(option.name) + value);
            OrvexTestCommandLineParser fresh;
            ASSERT_FALSE(parse(fresh, {"app", std::string(option.name) + value}));
            ASSERT_EQ(get(option.variable), "before");
        }
        writeEnvironment({});
    }
}

TEST_F(TransportVariables, ABadNumberLeavesTheVariablesThatComeBeforeItSet) {
    const std::string valid =
        "app -tl DravikGigE:D -socketbuffer=1 -packetsize=2 -packetdelay=3 -camemu=4 -p k=v";
    const struct {
        const char* badOption;
        Environment variables;
    } rows[] = {
        {" -socketbuffer=x", {}},
        {" -packetsize=x",
         {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
          {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
          {"ORVEX_GIGE_STREAMPARAMS", "Type=D SocketBufferSize=1"}}},
        {" -packetdelay=x",
         {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
          {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
          {"ORVEX_GIGE_STREAMPARAMS", "Type=D SocketBufferSize=1"},
          {"ORVEX_GIGE_STREAM_GEVSCPS", "2"}}},
        {" -camemu=x",
         {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
          {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
          {"ORVEX_GIGE_STREAMPARAMS", "Type=D SocketBufferSize=1"},
          {"ORVEX_GIGE_STREAM_GEVSCPS", "2"},
          {"ORVEX_GIGE_STREAM_GEVSCPD", "3"}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.badOption);
        writeEnvironment({});
        OrvexTestCommandLineParser fresh;
        ASSERT_FALSE(parse(fresh, words(valid + row.badOption)));
        ASSERT_THAT(readEnvironment(), ContainerEq(row.variables));
    }
}

TEST_F(TransportVariables, ADefinedExtraTransportLayerStaysAsItIs) {
    for (const char* value : {"", "0"}) {
        set("ORVEX_GTC_USE_EXTRA_TL", value);
        OrvexTestCommandLineParser fresh;
        ASSERT_TRUE(parse(fresh, {"app"}));
        ASSERT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), value);
    }
}

TEST_F(TransportVariables, InheritedVariablesStayButForThePacketSize) {
    const Environment inherited = {{"ORVEX_GTC_USE_EXTRA_TL", "a"},    {"ORVEX_DEVICE_FILTER", "b"},
                                   {"ORVEX_GIGE_STREAMPARAMS", "c"},   {"ORVEX_GIGE_STREAM_GEVSCPS", "d"},
                                   {"ORVEX_GIGE_STREAM_GEVSCPD", "e"}, {"ORVEX_CAMEMU", "f"},
                                   {"TEST_PROPERTIES", "g"},           {"UNRELATED", "h"}};
    writeEnvironment(inherited);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(readEnvironment(), ContainerEq(changed(inherited, {{"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}})));
}

TEST_F(TransportVariables, GivenOptionsReplaceInheritedVariables) {
    writeEnvironment({{"ORVEX_DEVICE_FILTER", "old"}, {"ORVEX_CAMEMU", "old"}, {"TEST_PROPERTIES", "old"}});
    EXPECT_TRUE(parse(parser, {"app", "-tl", "A", "-camemu", "1", "-p", "\x01 \x80\xFF", "-p", " "}));
    EXPECT_THAT(transportVariables(),
                ContainerEq(changed(defaults, {{"ORVEX_DEVICE_FILTER", "DeviceClass=A"},
                                               {"ORVEX_CAMEMU", "1"},
                                               {"TEST_PROPERTIES", "\x01 \x80\xFF  "}})));
}

TEST_F(TransportVariables, ASecondParseAddsToTheFirst) {
    EXPECT_TRUE(parse(parser, words("app -tl DravikGigE:D -p a -packetsize 1500")));
    EXPECT_TRUE(parse(parser, words("app -tl DravikGigE:E,C -p b")));
    EXPECT_THAT(
        transportVariables(),
        ContainerEq(changed(defaults, {{"ORVEX_DEVICE_FILTER", "DeviceClass=C||DeviceClass=DravikGigE"},
                                       {"ORVEX_GIGE_STREAMPARAMS", "Type=E"},
                                       {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                                       {"TEST_PROPERTIES", "a b"}})));
}

}  // namespace
