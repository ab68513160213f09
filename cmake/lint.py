"""Runs clang 14 over the sources of a compilation database, as many at a time as there are processors.

usage: lint.py COMPILE_COMMANDS < CHANGED_FILES

The names that come in are those of the files that differ from a state in which everything was clean. Changed sources
below src/ are looked at by clang-tidy. Sources that changed otherwise, or that include a file that did, are compiled each
by itself for the compiler's warnings, since only then an #include is missed that another source of the folder happens to
bring. All others are compiled several at a time, which takes a fifth of the time, for what a change of the settings, of
the compiler or of a library may have done to them. Prints what was found, and exits with 1 when there was anything.
"""

import collections
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

BATCH = 10
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
# What settles how every source is compiled.
SETTINGS = {"CMakePresets.json", "cmake/QMRulesTargets.cmake"}
TIDY_SETTINGS = ".clang-tidy"


class Includes:
    """Which of the project's files a source includes, itself or by way of others."""

    def __init__(self, folders, changed):
        self.folders = folders
        self.changed = changed
        self.found = {}

    def of(self, file):
        """The files that the file names, and whether one of them is nowhere to be found."""
        if file not in self.found:
            files, missing = set(), False
            for name in INCLUDE.findall(file.read_text(encoding="utf-8")):
                places = [place for folder in (file.parent, *self.folders) if (place := folder / name).is_file()]
                files.update(places)
                missing = missing or not places
            self.found[file] = files, missing
        return self.found[file]

    def touch_a_change(self, source):
        """True for a source that changed or that includes, at any depth, what changed or is gone."""
        seen, todo = set(), [source]
        while todo:
            file = todo.pop()
            if file in seen:
                continue
            seen.add(file)
            files, missing = self.of(file)
            if missing or file in self.changed:
                return True
            todo.extend(files)
        return False


def arguments_of(entry):
    """The compiler's arguments for the source, without the source and without what is to be written."""
    words = [word for word in shlex.split(entry["command"]) if not word.endswith("ccache")]
    place = words.index("-o")
    words = words[:place] + words[place + 2 :]
    return [word for word in words if word not in ("-c", entry["file"])]


def target_of(entry):
    """The target that the source belongs to."""
    words = shlex.split(entry["command"])
    return words[words.index("-o") + 1].partition(".dir/")[0]


def compile_files(entries):
    """What is wrong with the sources, which share their arguments; the empty text for nothing."""
    text = "".join(f'#include "{entry["file"]}"\n' for entry in entries)
    command = [*arguments_of(entries[0]), "-fsyntax-only"]
    command += [entries[0]["file"]] if len(entries) == 1 else ["-x", "c++", "-"]
    run = subprocess.run(command, cwd=entries[0]["directory"], input=text, capture_output=True, text=True, check=False)
    return run.stderr if run.returncode != 0 else ""


def tidy(entry, database):
    """What clang-tidy has to say of the source; the empty text for nothing."""
    command = ["clang-tidy-14", "-quiet", "-p", str(database.parent), entry["file"]]
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    return run.stdout if run.returncode != 0 or run.stdout else ""


def batches_of(entries):
    """The sources in lists of at most BATCH that belong to one target and share their arguments."""
    alike = collections.defaultdict(list)
    for entry in entries:
        alike[target_of(entry), tuple(arguments_of(entry))].append(entry)
    return [group[at : at + BATCH] for group in alike.values() for at in range(0, len(group), BATCH)]


def sources_of(database, root):
    """The entries of the project's own sources, by file."""
    entries = {}
    for entry in json.loads(database.read_text(encoding="utf-8")):
        file = pathlib.Path(entry["file"])
        if file.is_relative_to(root) and not file.is_relative_to(database.parent):
            entries[file] = entry
    return dict(sorted(entries.items()))


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    database = pathlib.Path(arguments[1]).resolve()
    root = pathlib.Path.cwd().resolve()
    names = {line.strip() for line in sys.stdin if line.strip()}
    changed = {root / name for name in names}
    entries = sources_of(database, root)
    if not entries:
        print(f"{database}: no source was found")
        return 1
    includes = Includes([root / "src", root / "tests"], changed)
    tidied, alone, others = [], [], []
    for file, entry in entries.items():
        if file.is_relative_to(root / "src") and (file in changed or TIDY_SETTINGS in names):
            tidied.append(entry)
        elif names & SETTINGS or includes.touch_a_change(file):
            alone.append(entry)
        else:
            others.append(entry)
    found = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {pool.submit(tidy, entry, database): entry["file"] for entry in tidied}
        for batch in [*batches_of(others), *([entry] for entry in alone)]:
            jobs[pool.submit(compile_files, batch)] = " ".join(entry["file"] for entry in batch)
        for job in concurrent.futures.as_completed(jobs):
            if job.result():
                found += 1
                print(f"{jobs[job]}:\n{job.result()}", flush=True)
    print(
        f"{len(entries)} files: {len(tidied)} by clang-tidy, {len(alone)} by themselves, {len(others)} together; "
        f"{found} findings"
    )
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
