"""What show_arguments prints for programs, and where it says that everything came from."""

import json
import random
import re
import unittest

from show_arguments_support import PROGRAM, RECORD_FIELDS, ROOT, changes, run, show_json


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
        self.assertEqual(report["testPaths"], [])

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
        arguments = ("-tl", "DravikGigE:A", "-packetdelay", "7", "-camemu", "2", "-tdc_guid", "1")
        first, _ = show_json(*arguments)
        environment = {name: after for name, (_, after) in changes(first).items()}
        second, _ = show_json(*arguments, variables=environment)
        self.assertEqual(second["environment"], [])
        self.assertEqual(second["options"], first["options"])

    def test_a_variable_that_is_set_because_of_another_option_is_not_shown(self):
        report, _ = show_json("-tl", "DravikUsb", "-socketbuffer", "1", "-packetsize=")
        sets = {option["name"]: option["sets"] for option in report["options"]}
        self.assertNotIn("ORVEX_GIGE_STREAMPARAMS", sets["tl"])
        self.assertEqual(sets["socketbuffer"], "ORVEX_GIGE_STREAMPARAMS")
        self.assertEqual(sets["packetsize"], "")


class Agreement(unittest.TestCase):
    """Where the values came from agrees with what the parser holds, for many random command lines."""

    WORDS = (
        "-o", "-x", "-o=a", "-x=", "-w", "-?", "-h=1", "-tl", "-tl=A,B", "-p=k=v", "-camemu", "-packetsize",
        "-tdc_guid=", "-tdc_variant", "-testname", "-", "--", "-5", "7", "8", "", "two words", "it's", "Suite")
    TARGETS = {"o": "outputFilename", "x": "xmlFilename", "tl": "transportLayers", "testname": "testName"}

    def assert_agrees(self, report):
        self.assertEqual([path["value"] for path in report["testPathOrigins"]], report["testPaths"])
        fields = {**report["testRunInformation"], **report}
        for entry in report["options"]:
            values = [one["value"] for one in entry["given"] if one["outcome"] in ("won", "collected")]
            if entry["name"] in self.TARGETS:
                self.assertEqual(fields[self.TARGETS[entry["name"]]], ",".join(values), entry)

    def test_with_the_parser(self):
        generator = random.Random(20241)
        succeeded = 0
        for _ in range(300):
            lists = [generator.choices(self.WORDS, k=generator.randrange(12)) for _ in range(3)]
            name = generator.choice(("program", "-w", "-o", ""))
            first, last = (" ".join("'" + word.replace("'", "\\'") + "'" for word in lists[i]) for i in (0, 2))
            with self.subTest(name=name, lists=lists):
                result = run((name, *lists[1]), {"SHOW_ARGUMENTS_FORMAT": "json", "ORVEX_TEST_ARGS": first,
                                                 "_ORVEX_TEST_ARGS_": last}, executable=PROGRAM)
                report = json.loads(result.stdout)
                if report["succeeded"]:
                    succeeded += 1
                    self.assert_agrees(report)
                else:
                    self.assertRegex(report["reason"], "^the value of -[a-z]+ does not begin with a digit: ")
        self.assertGreater(succeeded, 100)


if __name__ == "__main__":
    unittest.main()
