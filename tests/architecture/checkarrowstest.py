"""The check of the arrows, run over a small fixture that has each kind of mistake once."""

import pathlib
import subprocess
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent


def run_check(source, document):
    return subprocess.run(
        [sys.executable, HERE / "checkarrows.py", source, document], capture_output=True, text=True, check=False
    )


class CheckArrowsTest(unittest.TestCase):
    def test_each_forbidden_include_is_named_with_its_line(self):
        result = run_check(HERE / "fixture" / "src", HERE / "fixture" / "arrows.md")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(
            result.stdout.splitlines(),
            [
                "catalogue/keys.h:3: catalogue may not use SQLite (sqlite3.h)",
                "catalogue/keys.h:4: an include names its folder from src/ on (keys.h)",
                "ground/other.h: its folder has no row in the table",
                "platform/upward.h:3: platform may not include catalogue (catalogue/keys.h)",
                "8 includes checked, 4 problems",
            ],
        )

    def test_a_document_without_the_table_fails(self):
        result = run_check(HERE / "fixture" / "src", HERE / "checkarrows.py")
        self.assertEqual(result.returncode, 1)
        self.assertIn("no table of modules was found", result.stdout)


if __name__ == "__main__":
    unittest.main()
