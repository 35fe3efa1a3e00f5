#include "environment/producer_path.h"

#include "OrvexTestCommandLineParser.h"
#include "environment/environment_variables.h"
#include "environment/expand_references.h"

namespace orvex {

void exportProducerPath(const std::string& tlList) {
    // Not a comparison of entries: DravikGTCx and DravikGigE:DravikGTC ask for the producers as well.
    if (tlList.find("DravikGTC") == std::string::npos) {
        return;
    }
    const std::string libraries =
        OrvexTestCommandLineParser::getApplicationDir() + "/Frameworks/orvex.framework/Libraries";
    std::string path =
        libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:$(GENICAM_GENTL64_PATH)";
    // The directory is expanded along with the reference, so that a "%" in it is not taken literally.
    expandEnvironmentReferences(path);
    setEnvironmentVariable("GENICAM_GENTL64_PATH", path);
}

}  // namespace orvex
