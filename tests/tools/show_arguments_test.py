"""What show_arguments prints for people and for programs, and how it ends. The command line:

    show_arguments_test.py SHOW_ARGUMENTS LIBRARY [TEST...]
"""

import fcntl
import json
import os
import pathlib
import pty
import re
import shutil
import struct
import subprocess
import sys
import tempfile
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


class Json(unittest.TestCase):
    maxDiff = None

    def test_holds_what_a_test_program_sees(self):
        report, result = show_json(
            "-tl", "A", "-tl", "B", "-o=out", "-w", "-?", "Suite", "-tdc_vcsbranch", "main", "-bit", "64",
            variables={"ORVEX_GIGE_STREAM_GEVSCPS": "9000"})
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(list(report), [
            "succeeded", "reason", "applicationName", "helpRequested", "waitBeforeExit", "outputFilename",
            "xmlFilename", "transportLayers", "testPaths", "testRunInformation", "environment", "options",
            "testPathOrigins", "sources"])
        self.assertEqual(list(report["testRunInformation"]), RECORD_FIELDS)
        filled = {name: text for name, text in report["testRunInformation"].items() if text}
        self.assertEqual(filled, {
            "group": "orvex", "fixedZero": "0", "vcsBranch": "main", "secondVcsBranch": "main",
            "transportLayers": "A,B", "bit": "64"})
        self.assertEqual(list(report.values())[:9], [True, None, PROGRAM, True, True, "out", "", "A,B", ["Suite"]])
        self.assertEqual(changes(report), {
            "ORVEX_GTC_USE_EXTRA_TL": (None, "1"),
            "ORVEX_DEVICE_FILTER": (None, "DeviceClass=A||DeviceClass=B"),
            "ORVEX_GIGE_STREAM_GEVSCPS": ("9000", "8192"),
            "VCS_BRANCH": (None, "main"),
            "TRANSPORT_LAYER": (None, "A B"),
        })

    def test_tells_what_each_token_became(self):
        rows = {
            ("-o", "file"): [("option", "o"), ("value", "o")],
            ("--o=", "-w=1"): [("option with value", "o"), ("option with value", "w")],
            ("-o", "-w"): [("flag", "o"), ("flag", "w")],
            ("-o", "-o=a=b"): [("flag", "o"), ("option with value", "o")],
            ("-packetdelay", "-5"): [("option", "packetdelay"), ("value", "packetdelay")],
            ("-w", "Suite"): [("flag", "w"), ("test path", None)],
            ("-tdc_variant", "V"): [("flag", "tdc_variant"), ("test path", None)],
            ("-tdc_variant=V",): [("option with value", "tdc_variant")],
            ("-5", "", "+x", "/x"): [("test path", None)] * 4,
            ("-", "---", "--", "a"): [("flag", "-"), ("flag", "---"), ("flag", "--"), ("test path", None)],
            ("-=x", "-=x"): [("option with value", "")] * 2,
        }
        for tokens, expected in rows.items():
            with self.subTest(tokens=tokens):
                report, _ = show_json(*tokens)
                found = [(token["became"], token.get("option")) for token in report["sources"][1]["tokens"]]
                self.assertEqual(found, [("program name", None)] + expected)

    def test_a_failed_parse_has_its_reason_in_the_report_and_on_standard_error(self):
        report, result = show_json("Suite", "-x", variables={"_ORVEX_TEST_ARGS_": "'"})
        self.assertEqual(result.returncode, 1)
        self.assertIs(report["succeeded"], False)
        self.assertEqual(result.stderr, f"show_arguments: the parse failed: {report['reason']}\n")
        self.assertEqual([source["state"] for source in report["sources"]], ["not set", "scanned", "malformed"])
        self.assertEqual(report["sources"][2]["message"], "Starting quote has no ending quote.")
        self.assertEqual(report["testPathOrigins"][0]["outcome"], "not used")
        self.assertEqual(report["options"][0]["given"], [
            {"source": "command line", "value": None, "outcome": "not used"}])

    def test_any_text_becomes_valid_json(self):
        report, _ = show_json("-o", "\"\\\n\x1b\x7f", "-x", "Größe", "-testname", b"a\xffb")
        self.assertEqual(report["outputFilename"], "\"\\\n\x1b\x7f")
        self.assertEqual(report["xmlFilename"], "Größe")
        self.assertEqual(report["testRunInformation"]["testName"], "a\ufffdb")


