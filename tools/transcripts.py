#!/usr/bin/env python3
"""What the screen reader says on five journeys through the panel, in five languages.

check   plays journeys and compares what is said with the kept transcripts
renew   writes the transcripts anew; look at the difference before keeping it

A journey is a text file, tests/transcripts/<journey>.journey: the file of its devices, then one step a line: the key,
how many texts it makes the reader say, and what happens. Left and Right are those of a language that is written from
left to right; in a mirrored panel the other one is pressed.
"""

import argparse
import concurrent.futures
import dataclasses
import difflib
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
LANGUAGES = ("en_GB", "de_DE", "ko_KR", "ar_AE", "he_IL")
MIRRORED = ("ar_AE", "he_IL")
OPPOSITE = {"Left": "Right", "Right": "Left"}
LIMIT_S = 60
TIME = re.compile(r"^\[\+\d+\.\d{3}\] ")
# What belongs into a picture or into a source, and never into speech.
NOT_SPOKEN = re.compile("[\u200e\u200f\u202a-\u202e\u2066-\u2069]|&#|</|%[0-9ds]|[A-Z]_SID_|^SID_|COM_VIEW")


class Problem(Exception):
    """A sentence for the user."""


@dataclasses.dataclass
class Step:
    key: str  # "start" before the first key
    texts: int  # how many are said
    what: str


@dataclasses.dataclass
class Journey:
    name: str
    devices: pathlib.Path
    steps: list

    def keys(self, language, count=None):
        """The keys of the first `count` steps as they are pressed in a language."""
        keys = [step.key for step in self.steps[:count] if step.key != "start"]
        return [OPPOSITE.get(key, key) for key in keys] if language in MIRRORED else keys

    def texts(self, count=None):
        return sum(step.texts for step in self.steps[:count])


def read_journey(folder, name):
    path = folder / f"{name}.journey"
    devices = None
    steps = []
    try:
        lines = path.read_text(encoding="utf-8").splitlines()
    except FileNotFoundError:
        raise Problem(f"There is no journey {path}; there are: {', '.join(journeys_in(folder))}.") from None
    for number, line in enumerate(lines, 1):
        words = line.split(maxsplit=2)
        if not words or line.startswith("#"):
            continue
        if words[0] == "devices" and len(words) == 2:
            devices = folder / words[1]
        elif len(words) >= 2 and words[1].isdigit():
            steps.append(Step(words[0], int(words[1]), words[2] if len(words) == 3 else ""))
        else:
            raise Problem(f"{path}:{number}: \"{line}\" is no step; write a key and the number of texts that it makes.")
    if not devices or not steps or steps[0].key != "start":
        raise Problem(f"{path}: a journey needs a line \"devices FILE\" and steps, the first of them \"start\".")
    return Journey(name, devices, steps)


def journeys_in(folder):
    return sorted(path.stem for path in folder.glob("*.journey"))


def run(command, environment, complaint=""):
    """The output of a program that ends well and writes `complaint` to its standard error."""
    try:
        result = subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                                timeout=LIMIT_S, check=False)
    except FileNotFoundError:
        raise Problem(f"{command[0]} is not there; build it, or name the folder of the programs with --bin.") from None
    except subprocess.TimeoutExpired:
        raise Problem(f"{command[0]} has not ended after {LIMIT_S} seconds.") from None
    if result.returncode != 0 or result.stderr != complaint:
        raise Problem(f"{command[0]} ended with {result.returncode}:\n{result.stderr}")
    return result.stdout


def press(programs, devices, keys, language, folder, *options, path=None, complaint=""):
    """Plays keys on a new panel with the devices of a JSON file and returns the host's output; everything it keeps is
    in `folder`, the picture of the end as panel.png. With `path` the host finds programs there alone."""
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "LANGUAGE") and not name.startswith("VESK_")}
    environment.update(dict.fromkeys(("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"),
                                     str(folder)), VESK_DEVICES=str(folder / "devices.db"))
    run([programs / "veskctl", "devices", "import", "--replace", devices], environment)
    if path is not None:
        environment["PATH"] = str(path)
    return run([programs / "vesk-host", "--no-display", "--no-animations", "--language", language,
                "--screenshot", folder / "panel.png", "--log", folder / "log", "--keys", " ".join(keys), *options],
               environment, complaint)


def listen(programs, journey, language, count=None):
    """What is said in the first `count` steps, without the times."""
    with tempfile.TemporaryDirectory(prefix="vesk-transcript-") as name:
        folder = pathlib.Path(name)
        press(programs, journey.devices, journey.keys(language, count), language, folder,
              "--transcript", folder / "transcript")
        lines = (folder / "transcript").read_text(encoding="utf-8").splitlines()
    for line in lines:
        if not TIME.match(line):
            raise Problem(f"{journey.name}, {language}: \"{line}\" has no time.")
    return [TIME.sub("", line) for line in lines]


def transcript_of(programs, journey, language):
    """The transcript as it is kept: each key, and below it what is said."""
    texts = listen(programs, journey, language)
    for text in texts:
        if NOT_SPOKEN.search(text):
            raise Problem(f"{journey.name}, {language}: \"{text}\" has something in it that cannot be spoken.")
    if len(texts) != journey.texts():
        raise Problem("\n".join([f"{journey.name}, {language}: {len(texts)} texts are said; the steps of the journey "
                                 f"announce {journey.texts()}:"] + texts))
    lines = []
    for step, key in zip(journey.steps, ["start"] + journey.keys(language)):
        lines.append(f"> {key}")
        lines += [texts.pop(0) for _ in range(step.texts)]
    return "".join(line + "\n" for line in lines)


def difference(folder, journey, language, now):
    """What has changed, as lines; nothing when nothing has."""
    path = folder / f"{journey.name}.{language}.txt"
    kept = path.read_text(encoding="utf-8") if path.exists() else ""
    return "".join(difflib.unified_diff(kept.splitlines(True), now.splitlines(True), f"{path.name} (kept)",
                                        f"{path.name} (said now)"))


def run_all(arguments):
    folder = arguments.folder
    journeys = [read_journey(folder, name) for name in arguments.journey or journeys_in(folder)]
    if not journeys:
        raise Problem(f"{folder} holds no journey.")
    languages = arguments.language or LANGUAGES
    plays = [(journey, language) for journey in journeys for language in languages]
    failed = different = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = [(journey, language, pool.submit(transcript_of, arguments.bin, journey, language))
                for journey, language in plays]
        for journey, language, result in runs:
            try:
                changes = difference(folder, journey, language, result.result())
            except Problem as problem:
                print(problem, file=sys.stderr)
                failed = True
                continue
            sys.stdout.write(changes)
            if changes and arguments.command == "renew":
                (folder / f"{journey.name}.{language}.txt").write_text(result.result(), encoding="utf-8")
            elif changes:
                different = True
    if different:
        print("When this is meant: tools/transcripts.py renew", file=sys.stderr)
    return 1 if failed or different else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("command", choices=("check", "renew"))
    parser.add_argument("--journey", action="append", metavar="NAME", help="this journey only; may be repeated")
    parser.add_argument("--language", action="append", metavar="LOCALE", help="this language only; may be repeated")
    parser.add_argument("--bin", type=pathlib.Path, default=ROOT / "build" / "release" / "bin",
                        help="folder of vesk-host and veskctl (build/release/bin)")
    parser.add_argument("--folder", type=pathlib.Path, default=ROOT / "tests" / "transcripts",
                        help="folder of the journeys and transcripts (tests/transcripts)")
    try:
        return run_all(parser.parse_args())
    except Problem as problem:
        print(problem, file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
