// Finds the directory that the SDK is installed in.

#ifndef ORVEX_APPLICATION_DIR_H
#define ORVEX_APPLICATION_DIR_H

#include <string>

namespace orvex {

// Implements OrvexTestCommandLineParser::getApplicationDir; see there.
std::string getApplicationDir();

}  // namespace orvex

#endif
