"""What show_arguments prints for people and for programs, and how it ends. The command line:

    show_arguments_test.py SHOW_ARGUMENTS LIBRARY [TEST...]
"""

import fcntl
import json
import os
import pathlib
import re
import shlex
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

ROOT = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(ROOT / "tests" / "support"))
from program import clean_environment, open_terminal, run

PROGRAM = sys.argv.pop(1)
LIBRARY = sys.argv.pop(1)

RECORD_FIELDS = [
    "group", "guid", "runName", "runDescription", "product", "fixedZero", "userId", "vcsRevision", "vcsBranch",
    "secondVcsRevision", "secondVcsBranch", "pcName", "osName", "transportLayers", "tdcDravikXmlFilename",
    "testName", "osType", "bit",
]


def show(*arguments, variables=None, **options):
    return run((PROGRAM, *arguments), variables, **options)


def show_json(*arguments, variables=None):
    return json.loads(show(*arguments, variables={"SHOW_ARGUMENTS_FORMAT": "json", **(variables or {})}).stdout)


def sections(output):
    """The lines of each section under its title, and the verdict under None."""
    *blocks, verdict = output.rstrip("\n").split("\n\n")
    found = {None: verdict.split("\n")}
    for block in blocks:
        title, *lines = block.split("\n")
        found[title] = lines
    return found


def environment(report, *states):
    """The variables in these states, or in any, with their values before and after."""
    return {variable["name"]: (variable["before"], variable["after"]) for variable in report["environment"]
            if not states or variable["state"] in states}


def outcomes(report):
    return {option["name"]: [given["outcome"] for given in option["given"]] for option in report["options"]}


def sets(report):
    return {option["name"]: option["sets"] for option in report["options"]}


def show_on_terminal(columns, *arguments, variables=None):
    """What the program writes to a terminal of that many columns, errors included."""
    screen, terminal = open_terminal()
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

    def test_has_everything_that_a_test_program_sees(self):
        report = show_json(
            "-tl", "A", "-tl", "B", "-o=out", "-w", "-?", "Suite", "-tdc_vcsbranch", "main", "-bit", "64")
        self.assertEqual(list(report), [
            "succeeded", "reason", "applicationName", "helpRequested", "waitBeforeExit", "outputFilename",
            "xmlFilename", "transportLayers", "testPaths", "testRunInformation", "environment", "producers",
            "options", "testPathOrigins", "sources", "hints"])
        self.assertEqual(list(report.values())[:9], [True, None, PROGRAM, True, True, "out", "", "A,B", ["Suite"]])
        self.assertEqual(list(report["testRunInformation"]), RECORD_FIELDS)
        self.assertEqual({name: text for name, text in report["testRunInformation"].items() if text}, {
            "group": "orvex", "fixedZero": "0", "vcsBranch": "main", "secondVcsBranch": "main",
            "transportLayers": "A,B", "bit": "64"})
        self.assertEqual(environment(report, "set"), {
            "ORVEX_GTC_USE_EXTRA_TL": (None, "1"), "ORVEX_DEVICE_FILTER": (None, "DeviceClass=A||DeviceClass=B"),
            "ORVEX_GIGE_STREAM_GEVSCPS": (None, "8192"), "VCS_BRANCH": (None, "main"),
            "TRANSPORT_LAYER": (None, "A B")})
        self.assertEqual(report["testPathOrigins"], [
            {"source": "command line", "value": "Suite", "outcome": "collected"}])
        self.assertEqual(report["options"][0], {
            "name": "tl", "sets": ["transportLayers", "ORVEX_DEVICE_FILTER", "TRANSPORT_LAYER"],
            "given": [
                {"source": "command line", "value": text, "outcome": "collected", "note": f"class {text}, no driver"}
                for text in "AB"]})

    def test_says_what_each_token_became(self):
        rows = {
            ("-o", "file"): [("option", "o"), ("value", "o")],
            ("--o=", "-w=1"): [("option with value", "o"), ("option with value", "w")],
            ("-o", "-o=a=b"): [("flag", "o"), ("option with value", "o")],
            ("-tdc_variant", "V"): [("flag", "tdc_variant"), ("test path", None)],
            ("-5", "", "+x", "/x"): [("test path", None)] * 4,
            ("-", "---", "--", "a"): [("flag", "-"), ("flag", "---"), ("flag", "--"), ("test path", None)],
        }
        for tokens, expected in rows.items():
            with self.subTest(tokens=tokens):
                report = show_json(*tokens)
                found = [(token["became"], token.get("option")) for token in report["sources"][1]["tokens"]]
                self.assertEqual(found, [("program name", None)] + expected)

    def test_keeps_bytes_that_are_not_utf_8_distinguishable(self):
        report = show_json("-o", "\"\\\n\x1b\x7f", "-x", "Größe \ufffd", "-testname", b"a\xffb", b"\xfe")
        self.assertEqual(report["outputFilename"], "\"\\\n\x1b\x7f")
        self.assertEqual(report["xmlFilename"], "Größe \ufffd")
        self.assertEqual(report["testRunInformation"]["testName"], {"bytes": "61ff62"})
        self.assertEqual(report["testPaths"], [{"bytes": "fe"}])


