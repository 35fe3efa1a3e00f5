"""Changes src/ one small place at a time and lists the changes that no test notices.

Works on copies of the tree in build/mutate, one for each worker, and never touches the tree itself. A
change is noticed when a test fails, crashes or does not end. Changes that do not compile are counted separately.
The changes listed in tests/mutation are skipped: equivalent.txt has those that change nothing observable,
not_tested.txt those that this run cannot detect. The exit code is 0 when every other change is noticed.
"""

import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import queue
import random
import re
import resource
import shutil
import signal
import subprocess
import sys

sys.dont_write_bytecode = True
from mutations import mutants_of  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutate"
LISTS = [ROOT / "tests" / "mutation" / name for name in ("equivalent.txt", "not_tested.txt")]
# In processor time, measured without any change. Slower programs are left out.
LONGEST_PROGRAM_SECONDS = 60
MEMORY_LIMIT = 4 << 30


def step(text):
    print(f"== {text}", file=sys.stderr)


def git(*arguments):
    return subprocess.run(["git", *arguments], cwd=ROOT, check=True, capture_output=True, text=True).stdout


# Mutants.


def find_mutants():
    files = sorted(path for path in (ROOT / "src").rglob("*") if path.suffix in (".cpp", ".h"))
    return [mutant for file in files for mutant in mutants_of(file.relative_to(ROOT).as_posix(), file.read_text())]


def changed_lines(commit):
    """The lines of each file of src/ that differ from the commit."""
    lines, file = collections.defaultdict(set), None
    for line in git("diff", "--unified=0", "--no-prefix", commit, "--", "src").splitlines():
        if line.startswith("+++ "):
            file = line[4:]
        elif hunk := re.match(r"@@ -\S+ \+(\d+)(?:,(\d+))? @@", line):
            start, count = int(hunk[1]), int(hunk[2] or 1)
            lines[file].update(range(start, start + count))
    return lines


def read_list(path):
    """The keys of the mutants that a file lists: paragraphs of lines "name: text"."""
    keys = set()
    for paragraph in re.sub(r"^#.*\n", "", path.read_text(), flags=re.MULTILINE).strip().split("\n\n"):
        entry = dict(line.split(": ", 1) for line in paragraph.splitlines() if not line.startswith(" "))
        if set(entry) != {"file", "line", "change", "reason"}:
            sys.exit(f"{path}: an entry must have exactly file, line, change and reason:\n{paragraph}")
        keys.add((entry["file"], entry["line"], entry["change"]))
    return keys


# Running programs.


def limit_memory():
    # An endless loop must not exhaust the machine's memory.
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def succeeds(command, log, seconds=None, **options):
    with open(log, "w") as output, subprocess.Popen(
            command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, start_new_session=True,
            **options) as process:
        try:
            return process.wait(seconds) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return False


def children_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


class Worker:
    """A copy of the tree with a build of its own."""

    def __init__(self, number):
        self.directory = WORK / f"worker-{number}"
        self.tree = self.directory / "tree"
        self.build = self.directory / "build"
        self.log = self.directory / "log.txt"
        # The test programs: path below the build directory, and seconds. The one most likely to fail comes first.
        self.programs = {}
        self.changed_file = None

    def prepare(self):
        step(f"building in {self.directory.relative_to(ROOT)} (log: {self.log.relative_to(ROOT)})")
        self.copy_tree()
        linker = ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"] if shutil.which("ld.lld") else []
        self.must_succeed(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                           # A function that no longer returns a value is not worth running.
                           "-DCMAKE_CXX_FLAGS=-Werror=return-type", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", *linker,
                           # Programs need not be relinked when the shared library changes.
                           "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DTESTCOMMANDLINEPARSER_BUILD_TESTS=ON",
                           "-DTESTCOMMANDLINEPARSER_BUILD_TOOLS=OFF", "-DTESTCOMMANDLINEPARSER_BUILD_EXAMPLES=OFF",
                           "-DTESTCOMMANDLINEPARSER_BUILD_BENCHMARKS=OFF"])
        self.must_succeed(["ninja", "-C", self.build])

    def copy_tree(self):
        """Brings the copy up to date; unchanged files keep their timestamps, so that little is rebuilt."""
        files = git("ls-files", "--cached", "--others", "--exclude-standard").splitlines()
        wanted = {self.tree / file: ROOT / file for file in files if (ROOT / file).is_file()}
        for target, source in wanted.items():
            if not target.exists() or target.read_bytes() != source.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        for path in self.tree.rglob("*"):
            if path.is_file() and path not in wanted:
                path.unlink()

    def must_succeed(self, command):
        if not succeeds(command, self.log):
            sys.exit(f"{self.log.read_text()}\nfailed: {' '.join(map(str, command))}")

    def find_programs(self, pattern):
        """The GoogleTest programs among ctest's tests."""
        listing = subprocess.run(["ctest", "--test-dir", self.build, "--show-only=json-v1"], check=True,
                                 capture_output=True, text=True).stdout
        commands = [test.get("command", []) for test in json.loads(listing)["tests"]]
        programs = {os.path.relpath(command[0], self.build) for command in commands
                    if any(word.startswith("--gtest_filter=") for word in command)}
        return sorted(program for program in programs if re.search(pattern, program))

    def measure(self, pattern):
        """Runs every program without a change and keeps the fast ones, the fastest first."""
        seconds = {}
        for program in self.find_programs(pattern):
            start = children_seconds()
            if not self.passes(program, 600):
                sys.exit(f"{self.log.read_text()}\n{program} fails without any change")
            seconds[program] = children_seconds() - start
            if seconds[program] > LONGEST_PROGRAM_SECONDS:
                print(f"left out: {program} takes {seconds.pop(program):.0f} seconds")
        return dict(sorted(seconds.items(), key=lambda item: item[1]))

    def compiles(self, program):
        return succeeds(["ninja", "-C", self.build, "-j1", program], self.log, 300)

    def passes(self, program, seconds):
        path = self.build / program
        return succeeds([path, "--gtest_brief=1", "--gtest_fail_fast"], self.log, seconds, cwd=path.parent,
                        preexec_fn=limit_memory)

    def test(self, mutant):
        """Returns "noticed", "survived" or "does not compile"."""
        if self.changed_file not in (None, mutant.file):
            shutil.copy(ROOT / self.changed_file, self.tree / self.changed_file)
        self.changed_file = mutant.file
        (self.tree / mutant.file).write_text(mutant.apply((ROOT / mutant.file).read_text()))
        for program, seconds in self.programs.items():
            if not self.compiles(program):
                return "does not compile"
            if not self.passes(program, 10 * seconds + 5):
                # The next change is probably noticed by the same program.
                self.programs = {program: seconds, **self.programs}
                return "noticed"
        return "survived"


