#include "model.h"

#include <algorithm>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace model {

// ---- environment -------------------------------------------------------------------------------------

namespace {

// The text as a reader of a NUL-terminated string sees it.
std::string cString(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

bool startsWith(const std::string& text, const std::string& beginning) {
    return text.compare(0, beginning.size(), beginning) == 0;
}

}  // namespace

std::optional<std::string> lookUp(const Environment& environment, const std::string& name) {
    const std::string key = cString(name);
    if (key.empty()) {
        return std::nullopt;
    }
    const auto found = environment.find(key);
    if (found != environment.end()) {
        return cString(found->second);
    }
    const std::size_t equals = key.find('=');
    if (equals == std::string::npos) {
        return std::nullopt;
    }
    const auto shorter = environment.find(key.substr(0, equals));
    if (shorter == environment.end()) {
        return std::nullopt;
    }
    const std::string value = cString(shorter->second);
    const std::string beginning = key.substr(equals + 1) + "=";
    if (!startsWith(value, beginning)) {
        return std::nullopt;
    }
    return value.substr(beginning.size());
}

const std::vector<std::string>& writtenVariables() {
    static const std::vector<std::string> names = {
        "ORVEX_GTC_USE_EXTRA_TL",
        "ORVEX_DEVICE_FILTER",
        "ORVEX_GIGE_STREAMPARAMS",
        "ORVEX_GIGE_STREAM_GEVSCPS",
        "ORVEX_GIGE_STREAM_GEVSCPD",
        "ORVEX_CAMEMU",
        "TEST_PROPERTIES",
        "GENICAM_GENTL64_PATH",
        "TEST_SESSION_GUID",
        "TEST_SESSION_NAME",
        "TEST_SESSION_DESCRIPTION",
        "TEST_SESSION_GROUP",
        "TEST_PRODUCT",
        "TEST_PRODUCT_VARIANT",
        "USER_UID",
        "VCS_REVISION",
        "VCS_BRANCH",
        "TRANSPORT_LAYER",
    };
    return names;
}

// ---- option registry ---------------------------------------------------------------------------------

std::string trimLeadingDashes(const std::string& text) {
    const std::size_t first = text.find_first_not_of('-');
    if (first == std::string::npos) {
        return text;
    }
    return text.substr(first);
}

bool isNumber(const std::string& token) {
    std::istringstream stream(token);
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return (stream.rdstate() & (std::ios::failbit | std::ios::badbit)) == 0;
}

bool isOptionToken(const std::string& token) {
    // Both conditions must hold; the cheap one is asked first.
    return !token.empty() && token[0] == '-' && !isNumber(token);
}

Registry::Registry(std::uint32_t modeWord) : mode(modeWord) {}

void Registry::addValueOptions(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        valueOptions.insert(trimLeadingDashes(name));
    }
}

void Registry::addMultiValueOptions(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        multiValueOptions.insert(trimLeadingDashes(name));
    }
}

void Registry::parseArgv(const std::vector<std::string>& argv) {
    parseTokens(argv);
}

void Registry::parseTokens(const std::vector<std::string>& tokens) {
    std::size_t i = 0;
    while (i < tokens.size()) {
        const std::string& token = tokens[i];

        // A positional argument. The program name in front of a list enters only an empty list.
        if (!isOptionToken(token)) {
            const bool repeatedProgramName = i == 0 && !positionals.empty();
            if (!repeatedProgramName) {
                positionals.push_back(token);
            }
            i += 1;
            continue;
        }

        std::string name = trimLeadingDashes(token);

        // name=value in one token.
        if (!hasMode(noInlineValue)) {
            const std::size_t equals = name.find('=');
            if (equals != std::string::npos) {
                const std::string key = name.substr(0, equals);
                const std::string value = name.substr(equals + 1);
                if (isMultiValueOption(key)) {
                    multiValues[key].push_back(value);
                } else {
                    values[key] = value;
                }
                i += 1;
                continue;
            }
        }

        // A group of one-letter flags, of which the last may be an option that takes a value.
        const bool oneDash = token.size() == name.size() + 1;
        if (hasMode(groupedShortFlags) && oneDash && !isValueOption(name)) {
            std::string letters = name;
            std::string kept;
            if (!letters.empty() && isValueOption(letters.substr(letters.size() - 1))) {
                kept = letters.substr(letters.size() - 1);
                letters.erase(letters.size() - 1);
            }
            for (const char letter : letters) {
                flags.insert(std::string(1, letter));
            }
            if (kept.empty()) {
                i += 1;
                continue;
            }
            name = kept;
        }

        // Nothing follows that could be a value.
        const bool last = i + 1 == tokens.size();
        if (last || isOptionToken(tokens[i + 1])) {
            flags.insert(name);
            i += 1;
            continue;
        }

        const std::string& next = tokens[i + 1];
        if (isMultiValueOption(name)) {
            multiValues[name].push_back(next);
            i += 2;
        } else if (isValueOption(name) || hasMode(unknownTakesValue)) {
            values[name] = next;
            i += 2;
        } else {
            flags.insert(name);
            i += 1;
        }
    }
}

