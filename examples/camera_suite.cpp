// A GoogleTest program that is driven by the command line of Orvex test programs:
//
//     camera_suite -tl DravikGigE:SocketDriver -packetsize 1500 -x report.xml PacketSize
//
// GoogleTest's own flags work, too, and win over test paths and -x:
//
//     camera_suite -tl DravikGigE --gtest_filter='PacketSize.*' --gtest_output=json:report.json
//
// The tests look at the environment that the SDK reads when a test opens cameras.

#include "OrvexTestCommandLineParser.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

std::string readVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

TEST(DeviceFilter, SelectsAtLeastOneDeviceClass) {
    EXPECT_EQ(readVariable("ORVEX_DEVICE_FILTER").rfind("DeviceClass=", 0), 0U);
}

TEST(DeviceFilter, IncludesGigECameras) {
    EXPECT_NE(readVariable("ORVEX_DEVICE_FILTER").find("DeviceClass=DravikGigE"), std::string::npos);
}

TEST(StreamParameters, NameTheDriverBeforeTheSocketBuffer) {
    const std::string parameters = readVariable("ORVEX_GIGE_STREAMPARAMS");
    const std::size_t driver = parameters.find("Type=");
    ASSERT_NE(driver, std::string::npos) << "no driver in \"" << parameters << '"';
    EXPECT_LT(driver, parameters.find("SocketBufferSize="));
}

TEST(PacketSize, IsWholeNumber) {
    const std::string size = readVariable("ORVEX_GIGE_STREAM_GEVSCPS");
    ASSERT_FALSE(size.empty());
    EXPECT_EQ(size.find_first_not_of("0123456789"), std::string::npos) << size;
}

TEST(PacketSize, FitsJumboFrame) {
    EXPECT_LE(std::strtol(readVariable("ORVEX_GIGE_STREAM_GEVSCPS").c_str(), nullptr, 10), 9000);
}

// GoogleTest's filter for test paths: "Class" is "Class.*", and "Class::method" is "Class.method".
// Parameterized tests need the rest of their names, too, or wildcards: "*/Class::method/*".
std::string makeFilter(const std::vector<std::string>& testPaths) {
    std::string filter;
    for (const std::string& path : testPaths) {
        const std::size_t separator = path.find("::");
        filter += filter.empty() ? "" : ":";
        filter += path.substr(0, separator) + ".";
        filter += separator == std::string::npos ? "*" : path.substr(separator + 2);
    }
    return filter;
}

// Listing tests runs none. When fewer tests are selected than there are shards, only the first shard is sure
// to have one.
bool needsTest() {
    const bool isLaterShard = std::strtol(readVariable("GTEST_SHARD_INDEX").c_str(), nullptr, 10) > 0;
    return !GTEST_FLAG_GET(list_tests) && !isLaterShard;
}

int runTests(const OrvexTestCommandLineParser& parser, int argc, char** argv) {
    if (!parser.getTestPaths().empty()) {
        GTEST_FLAG_SET(filter, makeFilter(parser.getTestPaths()));
    }
    if (!parser.getXmlFilename().empty()) {
        GTEST_FLAG_SET(output, "xml:" + parser.getXmlFilename());
    }
    // After the flags are set, so that --gtest_filter and --gtest_output on the command line win.
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    if (needsTest() && ::testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::cerr << "No test was selected.\n";
        return 2;
    }
    return result;
}

}  // namespace

// Returns 0 when all tests passed, 1 when one failed, and 2 when the arguments are bad or select no test.
int main(int argc, char** argv) {
    OrvexTestCommandLineParser parser;
    // Parse first, because GoogleTest's flags must be set before InitGoogleTest. GoogleTest's flags in argv
    // are unknown options, which the parser ignores.
    if (!parser.Parse(argc, argv)) {
        std::cerr << parser.getHelpMessage("") << '\n';
        return 2;
    }
    // Return before InitGoogleTest, which would print GoogleTest's own help as well.
    if (parser.helpRequested()) {
        std::cout << parser.getHelpMessage("") << '\n';
        return 0;
    }

    const int result = runTests(parser, argc, argv);
    if (parser.waitBeforeExit() && isatty(STDIN_FILENO) != 0) {
        std::cout << "Press Enter to exit." << std::flush;
        std::cin.get();
    }
    return result;
}