class Values(unittest.TestCase):
    """Which values take effect."""

    def test_the_last_value_wins(self):
        report = show_json("-o", "b", variables={"ORVEX_TEST_ARGS": "-o a", "_ORVEX_TEST_ARGS_": "-o c"})
        (option,) = report["options"]
        lost_to = "to the last value, from _ORVEX_TEST_ARGS_"
        self.assertEqual([(given["value"], given["outcome"], given.get("note")) for given in option["given"]],
                         [("a", "lost", lost_to), ("b", "lost", lost_to), ("c", "won", None)])

    def test_what_a_failed_parse_does_not_reach_is_not_used(self):
        rows = {
            "-packetsize x -packetdelay 7 -tdc_guid 1 -p a=b -o f -socketbuffer 5": {
                "packetsize": ["refused"], "packetdelay": ["not used"], "tdc_guid": ["not used"], "p": ["not used"],
                "o": ["won"], "socketbuffer": ["won"]},
            "-camemu x -packetsize 1 -packetsize 2 -bit 1 -bit 2 -w": {
                "camemu": ["refused"], "packetsize": ["lost", "won"], "bit": ["not used", "not used"],
                "w": ["counted"]},
            "-socketbuffer x -camemu y -tl DravikGigE:S": {
                "socketbuffer": ["refused"], "camemu": ["not used"], "tl": ["collected"]},
        }
        for line, expected in rows.items():
            with self.subTest(line=line):
                self.assertEqual(outcomes(show_json(*line.split())), expected)

    def test_nothing_is_used_after_an_unterminated_quote(self):
        report = show_json("-o", "f", "-w", "-foo", "Suite", variables={"_ORVEX_TEST_ARGS_": "'"})
        self.assertEqual(outcomes(report), {"o": ["not used"], "w": ["not used"], "foo": ["not used"]})
        self.assertEqual(report["testPathOrigins"][0]["outcome"], "not used")
        self.assertEqual((report["testPaths"], len(report["hints"])), ([], 1))
        self.assertEqual([source["state"] for source in report["sources"]], ["not set", "scanned", "malformed"])
        self.assertEqual(report["sources"][2]["message"], "Starting quote has no ending quote.")

    def test_an_empty_value_is_treated_as_not_given(self):
        for arguments in (("-o=",), ("-tl=",), ("-p", ""), ("-packetsize=",)):
            with self.subTest(arguments=arguments):
                (option,) = show_json(*arguments)["options"]
                self.assertEqual((option["given"][0]["outcome"], option["sets"]), ("empty", []))
        self.assertEqual(sets(show_json("-p=", "-p="))["p"], ["TEST_PROPERTIES"])
        self.assertEqual(sets(show_json("-tl=", "-tl="))["tl"], ["transportLayers", "TRANSPORT_LAYER"])

    def test_the_note_of_a_transport_layer_names_its_class_and_its_driver(self):
        rows = {
            ("DravikUsb",): "class DravikUsb, no driver",
            ("DravikGigE:SocketDriver",): "class DravikGigE, driver SocketDriver used",
            ("DravikGigE:S", "-packetsize", "x"): "class DravikGigE, driver S used",
            ("DravikGigE:S", "-socketbuffer", "x"): "class DravikGigE, driver S not used: the parse failed",
            ("DravikGigE:",): "class DravikGigE, no driver",
            ("DravikGigE::x",): 'class DravikGigE, driver "" used',
            ("dravikgige:S",): "class dravikgige, driver S ignored",
            (":S",): 'class "", driver S ignored',
            ("A,,B:",): "class A, no driver; class B, no driver",
            ("DravikGigE:b,DravikGigE:a",): "class DravikGigE, driver b used; "
                                            "class DravikGigE, driver a lost to the last in byte order",
        }
        for arguments, note in rows.items():
            with self.subTest(arguments=arguments):
                self.assertEqual(show_json("-tl", *arguments)["options"][0]["given"][0]["note"], note)


