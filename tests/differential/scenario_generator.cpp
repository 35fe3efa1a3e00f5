#include "differential/choices.h"
#include "differential/scenario.h"
#include "differential/text_generator.h"
#include "model/model.h"

#include <climits>
#include <utility>

namespace differential {
namespace {

class ScenarioGenerator {
public:
    explicit ScenarioGenerator(Choices& choices) : choices(choices), texts(choices) {}

    Scenario generate() {
        Scenario scenario;
        const std::uint32_t calls = 1 + choices.below(3);
        for (std::uint32_t i = 0; i < calls; ++i) {
            scenario.calls.push_back(call());
        }
        addVariables(scenario.environment);
        if (choices.oneIn(12)) {
            scenario.refused.insert(choices.oneOf(model::writtenVariables()));
        }
        return scenario;
    }

private:
    void addVariables(std::map<std::string, std::string>& variables) {
        if (choices.oneIn(2)) {
            variables["ORVEX_TEST_ARGS"] = texts.variableText();
        }
        if (choices.oneIn(2)) {
            variables["_ORVEX_TEST_ARGS_"] = texts.variableText();
        }
        if (choices.oneIn(4)) {
            variables["MY_ARGS"] = texts.variableText();
        }
        if (choices.oneIn(2)) {
            variables["GENICAM_GENTL64_PATH"] = texts.value();
        }
        if (choices.oneIn(4)) {
            variables["A"] = "B=C";
            variables["HOMEDIR"] = texts.value();
        }
        for (std::uint32_t count = choices.below(6); count > 0; --count) {
            variables[choices.oneOf(model::writtenVariables())] = texts.value();
        }
    }

    Call call() {
        constexpr std::uint32_t variableForm = 8;
        static const std::vector<Form> forms = {Form::Narrow, Form::Narrow, Form::CNarrow, Form::Wide,
                                                Form::Packed, Form::CWide,  Form::Narrow,  Form::CNarrow};
        const std::uint32_t choice = choices.below(variableForm + 1);
        if (choice == variableForm) {
            return variableCall();
        }
        Call call;
        call.form = forms[choice];
        std::vector<std::string> arguments = texts.tokens();
        arguments.insert(arguments.begin(), texts.programName());
        const auto size = static_cast<int>(arguments.size());
        if (call.form == Form::Wide || call.form == Form::CWide) {
            for (const std::string& argument : arguments) {
                call.wideArguments.push_back(wideArgument(argument));
            }
        } else {
            call.arguments = std::move(arguments);
        }
        if (choices.oneIn(24)) {
            call.count = choices.oneOf(std::vector<int>{0, -1, INT_MIN, size - 1, size + 1});
            call.nullArguments = choices.oneIn(2);
        }
        return call;
    }

    Call variableCall() {
        static const std::vector<std::string> names = {"MY_ARGS", "MY_ARGS", "ORVEX_TEST_ARGS",
                                                       "UNSET",   "",        "A=B"};
        const std::string name = choices.oneOf(names);
        Call call = variable(name, texts.programName());
        call.nullArguments = choices.oneIn(16);
        return call;
    }

    WideArgument wideArgument(const std::string& argument) {
        static const std::vector<char32_t> boundaries = {0x7F,   0x80,   0x7FF,   0x800,    0xD800,  0xDFFF,
                                                         0xFFFD, 0xFFFF, 0x10000, 0x10FFFF, 0x1F600, 0xE9};
        static const std::vector<char32_t> invalid = {0x110000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        std::u32string text;
        for (const char c : argument) {
            text += static_cast<char32_t>(static_cast<unsigned char>(c));
        }
        for (std::uint32_t count = choices.oneIn(3) ? choices.below(5) : 0; count > 0; --count) {
            const std::size_t position = choices.below(static_cast<std::uint32_t>(text.size() + 1));
            text.insert(position, 1, choices.oneOf(boundaries));
        }
        if (choices.oneIn(128)) {
            text += choices.oneOf(invalid);
        }
        return choices.oneIn(256) ? std::nullopt : WideArgument(text);
    }

    Choices& choices;
    TextGenerator texts;
};

}  // namespace

Scenario scenarioFromSeed(std::uint64_t seed) {
    RandomChoices choices(seed);
    return ScenarioGenerator(choices).generate();
}

Scenario scenarioFromBytes(const std::uint8_t* data, std::size_t size) {
    ByteChoices choices(data, size);
    return ScenarioGenerator(choices).generate();
}

}  // namespace differential
