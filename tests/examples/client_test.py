"""Runs a client of the C interface with real command lines: client_test.py COMMAND..."""

import pathlib
import re
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import run

COMMAND = tuple(sys.argv[1:])
# The Python client is an interpreter, a script (which is the program name) and the library.
IS_PYTHON = len(COMMAND) > 1
PROGRAM_NAME = COMMAND[1] if IS_PYTHON else COMMAND[0]

EMPTY_RECORD = {
    "group": "orvex", "session": "", "run name": "", "run description": "", "product": "", "zero": "0",
    "user": "", "revision": "", "branch": "", "second revision": "", "second branch": "", "computer": "",
    "operating system": "", "transport layers": "any", "report file": "", "test name": "",
}


def client(*arguments, **options):
    return run((*COMMAND, *arguments), **options)


def lines(output):
    return {line[:16].rstrip(): line[18:] for line in output.splitlines()}


def record(output):
    return {name: text for name, text in lines(output).items() if name in EMPTY_RECORD}


class Record(unittest.TestCase):
    def test_without_options_three_slots_have_fixed_strings(self):
        result = client()
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(record(result.stdout), EMPTY_RECORD)

    def test_every_option_reaches_its_slot(self):
        result = client(
            "-tdc_group", "g", "-tdc_guid", "1234", "-tdc_runname", "nightly", "-tdc_rundescription", "two words",
            "-tdc_product", "camera", "-tdc_userid", "u", "-tdc_vcsrevision", "1a2b3c", "-tdc_vcsbranch", "main",
            "-pcname", "pc", "-osname", "os", "-tl", "DravikGigE", "-tl", "DravikUsb", "-tdc_dxml", "d.xml",
            "-testname", "t")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(record(result.stdout), {
            "group": "g", "session": "1234", "run name": "nightly", "run description": "two words",
            "product": "camera", "zero": "0", "user": "u", "revision": "1a2b3c", "branch": "main",
            "second revision": "1a2b3c", "second branch": "main", "computer": "pc", "operating system": "os",
            "transport layers": "DravikGigE,DravikUsb", "report file": "d.xml", "test name": "t",
        })

    def test_a_string_that_is_too_long_for_its_slot_is_an_error(self):
        longest = "n" * 255
        self.assertEqual(record(client("-testname", longest).stdout)["test name"], longest)
        result = client("-testname", longest + "n")
        self.assertEqual(result.returncode, 1)
        self.assertIn("too long", result.stderr)


class Usage(unittest.TestCase):
    def assert_is_usage(self, text):
        self.assertTrue(text.startswith(f"{PROGRAM_NAME} [-?] [-camemu n]"), text)
        self.assertTrue(text.endswith("passed con the command line.\n"), text)
        self.assertEqual(text.count("\n"), 8)

    def test_help_goes_to_standard_output(self):
        result = client("-help")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assert_is_usage(result.stdout)

    def test_bad_arguments_print_the_usage_text_on_standard_error(self):
        result = client("-packetsize", "large")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assert_is_usage(result.stderr)


@unittest.skipUnless(IS_PYTHON, "the C client does not print the getters")
class Getters(unittest.TestCase):
    def test_getters_return_what_was_parsed(self):
        found = lines(client("-x", "r.xml", "-o", "o.txt", "-w", "TestSuiteUsb", "TestSuiteGigE").stdout)
        names = ("application name", "XML report file", "output file", "first test path", "wait before exit")
        self.assertEqual(
            [found[name] for name in names], [PROGRAM_NAME, "r.xml", "o.txt", "TestSuiteUsb", "True"])


@unittest.skipUnless(IS_PYTHON, "only Python keeps a copy of the environment")
class Environment(unittest.TestCase):
    ARGUMENTS = (
        "-tl", "DravikGTC,DravikGigE:SocketDriver", "-packetsize", "1500", "-packetdelay", "5", "-camemu", "2",
        "-p", "a=b", "-tdc_guid", "1234", "-tdc_runname", "nightly", "-tdc_rundescription", "Größe", "-tdc_group", "g",
        "-tdc_product", "camera", "-tdc_variant=colour", "-tdc_userid", "u", "-tdc_vcsrevision", "1a2b3c",
        "-tdc_vcsbranch", "main")
    VARIABLES = {
        "ORVEX_GTC_USE_EXTRA_TL": "1", "ORVEX_DEVICE_FILTER": "DeviceClass=DravikGTC||DeviceClass=DravikGigE",
        "ORVEX_GIGE_STREAMPARAMS": "Type=SocketDriver", "ORVEX_GIGE_STREAM_GEVSCPS": "1500",
        "ORVEX_GIGE_STREAM_GEVSCPD": "5", "ORVEX_CAMEMU": "2", "TEST_PROPERTIES": "a=b", "TEST_SESSION_GUID": "1234",
        "TEST_SESSION_NAME": "nightly", "TEST_SESSION_DESCRIPTION": "Größe", "TEST_SESSION_GROUP": "g",
        "TEST_PRODUCT": "camera", "TEST_PRODUCT_VARIANT": "colour", "USER_UID": "u", "VCS_REVISION": "1a2b3c",
        "VCS_BRANCH": "main", "TRANSPORT_LAYER": "DravikGTC,DravikGigE:SocketDriver",
    }

    def variables(self, prepare):
        """The lines NAME=value that the client prints from os.environ, after some Python code has run."""
        python, *client_with_library = COMMAND
        code = f"import os, runpy, sys; {prepare}; sys.argv.pop(0); runpy.run_path(sys.argv[0], run_name='__main__')"
        result = run((python, "-c", code, *client_with_library, *self.ARGUMENTS))
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return dict(re.findall(r"^([A-Z0-9_]+)=(.*)$", result.stdout, re.MULTILINE))

    def test_os_environ_has_every_variable(self):
        for prepare in ("pass", "vars(os).pop('reload_environ', None)"):
            variables = self.variables(prepare)
            self.assertIn("gentlproducer/gtl", variables.pop("GENICAM_GENTL64_PATH"))
            self.assertEqual(variables, self.VARIABLES)

    def test_os_reload_environ_is_used_if_python_has_it(self):
        variables = self.variables("os.reload_environ = lambda: os.environ.update(ORVEX_CAMEMU='reloaded')")
        self.assertEqual(variables, {"ORVEX_CAMEMU": "reloaded"})


@unittest.skipUnless(IS_PYTHON, "the C client is linked to the library")
class Library(unittest.TestCase):
    def test_a_missing_library_is_reported_in_one_line_on_standard_error(self):
        for library in ("no/such/library.so", ""):
            result = run((*COMMAND[:-1], library))
            self.assertEqual((result.returncode, result.stdout), (2, ""))
            self.assertRegex(result.stderr, rf"\A{PROGRAM_NAME}: cannot use the library: .*\n\Z")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
