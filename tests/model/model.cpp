#include "model/model.h"

#include "OrvexTestCommandLineParser.h"
#include "support/known_options.h"
#include "support/parser_snapshot.h"
#include "support/usage_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <iterator>
#include <locale>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace model {
namespace {

// The text as a NUL-terminated string.
std::string cString(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

// What getenv returns. The GNU C library compares "NAME=" with the beginning of each entry: if A is "B=C",
// the name "A=B" gives "C". On macOS, a name ends at its first "=".
std::optional<std::string> lookUp(const Environment& environment, const std::string& name) {
#ifdef __APPLE__
    const std::string beginning = cString(name.substr(0, name.find('='))) + "=";
#else
    const std::string beginning = cString(name) + "=";
#endif
    for (const auto& [variable, value] : environment) {
        const std::string entry = variable + "=" + value;
        if (beginning != "=" && entry.compare(0, beginning.size(), beginning) == 0) {
            return entry.substr(beginning.size());
        }
    }
    return std::nullopt;
}

// Ends the parse if the condition is false.
void require(bool isGood) {
    if (!isGood) {
        throw std::runtime_error("the parse fails");
    }
}

void requireNumber(const std::string& text) {
    require(text.empty() || (text[0] >= '0' && text[0] <= '9'));
}

}  // namespace

std::string trimLeadingDashes(const std::string& text) {
    const std::size_t first = text.find_first_not_of('-');
    return first == std::string::npos ? text : text.substr(first);
}

bool isNumber(const std::string& token) {
    std::istringstream stream(token);
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return !stream.fail();
}

bool isOptionToken(const std::string& token) {
    return !token.empty() && token[0] == '-' && !isNumber(token);
}

void Registry::parseTokens(const Strings& tokens) {
    std::size_t next = 0;
    while (next < tokens.size()) {
        const std::string& token = tokens[next];
        next += 1;

        if (!isOptionToken(token)) {
            // A list's program name is stored only if there is no positional argument yet.
            const bool isProgramName = next == 1;
            if (!isProgramName || positionals.empty()) {
                positionals.push_back(token);
            }
            continue;
        }

        std::string name = trimLeadingDashes(token);
        const std::size_t equals = name.find('=');
        if (equals != std::string::npos && (mode & OptionRegistry::NoInlineValue) == 0) {
            store(name.substr(0, equals), name.substr(equals + 1));
            continue;
        }

        // A group of one-letter flags, of which the last may be an option that takes a value.
        const bool hasOneDash = token.size() == name.size() + 1;
        if ((mode & OptionRegistry::GroupedShortFlags) != 0 && hasOneDash && valueOptions.count(name) == 0) {
            const std::string last(1, name.back());
            const bool isKept = valueOptions.count(last) != 0;
            for (const char letter : name.substr(0, name.size() - (isKept ? 1 : 0))) {
                flags.insert(std::string(1, letter));
            }
            if (!isKept) {
                continue;
            }
            name = last;
        }

        const bool hasValue = next < tokens.size() && !isOptionToken(tokens[next]);
        const bool takesValue = multiValueOptions.count(name) != 0 || valueOptions.count(name) != 0 ||
                                (mode & OptionRegistry::UnknownTakesValue) != 0;
        if (hasValue && takesValue) {
            store(name, tokens[next]);
            next += 1;
        } else {
            flags.insert(name);
        }
    }
}

void Registry::store(const std::string& name, const std::string& value) {
    if (multiValueOptions.count(name) != 0) {
        multiValues[name].push_back(value);
    } else {
        values[name] = value;
    }
}

std::string Registry::getText(const std::string& name) const {
    if (multiValueOptions.count(name) != 0) {
        return getJoinedValues(name, " ");
    }
    const auto found = values.find(name);
    return found == values.end() ? "" : found->second;
}

std::string Registry::getJoinedValues(const std::string& name, const std::string& separator) const {
    std::string joined;
    if (multiValues.count(name) != 0) {
        for (const std::string& value : multiValues.at(name)) {
            joined += value + separator;
        }
        joined.erase(joined.size() - separator.size());
    }
    return joined;
}

Strings splitArguments(const std::string& text) {
    Strings tokens;
    std::string token;
    bool isInToken = false;
    char quote = '\0';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        if ((byte == ' ' || byte == '\t') && quote == '\0') {
            if (isInToken) {
                tokens.push_back(token);
                token.clear();
                isInToken = false;
            }
            continue;
        }
        isInToken = true;
        if (byte == '\\') {
            // Takes the next byte literally; a trailing backslash is literal itself.
            const bool isLast = i + 1 == text.size();
            token += isLast ? '\\' : text[++i];
        } else if (quote != '\0' && byte == quote) {
            quote = '\0';
        } else if (quote == '\0' && (byte == '"' || byte == '\'')) {
            quote = byte;
        } else {
            token += byte;
        }
    }
    if (quote != '\0') {
        throw std::runtime_error("Starting quote has no ending quote.");
    }
    if (isInToken) {
        tokens.push_back(token);
    }
    return tokens;
}

