#include "environment/transport_variables.h"

#include "OrvexTestCommandLineParser.h"
#include "environment/environment_variables.h"
#include "environment/split_string.h"

#include <set>
#include <string>
#include <vector>

namespace orvex {
namespace {

constexpr const char* defaultPacketSize = "8192";

struct RequestedDevices {
    std::set<std::string> classes;
    std::set<std::string> gigeDrivers;
};

RequestedDevices readTransportLayers(const std::string& tlList) {
    RequestedDevices devices;
    std::vector<std::string> entries;
    std::vector<std::string> parts;
    splitString(tlList.c_str(), ',', entries);
    for (const std::string& entry : entries) {
        parts.clear();
        splitString(entry.c_str(), ':', parts);
        if (!parts.empty()) {
            devices.classes.insert(parts[0]);
        }
        if (parts.size() >= 2 && parts[0] == "DravikGigE") {
            devices.gigeDrivers.insert(parts[1]);
        }
    }
    return devices;
}

std::string composeDeviceFilter(const std::set<std::string>& classes) {
    std::string filter;
    for (const std::string& deviceClass : classes) {
        if (!filter.empty()) {
            filter += "||";
        }
        filter += "DeviceClass=";
        filter += deviceClass;
    }
    return filter;
}

// Not isdigit, which is undefined for negative char values.
bool startsWithDigit(const std::string& text) {
    return text[0] >= '0' && text[0] <= '9';
}

bool exportUnlessEmpty(const char* name, const std::string& value) {
    return value.empty() || setEnvironmentVariable(name, value);
}

bool exportNumberUnlessEmpty(const char* name, const std::string& value) {
    return value.empty() || (startsWithDigit(value) && setEnvironmentVariable(name, value));
}

bool defineExtraTransportLayer() {
    constexpr const char* name = "ORVEX_GTC_USE_EXTRA_TL";
    std::string ignored;
    if (getEnvironmentVariable(name, ignored)) {
        return true;
    }
    return setEnvironmentVariable(name, "1");
}

}  // namespace

bool exportTransportVariables(const OptionRegistry& options, const std::string& tlList) {
    const std::string properties = options.getJoinedValues("p", " ");
    const RequestedDevices devices = readTransportLayers(tlList);
    const std::string deviceFilter = composeDeviceFilter(devices.classes);

    std::string streamParameters;
    if (!devices.gigeDrivers.empty()) {
        // The SDK accepts one driver; if several are requested, the last in byte order wins.
        streamParameters = "Type=" + *devices.gigeDrivers.rbegin();
    }
    const std::string& socketBuffer = options.getSingleValue("socketbuffer");
    if (!socketBuffer.empty()) {
        if (!startsWithDigit(socketBuffer)) {
            return false;
        }
        if (!streamParameters.empty()) {
            streamParameters += ' ';
        }
        streamParameters += "SocketBufferSize=";
        streamParameters += socketBuffer;
    }
    std::string packetSize = options.getSingleValue("packetsize");
    if (packetSize.empty()) {
        packetSize = defaultPacketSize;
    }

    return defineExtraTransportLayer() && exportUnlessEmpty("ORVEX_DEVICE_FILTER", deviceFilter) &&
           exportUnlessEmpty("ORVEX_GIGE_STREAMPARAMS", streamParameters) &&
           exportNumberUnlessEmpty("ORVEX_GIGE_STREAM_GEVSCPS", packetSize) &&
           exportNumberUnlessEmpty("ORVEX_GIGE_STREAM_GEVSCPD", options.getSingleValue("packetdelay")) &&
           exportNumberUnlessEmpty("ORVEX_CAMEMU", options.getSingleValue("camemu")) &&
           exportUnlessEmpty("TEST_PROPERTIES", properties);
}

}  // namespace orvex
