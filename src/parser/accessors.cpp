#include "OrvexTestCommandLineParser.h"

#include "environment/application_dir.h"

#include <string>
#include <vector>

const std::string& OrvexTestCommandLineParser::getApplicationName() const noexcept {
    return applicationName;
}

const std::string& OrvexTestCommandLineParser::getXmlFilename() const noexcept {
    return xmlFilename;
}

const std::string& OrvexTestCommandLineParser::getOutputFilename() const noexcept {
    return outputFilename;
}

const std::vector<std::string>& OrvexTestCommandLineParser::getTestPaths() const noexcept {
    return testPaths;
}

const std::string& OrvexTestCommandLineParser::getFirstTestPath() const noexcept {
    static const std::string noTestPath;
    return testPaths.empty() ? noTestPath : testPaths.front();
}

const std::string& OrvexTestCommandLineParser::getTlList() const noexcept {
    return tlList;
}

bool OrvexTestCommandLineParser::helpRequested() const noexcept {
    return helpRequestedFlag;
}

bool OrvexTestCommandLineParser::waitBeforeExit() const noexcept {
    return waitBeforeExitFlag;
}

const TestRunInformation& OrvexTestCommandLineParser::getTestRunInformation() const noexcept {
    return testRunInformation;
}

const std::string& OrvexTestCommandLineParser::getTdcDravikXmlFilename() const noexcept {
    return testRunInformation.tdcDravikXmlFilename;
}

std::string OrvexTestCommandLineParser::getApplicationDir() {
    return orvex::getApplicationDir();
}
