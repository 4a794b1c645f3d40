#!/usr/bin/python3
"""Checks the message catalogues in po/, and keeps what is made from them up to date.

check   every catalogue against the template, the module's sources and the room on the screen
table   writes docs/languages.md: languages, completeness, the longest text of each button
merge   brings new, renamed and removed texts of the template into every catalogue
"""

import argparse
import datetime
import pathlib
import re
import subprocess
import sys
import unicodedata

import polib

LEAST_LANGUAGES = 40

# Texts with one argument. Every other text goes through without one, and some of those are themselves used as a format
# (the spoken details), so a '%' is allowed here alone.
WITH_ARGUMENT = {
    "COM_SID_MIX_DEVICES_DELETED",
    "TV_SID_MIX_ITEMS",
    "PJT_SID_PLAY_MOBILE_CONTENT_TV",
    "PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_PHONE",
    "PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_TABLET",
}
BRANDS = {"COM_SID_CORVANE_CONNECT": "Corvane Connect", "TV_SID_DOMOVO": "Domovo", "COM_SID_NON_CASTELO": "Castelo"}
# A product has one word, whether it names itself or not.
SAME_TEXT = {
    "SID_TV": "REP.DEVICE.ALDER",
    "PJT_SID_TV": "REP.DEVICE.BIRCH",
    "COM_SID_FIR": "REP.DEVICE.FIR",
    "TV_SID_CDR_CAOCT_NON_CEDAR": "REP.DEVICE.CEDAR",
    "COM_SID_DPHN_CAAUG_MNT": "REP.DEVICE.DAPHNE",
}
# Texts that a person has to tell apart: actions from states, a button's two faces, yes from no.
DIFFERENT_TEXT = [
    ("COM_SID_ALLOW", "COM_SID_ALLOWED"),
    ("COM_SID_ALLOW", "COM_SID_DENY_KR__SHARING"),
    ("COM_SID_ALLOWED", "COM_SID_DENIED_KR_DENY"),
    ("COM_SID_DENY_KR__SHARING", "COM_SID_DENIED_KR_DENY"),
    ("COM_SID_SELECT_ALL", "COM_SID_DESELECT_ALL"),
    ("COM_SID_DESELECT_ALL", "COM_SID_DELETE"),
    ("COM_TV_SID_YES", "COM_TV_SID_NO"),
    ("TV_SID_CHECKED", "TV_SID_UNCHECKED"),
    ("COM_SID_MIX_DEVICES_DELETED", "COM_SID_ALL_DEVICES_DELTED"),
    ("PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_PHONE", "PJT_SID_REGISTER_DEVICE_PLAY_TV_SOUND_ON_TABLET"),
]

BUTTONS = [
    "COM_SID_EDIT", "COM_SID_CLOSE", "COM_SID_SELECT_ALL", "COM_SID_DESELECT_ALL", "COM_SID_DELETE", "COM_TV_SID_YES",
    "COM_TV_SID_NO",
]
CHOICES = ["COM_SID_ALLOW", "COM_SID_DENY_KR__SHARING", "COM_VIEW_DETAILS"]
STATES = ["COM_SID_ALLOWED", "COM_SID_DENIED_KR_DENY"]
# Room on the screen in columns: a letter is one, an East Asian character two, a combining mark none. A column is about
# 15 pixels at the size of the buttons; the heading has two lines of 780 pixels.
COLUMNS = {
    **dict.fromkeys(BUTTONS + CHOICES, 17),
    **dict.fromkeys(STATES, 16),
    "COM_SID_HERE_LIST_OF_SERVICES_FOR_SELECTED_DEVICE": 90,
}
# Room in the module's text buffers, in bytes, less the longest markup that stands around the text.
BYTES = {
    "SID_NO_EQUIPMENT_STORED_MSG": 220,
    "COM_SID_DELETE_SELECTED_DEVICES": 220,
    "COM_SID_HERE_LIST_OF_SERVICES_FOR_SELECTED_DEVICE": 220,
    "TV_SID_ALLOWED_SERVICES": 200,
}
SERVICE_ROW_BYTES = 255
SERVICE_ROW_COLUMNS = 90  # two lines

HEADER = {
    "Project-Id-Version": "VESK 1.0",
    "PO-Revision-Date": None,
    "Last-Translator": "The VESK project",
    "Language-Team": None,
    "Language": None,
    "MIME-Version": "1.0",
    "Content-Type": "text/plain; charset=UTF-8",
    "Content-Transfer-Encoding": "8bit",
    "Plural-Forms": None,
}

ID_IN_SOURCE = re.compile(r'"((?:COM|TV|PJT|SID)_[A-Z0-9_]+|REP\.DEVICE\.[A-Z]+)"')
class Problem(Exception):
    """An input that can't be read; the text names it and says what to do."""


