"""Runs the doctest_suite example with real command lines: doctest_suite_test.py DOCTEST_SUITE"""

import os
import pathlib
import re
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import run

DOCTEST_SUITE = sys.argv.pop(1)
# With it, both test cases pass; without it, one fails.
GOOD_ARGUMENTS = ("-tl", "DravikGigE")


def suite(*arguments, **options):
    return run((DOCTEST_SUITE, *arguments), **options)


class Cut(unittest.TestCase):
    def assert_runs(self, passed, failed, skipped, *arguments, **options):
        result = suite(*arguments, **options)
        self.assertEqual(result.returncode, 1 if failed else 0)
        counts = f"{passed + failed} | {passed} passed | {failed} failed | {skipped} skipped"
        self.assertIn(f"test cases: {counts}", re.sub(" +", " ", result.stdout))

    def test_without_the_dashes_doctest_gets_no_argument(self):
        self.assert_runs(2, 0, 0, *GOOD_ARGUMENTS, "--test-case=PacketSize*")

    def test_after_the_dashes_doctest_gets_its_arguments(self):
        self.assert_runs(1, 0, 1, *GOOD_ARGUMENTS, "--", "--test-case=PacketSize*")

    def test_after_the_dashes_the_parser_gets_no_argument(self):
        self.assert_runs(1, 1, 0, "--", *GOOD_ARGUMENTS)
        self.assert_runs(2, 0, 0, *GOOD_ARGUMENTS, "--", "-camemu", "none", "PacketSize")

    def test_the_program_name_stands_before_the_arguments_of_doctest(self):
        self.assertIn(f'binary="{DOCTEST_SUITE}"', suite("--", "--reporters=xml").stdout)

    def test_the_first_dashes_cut(self):
        self.assert_runs(2, 0, 0, *GOOD_ARGUMENTS, "--", "--", "PacketSize")

    def test_both_halves_may_be_empty(self):
        self.assert_runs(1, 1, 0)
        self.assert_runs(1, 1, 0, "--")

    def test_dashes_in_an_argument_variable_do_not_cut(self):
        self.assert_runs(1, 0, 1, *GOOD_ARGUMENTS, variables={"_ORVEX_TEST_ARGS_": "-- PacketSize"})

    def test_paths_and_filters_add_up(self):
        self.assert_runs(1, 0, 1, *GOOD_ARGUMENTS, "PacketSize")
        self.assert_runs(2, 0, 0, *GOOD_ARGUMENTS, "PacketSize", "--", "--test-case=DeviceFilter*")

    def test_each_half_names_an_output_file_of_its_own(self):
        with tempfile.TemporaryDirectory() as directory:
            suite(*GOOD_ARGUMENTS, "-o=parser.txt", cwd=directory)
            self.assertEqual(os.listdir(directory), [])
            suite(*GOOD_ARGUMENTS, "-o=parser.txt", "--", "-o=doctest.txt", cwd=directory)
            self.assertEqual(os.listdir(directory), ["doctest.txt"])


class Usage(unittest.TestCase):
    def test_help_is_that_of_its_half(self):
        for arguments, start in (("-h",), f"{DOCTEST_SUITE} [-?] [-camemu n]"), (("--", "-h"), "[doctest] "):
            result = suite(*arguments)
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertTrue(result.stdout.startswith(start), result.stdout)

    def test_bad_arguments_bring_the_usage_text_on_standard_error(self):
        result = suite("-camemu", "none")
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertTrue(result.stderr.startswith(f"{DOCTEST_SUITE} [-?] [-camemu n]"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
