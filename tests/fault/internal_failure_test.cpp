// Hidden functions that catch std::bad_alloc themselves, isNumber only during the extraction.

#include "OrvexTestCommandLineParser.h"
#include "environment/expand_environment_references.h"
#include "support/clean_environment.h"
#include "support/faults.h"

#include <cstddef>
#include <new>
#include <string>

namespace {

using faults::Failure;
using faults::FaultyCall;

using HiddenFunctionsOutOfMemory = CleanEnvironmentTest;

TEST_F(HiddenFunctionsOutOfMemory, ExpansionReturnsMinusOneAndLeavesTheStringUnchanged) {
    const std::string value(200, 'v');
    set("NAME", value);
    const std::string original = "$(NAME)%NAME%$$ and %%";
    std::string text;
    std::size_t nth = 0;
    for (int result = -1; result == -1;) {
        text = original;
        const Failure failure(FaultyCall::Allocation, ++nth);
        result = orvex::expandEnvironmentReferences(text);
        ASSERT_TRUE(result == 2 || text == original) << nth;
    }
    EXPECT_EQ(text, value + value + "$ and %%");
    EXPECT_GE(nth, 2U);
}

// The stream catches exceptions during the extraction and fails, so the token is not a number.
TEST_F(HiddenFunctionsOutOfMemory, NumbersAreNotRecognised) {
    const std::string number = "-1.0000000000000000000000000000000000";
    for (std::size_t nth = 1;; ++nth) {
        const Failure failure(FaultyCall::Allocation, nth);
        bool isNumber = false;
        try {
            isNumber = OptionRegistry::isNumber(number);
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failure.happened());
        }
        ASSERT_EQ(isNumber, !failure.happened()) << nth;
        if (isNumber) {
            break;
        }
    }
}

}  // namespace
