#include "support/arguments.h"
#include "support/clean_environment.h"
#include "support/parser_snapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using ::testing::ContainerEq;
using ::testing::ElementsAre;

class Record : public CleanEnvironmentTest {
protected:
    Snapshot record() const {
        return snapshotOf(parser.getTestRunInformation());
    }

    // The default record with the text in these fields.
    Snapshot recordWith(const char* fields, const char* text) const {
        Snapshot result = defaultRecord;
        for (const std::string& field : words(fields)) {
            result[field] = text;
        }
        return result;
    }

    OrvexTestCommandLineParser parser;
    const Snapshot emptyRecord = snapshotOf(TestRunInformation());
    // The record after a parse without any option.
    const Snapshot defaultRecord =
        changed(emptyRecord, {{"group", "orvex"}, {"fixedZero", "0"}, {"transportLayers", "any"}});
};

// What the fields hold when a first parse gave the option "old" and a second one gives "new" or nothing.
const struct {
    std::string option;
    const char* fields;
    const char* afterNew;
    const char* afterEmpty;
} rows[] = {
    {"-tdc_guid", "guid", "new", "old"},
    {"-tdc_runname", "runName", "new", "old"},
    {"-tdc_rundescription", "runDescription", "new", "old"},
    {"-tdc_group", "group", "new", "orvex"},
    {"-tdc_userid", "userId", "new", "old"},
    {"-tdc_product", "product", "new", "old"},
    {"-tdc_vcsbranch", "vcsBranch secondVcsBranch", "new", "old"},
    {"-tdc_vcsrevision", "vcsRevision secondVcsRevision", "new", "old"},
    {"-tdc_dxml", "tdcDravikXmlFilename", "new", "old"},
    {"-testname", "testName", "new", "old"},
    {"-pcname", "pcName", "new", "old"},
    {"-osname", "osName", "new", "old"},
    {"-ostype", "osType", "new", "old"},
    {"-bit", "bit", "new", "old"},
    {"-tl", "transportLayers", "old,new", "old,"},
};

TEST_F(Record, AnOptionFillsItsFieldsAndNoOther) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.option);
        OrvexTestCommandLineParser fresh;
        ASSERT_TRUE(parse(fresh, {"app", row.option, "old"}));
        ASSERT_THAT(snapshotOf(fresh.getTestRunInformation()), ContainerEq(recordWith(row.fields, "old")));
    }
}

TEST_F(Record, AnEmptyOrAbsentValueLeavesTheDefault) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.option);
        OrvexTestCommandLineParser fresh;
        ASSERT_TRUE(parse(fresh, {"app", row.option, ""}));
        ASSERT_TRUE(parse(fresh, {"app", row.option}));
        ASSERT_THAT(snapshotOf(fresh.getTestRunInformation()), ContainerEq(defaultRecord));
    }
}

TEST_F(Record, ASecondParseTakesANewValueAndKeepsTheOldForAnEmptyOneButForTheGroup) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.option);
        for (const auto& [value, expected] : {std::pair("new", row.afterNew), {"", row.afterEmpty}}) {
            OrvexTestCommandLineParser fresh;
            ASSERT_TRUE(parse(fresh, {"app", row.option, "old"}));
            ASSERT_TRUE(parse(fresh, {"app", row.option, value}));
            ASSERT_THAT(snapshotOf(fresh.getTestRunInformation()),
                        ContainerEq(recordWith(row.fields, expected)));
        }
    }
}

TEST_F(Record, IsEmptyBeforeTheFirstParse) {
    EXPECT_THAT(record(), ContainerEq(emptyRecord));
    EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
    EXPECT_THAT(record(), ContainerEq(emptyRecord));
}

TEST_F(Record, WithoutOptionsOnlyThreeFieldsAreFilled) {
    // What the variables hold does not count.
    set("TEST_SESSION_GUID", "guid");
    set("TEST_SESSION_GROUP", "group");
    set("TRANSPORT_LAYER", "layer");
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(record(), ContainerEq(defaultRecord));
}

