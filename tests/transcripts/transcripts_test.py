#!/usr/bin/env python3
"""The spoken journeys, move by move: what a kept transcript as a whole cannot prove. BIN names the programs' folder."""

import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
TOOL = HERE.parent.parent / "tools" / "transcripts.py"
sys.path.insert(0, str(TOOL.parent))
import transcripts  # noqa: E402

if "BIN" not in os.environ:
    sys.exit("Set BIN to the folder of vesk-host and veskctl, such as build/release/bin.")
BIN = pathlib.Path(os.environ["BIN"])
HOUSEHOLD = HERE / "household.json"
ADDRESS = re.compile(r"0x[0-9a-f]+")
# The module looks up the services once more to speak of them.
ASKED_TO_SPEAK = re.compile(r" (device_services|product_name)\.cpp: | get_service_count\(")


class Case(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vesk-transcript-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def press(self, keys, *options, **more):
        return transcripts.press(BIN, HOUSEHOLD, keys.split(), "en_GB", self.folder, *options, **more)


class Moves(Case):
    """Each step of a journey says as many texts as it announces: none is missing, none comes twice."""

    def every_step_speaks(self, name, first=1, last=None):
        journey = transcripts.read_journey(HERE, name)
        kept = (HERE / f"{name}.en_GB.txt").read_text(encoding="utf-8").splitlines()
        whole = [line for line in kept if not line.startswith("> ")]
        # All steps but the last: with it the journey is whole and has a test of its own.
        counts = range(first, last or len(journey.steps))
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            texts = list(pool.map(lambda count: transcripts.listen(BIN, journey, "en_GB", count), counts))
        for count, said in zip(counts, texts):
            step = journey.steps[count - 1]
            self.assertEqual(said, whole[:journey.texts(count)], f"after step {count}, {step.key}: {step.what}")

    def test_first_look_beginning(self):
        self.every_step_speaks("first_look", 1, 5)

    def test_first_look_second_part(self):
        self.every_step_speaks("first_look", 5, 9)

    def test_first_look_end(self):
        self.every_step_speaks("first_look", 9)

    def test_allow_beginning(self):
        self.every_step_speaks("allow", 1, 5)

    def test_allow_second_part(self):
        self.every_step_speaks("allow", 5, 9)

    def test_allow_end(self):
        self.every_step_speaks("allow", 9)

    def test_delete_two_beginning(self):
        self.every_step_speaks("delete_two", 1, 6)

    def test_delete_two_second_part(self):
        self.every_step_speaks("delete_two", 6, 11)

    def test_delete_two_third_part(self):
        self.every_step_speaks("delete_two", 11, 16)

    def test_delete_two_end(self):
        self.every_step_speaks("delete_two", 16)

    def test_details_beginning(self):
        self.every_step_speaks("details", 1, 5)

    def test_details_second_part(self):
        self.every_step_speaks("details", 5, 9)

    def test_details_end(self):
        self.every_step_speaks("details", 9)

    def test_empty(self):
        self.every_step_speaks("empty")


class SameKeys(Case):
    """The reader changes nothing: the same keys end in the same picture and the same lines of the module's log."""

    def module_lines(self):
        lines = (self.folder / "log").read_text(encoding="utf-8").splitlines()
        (self.folder / "log").unlink()
        lines = [ADDRESS.sub("", line[line.index("VESK_LOG"):]) for line in lines if "VESK_LOG" in line]
        return [line for line in lines if not ASKED_TO_SPEAK.search(line)]

    def same_without_reader(self, name, language):
        journey = transcripts.read_journey(HERE, name)
        pauses = [i for i, step in enumerate(journey.steps) if step.key.startswith("wait:")]
        keys = journey.keys(language, pauses[0] if pauses else None)

        def end(*options):
            transcripts.press(BIN, journey.devices, keys, language, self.folder, *options)
            return (self.folder / "panel.png").read_bytes(), self.module_lines()

        picture, lines = end()
        spoken_picture, spoken_lines = end("--transcript", self.folder / "transcript")
        self.assertGreater(len(lines), 5)
        self.assertEqual(spoken_lines, lines)
        self.assertEqual(spoken_picture, picture, "the pictures of the end differ")

    def test_first_look(self):
        self.same_without_reader("first_look", "en_GB")

    def test_first_look_mirrored(self):
        self.same_without_reader("first_look", "he_IL")

    def test_allow(self):
        self.same_without_reader("allow", "en_GB")

    def test_delete_two(self):
        self.same_without_reader("delete_two", "en_GB")

    def test_delete_two_mirrored(self):
        self.same_without_reader("delete_two", "ar_AE")

    def test_details(self):
        self.same_without_reader("details", "ko_KR")

    def test_empty(self):
        self.same_without_reader("empty", "en_GB")


class Voice(Case):
    """Without a transcript: the terminal, or a synthesiser of this test's own that notes what it is given."""

    def setUp(self):
        super().setUp()
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.notes = self.folder / "notes"

    def synthesiser(self, then):
        program = self.programs / "espeak-ng"
        program.write_text(f"#!/bin/sh\necho \"$*\" >> '{self.notes}'\n{then}\n", encoding="utf-8")
        program.chmod(0o755)

    def said(self):
        return [line.split(" -- ", 1)[1] for line in self.notes.read_text(encoding="utf-8").splitlines()]

    def test_without_synthesiser_the_texts_are_lines_on_the_terminal(self):
        complaint = ("vesk-host: the speech synthesiser espeak-ng is not installed; install the Debian package "
                     "espeak-ng; the texts are written to the terminal\n")
        lines = self.press("Down Right", "--screen-reader", path=self.programs, complaint=complaint).splitlines()
        self.assertEqual([transcripts.TIME.sub("", line) for line in lines if transcripts.TIME.match(line)],
                         ["Device list,Items: 5,Nora's phone,Allowed", "거실 태블릿,Allowed", "Edit, Button"])
        self.assertEqual([line for line in lines if not transcripts.TIME.match(line)],
                         [str(self.folder / "panel.png")])

    def test_an_announcement_interrupts(self):
        # A voice that never comes to the end of a text: the next one is heard only when it interrupts.
        self.synthesiser("exec /bin/sleep 60")
        self.press("wait:500 Down wait:500 Right wait:500 Return wait:500 Return wait:500", "--screen-reader",
                   path=self.programs)
        self.assertEqual(self.said(), ["Device list,Items: 5,Nora's phone,Allowed", "거실 태블릿,Allowed", "Edit, Button",
                                       "Select all, Button", "Tick box,Ticked,거실 태블릿,Allowed"])

    def test_what_follows_an_announcement_waits_for_it(self):
        self.synthesiser("")
        self.press("Right wait:500 Return wait:1000", "--screen-reader", path=self.programs)
        self.assertEqual(self.said()[-2:], ["Select all, Button", "Tick box,Not ticked,Nora's phone,Allowed"])


class Tool(Case):
    """The comparison can fail."""

    def setUp(self):
        super().setUp()
        self.copy = self.folder / "journeys"
        shutil.copytree(HERE, self.copy)
        self.kept = self.copy / "empty.en_GB.txt"

    def run_tool(self, *arguments):
        return subprocess.run([sys.executable, "-B", TOOL, *arguments, "--bin", BIN, "--folder", self.copy,
                               "--journey", "empty", "--language", "en_GB"],
                              capture_output=True, text=True, check=False)

    def change(self, path, old, new):
        text = path.read_text(encoding="utf-8")
        self.assertIn(old, text)
        path.write_text(text.replace(old, new, 1), encoding="utf-8")

    def test_a_difference_is_shown_and_renewed(self):
        as_kept = self.kept.read_text(encoding="utf-8")
        self.change(self.kept, "Close", "Shut")
        check = self.run_tool("check")
        self.assertEqual(check.returncode, 1)
        self.assertRegex(check.stdout, re.compile(r"^-.*Shut\n\+.*Close$", re.M))
        self.assertEqual(self.run_tool("renew").returncode, 0)
        self.assertEqual(self.kept.read_text(encoding="utf-8"), as_kept)
        self.assertEqual(self.run_tool("check").returncode, 0)

    def test_a_missing_transcript_is_a_difference(self):
        self.kept.unlink()
        self.assertEqual(self.run_tool("check").returncode, 1)

    def test_a_step_that_says_more_than_announced(self):
        self.change(self.copy / "empty.journey", "start  1", "start  0")
        check = self.run_tool("check")
        self.assertEqual(check.returncode, 1)
        self.assertIn("1 texts are said", check.stderr)

    def test_a_mark_or_an_id_is_not_spoken(self):
        for text in ("\u200eName", "&#x200e;Name", "%1 items", "COM_SID_CLOSE", "SID_TV", "\u2067Name"):
            self.assertTrue(transcripts.NOT_SPOKEN.search(text), text)
        self.assertFalse(transcripts.NOT_SPOKEN.search("100 % of <Nora's> & Leo's"))

    def test_bad_input_is_told(self):
        (self.copy / "empty.journey").write_text("devices nobody.json\nUp often\n", encoding="utf-8")
        check = self.run_tool("check")
        self.assertEqual(check.returncode, 2)
        self.assertIn("empty.journey:2:", check.stderr)


if __name__ == "__main__":
    unittest.main()
