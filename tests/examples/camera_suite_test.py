"""Runs the camera_suite example with real command lines: camera_suite_test.py CAMERA_SUITE"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
from xml.etree import ElementTree

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import open_terminal, run, start

CAMERA_SUITE = sys.argv.pop(1)
GOOD_ARGUMENTS = ("-tl", "DravikGigE:SocketDriver", "-socketbuffer", "2048", "-packetsize", "1500")


def suite(*arguments, **options):
    return run((CAMERA_SUITE, *arguments), **options)


def passed_tests(output):
    return [line.split()[3] for line in output.splitlines() if line.startswith("[       OK ] ")]


class TestPaths(unittest.TestCase):
    def test_without_a_path_all_tests_run(self):
        result = suite(*GOOD_ARGUMENTS)
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertIn("[  PASSED  ] 5 tests.", result.stdout)

    def test_a_class_selects_its_tests(self):
        result = suite(*GOOD_ARGUMENTS, "PacketSize")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(passed_tests(result.stdout), ["PacketSize.IsWholeNumber", "PacketSize.FitsJumboFrame"])

    def test_a_method_selects_one_test_of_several(self):
        result = suite(*GOOD_ARGUMENTS, "PacketSize::FitsJumboFrame")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(passed_tests(result.stdout), ["PacketSize.FitsJumboFrame"])

    def test_several_paths_add_up(self):
        result = suite(*GOOD_ARGUMENTS, "StreamParameters", "DeviceFilter::IncludesGigECameras")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(
            passed_tests(result.stdout),
            ["DeviceFilter.IncludesGigECameras", "StreamParameters.NameTheDriverBeforeTheSocketBuffer"])

    def test_a_path_from_the_argument_variable_counts_too(self):
        result = suite(*GOOD_ARGUMENTS, variables={"_ORVEX_TEST_ARGS_": "PacketSize::IsWholeNumber"})
        self.assertEqual(passed_tests(result.stdout), ["PacketSize.IsWholeNumber"])

    def test_a_path_that_selects_nothing_is_an_error(self):
        result = suite(*GOOD_ARGUMENTS, "NoSuchClass")
        self.assertEqual((result.returncode, result.stderr), (2, "No test was selected.\n"))

    def test_a_path_wins_over_the_filter_variable(self):
        result = suite(*GOOD_ARGUMENTS, "PacketSize::FitsJumboFrame", variables={"GTEST_FILTER": "DeviceFilter.*"})
        self.assertEqual(passed_tests(result.stdout), ["PacketSize.FitsJumboFrame"])


class GoogleTestFlags(unittest.TestCase):
    def test_a_filter_wins_over_paths_and_variables(self):
        result = suite(
            *GOOD_ARGUMENTS, "StreamParameters", "--gtest_filter=*.FitsJumboFrame",
            variables={"ORVEX_TEST_ARGS": "DeviceFilter", "GTEST_FILTER": "DeviceFilter.*"})
        self.assertEqual(result.returncode, 0)
        self.assertEqual(passed_tests(result.stdout), ["PacketSize.FitsJumboFrame"])

    def test_a_filter_that_selects_nothing_is_an_error(self):
        for options in ({"variables": {"GTEST_FILTER": "NoSuchClass.*"}}, {}):
            arguments = () if options else ("--gtest_filter=NoSuchClass.*",)
            result = suite(*GOOD_ARGUMENTS, *arguments, **options)
            self.assertEqual((result.returncode, result.stderr), (2, "No test was selected.\n"))

    def test_a_misspelt_flag_is_an_error(self):
        self.assertEqual(suite(*GOOD_ARGUMENTS, "--gtest_fliter=*").returncode, 2)

    def test_the_list_holds_what_the_paths_select(self):
        self.assertEqual(
            suite("--gtest_list_tests", "PacketSize").stdout, "PacketSize.\n  IsWholeNumber\n  FitsJumboFrame\n")

    def test_an_empty_list_is_no_error(self):
        result = suite("--gtest_list_tests", "NoSuchClass")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))


class Shards(unittest.TestCase):
    def shard(self, index, *arguments):
        variables = {"GTEST_TOTAL_SHARDS": "3", "GTEST_SHARD_INDEX": str(index)}
        result = suite(*GOOD_ARGUMENTS, *arguments, variables=variables)
        return result.returncode, passed_tests(result.stdout)

    def test_each_runs_its_part_and_may_be_empty(self):
        self.assertEqual(
            [self.shard(index, "PacketSize") for index in range(3)],
            [(0, ["PacketSize.IsWholeNumber"]), (0, ["PacketSize.FitsJumboFrame"]), (0, [])])

    def test_the_first_one_reports_that_nothing_is_selected(self):
        self.assertEqual([self.shard(index, "NoSuchClass") for index in range(3)], [(2, []), (0, []), (0, [])])


class Assertions(unittest.TestCase):
    def failed_tests(self, *arguments):
        result = suite(*arguments)
        self.assertEqual(result.returncode, 1)
        failures = [line for line in result.stdout.splitlines() if line.startswith("[  FAILED  ] ")]
        return {line.split()[3] for line in failures if "." in line}

    def test_without_options_the_device_and_stream_tests_fail(self):
        self.assertEqual(
            self.failed_tests(),
            {"DeviceFilter.SelectsAtLeastOneDeviceClass", "DeviceFilter.IncludesGigECameras",
             "StreamParameters.NameTheDriverBeforeTheSocketBuffer"})

    def test_a_packet_size_that_is_no_number_fails(self):
        self.assertEqual(self.failed_tests("-packetsize", "12abc", "PacketSize"), {"PacketSize.IsWholeNumber"})

    def test_a_packet_size_above_a_jumbo_frame_fails(self):
        self.assertEqual(self.failed_tests("-packetsize", "9001", "PacketSize"), {"PacketSize.FitsJumboFrame"})


class Report(unittest.TestCase):
    def test_the_xml_report_holds_the_tests_that_ran(self):
        with tempfile.TemporaryDirectory() as directory:
            path = os.path.join(directory, "report.xml")
            result = suite(*GOOD_ARGUMENTS, "-packetsize", "9001", "-x", path, "PacketSize")
            self.assertEqual(result.returncode, 1)
            report = ElementTree.parse(path).getroot()
        self.assertEqual((report.get("tests"), report.get("failures")), ("2", "1"))
        cases = {
            f"{case.get('classname')}.{case.get('name')}": len(case.findall("failure"))
            for case in report.iter("testcase") if case.get("status") == "run"}
        self.assertEqual(cases, {"PacketSize.IsWholeNumber": 0, "PacketSize.FitsJumboFrame": 1})

    def reports(self, *arguments, variables=None):
        with tempfile.TemporaryDirectory() as directory:
            suite(*GOOD_ARGUMENTS, *arguments, variables=variables, cwd=directory)
            return os.listdir(directory)

    def test_without_the_option_no_report_is_written(self):
        self.assertEqual(self.reports(), [])

    def test_the_option_wins_over_the_output_variable(self):
        variables = {"GTEST_OUTPUT": "xml:variable.xml"}
        self.assertEqual(self.reports(variables=variables), ["variable.xml"])
        self.assertEqual(self.reports("-x", "option.xml", variables=variables), ["option.xml"])

    def test_the_flag_wins_over_the_option(self):
        self.assertEqual(self.reports("-x", "option.xml", "--gtest_output=json:flag.json"), ["flag.json"])
        self.assertEqual(
            self.reports("--gtest_output=xml:flag.xml", variables={"_ORVEX_TEST_ARGS_": "-x option.xml"}), ["flag.xml"])


class Arguments(unittest.TestCase):
    def test_help_is_one_text_on_standard_output(self):
        for switch in ("-?", "-h", "-H", "-help", "--help"):
            result = suite(switch, "PacketSize", "--gtest_list_tests")
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertTrue(result.stdout.startswith(f"{CAMERA_SUITE} [-?] [-camemu n]"))
            self.assertTrue(result.stdout.endswith("passed con the command line.\n"), result.stdout)

    def test_bad_arguments_bring_the_usage_text_on_standard_error(self):
        result = suite("-camemu", "none")
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertTrue(result.stderr.startswith(f"{CAMERA_SUITE} [-?] [-camemu n]"))


class Waiting(unittest.TestCase):
    def test_without_a_terminal_it_does_not_wait(self):
        result = suite(*GOOD_ARGUMENTS, "-w", stdin=subprocess.PIPE, input=None)
        self.assertEqual(result.returncode, 0)
        self.assertNotIn("Press Enter", result.stdout)

    def test_on_a_terminal_it_waits_for_enter(self):
        keyboard, terminal = open_terminal()
        with start((CAMERA_SUITE, *GOOD_ARGUMENTS, "-w"), stdin=terminal, stdout=subprocess.PIPE) as program:
            output = ""
            while not output.endswith("Press Enter to exit."):
                character = program.stdout.read(1)
                self.assertNotEqual(character, "", output)
                output += character
            with self.assertRaises(subprocess.TimeoutExpired):
                program.wait(0.2)
            os.write(keyboard, b"\n")
            self.assertEqual(program.wait(60), 0)
        os.close(keyboard)
        os.close(terminal)


if __name__ == "__main__":
    unittest.main(verbosity=2)
