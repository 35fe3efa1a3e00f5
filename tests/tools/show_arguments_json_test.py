"""What show_arguments prints for programs, and where it says that everything came from."""

import json
import random
import unittest

from show_arguments_support import (
    PROGRAM, RECORD_FIELDS, changes, given, run, show_json, show_on_terminal)


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
        self.assertIs(report["succeeded"], True)
        self.assertIsNone(report["reason"])
        self.assertEqual(report["applicationName"], PROGRAM)
        self.assertIs(report["helpRequested"], True)
        self.assertIs(report["waitBeforeExit"], True)
        self.assertEqual(report["outputFilename"], "out")
        self.assertEqual(report["xmlFilename"], "")
        self.assertEqual(report["transportLayers"], "A,B")
        self.assertEqual(report["testPaths"], ["Suite"])
        self.assertEqual(changes(report), {
            "ORVEX_GTC_USE_EXTRA_TL": (None, "1"),
            "ORVEX_DEVICE_FILTER": (None, "DeviceClass=A||DeviceClass=B"),
            "ORVEX_GIGE_STREAM_GEVSCPS": ("9000", "8192"),
            "VCS_BRANCH": (None, "main"),
            "TRANSPORT_LAYER": (None, "A B"),
        })

    def test_tells_which_source_gave_each_value_and_which_one_won(self):
        report, _ = show_json(
            "-o", "b", "-tl", "B", "-h", variables={
                "ORVEX_TEST_ARGS": "-o a -tl A First -x early", "_ORVEX_TEST_ARGS_": "-o c -tl=C -h Last -camemu"})
        first, line, last = "ORVEX_TEST_ARGS", "command line", "_ORVEX_TEST_ARGS_"
        self.assertEqual(given(report, "o"), [(first, "a", "lost"), (line, "b", "lost"), (last, "c", "won")])
        self.assertEqual(given(report, "x"), [(first, "early", "won")])
        self.assertEqual(given(report, "tl"), [
            (first, "A", "collected"), (line, "B", "collected"), (last, "C", "collected")])
        self.assertEqual(given(report, "h"), [(line, None, "counted"), (last, None, "counted")])
        self.assertEqual(given(report, "camemu"), [(last, None, "ignored")])
        self.assertEqual(report["testPathOrigins"], [
            {"source": first, "value": "First", "outcome": "collected"},
            {"source": last, "value": "Last", "outcome": "collected"}])

    def test_tells_what_each_token_became(self):
        rows = {
            ("-o", "file"): [("option", "o"), ("value", "o")],
            ("-o=file",): [("option with value", "o")],
            ("--o=",): [("option with value", "o")],
            ("-o",): [("flag", "o")],
            ("-o", "-w"): [("flag", "o"), ("flag", "w")],
            ("-o", "-o=a=b"): [("flag", "o"), ("option with value", "o")],
            ("-packetdelay", "-5"): [("option", "packetdelay"), ("value", "packetdelay")],
            ("-w", "Suite"): [("flag", "w"), ("test path", None)],
            ("-w=1",): [("option with value", "w")],
            ("-tdc_variant", "V"): [("flag", "tdc_variant"), ("test path", None)],
            ("-tdc_variant=V",): [("option with value", "tdc_variant")],
            ("-tdc_name", "N"): [("flag", "tdc_name"), ("test path", None)],
            ("-5", "", "+x", "/x"): [("test path", None)] * 4,
            ("-", "---", "--", "a"): [("flag", "-"), ("flag", "---"), ("flag", "--"), ("test path", None)],
            ("-=x", "-=x"): [("option with value", "")] * 2,
        }
        for tokens, expected in rows.items():
            with self.subTest(tokens=tokens):
                report, result = show_json(*tokens)
                if result.returncode != 0:
                    self.assertIn("-packetdelay", tokens)
                found = [(token["became"], token.get("option")) for token in report["sources"][1]["tokens"]]
                self.assertEqual(found, [("program name", None)] + expected)

    def test_a_program_name_that_looks_like_an_option_is_one(self):
        report, _ = show_json("-o", "a", variables={"ORVEX_TEST_ARGS": "First Second"})
        self.assertEqual([token["became"] for token in report["sources"][0]["tokens"]],
                         ["program name", "test path", "test path"])
        result = run(("-w", "Name", "Suite"), {"SHOW_ARGUMENTS_FORMAT": "json", "ORVEX_TEST_ARGS": "First"},
                     executable=PROGRAM)
        report = json.loads(result.stdout)
        self.assertEqual(report["applicationName"], "First")
        self.assertEqual([token["became"] for token in report["sources"][0]["tokens"]], ["flag", "program name"])
        self.assertEqual([token["became"] for token in report["sources"][1]["tokens"]],
                         ["flag", "test path", "test path"])

    def test_says_why_an_occurrence_is_ignored(self):
        report, _ = show_json("-w=1", "-x", "-foo=1", "-tdc_variant", "V", "-o=")
        notes = {entry["name"]: entry["given"][0].get("note") for entry in report["options"]}
        self.assertEqual(notes, {
            "w": "counts only without a value", "x": "has no value", "foo": "unknown option",
            "tdc_variant": "needs the form name=value", "o": "empty, as if not given"})

    def test_a_failed_parse_has_a_reason_and_the_usage_text_on_standard_error(self):
        report, result = show_json("Suite", variables={"_ORVEX_TEST_ARGS_": "'"})
        self.assertEqual(result.returncode, 1)
        self.assertIs(report["succeeded"], False)
        self.assertEqual(report["reason"], "_ORVEX_TEST_ARGS_: Starting quote has no ending quote.")
        self.assertEqual([source["state"] for source in report["sources"]], ["not set", "scanned", "malformed"])
        self.assertEqual(report["sources"][2]["message"], "Starting quote has no ending quote.")
        self.assertEqual(report["testPathOrigins"][0]["outcome"], "not used")
        self.assertTrue(result.stderr.endswith("passed con the command line.\n"))

    def test_any_text_becomes_valid_json(self):
        report, _ = show_json("-o", "\"\\\n\x1b\x7f", "-x", "Größe", "-testname", b"a\xffb")
        self.assertEqual(report["outputFilename"], "\"\\\n\x1b\x7f")
        self.assertEqual(report["xmlFilename"], "Größe")
        self.assertEqual(report["testRunInformation"]["testName"], "a\ufffdb")

    def test_has_no_colour_on_a_terminal(self):
        output = show_on_terminal(40, variables={"SHOW_ARGUMENTS_FORMAT": "json"})
        self.assertNotIn("\x1b", output)
        self.assertIs(json.loads(output)["succeeded"], True)


