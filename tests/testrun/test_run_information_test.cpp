#include "support/parser_test.h"

#include <string>
#include <utility>

namespace {

using ::testing::ContainerEq;
using ::testing::ElementsAre;

class Record : public ParserTest {
protected:
    static Snapshot recordOf(const OrvexTestCommandLineParser& parser) {
        Snapshot record;
        for (const RecordField& field : recordFields) {
            record[field.name] = parser.getTestRunInformation().*field.field;
        }
        return record;
    }

    Snapshot record() const {
        return recordOf(parser);
    }

    // The default record with the value in these fields.
    Snapshot recordWith(const char* fields, const char* value) const {
        Snapshot result = defaultRecord;
        for (const std::string& field : words(fields)) {
            result[field] = value;
        }
        return result;
    }

    const Snapshot emptyRecord = record();
    // The record after a parse without options.
    const Snapshot defaultRecord =
        changed(emptyRecord, {{"group", "orvex"}, {"fixedZero", "0"}, {"transportLayers", "any"}});
};

// The fields of an option, and what they hold after a first parse with the value "old" and a second one with
// "new" or an empty value.
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

TEST_F(Record, OptionFillsItsFieldsAndASecondParseReplacesThemUnlessItsValueIsEmpty) {
    for (const auto& row : rows) {
        for (const auto& [value, expected] : {std::pair("new", row.afterNew), {"", row.afterEmpty}}) {
            OrvexTestCommandLineParser fresh;
            EXPECT_TRUE(parse(fresh, {"app", row.option, "old"}));
            EXPECT_THAT(recordOf(fresh), ContainerEq(recordWith(row.fields, "old"))) << row.option;
            EXPECT_TRUE(parse(fresh, {"app", row.option, value}));
            EXPECT_THAT(recordOf(fresh), ContainerEq(recordWith(row.fields, expected))) << row.option;
        }
    }
}

TEST_F(Record, EmptyOrAbsentValueLeavesTheDefault) {
    for (const auto& row : rows) {
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", row.option, ""}));
        EXPECT_TRUE(parse(fresh, {"app", row.option}));
        EXPECT_THAT(recordOf(fresh), ContainerEq(defaultRecord)) << row.option;
    }
}

TEST_F(Record, DefaultsAreFilledByTheFirstParseAndNotFromTheVariables) {
    writeEnvironment({{"TEST_SESSION_GUID", "guid"}, {"TEST_SESSION_GROUP", "a"}, {"TRANSPORT_LAYER", "b"}});
    EXPECT_TRUE(parser.Parse(0, static_cast<char**>(nullptr)));
    EXPECT_THAT(record(), ContainerEq(emptyRecord));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_THAT(record(), ContainerEq(defaultRecord));
}

TEST_F(Record, TransportLayersAreJoinedByACommaAndTwoEmptyOnesAreNotTheDefault) {
    EXPECT_TRUE(parse(parser, words("app -tl=")));
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, "any");
    EXPECT_EQ(parser.getTlList(), "");
    EXPECT_TRUE(parse(parser, words("app -tl=")));
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, ",");
}

TEST_F(Record, NamesThatOnlyTheUsageTextHasFillNothing) {
    EXPECT_TRUE(parse(parser, words("app -tdc_name a -tdc_pcname b -tdc_osname c")));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("a", "b", "c"));
    EXPECT_TRUE(parse(parser, words("app -tdc_name=a -tdc_pcname=b -tdc_osname=c -tdc_variant=d")));
    EXPECT_THAT(record(), ContainerEq(defaultRecord));
}

TEST_F(Record, ParseThatFailsBeforeLeavesItUnchanged) {
    EXPECT_FALSE(parse(parser, words("app -tdc_guid 1 -tl A -packetsize x")));
    EXPECT_THAT(record(), ContainerEq(emptyRecord));
    EXPECT_TRUE(parse(parser, words("app -packetsize 1")));
    EXPECT_FALSE(parse(parser, words("app -tdc_guid 2 -tl B -packetsize x")));
    EXPECT_THAT(record(), ContainerEq(changed(defaultRecord, {{"guid", "1"}, {"transportLayers", "A"}})));
}

}  // namespace
