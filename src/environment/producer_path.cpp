#include "environment/producer_path.h"
#include <string>

#include "environment/application_dir.h"
#include "environment/environment_variables.h"
#include "environment/expand_environment_references.h"

namespace orvex {

void exportProducerPath(const std::string& tlList) {
    // Not a comparison of entries: DravikGTCx and DravikGigE:DravikGTC ask for the producers as well.
    if (tlList.find("DravikGTC") == std::string::npos) {
        return;
    }
    const std::string libraries = getApplicationDir() + "/Frameworks/orvex.framework/Libraries";
    std::string path =
        libraries + "/gentlproducer/gtl:" + libraries + "/orvexCXP/bin:$(GENICAM_GENTL64_PATH)";
    // The path is expanded as a whole and holds the directory twice: a "%" in its name pairs with its copy.
    expandEnvironmentReferences(path);
    setEnvironmentVariable("GENICAM_GENTL64_PATH", path);
}

}  // namespace orvex
