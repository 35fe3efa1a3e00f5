#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <string>
#include <vector>

namespace {

// The defined ones of the seven variables that the transport options set.
Environment transportVariables() {
    Environment result;
    const Environment all = readEnvironment();
    for (const char* name :
         {"ORVEX_GTC_USE_EXTRA_TL", "ORVEX_DEVICE_FILTER", "ORVEX_GIGE_STREAMPARAMS",
          "ORVEX_GIGE_STREAM_GEVSCPS", "ORVEX_GIGE_STREAM_GEVSCPD", "ORVEX_CAMEMU", "TEST_PROPERTIES"}) {
        const auto found = all.find(name);
        if (found != all.end()) {
            result.insert(*found);
        }
    }
    return result;
}

// What every successful parse sets in an empty environment.
const Environment defaults = {{"ORVEX_GTC_USE_EXTRA_TL", "1"}, {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}};

struct TransportRow {
    const char* testName;
    std::vector<std::string> arguments;
    Environment set;
};

std::string nameOfTransportRow(const ::testing::TestParamInfo<TransportRow>& row) {
    return row.param.testName;
}

class TransportTable : public CleanEnvironmentTest, public ::testing::WithParamInterface<TransportRow> {};

std::vector<std::string> commandLine(const std::vector<std::string>& arguments) {
    std::vector<std::string> result = {"app"};
    result.insert(result.end(), arguments.begin(), arguments.end());
    return result;
}

}  // namespace

TEST_P(TransportTable, SetsTheVariables) {
    OrvexTestCommandLineParser parser;
    EXPECT_TRUE(parse(parser, commandLine(GetParam().arguments)));
    EXPECT_EQ(transportVariables(), changed(defaults, GetParam().set));
}