class Environment(unittest.TestCase):
    ARGUMENTS = ("-tl", "DravikGTC,DravikGigE:S", "-packetsize", "1500", "-packetdelay", "7", "-socketbuffer", "1",
                 "-camemu", "2", "-p", "a=b", "-tdc_guid", "1", "-tdc_variant=V", "-tdc_vcsbranch", "main")

    def test_inherited_variables_do_not_change_what_an_option_sets(self):
        for failing in ((), ("-camemu", "x"), ("-packetsize", "x"), ("-socketbuffer", "x")):
            with self.subTest(failing=failing):
                first = show_json(*self.ARGUMENTS, *failing)
                inherited = {name: after for name, (_, after) in environment(first).items()}
                second = show_json(*self.ARGUMENTS, *failing, variables=inherited)
                self.assertEqual(second["options"], first["options"])
                was_set = {*environment(first, "set")} - {"ORVEX_GTC_USE_EXTRA_TL", "GENICAM_GENTL64_PATH"}
                self.assertEqual({*environment(second, "set again")}, was_set)

    def test_each_variable_is_set_or_set_again_or_kept(self):
        report = show_json("-packetsize", "1500", "-packetdelay", "7", variables={
            "ORVEX_GIGE_STREAM_GEVSCPS": "9000", "ORVEX_GIGE_STREAM_GEVSCPD": "7", "TEST_PROPERTIES": "",
            "ORVEX_GTC_USE_EXTRA_TL": "0", "GENICAM_GENTL64_PATH": "/old", "OTHER": "x"})
        self.assertEqual(environment(report, "set"), {"ORVEX_GIGE_STREAM_GEVSCPS": ("9000", "1500")})
        self.assertEqual(environment(report, "set again"), {"ORVEX_GIGE_STREAM_GEVSCPD": ("7", "7")})
        self.assertEqual(environment(report, "kept"), {
            "TEST_PROPERTIES": ("", ""), "ORVEX_GTC_USE_EXTRA_TL": ("0", "0"),
            "GENICAM_GENTL64_PATH": ("/old", "/old")})

    def test_only_a_packet_size_that_the_parse_sets_without_the_option_is_a_default(self):
        for line, is_default in (("", True), ("-packetsize=", True), ("-packetsize 8192", False),
                                 ("-socketbuffer x", False)):
            report = show_json(*line.split(), variables={"ORVEX_GIGE_STREAM_GEVSCPS": "9000"})
            defaults = [variable["name"] for variable in report["environment"] if variable["isDefault"]]
            self.assertEqual(defaults, ["ORVEX_GIGE_STREAM_GEVSCPS"] * is_default, line)

    def test_an_option_does_not_show_what_another_one_sets(self):
        report = show_json("-tl", "DravikUsb", "-socketbuffer", "1", "-packetsize=", "-h=1", "-?")
        self.assertNotIn("ORVEX_GIGE_STREAMPARAMS", sets(report)["tl"])
        self.assertEqual(sets(report)["socketbuffer"], ["ORVEX_GIGE_STREAMPARAMS"])
        self.assertEqual((sets(report)["packetsize"], sets(report)["h"]), ([], []))


@unittest.skipUnless(sys.platform.startswith("linux"), "needs a library search path from the environment")
class Producers(unittest.TestCase):
    """The directories for -tl DravikGTC, with a copy of the library in a temporary SDK."""

    def setUp(self):
        self.root = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())).resolve()

    def install(self, name):
        """Puts the library into an SDK of that name; returns the directory of the producers."""
        libraries = self.root / name / "Frameworks/orvex.framework/Versions/A/Libraries"
        libraries.mkdir(parents=True)
        (self.root / name / "Frameworks/orvex.framework/Libraries").symlink_to("Versions/A/Libraries")
        (libraries / "gentlproducer/gtl").mkdir(parents=True)
        shutil.copy(LIBRARY, libraries / "libtestcommandlineparser.so.0")
        self.variables = {"LD_LIBRARY_PATH": str(libraries), "GENICAM_GENTL64_PATH": "/old"}
        return f"{self.root}/{name}/Frameworks/orvex.framework/Libraries"

    def test_the_directories_are_those_of_the_loaded_library(self):
        libraries = self.install("sdk")
        library = f"{self.variables['LD_LIBRARY_PATH']}/libtestcommandlineparser.so.0"
        report = show_json("-tl", "DravikGTC", variables=self.variables)
        self.assertEqual(report["producers"], {"library": library, "directories": [
            {"path": f"{libraries}/gentlproducer/gtl", "exists": True},
            {"path": f"{libraries}/orvexCXP/bin", "exists": False}]})
        self.assertEqual(report["hints"], [])
        lines = sections(show("-tl", "DravikGTC", variables=self.variables).stdout)
        self.assertEqual(lines["Producer directories of the library"], [
            f"  library  {library}",
            f"  exists   {libraries}/gentlproducer/gtl",
            f"  missing  {libraries}/orvexCXP/bin"])

    def test_a_path_that_the_expansion_changes_gets_a_hint(self):
        for name, is_changed in (("a%b", True), ("a$(b", True), ("a$$b", True), ("a$b", False)):
            with self.subTest(name=name):
                self.install(name)
                report = show_json("-tl", "DravikGTC", variables=self.variables)
                self.assertEqual(len(report["hints"]), is_changed)
                # The next process sets it again.
                inherited = {**self.variables, **{n: after for n, (_, after) in environment(report).items()}}
                second = show_json("-tl", "DravikGTC", variables=inherited)
                self.assertNotIn("GENICAM_GENTL64_PATH", environment(second, "kept"))
                self.assertEqual(second["options"], report["options"])

    def test_no_producers_are_shown_unless_the_parse_sets_the_variable(self):
        self.assertIsNone(show_json("-tl", "DravikGTC", "-camemu", "x")["producers"])
        self.assertIsNone(show_json("-tl", "DravikUsb")["producers"])


def quote_for_variable(token):
    return token if token and not re.search("[ \t\"'\\\\]", token) else '"%s"' % re.sub(r'(["\\])', r"\\\1", token)


