// The inputs from which the fuzzers start, and those that once showed a difference.

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

TEST(FuzzCorpus, ScenariosShowNoDifference) {
    replayAll("scenario", replayScenario);
}

TEST(FuzzCorpus, TokenizerInputsShowNoDifference) {
    replayAll("tokenizer", replayTokenizer);
}

TEST(FuzzCorpus, ExpansionInputsShowNoDifference) {
    replayAll("expansion", replayExpansion);
}

}  // namespace
