"""Running a program under test with an environment of its own."""

import os
import subprocess

# What the loader and the sanitizers need; everything else would reach the parser.
KEPT_VARIABLES = ("PATH", "LD_PRELOAD", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE")


def clean_environment(variables=None):
    """An environment with nothing in it that the parser or GoogleTest reads but the given variables."""
    environment = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
    environment.update(variables or {})
    return environment


def run(command, variables=None, **options):
    """Runs the command to its end; the result has returncode, stdout and stderr as texts."""
    options.setdefault("stdin", subprocess.DEVNULL)
    return subprocess.run(
        command, env=clean_environment(variables), stdout=subprocess.PIPE, stderr=subprocess.PIPE,
        encoding="utf-8", timeout=60, check=False, **options)