const TransportRow exampleRows[] = {
    {"NoOption", {}, {}},
    {"OneDeviceClass", {"-tl", "DravikGigE"}, {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"}}},
    {"TwoEntriesInOneValueAndSocketBuffer",
     {"-tl", "DravikGTC,DravikGigE:SocketDriver", "-socketbuffer", "2048"},
     {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC||DeviceClass=DravikGigE"},
      {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver SocketBufferSize=2048"}}},
    {"TwoEntriesInTwoValuesAndSocketBuffer",
     {"-tl", "DravikGTC", "-tl", "DravikGigE:SocketDriver", "-socketbuffer", "2048"},
     {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC||DeviceClass=DravikGigE"},
      {"ORVEX_GIGE_STREAMPARAMS", "Type=SocketDriver SocketBufferSize=2048"}}},
    {"TwoDriversPacketSizeAndPacketDelay",
     {"-tl", "DravikGigE:SocketDriver", "-tl", "DravikGigE:WindowsFilterDriver", "-packetsize", "1500",
      "-packetdelay", "0"},
     {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
      {"ORVEX_GIGE_STREAMPARAMS", "Type=WindowsFilterDriver"},
      {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
      {"ORVEX_GIGE_STREAM_GEVSCPD", "0"}}},
    {"SocketBufferAlone", {"-socketbuffer", "4096"}, {{"ORVEX_GIGE_STREAMPARAMS", "SocketBufferSize=4096"}}},
    {"TwoProperties",
     {"-p", "key1=value1", "-p", "key2=value2"},
     {{"TEST_PROPERTIES", "key1=value1 key2=value2"}}},
};
INSTANTIATE_TEST_SUITE_P(Examples, TransportTable, ::testing::ValuesIn(exampleRows), nameOfTransportRow);

const TransportRow variableRows[] = {
    {"PacketSize", {"-packetsize", "9000"}, {{"ORVEX_GIGE_STREAM_GEVSCPS", "9000"}}},
    {"PacketDelay", {"-packetdelay", "12"}, {{"ORVEX_GIGE_STREAM_GEVSCPD", "12"}}},
    {"CameraEmulation", {"-camemu", "3"}, {{"ORVEX_CAMEMU", "3"}}},
    {"OneProperty", {"-p", "key=value"}, {{"TEST_PROPERTIES", "key=value"}}},
    {"SocketBufferIsNoPacketSize",
     {"-socketbuffer", "1"},
     {{"ORVEX_GIGE_STREAMPARAMS", "SocketBufferSize=1"}}},
    {"AllTogether",
     {"-p", "a=b", "-camemu", "2", "-packetdelay", "3", "-packetsize", "4", "-socketbuffer", "5", "-tl",
      "DravikGigE:D"},
     {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
      {"ORVEX_GIGE_STREAMPARAMS", "Type=D SocketBufferSize=5"},
      {"ORVEX_GIGE_STREAM_GEVSCPS", "4"},
      {"ORVEX_GIGE_STREAM_GEVSCPD", "3"},
      {"ORVEX_CAMEMU", "2"},
      {"TEST_PROPERTIES", "a=b"}}},
};
INSTANTIATE_TEST_SUITE_P(EachVariable, TransportTable, ::testing::ValuesIn(variableRows), nameOfTransportRow);

const TransportRow emptyRows[] = {
    {"TransportLayer", {"-tl", ""}, {}},
    {"TwoTransportLayers", {"-tl=", "-tl="}, {}},
    {"SocketBuffer", {"-socketbuffer", ""}, {}},
    {"PacketSizeKeepsTheDefault", {"-packetsize", ""}, {}},
    {"PacketDelay", {"-packetdelay", ""}, {}},
    {"CameraEmulation", {"-camemu", ""}, {}},
    {"Property", {"-p", ""}, {}},
    {"TwoPropertiesAreABlank", {"-p=", "-p="}, {{"TEST_PROPERTIES", " "}}},
    {"EmptyPropertyKeepsItsPlace", {"-p", "a", "-p", "", "-p", "b"}, {{"TEST_PROPERTIES", "a  b"}}},
    {"OptionsWithoutValue", {"-tl", "-socketbuffer", "-packetsize", "-packetdelay", "-camemu", "-p"}, {}},
};
INSTANTIATE_TEST_SUITE_P(EmptyValues, TransportTable, ::testing::ValuesIn(emptyRows), nameOfTransportRow);

TransportRow filterRow(const char* testName, const char* tlList, const char* filter) {
    return {testName, {"-tl", tlList}, {{"ORVEX_DEVICE_FILTER", filter}}};
}

const TransportRow filterRows[] = {
    filterRow("DriverAfterAColonOnlyIsNone", "DravikGigE:", "DeviceClass=DravikGigE"),
    filterRow("LeadingColonGivesTheEmptyClass", ":SocketDriver", "DeviceClass="),
    filterRow("LoneColonGivesTheEmptyClass", ":", "DeviceClass="),
    filterRow("EmptyClassSortsFirst", "A,:x", "DeviceClass=||DeviceClass=A"),
    filterRow("DriverOfAnotherClassIsIgnored", "OtherClass:SocketDriver", "DeviceClass=OtherClass"),
    filterRow("ClassIsCaseSensitive", "dravikgige:SocketDriver", "DeviceClass=dravikgige"),
    filterRow("ClassIsComparedWhole", "DravikGigEx:SocketDriver", "DeviceClass=DravikGigEx"),
    filterRow("ClassIsNotTrimmed", " DravikGigE:SocketDriver", "DeviceClass= DravikGigE"),
    filterRow("EmptyMiddleEntryIsSkipped", "a,,b", "DeviceClass=a||DeviceClass=b"),
    filterRow("TrailingCommaGivesNoEntry", "a,b,", "DeviceClass=a||DeviceClass=b"),
    filterRow("LeadingCommaGivesNoEntry", ",a", "DeviceClass=a"),
    filterRow("ClassesAreSorted", "c,a,b", "DeviceClass=a||DeviceClass=b||DeviceClass=c"),
    filterRow("UpperCaseLetterSortsBeforeLowerCase", "DravikGige,DravikGTc",
              "DeviceClass=DravikGTc||DeviceClass=DravikGige"),
    filterRow("PrefixSortsBeforeTheLongerClass", "ABC,AB,A",
              "DeviceClass=A||DeviceClass=AB||DeviceClass=ABC"),
    filterRow("HighBytesSortLast", "\xFF,\x80,z,\x7F",
              "DeviceClass=z||DeviceClass=\x7F||DeviceClass=\x80||DeviceClass=\xFF"),
    filterRow("RepeatedClassesCollapse", "a,b,a,b,a", "DeviceClass=a||DeviceClass=b"),
    filterRow("ClassesThatDifferInCaseStay", "a,A", "DeviceClass=A||DeviceClass=a"),
    filterRow("UnknownClassIsTakenAsItStands", "no such|class=\x01", "DeviceClass=no such|class=\x01"),
};
INSTANTIATE_TEST_SUITE_P(DeviceFilter, TransportTable, ::testing::ValuesIn(filterRows), nameOfTransportRow);

TransportRow driverRow(const char* testName, const char* tlList, const char* streamParameters) {
    return {
        testName,
        {"-tl", tlList},
        {{"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"}, {"ORVEX_GIGE_STREAMPARAMS", streamParameters}}};
}

const TransportRow driverRows[] = {
    driverRow("OneDriver", "DravikGigE:SocketDriver", "Type=SocketDriver"),
    driverRow("ThirdPartIsIgnored", "DravikGigE:SocketDriver:more", "Type=SocketDriver"),
    driverRow("RepeatedClassesCollapse", "DravikGigE,DravikGigE:SocketDriver", "Type=SocketDriver"),
    driverRow("EmptySecondPartIsADriver", "DravikGigE::more", "Type="),
    driverRow("EmptyDriverSortsFirst", "DravikGigE:A,DravikGigE::more", "Type=A"),
    driverRow("LastOfTwoCounts", "DravikGigE:SocketDriver,DravikGigE:WindowsFilterDriver",
              "Type=WindowsFilterDriver"),
    driverRow("LastInByteOrderNotInTheList", "DravikGigE:WindowsFilterDriver,DravikGigE:SocketDriver",
              "Type=WindowsFilterDriver"),
    driverRow("LowerCaseSortsAfterUpperCase", "DravikGigE:a,DravikGigE:Z", "Type=a"),
    driverRow("LongerSortsAfterItsPrefix", "DravikGigE:AB,DravikGigE:A", "Type=AB"),
    driverRow("HighByteSortsLast", "DravikGigE:\x80,DravikGigE:z", "Type=\x80"),
    driverRow("DriverIsTakenAsItStands", "DravikGigE: no such=driver ", "Type= no such=driver "),
};
INSTANTIATE_TEST_SUITE_P(DriverType, TransportTable, ::testing::ValuesIn(driverRows), nameOfTransportRow);

TransportRow bothRow(const char* testName, const char* tlList, const char* streamParameters) {
    TransportRow row = driverRow(testName, tlList, streamParameters);
    row.arguments.insert(row.arguments.end(), {"-socketbuffer", "77"});
    return row;
}

const TransportRow bothRows[] = {
    bothRow("BlankBetween", "DravikGigE:SocketDriver", "Type=SocketDriver SocketBufferSize=77"),
    bothRow("LastDriverCounts", "DravikGigE:b,DravikGigE:a", "Type=b SocketBufferSize=77"),
    bothRow("EmptyDriver", "DravikGigE::more", "Type= SocketBufferSize=77"),
    bothRow("NoDriver", "DravikGigE", "SocketBufferSize=77"),
};
INSTANTIATE_TEST_SUITE_P(DriverTypeAndSocketBuffer, TransportTable, ::testing::ValuesIn(bothRows),
                         nameOfTransportRow);

struct NumericOption {
    const char* name;
    const char* variable;
    const char* prefix;
};

const NumericOption numericOptions[] = {
    {"socketbuffer", "ORVEX_GIGE_STREAMPARAMS", "SocketBufferSize="},
    {"packetsize", "ORVEX_GIGE_STREAM_GEVSCPS", ""},
    {"packetdelay", "ORVEX_GIGE_STREAM_GEVSCPD", ""},
    {"camemu", "ORVEX_CAMEMU", ""},
};

class NumericTable : public CleanEnvironmentTest, public ::testing::WithParamInterface<NumericOption> {
protected:
    static bool parseValue(const std::string& value) {
        OrvexTestCommandLineParser parser;
        return parse(parser, {"app", std::string("-") + GetParam().name + "=" + value});
    }
};

INSTANTIATE_TEST_SUITE_P(NumericOptions, NumericTable, ::testing::ValuesIn(numericOptions),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(NumericTable, ValueThatBeginsWithADigitIsExportedAsItStands) {
    for (const char* value : {"0", "9", "12abc", "3x", "007", "1 2 ", "5\xFF\x80", "0x10", "1e3",
                              "99999999999999999999", "4,5", "6$(HOMEDIR)%", "7'\"\n"}) {
        SCOPED_TRACE(value);
        EXPECT_TRUE(parseValue(value));
        EXPECT_EQ(get(GetParam().variable), std::string(GetParam().prefix) + value);
    }
}

TEST_P(NumericTable, ValueThatDoesNotBeginWithADigitFails) {
    set(GetParam().variable, "before");
    for (const char* value :
         {"x3", " 1", "-1", "+1", ".5", "-", "x", "\t1", "inf", "\xD9\xA3", "\xB2", "/1", ":1"}) {
        SCOPED_TRACE(value);
        EXPECT_FALSE(parseValue(value));
        EXPECT_EQ(get(GetParam().variable), "before");
    }
}

TEST_P(NumericTable, OnlyTheTenDigitsPassAsFirstByte) {
    for (int byte = 1; byte <= 0xFF; ++byte) {
        SCOPED_TRACE(byte);
        EXPECT_EQ(parseValue(std::string(1, static_cast<char>(byte)) + "1"), byte >= '0' && byte <= '9');
    }
}

TEST_P(NumericTable, NegativeNumberInItsOwnArgumentIsTheValueAndFails) {
    OrvexTestCommandLineParser parser;
    EXPECT_FALSE(parse(parser, {"app", std::string("-") + GetParam().name, "-5"}));
    EXPECT_EQ(get(GetParam().variable).find('5'), std::string::npos);
}

TEST_P(NumericTable, VeryLongValueIsExportedWhole) {
    const std::string value(100000, '1');
    EXPECT_TRUE(parseValue(value));
    EXPECT_EQ(get(GetParam().variable), GetParam().prefix + value);
}

class TransportStep : public CleanEnvironmentTest {
protected:
    OrvexTestCommandLineParser parser;
};

TEST_F(TransportStep, PropertiesAreExportedByteForByte) {
    std::string value = "key=";
    for (int byte = 1; byte <= 0xFF; ++byte) {
        value += static_cast<char>(byte);
    }
    EXPECT_TRUE(parse(parser, {"app", "-p", value, "-p", " "}));
    EXPECT_EQ(get("TEST_PROPERTIES"), value + "  ");
}

TEST_F(TransportStep, TransportLayersOfAllThreeSourcesCount) {
    set("ORVEX_TEST_ARGS", "-tl A -p first");
    set("_ORVEX_TEST_ARGS_", "-tl C -p third");
    EXPECT_TRUE(parse(parser, {"app", "-tl", "B", "-p", "second"}));
    EXPECT_EQ(get("ORVEX_DEVICE_FILTER"), "DeviceClass=A||DeviceClass=B||DeviceClass=C");
    EXPECT_EQ(get("TEST_PROPERTIES"), "first second third");
}

TEST_F(TransportStep, AbsentOptionsLeaveTheirVariablesAsTheyWere) {
    const Environment before = {{"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                {"ORVEX_DEVICE_FILTER", "filter"},
                                {"ORVEX_GIGE_STREAMPARAMS", "parameters"},
                                {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                                {"ORVEX_GIGE_STREAM_GEVSCPD", "5"},
                                {"ORVEX_CAMEMU", "6"},
                                {"TEST_PROPERTIES", "a=b"},
                                {"GENICAM_GENTL64_PATH", "/x/gtl"},
                                {"UNRELATED", "text"}};
    writeEnvironment(before);
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(readEnvironment(), changed(before, {{"ORVEX_GIGE_STREAM_GEVSCPS", "8192"}}));
}

TEST_F(TransportStep, GivenOptionsReplaceWhatTheirVariablesHeld) {
    writeEnvironment({{"ORVEX_DEVICE_FILTER", "filter"},
                      {"ORVEX_GIGE_STREAMPARAMS", "parameters"},
                      {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                      {"ORVEX_GIGE_STREAM_GEVSCPD", "5"},
                      {"ORVEX_CAMEMU", "6"},
                      {"TEST_PROPERTIES", "a=b"}});
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGigE:D", "-packetsize", "1", "-packetdelay", "2",
                               "-camemu", "3", "-p", "c=d"}));
    EXPECT_EQ(transportVariables(), (Environment{{"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                                 {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
                                                 {"ORVEX_GIGE_STREAMPARAMS", "Type=D"},
                                                 {"ORVEX_GIGE_STREAM_GEVSCPS", "1"},
                                                 {"ORVEX_GIGE_STREAM_GEVSCPD", "2"},
                                                 {"ORVEX_CAMEMU", "3"},
                                                 {"TEST_PROPERTIES", "c=d"}}));
}

TEST_F(TransportStep, ExtraTransportLayersBecomeOneWithoutAnyTransportLayer) {
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), "1");
}

TEST_F(TransportStep, ExtraTransportLayersThatAreDefinedStay) {
    for (const char* value : {"", "0", "1", "any text"}) {
        SCOPED_TRACE(value);
        set("ORVEX_GTC_USE_EXTRA_TL", value);
        EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGigE"}));
        EXPECT_EQ(get("ORVEX_GTC_USE_EXTRA_TL"), value);
    }
}

TEST_F(TransportStep, SetsNothingElse) {
    set("UNRELATED", "text");
    EXPECT_TRUE(parse(parser, {"app", "-camemu", "1", "-packetdelay", "2", "-socketbuffer", "3", "-p", "a"}));
    EXPECT_EQ(readEnvironment(), (changed(defaults, {{"UNRELATED", "text"},
                                                     {"ORVEX_GIGE_STREAMPARAMS", "SocketBufferSize=3"},
                                                     {"ORVEX_GIGE_STREAM_GEVSCPD", "2"},
                                                     {"ORVEX_CAMEMU", "1"},
                                                     {"TEST_PROPERTIES", "a"}})));
}

TEST_F(TransportStep, StoresNothingInTheParser) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "b,DravikGigE:D,a", "-packetsize", "1"}));
    EXPECT_EQ(parser.getTlList(), "b,DravikGigE:D,a");
}

TEST_F(TransportStep, LaterParseKeepsWhatItDoesNotSet) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGigE:D", "-packetsize", "1500", "-camemu", "2"}));
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(other, {"app"}));
    EXPECT_EQ(transportVariables(), (Environment{{"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                                 {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGigE"},
                                                 {"ORVEX_GIGE_STREAMPARAMS", "Type=D"},
                                                 {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"},
                                                 {"ORVEX_CAMEMU", "2"}}));
}

TEST_F(TransportStep, SecondParseOfTheSameParserAddsToTheFirst) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGigE:D", "-p", "a", "-packetsize", "1500"}));
    EXPECT_TRUE(parse(parser, {"app", "-tl", "DravikGigE:E,C", "-p", "b"}));
    EXPECT_EQ(transportVariables(),
              changed(defaults, {{"ORVEX_DEVICE_FILTER", "DeviceClass=C||DeviceClass=DravikGigE"},
                                 {"ORVEX_GIGE_STREAMPARAMS", "Type=E"},
                                 {"ORVEX_GIGE_STREAM_GEVSCPS", "1500"},
                                 {"TEST_PROPERTIES", "a b"}}));
}