def names_in(path, pattern):
    """The names in quotes within each match of the pattern in a source file."""
    found = re.findall(pattern, (ROOT / path).read_text(encoding="utf-8"), re.DOTALL)
    return {name for text in found for name in re.findall('"([^"]*)"', text)}


class Options(unittest.TestCase):
    """The option table of the tool, row by row, against what the library does with the option."""

    PARSER = "src/parser/OrvexTestCommandLineParser.cpp"
    REGISTERED = names_in(PARSER, r"add(?:Multi)?ValueOptions\((.*?)\)")
    FLAGS = names_in(PARSER, r"helpSwitches\[\] = (.*?);") | {"w"}
    # The values of an option that sets other variables than those of any value.
    VALUES = {"tl": ("DravikGTC", "DravikGigE:SocketDriver")}

    def assert_shows_what_it_sets(self, name, *arguments):
        """What changes with the option is what the report says that it sets, by name."""
        def seen(report):
            accessors = {key: report[key] for key in (
                "helpRequested", "waitBeforeExit", "outputFilename", "xmlFilename", "transportLayers")}
            variables = {key: after for key, (_, after) in changes(report).items()}
            return {**report["testRunInformation"], **accessors, **variables}
        without, (report, _) = seen(show_json()[0]), show_json(*arguments)
        changed = {key for key, value in seen(report).items() if without.get(key) != value}
        (option,) = report["options"]
        self.assertEqual(option["name"], name)
        self.assertEqual(set(option["sets"].split(", ")), changed)
        self.assertIn(option["given"][0]["outcome"], ("won", "collected", "counted"))
        self.assertEqual(report["testPathOrigins"], [])

    def test_each_registered_option_takes_its_value_and_sets_what_is_shown(self):
        self.assertGreater(len(self.REGISTERED), 20)
        for name in sorted(self.REGISTERED):
            for value in self.VALUES.get(name, ("7",)):
                with self.subTest(option=name, value=value):
                    self.assert_shows_what_it_sets(name, f"-{name}", value)
                    self.assert_shows_what_it_sets(name, f"-{name}={value}")

    def test_each_flag_and_the_variant_set_what_is_shown(self):
        self.assertEqual(len(self.FLAGS), 5)
        for argument in sorted(self.FLAGS) + ["tdc_variant=V"]:
            with self.subTest(argument=argument):
                self.assert_shows_what_it_sets(argument.split("=")[0], "-" + argument)

    def test_the_table_has_each_option_and_no_other(self):
        rows = names_in("tools/show_arguments/options.cpp", r"{(\"[^\"]+\"),\s+OptionKind::(?!Unread)")
        self.assertEqual(rows, self.REGISTERED | self.FLAGS | {"tdc_variant"})

    def test_each_variable_shows_although_it_held_the_same_before(self):
        arguments = ("-packetdelay", "7", "-camemu", "2", "-tdc_guid", "1", "-tdc_variant=V")
        first, _ = show_json(*arguments)
        environment = {name: after for name, (_, after) in changes(first).items()}
        second, _ = show_json(*arguments, variables=environment)
        self.assertEqual(second["environment"], [])
        self.assertEqual(second["options"], first["options"])

    def test_a_variable_that_is_set_because_of_another_option_is_not_shown(self):
        report, _ = show_json("-tl", "DravikUsb", "-socketbuffer", "1", "-packetsize=", "-h=1", "-?")
        sets = {option["name"]: option["sets"] for option in report["options"]}
        self.assertNotIn("ORVEX_GIGE_STREAMPARAMS", sets["tl"])
        self.assertEqual(sets["socketbuffer"], "ORVEX_GIGE_STREAMPARAMS")
        self.assertEqual((sets["packetsize"], sets["h"]), ("", ""))


