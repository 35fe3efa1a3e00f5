// The copy of the test-run information that C callers get.

#include "OrvexTestCommandLineParserC.h"

#include "capi/c_calls.h"
#include "capi/fresh_process.h"
#include "support/clean_environment.h"

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace {

using InformationCopy = CleanEnvironmentTest;

TEST_F(InformationCopy, SizesAreThoseOfTheInterface) {
    EXPECT_EQ(ORVEX_TEST_RUN_INFORMATION_SIZE, 4096);
    EXPECT_EQ(ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE, 256);
}

TEST_F(InformationCopy, NullBufferIsRefused) {
    EXPECT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(nullptr), 0);
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest"}), 1);
        EXPECT_EQ(OrvexTestCommandLineParser_GetTestRunInformation(nullptr), 0);
    });
}

TEST_F(InformationCopy, HoldsTheDefaultsWithoutReportingOptions) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest"}), 1);
        expectInformation(1, {{0, "orvex"}, {5, "0"}, {13, "any"}});
    });
}

TEST_F(InformationCopy, HoldsTheTransportLayersJoinedByACommaInSlotThirteen) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-tl", "A", "-tl", "B"}), 1);
        expectInformation(1, {{0, "orvex"}, {5, "0"}, {13, "A,B"}});
    });
}

TEST_F(InformationCopy, OperatingSystemTypeAndWordSizeAreNotReachableAndNeverTooLong) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-ostype", fill(1000), "-bit", fill(1000)}), 1);
        expectInformation(1, {{0, "orvex"}, {5, "0"}, {13, "any"}});
    });
}

TEST_F(InformationCopy, LengthOfASlotIsCountedInBytes) {
    std::string text;
    for (int i = 0; i < 127; ++i) {
        text += "\xC3\xA9";
    }
    inFreshProcess([&] {
        EXPECT_EQ(parseNarrow({"mytest", "-testname", text + "x"}), 1);
        expectInformation(1, {{0, "orvex"}, {5, "0"}, {13, "any"}, {15, text + "x"}});
        EXPECT_EQ(parseNarrow({"mytest", "-testname", text + "\xC3\xA9"}), 1);
        expectInformation(0, {{0, "orvex"}, {5, "0"}, {13, "any"}});
    });
}

TEST_F(InformationCopy, RunNameOfThreeHundredBytesLeavesGroupAndIdentifier) {
    inFreshProcess([] {
        EXPECT_EQ(
            parseNarrow({"mytest", "-tdc_group", "team", "-tdc_guid", "1234", "-tdc_runname", fill(300)}), 1);
        expectInformation(0, {{0, "team"}, {1, "1234"}});
    });
}

TEST_F(InformationCopy, FirstOfSeveralTextsThatAreTooLongEndsTheCopy) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-testname", fill(256), "-pcname", fill(256), "-osname", "os"}), 1);
        expectInformation(0, {{0, "orvex"}, {5, "0"}});
    });
}

TEST_F(InformationCopy, IsCompleteAgainOnceTheTextFits) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-tdc_group", fill(256)}), 1);
        expectInformation(0, {});
        EXPECT_EQ(parseNarrow({"mytest", "-tdc_group", "team"}), 1);
        expectInformation(1, {{0, "team"}, {5, "0"}, {13, "any"}});
    });
}

TEST_F(InformationCopy, IsStillEmptyAfterAFirstParseThatFailed) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-tdc_guid", "1234", "-tl", "A", "-camemu", "x"}), 0);
        expectInformation(1, {});
    });
}

TEST_F(InformationCopy, IsThatOfTheLastParseThatSucceeded) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow({"mytest", "-tdc_guid", "1234", "-pcname", "lab"}), 1);
        EXPECT_EQ(parseNarrow({"mytest", "-tdc_guid", "5678", "-tl", "A", "-camemu", "x"}), 0);
        expectInformation(1, {{0, "orvex"}, {1, "1234"}, {5, "0"}, {11, "lab"}, {13, "any"}});
        EXPECT_EQ(parseNarrow({"mytest", "-camemu", "2"}), 1);
        expectInformation(1, {{0, "orvex"}, {1, "5678"}, {5, "0"}, {11, "lab"}, {13, "A"}});
    });
}