def show_line(line, source):
    """The report for arguments as one types them: in a shell, or in one of the variables."""
    environment = {"SHOW_ARGUMENTS_FORMAT": "json"}
    if source == "command line":
        return json.loads(run(("sh", "-c", f'"$0" {line}', PROGRAM), environment).stdout)
    return json.loads(run((PROGRAM,), {**environment, source: line}).stdout)


UNKNOWN = "is not a known option"
ATTACHED = f"{UNKNOWN}. Separate the value from the name."
SPACED = 'There must be no space before or after the "=" of'
USE_EQUALS = "begins with a dash. If"

# For a POSIX shell: the arguments, what to type instead of the wrong ones, and the hint.
HINTS = [
    # names
    ("-packetsise 1500", "-packetsize 1500",
     f'"-packetsise" {UNKNOWN}. Did you mean "-packetsize"? "1500" became a test path.'),
    ("-packetsise=1500", "-packetsize 1500", f'"-packetsise=1500" {UNKNOWN}. Did you mean "-packetsize"?'),
    ("-variant V", "-tdc_variant=V", f'"-variant" {UNKNOWN}. Did you mean "-tdc_variant"? "V" became a test path.'),
    ("-packetsise x", None, f'"-packetsise" {UNKNOWN}. Did you mean "-packetsize"? "x" became a test path.'),
    ("-packetsise -w", None, f'"-packetsise" {UNKNOWN}. Did you mean "-packetsize"? It needs a value.'),
    ("-HELP Suite", "-help", f'"-HELP" {UNKNOWN}. Did you mean "-help"?'),
    ("-hostname X", None, f'"-hostname" {UNKNOWN} and is ignored. "X" became a test path.'),
    ("-tdc_runame = nightly", None,
     f'"-tdc_runame" {UNKNOWN}. Did you mean "-tdc_runname"? "=" became a test path.'),
    ("-halpe", None, f'"-halpe" {UNKNOWN} and is ignored.'),
    ("-cxmemy=2", "-camemu 2", f'"-cxmemy=2" {UNKNOWN}. Did you mean "-camemu"?'),
    ("'-tl DravikUsb -o f'", None, f'"-tl DravikUsb -o f" {ATTACHED}'),
    ("-=x", None, f'"-=x" {UNKNOWN} and is ignored.'),
    ("-tdc_name N", "-testname N",
     '"-tdc_name" is in the usage text, but nothing reads it. Use "-testname". "N" became a test path.'),
    # values
    ("-camemu -packetsize 1500", None, '"-camemu" has no value: the next argument is the option "-packetsize".'),
    ("-o -packetsise=1", None, '"-o" has no value: the next argument, "-packetsise=1", begins with a dash.'),
    ("-o -packetsize1500", None, '"-o" has no value: the next argument, "-packetsize1500", begins with a dash.'),
    ("-camemu -foo", None, '"-camemu" has no value: the next argument, "-foo", begins with a dash.'),
    ("-x -file.xml", "-x=-file.xml",
     f'"-x" has no value: the next argument {USE_EQUALS} "-file.xml" is the value, use "=".'),
    ("-p '-a b=c'", "'-p=-a b=c'",
     f'"-p" has no value: the next argument {USE_EQUALS} "-a b=c" is the value, use "=".'),
    ("Suite -tl", None, '"-tl" has no value: it is the last argument.'),
    ("-tdc_variant V", "-tdc_variant=V", '"-tdc_variant" takes a value only after "=". "V" became a test path.'),
    ("-tdc_variant -w", None, '"-tdc_variant" takes a value only after "=". It needs a value.'),
    ("-w=1", "-w", '"-w" takes no value: "-w=1" is not read. Leave out the value to switch it on.'),
    ("'-o = f'", "-o f", f'"-o = f" {ATTACHED}'),
    ("-oresult.txt", "-o result.txt", f'"-oresult.txt" {ATTACHED}'),
    ("-packetsize1500", "-packetsize 1500", f'"-packetsize1500" {ATTACHED}'),
    ("-tdc_variant:V", "-tdc_variant=V", f'"-tdc_variant:V" {ATTACHED}'),
    ("-pExposure=5", "-p Exposure=5", f'"-pExposure=5" {ATTACHED}'),
    ("-output=result.txt", None, f'"-output=result.txt" {UNKNOWN} and is ignored.'),
    ("-o = f", "-o f", f'{SPACED} "-o".'),
    ("-packetsize= =1500", "-packetsize 1500", f'{SPACED} "-packetsize".'),
    ("-packetsize =1500", "-packetsize 1500", f'{SPACED} "-packetsize".'),
    ("-tdc_variant = V", "-tdc_variant=V", f'{SPACED} "-tdc_variant".'),
    ("-tl=", None, 'The value of "-tl" is empty, as if "-tl" were not given.'),
    ("-packetsize 1,500", None, '"1,500" is not all digits. It is passed on as written.'),
    # test paths
    ("-tl DravikGigE DravikUsb Suite", "-tl DravikGigE,DravikUsb",
     'The value of "-tl" ends at a space: "DravikUsb" became a test path.'),
    ("-tl=A, B DravikC", "-tl A,B,DravikC", 'The value of "-tl" ends at a space: "B", "DravikC" became test paths.'),
    ("-tl A , B : S", "-tl A,B:S", 'The value of "-tl" ends at a space: ",", "B", ":", "S" became test paths.'),
    ("-p a = 1 b=2", "-p a=1 -p b=2", 'The value of "-p" ends at a space: "=", "1", "b=2" became test paths.'),
    ("-p a=1 'b=x y' Suite", "-p a=1 -p 'b=x y'", 'The value of "-p" ends at a space: "b=x y" became a test path.'),
    ("packetsize=1500", "-packetsize 1500", '"packetsize=1500" became a test path: it has no dash in front.'),
    ("bit 64", "-bit 64", '"bit" became a test path: it has no dash in front.'),
    ("help", "-help", '"help" became a test path: it has no dash in front.'),
    # from a document
    ("'–o' f", "-o f", '"–o" became a test path: it begins with an en dash instead of "-".'),
    ("'—help'", "-help", '"—help" became a test path: it begins with an em dash instead of "-".'),
    ("'−tdc_variant=V'", "-tdc_variant=V",
     '"−tdc_variant=V" became a test path: it begins with a minus sign instead of "-".'),
    ("'–foo'", None, '"–foo" became a test path: it begins with an en dash instead of "-".'),
    ("-o '“my file.txt”'", "-o 'my file.txt'", 'The curly quote in "“my file.txt”" does not group.'),
    ("'-p=‘a=b’'", "-p a=b", 'The curly quote in "-p=‘a=b’" does not group.'),
    ("-x –o f", None, '"–o" became the value of "-x": it begins with an en dash instead of "-".'),
    ("-p 'title=“a”'", "-p title=a", 'The curly quote in "title=“a”" does not group.'),
    ("-tl 'DravikGigE:“S”'", "-tl DravikGigE:S", 'The curly quote in "DravikGigE:“S”" does not group.'),
    ("-o '“my' 'file.txt”'", None, 'The curly quote in "“my" does not group.'),
    # transport layers
    ("-tl 'DravikGigE: S, B'", "-tl DravikGigE:S,B", 'The spaces in " S" are part of the name.'),
    ("-tl dravikgige:S", "-tl DravikGigE:S", '"dravikgige" is not "DravikGigE": classes are case-sensitive.'),
    ("-tl DRAVIKGTC", "-tl DravikGTC", '"DRAVIKGTC" is not "DravikGTC": classes are case-sensitive.'),
    ("-tl DravikUsb:S", "-tl DravikUsb", 'The driver "S" is ignored: only DravikGigE takes one.'),
    ("-tl DravikGigE:A,DravikGigE:B", None,
     'The driver "A" is not used: if there are several drivers, the last in byte order wins.'),
    ("-tl DravikGTCx", None, '"DravikGTCx" is not the class "DravikGTC", but contains the name. '
     "That is enough to set GENICAM_GENTL64_PATH."),
    ("-tl DravikGigE:DravikGTC", None, '"DravikGigE:DravikGTC" is not the class "DravikGTC", but contains the name. '
     "That is enough to set GENICAM_GENTL64_PATH."),
    # together with other mistakes
    ("-w 'it'\\''s \"\\ $x' -tdc_guid=1 -osname", None, '"-osname" has no value: it is the last argument.'),
    ("-Pcname 'it'\\''s \"\\ $x'", "-pcname 'it'\\''s \"\\ $x'",
     f'"-Pcname" {UNKNOWN}. Did you mean "-pcname"? "it\'s \\"\\\\ $x" became a test path.'),
]