class TextReport(unittest.TestCase):
    maxDiff = None

    def test_shows_what_a_test_program_sees_and_where_it_came_from(self):
        result = show("-o", "c", "-w", "Suite", variables={
            "ORVEX_TEST_ARGS": "-o a -tdc_guid '' First", "_ORVEX_TEST_ARGS_": " \t",
            "ORVEX_GIGE_STREAM_GEVSCPS": "9000"})
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        found = sections(result.stdout)
        self.assertEqual(found["Result"], [
            "  succeeded",
            f"  applicationName    {PROGRAM}",
            "  helpRequested      no",
            "  waitBeforeExit     yes",
            "  outputFilename     c",
            '  xmlFilename        ""',
            '  transportLayers    ""',
            "  ORVEX_TEST_ARGS    scanned (5)",
            "  command line       scanned (4)",
            "  _ORVEX_TEST_ARGS_  blank",
        ])
        self.assertEqual(found["Test paths"], ["  ORVEX_TEST_ARGS  First", "  command line     Suite"])
        self.assertEqual(found["Environment"], [
            "  ORVEX_GIGE_STREAM_GEVSCPS  8192  (was 9000)", "  ORVEX_GTC_USE_EXTRA_TL     1"])
        self.assertEqual(found["Options"], [
            "  -o         sets outputFilename",
            "    lost     ORVEX_TEST_ARGS    a",
            "             to c from command line",
            "    won      command line       c",
            "  -tdc_guid",
            '    won      ORVEX_TEST_ARGS    ""',
            "             empty, as if not given",
            "  -w         sets waitBeforeExit",
            "    counted  command line       (flag)",
        ])
        self.assertNotIn("Hints", found)

    def test_empty_fields_of_the_record_share_a_line(self):
        lines = sections(show("-bit", "64").stdout)["Test-run record"]
        filled = ["group", "fixedZero", "transportLayers", "bit"]
        self.assertEqual([line.split()[0] for line in lines], [*filled, "(empty)"])
        self.assertEqual(lines[-1].replace(",", "").split()[1:], [name for name in RECORD_FIELDS if name not in filled])

    def test_each_test_path_is_listed_once(self):
        paths = [f"Suite{i}" for i in range(300)]
        self.assertEqual(re.findall(r"Suite\d+", show(*paths).stdout), paths)

    def test_text_that_a_terminal_would_act_on_is_escaped(self):
        values = {"-o": "a\x1b[31m\n\"\\", "-x": " blank", "-testname": "Größe 日本", "-pcname": b"\xff\xc2\x9b"}
        output = show(*(word for pair in values.items() for word in pair), "(flag)").stdout
        for shown in ('"a\\x1b[31m\\n\\"\\\\"', '" blank"', "Größe 日本", '"\\xff\\x9b"', '"(flag)"'):
            self.assertRegex(output, f"(?m)  {re.escape(shown)}$")
        self.assertNotIn("\x1b", output)


class Why(unittest.TestCase):
    def options(self, *arguments, variables=None):
        return sections(show(*arguments, variables=variables).stdout)["Options"]

    def test_each_entry_of_the_transport_layers_has_its_class_and_its_driver(self):
        no_capitals = "ignored: only DravikGigE takes one, with these capitals"
        rows = {
            "DravikUsb": "class DravikUsb, no driver",
            "DravikGigE:SocketDriver": "class DravikGigE, driver SocketDriver taken",
            "DravikGigE:": "class DravikGigE, no driver",
            "DravikGigE::x": 'class DravikGigE, driver "" taken; what follows is ignored',
            "DravikGigE:A:more": "class DravikGigE, driver A taken; what follows is ignored",
            "dravikgige:SocketDriver": f"class dravikgige, driver SocketDriver {no_capitals}",
            "OtherClass:SocketDriver": f"class OtherClass, driver SocketDriver {no_capitals}",
            ":SocketDriver": f'class "", driver SocketDriver {no_capitals}',
            "A,,B:": "class A, no driver; class B, no driver",
        }
        for value, reason in rows.items():
            with self.subTest(value=value):
                self.assertEqual(self.options("-tl", value)[-1].strip(), reason)

    def test_of_several_drivers_the_last_in_byte_order_wins(self):
        lines = self.options("-tl", "DravikGigE:WindowsFilterDriver,DravikGigE:z", "-tl", "DravikGigE:Z")
        self.assertEqual([line.strip() for line in lines[2::2]], [
            "class DravikGigE, driver WindowsFilterDriver lost to z, the last in byte order; "
            "class DravikGigE, driver z taken",
            "class DravikGigE, driver Z lost to z, the last in byte order"])

    def test_a_number_is_refused_and_what_comes_after_it_is_not_used(self):
        lines = self.options("-tl", "DravikGigE:A", "-camemu", "x", "-socketbuffer", "-2")
        self.assertEqual([" ".join(line.split()) for line in lines[2:]], [
            "class DravikGigE, driver A not used: the parse failed",
            "-camemu", "not used command line x", "does not begin with a digit",
            "-socketbuffer", "refused command line -2", "does not begin with a digit"])