class Agreement(unittest.TestCase):
    """Where the values came from agrees with what the parser holds, for many random command lines."""

    WORDS = (
        "-o", "-x", "-o=a", "-x=", "-w", "-?", "-h=1", "-tl", "-tl=A,B", "-p", "-p=k=v", "-camemu", "-camemu=2",
        "-packetsize", "-packetdelay", "-socketbuffer", "-tdc_group", "-tdc_guid", "-tdc_guid=", "-tdc_runname",
        "-tdc_rundescription", "-tdc_product", "-tdc_variant", "-tdc_variant=V", "-tdc_userid", "-tdc_vcsrevision",
        "-tdc_vcsbranch", "-tdc_dxml", "-pcname", "-osname", "-testname", "-ostype", "-bit", "-tdc_name", "-", "--",
        "-5", "7", "8", "9", "10", "", "two words", "it's", "Suite", "Suite::Case", "-foo=bar")
    ACCESSORS = {"output file": "outputFilename", "XML report file": "xmlFilename"}
    DERIVED = ("ORVEX_DEVICE_FILTER", "ORVEX_GIGE_STREAMPARAMS", "GENICAM_GENTL64_PATH")

    def assert_set(self, report, target, option, values):
        """What an option sets holds its value, or its values joined."""
        if target in RECORD_FIELDS:
            self.assertEqual(report["testRunInformation"][target], ",".join(values), target)
        elif target in self.ACCESSORS:
            self.assertEqual(report[self.ACCESSORS[target]], values[0], target)
        elif target in self.DERIVED:
            if option == "socketbuffer":
                self.assertIn("SocketBufferSize=" + values[0], changes(report)[target][1])
        else:
            self.assertEqual(changes(report)[target][1], " ".join(values), target)

    def assert_agrees(self, report):
        self.assertEqual([path["value"] for path in report["testPathOrigins"]], report["testPaths"])
        names = [token["text"] for source in report["sources"] for token in source["tokens"]
                 if token["became"] == "program name"]
        self.assertEqual(names, [report["applicationName"]] if report["applicationName"] or names else [])
        counted = {entry["sets"] for entry in report["options"]
                   if any(one["outcome"] == "counted" for one in entry["given"])}
        self.assertEqual("help" in counted, report["helpRequested"])
        self.assertEqual("wait before exit" in counted, report["waitBeforeExit"])

        targets = set()
        for entry in report["options"]:
            values = [one["value"] for one in entry["given"] if one["outcome"] in ("won", "collected")]
            if "".join(values):
                for target in entry["sets"].split(", "):
                    self.assert_set(report, target, entry["name"], values)
                    targets.add(target)
        # Nothing is set that no option explains.
        unexplained = {name for name, text in report["testRunInformation"].items() if text} - targets
        self.assertLessEqual(unexplained, {"group", "fixedZero", "transportLayers"})
        unexplained = set(changes(report)) - targets
        self.assertLessEqual(unexplained, {"ORVEX_GTC_USE_EXTRA_TL", "ORVEX_GIGE_STREAM_GEVSCPS"})

    def test_with_the_parser(self):
        generator = random.Random(20241)
        succeeded = 0
        for _ in range(300):
            lists = [generator.choices(self.WORDS, k=generator.randrange(12)) for _ in range(3)]
            name = generator.choice(("program", "program", "-w", "-o", ""))
            variables = {
                variable: " ".join("'" + word.replace("'", "\\'") + "'" for word in words)
                for variable, words in (("ORVEX_TEST_ARGS", lists[0]), ("_ORVEX_TEST_ARGS_", lists[2]))}
            with self.subTest(name=name, lists=lists):
                result = run((name, *lists[1]), {"SHOW_ARGUMENTS_FORMAT": "json", **variables}, executable=PROGRAM)
                report = json.loads(result.stdout)
                if report["succeeded"]:
                    succeeded += 1
                    self.assert_agrees(report)
                else:
                    self.assertRegex(report["reason"], "^the value of -[a-z]+ does not begin with a digit: ")
        self.assertGreater(succeeded, 100)


if __name__ == "__main__":
    unittest.main()
