#include "command_line.h"

#include <string>
#include <utility>
#include <vector>

CommandLine::CommandLine(std::vector<std::string> arguments) : strings(std::move(arguments)) {
    for (std::string& argument : strings) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
}

std::vector<std::string> typicalArguments(Form form) {
    if (form == Form::NameEqualsValue) {
        return {"/opt/tests/runner",
                "--tl=DravikGigE:SocketDriver",
                "--tl=DravikUsb",
                "-p",
                "exposure=5000",
                "-p",
                "gain=auto",
                "--packetsize=1500",
                "--packetdelay=10",
                "--socketbuffer=2048",
                "--camemu=2",
                "--testname=smoke",
                "--pcname=build-7",
                "--osname=Debian 12",
                "--tdc_dxml=tdc.xml",
                "--tdc_guid=6f1c2f0e-9b1d-4f0a-8d53-0c8f2f8b7a11",
                "--tdc_runname=nightly",
                "--tdc_rundescription=nightly run of all suites",
                "--tdc_group=cameras",
                "--tdc_userid=ci",
                "--tdc_product=viewer",
                "--tdc_vcsbranch=main",
                "--tdc_vcsrevision=1a2b3c4d5e6f",
                "-w",
                "TestSuiteUsb",
                "TestSuiteGigE::DynamicHeartbeatTest"};
    }
    return {"/opt/tests/runner",
            "--tl",
            "DravikGigE:SocketDriver",
            "--tl",
            "DravikUsb",
            "-p",
            "exposure=5000",
            "-p",
            "gain=auto",
            "--packetsize",
            "1500",
            "--packetdelay",
            "10",
            "--socketbuffer",
            "2048",
            "-x",
            "report.xml",
            "--tdc_guid",
            "6f1c2f0e-9b1d-4f0a-8d53-0c8f2f8b7a11",
            "--tdc_runname",
            "nightly",
            "--tdc_vcsrevision",
            "1a2b3c4d5e6f",
            "-w",
            "TestSuiteUsb",
            "TestSuiteGigE::DynamicHeartbeatTest"};
}
