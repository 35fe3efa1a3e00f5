#include "differential/scenario.h"

#include <utility>

namespace differential {
namespace {

// Takes parts away from a failing scenario as long as what is left fails.
class Shrinker {
public:
    Shrinker(Scenario scenario, const std::function<bool(const Scenario&)>& fails)
        : best(std::move(scenario)), fails(fails) {}

    Scenario run() {
        bool isSmaller = true;
        while (isSmaller) {
            isSmaller = dropEntries(&Scenario::environment);
            isSmaller |= dropEntries(&Scenario::refused);
            isSmaller |= shrinkList([](Scenario & scenario) -> auto& { return scenario.calls; });
            for (std::size_t i = 0; i < best.calls.size(); ++i) {
                isSmaller |= shrinkCall(i);
            }
            isSmaller |= shrinkValues();
        }
        return std::move(best);
    }

private:
    // Keeps the candidate if it fails too.
    bool accept(Scenario candidate) {
        if (!fails(candidate)) {
            return false;
        }
        best = std::move(candidate);
        return true;
    }

    template <typename Change>
    bool tryChange(const Change& change) {
        Scenario candidate = best;
        change(candidate);
        return accept(std::move(candidate));
    }

    template <typename Entries>
    bool dropEntries(Entries Scenario::*member) {
        bool isSmaller = false;
        // best changes in the loop.
        const Entries entries = best.*member;
        for (const auto& entry : entries) {
            isSmaller |= tryChange([&](Scenario& scenario) {
                Entries& left = scenario.*member;
                for (auto position = left.begin(); position != left.end(); ++position) {
                    if (*position == entry) {
                        left.erase(position);
                        return;
                    }
                }
            });
        }
        return isSmaller;
    }

    // Removes runs of items, long ones first, from the text or list that the function finds in a scenario.
    template <typename Find>
    bool shrinkList(const Find& find) {
        bool isSmaller = false;
        for (std::size_t length = find(best).size(); length > 0; length /= 2) {
            std::size_t start = 0;
            while (start + length <= find(best).size()) {
                const bool isAccepted = tryChange([&](Scenario& scenario) {
                    auto& items = find(scenario);
                    const auto first = items.begin() + static_cast<std::ptrdiff_t>(start);
                    items.erase(first, first + static_cast<std::ptrdiff_t>(length));
                });
                isSmaller |= isAccepted;
                start += isAccepted ? 0 : 1;
            }
        }
        return isSmaller;
    }

    // Replaces items by the plainest one.
    template <typename Find, typename Item>
    bool simplifyItems(const Find& find, Item plain) {
        bool isSimpler = false;
        for (std::size_t i = 0; i < find(best).size(); ++i) {
            if (find(best)[i] != plain) {
                isSimpler |= tryChange([&](Scenario& scenario) { find(scenario)[i] = plain; });
            }
        }
        return isSimpler;
    }

    bool shrinkValues() {
        bool isSmaller = false;
        const std::map<std::string, std::string> variables = best.environment;
        for (const auto& variable : variables) {
            const auto find = [&](Scenario& scenario) -> std::string& {
                return scenario.environment[variable.first];
            };
            isSmaller |= shrinkList(find);
            isSmaller |= simplifyItems(find, 'a');
        }
        return isSmaller;
    }

    bool shrinkCall(std::size_t index) {
        const auto call = [index](Scenario& scenario) -> Call& { return scenario.calls[index]; };
        bool isSmaller = false;
        if (call(best).count) {
            isSmaller |= tryChange([&](Scenario& scenario) { call(scenario).count.reset(); });
        }
        if (call(best).nullArguments) {
            isSmaller |= tryChange([&](Scenario& scenario) { call(scenario).nullArguments = false; });
        }
        if (call(best).form != Form::Narrow) {
            isSmaller |= tryChange([&](Scenario& scenario) { makeNarrow(call(scenario)); });
        }
        isSmaller |= shrinkList([&](Scenario & scenario) -> auto& { return call(scenario).arguments; });
        isSmaller |= shrinkList([&](Scenario & scenario) -> auto& { return call(scenario).wideArguments; });
        for (std::size_t i = 0; i < call(best).arguments.size(); ++i) {
            const auto find = [&](Scenario& scenario) -> std::string& { return call(scenario).arguments[i]; };
            isSmaller |= shrinkList(find);
            isSmaller |= simplifyItems(find, 'a');
        }
        for (std::size_t i = 0; i < call(best).wideArguments.size(); ++i) {
            if (call(best).wideArguments[i]) {
                const auto find = [&](Scenario& scenario) -> std::u32string& {
                    return *call(scenario).wideArguments[i];
                };
                isSmaller |= shrinkList(find);
                isSmaller |= simplifyItems(find, U'a');
            }
        }
        return isSmaller;
    }

    // The plainest call with the same texts.
    static void makeNarrow(Call& call) {
        for (const WideArgument& argument : call.wideArguments) {
            const std::u32string text = argument.value_or(U"");
            std::string bytes;
            for (const char32_t c : text) {
                bytes += c < 0x80 ? static_cast<char>(c) : 'a';
            }
            call.arguments.push_back(bytes);
        }
        call.wideArguments.clear();
        call.form = Form::Narrow;
    }

    Scenario best;
    const std::function<bool(const Scenario&)>& fails;
};

}  // namespace

Scenario shrink(Scenario scenario, const std::function<bool(const Scenario&)>& fails) {
    return Shrinker(std::move(scenario), fails).run();
}

}  // namespace differential
