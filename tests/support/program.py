"""Running a program under test with an environment of its own."""

import os
import pty
import subprocess
import unittest

# What the loader and the sanitizers need; everything else would reach the parser.
KEPT_VARIABLES = ("PATH", "LD_PRELOAD", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE")
# The command that runs cross-built programs.
EMULATOR = tuple(os.environ.get("TEST_EMULATOR", "").split())


def clean_environment(variables=None):
    """An environment in which the parser and GoogleTest see only the given variables."""
    environment = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
    environment.update(variables or {})
    return environment


def start(command, variables=None, **options):
    """Starts the command, with its output as text."""
    return subprocess.Popen((*EMULATOR, *command), env=clean_environment(variables), encoding="utf-8", **options)


def run(command, variables=None, **options):
    """Runs the command to its end; the result has returncode, stdout and stderr as strings."""
    options.setdefault("stdin", subprocess.DEVNULL)
    return subprocess.run(
        (*EMULATOR, *command), env=clean_environment(variables), stdout=subprocess.PIPE, stderr=subprocess.PIPE,
        encoding="utf-8", timeout=60, check=False, **options)


def open_terminal():
    """A new pseudo-terminal: the descriptors of the user's side and of the program's side. Skips the test if the
    system has none."""
    try:
        return pty.openpty()
    except OSError as error:
        raise unittest.SkipTest(f"there is no terminal device: {error}") from None