class Hints(unittest.TestCase):
    maxDiff = None

    def test_each_correction_works_where_the_argument_came_from(self):
        for source in ("command line", "ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_"):
            for line, correction, message in HINTS:
                words = correction and shlex.split(correction)
                if source != "command line":
                    line = " ".join(map(quote_for_variable, shlex.split(line)))
                    correction = correction and " ".join(map(quote_for_variable, words))
                with self.subTest(source=source, line=line):
                    hints = show_line(line, source)["hints"]
                    self.assertIn((source, message, correction),
                                  [(hint["source"], hint["message"], hint["correction"]) for hint in hints])
                    if correction:
                        (argument,) = [hint["argument"] for hint in hints if hint["message"] == message]
                        self.assertIn(argument, line)
                        self.assert_works(show_line(line.replace(argument, correction, 1), source), words, message)

    def assert_works(self, corrected, words, message):
        """The option in these words takes effect, with their value, and the hint is gone."""
        self.assertNotIn(message, [hint["message"] for hint in corrected["hints"]])
        name, *value = words[0].lstrip("-").split("=", 1) + words[1:]
        (option,) = [option for option in corrected["options"] if option["name"] == name]
        self.assertIn((option["given"][0]["value"], option["given"][0]["outcome"]),
                      [(value[0], "won"), (value[0], "collected")] if value else [(None, "counted")])

    def test_arguments_that_make_sense_as_they_are_get_no_hint(self):
        for line in ("", "Suite TestSuiteGigE::DynamicHeartbeatTest -w 1 -5", "-tl DravikGigE:S,DravikUsb",
                     "-p a=b Suite", "-tl A Suite DravikTests", "-o=-x -x a=b", "-tl DravikUsb DravikTests::Case",
                     "h=x packetsize", "-testname it’s -packetsize 1500", "-o a -o b -tdc_product= -tdc_product=x",
                     "-p a= Suite", "-tdc_rundescription '–o “quoted” = 1,500' -p -5 -tdc_variant=V", "-packetsize 1x -packetsize 2"):
            with self.subTest(line=line):
                self.assertEqual(show_line(line, "command line")["hints"], [])

    def test_one_slip_gives_one_hint(self):
        for line in ("-packetsise 1500", "-x -file.xml", "-tl A DravikB DravikC", "-o = f", "bit 64", "'–o' f",
                     "-o '“a' 'b”'", "-tdc_variant V", "-tdc_name packetsize=1", "-tl '“DravikGigE:S”'"):
            with self.subTest(line=line):
                self.assertEqual(len(show_line(line, "command line")["hints"]), 1)

    def test_a_correction_that_a_terminal_would_not_show_is_left_out(self):
        (hint,) = show_json("-packetsise=1\x1b")["hints"]
        self.assertIsNone(hint["correction"])

    def test_a_line_break_in_a_variable_separates_nothing(self):
        rows = {"-o f\n-w": "-o f -w", "-o f -w\r\n": "-o f -w  ", "-o f \\\n -w": "-o f    -w"}
        for text, corrected in rows.items():
            with self.subTest(text=text):
                (hint, *_) = show_json(variables={"ORVEX_TEST_ARGS": text})["hints"]
                self.assertEqual(hint, {
                    "source": "ORVEX_TEST_ARGS", "argument": text, "correction": corrected,
                    "message": "A line break does not separate arguments."})
                report = show_json(variables={"ORVEX_TEST_ARGS": corrected})
                self.assertEqual((report["outputFilename"], report["waitBeforeExit"], report["hints"]), ("f", True, []))
        self.assertIn("\n      -o f\\n-w\n          ^\n", show(variables={"ORVEX_TEST_ARGS": "-o f\n-w"}).stdout)
        self.assertEqual(show_json(variables={"ORVEX_TEST_ARGS": "-testname 'a\nb'"})["hints"], [])

    def test_a_variable_with_almost_the_right_name_is_not_read(self):
        rows = {"ORVEX_TEST_ARG": "ORVEX_TEST_ARGS", "ORVEX_TETS_ARGS": "ORVEX_TEST_ARGS",
                "ORVEX_TEST_ARGS_": "_ORVEX_TEST_ARGS_", "_ORVEX_TEST_ARGS": "_ORVEX_TEST_ARGS_"}
        for name, meant in rows.items():
            with self.subTest(name=name):
                (hint,) = show_json(variables={name: "-testname 'a b'"})["hints"]
                self.assertEqual((hint["source"], hint["message"]),
                                 ("environment", f'"{name}" is not read. Did you mean "{meant}"?'))
                corrected = run(("sh", "-c", f'{hint["correction"]} exec "$0"', PROGRAM),
                                {"SHOW_ARGUMENTS_FORMAT": "json"})
                report = json.loads(corrected.stdout)
                self.assertEqual((report["testRunInformation"]["testName"], report["hints"]), ("a b", []))
        (hint,) = show_json(variables={"ORVEX_TEST_ARG": "-w", "ORVEX_TEST_ARGS": "-w"})["hints"]
        self.assertIsNone(hint["correction"])
        self.assertEqual(show_json(variables={"ORVEX_ARGS": "-w", "ORVEX_TEST_ARGUMENTS": "-w"})["hints"], [])