class Hints(unittest.TestCase):
    def test_each_names_what_one_might_have_meant(self):
        rows = {
            ("-packetsise=1",): "-packetsise is not read; did you mean -packetsize?",
            ("-packetsise", "1500"):
                "-packetsise is not read, and 1500 became a test path; did you mean -packetsize?",
            ("-packetszie", "-w"): "-packetszie is not read; did you mean -packetsize?",
            ("-HELP",): "-HELP is not read; did you mean -help?",
            ("-guid=1",): "-guid is not read; did you mean -tdc_guid?",
            ("--",): "-- is not read",
            ("-tdc_name", "N"):
                "-tdc_name is not read, although the usage text names it, and N became a test path; use -testname",
            ("-tdc_osname",): "-tdc_osname is not read, although the usage text names it; use -osname",
            ("-tdc_variant", "V"):
                "-tdc_variant has no value, and V became a test path; write -tdc_variant=V",
            ("-tdc_variant", "-w"): "-tdc_variant has no value; write -tdc_variant=VALUE",
            ("-o", "-w"): "-o has no value, since -w begins with a dash; if that is meant, write -o=-w",
            ("-tl",): "-tl has no value: it is the last argument (command line)",
            ("-w=1",): "-w counts only without a value",
        }
        for arguments, hint in rows.items():
            with self.subTest(arguments=arguments):
                self.assertEqual(sections(show(*arguments).stdout)["Hints"], ["  " + hint])

    def test_what_they_advise_works(self):
        for argument in ("-x=-file.xml", "-tdc_variant=V", "-testname=N", "-pcname=N", "-osname=N", "-packetsize=1"):
            with self.subTest(argument=argument):
                output = show(argument).stdout
                self.assertIn(" sets ", output)
                self.assertNotIn("Hints", output)

    def test_a_number_is_no_option(self):
        self.assertIn("-2z  (begins with a number, so it is no option)\n", show("-2z").stdout)

    def test_there_are_none_for_what_the_parser_did_not_look_at(self):
        self.assertNotIn("Hints", show("-foo", "X", variables={"_ORVEX_TEST_ARGS_": "'"}).stdout)


class Help(unittest.TestCase):
    def assert_usage(self, output):
        self.assertTrue(output.startswith(f"{PROGRAM} [-?] [-camemu n] [-o filename]"))
        self.assertTrue(output.endswith("passed con the command line.\n"))
        self.assertEqual(output.count("\n"), 8)

    def test_each_help_switch_prints_the_usage_text_and_nothing_else(self):
        for switch in ("-?", "-h", "-H", "-help", "--help"):
            with self.subTest(switch=switch):
                result = show(switch, "Suite")
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                self.assert_usage(result.stdout)

    def test_a_parse_that_fails_shows_it_too_and_the_reason_after_it(self):
        for arguments, variables in ((("-?", "-camemu", "none"), {}), (("-?",), {"ORVEX_TEST_ARGS": "'"})):
            with self.subTest(arguments=arguments):
                result = show(*arguments, variables=variables)
                self.assertEqual(result.returncode, 1)
                self.assert_usage(result.stdout)
                self.assertRegex(result.stderr, r"^show_arguments: the parse failed: .*\n$")


