#include "OrvexTestCommandLineParserC.h"

#include "OrvexTestCommandLineParser.h"
#include "capi/parser_instance.h"

#include <cstring>
#include <iterator>
#include <string>

namespace {

using orvex::getParserInstance;

// The field of each slot of the caller's buffer.
constexpr std::string TestRunInformation::*slotFields[] = {
    &TestRunInformation::group,
    &TestRunInformation::guid,
    &TestRunInformation::runName,
    &TestRunInformation::runDescription,
    &TestRunInformation::product,
    &TestRunInformation::fixedZero,
    &TestRunInformation::userId,
    &TestRunInformation::vcsRevision,
    &TestRunInformation::vcsBranch,
    &TestRunInformation::secondVcsRevision,
    &TestRunInformation::secondVcsBranch,
    &TestRunInformation::pcName,
    &TestRunInformation::osName,
    &TestRunInformation::transportLayers,
    &TestRunInformation::tdcDravikXmlFilename,
    &TestRunInformation::testName,
};
static_assert(std::size(slotFields) * ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE ==
              ORVEX_TEST_RUN_INFORMATION_SIZE);

}  // namespace

namespace orvex {

OrvexTestCommandLineParser& getParserInstance() {
    static OrvexTestCommandLineParser instance;
    return instance;
}

}  // namespace orvex

int OrvexTestCommandLineParser_Parse(int argc, char** argv) {
    return getParserInstance().Parse(argc, argv) ? 1 : 0;
}

int OrvexTestCommandLineParser_ParseW(int argc, wchar_t** argv) {
    return getParserInstance().Parse(argc, argv) ? 1 : 0;
}

const char* OrvexTestCommandLineParser_GetApplicationName() {
    return getParserInstance().getApplicationName().c_str();
}

const char* OrvexTestCommandLineParser_GetXmlFilename() {
    return getParserInstance().getXmlFilename().c_str();
}

const char* OrvexTestCommandLineParser_GetOutputFilename() {
    return getParserInstance().getOutputFilename().c_str();
}

const char* OrvexTestCommandLineParser_GetTestPath() {
    return getParserInstance().getFirstTestPath().c_str();
}

int OrvexTestCommandLineParser_GetWaitBeforeExit() {
    return getParserInstance().waitBeforeExit() ? 1 : 0;
}

int OrvexTestCommandLineParser_GetHelpRequested() {
    return getParserInstance().helpRequested() ? 1 : 0;
}

size_t OrvexTestCommandLineParser_GetHelpMessage(const char* applicationName, char* buffer,
                                                 size_t bufferSize) {
    const OrvexTestCommandLineParser& parser = getParserInstance();
    const std::string text = parser.getHelpMessage(applicationName == nullptr ? "" : applicationName);
    if (buffer == nullptr || bufferSize <= text.size()) {
        return text.size() + 1;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return text.size();
}

int OrvexTestCommandLineParser_GetTestRunInformation(char* buffer) {
    if (buffer == nullptr) {
        return 0;
    }
    const TestRunInformation& information = getParserInstance().getTestRunInformation();
    std::memset(buffer, 0, ORVEX_TEST_RUN_INFORMATION_SIZE);
    char* slot = buffer;
    for (const auto field : slotFields) {
        const std::string& text = information.*field;
        if (text.size() >= ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE) {
            return 0;
        }
        std::memcpy(slot, text.c_str(), text.size() + 1);
        slot += ORVEX_TEST_RUN_INFORMATION_SLOT_SIZE;
    }
    return 1;
}
