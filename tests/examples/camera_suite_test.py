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
        self.assertEqual(result.returncode, 2)
        self.assertIn("No test matches", result.stderr)


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

    def test_without_the_option_no_report_is_written(self):
        with tempfile.TemporaryDirectory() as directory:
            suite(*GOOD_ARGUMENTS, cwd=directory)
            self.assertEqual(os.listdir(directory), [])


class Arguments(unittest.TestCase):
    def test_help_goes_to_standard_output(self):
        result = suite("-?", "PacketSize")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertTrue(result.stdout.startswith(f"{CAMERA_SUITE} [-?] [-camemu n]"))
        self.assertNotIn("[ RUN", result.stdout)

    def test_bad_arguments_bring_the_usage_text_on_standard_error(self):
        result = suite("-camemu", "none")
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertTrue(result.stderr.startswith(f"{CAMERA_SUITE} [-?] [-camemu n]"))

    def test_googletest_does_not_see_the_arguments(self):
        result = suite(*GOOD_ARGUMENTS, "--gtest_list_tests")
        self.assertEqual(result.returncode, 0)
        self.assertIn("[  PASSED  ] 5 tests.", result.stdout)


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
