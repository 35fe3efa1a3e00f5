#include "OrvexTestCommandLineParser.h"

#include "support/arguments.h"
#include "support/clean_environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using ::testing::ContainerEq;

class ProducerPath : public CleanEnvironmentTest {
protected:
    static std::string pathAfterParse(const std::string& tlList) {
        OrvexTestCommandLineParser parser;
        EXPECT_TRUE(parse(parser, {"app", "-tl", tlList}));
        return get("GENICAM_GENTL64_PATH");
    }

    // What is put in front of the old value.
    const std::string libraries =
        OrvexTestCommandLineParser::getApplicationDir() + "/Frameworks/orvex.framework/Libraries";
    const std::string directories = libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:";
};

TEST_F(ProducerPath, ProducerDirectoriesStandInFrontOfTheOldValue) {
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    EXPECT_EQ(pathAfterParse("DravikGTC"), directories + "/x/gtl");
}

TEST_F(ProducerPath, WithoutAnOldValueNothingFollowsTheLastColon) {
    EXPECT_EQ(pathAfterParse("DravikGTC"), directories);
    set("GENICAM_GENTL64_PATH", "");
    EXPECT_EQ(pathAfterParse("DravikGTC"), directories);
}

TEST_F(ProducerPath, ReferencesInTheOldValueAreNotExpandedAgain) {
    set("HOMEDIR", "/h");
    for (const char* value :
         {"$(HOMEDIR)", "%HOMEDIR%", "a%b", "$$", "$(GENICAM_GENTL64_PATH)", "$(", "\x01\xFF"}) {
        set("GENICAM_GENTL64_PATH", value);
        ASSERT_EQ(pathAfterParse("DravikGTC"), directories + value);
    }
}

TEST_F(ProducerPath, NameAnywhereInTheListAsksForTheProducers) {
    for (const char* tlList : {"DravikGTCx", "DravikGigE:DravikGTC", "A,DravikGTC,B"}) {
        set("GENICAM_GENTL64_PATH", "/x/gtl");
        ASSERT_EQ(pathAfterParse(tlList), directories + "/x/gtl") << tlList;
    }
}

TEST_F(ProducerPath, ListWithoutTheNameLeavesTheVariable) {
    EXPECT_EQ(pathAfterParse("DravikGigE"), "(undefined)");
    for (const char* tlList : {"", "DravikGigE", "dravikgtc", "DravikGT", "Dravik,GTC"}) {
        set("GENICAM_GENTL64_PATH", "/x/gtl");
        ASSERT_EQ(pathAfterParse(tlList), "/x/gtl") << tlList;
    }
}

TEST_F(ProducerPath, NameElsewhereThanInTheTransportLayersDoesNotCount) {
    OrvexTestCommandLineParser parser;
    EXPECT_TRUE(parse(parser, words("app DravikGTC -o DravikGTC -p DravikGTC -tdc_product DravikGTC")));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), "(undefined)");
}

TEST_F(ProducerPath, SecondParsePutsTheDirectoriesInFrontOnceMore) {
    set("GENICAM_GENTL64_PATH", "/x/gtl");
    OrvexTestCommandLineParser parser;
    EXPECT_TRUE(parse(parser, words("app -tl DravikGTC")));
    EXPECT_TRUE(parse(parser, {"app"}));
    EXPECT_EQ(get("GENICAM_GENTL64_PATH"), directories + directories + "/x/gtl");
}

TEST_F(ProducerPath, ChangesNoOtherVariable) {
    set("GENICAM_GENTL32_PATH", "/y");
    pathAfterParse("DravikGTC");
    EXPECT_THAT(readEnvironment(), ContainerEq(Environment{{"GENICAM_GENTL32_PATH", "/y"},
                                                           {"ORVEX_GTC_USE_EXTRA_TL", "1"},
                                                           {"ORVEX_DEVICE_FILTER", "DeviceClass=DravikGTC"},
                                                           {"ORVEX_GIGE_STREAM_GEVSCPS", "8192"},
                                                           {"GENICAM_GENTL64_PATH", directories},
                                                           {"TRANSPORT_LAYER", "DravikGTC"}}));
}

}  // namespace
