#include "OrvexTestCommandLineParser.h"

#include "support/parser_test.h"

#include <string>

namespace {

class ProducerPath : public ParserTest {
protected:
    static std::string pathAfterParse(const std::string& tlList, const Environment& variables) {
        writeEnvironment(variables);
        OrvexTestCommandLineParser fresh;
        EXPECT_TRUE(parse(fresh, {"app", "-tl", tlList}));
        return get("GENICAM_GENTL64_PATH");
    }

    const std::string libraries =
        OrvexTestCommandLineParser::getApplicationDir() + "/Frameworks/orvex.framework/Libraries";
    const std::string directories = libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:";
};

TEST_F(ProducerPath, BeginsWithTheProducerDirectoriesAndEndsWithTheOldValue) {
    EXPECT_EQ(pathAfterParse("DravikGTC", {}), directories);
    // References in the old value are not expanded.
    for (const char* value : {"", "/x/gtl", "$(HOMEDIR)", "a%b", "$$"}) {
        EXPECT_EQ(pathAfterParse("DravikGTC", {{"HOMEDIR", "/h"}, {"GENICAM_GENTL64_PATH", value}}),
                  directories + value);
    }
}

TEST_F(ProducerPath, IsSetIfTheTransportLayersContainDravikGTC) {
    for (const char* tlList : {"DravikGTCx", "DravikGigE:DravikGTC", "A,DravikGTC,B"}) {
        EXPECT_EQ(pathAfterParse(tlList, {}), directories) << tlList;
    }
    for (const char* tlList : {"", "DravikGigE", "dravikgtc", "DravikGT"}) {
        EXPECT_EQ(pathAfterParse(tlList, {{"GENICAM_GENTL64_PATH", "/x"}}), "/x") << tlList;
    }
}

TEST_F(ProducerPath, BeginsWithTheDirectoriesTwiceAfterASecondParse) {
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    EXPECT_TRUE(parse(parser, words("app -tl DravikGTC")));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + directories + "/x/gtl");
}

}  // namespace
