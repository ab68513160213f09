"""Checks every #include below a source folder against the table of allowed arrows in the architecture document.

usage: checkarrows.py SOURCE_FOLDER ARCHITECTURE_DOCUMENT

Prints one line for each include that the table does not allow and exits with 1 when there is one, or when a folder has
no row or the table cannot be read.
"""

import pathlib
import re
import sys

LIBRARIES = {
    "fmt": re.compile(r"fmt/"),
    "libxml2": re.compile(r"libxml/"),
    "nlohmann-json": re.compile(r"nlohmann/"),
    "SQLite": re.compile(r"sqlite3\.h$"),
    "xxHash": re.compile(r"xxhash\.h$"),
    "CLI11": re.compile(r"CLI/"),
    "Qt": re.compile(r"Q[A-Z]\w*(/|$)|Qt\w+/"),
}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def read_tables(document):
    """The allowed arrows, the allowed libraries, and the modules that are told apart by their files."""
    arrows, libraries, files = {}, {}, {}
    header = None
    for line in document.read_text(encoding="utf-8").splitlines():
        if not line.startswith("|"):
            header = None
            continue
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if header is None:
            header = cells
        elif set(cells[0]) <= set("-: "):
            continue
        elif header == ["Module", "May include", "Libraries"]:
            arrows[cells[0]] = {name.strip() for name in cells[1].split(",") if name.strip()}
            libraries[cells[0]] = {name.strip() for name in cells[2].split(",") if name.strip()}
        elif header == ["Module", "Files"]:
            for stem in cells[1].split(","):
                folder = cells[0].rsplit("/", 1)[0]
                files[f"{folder}/{stem.strip()}"] = cells[0]
    return arrows, libraries, files


def module_of(path, arrows, files):
    """The module of a file, given by its path below the source folder; None without a row."""
    stem = path.with_suffix("").as_posix()
    if stem in files:
        return files[stem]
    folder = path.parent
    while folder != pathlib.PurePosixPath("."):
        if folder.as_posix() in arrows:
            return folder.as_posix()
        folder = folder.parent
    return None


def check_include(kind, name, module, arrows, libraries, files):
    """What is wrong with the include, or None."""
    if kind == "<":
        for library, pattern in LIBRARIES.items():
            if pattern.match(name) and library not in libraries[module]:
                return f"{module} may not use {library}"
        return None
    if "/" not in name:
        return "an include names its folder from src/ on"
    target = module_of(pathlib.PurePosixPath(name), arrows, files)
    if target is None:
        return f"the folder of {name} has no row in the table"
    if target != module and target not in arrows[module]:
        return f"{module} may not include {target}"
    return None


def main(arguments):
    if len(arguments) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    source, document = pathlib.Path(arguments[1]), pathlib.Path(arguments[2])
    arrows, libraries, files = read_tables(document)
    if not arrows:
        print(f"{document}: no table of modules was found")
        return 1
    errors, includes = [], 0
    for path in sorted([*source.rglob("*.h"), *source.rglob("*.cpp")]):
        relative = pathlib.PurePosixPath(path.relative_to(source).as_posix())
        module = module_of(relative, arrows, files)
        if module is None:
            errors.append(f"{relative}: its folder has no row in the table")
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            includes += 1
            problem = check_include(match[1], match[2], module, arrows, libraries, files)
            if problem:
                errors.append(f"{relative}:{number}: {problem} ({match[2]})")
    if includes == 0:
        errors.append(f"{source}: no include was found")
    for error in errors:
        print(error)
    print(f"{includes} includes checked, {len(errors)} problems")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
