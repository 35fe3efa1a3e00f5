#include "OrvexTestCommandLineParser.h"
#include "support/known_options.h"
#include "support/parser_test.h"

#include <string>
#include <vector>

namespace {

using ::testing::ContainerEq;

class TransportVariables : public ParserTest {
protected:
    // The environment without the variables that other steps derive from the transport layers.
    static Environment transportVariables() {
        Environment variables = readEnvironment();
        variables.erase("TRANSPORT_LAYER");
        variables.erase("GENICAM_GENTL64_PATH");
        return variables;
    }

    struct Row {
        const char* arguments;
        Environment variables;
    };
    static void expectVariables(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            writeEnvironment({});
            OrvexTestCommandLineParser fresh;
            EXPECT_TRUE(parse(fresh, Strings{"app"} + words(row.arguments))) << row.arguments;
            EXPECT_THAT(transportVariables(), ContainerEq(changed(defaultVariables, row.variables)))
                << row.arguments;
        }
    }
};

TEST_F(TransportVariables, AreSetFromTheirOptions) {
    expectVariables({
        {"", {}},
        {"-tl DravikGTC,DravikGigE:SocketDriver -socketbuffer 2048",
         {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC||DeviceClass=DravikGigE"},
          {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver SocketBufferSize=2048"}}},
        {"-socketbuffer 4096", {{"ORVEX_GIGE_STREAMPARAMS", "SocketBufferSize=4096"}}},
        {"-packetsize 1500 -packetdelay 0",
         {{"ORVEX_GIGE_STREAM_GEVSCPS", "1500"}, {"ORVEX_GIGE_STREAM_GEVSCPD", "0"}}},
        {"-camemu 3", {{"ORVEX_CAMEMU", "3"}}},
        {"-p key1=value1 -p= -p key2=value2", {{"TEST_PROPERTIES", "key1=value1  key2=value2"}}},
    });
}

TEST_F(TransportVariables, KeepTheirDefaultsWithoutAValue) {
    expectVariables({
        {"-tl= -tl= -socketbuffer= -packetsize= -packetdelay= -camemu= -p=", {}},
        {"-tl -socketbuffer -packetsize -packetdelay -camemu -p", {}},
    });
}

TEST_F(TransportVariables, DeviceClassesAreUniqueAndSortedByBytes) {
    expectVariables({
        {"-tl \xFF,AB,A -tl z,A",
         {{"ORVEX_DEVICE_FILTER", "DeviceClass=A||DeviceClass=AB||DeviceClass=z||DeviceClass=\xFF"}}},
        // Empty entries are skipped, empty classes are not.
        {"-tl ,A,,:x,", {{"ORVEX_DEVICE_FILTER", "DeviceClass=||DeviceClass=A"}}},
    });
}

TEST_F(TransportVariables, LastDriverOfDravikGigEInByteOrderWins) {
    const char* const rows[][2] = {
        {"DravikGigE:WindowsFilterDriver,DravikGigE:SocketDriver:more", "Type=WindowsFilterDriver"},
        {"DravikGigE:\x80,DravikGigE:z", "Type=\x80"},
        {"DravikGigE::more", "Type="},
        {"DravikGigE:,DravikGigEx:SocketDriver", "(undefined)"},
    };
    for (const auto& [tlList, parameters] : rows) {
        writeEnvironment({});
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "-tl", tlList}));
        EXPECT_EQ(get("ORVEX_GIGE_STREAMPARAMS"), parameters) << tlList;
    }
}

TEST_F(TransportVariables, NumberThatBeginsWithADigitIsExportedUnchanged) {
    for (const KnownOption& option : numbers()) {
        const std::string prefix = option.name == std::string("socketbuffer") ? "SocketBufferSize=" : "";
        for (const char* value : {"0", "9", "12abc", "5\xFF\n", "99999999999999999999"}) {
            OrvexTestCommandLineParser fresh;
            EXPECT_TRUE(parse(fresh, {"app", "-" + std::string(option.name) + "=" + value})) << option.name;
            EXPECT_EQ(get(option.sdkVariable), prefix + value) << option.name;
        }
    }
}

TEST_F(TransportVariables, NumberThatDoesNotBeginWithADigitFails) {
    for (const KnownOption& option : numbers()) {
        for (const char* value : {"x3", " 1", "-1", "+1", ".5", "inf", "\xB2", "/1", ":1"}) {
            writeEnvironment({{option.sdkVariable, "before"}});
            OrvexTestCommandLineParser fresh;
            EXPECT_FALSE(parse(fresh, {"app", "-" + std::string(option.name) + "=" + value})) << option.name;
            EXPECT_EQ(get(option.sdkVariable), "before") << option.name;
        }
    }
}

TEST_F(TransportVariables, BadNumberKeepsEarlierVariablesAndSetsNoLaterOnes) {
    // The socket buffer is checked before any variable is set.
    EXPECT_FALSE(parse(parser, words("app -tl B -socketbuffer=x")));
    EXPECT_THAT(readEnvironment(), ContainerEq(Environment()));
    OrvexTestCommandLineParser fresh;
    EXPECT_FALSE(parse(fresh, words("app -tl A -packetdelay=x -camemu=4 -p k=v -tdc_guid 1")));
    EXPECT_THAT(transportVariables(),
                ContainerEq(changed(defaultVariables, {{"ORVEX_DEVICE_FILTER", "DeviceClass=A"}})));
}

TEST_F(TransportVariables, InheritedVariablesStayExceptForThePacketSize) {
    Environment inherited = {{"UNRELATED", "a"}};
    for (const char* name : knownVariables) {
        inherited[name] = "inherited";
    }
    inherited["ORVEX_GTC_USE_EXTRA_TL"] = "";
    writeEnvironment(inherited);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(readEnvironment(), ContainerEq(changed(inherited, {{"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}})));
    EXPECT_TRUE(parse(parser, words("app -camemu 1")));
    EXPECT_EQ(get("ORVEX_CAMEMU"), "1");
}

}  // namespace
