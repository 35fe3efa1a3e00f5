// What every mode word makes of token lists that tell the modes apart.

#include "OrvexTestCommandLineParser.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The result of each mode word from 0 to 15.
using Expectations = std::array<const char*, 16>;

// The positional arguments, a bar, and what is known about each of the names: "name" for a flag,
// "name->value" for a value.
std::string describe(const OptionRegistry& registry, std::initializer_list<const char*> names) {
    std::string text;
    for (const std::string& positional : registry.getPositionals()) {
        text += positional + " ";
    }
    text += "|";
    for (const char* name : names) {
        if (registry.hasOption(name)) {
            text += std::string(" ") + name;
        }
        const std::string value = registry.getValue(name).str();
        if (!value.empty()) {
            text += std::string(" ") + name + "->" + value;
        }
    }
    return text;
}

// Scans the tokens with each mode word; "o" and "out" are value options, "tl" is a multi-value option.
void expectInEveryMode(const std::vector<std::string>& tokens, std::initializer_list<const char*> names,
                       const Expectations& expectations) {
    for (std::uint32_t mode = 0; mode < expectations.size(); ++mode) {
        SCOPED_TRACE("mode " + std::to_string(mode));
        OptionRegistry registry(mode);
        registry.addValueOptions({"o", "out"});
        registry.addMultiValueOptions({"tl"});
        registry.parseTokens(tokens);
        EXPECT_EQ(describe(registry, names), expectations[mode]);
    }
}

TEST(RegistryModes, UnregisteredOptionBeforeAToken) {
    expectInEveryMode({"app", "-ab", "V", "W"}, {"ab", "a", "b"},
                      {
                          "app V W | ab",   // 0
                          "app V W | ab",   // 1
                          "app W | ab->V",  // 2
                          "app W | ab->V",  // 3
                          "app V W | ab",   // 4
                          "app V W | ab",   // 5
                          "app W | ab->V",  // 6
                          "app W | ab->V",  // 7
                          "app V W | a b",  // 8
                          "app V W | a b",  // 9
                          "app V W | a b",  // 10
                          "app V W | a b",  // 11
                          "app V W | a b",  // 12
                          "app V W | a b",  // 13
                          "app V W | a b",  // 14
                          "app V W | a b",  // 15
                      });
}

TEST(RegistryModes, UnregisteredOptionWithTwoDashesIsNeverAGroup) {
    expectInEveryMode({"app", "--ab", "V", "W"}, {"ab", "a", "b"},
                      {
                          "app V W | ab",   // 0
                          "app V W | ab",   // 1
                          "app W | ab->V",  // 2
                          "app W | ab->V",  // 3
                          "app V W | ab",   // 4
                          "app V W | ab",   // 5
                          "app W | ab->V",  // 6
                          "app W | ab->V",  // 7
                          "app V W | ab",   // 8
                          "app V W | ab",   // 9
                          "app W | ab->V",  // 10
                          "app W | ab->V",  // 11
                          "app V W | ab",   // 12
                          "app V W | ab",   // 13
                          "app W | ab->V",  // 14
                          "app W | ab->V",  // 15
                      });
}

TEST(RegistryModes, LoneDashIsNeverAGroup) {
    expectInEveryMode({"app", "-", "V"}, {"-"},
                      {
                          "app V | -",   // 0
                          "app V | -",   // 1
                          "app | -->V",  // 2
                          "app | -->V",  // 3
                          "app V | -",   // 4
                          "app V | -",   // 5
                          "app | -->V",  // 6
                          "app | -->V",  // 7
                          "app V | -",   // 8
                          "app V | -",   // 9
                          "app | -->V",  // 10
                          "app | -->V",  // 11
                          "app V | -",   // 12
                          "app V | -",   // 13
                          "app | -->V",  // 14
                          "app | -->V",  // 15
                      });
}

TEST(RegistryModes, UnregisteredOptionBeforeAnOption) {
    expectInEveryMode({"app", "-ab", "--cd"}, {"ab", "a", "b", "cd", "c", "d"},
                      {
                          "app | ab cd",   // 0
                          "app | ab cd",   // 1
                          "app | ab cd",   // 2
                          "app | ab cd",   // 3
                          "app | ab cd",   // 4
                          "app | ab cd",   // 5
                          "app | ab cd",   // 6
                          "app | ab cd",   // 7
                          "app | a b cd",  // 8
                          "app | a b cd",  // 9
                          "app | a b cd",  // 10
                          "app | a b cd",  // 11
                          "app | a b cd",  // 12
                          "app | a b cd",  // 13
                          "app | a b cd",  // 14
                          "app | a b cd",  // 15
                      });
}

TEST(RegistryModes, InlineValues) {
    expectInEveryMode({"app", "-o=1", "--u=2", "-tl=3"},
                      {"o", "u", "tl", "o=1", "u=2", "tl=3", "=", "1", "3", "t", "l"},
                      {
                          "app | o->1 u->2 tl->3",  // 0
                          "app | o->1 u->2 tl->3",  // 1
                          "app | o->1 u->2 tl->3",  // 2
                          "app | o->1 u->2 tl->3",  // 3
                          "app | o=1 u=2 tl=3",     // 4
                          "app | o=1 u=2 tl=3",     // 5
                          "app | o=1 u=2 tl=3",     // 6
                          "app | o=1 u=2 tl=3",     // 7
                          "app | o->1 u->2 tl->3",  // 8
                          "app | o->1 u->2 tl->3",  // 9
                          "app | o->1 u->2 tl->3",  // 10
                          "app | o->1 u->2 tl->3",  // 11
                          "app | o u=2 = 1 3 t l",  // 12
                          "app | o u=2 = 1 3 t l",  // 13
                          "app | o u=2 = 1 3 t l",  // 14
                          "app | o u=2 = 1 3 t l",  // 15
                      });
}

