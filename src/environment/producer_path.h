// Sets the search path for GenTL producers.

#ifndef ORVEX_PRODUCER_PATH_H
#define ORVEX_PRODUCER_PATH_H

#include <string>

namespace orvex {

// Puts the producer directories of the SDK that this library belongs to in front of
// GENICAM_GENTL64_PATH, if the transport layers contain "DravikGTC" anywhere. A failure to set the variable
// is ignored. Throws std::runtime_error if the SDK's directory cannot be found.
// tlList: all -tl values, joined by ",".
void exportProducerPath(const std::string& tlList);

}  // namespace orvex

#endif
