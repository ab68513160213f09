"""What cmake/lint.py looks at, over a small project with one target of two sources.

usage: linttest.py LINT
"""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

LINT = pathlib.Path(sys.argv.pop(1)).resolve()


class LintTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        self.write(".clang-tidy", "Checks: -*,modernize-use-nullptr\nWarningsAsErrors: '*'\n")
        self.write("src/first.cpp", '#include "numbers.h"\nint Number() {\n  return {};\n}\n')
        self.write("src/numbers.h", "#pragma once\nint Number();\n")
        self.write("src/second.cpp", '#include "numbers.h"\nint Twice() {\n  return Number() + Number();\n}\n')
        self.entries = [self.entry("src/first.cpp"), self.entry("src/second.cpp")]

    def write(self, name, text):
        place = self.root / name
        place.parent.mkdir(parents=True, exist_ok=True)
        place.write_text(text, encoding="utf-8")

    def entry(self, name):
        file = str(self.root / name)
        command = f"clang++-14 -std=c++20 -Wall -Wextra -Werror -I{self.root}/src -o part.dir/{name}.o -c {file}"
        return {"directory": str(self.root), "command": command, "file": file}

    def lint(self, *changed):
        self.write("build/compile_commands.json", json.dumps(self.entries))
        return subprocess.run(
            [sys.executable, "-B", LINT, "build/compile_commands.json"],
            cwd=self.root, input="".join(name + "\n" for name in changed), capture_output=True, text=True, check=False,
        )

    def assert_found(self, result, text):
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertIn(text, result.stdout)

    def assert_clean(self, result, summary):
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertEqual(result.stdout.splitlines()[-1], summary)

    def test_what_has_not_changed_is_compiled_together(self):
        self.assert_clean(self.lint(), "2 files: 0 by clang-tidy, 0 by themselves, 2 together; 0 findings")

    def test_a_warning_is_found_in_what_has_not_changed(self):
        self.write("src/second.cpp", '#include "numbers.h"\nvoid Call() {\n  int unused;\n}\n')
        self.assert_found(self.lint(), "unused variable 'unused'")

    def test_a_changed_source_is_looked_at_by_clang_tidy(self):
        self.write("src/second.cpp", "int* Nothing() {\n  return 0;\n}\n")
        self.assert_found(self.lint("src/second.cpp"), "modernize-use-nullptr")

    def test_changed_settings_of_clang_tidy_concern_every_source(self):
        self.assert_clean(self.lint(".clang-tidy"), "2 files: 2 by clang-tidy, 0 by themselves, 0 together; 0 findings")

    def test_changed_settings_of_the_compiler_concern_every_source(self):
        self.assert_clean(
            self.lint("CMakePresets.json"), "2 files: 0 by clang-tidy, 2 by themselves, 0 together; 0 findings"
        )

    def test_an_include_that_a_neighbour_brings_is_missed_when_a_header_changed(self):
        self.write("src/far.h", '#pragma once\n#include "numbers.h"\n')
        self.write("src/second.cpp", '#include "far.h"\nint Twice() {\n  return Number() + Number();\n}\n')
        self.assert_clean(
            self.lint("src/numbers.h"), "2 files: 0 by clang-tidy, 2 by themselves, 0 together; 0 findings"
        )
        self.write("src/far.h", "#pragma once\n")
        self.assert_clean(self.lint(), "2 files: 0 by clang-tidy, 0 by themselves, 2 together; 0 findings")
        self.assert_found(self.lint("src/far.h"), "src/second.cpp")

    def test_a_source_whose_header_is_gone_is_compiled_by_itself(self):
        self.write("src/second.cpp", '#include "numbers.h"\n#include "gone.h"\n')
        self.assert_found(self.lint("src/gone.h"), "'gone.h' file not found")

    def test_targets_are_compiled_apart(self):
        self.write("src/second.cpp", '#include "numbers.h"\nint Number() {\n  return 2;\n}\n')
        self.assert_found(self.lint(), "redefinition of 'Number'")
        self.entries[1]["command"] = self.entries[1]["command"].replace("part.dir", "other.dir")
        self.assert_clean(self.lint(), "2 files: 0 by clang-tidy, 0 by themselves, 2 together; 0 findings")


if __name__ == "__main__":
    unittest.main()
