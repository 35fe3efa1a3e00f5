// The inputs that the fuzzers start from, and those in which they once found a difference.

#include "differential/comparison.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <string>

namespace {

using namespace differential;

void replayAll(const char* target, Difference (*replay)(const std::string&)) {
    int count = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(std::filesystem::path(FUZZ_CORPUS) / target)) {
        std::ifstream stream(file.path(), std::ios::binary);
        const std::string input((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        ASSERT_TRUE(stream.is_open() && !stream.bad()) << file.path();
        const Difference difference = replay(input);
        ASSERT_FALSE(difference) << file.path() << " " << *difference;
        ++count;
    }
    EXPECT_GT(count, 0);
}

TEST(FuzzCorpus, Scenario) {
    replayAll("scenario", replayScenario);
}

TEST(FuzzCorpus, Tokenizer) {
    replayAll("tokenizer", replayTokenizer);
}

TEST(FuzzCorpus, Expansion) {
    replayAll("expansion", replayExpansion);
}

}  // namespace
