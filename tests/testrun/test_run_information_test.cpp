#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <string>
#include <vector>

namespace {

Snapshot emptyRecord() {
    return snapshotOf(TestRunInformation());
}

// The record after a parse without any option.
Snapshot defaultRecord() {
    return changed(emptyRecord(), {{"group", "orvex"}, {"fixedZero", "0"}, {"transportLayers", "any"}});
}

struct FieldRow {
    const char* option;
    std::vector<std::string> fields;
};

const FieldRow fieldRows[] = {
    {"tdc_guid", {"guid"}},
    {"tdc_runname", {"runName"}},
    {"tdc_rundescription", {"runDescription"}},
    {"tdc_group", {"group"}},
    {"tdc_userid", {"userId"}},
    {"tdc_product", {"product"}},
    {"tdc_vcsbranch", {"vcsBranch", "secondVcsBranch"}},
    {"tdc_vcsrevision", {"vcsRevision", "secondVcsRevision"}},
    {"tdc_dxml", {"tdcDravikXmlFilename"}},
    {"testname", {"testName"}},
    {"pcname", {"pcName"}},
    {"osname", {"osName"}},
    {"ostype", {"osType"}},
    {"bit", {"bit"}},
    {"tl", {"transportLayers"}},
};

class RecordTable : public CleanEnvironmentTest, public ::testing::WithParamInterface<FieldRow> {
protected:
    // The default record with the fields of this option changed to the text.
    static Snapshot recordWith(const std::string& text) {
        Snapshot record = defaultRecord();
        for (const std::string& field : GetParam().fields) {
            record[field] = text;
        }
        return record;
    }
    static std::string option() {
        return std::string("-") + GetParam().option;
    }
    Snapshot record() const {
        return snapshotOf(parser.getTestRunInformation());
    }

    OrvexTestCommandLineParser parser;
};

INSTANTIATE_TEST_SUITE_P(EachOption, RecordTable, ::testing::ValuesIn(fieldRows),
                         [](const auto& row) { return std::string(row.param.option); });

}  // namespace

TEST_P(RecordTable, OptionFillsItsFieldsAndNoOther) {
    EXPECT_TRUE(parse(parser, {"app", option(), "value"}));
    EXPECT_EQ(record(), recordWith("value"));
}

TEST_P(RecordTable, JoinedFormFillsTheSameFields) {
    EXPECT_TRUE(parse(parser, {"app", "-" + option() + "=a=b"}));
    EXPECT_EQ(record(), recordWith("a=b"));
}

TEST_P(RecordTable, EitherArgumentVariableFillsTheSameFields) {
    for (const char* variable : {"ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_"}) {
        SCOPED_TRACE(variable);
        writeEnvironment({{variable, option() + " value"}});
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app"}));
        EXPECT_EQ(snapshotOf(fresh.getTestRunInformation()), recordWith("value"));
    }
}

TEST_P(RecordTable, EmptyValueLeavesTheDefault) {
    EXPECT_TRUE(parse(parser, {"app", option(), ""}));
    EXPECT_EQ(record(), defaultRecord());
}

TEST_P(RecordTable, OptionWithoutValueLeavesTheDefault) {
    EXPECT_TRUE(parse(parser, {"app", option()}));
    EXPECT_EQ(record(), defaultRecord());
}

TEST_P(RecordTable, ValueIsStoredAsItStands) {
    std::string value;
    for (int byte = 1; byte <= 0xFF; ++byte) {
        value += static_cast<char>(byte);
    }
    EXPECT_TRUE(parse(parser, {"app", option(), value}));
    EXPECT_EQ(record(), recordWith(value));
}

TEST_P(RecordTable, BlankValueIsAValue) {
    EXPECT_TRUE(parse(parser, {"app", option(), " "}));
    EXPECT_EQ(record(), recordWith(" "));
}

TEST_P(RecordTable, LongValueIsStoredWhole) {
    for (const std::size_t length : {255, 256, 257, 4096, 100000}) {
        SCOPED_TRACE(length);
        const std::string value(length, 'v');
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", option(), value}));
        EXPECT_EQ(snapshotOf(fresh.getTestRunInformation()), recordWith(value));
    }
}

TEST_P(RecordTable, SecondParseWithoutTheOptionKeepsTheValue) {
    EXPECT_TRUE(parse(parser, {"app", option(), "value"}));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(record(), recordWith("value"));
}

struct SecondParseRow {
    const char* option;
    Snapshot afterNewValue;
    Snapshot afterEmptyValue;
};

