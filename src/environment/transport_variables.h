// The variables that the SDK reads when a test opens cameras: device filter, stream parameters,
// camera emulation and free properties.

#ifndef ORVEX_TRANSPORT_VARIABLES_H
#define ORVEX_TRANSPORT_VARIABLES_H

#include <string>

namespace orvex {

// What the options ask for; an empty string means that the option has no value.
struct TransportOptions {
    const std::string& tlList;           // all -tl values, joined by ","
    const std::string& cameraEmulation;  // -camemu
    const std::string& packetDelay;      // -packetdelay
    const std::string& packetSize;       // -packetsize
    const std::string& socketBuffer;     // -socketbuffer
    const std::string& properties;       // all -p values, joined by " "
};

// Sets the variables. Checks and settings alternate in a fixed order, so that false (a number that does
// not begin with a digit, a variable that cannot be set) leaves all earlier variables set and all later
// ones alone. The socket buffer is checked before the first variable is set.
bool exportTransportVariables(const TransportOptions& options);

}  // namespace orvex

#endif
