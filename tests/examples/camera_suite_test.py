"""Runs the camera_suite example with real command lines: camera_suite_test.py CAMERA_SUITE"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import open_terminal, run, start

CAMERA_SUITE = sys.argv.pop(1)
# With these, all five tests pass.
GOOD_ARGUMENTS = ("-tl", "DravikGigE:SocketDriver", "-socketbuffer", "2048", "-packetsize", "1500")


def suite(*arguments, **options):
    return run((CAMERA_SUITE, *GOOD_ARGUMENTS, *arguments), **options)


def passed_tests(output):
    return [line.split()[3] for line in output.splitlines() if line.startswith("[       OK ] ")]


class Selection(unittest.TestCase):
    def test_without_a_path_all_tests_run(self):
        self.assertIn("[  PASSED  ] 5 tests.", suite().stdout)

    def test_a_failed_test_ends_the_program_with_1(self):
        self.assertEqual(suite("-packetsize", "9001").returncode, 1)

    def test_paths_accumulate_and_the_filter_flag_wins_over_paths_and_paths_over_the_filter_variable(self):
        rows = [
            (("PacketSize",), {}, "PacketSize.IsWholeNumber PacketSize.FitsJumboFrame"),
            (("PacketSize::FitsJumboFrame",), {"GTEST_FILTER": "DeviceFilter.*"}, "PacketSize.FitsJumboFrame"),
            (("StreamParameters", "DeviceFilter::IncludesGigECameras"), {},
             "DeviceFilter.IncludesGigECameras StreamParameters.NameTheDriverBeforeTheSocketBuffer"),
            ((), {"_ORVEX_TEST_ARGS_": "PacketSize::IsWholeNumber"}, "PacketSize.IsWholeNumber"),
            (("StreamParameters", "--gtest_filter=*.FitsJumboFrame"),
             {"ORVEX_TEST_ARGS": "DeviceFilter", "GTEST_FILTER": "DeviceFilter.*"}, "PacketSize.FitsJumboFrame"),
        ]
        for arguments, variables, tests in rows:
            with self.subTest(arguments):
                result = suite(*arguments, variables=variables)
                self.assertEqual((result.returncode, passed_tests(result.stdout)), (0, tests.split()))

    def test_selecting_nothing_is_an_error(self):
        for arguments, variables in [
                (("NoSuchClass",), {}), (("--gtest_filter=No.*",), {}), ((), {"GTEST_FILTER": "No.*"})]:
            with self.subTest(arguments):
                result = suite(*arguments, variables=variables)
                self.assertEqual((result.returncode, result.stderr), (2, "No test was selected.\n"))

    def test_the_list_holds_what_the_paths_select_and_may_be_empty(self):
        for path, tests in ("PacketSize", "PacketSize.\n  IsWholeNumber\n  FitsJumboFrame\n"), ("NoSuchClass", ""):
            result = suite("--gtest_list_tests", path)
            self.assertEqual((result.returncode, result.stdout, result.stderr), (0, tests, ""))

    def test_only_the_first_shard_reports_that_nothing_is_selected(self):
        for index, status in enumerate([2, 0, 0]):
            variables = {"GTEST_TOTAL_SHARDS": "3", "GTEST_SHARD_INDEX": str(index)}
            self.assertEqual(suite("NoSuchClass", variables=variables).returncode, status)


class Report(unittest.TestCase):
    def test_the_output_flag_wins_over_x_and_x_over_the_output_variable(self):
        rows = [
            ((), {}, []),
            ((), {"GTEST_OUTPUT": "xml:variable.xml"}, ["variable.xml"]),
            (("-x", "option.xml"), {"GTEST_OUTPUT": "xml:variable.xml"}, ["option.xml"]),
            (("-x", "option.xml", "--gtest_output=json:flag.json"), {}, ["flag.json"]),
            (("--gtest_output=xml:flag.xml",), {"_ORVEX_TEST_ARGS_": "-x option.xml"}, ["flag.xml"]),
        ]
        for arguments, variables, reports in rows:
            with self.subTest(arguments), tempfile.TemporaryDirectory() as directory:
                suite(*arguments, variables=variables, cwd=directory)
                self.assertEqual(os.listdir(directory), reports)


class Usage(unittest.TestCase):
    def test_help_prints_only_the_parsers_usage_text_on_standard_output(self):
        for switch in ("-?", "-h", "-H", "-help", "--help"):
            result = suite(switch, "PacketSize", "--gtest_list_tests")
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertTrue(result.stdout.startswith(f"{CAMERA_SUITE} [-?] [-camemu n]"))
            self.assertTrue(result.stdout.endswith("passed con the command line.\n"), result.stdout)

    def test_bad_arguments_print_the_usage_text_on_standard_error(self):
        result = suite("-camemu", "none")
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertTrue(result.stderr.startswith(f"{CAMERA_SUITE} [-?] [-camemu n]"))

    def test_a_misspelt_flag_is_an_error(self):
        self.assertEqual(suite("--gtest_fliter=*").returncode, 2)


class Waiting(unittest.TestCase):
    def test_the_program_does_not_wait_without_a_terminal(self):
        self.assertNotIn("Press Enter", suite("-w").stdout)

    def test_the_program_waits_for_enter_on_a_terminal(self):
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