def read_catalogue(path):
    """A .po or .pot file: its header, its metadata and its entries in their order."""
    try:
        text = path.read_text(encoding="utf-8")
    except (OSError, UnicodeDecodeError) as error:
        raise Problem(f"{path}: can't be read ({error}); it has to be a text file in UTF-8.") from error
    try:
        catalogue = polib.pofile(text, encoding="utf-8")
    except OSError as error:
        raise Problem(f"{path}: is not understood ({error}); msgfmt --check tells more.") from error
    if not catalogue.metadata:
        raise Problem(f"{path}: has no header; begin it with an empty msgid as the other catalogues do.")
    return catalogue


def columns(text):
    """Columns that a text takes, as in COLUMNS."""
    return sum(
        0 if unicodedata.category(c) in ("Mn", "Me", "Cf") else 2 if unicodedata.east_asian_width(c) in "WF" else 1
        for c in text)


class Catalogues:
    def __init__(self, root):
        self.root = root
        self.po = root / "po"
        self.template_path = self.po / "ug-VeskUG-efl.pot"
        self.template = read_catalogue(self.template_path)

    def locales(self):
        try:
            lines = (self.po / "LINGUAS").read_text(encoding="utf-8").splitlines()
        except OSError as error:
            raise Problem(f"{self.po / 'LINGUAS'}: can't be read ({error.strerror}).") from error
        return [line.strip() for line in lines if line.strip() and not line.startswith("#")]

    def languages(self):
        """The languages: some have a catalogue for each region or each script."""
        return {re.split("[_@]", locale)[0] for locale in self.locales()}

    def path(self, locale):
        return self.po / f"{locale}.po"

    def source_ids(self):
        ids = set()
        for folder in ("src", "common"):
            for path in sorted((self.root / folder).rglob("*")):
                if path.suffix in (".cpp", ".h"):
                    ids.update(ID_IN_SOURCE.findall(path.read_text(encoding="utf-8")))
        return ids

    def check_set(self):
        """What concerns the catalogues together: the list of languages, the template and the sources."""
        locales, files = self.locales(), sorted(path.stem for path in self.po.glob("*.po"))
        if locales != sorted(set(locales)):
            yield "po/LINGUAS: not in alphabetical order, or a name stands there twice"
        for locale in sorted(set(locales) - set(files)):
            yield f"po/LINGUAS: names {locale}, and po/{locale}.po does not exist"
        for locale in sorted(set(files) - set(locales)):
            yield f"po/{locale}.po: is not named in po/LINGUAS"
        if len(locales) < LEAST_LANGUAGES:
            yield f"po/LINGUAS: {len(locales)} languages, at least {LEAST_LANGUAGES} are wanted"

        promise = f"texts in {len(self.languages())} languages"
        if promise not in " ".join((self.root / "README.md").read_text(encoding="utf-8").split()):
            yield f"README.md: does not say {promise!r}; bring its number up to date"

        ids = [entry.msgid for entry in self.template]
        name = f"po/{self.template_path.name}"
        for identifier in sorted({i for i in ids if ids.count(i) > 1}):
            yield f"{name}: {identifier} stands there twice"
        used = self.source_ids()
        for identifier in sorted(used - set(ids)):
            yield f"{name}: lacks {identifier}, which the sources use; add it, then run tools/catalogues.py merge"
        for identifier in sorted(set(ids) - used):
            yield f"{name}: {identifier} is used by no source; remove it, then run tools/catalogues.py merge"
        for entry in self.template:
            if not entry.comment:
                yield f"{name}: {entry.msgid} has no comment for translators"
            if ("no-c-format" in entry.flags) != (entry.msgid in WITH_ARGUMENT):
                yield f"{name}: {entry.msgid}: the flag no-c-format belongs to the texts with an argument, and to them alone"

    def check_catalogue(self, locale):
        """What concerns one catalogue; the template is taken as right."""
        path = self.path(locale)
        name = f"po/{path.name}"
        if not path.exists():
            yield f"{name}: does not exist"
            return
        run = subprocess.run(["msgfmt", "--check", "-o", "/dev/null", path], capture_output=True, text=True, check=False)
        if run.returncode or run.stderr:
            yield f"{name}: msgfmt --check: {run.stderr.strip()}"
        catalogue = read_catalogue(path)
        yield from (f"{name}: {problem}" for problem in check_header(catalogue, locale))

        wanted = {entry.msgid: entry for entry in self.template}
        found = {entry.msgid: entry for entry in catalogue if not entry.obsolete}
        for identifier in wanted.keys() - found.keys():
            yield f"{name}: lacks {identifier}; run tools/catalogues.py merge and translate it"
        for identifier in found.keys() - wanted.keys():
            yield f"{name}: has {identifier}, which the template has not"
        if catalogue.obsolete_entries():
            yield f"{name}: has texts that are commented out (#~); remove them"
        texts = {}
        for identifier, entry in found.items():
            if identifier not in wanted:
                continue
            if entry.msgctxt or entry.msgid_plural:
                yield f"{name}: {identifier}: has a context or a plural, which the look-up does not know; remove it"
            if entry.comment != wanted[identifier].comment:
                yield f"{name}: {identifier}: comments differ from the template's; run tools/catalogues.py merge"
            if "fuzzy" in entry.flags:
                yield f"{name}: {identifier}: is marked fuzzy; look at the text, then remove the mark"
            yield from (f"{name}: {identifier}: {problem}" for problem in check_text(identifier, entry.msgstr))
            texts[identifier] = entry.msgstr
        if texts.keys() == wanted.keys():
            yield from (f"{name}: {problem}" for problem in check_texts_together(texts))


