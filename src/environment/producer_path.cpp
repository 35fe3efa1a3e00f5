#include "environment/producer_path.h"

#include "environment/application_dir.h"
#include "environment/environment_variables.h"
#include "environment/expand_environment_references.h"

#include <string>

namespace orvex {

void exportProducerPath(const std::string& tlList) {
    // A substring match on purpose: DravikGTCx and DravikGigE:DravikGTC match too.
    if (tlList.find("DravikGTC") == std::string::npos) {
        return;
    }
    const std::string libraries = getApplicationDir() + "/Frameworks/orvex.framework/Libraries";
    std::string path =
        libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:$(GENICAM_GENTL64_PATH)";
    // The directory itself is expanded too, and occurs twice: a single "%" in it pairs with the one in the
    // second copy.
    expandEnvironmentReferences(path);
    setEnvironmentVariable("GENICAM_GENTL64_PATH", path);
}

}  // namespace orvex