bool Registry::hasOption(const std::string& name) const {
    return flags.find(trimLeadingDashes(name)) != flags.end();
}

std::optional<std::string> Registry::getValue(const std::string& name) const {
    const std::string key = trimLeadingDashes(name);
    if (isMultiValueOption(key)) {
        return getJoinedValues(key, " ");
    }
    const auto found = values.find(key);
    if (found != values.end()) {
        return found->second;
    }
    return std::nullopt;
}

std::string Registry::getText(const std::string& name) const {
    return getValue(name).value_or("");
}

std::string Registry::getJoinedValues(const std::string& name, const std::string& separator) const {
    const auto found = multiValues.find(trimLeadingDashes(name));
    std::string joined;
    if (found != multiValues.end()) {
        bool first = true;
        for (const std::string& value : found->second) {
            if (!first) {
                joined += separator;
            }
            joined += value;
            first = false;
        }
    }
    return joined;
}

const std::string& Registry::getPositional(std::size_t index) const {
    return index < positionals.size() ? positionals[index] : emptyValue;
}

const std::vector<std::string>& Registry::getPositionals() const {
    return positionals;
}

bool Registry::isValueOption(const std::string& name) const {
    return valueOptions.count(trimLeadingDashes(name)) != 0;
}

bool Registry::isMultiValueOption(const std::string& name) const {
    return multiValueOptions.count(trimLeadingDashes(name)) != 0;
}

bool Registry::hasMode(std::uint32_t bit) const {
    return (mode & bit) != 0;
}

// ---- arguments in one text ---------------------------------------------------------------------------

std::optional<std::vector<std::string>> splitArguments(const std::string& text, std::string& error) {
    enum class State { BetweenTokens, InToken, InQuote };
    std::vector<std::string> tokens;
    std::string token;
    State state = State::BetweenTokens;
    char quote = 0;

    std::size_t i = 0;
    while (i < text.size()) {
        const char byte = text[i];
        i += 1;

        const bool separator = byte == ' ' || byte == '\t';
        if (separator && state != State::InQuote) {
            if (state == State::InToken) {
                tokens.push_back(token);
                state = State::BetweenTokens;
            }
            continue;
        }

        if (state == State::BetweenTokens) {
            token.clear();
            state = State::InToken;
        }

        if (byte == '\\') {
            // The next byte is taken as it stands. At the end of the text there is none, and the
            // backslash itself is kept; this is no error.
            if (i < text.size()) {
                token += text[i];
                i += 1;
            } else {
                token += '\\';
            }
        } else if (state == State::InQuote) {
            if (byte == quote) {
                state = State::InToken;
            } else {
                token += byte;
            }
        } else if (byte == '"' || byte == '\'') {
            quote = byte;
            state = State::InQuote;
        } else {
            token += byte;
        }
    }

    if (state == State::InQuote) {
        error = "Starting quote has no ending quote.";
        return std::nullopt;
    }
    if (state == State::InToken) {
        tokens.push_back(token);
    }
    return tokens;
}

// ---- splitting at a delimiter ------------------------------------------------------------------------