bool splitString(const std::string& text, char delimiter, Strings& parts) {
    if (delimiter == '\0' || cString(text).empty()) {
        return false;
    }
    // Like splitString, getline yields no empty last part.
    std::istringstream stream(cString(text));
    for (std::string part; std::getline(stream, part, delimiter);) {
        parts.push_back(part);
    }
    return true;
}

std::pair<int, std::string> expand(const std::string& text, const Environment& environment) {
    if (text.find_first_of("$%") == std::string::npos) {
        return {0, text};
    }
    if (text.size() <= 2) {
        // One percent sign is doubled.
        const bool isLone = std::count(text.begin(), text.end(), '%') == 1;
        std::string result = text;
        result.insert(isLone ? text.find('%') : 0, isLone ? 1 : 0, '%');
        return {isLone ? 1 : 0, result};
    }
    const std::string input = cString(text);
    std::string output;
    int count = 0;
    std::size_t i = 0;
    while (i < input.size()) {
        const std::string two = input.substr(i, 2);
        const bool isPercent = input[i] == '%';
        if (!isPercent && two != "$(") {
            output += input[i];
            i += two == "$$" ? 2 : 1;
            continue;
        }
        const std::size_t begin = i + (isPercent ? 1 : 2);
        const std::size_t end = input.find(isPercent ? '%' : ')', begin);
        if (end != std::string::npos && end > begin) {
            output += lookUp(environment, input.substr(begin, end - begin)).value_or("");
            count += 1;
            i = end + 1;
        } else if (isPercent) {
            output += "%%";
            i += end == std::string::npos ? 1 : 2;
        } else {
            output += '$';
            i += 1;
        }
    }
    return {count, output};
}

int utf8(const char32_t* source, char* destination, int destinationSize) {
    if (source == nullptr || destinationSize < 0) {
        return -1;
    }
    const int size = destination == nullptr ? 0 : destinationSize;
    int written = 0;
    for (;; ++source) {
        const std::uint32_t c = *source;
        if (c > 0x10FFFF) {
            return -2;
        }
        // Fills the bytes from the last to the first: six bits in each, and the remaining bits in the first.
        const int length = c < 0x80 ? 1 : c < 0x800 ? 2 : c <= 0xFFFF ? 3 : 4;
        constexpr std::uint32_t marks[] = {0, 0, 0xC0, 0xE0, 0xF0};
        char sequence[4];
        std::uint32_t rest = c;
        for (int i = length - 1; i > 0; --i) {
            sequence[i] = static_cast<char>(0x80 | (rest & 0x3F));
            rest >>= 6;
        }
        sequence[0] = static_cast<char>(marks[length] | rest);
        if (written < size) {
            if (written + length > size) {
                return -2;
            }
            std::copy(sequence, sequence + length, destination + written);
        }
        written += length;
        if (c == 0) {
            return written;
        }
    }
}

Parser::Parser(Environment& environment, std::string applicationDir, std::set<std::string> refused)
    : environment(environment),
      applicationDir(std::move(applicationDir)),
      refused(std::move(refused)),
      options(OptionRegistry::UnknownAsFlag) {
    for (const KnownOption& option : knownOptions) {
        if (option.kind == OptionKind::Value || option.kind == OptionKind::Number) {
            options.valueOptions.insert(option.name);
        } else if (option.kind == OptionKind::MultiValue) {
            options.multiValueOptions.insert(option.name);
        }
    }
}

