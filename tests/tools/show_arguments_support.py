"""Running show_arguments and reading what it prints. The command line of a test that uses this:

    SOME_test.py SHOW_ARGUMENTS LIBRARY [TEST...]
"""

import fcntl
import json
import os
import pathlib
import pty
import struct
import subprocess
import sys
import termios
import unittest

ROOT = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(ROOT / "tests" / "support"))
from program import clean_environment, run

PROGRAM = sys.argv.pop(1)
LIBRARY = sys.argv.pop(1)

RECORD_FIELDS = [
    "group", "guid", "runName", "runDescription", "product", "fixedZero", "userId", "vcsRevision", "vcsBranch",
    "secondVcsRevision", "secondVcsBranch", "pcName", "osName", "transportLayers", "tdcDravikXmlFilename",
    "testName", "osType", "bit",
]


def show(*arguments, variables=None, **options):
    return run((PROGRAM, *arguments), variables, **options)


def sections(output):
    """The lines of each section by its title."""
    found = {}
    for block in output.rstrip("\n").split("\n\n"):
        title, *lines = block.split("\n")
        found[title] = lines
    return found


def show_json(*arguments, variables=None):
    result = show(*arguments, variables={"SHOW_ARGUMENTS_FORMAT": "json", **(variables or {})})
    report = json.loads(result.stdout)
    return report, result


def changes(report):
    return {entry["name"]: (entry["before"], entry["after"]) for entry in report["environment"]}


def show_on_terminal(columns, *arguments, variables=None):
    """What the program writes to a terminal of that many columns, errors included."""
    try:
        screen, terminal = pty.openpty()
    except OSError as error:
        raise unittest.SkipTest(f"there is no terminal device here: {error}")
    fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    environment = clean_environment({"TERM": "xterm", **(variables or {})})
    with subprocess.Popen((PROGRAM, *arguments), env=environment, stdin=subprocess.DEVNULL, stdout=terminal,
                          stderr=terminal) as program:
        os.close(terminal)
        output = b""
        try:
            while block := os.read(screen, 65536):
                output += block
        except OSError:
            pass  # Linux reports the end of the last writer as an error.
        program.wait(60)
    os.close(screen)
    return output.decode().replace("\r\n", "\n")
