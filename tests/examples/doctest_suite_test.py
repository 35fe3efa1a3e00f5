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


class Separator(unittest.TestCase):
    def test_the_parser_gets_the_arguments_before_the_first_dashes_and_doctest_those_after_them(self):
        good = GOOD_ARGUMENTS
        rows = [
            # passed, failed, skipped, arguments
            (2, 0, 0, (*good, "--test-case=PacketSize*")),
            (1, 0, 1, (*good, "--", "--test-case=PacketSize*")),
            (1, 1, 0, ("--", *good)),
            (2, 0, 0, (*good, "--", "-camemu", "none", "PacketSize")),
            (2, 0, 0, (*good, "--", "--", "PacketSize")),
            (1, 1, 0, ()),
            (1, 1, 0, ("--",)),
            # Test paths and filters accumulate.
            (1, 0, 1, (*good, "PacketSize")),
            (2, 0, 0, (*good, "PacketSize", "--", "--test-case=DeviceFilter*")),
        ]
        for passed, failed, skipped, arguments in rows:
            with self.subTest(arguments):
                self.assert_runs(passed, failed, skipped, *arguments)

    def test_dashes_in_an_argument_variable_do_not_separate(self):
        self.assert_runs(1, 0, 1, *GOOD_ARGUMENTS, variables={"_ORVEX_TEST_ARGS_": "-- PacketSize"})

    def assert_runs(self, passed, failed, skipped, *arguments, **options):
        result = suite(*arguments, **options)
        self.assertEqual(result.returncode, 1 if failed else 0)
        counts = f"{passed + failed} | {passed} passed | {failed} failed | {skipped} skipped"
        self.assertIn(f"test cases: {counts}", re.sub(" +", " ", result.stdout))

    def test_doctest_gets_the_program_name(self):
        self.assertIn(f'binary="{DOCTEST_SUITE}"', suite("--", "--reporters=xml").stdout)

    def test_the_parsers_output_option_does_not_reach_doctest(self):
        with tempfile.TemporaryDirectory() as directory:
            suite(*GOOD_ARGUMENTS, "-o=parser.txt", cwd=directory)
            self.assertEqual(os.listdir(directory), [])
            suite(*GOOD_ARGUMENTS, "-o=parser.txt", "--", "-o=doctest.txt", cwd=directory)
            self.assertEqual(os.listdir(directory), ["doctest.txt"])


class Usage(unittest.TestCase):
    def test_help_is_the_parsers_before_the_dashes_and_doctests_after_them(self):
        for arguments, start in (("-h",), f"{DOCTEST_SUITE} [-?] [-camemu n]"), (("--", "-h"), "[doctest] "):
            result = suite(*arguments)
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertTrue(result.stdout.startswith(start), result.stdout)

    def test_bad_arguments_print_the_usage_text_on_standard_error(self):
        result = suite("-camemu", "none")
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertTrue(result.stderr.startswith(f"{DOCTEST_SUITE} [-?] [-camemu n]"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