TEST_F(Record, ASecondParseWithoutOptionsKeepsTheFields) {
    EXPECT_TRUE(parse(parser, words("app -tdc_guid 1 -tdc_group g -tl A")));
    const Snapshot before = record();
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(record(), ContainerEq(before));
}

TEST_F(Record, BranchAndRevisionAreStoredTwice) {
    EXPECT_TRUE(parse(parser, words("app -tdc_vcsbranch main -tdc_vcsrevision 1a2b3c")));
    EXPECT_THAT(record(), ContainerEq(changed(defaultRecord, {{"vcsBranch", "main"},
                                                              {"secondVcsBranch", "main"},
                                                              {"vcsRevision", "1a2b3c"},
                                                              {"secondVcsRevision", "1a2b3c"}})));
}

TEST_F(Record, TransportLayersAreJoinedByACommaOnly) {
    EXPECT_TRUE(parse(parser, words("app -tl A -tl B")));
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "A,B");
    EXPECT_EQ(parser.getTlList(), "A,B");
}

TEST_F(Record, AnEmptyTransportLayerIsAnyAndTwoAreAComma) {
    EXPECT_TRUE(parse(parser, words("app -tl=")));
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "any");
    EXPECT_EQ(parser.getTlList(), "");
    EXPECT_TRUE(parse(parser, words("app -tl=")));
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, ",");
}

TEST_F(Record, TheLastValueOfTheThreeSourcesIsStoredAsItStands) {
    const std::string longValue(300, 'v');
    set("ORVEX_TEST_ARGS", "-tdc_guid first -testname first -bit ' \x01\x80\xFF'");
    set("_ORVEX_TEST_ARGS_", "-tdc_guid third");
    EXPECT_TRUE(parse(parser, {"app", "-tdc_guid=second", "-testname=second", "-osname=" + longValue}));
    EXPECT_THAT(
        record(),
        ContainerEq(changed(
            defaultRecord,
            {{"guid", "third"}, {"testName", "second"}, {"bit", " \x01\x80\xFF"}, {"osName", longValue}})));
}

TEST_F(Record, NamesThatTheUsageTextAdvertisesButNothingReadsFillNothing) {
    EXPECT_TRUE(parse(parser, words("app -tdc_name a -tdc_pcname b -tdc_osname c")));
    EXPECT_THAT(record(), ContainerEq(defaultRecord));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("a", "b", "c"));
    OrvexTestCommandLineParser joined;
    EXPECT_TRUE(
        parse(joined, words("app -tdc_name=a -tdc_pcname=b -tdc_osname=c -tdc_variant=d -TDC_GUID=e")));
    EXPECT_THAT(snapshotOf(joined.getTestRunInformation()), ContainerEq(defaultRecord));
}

TEST_F(Record, TheReportFileHasAnAccessor) {
    EXPECT_TRUE(parse(parser, words("app -tdc_dxml report.xml")));
    EXPECT_EQ(parser.getTdcDravikXmlFilename(), "report.xml");
}

TEST_F(Record, AParseThatFailsBeforeLeavesItAsItWas) {
    EXPECT_FALSE(parse(parser, words("app -tdc_guid 1 -tl A -packetsize x")));
    EXPECT_THAT(record(), ContainerEq(emptyRecord));
    EXPECT_TRUE(parse(parser, words("app -packetsize 1")));
    EXPECT_THAT(record(), ContainerEq(changed(defaultRecord, {{"guid", "1"}, {"transportLayers", "A"}})));
    EXPECT_FALSE(parse(parser, words("app -tdc_guid 2 -tl B -packetsize x")));
    EXPECT_THAT(record(), ContainerEq(changed(defaultRecord, {{"guid", "1"}, {"transportLayers", "A"}})));
}

}  // namespace