// ---- Each slot

struct Slot {
    const char* name;
    const char* option;
    std::size_t index;
    // The slot that repeats the text, or the same one.
    std::size_t repeatedIndex;
};

void PrintTo(const Slot& slot, std::ostream* stream) {
    *stream << slot.name;
}

// Slot 5 is the fixed "0", and slots 9 and 10 always hold the texts of 7 and 8.
const std::vector<Slot> slots = {
    {"Group", "-tdc_group", 0, 0},
    {"Guid", "-tdc_guid", 1, 1},
    {"RunName", "-tdc_runname", 2, 2},
    {"RunDescription", "-tdc_rundescription", 3, 3},
    {"Product", "-tdc_product", 4, 4},
    {"UserId", "-tdc_userid", 6, 6},
    {"VcsRevision", "-tdc_vcsrevision", 7, 9},
    {"VcsBranch", "-tdc_vcsbranch", 8, 10},
    {"PcName", "-pcname", 11, 11},
    {"OsName", "-osname", 12, 12},
    {"TransportLayers", "-tl", 13, 13},
    {"TdcDravikXmlFilename", "-tdc_dxml", 14, 14},
    {"TestName", "-testname", 15, 15},
};

// A text of its own for each slot.
std::map<std::size_t, std::string> allSlots() {
    std::map<std::size_t, std::string> texts = {{5, "0"}};
    for (const Slot& slot : slots) {
        texts[slot.index] = texts[slot.repeatedIndex] = std::string("text of ") + slot.name;
    }
    return texts;
}

std::vector<std::string> allOptions() {
    std::vector<std::string> arguments = {"mytest"};
    const std::map<std::size_t, std::string> texts = allSlots();
    for (const Slot& slot : slots) {
        // In one token each, so that a test can replace one of them.
        arguments.push_back(std::string(slot.option) + "=" + texts.at(slot.index));
    }
    return arguments;
}

class InformationSlot : public CleanEnvironmentTest, public ::testing::WithParamInterface<Slot> {
protected:
    // Parses an option for every slot, of which this slot's has a text of the length.
    static void parseWithLength(std::size_t length) {
        std::vector<std::string> arguments = allOptions();
        for (std::string& argument : arguments) {
            const std::string option = std::string(GetParam().option) + "=";
            if (argument.compare(0, option.size(), option) == 0) {
                argument = option + fill(length);
            }
        }
        EXPECT_EQ(parseNarrow(arguments), 1);
    }
};

TEST_F(InformationCopy, EveryOptionFillsItsSlot) {
    inFreshProcess([] {
        EXPECT_EQ(parseNarrow(allOptions()), 1);
        expectInformation(1, allSlots());
    });
}

TEST_P(InformationSlot, OptionFillsThisSlotAlone) {
    inFreshProcess([] {
        std::map<std::size_t, std::string> expected = {{0, "orvex"}, {5, "0"}, {13, "any"}};
        expected[GetParam().index] = expected[GetParam().repeatedIndex] = "value";
        EXPECT_EQ(parseNarrow({"mytest", GetParam().option, "value"}), 1);
        expectInformation(1, expected);
    });
}

TEST_P(InformationSlot, HoldsTwoHundredFiftyFiveBytes) {
    inFreshProcess([] {
        parseWithLength(255);
        std::map<std::size_t, std::string> expected = allSlots();
        expected[GetParam().index] = expected[GetParam().repeatedIndex] = fill(255);
        expectInformation(1, expected);
    });
}

TEST_P(InformationSlot, TextThatIsTooLongEndsTheCopyThere) {
    for (const std::size_t length : {256, 257, 5000}) {
        SCOPED_TRACE(length);
        inFreshProcess([&] {
            parseWithLength(length);
            std::map<std::size_t, std::string> expected = allSlots();
            expected.erase(expected.find(GetParam().index), expected.end());
            expectInformation(0, expected);
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Slots, InformationSlot, ::testing::ValuesIn(slots),
                         [](const auto& info) { return info.param.name; });

}  // namespace