bool Parser::parse(const Strings& argv) {
    if (argv.empty()) {
        return true;
    }
    Strings arguments;
    std::transform(argv.begin(), argv.end(), std::back_inserter(arguments), cString);
    try {
        scanVariable("ORVEX_TEST_ARGS", arguments[0]);
        options.parseTokens(arguments);
        scanVariable("_ORVEX_TEST_ARGS_", arguments[0]);
        readOptions();
        setTransportVariables();
        setProducerPath();
        fillRecord();
        setSessionVariables();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool Parser::parseWide(const std::vector<WideArgument>& argv) {
    Strings arguments;
    for (const WideArgument& argument : argv) {
        const char32_t* source = argument ? argument->c_str() : nullptr;
        const int size = utf8(source, nullptr, 0);
        if (size < 0) {
            return false;
        }
        std::string bytes(static_cast<std::size_t>(size), '\0');
        utf8(source, bytes.data(), size);
        arguments.push_back(bytes);
    }
    return parse(arguments);
}

bool Parser::parsePacked(const std::string& block, int argc) {
    if (argc < 0) {
        return false;
    }
    Strings argv;
    std::size_t position = 0;
    for (int i = 0; i < argc; ++i) {
        if (position >= block.size() || block[position] == '\0') {
            return false;
        }
        argv.push_back(cString(block.substr(position)));
        position += argv.back().size() + 1;
    }
    return parse(argv);
}

void Parser::scanVariable(const std::string& name, const std::string& programName) {
    const std::optional<std::string> text = lookUp(environment, name);
    if (!text) {
        return;
    }
    Strings tokens = splitArguments(*text);
    if (!tokens.empty()) {
        tokens.insert(tokens.begin(), cString(programName));
        options.parseTokens(tokens);
    }
}

void Parser::readOptions() {
    applicationName = options.positionals.empty() ? "" : options.positionals[0];
    const Strings helpSwitches = {"?", "h", "H", "help"};
    helpRequested = std::any_of(helpSwitches.begin(), helpSwitches.end(),
                                [this](const std::string& name) { return options.flags.count(name) != 0; });
    for (std::size_t i = 1; i < options.positionals.size(); ++i) {
        testPaths.push_back(options.positionals[i]);
    }
    waitBeforeExit = options.flags.count("w") != 0;
    outputFilename = options.getText("o");
    xmlFilename = options.getText("x");
    tlList = options.getJoinedValues("tl", ",");
}

bool Parser::setUnlessEmpty(const std::string& name, const std::string& value) {
    if (!value.empty() && refused.count(name) == 0) {
        environment[name] = cString(value);
    }
    return value.empty() || refused.count(name) == 0;
}

void Parser::setTransportVariables() {
    std::set<std::string> classes;
    std::set<std::string> drivers;
    Strings entries;
    splitString(tlList, ',', entries);
    for (const std::string& entry : entries) {
        Strings parts;
        splitString(entry, ':', parts);
        if (!parts.empty()) {
            classes.insert(parts[0]);
        }
        if (parts.size() >= 2 && parts[0] == "DravikGigE") {
            drivers.insert(parts[1]);
        }
    }
    std::string filter;
    for (const std::string& deviceClass : classes) {
        filter += (filter.empty() ? "DeviceClass=" : "||DeviceClass=") + deviceClass;
    }

    const std::string socketBuffer = options.getText("socketbuffer");
    requireNumber(socketBuffer);
    std::string parameters = drivers.empty() ? "" : "Type=" + *drivers.rbegin();
    if (!socketBuffer.empty()) {
        parameters += (parameters.empty() ? "SocketBufferSize=" : " SocketBufferSize=") + socketBuffer;
    }

    const bool isDefined = environment.count("ORVEX_GTC_USE_EXTRA_TL") != 0;
    require(isDefined || setUnlessEmpty("ORVEX_GTC_USE_EXTRA_TL", "1"));
    require(setUnlessEmpty("ORVEX_DEVICE_FILTER", filter));
    require(setUnlessEmpty("ORVEX_GIGE_STREAMPARAMS", parameters));
    for (const KnownOption& option : knownOptions) {
        const std::string name = option.name;
        if (option.kind == OptionKind::Number && name != "socketbuffer") {
            const std::string text = options.getText(name);
            requireNumber(text);
            require(setUnlessEmpty(option.sdkVariable, text.empty() && name == "packetsize" ? "8192" : text));
        }
    }
    require(setUnlessEmpty("TEST_PROPERTIES", options.getJoinedValues("p", " ")));
}

void Parser::setProducerPath() {
    // Anywhere in the list, not only as an entry of its own.
    if (tlList.find("DravikGTC") != std::string::npos) {
        const std::string libraries = applicationDir + "/Frameworks/orvex.framework/Libraries";
        const std::string path =
            libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:$(GENICAM_GENTL64_PATH)";
        setUnlessEmpty("GENICAM_GENTL64_PATH", expand(path, environment).second);
    }
}

void Parser::fillRecord() {
    record.group = "orvex";
    record.fixedZero = "0";
    for (const KnownOption& option : knownOptions) {
        for (const auto field : {option.field, option.secondField}) {
            const std::string text = field == nullptr ? "" : options.getText(option.name);
            if (!text.empty()) {
                record.*field = text;
            }
        }
    }
    record.transportLayers = tlList.empty() ? "any" : tlList;
}

void Parser::setSessionVariables() {
    for (const KnownOption& option : knownOptions) {
        if (option.sessionVariable != nullptr) {
            // A setting that fails neither stops the others nor changes the result.
            setUnlessEmpty(option.sessionVariable, options.getText(option.name));
        }
    }
}

std::string Parser::helpMessage(const std::string& name) const {
    const std::string head = name.empty() ? applicationName : name;
    return head + (head.empty() ? "" : " ") + usageText;
}

std::pair<int, std::string> Parser::recordBuffer() const {
    std::string bytes(4096, '\0');
    for (std::size_t slot = 0; slot < 16; ++slot) {
        const std::string& text = record.*recordFields[slot].field;
        if (text.size() >= 256) {
            return {0, bytes};
        }
        text.copy(&bytes[256 * slot], text.size());
    }
    return {1, bytes};
}

}  // namespace model