// The first parse gives "old"; the second gives "new", or an empty value.
const SecondParseRow secondParseRows[] = {
    {"tdc_guid", {{"guid", "new"}}, {{"guid", "old"}}},
    {"tdc_runname", {{"runName", "new"}}, {{"runName", "old"}}},
    {"tdc_rundescription", {{"runDescription", "new"}}, {{"runDescription", "old"}}},
    {"tdc_group", {{"group", "new"}}, {{"group", "orvex"}}},
    {"tdc_userid", {{"userId", "new"}}, {{"userId", "old"}}},
    {"tdc_product", {{"product", "new"}}, {{"product", "old"}}},
    {"tdc_vcsbranch",
     {{"vcsBranch", "new"}, {"secondVcsBranch", "new"}},
     {{"vcsBranch", "old"}, {"secondVcsBranch", "old"}}},
    {"tdc_vcsrevision",
     {{"vcsRevision", "new"}, {"secondVcsRevision", "new"}},
     {{"vcsRevision", "old"}, {"secondVcsRevision", "old"}}},
    {"tdc_dxml", {{"tdcDravikXmlFilename", "new"}}, {{"tdcDravikXmlFilename", "old"}}},
    {"testname", {{"testName", "new"}}, {{"testName", "old"}}},
    {"pcname", {{"pcName", "new"}}, {{"pcName", "old"}}},
    {"osname", {{"osName", "new"}}, {{"osName", "old"}}},
    {"ostype", {{"osType", "new"}}, {{"osType", "old"}}},
    {"bit", {{"bit", "new"}}, {{"bit", "old"}}},
    {"tl", {{"transportLayers", "old,new"}}, {{"transportLayers", "old,"}}},
};

class SecondParseTable : public CleanEnvironmentTest, public ::testing::WithParamInterface<SecondParseRow> {
protected:
    OrvexTestCommandLineParser parser;
    const std::string option = std::string("-") + GetParam().option;
};

INSTANTIATE_TEST_SUITE_P(EachOption, SecondParseTable, ::testing::ValuesIn(secondParseRows),
                         [](const auto& row) { return std::string(row.param.option); });

TEST_P(SecondParseTable, NewValueIsTaken) {
    EXPECT_TRUE(parse(parser, {"app", option, "old"}));
    EXPECT_TRUE(parse(parser, {"app", option, "new"}));
    EXPECT_EQ(snapshotOf(parser.getTestRunInformation()), changed(defaultRecord(), GetParam().afterNewValue));
}

TEST_P(SecondParseTable, EmptyValueKeepsWhatWasThereButForTheGroup) {
    EXPECT_TRUE(parse(parser, {"app", option, "old"}));
    EXPECT_TRUE(parse(parser, {"app", option, ""}));
    EXPECT_EQ(snapshotOf(parser.getTestRunInformation()),
              changed(defaultRecord(), GetParam().afterEmptyValue));
}

TEST_P(SecondParseTable, FailedParseLeavesTheRecordAsItWas) {
    EXPECT_TRUE(parse(parser, {"app", option, "old"}));
    const Snapshot before = snapshotOf(parser.getTestRunInformation());
    EXPECT_FALSE(parse(parser, {"app", option, "new", "-camemu", "x"}));
    EXPECT_EQ(snapshotOf(parser.getTestRunInformation()), before);
}

class Record : public CleanEnvironmentTest {
protected:
    Snapshot record() const {
        return snapshotOf(parser.getTestRunInformation());
    }

    OrvexTestCommandLineParser parser;
};

TEST_F(Record, AllFieldsAreEmptyBeforeTheFirstParse) {
    EXPECT_EQ(record(), emptyRecord());
    EXPECT_EQ(parser.getTdcDravikXmlFilename(), "");
}

TEST_F(Record, WithoutOptionsOnlyThreeFieldsAreFilled) {
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(record(), defaultRecord());
}

TEST_F(Record, AllOptionsTogetherFillAllFields) {
    EXPECT_TRUE(parse(parser, {"app",    "-tdc_guid",
                               "1",      "-tdc_runname",
                               "2",      "-tdc_rundescription",
                               "3",      "-tdc_group",
                               "4",      "-tdc_userid",
                               "5",      "-tdc_product",
                               "6",      "-tdc_vcsbranch",
                               "main",   "-tdc_vcsrevision",
                               "1a2b3c", "-tdc_dxml",
                               "9",      "-testname",
                               "10",     "-pcname",
                               "11",     "-osname",
                               "12",     "-ostype",
                               "13",     "-bit",
                               "14",     "-tl",
                               "15"}));
    EXPECT_EQ(record(), (Snapshot{{"group", "4"},
                                  {"guid", "1"},
                                  {"runName", "2"},
                                  {"runDescription", "3"},
                                  {"product", "6"},
                                  {"fixedZero", "0"},
                                  {"userId", "5"},
                                  {"vcsRevision", "1a2b3c"},
                                  {"vcsBranch", "main"},
                                  {"secondVcsRevision", "1a2b3c"},
                                  {"secondVcsBranch", "main"},
                                  {"pcName", "11"},
                                  {"osName", "12"},
                                  {"transportLayers", "15"},
                                  {"tdcDravikXmlFilename", "9"},
                                  {"testName", "10"},
                                  {"osType", "13"},
                                  {"bit", "14"}}));
}

TEST_F(Record, TransportLayersAreJoinedByACommaOnly) {
    EXPECT_TRUE(parse(parser, {"app", "-tl", "A", "-tl", "B"}));
    EXPECT_EQ(record(), changed(defaultRecord(), {{"transportLayers", "A,B"}}));
    EXPECT_EQ(parser.getTlList(), "A,B");
}

