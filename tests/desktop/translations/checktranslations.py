"""Checks that the translations of the desktop's texts are complete and fit their texts.

usage: checktranslations.py LUPDATE SOURCE_FOLDER TS_FILE...

Runs lupdate over SOURCE_FOLDER/desktop, on copies of the files, and prints one line for each text without a finished
translation, for each translation whose text is gone, and for each that lost a place holder, a mnemonic or the dots of
a command that asks more. Exits with 1 when there is one.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

PLACE_HOLDER = re.compile(r"%(?:L?\d+|n)")
MNEMONIC = re.compile(r"&(?=[^&\s])")
ASKS_MORE = re.compile(r"(\.\.\.|…)$")


def updated(lupdate, source_folder, ts_file, folder):
    """The file as lupdate would leave it."""
    copy = folder / ts_file.name
    shutil.copy(ts_file, copy)
    subprocess.run(
        [lupdate, "-silent", "-I", str(source_folder), "-extensions", "cpp,h", "-locations", "none", "-recursive",
         str(source_folder / "desktop"), "-ts", str(copy)], check=True)
    return ElementTree.parse(copy).getroot()


def faults_of(source, translation):
    """What is wrong with the translation of a text."""
    if sorted(PLACE_HOLDER.findall(source)) != sorted(PLACE_HOLDER.findall(translation)):
        yield "has other place holders"
    if len(MNEMONIC.findall(source)) != len(MNEMONIC.findall(translation)):
        yield "has another number of mnemonics"
    if bool(ASKS_MORE.search(source)) != bool(ASKS_MORE.search(translation)):
        yield "ends with dots in one language only"


def faults_in(root):
    """One line for each fault of an updated file."""
    for context in root.findall("context"):
        for message in context.findall("message"):
            source = message.findtext("source")
            translation = message.find("translation")
            where = f'{context.findtext("name")}: "{source}"'
            kind = translation.get("type")
            if kind in ("vanished", "obsolete"):
                yield f"{where} is no text any more"
                continue
            forms = [form.text or "" for form in translation.findall("numerusform")] or [translation.text or ""]
            if kind == "unfinished" or not all(forms):
                yield f"{where} has no translation"
                continue
            for form in forms:
                for fault in faults_of(source, form):
                    yield f"{where}: the translation {fault}"


def main(arguments):
    if len(arguments) < 4:
        print(__doc__, file=sys.stderr)
        return 2
    lupdate, source_folder = arguments[1], pathlib.Path(arguments[2])
    lines = []
    texts = 0
    with tempfile.TemporaryDirectory() as folder:
        for name in arguments[3:]:
            ts_file = pathlib.Path(name)
            root = updated(lupdate, source_folder, ts_file, pathlib.Path(folder))
            texts += len(root.findall("context/message"))
            lines += [f"{ts_file.name}: {line}" for line in faults_in(root)]
    print("\n".join(lines) if lines else f"{texts} translations are complete.")
    return 1 if lines or texts == 0 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
