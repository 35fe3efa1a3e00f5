#include "peer.h"

#include <gflags/gflags.h>
#include <cstddef>

// gflags keeps its options in global variables, so the measured parse constructs nothing. It keeps only the
// last value of an option, so the -tl and -p lists are lost.
DEFINE_string(o, "", "");
DEFINE_string(x, "", "");
DEFINE_string(camemu, "", "");
DEFINE_string(packetdelay, "", "");
DEFINE_string(packetsize, "", "");
DEFINE_string(socketbuffer, "", "");
DEFINE_string(testname, "", "");
DEFINE_string(pcname, "", "");
DEFINE_string(osname, "", "");
DEFINE_string(ostype, "", "");
DEFINE_string(bit, "", "");
DEFINE_string(tdc_dxml, "", "");
DEFINE_string(tdc_guid, "", "");
DEFINE_string(tdc_runname, "", "");
DEFINE_string(tdc_rundescription, "", "");
DEFINE_string(tdc_group, "", "");
DEFINE_string(tdc_userid, "", "");
DEFINE_string(tdc_product, "", "");
DEFINE_string(tdc_vcsbranch, "", "");
DEFINE_string(tdc_vcsrevision, "", "");
DEFINE_string(tl, "", "");
DEFINE_string(p, "", "");
DEFINE_bool(w, false, "");

namespace {

Found parse(int argc, char** argv) {
    FLAGS_w = false;
    const auto first = static_cast<int>(gflags::ParseCommandLineNonHelpFlags(&argc, &argv, false));
    return {FLAGS_tl.empty() ? 0U : 1U, static_cast<std::size_t>(argc - first), FLAGS_w};
}

[[maybe_unused]] const bool isRegistered = registerPeer("gflags", parse, 1);

}  // namespace