TEST_F(Record, EmptyTransportLayerIsAny) {
    EXPECT_TRUE(parse(parser, {"app", "-tl="}));
    EXPECT_EQ(record(), defaultRecord());
    EXPECT_EQ(parser.getTlList(), "");
}

TEST_F(Record, TwoEmptyTransportLayersAreAComma) {
    EXPECT_TRUE(parse(parser, {"app", "-tl=", "-tl="}));
    EXPECT_EQ(record(), changed(defaultRecord(), {{"transportLayers", ","}}));
}

TEST_F(Record, AnyGivesWayToALaterTransportLayer) {
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_TRUE(parse(parser, {"app", "-tl", "A"}));
    EXPECT_EQ(record(), changed(defaultRecord(), {{"transportLayers", "A"}}));
}

TEST_F(Record, LastValueOfTheThreeSourcesWins) {
    set("ORVEX_TEST_ARGS", "-tdc_guid first -testname first -bit first");
    set("_ORVEX_TEST_ARGS_", "-tdc_guid third");
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "second", "-testname", "second"}));
    EXPECT_EQ(record(),
              changed(defaultRecord(), {{"guid", "third"}, {"testName", "second"}, {"bit", "first"}}));
}

TEST_F(Record, AdvertisedNamesThatAreNotRegisteredFillNothing) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_name", "a", "-tdc_pcname", "b", "-tdc_osname", "c"}));
    EXPECT_EQ(record(), defaultRecord());
    EXPECT_EQ(parser.getTestPaths(), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(Record, AdvertisedNamesThatAreNotRegisteredFillNothingInTheJoinedForm) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_name=a", "-tdc_pcname=b", "-tdc_osname=c"}));
    EXPECT_EQ(record(), defaultRecord());
    EXPECT_EQ(parser.getTestPaths(), std::vector<std::string>());
}

TEST_F(Record, NoOptionReachesTheFixedZero) {
    EXPECT_TRUE(parse(parser, {"app", "-fixedZero=1", "-tdc_variant=2", "-tdc_fixedzero=3", "-0=4",
                               "-group=5", "-tdc_tl=6", "-transportlayers=7"}));
    EXPECT_EQ(record(), defaultRecord());
}

TEST_F(Record, OptionNamesAreCaseSensitive) {
    EXPECT_TRUE(parse(parser, {"app", "-TDC_GUID=1", "-Testname=2", "-BIT=3", "-tdc_Group=4", "-TL=5"}));
    EXPECT_EQ(record(), defaultRecord());
}

TEST_F(Record, EnvironmentVariablesDoNotFillFields) {
    set("TEST_SESSION_GUID", "guid");
    set("TEST_SESSION_GROUP", "group");
    set("TRANSPORT_LAYER", "layer");
    set("VCS_BRANCH", "branch");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(record(), defaultRecord());
}

TEST_F(Record, ReportFileAccessorReturnsTheFieldItself) {
    EXPECT_TRUE(parse(parser, {"app", "-tdc_dxml", "report.xml"}));
    EXPECT_EQ(parser.getTdcDravikXmlFilename(), "report.xml");
    EXPECT_EQ(&parser.getTdcDravikXmlFilename(), &parser.getTestRunInformation().tdcDravikXmlFilename);
}

TEST_F(Record, ReferenceStaysValidAndShowsALaterParse) {
    const TestRunInformation& information = parser.getTestRunInformation();
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "first"}));
    EXPECT_EQ(information.guid, "first");
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "second"}));
    EXPECT_EQ(information.guid, "second");
    EXPECT_EQ(&information, &parser.getTestRunInformation());
}

TEST_F(Record, FirstParseThatFailsLeavesAllFieldsEmpty) {
    EXPECT_FALSE(parse(parser, {"app", "-tdc_guid", "guid", "-tl", "A", "-packetsize", "x"}));
    EXPECT_EQ(record(), emptyRecord());
}

TEST_F(Record, ParseAfterAFailedOneFillsWhatTheFailedOneScanned) {
    EXPECT_FALSE(parse(parser, {"app", "-tdc_guid", "guid", "-tl", "A", "-packetsize", "x"}));
    EXPECT_TRUE(parse(parser, {"app", "-packetsize", "1"}));
    EXPECT_EQ(record(), changed(defaultRecord(), {{"guid", "guid"}, {"transportLayers", "A"}}));
}

TEST_F(Record, ParseOfNoArgumentsLeavesTheRecord) {
    EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
    EXPECT_EQ(record(), emptyRecord());
}

TEST_F(Record, TwoParsersKeepRecordsOfTheirOwn) {
    OrvexTestCommandLineParser other;
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid", "guid"}));
    EXPECT_TRUE(parse(other, {"app", "-bit", "64"}));
    EXPECT_EQ(record(), changed(defaultRecord(), {{"guid", "guid"}}));
    EXPECT_EQ(snapshotOf(other.getTestRunInformation()), changed(defaultRecord(), {{"bit", "64"}}));
}
