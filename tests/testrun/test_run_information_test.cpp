#include "support/known_options.h"
#include "support/parser_test.h"

#include <string>

namespace {

using ::testing::ContainerEq;

class Record : public ParserTest {
protected:
    // Parses this option and expects the value in its fields and the defaults everywhere else.
    void parseAndExpect(OrvexTestCommandLineParser& parser, const KnownOption& option,
                        const std::string& argument, const std::string& value) const {
        EXPECT_TRUE(parse(parser, {"app", std::string("-") + option.name, argument}));
        Snapshot expected = changed(parsedState, {{"applicationName", "app"}});
        for (const RecordField& field : recordFields) {
            if (field.field == option.field || field.field == option.secondField) {
                expected[field.name] = value;
            }
        }
        EXPECT_THAT(snapshotOf(parser), ContainerEq(expected)) << option.name;
    }
};

TEST_F(Record, OptionFillsItsFieldsAndALaterParseReplacesThemUnlessItsValueIsEmpty) {
    for (const KnownOption& option : knownOptions) {
        if (option.field != nullptr && option.kind == OptionKind::Value) {
            const bool isGroup = option.field == &TestRunInformation::group;
            OrvexTestCommandLineParser fresh;
            EXPECT_TRUE(parse(fresh, {"app", std::string("-") + option.name}));
            parseAndExpect(fresh, option, "", isGroup ? "orvex" : "");
            parseAndExpect(fresh, option, "old", "old");
            parseAndExpect(fresh, option, "new", "new");
            parseAndExpect(fresh, option, "", isGroup ? "orvex" : "new");
        }
    }
}

TEST_F(Record, TransportLayersOfAllParsesAreJoinedAndAnyIsTheDefault) {
    const char* const rows[][2] = {
        {"app -tl", "any"}, {"app -tl=", "any"}, {"app -tl=", ","}, {"app -tl A,B", ",,A,B"}};
    for (const auto& [arguments, transportLayers] : rows) {
        EXPECT_TRUE(parse(parser, words(arguments)));
        EXPECT_EQ(parser.getTestRunInformation().transportLayers, transportLayers);
    }
}

TEST_F(Record, NamesFoundOnlyInTheUsageTextFillNothing) {
    EXPECT_TRUE(parse(parser, words("app -tdc_name a -tdc_pcname b -tdc_osname c"
                                    " -tdc_name=d -tdc_pcname=e -tdc_osname=f -tdc_variant=g")));
    EXPECT_THAT(snapshotOf(parser),
                ContainerEq(changed(parsedState, {{"applicationName", "app"}, {"testPaths", "a b c "}})));
}

}  // namespace