TEST(RegistryModes, InlineValueBeforeAToken) {
    expectInEveryMode({"app", "-u=1", "V"}, {"u", "u=1", "=", "1"},
                      {
                          "app V | u->1",   // 0
                          "app V | u->1",   // 1
                          "app V | u->1",   // 2
                          "app V | u->1",   // 3
                          "app V | u=1",    // 4
                          "app V | u=1",    // 5
                          "app | u=1->V",   // 6
                          "app | u=1->V",   // 7
                          "app V | u->1",   // 8
                          "app V | u->1",   // 9
                          "app V | u->1",   // 10
                          "app V | u->1",   // 11
                          "app V | u = 1",  // 12
                          "app V | u = 1",  // 13
                          "app V | u = 1",  // 14
                          "app V | u = 1",  // 15
                      });
}

TEST(RegistryModes, LastLetterOfAGroupTakesAValue) {
    expectInEveryMode({"app", "-aobo", "V", "W"}, {"aobo", "a", "b", "o"},
                      {
                          "app V W | aobo",      // 0
                          "app V W | aobo",      // 1
                          "app W | aobo->V",     // 2
                          "app W | aobo->V",     // 3
                          "app V W | aobo",      // 4
                          "app V W | aobo",      // 5
                          "app W | aobo->V",     // 6
                          "app W | aobo->V",     // 7
                          "app W | a b o o->V",  // 8
                          "app W | a b o o->V",  // 9
                          "app W | a b o o->V",  // 10
                          "app W | a b o o->V",  // 11
                          "app W | a b o o->V",  // 12
                          "app W | a b o o->V",  // 13
                          "app W | a b o o->V",  // 14
                          "app W | a b o o->V",  // 15
                      });
}

TEST(RegistryModes, LastLetterOfAGroupWithoutAValueIsAFlag) {
    expectInEveryMode({"app", "-ao", "-bo"}, {"ao", "bo", "a", "b", "o"},
                      {
                          "app | ao bo",  // 0
                          "app | ao bo",  // 1
                          "app | ao bo",  // 2
                          "app | ao bo",  // 3
                          "app | ao bo",  // 4
                          "app | ao bo",  // 5
                          "app | ao bo",  // 6
                          "app | ao bo",  // 7
                          "app | a b o",  // 8
                          "app | a b o",  // 9
                          "app | a b o",  // 10
                          "app | a b o",  // 11
                          "app | a b o",  // 12
                          "app | a b o",  // 13
                          "app | a b o",  // 14
                          "app | a b o",  // 15
                      });
}

TEST(RegistryModes, MultiValueNameWithOneDashIsAGroup) {
    expectInEveryMode({"app", "-tl", "X"}, {"tl", "t", "l"},
                      {
                          "app | tl->X",  // 0
                          "app | tl->X",  // 1
                          "app | tl->X",  // 2
                          "app | tl->X",  // 3
                          "app | tl->X",  // 4
                          "app | tl->X",  // 5
                          "app | tl->X",  // 6
                          "app | tl->X",  // 7
                          "app X | t l",  // 8
                          "app X | t l",  // 9
                          "app X | t l",  // 10
                          "app X | t l",  // 11
                          "app X | t l",  // 12
                          "app X | t l",  // 13
                          "app X | t l",  // 14
                          "app X | t l",  // 15
                      });
}

TEST(RegistryModes, RegisteredOptionsAreTheSameInEveryMode) {
    Expectations same = {};
    same.fill("app S | out->V tl->T U o");
    expectInEveryMode({"app", "-out", "V", "--tl", "T", "S", "--tl", "U", "-o"},
                      {"out", "tl", "o", "u", "t", "l"}, same);
}

TEST(RegistryModes, MultiValueLetterAtTheEndOfAGroupTakesNoValue) {
    OptionRegistry registry(OptionRegistry::GroupedShortFlags);
    registry.addMultiValueOptions({"p"});
    registry.parseTokens({"app", "-ap", "V", "-p", "W"});
    EXPECT_EQ(describe(registry, {"a", "p", "ap"}), "app V W | a p");
    EXPECT_EQ(registry.getJoinedValues("p", ","), "");
}

TEST(RegistryModes, BytesAboveSevenBitsAreLettersOfAGroup) {
    OptionRegistry registry(OptionRegistry::GroupedShortFlags);
    registry.addValueOptions({"\xA9"});
    registry.parseTokens({"app", "-x\xC3\xA9", "V"});
    EXPECT_EQ(describe(registry, {"x", "\xC3", "\xA9"}), "app | x \xC3 \xA9->V");
}

TEST(RegistryModes, HigherBitsOfTheWordHaveNoEffect) {
    OptionRegistry registry(0xFFFFFFF0);
    registry.addValueOptions({"o"});
    registry.parseTokens({"app", "-ab", "V", "-u=1", "-ao"});
    EXPECT_EQ(describe(registry, {"ab", "a", "b", "u", "u=1", "ao", "o"}), "app V | ab u->1 ao");
}

}  // namespace
