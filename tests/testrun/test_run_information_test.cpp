#include "support/parser_test.h"

#include <string>

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

    // The default record with the value in these fields.
    Snapshot recordWith(const char* fields, const char* value) const {
        Snapshot record = defaultRecord;
        for (const std::string& field : words(fields)) {
            record[field] = value;
        }
        return record;
    }

    const Snapshot emptyRecord = recordOf(parser);
    // The record after a parse without options.
    const Snapshot defaultRecord =
        changed(emptyRecord, {{"group", "orvex"}, {"fixedZero", "0"}, {"transportLayers", "any"}});
};

// The fields of an option, and what they hold after two parses with the values "old" and "new", and after a
// third one with an empty value.
const struct {
    std::string option;
    const char* fields;
    const char* afterNew = "new";
    const char* afterEmpty = "new";
} rows[] = {
    {"-tdc_guid", "guid"},
    {"-tdc_runname", "runName"},
    {"-tdc_rundescription", "runDescription"},
    {"-tdc_group", "group", "new", "orvex"},
    {"-tdc_userid", "userId"},
    {"-tdc_product", "product"},
    {"-tdc_vcsbranch", "vcsBranch secondVcsBranch"},
    {"-tdc_vcsrevision", "vcsRevision secondVcsRevision"},
    {"-tdc_dxml", "tdcDravikXmlFilename"},
    {"-testname", "testName"},
    {"-pcname", "pcName"},
    {"-osname", "osName"},
    {"-ostype", "osType"},
    {"-bit", "bit"},
    {"-tl", "transportLayers", "old,new", "old,new,"},
};

TEST_F(Record, OptionFillsItsFieldsAndALaterParseReplacesThemUnlessItsValueIsEmpty) {
    for (const auto& row : rows) {
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", row.option, "old"}));
        EXPECT_THAT(recordOf(fresh), ContainerEq(recordWith(row.fields, "old"))) << row.option;
        EXPECT_TRUE(parse(fresh, {"app", row.option, "new"}));
        EXPECT_THAT(recordOf(fresh), ContainerEq(recordWith(row.fields, row.afterNew))) << row.option;
        EXPECT_TRUE(parse(fresh, {"app", row.option, ""}));
        EXPECT_THAT(recordOf(fresh), ContainerEq(recordWith(row.fields, row.afterEmpty))) << row.option;
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

TEST_F(Record, TwoEmptyTransportLayersAreNotTheDefault) {
    EXPECT_TRUE(parse(parser, words("app -tl= -tl=")));
    EXPECT_EQ(parser.getTestRunInformation().transportLayers, ",");
}

TEST_F(Record, NamesFoundOnlyInTheUsageTextFillNothing) {
    EXPECT_TRUE(parse(parser, words("app -tdc_name a -tdc_pcname b -tdc_osname c")));
    EXPECT_THAT(parser.getTestPaths(), ElementsAre("a", "b", "c"));
    EXPECT_TRUE(parse(parser, words("app -tdc_name=a -tdc_pcname=b -tdc_osname=c -tdc_variant=d")));
    EXPECT_THAT(recordOf(parser), ContainerEq(defaultRecord));
}

}  // namespace
