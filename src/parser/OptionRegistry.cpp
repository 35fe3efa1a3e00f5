#include "OrvexTestCommandLineParser.h"

#include "parser/option_scanner.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <ios>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using orvex::Finding;
using orvex::withoutLeadingDashes;

// With so few names, a linear search costs less than building a tree.
void registerNames(std::initializer_list<const char*> names, std::vector<std::string>& list) {
    list.reserve(list.size() + names.size());
    for (const char* name : names) {
        list.emplace_back(withoutLeadingDashes(name));
    }
}

bool contains(const std::vector<std::string>& list, std::string_view name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

std::string_view keyOf(OptionRegistry::Name name) {
    return withoutLeadingDashes({name.begin, name.size});
}

std::string join(const std::vector<std::string>& parts, const std::string& separator) {
    std::size_t size = 0;
    for (const std::string& part : parts) {
        size += part.size() + separator.size();
    }
    std::string joined;
    joined.reserve(size);
    for (const std::string& part : parts) {
        if (&part != &parts.front()) {
            joined += separator;
        }
        joined += part;
    }
    return joined;
}

}  // namespace

// Stores what a scan finds.
class OptionRegistry::Store {
public:
    explicit Store(OptionRegistry& registry) : registry(registry) {}

    void scan(const std::vector<std::string_view>& tokens) {
        orvex::scanTokens(tokens, registry, !registry.positionals.empty(),
                          [this](const Finding& finding) { store(finding); });
    }

private:
    void store(const Finding& finding) {
        if (finding.kind == Finding::Positional) {
            registry.positionals.emplace_back(finding.value);
        } else if (finding.kind == Finding::Flag) {
            // Repeated flags usually sort last; the hint then avoids the search.
            registry.flags.emplace_hint(registry.flags.end(), finding.name);
        } else if (finding.kind != Finding::DroppedProgramName) {
            storeValue(finding.name, finding.value);
        }
    }

    void storeValue(std::string_view name, std::string_view value) {
        if (contains(registry.multiValueOptions, name)) {
            registry.multiValues.try_emplace(std::string(name)).first->second.emplace_back(value);
            return;
        }
        const auto found = registry.values.lower_bound(name);
        if (found != registry.values.end() && found->first == name) {
            found->second = value;
        } else {
            registry.values.emplace_hint(found, name, value);
        }
    }

    OptionRegistry& registry;
};

OptionRegistry::OptionRegistry(std::uint32_t mode) : mode(mode) {}

void OptionRegistry::addValueOptions(std::initializer_list<const char*> names) {
    registerNames(names, valueOptions);
}

void OptionRegistry::addMultiValueOptions(std::initializer_list<const char*> names) {
    registerNames(names, multiValueOptions);
}

void OptionRegistry::parseArgv(int argc, const char* const* argv) {
    Store(*this).scan({argv, argv + argc});
}

void OptionRegistry::parseTokens(const std::vector<std::string>& tokens) {
    Store(*this).scan({tokens.begin(), tokens.end()});
}

bool OptionRegistry::hasOption(Name name) const {
    return flags.find(keyOf(name)) != flags.end();
}

std::istringstream OptionRegistry::getValue(Name name) const {
    if (isMultiValueOption(name)) {
        return std::istringstream(getJoinedValues(name, " "));
    }
    const auto found = values.find(keyOf(name));
    if (found != values.end()) {
        return std::istringstream(found->second);
    }
    std::istringstream absent;
    absent.setstate(std::ios_base::failbit);
    return absent;
}

const std::string& OptionRegistry::getSingleValue(Name name) const {
    const auto found = values.find(keyOf(name));
    return found == values.end() ? emptyValue : found->second;
}

std::string OptionRegistry::getJoinedValues(Name name, const std::string& separator) const {
    const auto found = multiValues.find(keyOf(name));
    return found == multiValues.end() ? std::string() : join(found->second, separator);
}

const std::string& OptionRegistry::getPositional(std::size_t index) const {
    return index < positionals.size() ? positionals[index] : emptyValue;
}

const std::vector<std::string>& OptionRegistry::getPositionals() const {
    return positionals;
}

std::string OptionRegistry::trimLeadingDashes(const std::string& text) {
    return std::string(withoutLeadingDashes(text));
}

bool OptionRegistry::isNumber(const std::string& token) {
    return orvex::isNumber(token);
}

bool OptionRegistry::isOptionToken(const std::string& token) {
    return orvex::isOptionToken(token);
}

bool OptionRegistry::isValueOption(Name name) const {
    return contains(valueOptions, keyOf(name));
}

bool OptionRegistry::isMultiValueOption(Name name) const {
    return contains(multiValueOptions, keyOf(name));
}

bool OptionRegistry::hasMode(std::uint32_t bit) const {
    return (mode & bit) != 0;
}