class Help(unittest.TestCase):
    def test_a_help_switch_alone_prints_the_usage_text_and_names_the_manual_page(self):
        for switch in ("-?", "-h", "-H", "-help", "--help"):
            with self.subTest(switch=switch):
                result = show(switch, variables={"ORVEX_TEST_ARGS": "", "_ORVEX_TEST_ARGS_": " \t"})
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                self.assertTrue(result.stdout.startswith(f"{PROGRAM} [-?] [-camemu n] [-o filename]"))
                self.assertTrue(result.stdout.endswith(
                    "passed con the command line.\n\nThe manual page of this program: show_arguments(1)\n"))

    def test_a_help_switch_with_any_other_argument_prints_the_report(self):
        rows = [(("-h", "Suite"), {}, "-h (command line)"), (("--help", "-h"), {}, "--help (command line)"),
                ((), {"ORVEX_TEST_ARGS": "-h"}, "-h (ORVEX_TEST_ARGS)"),
                (("-?",), {"_ORVEX_TEST_ARGS_": "-w"}, "-? (command line)")]
        for arguments, variables, by in rows:
            with self.subTest(arguments=arguments, variables=variables):
                result = show(*arguments, variables=variables)
                self.assertEqual(sections(result.stdout)[None], [f"help requested by {by}", "succeeded"])
        self.assertEqual(show("-h=1").stdout.splitlines()[-1], "succeeded, 1 hint")