def check_header(catalogue, locale):
    fields = catalogue.metadata
    for field in fields.keys() - HEADER.keys():
        yield f"header: {field} does not belong there"
    for field, value in HEADER.items():
        if field not in fields:
            yield f"header: {field} is missing"
        elif value is not None and fields[field] != value:
            yield f"header: {field} has to be {value!r}"
    if fields.get("Language") != locale:
        yield f"header: Language is {fields.get('Language')!r}, the file is for {locale!r}"
    yield from check_revision(fields.get("PO-Revision-Date", ""))
    if not language_names(catalogue):
        yield "first line: has to read '# NAME (OWN NAME) texts of VESK.' or '# NAME texts of VESK.'"


def check_revision(date):
    try:
        revised = datetime.datetime.strptime(date, "%Y-%m-%d %H:%M%z")
    except ValueError:
        yield f"header: PO-Revision-Date is {date!r}; write the time of the last change as 2026-01-31 12:00+0000"
        return
    if revised > datetime.datetime.now(datetime.timezone.utc):
        yield f"header: PO-Revision-Date lies in the future: {date!r}"


def language_names(catalogue):
    """English name and own name of the language, from the catalogue's first line; None when it is not there."""
    match = re.fullmatch(r"(.+?)(?: \(([^()]+(?:\([^()]+\))?)\))? texts of VESK\.",
                         catalogue.header.split("\n")[0].strip())
    return match and (match[1], match[2] or match[1])


def check_text(identifier, text):
    if not text:
        yield "is not translated"
        return
    markers = re.findall(r"%.?", text)
    if identifier in WITH_ARGUMENT and markers != ["%1"]:
        yield f"has to hold %1 once and no other '%': {text!r}"
    elif identifier not in WITH_ARGUMENT and markers:
        yield f"must not hold a '%': {text!r}"
    if re.search("[<&]", text):
        yield f"is put into markup and must not hold '<' or '&': {text!r}"
    if text != text.strip() or "  " in text or re.search(r"[\x00-\x1f]", text):
        yield f"has blanks at an end, two together, or a control character: {text!r}"
    if text != unicodedata.normalize("NFC", text):
        yield f"is not in Unicode's composed form (NFC): {text!r}"
    if identifier in BRANDS and text != BRANDS[identifier]:
        yield f"is a brand, it stays {BRANDS[identifier]!r}"
    if identifier in COLUMNS and columns(text) > COLUMNS[identifier]:
        yield f"takes {columns(text)} columns, {COLUMNS[identifier]} is the most: {text!r}"
    if identifier in BYTES and len(text.encode()) > BYTES[identifier]:
        yield f"takes {len(text.encode())} bytes, {BYTES[identifier]} is the most: {text!r}"


def check_texts_together(texts):
    for fallback, key in SAME_TEXT.items():
        if texts[fallback] != texts[key]:
            yield f"{fallback} is {texts[fallback]!r}, {key} {texts[key]!r}: one product, one word"
    for one, other in DIFFERENT_TEXT:
        if texts[one].casefold() == texts[other].casefold():
            yield f"{one} and {other} read the same: {texts[one]!r}"
    words = [text for identifier, text in texts.items() if identifier.startswith("REP.DEVICE.")]
    for sentence in sorted(i for i in WITH_ARGUMENT if i.startswith("PJT_")):
        for word in words:
            row = texts[sentence].replace("%1", word)
            if "SOUND" in sentence:
                row = f"{texts['TV_SID_SOUND_MIRRORING']} / {row}"
            if len(row.encode()) > SERVICE_ROW_BYTES:
                yield f"{sentence}: takes {len(row.encode())} bytes, {SERVICE_ROW_BYTES} is the most: {row!r}"
            if columns(row) > SERVICE_ROW_COLUMNS:
                yield f"{sentence}: takes {columns(row)} columns, {SERVICE_ROW_COLUMNS} is the most: {row!r}"