bool splitString(const char* text, char delimiter, std::vector<std::string>& parts) {
    if (text == nullptr || delimiter == '\0' || *text == '\0') {
        return false;
    }
    std::string part;
    for (const char* position = text; *position != '\0'; ++position) {
        if (*position == delimiter) {
            parts.push_back(part);
            part.clear();
        } else {
            part += *position;
        }
    }
    // What follows the last delimiter counts only when there is something.
    if (!part.empty()) {
        parts.push_back(part);
    }
    return true;
}

// ---- references in a text ----------------------------------------------------------------------------

std::pair<int, std::string> expand(const std::string& text, const Environment& environment) {
    if (text.find_first_of("$%") == std::string::npos) {
        return {0, text};
    }
    if (text.size() == 1) {
        return text == "%" ? std::make_pair(1, std::string("%%")) : std::make_pair(0, text);
    }
    if (text.size() == 2) {
        const bool firstPercent = text[0] == '%';
        const bool secondPercent = text[1] == '%';
        if (firstPercent == secondPercent) {
            return {0, text};
        }
        return {1, std::string() + text[0] + '%' + text[1]};
    }

    const std::string input = cString(text);
    const std::size_t none = std::string::npos;
    // Looked up once, so that many "$(" without an end do not search the rest of the text each.
    const std::size_t lastClosing = input.rfind(')');
    std::string output;
    int count = 0;
    std::size_t i = 0;
    while (i < input.size()) {
        const char byte = input[i];
        const char next = i + 1 < input.size() ? input[i + 1] : '\0';

        if (byte == '$' && next == '$') {
            output += '$';
            i += 2;
        } else if (byte == '$' && next == '(') {
            const std::size_t nameBegin = i + 2;
            std::size_t nameEnd = none;
            if (lastClosing != none && lastClosing >= nameBegin) {
                nameEnd = input.find(')', nameBegin);
            }
            if (nameEnd == none || nameEnd == nameBegin) {
                output += '$';
                i += 1;
            } else {
                output += lookUp(environment, input.substr(nameBegin, nameEnd - nameBegin)).value_or("");
                count += 1;
                i = nameEnd + 1;
            }
        } else if (byte == '%') {
            const std::size_t nameBegin = i + 1;
            const std::size_t nameEnd = input.find('%', nameBegin);
            if (nameEnd == none) {
                output += "%%";
                i += 1;
            } else if (nameEnd == nameBegin) {
                output += "%%";
                i += 2;
            } else {
                output += lookUp(environment, input.substr(nameBegin, nameEnd - nameBegin)).value_or("");
                count += 1;
                i = nameEnd + 1;
            }
        } else {
            output += byte;
            i += 1;
        }
    }
    return {count, output};
}

// ---- wide text ---------------------------------------------------------------------------------------

int utf8(const char32_t* source, char* destination, int destinationSize) {
    if (source == nullptr || destinationSize < 0) {
        return -1;
    }
    const long long size = destination == nullptr ? 0 : destinationSize;
    long long left = size;
    for (const char32_t* position = source;; ++position) {
        const std::uint32_t c = *position;
        std::string sequence;
        if (c < 0x80) {
            sequence += static_cast<char>(c);
        } else if (c < 0x800) {
            sequence += static_cast<char>(0xC0 + (c >> 6));
            sequence += static_cast<char>(0x80 + (c & 0x3F));
        } else if (c <= 0xFFFF) {
            sequence += static_cast<char>(0xE0 + (c >> 12));
            sequence += static_cast<char>(0x80 + ((c >> 6) & 0x3F));
            sequence += static_cast<char>(0x80 + (c & 0x3F));
        } else if (c <= 0x10FFFF) {
            sequence += static_cast<char>(0xF0 + (c >> 18));
            sequence += static_cast<char>(0x80 + ((c >> 12) & 0x3F));
            sequence += static_cast<char>(0x80 + ((c >> 6) & 0x3F));
            sequence += static_cast<char>(0x80 + (c & 0x3F));
        } else {
            return -2;
        }
        const auto length = static_cast<long long>(sequence.size());
        if (left > 0) {
            if (length > left) {
                return -2;
            }
            sequence.copy(destination + (size - left), sequence.size());
        }
        left -= length;
        if (c == 0) {
            return static_cast<int>(size - left);
        }
    }
}

