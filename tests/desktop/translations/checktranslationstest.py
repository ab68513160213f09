"""Tests checktranslations.py on sources and translations made for it.

usage: checktranslationstest.py LUPDATE
"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).with_name("checktranslations.py")
LUPDATE = ""
SOURCE = 'QString Text() { return QCoreApplication::translate("Place", "%s"); }\n'
MESSAGE = "<message><source>%s</source><translation%s>%s</translation></message>"
FILE = '<?xml version="1.0"?><!DOCTYPE TS><TS version="2.1" language="ja_JP"><context><name>Place</name>%s</context></TS>'


def message(source, translation, kind=""):
    return MESSAGE % (source.replace("&", "&amp;"), f' type="{kind}"' if kind else "", translation.replace("&", "&amp;"))


class CheckTranslations(unittest.TestCase):
    def check(self, source, *messages):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "desktop").mkdir()
            (folder / "desktop" / "text.cpp").write_text(SOURCE % source, encoding="utf-8")
            (folder / "qmrules_ja.ts").write_text(FILE % "".join(messages), encoding="utf-8")
            run = subprocess.run([sys.executable, str(CHECK), LUPDATE, name, str(folder / "qmrules_ja.ts")],
                                 capture_output=True, text=True, check=False)
            return run.returncode, run.stdout

    def test_complete_translations_pass(self):
        self.assertEqual(self.check("&Open %1...", message("&Open %1...", "%1 を開く(&O)...")),
                         (0, "1 translations are complete.\n"))

    def test_a_text_without_an_entry_is_told(self):
        self.assertEqual(self.check("Open"), (1, 'qmrules_ja.ts: Place: "Open" has no translation\n'))

    def test_an_unfinished_translation_is_told(self):
        self.assertEqual(self.check("Open", message("Open", "開く", "unfinished"))[0], 1)

    def test_an_empty_translation_is_told(self):
        self.assertEqual(self.check("Open", message("Open", ""))[0], 1)

    def test_a_translation_whose_text_is_gone_is_told(self):
        code, lines = self.check("Open", message("Open", "開く"), message("Gone", "なし"))
        self.assertEqual((code, lines), (1, 'qmrules_ja.ts: Place: "Gone" is no text any more\n'))

    def test_lost_place_holders_mnemonics_and_dots_are_told(self):
        code, lines = self.check("&Open %1...", message("&Open %1...", "開く"))
        self.assertEqual(code, 1)
        self.assertEqual([line.rsplit(": ", 1)[1] for line in lines.splitlines()],
                         ["the translation has other place holders", "the translation has another number of mnemonics",
                          "the translation ends with dots in one language only"])


if __name__ == "__main__":
    LUPDATE = sys.argv.pop(1)
    unittest.main()
