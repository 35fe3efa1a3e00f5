#!/usr/bin/env python3
"""Parses the command line through the C interface, with nothing but ctypes.

    python_client.py path/to/libtestcommandlineparser.so.0 -tdc_guid 1234 TestSuiteUsb

Exit status: 0 on success; 1 if the arguments are bad or a string is too long for its slot; 2 if the library cannot be
used.
"""

import ctypes
import os
import sys

SLOT_SIZE = 256
SLOT_NAMES = (
    "group", "session", "run name", "run description", "product", "zero", "user", "revision", "branch",
    "second revision", "second branch", "computer", "operating system", "transport layers", "report file",
    "test name",
)
# The variables that a parse may set.
VARIABLES = (
    "ORVEX_GTC_USE_EXTRA_TL", "ORVEX_DEVICE_FILTER", "ORVEX_GIGE_STREAMPARAMS", "ORVEX_GIGE_STREAM_GEVSCPS",
    "ORVEX_GIGE_STREAM_GEVSCPD", "ORVEX_CAMEMU", "TEST_PROPERTIES", "GENICAM_GENTL64_PATH", "TEST_SESSION_GUID",
    "TEST_SESSION_NAME", "TEST_SESSION_DESCRIPTION", "TEST_SESSION_GROUP", "TEST_PRODUCT", "TEST_PRODUCT_VARIANT",
    "USER_UID", "VCS_REVISION", "VCS_BRANCH", "TRANSPORT_LAYER",
)


def reload_environment():
    """Refreshes os.environ, a copy of the environment that the interpreter made at start-up."""
    if hasattr(os, "reload_environ"):  # Python 3.14 and later
        os.reload_environ()
        return
    getenv = ctypes.CDLL(None).getenv
    getenv.restype = ctypes.c_char_p
    getenv.argtypes = (ctypes.c_char_p,)
    for name in VARIABLES:
        value = getenv(os.fsencode(name))
        if value is not None:
            os.environ[name] = os.fsdecode(value)


class CommandLineParser:
    """The process-wide parser."""

    def __init__(self, library_path):
        self._library = ctypes.CDLL(library_path)

    def _call(self, name, result_type, argument_types=(), *arguments):
        function = self._library["OrvexTestCommandLineParser_" + name]
        function.restype = result_type
        function.argtypes = argument_types
        return function(*arguments)

    def parse(self, arguments):
        """Parses the arguments, the program name first, and brings os.environ up to date."""
        argv = (ctypes.c_char_p * (len(arguments) + 1))(*map(os.fsencode, arguments))
        types = (ctypes.c_int, ctypes.POINTER(ctypes.c_char_p))
        parsed = bool(self._call("Parse", ctypes.c_int, types, len(arguments), argv))
        reload_environment()
        return parsed

    def text(self, name):
        """The result of a getter that returns a string."""
        return os.fsdecode(self._call(name, ctypes.c_char_p))

    def answer(self, name):
        """The result of a getter that returns yes or no."""
        return bool(self._call(name, ctypes.c_int))

    def usage(self):
        """The usage text: the first call returns its size, the second one copies it."""
        types = (ctypes.c_char_p, ctypes.c_char_p, ctypes.c_size_t)
        size = self._call("GetHelpMessage", ctypes.c_size_t, types, None, None, 0)
        buffer = ctypes.create_string_buffer(size)
        self._call("GetHelpMessage", ctypes.c_size_t, types, None, buffer, size)
        return os.fsdecode(buffer.value)

    def test_run_information(self):
        """The sixteen strings by name, or None when one is too long for its slot."""
        record = ctypes.create_string_buffer(SLOT_SIZE * len(SLOT_NAMES))
        if not self._call("GetTestRunInformation", ctypes.c_int, (ctypes.c_char_p,), record):
            return None
        slots = (record.raw[i : i + SLOT_SIZE] for i in range(0, len(record), SLOT_SIZE))
        return {name: os.fsdecode(slot.split(b"\0", 1)[0]) for name, slot in zip(SLOT_NAMES, slots)}


def main():
    if len(sys.argv) < 2:
        print(__doc__, file=sys.stderr)
        return 1
    try:
        parser = CommandLineParser(sys.argv[1])
        parsed = parser.parse([sys.argv[0]] + sys.argv[2:])
    except (OSError, AttributeError) as error:  # not a library, or the wrong one
        print(f"{sys.argv[0]}: cannot use the library: {error}", file=sys.stderr)
        return 2
    if not parsed:
        print(parser.usage(), file=sys.stderr)
        return 1
    if parser.answer("GetHelpRequested"):
        print(parser.usage())
        return 0

    print("application name ", parser.text("GetApplicationName"))
    print("XML report file  ", parser.text("GetXmlFilename"))
    print("output file      ", parser.text("GetOutputFilename"))
    print("first test path  ", parser.text("GetTestPath"))
    print("wait before exit ", parser.answer("GetWaitBeforeExit"))
    information = parser.test_run_information()
    if information is None:
        print("A string is too long for its slot.", file=sys.stderr)
        return 1
    for name, text in information.items():
        print(f"{name:<16}  {text}")
    for name in VARIABLES:
        if name in os.environ:
            print(f"{name}={os.environ[name]}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