// ---- transport layers --------------------------------------------------------------------------------

std::set<std::string> deviceClasses(const std::string& tlList) {
    std::set<std::string> classes;
    std::vector<std::string> entries;
    splitString(tlList.c_str(), ',', entries);
    for (const std::string& entry : entries) {
        std::vector<std::string> parts;
        splitString(entry.c_str(), ':', parts);
        if (!parts.empty()) {
            classes.insert(parts[0]);
        }
    }
    return classes;
}

std::set<std::string> driverTypes(const std::string& tlList) {
    std::set<std::string> types;
    std::vector<std::string> entries;
    splitString(tlList.c_str(), ',', entries);
    for (const std::string& entry : entries) {
        std::vector<std::string> parts;
        splitString(entry.c_str(), ':', parts);
        if (parts.size() >= 2 && parts[0] == "DravikGigE") {
            types.insert(parts[1]);
        }
    }
    return types;
}

std::string deviceFilter(const std::string& tlList) {
    std::string filter;
    for (const std::string& deviceClass : deviceClasses(tlList)) {
        if (!filter.empty()) {
            filter += "||";
        }
        filter += "DeviceClass=" + deviceClass;
    }
    return filter;
}

std::string streamParameters(const std::string& tlList, const std::string& socketBuffer) {
    std::string parameters;
    for (const std::string& type : driverTypes(tlList)) {
        // Each type replaces the one before; the last in order stays.
        parameters = "Type=" + type;
    }
    if (!socketBuffer.empty()) {
        if (!parameters.empty()) {
            parameters += " ";
        }
        parameters += "SocketBufferSize=" + socketBuffer;
    }
    return parameters;
}

bool startsWithDigit(const std::string& text) {
    return !text.empty() && text[0] >= '0' && text[0] <= '9';
}

// ---- producer path -----------------------------------------------------------------------------------

std::string applicationDirOf(const std::string& libraryFile) {
    // The file and four directories, then one more component by the final cut. Above the root there is
    // nothing, and the cut of the root itself leaves the empty text.
    std::string path = libraryFile;
    for (int level = 0; level < 6; ++level) {
        const std::size_t slash = path.rfind('/');
        path = slash == std::string::npos ? "" : path.substr(0, slash);
    }
    return path;
}

std::string producerPathText(const std::string& applicationDir) {
    const std::string libraries = applicationDir + "/Frameworks/orvex.framework/Libraries";
    return libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:$(GENICAM_GENTL64_PATH)";
}

std::string producerPath(const std::string& applicationDir, const Environment& environment) {
    return expand(producerPathText(applicationDir), environment).second;
}

// ---- test run record ---------------------------------------------------------------------------------

const std::array<Record::Field, 18>& Record::fields() {
    static const std::array<Field, 18> all = {{
        {"group", &Record::group},
        {"guid", &Record::guid},
        {"runName", &Record::runName},
        {"runDescription", &Record::runDescription},
        {"product", &Record::product},
        {"fixedZero", &Record::fixedZero},
        {"userId", &Record::userId},
        {"vcsRevision", &Record::vcsRevision},
        {"vcsBranch", &Record::vcsBranch},
        {"secondVcsRevision", &Record::secondVcsRevision},
        {"secondVcsBranch", &Record::secondVcsBranch},
        {"pcName", &Record::pcName},
        {"osName", &Record::osName},
        {"transportLayers", &Record::transportLayers},
        {"tdcDravikXmlFilename", &Record::tdcDravikXmlFilename},
        {"testName", &Record::testName},
        {"osType", &Record::osType},
        {"bit", &Record::bit},
    }};
    return all;
}

std::vector<std::pair<std::string, std::string>> Record::entries() const {
    std::vector<std::pair<std::string, std::string>> result;
    for (const Field& field : fields()) {
        result.emplace_back(field.name, this->*field.member);
    }
    return result;
}

bool Record::operator==(const Record& other) const {
    return entries() == other.entries();
}

bool Record::operator!=(const Record& other) const {
    return !(*this == other);
}

// ---- parser ------------------------------------------------------------------------------------------