class Failure(unittest.TestCase):
    def assert_fails(self, result, reason):
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, f"show_arguments: the parse failed: {reason}\n")
        found = sections(result.stdout)
        self.assertEqual(found[None][-1], f"failed: {reason}")
        return found

    def test_an_unterminated_quote_has_a_caret_and_a_remedy(self):
        rows = [
            ("-testname it's -w", "single", 13, "Write an apostrophe as \\'.", r"-testname it\'s -w"),
            ("-testname 'a b", "single", 11, "Another one at the end closes it.", "-testname 'a b'"),
            ("-testname='a b", "single", 11, "Another one at the end closes it.", "-testname='a b'"),
            ('-w \'a\' -testname "it\'s', "double", 18, "Another one at the end closes it.",
             '-w \'a\' -testname "it\'s"'),
            ("-testname it's \"", "single", 13, "Write an apostrophe as \\'.", None),
            ("-testname \"a\\", "double", 11, "Another one at the end closes it.", None),
        ]
        for variable in ("ORVEX_TEST_ARGS", "_ORVEX_TEST_ARGS_"):
            for text, kind, byte, remedy, corrected in rows:
                with self.subTest(variable=variable, text=text):
                    found = self.assert_fails(
                        show(variables={variable: text}), f"{variable} has an unterminated {kind} quote at byte {byte}")
                    self.assertEqual(found["Hints"], [
                        f"  {variable}: The {kind} quote is unterminated. {remedy}",
                        "      " + text, " " * (5 + byte) + "^"] + ([f"      {corrected}"] if corrected else []))
                    if corrected:
                        report = show_json(variables={variable: corrected})
                        self.assertEqual((report["succeeded"], report["hints"]), (True, []))

    def test_the_first_bad_number_in_the_order_of_the_checks_is_the_reason(self):
        self.assert_fails(show("-camemu", "-1", "-packetsize", "-1", variables={"_ORVEX_TEST_ARGS_": "-packetsize x1"}),
                          'the value of -packetsize does not begin with a digit: "x1" (_ORVEX_TEST_ARGS_)')

    @unittest.skipUnless(sys.platform.startswith("linux"), "needs a relative library search path")
    def test_an_application_directory_that_cannot_be_found_is_the_reason(self):
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

    def test_a_wrong_format_exits_with_2(self):
        result = show(variables={"SHOW_ARGUMENTS_FORMAT": "xml"})
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (2, "", "show_arguments: SHOW_ARGUMENTS_FORMAT must be text or json\n"))

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a file that is always full")
    def test_output_to_a_full_device_exits_with_2(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            program = subprocess.run((PROGRAM,), env=clean_environment(), stdout=full, stderr=subprocess.PIPE,
                                     encoding="utf-8", timeout=60, check=False)
        self.assertEqual(program.returncode, 2)
        self.assertEqual(program.stderr, "show_arguments: cannot write to standard output\n")


class Terminal(unittest.TestCase):
    """The text itself, on terminals and elsewhere."""
    maxDiff = None
    ARGUMENTS = ("-tl", "DravikGigE:S", "-o", "directory/" * 30 + "file", "-x", "wörd 日本 " * 40 + "end",
                 "-packetsise", "1500", "-camemu", "1")

    def test_the_report_shows_what_a_test_program_sees_and_why(self):
        result = show("-o", "c", "-w", "Suite", "-foo", "-camemu=2", variables={
            "ORVEX_TEST_ARGS": "-o a -tdc_guid '' First", "_ORVEX_TEST_ARGS_": " \t",
            "ORVEX_GIGE_STREAM_GEVSCPS": "9000", "ORVEX_CAMEMU": "2", "USER_UID": "7"})
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        found = sections(result.stdout)
        record = found.pop("Test-run record")
        self.assertEqual(found, {
            "Result": [
                f"  applicationName  {PROGRAM}",
                "  helpRequested    no",
                "  waitBeforeExit   yes",
                "  outputFilename   c",
                '  xmlFilename      ""',
                '  transportLayers  ""',
            ],
            "Sources": [
                "  ORVEX_TEST_ARGS    scanned (5 arguments)",
                "  command line       scanned (6 arguments)",
                "  _ORVEX_TEST_ARGS_  blank",
            ],
            "Test paths": ["  ORVEX_TEST_ARGS  First", "  command line     Suite"],
            "Environment, set by this parse": [
                "  ORVEX_GTC_USE_EXTRA_TL     1",
                "  ORVEX_GIGE_STREAM_GEVSCPS  8192  (the default; was 9000)",
            ],
            "Environment, set to the value it already had": ["  ORVEX_CAMEMU  2"],
            "Environment, kept from before": ["  USER_UID  7"],
            "Options": [
                "  -o         sets outputFilename",
                "    lost     ORVEX_TEST_ARGS    a",
                "             to the last value, from command line",
                "    won      command line       c",
                "  -tdc_guid",
                '    empty    ORVEX_TEST_ARGS    ""',
                "             as if not given",
                "  -w         sets waitBeforeExit",
                "    counted  command line       (flag)",
                "  -foo",
                "    ignored  command line       (flag)",
                "  -camemu    sets ORVEX_CAMEMU",
                "    won      command line       2",
            ],
            "Hints": [
                '  ORVEX_TEST_ARGS: The value of "-tdc_guid" is empty, as if "-tdc_guid" were not given.',
                '  command line: "-foo" is not a known option and is ignored.',
            ],
            None: ["succeeded, 2 hints"],
        })
        filled = ["group", "fixedZero", "transportLayers"]
        self.assertEqual([line.split()[0] for line in record], [*filled, "(empty)"])
        self.assertEqual(record[-1].replace(",", "").split()[1:], [n for n in RECORD_FIELDS if n not in filled])

    def test_a_value_is_escaped_where_a_terminal_would_act_on_it(self):
        values = {"-o": "a\x1b[31m\n\"\\", "-x": " blank", "-testname": "Größe 日本", "-pcname": b"\xff\xc2\x9b"}
        output = show(*(word for pair in values.items() for word in pair), "(flag)").stdout
        for shown in ('"a\\x1b[31m\\n\\"\\\\"', '" blank"', "Größe 日本", '"\\xff\\x9b"', '"(flag)"'):
            self.assertRegex(output, f"(?m)  {re.escape(shown)}$")
        self.assertNotIn("\x1b", output)

    def test_lines_wrap_between_words_on_a_terminal_only(self):
        plain = show(*self.ARGUMENTS).stdout
        for columns in (40, 80):
            with self.subTest(columns=columns):
                wrapped = show_on_terminal(columns, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
                self.assertEqual(wrapped.split(), plain.split())
                for line in wrapped.splitlines():
                    wide = len(line) + line.count("日") + line.count("本")
                    self.assertTrue(wide <= columns or len(line.split()[-1]) > columns // 2, line)
        self.assertGreater(max(map(len, plain.splitlines())), 300)

    def test_wrapped_lines_are_aligned_with_the_first_one_if_half_of_the_width_is_left(self):
        for columns, indent in ((40, 6), (55, 6), (56, 28), (80, 28)):
            output = show_on_terminal(columns, variables={"TEST_SESSION_DESCRIPTION": "word " * 40, "NO_COLOR": "1"})
            self.assertIn("\n" + " " * indent + "word ", output, columns)

    def test_a_correction_stays_on_its_line(self):
        output = show_on_terminal(40, "-Testname", "many words " * 10, variables={"NO_COLOR": "1"})
        self.assertIn(f"\n      -testname '{'many words ' * 10}'\n", output)

    def test_a_long_variable_is_cut_around_an_unterminated_quote(self):
        text = "日本 -w " * 100 + "-testname it's" + " -x file" * 100
        for columns in (40, 80):
            output = show_on_terminal(columns, variables={"ORVEX_TEST_ARGS": text, "NO_COLOR": "1"})
            line, caret = re.search(r"\n( +\.\.\..*\.\.\.)\n( +\^)\n", output).groups()
            wide = line.count("日") + line.count("本")
            self.assertLessEqual(len(line) + wide, columns)
            self.assertEqual(len(caret), line.index("'") + 1 + wide)
        output = show_on_terminal(40, variables={"ORVEX_TEST_ARGS": "-w " * 9 + "'", "NO_COLOR": "1"})
        self.assertIn("\n      " + "-w " * 9 + "'\n", output)  # as wide as fits

    def test_colour_adds_no_information(self):
        coloured = show_on_terminal(200, *self.ARGUMENTS)
        self.assertIn("\x1b[1mResult\x1b[0m\n", coloured)
        self.assertRegex(coloured, "\x1b\\[32msucceeded, 1 hint\x1b\\[0m\n$")
        self.assertNotIn("\x1b[31m", coloured)
        plain = show_on_terminal(200, *self.ARGUMENTS, variables={"NO_COLOR": "1"})
        self.assertEqual(re.sub("\x1b\\[[0-9]+m", "", coloured), plain)

    def test_only_failures_are_red(self):
        coloured = show_on_terminal(80, "-camemu", "x", "-o", "a", "-o", "b", "-foo")
        red = re.findall("\x1b\\[31m *(.*?) *\x1b\\[0m", coloured, re.DOTALL)
        self.assertEqual([text.split()[0] for text in red], ["refused", "failed:"])

    def test_only_a_terminal_that_wants_colour_gets_it(self):
        for variables in ({"NO_COLOR": "1"}, {"TERM": "dumb"}, {"TERM": ""}):
            with self.subTest(variables=variables):
                self.assertNotIn("\x1b", show_on_terminal(80, variables=variables))
        self.assertIn("\x1b", show_on_terminal(80, variables={"NO_COLOR": ""}))
        self.assertNotIn("\x1b", show(variables={"TERM": "xterm"}).stdout)


if __name__ == "__main__":
    unittest.main()