class Failure(unittest.TestCase):
    def assert_fails(self, result, reason):
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, f"show_arguments: the parse failed: {reason}\n-? shows the usage text\n")
        found = sections(result.stdout)
        self.assertEqual(found["Result"][0].split(maxsplit=1), ["failed", reason])
        return found

    def test_the_first_variable_has_an_open_quote(self):
        found = self.assert_fails(
            show("Suite", variables={"ORVEX_TEST_ARGS": r'''-o 'a' \' "b 'c''', "_ORVEX_TEST_ARGS_": "'"}),
            r'''ORVEX_TEST_ARGS: the quote at byte 11 is not closed: "\"b 'c" (the whole value: "-o 'a' \\' \"b 'c")''')
        self.assertEqual([line.split(maxsplit=1)[1] for line in found["Result"][-2:]],
                         ["line       not reached", "not reached"])

    def test_the_second_variable_has_an_open_quote(self):
        found = self.assert_fails(
            show("-o", "a", "Suite", variables={"_ORVEX_TEST_ARGS_": "'"}),
            "_ORVEX_TEST_ARGS_: the quote at byte 1 is not closed: ' (the whole value: ')")
        self.assertEqual(found["Test paths (not used)"], ["  command line  Suite"])
        self.assertEqual(found["Options"], ["  -o", "    not used  command line       a"])

    def test_the_first_number_that_does_not_begin_with_a_digit(self):
        numbers = ("socketbuffer", "packetsize", "packetdelay", "camemu")
        for i, option in enumerate(numbers):
            # Those that are checked later are bad, too.
            bad = [word for other in reversed(numbers[i:]) for word in (f"-{other}", "-1")]
            with self.subTest(option=option):
                self.assert_fails(show(*bad, variables={"_ORVEX_TEST_ARGS_": f"-{option} x1"}),
                                  f"the value of -{option} does not begin with a digit: x1 (_ORVEX_TEST_ARGS_)")

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
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (2, "", "show_arguments: SHOW_ARGUMENTS_FORMAT must be text or json\n"))

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a file that is always full")
    def test_a_full_output_is_an_error(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            program = subprocess.run((PROGRAM,), env=clean_environment(), stdout=full, stderr=subprocess.PIPE,
                                     encoding="utf-8", timeout=60, check=False)
        self.assertEqual(program.returncode, 2)
        self.assertEqual(program.stderr, "show_arguments: cannot write to standard output\n")


class Terminal(unittest.TestCase):
    ARGUMENTS = ("-tl", "DravikGigE", "-o", "directory/" * 30 + "file", "-x", "wörd 日本 " * 40 + "end", "-unknown")

    def test_the_width_changes_nothing(self):
        for columns in (40, 80):
            with self.subTest(columns=columns):
                output = show_on_terminal(columns, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
                self.assertEqual(output, show(*self.ARGUMENTS).stdout)

    def test_colour_says_nothing_that_the_text_does_not(self):
        coloured = show_on_terminal(80, *self.ARGUMENTS)
        self.assertIn("\x1b[1mResult\x1b[0m\n", coloured)
        self.assertRegex(coloured, "\x1b\\[32msucceeded\x1b\\[0m\n")
        self.assertRegex(coloured, "\x1b\\[31m  ignored +\x1b\\[0m")
        self.assertEqual(re.sub("\x1b\\[[0-9]+m", "", coloured), show(*self.ARGUMENTS).stdout)

    def test_there_is_no_colour_where_it_is_not_wanted(self):
        for variables in ({"NO_COLOR": "1"}, {"TERM": "dumb"}, {"TERM": ""}):
            with self.subTest(variables=variables):
                self.assertNotIn("\x1b", show_on_terminal(80, variables=variables))
        self.assertIn("\x1b", show_on_terminal(80, variables={"NO_COLOR": ""}))
        self.assertNotIn("\x1b", show(variables={"TERM": "xterm"}).stdout)

    def test_the_reason_of_a_failure_stands_last(self):
        lines = show_on_terminal(40, "-camemu", "x", variables={"NO_COLOR": "1"}).splitlines()
        self.assertRegex(lines[-2], "^show_arguments: the parse failed: the value of -camemu ")
        self.assertEqual(lines[-1], "-? shows the usage text")


if __name__ == "__main__":
    unittest.main()