Parser::Parser(Environment& environment, std::optional<std::string> applicationDir)
    : environment_(environment), applicationDir_(std::move(applicationDir)), options_(unknownAsFlag) {
    options_.addValueOptions({"camemu", "o", "packetdelay", "packetsize", "socketbuffer", "x", "testname",
                              "pcname", "osname", "ostype", "bit"});
    options_.addMultiValueOptions({"tl", "p"});
    options_.addValueOptions({"tdc_dxml", "tdc_guid", "tdc_runname", "tdc_rundescription", "tdc_group",
                              "tdc_userid", "tdc_product", "tdc_vcsbranch", "tdc_vcsrevision"});
}

bool Parser::setVariable(const std::string& name, const std::string& value) {
    if (failSetting && failSetting(name)) {
        return false;
    }
    environment_[name] = cString(value);
    return true;
}

bool Parser::parse(const std::vector<std::string>& argv) {
    if (argv.empty()) {
        return true;
    }
    std::vector<std::string> arguments;
    arguments.reserve(argv.size());
    for (const std::string& argument : argv) {
        arguments.push_back(cString(argument));
    }
    try {
        bool result = false;
        parseBody(arguments, result);
        return result;
    } catch (const std::exception&) {
        return false;
    }
}

bool Parser::parseNullArgv(int argc) {
    return argc == 0;
}

bool Parser::parseWide(const std::vector<std::u32string>& argv) {
    return parseWideWithNulls({argv.begin(), argv.end()});
}

bool Parser::parseWideWithNulls(const std::vector<std::optional<std::u32string>>& argv) {
    std::vector<std::string> narrow;
    for (const std::optional<std::u32string>& argument : argv) {
        const char32_t* source = argument ? argument->c_str() : nullptr;
        const int size = utf8(source, nullptr, 0);
        if (size < 0) {
            return false;
        }
        std::string bytes(static_cast<std::size_t>(size), '\0');
        utf8(source, bytes.data(), size);
        // Without the terminator, which the count includes.
        bytes.erase(bytes.size() - 1);
        narrow.push_back(bytes);
    }
    return parse(narrow);
}

bool Parser::parseNullWide(int argc) {
    return argc == 0;
}

bool Parser::parsePacked(const std::string& block, int argc) {
    if (argc < 0) {
        return false;
    }
    std::vector<std::string> argv;
    std::size_t position = 0;
    for (int i = 0; i < argc; ++i) {
        if (position >= block.size() || block[position] == '\0') {
            return false;
        }
        const std::size_t end = std::min(block.find('\0', position), block.size());
        argv.push_back(block.substr(position, end - position));
        position = end + 1;
    }
    return parse(argv);
}

void Parser::parseArgsFromEnvironmentVariable(const std::string& variableName,
                                              const std::string& programName) {
    const std::optional<std::string> text = lookUp(environment_, variableName);
    if (!text) {
        return;
    }
    std::string error;
    std::optional<std::vector<std::string>> tokens = splitArguments(*text, error);
    if (!tokens) {
        throw std::runtime_error(error);
    }
    if (tokens->empty()) {
        return;
    }
    tokens->insert(tokens->begin(), cString(programName));
    options_.parseTokens(*tokens);
}

void Parser::parseBody(const std::vector<std::string>& argv, bool& result) {
    parseArgsFromEnvironmentVariable("ORVEX_TEST_ARGS", argv[0]);
    options_.parseArgv(argv);
    parseArgsFromEnvironmentVariable("_ORVEX_TEST_ARGS_", argv[0]);

    applicationName_ = options_.getPositional(0);
    helpRequested_ = options_.hasOption("?") || options_.hasOption("h") || options_.hasOption("H") ||
                     options_.hasOption("help");
    for (std::size_t i = 1; i < options_.getPositionals().size(); ++i) {
        testPaths_.push_back(options_.getPositionals()[i]);
    }
    waitBeforeExit_ = options_.hasOption("w");
    outputFilename_ = options_.getText("o");
    xmlFilename_ = options_.getText("x");
    tlList_ = options_.getJoinedValues("tl", ",");

    if (!setTransportVariables(options_.getText("camemu"), options_.getText("packetdelay"),
                               options_.getText("packetsize"), options_.getText("socketbuffer"),
                               options_.getJoinedValues("p", " "))) {
        result = false;
        return;
    }
    setProducerPath();
    fillRecord();
    exportSession();
    result = true;
}

