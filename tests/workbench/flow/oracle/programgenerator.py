"""Random COBOL programs that end, each as a plain and an instrumented text (see programtext.py)."""

import random

import storage
from controlstatements import ControlStatements
from datastatements import DataStatements
from programtext import ProgramText

class ProgramGenerator:
    def __init__(self, seed):
        self.random = random.Random(seed)
        self.text = ProgramText()
        self.data = DataStatements(self.random, self.text, storage.Storage(self.random))
        self.control = ControlStatements(self.random, self.text, self.data.items, self.data)

    def generate(self):
        """The plain lines and the instrumented ones."""
        self._divisions()
        names = [f"PAR-{number}" for number in range(self.random.randrange(5, 12))]
        sections = set(self.random.sample(names[1:], self.random.randrange(0, 3)))
        altered = self.random.choice(names[2:-1]) if self.random.random() < 0.5 else None
        self.control.jumps = names[1:]
        for place, name in enumerate(names):
            if name in sections:
                self.text.head(f"       SEC-{place} SECTION.")
            self.text.head(f"       {name}.")
            if name == altered:
                # ALTER wants a paragraph of a GO TO alone.
                self.text.both(f"GO TO {names[-1]}.")
                continue
            self._begin_paragraph(place == 0)
            self.control.targets = [other for other in names[place + 1 :] if other != altered]
            self._sentences(altered, names, is_first=place == 0)
            if place == 0 or self.random.random() < 0.1:
                self.text.runs(self.text.row)
                self.text.both("STOP RUN.")
        return self.text.plain, self._with_switches()

    def _divisions(self):
        for line in [
            "IDENTIFICATION DIVISION.",
            "PROGRAM-ID. RANDOM1.",
            "ENVIRONMENT DIVISION.",
            "INPUT-OUTPUT SECTION.",
            "FILE-CONTROL.",
            '    SELECT F ASSIGN TO "in.dat" FILE STATUS F-ST.',
            '    SELECT O ASSIGN TO "out.dat" FILE STATUS O-ST.',
        ]:
            self.text.head(" " * 7 + line)
        for line in storage.data_division(self.random):
            self.text.head(line)
        self.text.instrumented.append(None)  # the switches come here
        self.text.head("       PROCEDURE DIVISION.")

    def _with_switches(self):
        lines = []
        for line in self.text.instrumented:
            if line is None:
                lines += [f"       77  OR-SWITCH-{number} PIC 9 VALUE 0." for number in range(1, self.text.scratch + 1)]
            else:
                lines.append(line)
        return lines

    def _begin_paragraph(self, is_first):
        if is_first:
            for name, size in storage.AREAS.items():
                self.text.watches(name, size)
            self.text.both("OPEN INPUT F OUTPUT O.")
        self.control.burn_fuel()
        self.text.both(".")

    def _sentences(self, altered, names, is_first):
        others = [name for name in names[1:] if name != altered]  # so that it does not go to itself for ever
        for _ in range(self.random.randrange(6, 10) if is_first else self.random.randrange(1, 4)):
            if is_first:
                self.control.perform()
            self.control.block()
            if altered and self.random.random() < 0.2:
                self.text.runs(self.text.row)
                self.text.both(f"ALTER {altered} TO PROCEED TO {self.random.choice(others)}")
            self.text.both(".")
