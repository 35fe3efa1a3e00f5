#include "OrvexTestCommandLineParser.h"

#include <string>

namespace {

// Fixed byte for byte; apparent slips are intentional.
constexpr char usage[] =
    "[-?] [-camemu n] [-o filename] [-p <property=value>...] [-packetdelay n] [-packetsize <n>] "
    "[-socketbuffer <n>] [-tl <deviceclass>...] [-w] [-x <filename>] [<testpath>...]\n"
    "Additional TDC parameters:\n"
    "[-tdc_dxml <filename>] [-tdc_guid <guid>]  [-tdc_name <name>] [-tdc_runname <runname>] [-tdc_pcname "
    "<pcname>] [-tdc_osname <osname>] [-tdc_rundescription <description>] [-tdc_group <group>] "
    "[-tdc_userid <user defined id>] [-tdc_product <product name>] [-tdc_vcsbranch <branchname>] "
    "[-tdc_vcsrevision <githash>]\n\n"
    "<deviceclass> := Any valid DeviceClass string. When using DravikGigE you can also append the driver "
    "type (i.e.: DravikGigE:SocketDriver or DravikGigE:WindowsFilterDriver)\n"
    "<testpath>    := Testsuite or testcase to run in <classname>[::<methodname>] format (i.e "
    "TestSuiteUsb or TestSuiteGigE::DynamicHeartbeatTest)\n\n"
    "The environment variables ORVEX_TEST_ARGS or _ORVEX_TEST_ARGS_ can be used to pass argument. The "
    "contents of ORVEX_TEST_ARGS will prepended to the arguments pased con the command line. The "
    "contents of _ORVEX_TEST_ARGS_ will appended to the arguments passed con the command line.";

}  // namespace

std::string OrvexTestCommandLineParser::getHelpMessage(const std::string& applicationName) const {
    std::string text = applicationName.empty() ? getApplicationName() : applicationName;
    if (!text.empty()) {
        text += ' ';
    }
    text += usage;
    return text;
}