bool Parser::setTransportVariables(const std::string& cameras, const std::string& packetDelay,
                                   std::string packetSize, const std::string& socketBuffer,
                                   const std::string& properties) {
    const std::string filter = deviceFilter(tlList_);
    if (packetSize.empty()) {
        packetSize = "8192";
    }
    if (!socketBuffer.empty() && !startsWithDigit(socketBuffer)) {
        return false;
    }
    const std::string parameters = streamParameters(tlList_, socketBuffer);

    if (!lookUp(environment_, "ORVEX_GTC_USE_EXTRA_TL")) {
        if (!setVariable("ORVEX_GTC_USE_EXTRA_TL", "1")) {
            return false;
        }
    }
    if (!filter.empty()) {
        if (!setVariable("ORVEX_DEVICE_FILTER", filter)) {
            return false;
        }
    }
    if (!parameters.empty()) {
        if (!setVariable("ORVEX_GIGE_STREAMPARAMS", parameters)) {
            return false;
        }
    }
    if (!startsWithDigit(packetSize) || !setVariable("ORVEX_GIGE_STREAM_GEVSCPS", packetSize)) {
        return false;
    }
    if (!packetDelay.empty()) {
        if (!startsWithDigit(packetDelay) || !setVariable("ORVEX_GIGE_STREAM_GEVSCPD", packetDelay)) {
            return false;
        }
    }
    if (!cameras.empty()) {
        if (!startsWithDigit(cameras) || !setVariable("ORVEX_CAMEMU", cameras)) {
            return false;
        }
    }
    if (!properties.empty()) {
        if (!setVariable("TEST_PROPERTIES", properties)) {
            return false;
        }
    }
    return true;
}

void Parser::setProducerPath() {
    // Anywhere in the list, not only as an entry of its own.
    if (tlList_.find("DravikGTC") == std::string::npos) {
        return;
    }
    if (!applicationDir_) {
        throw std::runtime_error("no application directory");
    }
    // Whether the setting succeeds does not matter here.
    setVariable("GENICAM_GENTL64_PATH", producerPath(*applicationDir_, environment_));
}

void Parser::fillRecord() {
    static const std::vector<std::pair<const char*, std::string Record::*>> sources = {
        {"tdc_guid", &Record::guid},
        {"tdc_runname", &Record::runName},
        {"tdc_rundescription", &Record::runDescription},
        {"tdc_group", &Record::group},
        {"tdc_userid", &Record::userId},
        {"tdc_product", &Record::product},
        {"tdc_vcsbranch", &Record::vcsBranch},
        {"tdc_vcsrevision", &Record::vcsRevision},
        {"tdc_vcsbranch", &Record::secondVcsBranch},
        {"tdc_vcsrevision", &Record::secondVcsRevision},
        {"tdc_dxml", &Record::tdcDravikXmlFilename},
        {"testname", &Record::testName},
        {"pcname", &Record::pcName},
        {"osname", &Record::osName},
        {"ostype", &Record::osType},
        {"bit", &Record::bit},
    };
    record_.group = "orvex";
    record_.fixedZero = "0";
    for (const auto& [option, member] : sources) {
        const std::string text = options_.getText(option);
        if (!text.empty()) {
            record_.*member = text;
        }
    }
    record_.transportLayers = tlList_.empty() ? "any" : tlList_;
}

void Parser::exportSession() {
    static const std::vector<std::pair<const char*, const char*>> rows = {
        {"tdc_guid", "TEST_SESSION_GUID"},
        {"tdc_runname", "TEST_SESSION_NAME"},
        {"tdc_rundescription", "TEST_SESSION_DESCRIPTION"},
        {"tdc_group", "TEST_SESSION_GROUP"},
        {"tdc_product", "TEST_PRODUCT"},
        {"tdc_variant", "TEST_PRODUCT_VARIANT"},
        {"tdc_userid", "USER_UID"},
        {"tdc_vcsrevision", "VCS_REVISION"},
        {"tdc_vcsbranch", "VCS_BRANCH"},
        {"tl", "TRANSPORT_LAYER"},
    };
    for (const auto& [option, variable] : rows) {
        const std::string text = options_.getText(option);
        if (!text.empty()) {
            // A failed setting neither stops the others nor changes the result.
            setVariable(variable, text);
        }
    }
}

