// Internal functions with the first, the second ... allocation failing.

#include "OrvexTestCommandLineParser.h"
#include "environment/environment_variables.h"
#include "environment/expand_environment_references.h"
#include "parser/argument_tokenizer.h"
#include "support/clean_environment.h"
#include "support/fault_injection.h"

#include <new>
#include <string>
#include <vector>

namespace {

using ExpansionOutOfMemory = CleanEnvironmentTest;
using TokenizerOutOfMemory = CleanEnvironmentTest;

TEST_F(ExpansionOutOfMemory, ReturnsMinusOneAndLeavesTheTextUnchanged) {
    const std::string value(200, 'v');
    set("A_VARIABLE_WITH_A_LONG_NAME", value);
    const std::string reference = "$(A_VARIABLE_WITH_A_LONG_NAME)";
    const std::string original = reference + "%A_VARIABLE_WITH_A_LONG_NAME%" + "$$ and %%";
    for (std::size_t nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        std::string text = original;
        const std::size_t allocationsBefore = liveAllocations();
        int result = 0;
        bool hasFailed = false;
        {
            const FailingCall failing(Function::OperatorNew, nth);
            result = orvex::expandEnvironmentReferences(text);
            hasFailed = failing.hasFailed();
        }
        if (!hasFailed) {
            EXPECT_EQ(result, 2);
            EXPECT_EQ(text, value + value + "$ and %%");
            EXPECT_GE(nth, 4U);
            break;
        }
        EXPECT_EQ(result, -1);
        EXPECT_EQ(text, original);
        EXPECT_EQ(liveAllocations(), allocationsBefore);
    }
}

TEST_F(ExpansionOutOfMemory, DoesNotMatterToATextWithoutReferences) {
    const std::string original(200, 't');
    std::string text = original;
    const FailingCall failing(Function::OperatorNew, 1, Repetition::FromThenOn);
    EXPECT_EQ(orvex::expandEnvironmentReferences(text), 0);
    EXPECT_EQ(text, original);
}

// The stream keeps an exception of its extraction to itself and goes bad, and that is no number.
TEST(NumberOutOfMemory, IsNotANumber) {
    const std::string number = "-1.0000000000000000000000000000000000";
    ASSERT_TRUE(OptionRegistry::isNumber(number));
    for (std::size_t nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        const std::size_t allocationsBefore = liveAllocations();
        bool isNumber = false;
        const FailingCall failing(Function::OperatorNew, nth);
        try {
            isNumber = OptionRegistry::isNumber(number);
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failing.hasFailed());
        }
        EXPECT_EQ(isNumber, !failing.hasFailed());
        EXPECT_EQ(liveAllocations(), allocationsBefore);
        if (!failing.hasFailed()) {
            break;
        }
    }
}

TEST_F(TokenizerOutOfMemory, ThrowsAndLeavesTheTokensAsTheyWere) {
    const std::string longToken(200, 't');
    const std::string text = longToken + " '" + longToken + "' \"" + longToken + "\"\\" + longToken;
    const std::vector<std::string> original = {"what", "was there before"};
    for (std::size_t nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        std::vector<std::string> tokens = original;
        const std::size_t allocationsBefore = liveAllocations();
        bool hasThrown = false;
        try {
            const FailingCall failing(Function::OperatorNew, nth);
            orvex::splitArgumentString(text, tokens);
            EXPECT_FALSE(failing.hasFailed());
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        if (!hasThrown) {
            EXPECT_EQ(tokens, (std::vector<std::string>{longToken, longToken, longToken + longToken}));
            EXPECT_GE(nth, 4U);
            break;
        }
        EXPECT_EQ(tokens, original);
        EXPECT_EQ(liveAllocations(), allocationsBefore);
    }
}

TEST_F(TokenizerOutOfMemory, ReportsItAlsoInPlaceOfAnOpenQuote) {
    std::vector<std::string> tokens = {"before"};
    const std::string text = "'" + std::string(200, 't');
    const FailingCall failing(Function::OperatorNew, 1, Repetition::FromThenOn);
    EXPECT_THROW(orvex::splitArgumentString(text, tokens), std::bad_alloc);
    EXPECT_EQ(tokens.size(), 1U);
}

class VariableOutOfMemory : public CleanEnvironmentTest {};

TEST_F(VariableOutOfMemory, ThrowsAndLeavesTheValueAsItWas) {
    set("VARIABLE", std::string(200, 'v'));
    std::string value = "before";
    const FailingCall failing(Function::OperatorNew, 1);
    EXPECT_THROW(orvex::getEnvironmentVariable("VARIABLE", value), std::bad_alloc);
    EXPECT_EQ(value, "before");
}

}  // namespace
