#!/usr/bin/env python3
"""Proves that the catalogue check can fail: each test breaks one thing in a copy and reads what the check says."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
TOOL = ROOT / "tools" / "catalogues.py"


class CatalogueCheck(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for name in ("po", "src", "common", "docs"):
            shutil.copytree(ROOT / name, self.root / name)
        shutil.copy(ROOT / "README.md", self.root)

    def run_tool(self, *arguments):
        return subprocess.run([TOOL, "--root", self.root, *arguments],
                              capture_output=True, text=True, check=False)

    def change(self, name, old, new):
        path = self.root / name
        text = path.read_text(encoding="utf-8")
        self.assertIn(old, text, f"{name} does not hold what this test wants to break")
        path.write_text(text.replace(old, new, 1), encoding="utf-8")

    def text(self, identifier, text):
        """Gives the German text of an id another value."""
        path = self.root / "po" / "de.po"
        lines = path.read_text(encoding="utf-8").split("\n")
        at = lines.index(f'msgid "{identifier}"')
        lines[at + 1] = f'msgstr "{text}"'
        path.write_text("\n".join(lines), encoding="utf-8")

    def assert_fails(self, arguments, *says):
        run = self.run_tool(*arguments)
        self.assertNotEqual(run.returncode, 0, f"passed: {arguments}")
        for part in says:
            self.assertIn(part, run.stderr)
        self.assertNotIn("Traceback", run.stderr)

    def test_an_unbroken_copy_passes(self):
        run = self.run_tool("check", "de", "en_GB")
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_a_missing_text(self):
        self.change("po/de.po", 'msgid "COM_SID_EDIT"', 'msgid "COM_SID_EDIT_OLD"')
        self.assert_fails(["check", "de"], "lacks COM_SID_EDIT;", "has COM_SID_EDIT_OLD")

    def test_an_empty_text(self):
        self.text("COM_SID_EDIT", "")
        self.assert_fails(["check", "de"], "COM_SID_EDIT: is not translated")

    def test_a_fuzzy_text(self):
        self.change("po/de.po", 'msgid "COM_SID_EDIT"', '#, fuzzy\nmsgid "COM_SID_EDIT"')
        self.assert_fails(["check", "de"], "COM_SID_EDIT: is marked fuzzy")

    def test_an_obsolete_text(self):
        with (self.root / "po" / "de.po").open("a", encoding="utf-8") as file:
            file.write('\n#~ msgid "COM_SID_OLD"\n#~ msgstr "Alt"\n')
        self.assert_fails(["check", "de"], "commented out")

    def test_a_lost_argument(self):
        self.text("TV_SID_MIX_ITEMS", "Elemente")
        self.assert_fails(["check", "de"], "TV_SID_MIX_ITEMS: has to hold %1 once")

    def test_an_argument_twice(self):
        self.text("TV_SID_MIX_ITEMS", "%1 Elemente: %1")
        self.assert_fails(["check", "de"], "TV_SID_MIX_ITEMS: has to hold %1 once")

    def test_another_argument(self):
        self.text("TV_SID_MIX_ITEMS", "Elemente: %d")
        self.assert_fails(["check", "de"], "TV_SID_MIX_ITEMS: has to hold %1 once")

    def test_a_conversion_in_a_text_used_as_a_format(self):
        for identifier in ("COM_VIEW_DETAILS", "COM_SID_HERE_LIST_OF_SERVICES_FOR_SELECTED_DEVICE",
                           "TV_SID_ALLOWED_SERVICES", "COM_SID_CLOSE"):
            with self.subTest(identifier):
                self.text(identifier, "100%")
                self.assert_fails(["check", "de"], f"{identifier}: must not hold a '%'")

    def test_markup(self):
        self.text("SID_NO_EQUIPMENT_STORED_MSG", "Keine <b>Geräte")
        self.text("COM_SID_DELETE_SELECTED_DEVICES", "Löschen & weg?")
        self.assert_fails(["check", "de"], "SID_NO_EQUIPMENT_STORED_MSG: is put into markup",
                          "COM_SID_DELETE_SELECTED_DEVICES: is put into markup")

    def test_a_blank_at_the_end(self):
        self.text("COM_SID_EDIT", "Bearbeiten ")
        self.assert_fails(["check", "de"], "COM_SID_EDIT: has blanks")

    def test_a_button_that_is_too_long(self):
        self.text("COM_SID_SELECT_ALL", "Alle Geräte auswählen")
        self.assert_fails(["check", "de"], "COM_SID_SELECT_ALL: takes 21 columns")

    def test_a_text_that_is_cut_in_its_buffer(self):
        self.text("SID_NO_EQUIPMENT_STORED_MSG", "ü" * 111)
        self.assert_fails(["check", "de"], "SID_NO_EQUIPMENT_STORED_MSG: takes 222 bytes")

    def test_a_service_that_is_cut_in_its_row(self):
        self.text("TV_SID_SOUND_MIRRORING", "Ton" * 80)
        self.assert_fails(["check", "de"], "SOUND_ON_PHONE: takes", "255 is the most")

    def test_a_service_that_takes_more_than_two_lines(self):
        self.text("PJT_SID_PLAY_MOBILE_CONTENT_TV", "Mobile Inhalte " * 6 + "auf %1")
        self.assert_fails(["check", "de"], "PJT_SID_PLAY_MOBILE_CONTENT_TV: takes", "columns, 90 is the most")

    def test_an_action_that_reads_like_a_state(self):
        self.text("COM_SID_ALLOW", "Zugelassen")
        self.assert_fails(["check", "de"], "COM_SID_ALLOW and COM_SID_ALLOWED read the same")

    def test_two_words_for_one_product(self):
        self.text("SID_TV", "Fernseher")
        self.assert_fails(["check", "de"], "SID_TV is 'Fernseher'")

    def test_a_translated_brand(self):
        self.text("COM_SID_NON_CASTELO", "Schloss")
        self.assert_fails(["check", "de"], "COM_SID_NON_CASTELO: is a brand")

    def test_a_comment_that_is_not_the_templates(self):
        self.change("po/de.po", "#. Button beside the list", "#. A button beside the list")
        self.assert_fails(["check", "de"], "COM_SID_EDIT: comments differ")

    def test_a_header_that_is_wrong(self):
        self.change("po/de.po", "Language: de", "Language: fr")
        self.change("po/de.po", "The VESK project", "A. Person")
        self.change("po/de.po", '"MIME-Version', '"X-Generator: Tool\\n"\n"MIME-Version')
        self.assert_fails(["check", "de"], "Language is 'fr'", "Last-Translator has to be", "X-Generator does not belong")

    def test_a_date_of_revision_that_is_none_or_is_to_come(self):
        self.change("po/de.po", "PO-Revision-Date: 2", "PO-Revision-Date: YEAR 2")
        self.change("po/fr.po", "PO-Revision-Date: 2", "PO-Revision-Date: 9")
        self.assert_fails(["check", "de", "fr"], "po/de.po: header: PO-Revision-Date is 'YEAR 2",
                          "po/fr.po: header: PO-Revision-Date lies in the future")

    def test_a_context_and_a_plural(self):
        self.change("po/de.po", 'msgid "COM_SID_EDIT"', 'msgctxt "button"\nmsgid "COM_SID_EDIT"')
        self.change("po/fr.po", 'msgid "TV_SID_MIX_ITEMS"\nmsgstr',
                    'msgid "TV_SID_MIX_ITEMS"\nmsgid_plural "TV_SID_MIX_ITEMS"\nmsgstr[0] "%1"\nmsgstr[1]')
        self.assert_fails(["check", "de", "fr"], "po/de.po: COM_SID_EDIT: has a context or a plural",
                          "po/fr.po: TV_SID_MIX_ITEMS: has a context or a plural")

    def test_a_file_that_msgfmt_refuses(self):
        self.change("po/de.po", 'msgid "COM_SID_EDIT"', 'msgid "COM_SID_CLOSE"')
        self.assert_fails(["check", "de"], "msgfmt --check", "duplicate message definition")

    def test_a_file_that_is_no_catalogue(self):
        (self.root / "po" / "de.po").write_text("Hallo\n", encoding="utf-8")
        self.assert_fails(["check", "de"], "po/de.po: is not understood")

    def test_an_unknown_language(self):
        self.assert_fails(["check", "tlh"], "tlh: no such catalogue")

    def test_a_language_without_a_file_and_a_file_without_a_name(self):
        (self.root / "po" / "de.po").rename(self.root / "po" / "dx.po")
        self.assert_fails(["check", "--together"], "names de, and po/de.po does not exist",
                          "po/dx.po: is not named in po/LINGUAS")

    def test_too_few_languages(self):
        (self.root / "po" / "LINGUAS").write_text("de\n", encoding="utf-8")
        self.assert_fails(["check", "--together"], "1 languages, at least 40")

    def test_a_number_of_languages_that_is_not_so(self):
        self.change("README.md", "texts in 47\nlanguages", "texts in fifty\nlanguages")
        self.assert_fails(["check", "--together"], "README.md: does not say 'texts in 47 languages'")

    def test_an_id_of_the_sources_without_a_text(self):
        (self.root / "src" / "more.cpp").write_text('const char *id = "COM_SID_RENAME";\n', encoding="utf-8")
        self.assert_fails(["check", "--together"], "lacks COM_SID_RENAME")

    def test_a_text_that_no_source_uses(self):
        with (self.root / "po" / "ug-VeskUG-efl.pot").open("a", encoding="utf-8") as file:
            file.write('\n#. Nobody.\nmsgid "COM_SID_RENAME"\nmsgstr ""\n')
        self.assert_fails(["check", "--together"], "COM_SID_RENAME is used by no source")

    def test_a_text_without_a_comment(self):
        self.change("po/ug-VeskUG-efl.pot", "#. Button beside the list: starts choosing devices to delete. Narrow.\n", "")
        self.assert_fails(["check", "--together"], "COM_SID_EDIT has no comment")

    def test_a_table_that_is_old(self):
        self.text("COM_SID_SELECT_ALL", "Alles auswählen")
        self.assert_fails(["table", "--check"], "docs/languages.md: not up to date")


if __name__ == "__main__":
    unittest.main()
