"""What show_arguments prints for people, and how it ends."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from show_arguments_support import (
    LIBRARY, PROGRAM, RECORD_FIELDS, clean_environment, run, sections, show, show_on_terminal)


class TextReport(unittest.TestCase):
    maxDiff = None

    def test_shows_everything_that_a_test_program_sees(self):
        result = show(
            "-tl", "DravikGigE:SocketDriver", "-packetsize", "1500", "-o", "result.xml", "-x", "report.xml", "-w",
            "TestSuiteGigE", "TestSuiteUsb", variables={"_ORVEX_TEST_ARGS_": "-tdc_guid 1234"})
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        found = sections(result.stdout)
        self.assertEqual(found["Result"], [
            "  parse             succeeded",
            f"  application name  {PROGRAM}",
            "  help requested    no",
            "  wait before exit  yes",
            "  output file       result.xml",
            "  XML report file   report.xml",
            "  transport layers  DravikGigE:SocketDriver",
            "  test paths        TestSuiteGigE",
            "                    TestSuiteUsb",
        ])
        self.assertEqual(found["Environment"], [
            "  variable                   before       after",
            "  ORVEX_DEVICE_FILTER        (undefined)  DeviceClass=DravikGigE",
            "  ORVEX_GIGE_STREAMPARAMS    (undefined)  Type=SocketDriver",
            "  ORVEX_GIGE_STREAM_GEVSCPS  (undefined)  1500",
            "  ORVEX_GTC_USE_EXTRA_TL     (undefined)  1",
            "  TEST_SESSION_GUID          (undefined)  1234",
            "  TRANSPORT_LAYER            (undefined)  DravikGigE:SocketDriver",
        ])
        record = [line.split() for line in found["Test-run record"]]
        self.assertEqual([name for name, _ in record], RECORD_FIELDS)
        filled = {"group": "orvex", "guid": "1234", "fixedZero": "0", "transportLayers": "DravikGigE:SocketDriver"}
        self.assertEqual({name: text for name, text in record if text != '""'}, filled)

    def test_shows_where_everything_came_from(self):
        result = show("-o", "b", "-o", "c", "-w", "Suite", "-foo", variables={
            "ORVEX_TEST_ARGS": "-o a First", "_ORVEX_TEST_ARGS_": " \t"})
        found = sections(result.stdout)
        self.assertEqual(found["Values"], [
            "  -o  output file",
            "    lost       ORVEX_TEST_ARGS    a",
            "    lost       command line       b",
            "    won        command line       c",
            "  -w  wait before exit",
            "    counted    command line       flag",
            "  -foo",
            "    ignored    command line       flag (unknown option)",
            "  test paths",
            "    collected  ORVEX_TEST_ARGS    First",
            "    collected  command line       Suite",
        ])
        self.assertEqual(found["Tokens"], [
            "  ORVEX_TEST_ARGS",
            f"    program name          {PROGRAM}",
            "    option                -o",
            "    value of -o           a",
            "    test path             First",
            "  command line",
            f"    dropped program name  {PROGRAM}",
            "    option                -o",
            "    value of -o           b",
            "    option                -o",
            "    value of -o           c",
            "    flag                  -w",
            "    test path             Suite",
            "    flag                  -foo",
            "  _ORVEX_TEST_ARGS_  blank",
        ])

    def test_shows_a_changed_variable_with_its_old_value_and_leaves_out_an_unchanged_one(self):
        result = show("-packetsize", "1500", "-packetdelay", "7", variables={
            "ORVEX_GIGE_STREAM_GEVSCPS": "9000", "ORVEX_GIGE_STREAM_GEVSCPD": "7", "ORVEX_GTC_USE_EXTRA_TL": ""})
        self.assertEqual(sections(result.stdout)["Environment"], [
            "  variable                   before  after",
            "  ORVEX_GIGE_STREAM_GEVSCPS  9000    1500",
        ])

    def test_text_that_a_terminal_would_act_on_is_escaped(self):
        result = show("-o", "a\x1b[31m\n\"\\", "-x", " blank", "-testname", "Größe", "-pcname", b"\xff\xc2\x9b")
        found = sections(result.stdout)
        self.assertIn('  output file       "a\\x1b[31m\\n\\"\\\\"', found["Result"])
        self.assertIn('  XML report file   " blank"', found["Result"])
        self.assertIn("  testName              Größe", found["Test-run record"])
        self.assertIn('  pcName                "\\xff\\xc2\\x9b"', found["Test-run record"])

    def test_a_pipe_gets_neither_colour_nor_line_breaks_in_values(self):
        long = "word " * 60 + "end"
        result = show("-o", long, variables={"TERM": "xterm", "COLUMNS": "40"})
        self.assertNotIn("\x1b", result.stdout)
        self.assertIn(f"  output file       {long}\n", result.stdout)


class Help(unittest.TestCase):
    def test_each_help_switch_prints_the_usage_text_and_nothing_else(self):
        for switch in ("-?", "-h", "-H", "-help", "--help"):
            with self.subTest(switch=switch):
                result = show(switch, "Suite")
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                self.assertTrue(result.stdout.startswith(f"{PROGRAM} [-?] [-camemu n] [-o filename]"))
                self.assertTrue(result.stdout.endswith("passed con the command line.\n"))
                self.assertEqual(result.stdout.count("\n"), 8)

    def test_a_failed_parse_is_no_request_for_help(self):
        result = show("-?", "-camemu", "none")
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stdout.startswith("Result\n  parse             failed\n"))


class Failure(unittest.TestCase):
    def assert_fails(self, result, reason):
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stderr.startswith(f"show_arguments: the parse failed: {reason}\n\n{PROGRAM} [-?]"),
                        result.stderr)
        self.assertTrue(result.stderr.endswith("passed con the command line.\n"))
        found = sections(result.stdout)
        self.assertEqual(found["Result"][:2], ["  parse             failed", f"  reason            {reason}"])
        return found

    def test_malformed_first_variable(self):
        found = self.assert_fails(
            show("Suite", variables={"ORVEX_TEST_ARGS": "-o 'a", "_ORVEX_TEST_ARGS_": "\""}),
            "ORVEX_TEST_ARGS: Starting quote has no ending quote.")
        self.assertEqual(found["Tokens"], [
            "  ORVEX_TEST_ARGS    malformed: Starting quote has no ending quote.",
            "  command line       not reached",
            "  _ORVEX_TEST_ARGS_  not reached",
        ])

    def test_malformed_second_variable(self):
        found = self.assert_fails(
            show("-o", "a", "Suite", variables={"_ORVEX_TEST_ARGS_": "\"abc\\"}),
            "_ORVEX_TEST_ARGS_: Starting quote has no ending quote.")
        self.assertEqual(found["Values"], [
            "  -o  output file",
            "    not used   command line       a",
            "  test paths",
            "    not used   command line       Suite",
        ])

    def test_each_numeric_option(self):
        for option in ("socketbuffer", "packetsize", "packetdelay", "camemu"):
            with self.subTest(option=option):
                self.assert_fails(
                    show(f"-{option}=1", variables={"_ORVEX_TEST_ARGS_": f"-{option} x1"}),
                    f"the value of -{option} does not begin with a digit: x1 (_ORVEX_TEST_ARGS_)")

    def test_a_bad_value_that_lost_is_no_reason(self):
        self.assertEqual(show("-camemu", "x", "-camemu", "2").returncode, 0)

    def test_of_several_bad_values_the_first_that_the_parse_meets(self):
        self.assert_fails(
            show("-camemu", "-1", "-packetdelay", "-2", "-packetsize", "-3", "-socketbuffer", "-4"),
            "the value of -socketbuffer does not begin with a digit: -4 (command line)")

    def test_an_empty_value_is_no_reason(self):
        self.assert_fails(
            show("-socketbuffer=", "-camemu", "x"),
            "the value of -camemu does not begin with a digit: x (command line)")

    def test_what_was_set_before_the_failure_is_shown(self):
        found = self.assert_fails(
            show("-packetdelay", "x"), "the value of -packetdelay does not begin with a digit: x (command line)")
        self.assertEqual([line.split()[0] for line in found["Environment"][1:]],
                         ["ORVEX_GIGE_STREAM_GEVSCPS", "ORVEX_GTC_USE_EXTRA_TL"])

    @unittest.skipUnless(sys.platform.startswith("linux"), "needs a relative library search path")
    def test_application_directory_that_cannot_be_found(self):
        # The loader finds the library relative to a directory that is gone, so that its path leads nowhere.
        with tempfile.TemporaryDirectory() as directory:
            library = os.path.join(directory, "library", "libtestcommandlineparser.so.0")
            os.mkdir(os.path.dirname(library))
            shutil.copy(LIBRARY, library)
            gone = os.path.join(directory, "gone")
            os.mkdir(gone)
            result = run(("sh", "-c", 'cd "$0" && rmdir "$0" && exec "$@"', gone, PROGRAM, "-tl", "DravikGTC"),
                         {"LD_LIBRARY_PATH": "../library"})
        self.assert_fails(result, "OrvexTestCommandLineParser::getApplicationDir> realpath() failed")

    def test_the_program_itself_fails_differently(self):
        result = show(variables={"SHOW_ARGUMENTS_FORMAT": "xml"})
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertEqual(result.stderr, "show_arguments: SHOW_ARGUMENTS_FORMAT must be text or json\n")

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a file that is always full")
    def test_a_full_output_is_an_error(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            program = subprocess.run((PROGRAM,), env=clean_environment(), stdout=full, stderr=subprocess.PIPE,
                                     encoding="utf-8", timeout=60, check=False)
        self.assertEqual(program.returncode, 2)
        self.assertEqual(program.stderr, "show_arguments: cannot write to standard output\n")


class Terminal(unittest.TestCase):
    ARGUMENTS = ("-tl", "DravikGigE", "-o", "directory/" * 30 + "file", "-x", "wörd " * 40 + "end", "-unknown")

    def test_no_line_is_longer_than_the_terminal(self):
        for columns in (60, 100, 200):
            with self.subTest(columns=columns):
                output = show_on_terminal(columns, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
                self.assertLessEqual(max(map(len, output.split("\n"))), columns)
                self.assertIn("end", output)

    def test_a_wrapped_value_loses_nothing_and_stays_in_its_column(self):
        output = show_on_terminal(60, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
        lines = sections(output)["Result"]
        start = next(i for i, line in enumerate(lines) if line.startswith("  output file"))
        pieces = [lines[start]]
        while lines[start + len(pieces)].startswith(" " * 20):
            pieces.append(lines[start + len(pieces)])
        self.assertGreater(len(pieces), 5)
        self.assertEqual("".join(piece[20:] for piece in pieces), self.ARGUMENTS[3])

    def test_a_narrow_terminal_gets_blocks_and_a_wide_one_a_table(self):
        narrow = show_on_terminal(60, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
        self.assertEqual(sections(narrow)["Environment"][:3], [
            "  ORVEX_DEVICE_FILTER", "    before  (undefined)", "    after   DeviceClass=DravikGigE"])
        wide = show_on_terminal(100, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
        self.assertEqual(sections(wide)["Environment"][:2], [
            "  variable                   before       after",
            "  ORVEX_DEVICE_FILTER        (undefined)  DeviceClass=DravikGigE"])

    def test_colour_says_nothing_that_the_text_does_not(self):
        coloured = show_on_terminal(100, *self.ARGUMENTS)
        self.assertIn("\x1b[1mResult\x1b[0m\n", coloured)
        self.assertIn("\x1b[32msucceeded\x1b[0m", coloured)
        plain = show_on_terminal(100, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
        self.assertNotIn("\x1b", plain)
        self.assertEqual(re.sub("\x1b\\[[0-9]+m", "", coloured), plain)

    def test_a_terminal_without_colour_gets_none(self):
        self.assertNotIn("\x1b", show_on_terminal(100, variables={"TERM": "dumb"}))


if __name__ == "__main__":
    unittest.main()
