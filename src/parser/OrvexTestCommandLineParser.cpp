#include "OrvexTestCommandLineParser.h"

#include "environment/environment_variables.h"
#include "environment/producer_path.h"
#include "environment/transport_variables.h"
#include "parser/argument_tokenizer.h"
#include "testrun/session_variables.h"
#include "testrun/test_run_information.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace {

constexpr const char* helpSwitches[] = {"?", "h", "H", "help"};

}  // namespace

OrvexTestCommandLineParser::OrvexTestCommandLineParser() : options(OptionRegistry::UnknownAsFlag) {
    // The help and wait switches must stay unregistered to be flags. tdc_variant stays unregistered, too:
    // it is accepted only as name=value.
    options.addValueOptions({"camemu",    "o",          "packetdelay", "packetsize",    "socketbuffer",
                             "x",         "testname",   "pcname",      "osname",        "ostype",
                             "bit",       "tdc_dxml",   "tdc_guid",    "tdc_runname",   "tdc_rundescription",
                             "tdc_group", "tdc_userid", "tdc_product", "tdc_vcsbranch", "tdc_vcsrevision"});
    options.addMultiValueOptions({"tl", "p"});
}

OrvexTestCommandLineParser::~OrvexTestCommandLineParser() = default;

bool OrvexTestCommandLineParser::Parse(int argc, char** argv) noexcept {
    if (argc == 0) {
        return true;
    }
    try {
        if (argc < 0) {
            throw std::invalid_argument("argc must be at least 1");
        }
        if (argv == nullptr) {
            throw std::invalid_argument("argv must be valid");
        }

        ParseArgsFromEnvironmentVariable("ORVEX_TEST_ARGS", argv[0]);
        options.parseArgv(argc, argv);
        ParseArgsFromEnvironmentVariable("_ORVEX_TEST_ARGS_", argv[0]);

        applicationName = options.getPositional(0);
        helpRequestedFlag = std::any_of(std::begin(helpSwitches), std::end(helpSwitches),
                                        [this](const char* name) { return options.hasOption(name); });
        // insert(range) has no strong guarantee: bad_alloc could lose existing paths.
        for (std::size_t i = 1; i < options.getPositionals().size(); ++i) {
            testPaths.push_back(options.getPositional(i));
        }
        waitBeforeExitFlag = options.hasOption("w");
        outputFilename = options.getSingleValue("o");
        xmlFilename = options.getSingleValue("x");
        tlList = options.getJoinedValues("tl", ",");

        if (!orvex::exportTransportVariables(options, tlList)) {
            return false;
        }
        orvex::exportProducerPath(tlList);
        orvex::fillTestRunInformation(options, tlList, testRunInformation);
        orvex::exportSessionVariables(options);
        return true;
    } catch (const std::exception&) {
        return false;
    } catch (...) {
        // g++ 12 at -O0 lets an exception with no matching handler escape noexcept.
        std::terminate();  // GCOVR_EXCL_LINE: the counts are lost with the process
    }
}

void OrvexTestCommandLineParser::ParseArgsFromEnvironmentVariable(const char* variableName,
                                                                  const char* programName) {
    if (variableName == nullptr || *variableName == '\0') {
        return;
    }
    std::string text;
    if (!orvex::getEnvironmentVariable(variableName, text)) {
        return;
    }
    std::vector<std::string> tokens;
    orvex::splitArgumentString(text, tokens);
    if (tokens.empty()) {
        return;
    }
    tokens.insert(tokens.begin(), programName);
    options.parseTokens(tokens);
}
