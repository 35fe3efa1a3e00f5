// What differs between the library and the model, as text.

#ifndef ORVEX_TESTS_DIFFERENTIAL_DIFFERENCES_H
#define ORVEX_TESTS_DIFFERENTIAL_DIFFERENCES_H

#include "differential/scenario.h"
#include "model/model.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace differential {

// Compares one thing after another and keeps a line for each of the first that differ.
class Differences {
public:
    void operator()(std::string_view what, const std::string& library, const std::string& model) {
        if (library != model) {
            // From a little before the place where the two part.
            const auto place =
                std::mismatch(library.begin(), library.end(), model.begin(), model.end()).first;
            const auto equal = static_cast<std::size_t>(place - library.begin());
            const std::size_t start = equal > 40 ? equal - 20 : 0;
            const std::string position = start > 0 ? " from byte " + std::to_string(start) : "";
            add(std::string(what) + position, quoted(library, start), quoted(model, start));
        }
    }

    void operator()(std::string_view what, const char* library, const std::string& model) {
        if (model != library) {
            (*this)(what, std::string(library), model);
        }
    }

    template <typename Number>
    void operator()(std::string_view what, Number library, Number model) {
        if (library != model) {
            add(std::string(what), std::to_string(library), std::to_string(model));
        }
    }

    void operator()(const char* what, const Strings& library, const Strings& model) {
        for (std::size_t i = 0; library != model && i < std::max(library.size(), model.size()); ++i) {
            compareItems(std::string(what) + "[" + std::to_string(i) + "]",
                         i < library.size() ? &library[i] : nullptr, i < model.size() ? &model[i] : nullptr);
        }
    }

    void operator()(const model::Environment& library, const model::Environment& model) {
        if (library != model) {
            model::Environment names = library;
            names.insert(model.begin(), model.end());
            for (const auto& [name, value] : names) {
                const auto first = library.find(name);
                const auto second = model.find(name);
                compareItems(name, first == library.end() ? nullptr : &first->second,
                             second == model.end() ? nullptr : &second->second);
            }
        }
    }

    std::string text;

private:
    void compareItems(const std::string& what, const std::string* library, const std::string* model) {
        if (library != nullptr && model != nullptr) {
            (*this)(what, *library, *model);
        } else {
            add(what, library == nullptr ? "nothing" : quoted(*library),
                model == nullptr ? "nothing" : quoted(*model));
        }
    }

    static std::string quoted(const std::string& whole, std::size_t start = 0) {
        constexpr std::size_t most = 60;
        const std::size_t first = std::min(start, whole.size());
        return (first > 0 ? "...\"" : "\"") + escaped(whole.substr(first, most)) +
               (whole.size() > first + most ? "\"..." : "\"");
    }

    void add(const std::string& what, const std::string& library, const std::string& model) {
        constexpr int most = 8;
        if (number++ < most) {
            text += "  " + what + ": the library has " + library + ", the model " + model + "\n";
        }
    }

    int number = 0;
};

}  // namespace differential

#endif