const std::string& Parser::applicationName() const {
    return applicationName_;
}

const std::string& Parser::xmlFilename() const {
    return xmlFilename_;
}

const std::string& Parser::outputFilename() const {
    return outputFilename_;
}

const std::vector<std::string>& Parser::testPaths() const {
    return testPaths_;
}

const std::string& Parser::firstTestPath() const {
    static const std::string empty;
    return testPaths_.empty() ? empty : testPaths_[0];
}

const std::string& Parser::tlList() const {
    return tlList_;
}

bool Parser::helpRequested() const {
    return helpRequested_;
}

bool Parser::waitBeforeExit() const {
    return waitBeforeExit_;
}

const Record& Parser::record() const {
    return record_;
}

const std::string& Parser::tdcDravikXmlFilename() const {
    return record_.tdcDravikXmlFilename;
}

const Registry& Parser::registry() const {
    return options_;
}

std::string Parser::helpMessage(const std::string& name) const {
    std::string text = name.empty() ? applicationName_ : name;
    if (!text.empty()) {
        text += " ";
    }
    text +=
        "[-?] [-camemu n] [-o filename] [-p <property=value>...] [-packetdelay n] [-packetsize <n>] "
        "[-socketbuffer <n>] [-tl <deviceclass>...] [-w] [-x <filename>] [<testpath>...]\n";
    text += "Additional TDC parameters:\n";
    text +=
        "[-tdc_dxml <filename>] [-tdc_guid <guid>]  [-tdc_name <name>] [-tdc_runname <runname>] "
        "[-tdc_pcname <pcname>] [-tdc_osname <osname>] [-tdc_rundescription <description>] "
        "[-tdc_group <group>] [-tdc_userid <user defined id>] [-tdc_product <product name>] "
        "[-tdc_vcsbranch <branchname>] [-tdc_vcsrevision <githash>]\n\n";
    text +=
        "<deviceclass> := Any valid DeviceClass string. When using DravikGigE you can also append the "
        "driver type (i.e.: DravikGigE:SocketDriver or DravikGigE:WindowsFilterDriver)\n";
    text +=
        "<testpath>    := Testsuite or testcase to run in <classname>[::<methodname>] format (i.e "
        "TestSuiteUsb or TestSuiteGigE::DynamicHeartbeatTest)\n\n";
    text +=
        "The environment variables ORVEX_TEST_ARGS or _ORVEX_TEST_ARGS_ can be used to pass argument. "
        "The contents of ORVEX_TEST_ARGS will prepended to the arguments pased con the command line. "
        "The contents of _ORVEX_TEST_ARGS_ will appended to the arguments passed con the command line.";
    return text;
}

CBuffer Parser::cBuffer() const {
    CBuffer copy;
    copy.bytes.fill('\0');
    for (std::size_t slot = 0; slot < 16; ++slot) {
        const std::string& text = record_.*Record::fields()[slot].member;
        if (text.size() >= 256) {
            copy.result = 0;
            return copy;
        }
        text.copy(&copy.bytes[256 * slot], text.size());
    }
    copy.result = 1;
    return copy;
}

CHelp Parser::cHelpMessage(const std::optional<std::string>& name,
                           std::optional<std::size_t> bufferSize) const {
    const std::string text = helpMessage(cString(name.value_or("")));
    CHelp copy;
    copy.bytes.assign(bufferSize.value_or(0), static_cast<char>(0xAA));
    if (bufferSize && *bufferSize > text.size()) {
        text.copy(copy.bytes.data(), text.size());
        copy.bytes[text.size()] = '\0';
        copy.result = text.size();
    } else {
        copy.result = text.size() + 1;
    }
    return copy;
}

}  // namespace model
