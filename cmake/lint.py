"""Runs clang 14 over the sources of a compilation database, as many at a time as there are processors.

usage: lint.py COMPILE_COMMANDS < CHANGED_FILES

The files whose names come in are looked at by clang-tidy, the others by the compiler for its warnings. Prints what was
found, and exits with 1 when there was anything.
"""

import concurrent.futures
import json
import os
import pathlib
import shlex
import subprocess
import sys


def look_at(entry, tidies, database):
    """What is wrong with the file; the empty text for nothing."""
    if tidies:
        command = ["clang-tidy-14", "-quiet", "-p", str(database.parent), entry["file"]]
        run = subprocess.run(command, capture_output=True, text=True, check=False)
        return run.stdout if run.returncode != 0 or run.stdout else ""
    arguments = [word for word in shlex.split(entry["command"]) if not word.endswith("ccache")]
    place = arguments.index("-o")
    command = [*arguments[:place], *arguments[place + 2 :], "-fsyntax-only"]
    run = subprocess.run(command, cwd=entry["directory"], capture_output=True, text=True, check=False)
    return run.stderr if run.returncode != 0 else ""


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    database = pathlib.Path(arguments[1]).resolve()
    root = pathlib.Path.cwd().resolve()
    changed = {str(root / line.strip()) for line in sys.stdin if line.strip()}
    entries = {}
    for entry in json.loads(database.read_text(encoding="utf-8")):
        inside = pathlib.Path(entry["file"]).is_relative_to(root)
        generated = pathlib.Path(entry["file"]).is_relative_to(database.parent)
        if inside and not generated:
            entries[entry["file"]] = entry
    if not entries:
        print(f"{database}: no source was found")
        return 1
    found = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {pool.submit(look_at, entry, file in changed, database): file for file, entry in sorted(entries.items())}
        for job in concurrent.futures.as_completed(jobs):
            if job.result():
                found += 1
                print(f"{jobs[job]}:\n{job.result()}", flush=True)
    tidied = len(changed & entries.keys())
    print(f"{len(entries)} files, {tidied} of them by clang-tidy: {found} with findings")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