# The whole run.


def test_all(mutants, workers):
    idle = queue.SimpleQueue()
    for worker in workers:
        idle.put(worker)

    def test(mutant):
        worker = idle.get()
        outcome = worker.test(mutant)
        idle.put(worker)
        if outcome == "survived":
            print(f"survived: {mutant}", flush=True)
        return outcome

    outcomes = collections.Counter()
    survivors = []
    with concurrent.futures.ThreadPoolExecutor(len(workers)) as pool:
        for number, (mutant, outcome) in enumerate(zip(mutants, pool.map(test, mutants)), 1):
            outcomes[outcome] += 1
            if outcome == "survived":
                survivors.append(mutant)
            if number % 50 == 0:
                step(f"{number} of {len(mutants)}")
    return outcomes, survivors


def parse_arguments():
    parser = argparse.ArgumentParser(prog="scripts/mutate", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--list", action="store_true", help="only print the changes")
    parser.add_argument("--only", metavar="FILE", default="", help="only change files whose path contains this text")
    parser.add_argument("--changed", metavar="COMMIT", help="only change lines of src/ that differ from this commit")
    parser.add_argument("--programs", metavar="PATTERN", default="",
                        help="only run test programs whose path below the build matches, as in 'differential|fault'")
    parser.add_argument("--sample", metavar="N", type=int, help="only test N changes, chosen at random")
    parser.add_argument("--jobs", metavar="N", type=int, default=2, help="the number of workers (2)")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    mutants = find_mutants()
    listed = {path.name: read_list(path) for path in LISTS}
    stale = set().union(*listed.values()) - {mutant.key() for mutant in mutants}
    for file, line, change in sorted(stale):
        print(f"no such change any more: {file}: {change}\n    {line}")

    mutants = [mutant for mutant in mutants if arguments.only in mutant.file]
    if arguments.changed:
        lines = changed_lines(arguments.changed)
        mutants = [mutant for mutant in mutants
                   if lines[mutant.file].intersection(range(mutant.first_line, mutant.last_line + 1))]
    left_out = ", ".join(f"{sum(mutant.key() in keys for mutant in mutants)} of {name}" for name, keys in listed.items())
    mutants = [mutant for mutant in mutants if not any(mutant.key() in keys for keys in listed.values())]
    if arguments.sample is not None:
        mutants = sorted(random.sample(mutants, min(arguments.sample, len(mutants))), key=mutants.index)
    if arguments.list or not mutants:
        print(*mutants, f"{len(mutants)} changes; left out: {left_out}", sep="\n")
        return 1 if stale else 0

    step(f"{len(mutants)} changes: all of src/ takes about half an hour")
    workers = [Worker(number + 1) for number in range(min(arguments.jobs, len(mutants)))]
    for worker in workers:
        worker.prepare()
    step("running the tests without any change")
    programs = workers[0].measure(arguments.programs)
    for worker in workers:
        worker.programs = programs
    step(f"testing {len(mutants)} changes with {len(programs)} programs")
    outcomes, survivors = test_all(mutants, workers)
    for mutant in survivors:
        print(f"\nfile: {mutant.file}\nline: {mutant.line}\nchange: {mutant.change}")
    noticed = outcomes["noticed"]
    print(f"\n{len(mutants)} changes tested: {noticed} noticed, {len(survivors)} survived, "
          f"{outcomes['does not compile']} do not compile; left out: {left_out}; "
          f"score {100 * noticed / max(noticed + len(survivors), 1):.1f} %")
    return 1 if survivors or stale else 0


if __name__ == "__main__":
    sys.exit(main())
