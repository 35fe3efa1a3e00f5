#include "OrvexTestCommandLineParser.h"

#include <algorithm>
#include <locale>
#include <string_view>
#include <utility>

namespace {

std::string_view withoutLeadingDashes(std::string_view text) {
    const std::size_t start = text.find_first_not_of('-');
    return start == std::string_view::npos ? text : text.substr(start);
}

bool readsAsNumber(std::string_view token) {
    std::istringstream stream{std::string(token)};
    // A test program that sets a global locale must not change what counts as a number.
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return !stream.fail();
}

// Whether a text that begins with a dash can be a number at all: after the sign, every standard library
// expects a digit, a point, or the first letter of "inf" or "nan". This spares most options a stream.
bool mayBeNumber(std::string_view token) {
    return token.size() > 1 && std::string_view("0123456789.iInN").find(token[1]) != std::string_view::npos;
}

bool looksLikeOption(std::string_view token) {
    return !token.empty() && token.front() == '-' && !(mayBeNumber(token) && readsAsNumber(token));
}

// Registered names are few: a walk along a list costs less than a tree, to build and to search.
void registerNames(std::initializer_list<const char*> names, std::vector<std::string>& list) {
    list.reserve(list.size() + names.size());
    for (const char* name : names) {
        list.emplace_back(withoutLeadingDashes(name));
    }
}

bool contains(const std::vector<std::string>& list, std::string_view name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string joined = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i) {
        joined += separator;
        joined += parts[i];
    }
    return joined;
}

}  // namespace

// One pass over a token list.
class OptionRegistry::Scanner {
public:
    Scanner(OptionRegistry& registry, std::vector<std::string_view> tokens)
        : registry(registry), tokens(std::move(tokens)) {}

    void scan() {
        while (next < tokens.size()) {
            const std::string_view token = tokens[next];
            if (looksLikeOption(token)) {
                scanOption(token);
            } else {
                scanPositional(token);
            }
        }
    }

private:
    // Every list carries the program name in front; only the first one's is kept.
    void scanPositional(std::string_view token) {
        if (next != 0 || registry.positionals.empty()) {
            registry.positionals.emplace_back(token);
        }
        ++next;
    }

    void scanOption(std::string_view token) {
        std::string_view name = withoutLeadingDashes(token);
        ++next;
        if (!registry.hasMode(NoInlineValue)) {
            const std::size_t equals = name.find('=');
            if (equals != std::string_view::npos) {
                storeInlineValue(name.substr(0, equals), name.substr(equals + 1));
                return;
            }
        }
        const bool hasOneDash = token.size() == name.size() + 1;
        if (registry.hasMode(GroupedShortFlags) && hasOneDash && !isValueOption(name)) {
            name = takeGroupedFlags(name);
            if (name.empty()) {
                return;
            }
        }
        takeValueOrFlag(name);
    }

    void storeInlineValue(std::string_view name, std::string_view value) {
        if (isMultiValueOption(name)) {
            appendValue(name, value);
        } else {
            replaceValue(name, value);
        }
    }

    // Stores the flags and returns the last letter if it is an option that takes a value, else nothing.
    std::string_view takeGroupedFlags(std::string_view letters) {
        std::string_view valueLetter = letters.substr(letters.size() - 1);
        if (isValueOption(valueLetter)) {
            letters.remove_suffix(1);
        } else {
            valueLetter = std::string_view();
        }
        for (const char letter : letters) {
            registry.flags.emplace(1, letter);
        }
        return valueLetter;
    }

    void takeValueOrFlag(std::string_view name) {
        const bool hasValue = next < tokens.size() && !looksLikeOption(tokens[next]);
        if (hasValue && isMultiValueOption(name)) {
            appendValue(name, tokens[next++]);
        } else if (hasValue && (isValueOption(name) || registry.hasMode(UnknownTakesValue))) {
            replaceValue(name, tokens[next++]);
        } else {
            // A flag given over and over is mostly the last in order: the hint then spares the search.
            registry.flags.emplace_hint(registry.flags.end(), name);
        }
    }

    bool isValueOption(std::string_view name) const {
        return contains(registry.valueOptions, name);
    }

    bool isMultiValueOption(std::string_view name) const {
        return contains(registry.multiValueOptions, name);
    }

    void replaceValue(std::string_view name, std::string_view value) {
        const auto found = registry.values.lower_bound(name);
        if (found != registry.values.end() && found->first == name) {
            found->second = value;
        } else {
            registry.values.emplace_hint(found, name, value);
        }
    }

    void appendValue(std::string_view name, std::string_view value) {
        auto found = registry.multiValues.find(name);
        if (found == registry.multiValues.end()) {
            found = registry.multiValues.emplace(name, std::vector<std::string>()).first;
        }
        found->second.emplace_back(value);
    }

    OptionRegistry& registry;
    const std::vector<std::string_view> tokens;
    std::size_t next = 0;
};

OptionRegistry::OptionRegistry(std::uint32_t mode) : mode(mode) {}

void OptionRegistry::addValueOptions(std::initializer_list<const char*> names) {
    registerNames(names, valueOptions);
}

void OptionRegistry::addMultiValueOptions(std::initializer_list<const char*> names) {
    registerNames(names, multiValueOptions);
}

void OptionRegistry::parseArgv(int argc, const char* const* argv) {
    Scanner(*this, std::vector<std::string_view>(argv, argv + argc)).scan();
}

void OptionRegistry::parseTokens(const std::vector<std::string>& tokens) {
    Scanner(*this, std::vector<std::string_view>(tokens.begin(), tokens.end())).scan();
}

bool OptionRegistry::hasOption(const std::string& name) const {
    return flags.find(withoutLeadingDashes(name)) != flags.end();
}

std::istringstream OptionRegistry::getValue(const std::string& name) const {
    if (isMultiValueOption(name)) {
        return std::istringstream(getJoinedValues(name, " "));
    }
    const auto found = values.find(withoutLeadingDashes(name));
    if (found != values.end()) {
        return std::istringstream(found->second);
    }
    std::istringstream absent;
    absent.setstate(std::ios_base::failbit);
    return absent;
}

std::string OptionRegistry::getText(const char* name) const {
    const std::string_view key = withoutLeadingDashes(name);
    if (contains(multiValueOptions, key)) {
        const auto found = multiValues.find(key);
        return found == multiValues.end() || found->second.empty() ? std::string() : join(found->second, " ");
    }
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second;
}

std::string OptionRegistry::getJoinedValues(const std::string& name, const std::string& separator) const {
    const auto found = multiValues.find(withoutLeadingDashes(name));
    return found == multiValues.end() || found->second.empty() ? std::string()
                                                               : join(found->second, separator);
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
    return readsAsNumber(token);
}

bool OptionRegistry::isOptionToken(const std::string& token) {
    return looksLikeOption(token);
}

bool OptionRegistry::isValueOption(const std::string& name) const {
    return contains(valueOptions, withoutLeadingDashes(name));
}

bool OptionRegistry::isMultiValueOption(const std::string& name) const {
    return contains(multiValueOptions, withoutLeadingDashes(name));
}

bool OptionRegistry::hasMode(std::uint32_t bit) const {
    return (mode & bit) != 0;
}
