#include <gtest/gtest.h>

#include <cstdlib>

// This style starts the program again, with the arguments that InitGoogleTest was given.
TEST(DeathTest, StartsTheProgramAgain) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(3), ::testing::ExitedWithCode(3), "");
}