def table(catalogues):
    """The text of docs/languages.md."""
    total = len(catalogues.template)
    languages, texts = [], {}
    for locale in catalogues.locales():
        catalogue = read_catalogue(catalogues.path(locale))
        name, own_name = language_names(catalogue) or (locale, locale)
        texts[locale] = {entry.msgid: entry.msgstr for entry in catalogue}
        done = len(catalogue.translated_entries())
        button = max((texts[locale].get(i, "") for i in BUTTONS), key=columns)
        languages.append((name, own_name, locale, f"{done * 100 // total} %", button, columns(button)))
    lines = [
        "# Languages",
        "",
        f"{len(catalogues.languages())} languages in {len(languages)} catalogues of {total} texts.",
        "`tools/catalogues.py table` writes this; don't edit it by hand.",
        "",
        "A look-up tries the whole locale name, then the language alone: `de_AT` finds `de`. `po/CMakeLists.txt` names the",
        "further folders that serve a language with two catalogues. A width is in columns: a letter takes one, an East",
        "Asian character two, a combining mark none.",
        "",
        "## Completeness",
        "",
        "| Language | Own name | Catalogue | Complete | Longest button | Columns |",
        "|---|---|---|---|---|---|",
        *(f"| {a} | {b} | `{c}` | {d} | {e} | {f} |" for a, b, c, d, e, f in sorted(languages)),
        "",
        "## The longest text of each button, choice and state",
        "",
        "| Text | English | Longest | Catalogue | Columns | At most |",
        "|---|---|---|---|---|---|",
    ]
    for identifier in BUTTONS + CHOICES + STATES:
        # The first one in the list's order when several are as long, so that the table is always the same.
        locale = max(texts, key=lambda name, i=identifier: columns(texts[name].get(i, "")))
        text = texts[locale].get(identifier, "")
        english = texts["en_GB"].get(identifier, "") if "en_GB" in texts else ""
        lines.append(f"| `{identifier}` | {english} | {text} | `{locale}` | {columns(text)} | {COLUMNS[identifier]} |")
    return "\n".join(lines) + "\n"


def run_check(catalogues, arguments):
    known = catalogues.locales()
    for locale in arguments.locale:
        if locale not in known:
            raise Problem(f"{locale}: no such catalogue; po/LINGUAS names them.")
    problems = []
    if arguments.together or not arguments.locale:
        problems += catalogues.check_set()
    if not arguments.together:
        for locale in arguments.locale or known:
            problems += catalogues.check_catalogue(locale)
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


def run_table(catalogues, arguments):
    path = catalogues.root / "docs" / "languages.md"
    text = table(catalogues)
    if not arguments.check:
        path.write_text(text, encoding="utf-8")
        return 0
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        print("docs/languages.md: not up to date; run tools/catalogues.py table", file=sys.stderr)
        return 1
    return 0


def run_merge(catalogues, _arguments):
    for locale in catalogues.locales():
        subprocess.run(
            ["msgmerge", "--quiet", "--update", "--backup=none", "--no-fuzzy-matching", "--width=100",
             catalogues.path(locale), catalogues.template_path], check=True)
        subprocess.run(["msgattrib", "--no-obsolete", "--width=100", "-o", catalogues.path(locale),
                        catalogues.path(locale)], check=True)
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent,
                        help="folder of the project (the one above this tool's)")
    commands = parser.add_subparsers(dest="command", required=True)
    check = commands.add_parser("check", help="check catalogues; prints each problem, fails when there is one")
    check.add_argument("locale", nargs="*", help="these catalogues only")
    check.add_argument("--together", action="store_true",
                       help="only what concerns all of them: the list, the template, the sources")
    check.set_defaults(run=run_check)
    table_command = commands.add_parser("table", help="write docs/languages.md")
    table_command.add_argument("--check", action="store_true", help="fail when it would change, write nothing")
    table_command.set_defaults(run=run_table)
    commands.add_parser("merge", help="bring the template's changes into the catalogues").set_defaults(run=run_merge)
    arguments = parser.parse_args()
    try:
        return arguments.run(Catalogues(arguments.root), arguments)
    except Problem as problem:
        print(problem, file=sys.stderr)
    except FileNotFoundError as error:
        print(f"{error.filename}: not found; the package gettext has msgfmt and msgmerge.", file=sys.stderr)
    except subprocess.CalledProcessError as error:
        print(f"{error.cmd[0]} failed for {error.cmd[-2]}; its own message stands above.", file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main())
