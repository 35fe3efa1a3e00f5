// The name of the SDK's directory belongs to a text in which references are expanded. It stands there
// twice, so that a "%" in it always finds a second one.

#include "system/sdk_layout.h"

#include <ostream>
#include <string>
#include <vector>

namespace {

// "{base}" stands for the directory in which the SDK's directory lies.
struct SdkName {
    const char* name;
    const char* directory;
    Environment environment;
    // The whole search path, of which "/x/gtl" is what it was before.
    const char* expected;
};

void PrintTo(const SdkName& name, std::ostream* stream) {
    *stream << name.name;
}

const std::vector<SdkName> names = {
    {"Plain", "sdk", {}, "{base}/sdk" GTL_ENTRY "{base}/sdk" CXP_ENTRY "/x/gtl"},
    {"Blank", "Orvex SDK 7", {}, "{base}/Orvex SDK 7" GTL_ENTRY "{base}/Orvex SDK 7" CXP_ENTRY "/x/gtl"},
    {"BytesAboveAscii",
     "Ger\xC3\xA4t",
     {},
     "{base}/Ger\xC3\xA4t" GTL_ENTRY "{base}/Ger\xC3\xA4t" CXP_ENTRY "/x/gtl"},

    // One "%" encloses, with its repetition, all that lies between them.
    {"PercentInTheMiddle", "50%off", {}, "{base}/50off" CXP_ENTRY "/x/gtl"},
    {"PercentAtTheStart", "%off", {}, "{base}/off" CXP_ENTRY "/x/gtl"},
    {"PercentAtTheEnd", "50%", {}, "{base}/50" CXP_ENTRY "/x/gtl"},
    {"PercentAloneWithADefinedVariable",
     "50%off",
     {{"off" GTL_ENTRY "{base}/50", "<text>"}},
     "{base}/50<text>off" CXP_ENTRY "/x/gtl"},

    {"PercentsAroundADefinedVariable",
     "a%NAME%b",
     {{"NAME", "value"}},
     "{base}/avalueb" GTL_ENTRY "{base}/avalueb" CXP_ENTRY "/x/gtl"},
    {"PercentsAroundAnUndefinedVariable",
     "a%NAME%b",
     {},
     "{base}/ab" GTL_ENTRY "{base}/ab" CXP_ENTRY "/x/gtl"},
    {"PercentsAroundAnEmptyVariable",
     "a%NAME%b",
     {{"NAME", ""}},
     "{base}/ab" GTL_ENTRY "{base}/ab" CXP_ENTRY "/x/gtl"},
    {"PercentsAroundANameWithABlank",
     "a% NAME %b",
     {{"NAME", "wrong"}, {" NAME ", "value"}},
     "{base}/avalueb" GTL_ENTRY "{base}/avalueb" CXP_ENTRY "/x/gtl"},
    {"PercentsAroundAParenthesisReference",
     "a%$(NAME)%b",
     {{"NAME", "wrong"}, {"$(NAME)", "value"}},
     "{base}/avalueb" GTL_ENTRY "{base}/avalueb" CXP_ENTRY "/x/gtl"},
    {"PercentsSideBySide", "a%%b", {}, "{base}/a%%b" GTL_ENTRY "{base}/a%%b" CXP_ENTRY "/x/gtl"},
    // The third "%" of the first directory takes the first one of the second directory.
    {"ThreePercents", "a%B%c%d", {{"B", "<B>"}, {"c", "<c>"}}, "{base}/a<B>cB<c>d" CXP_ENTRY "/x/gtl"},

    {"ParenthesisReferenceToADefinedVariable",
     "a$(NAME)b",
     {{"NAME", "value"}},
     "{base}/avalueb" GTL_ENTRY "{base}/avalueb" CXP_ENTRY "/x/gtl"},
    {"ParenthesisReferenceToAnUndefinedVariable",
     "a$(NAME)b",
     {},
     "{base}/ab" GTL_ENTRY "{base}/ab" CXP_ENTRY "/x/gtl"},
    {"ParenthesisReferenceWithAPercent",
     "a$(N%M)b",
     {{"N%M", "value"}},
     "{base}/avalueb" GTL_ENTRY "{base}/avalueb" CXP_ENTRY "/x/gtl"},
    {"ParenthesisReferenceToTheSearchPath",
     "a$(GENICAM_GENTL64_PATH)b",
     {},
     "{base}/a/x/gtlb" GTL_ENTRY "{base}/a/x/gtlb" CXP_ENTRY "/x/gtl"},
    // The only ")" is that of the reference at the end of the whole text, which is lost with the rest.
    {"ParenthesisThatIsNotClosed", "a$(b", {}, "{base}/a"},
    {"ParenthesisThatIsNotClosedWithADefinedVariable",
     "a$(b",
     {{"b" GTL_ENTRY "{base}/a$(b" CXP_ENTRY "$(GENICAM_GENTL64_PATH", "<text>"}},
     "{base}/a<text>"},
    {"EmptyParentheses", "a$()b", {}, "{base}/a$()b" GTL_ENTRY "{base}/a$()b" CXP_ENTRY "/x/gtl"},
    {"ParenthesesWithoutADollar", "a(b)c", {}, "{base}/a(b)c" GTL_ENTRY "{base}/a(b)c" CXP_ENTRY "/x/gtl"},

    {"Dollar", "a$b", {{"b", "wrong"}}, "{base}/a$b" GTL_ENTRY "{base}/a$b" CXP_ENTRY "/x/gtl"},
    {"DollarAtTheEnd", "a$", {}, "{base}/a$" GTL_ENTRY "{base}/a$" CXP_ENTRY "/x/gtl"},
    {"TwoDollars", "a$$b", {}, "{base}/a$b" GTL_ENTRY "{base}/a$b" CXP_ENTRY "/x/gtl"},
    {"TwoDollarsBeforeAParenthesis",
     "a$$(NAME)b",
     {{"NAME", "wrong"}},
     "{base}/a$(NAME)b" GTL_ENTRY "{base}/a$(NAME)b" CXP_ENTRY "/x/gtl"},

    {"ValueWithReferences",
     "a%NAME%b$(NAME)c",
     {{"NAME", "%OTHER%$(OTHER)$$"}, {"OTHER", "wrong"}},
     "{base}/a%OTHER%$(OTHER)$$b%OTHER%$(OTHER)$$c" GTL_ENTRY
     "{base}/a%OTHER%$(OTHER)$$b%OTHER%$(OTHER)$$c" CXP_ENTRY "/x/gtl"},
};

class SdkNameTest : public SdkLayoutTest, public ::testing::WithParamInterface<SdkName> {};

TEST_P(SdkNameTest, GivesTheSearchPath) {
    installSdk(base / GetParam().directory);
    Environment environment = {{"LD_LIBRARY_PATH", base / GetParam().directory / librariesThroughLinks},
                               {"GENICAM_GENTL64_PATH", "/x/gtl"}};
    for (const auto& [name, value] : GetParam().environment) {
        environment[withBase(name)] = value;
    }
    // The directory itself is never expanded.
    EXPECT_EQ(runClient(environment),
              clientOutput((base / GetParam().directory).string(), withBase(GetParam().expected)));
}

INSTANTIATE_TEST_SUITE_P(Names, SdkNameTest, ::testing::ValuesIn(names),
                         [](const auto& info) { return info.param.name; });

}  // namespace
