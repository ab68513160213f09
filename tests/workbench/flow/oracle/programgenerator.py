"""Random COBOL programs that end, each as a plain and an instrumented text (see programtext.py).

A text holds a main program and up to two that it calls, the first of which calls the second: beside it, or nested in it.
"""

import random

import storage
from controlstatements import ControlStatements
from datastatements import DataStatements
from programtext import Item, ProgramText
from sortstatements import SortStatements

MAIN = "RANDOM1"
CALLED = ["SUB1", "SUB2"]


class ProgramGenerator:
    def __init__(self, seed):
        self.random = random.Random(seed)
        self.text = ProgramText()

    def generate(self):
        """The plain lines and the instrumented ones."""
        called = CALLED[: self.random.choice([0, 1, 2, 2])]
        is_nested = self.random.random() < 0.3
        # The orders in which those that have an ENTRY take in their parameters there.
        entries = {}
        for name in [] if is_nested else called:
            if self.random.random() < 0.5:
                positions = range(len(storage.PARAMETERS))
                entries[name] = self.random.sample(positions, len(positions))
        OneProgram(self.random, self.text, MAIN, called, is_nested, entries).write()
        if called and not is_nested:
            self.text.head(f"       END PROGRAM {MAIN}.")
        for place, name in enumerate(called):
            OneProgram(self.random, self.text, name, called[place + 1 :], is_nested, entries).write()
            self.text.head(f"       END PROGRAM {name}.")
        if called and is_nested:
            self.text.head(f"       END PROGRAM {MAIN}.")
        return self.text.plain, self.text.instrumented


class OneProgram:
    def __init__(self, random, text, name, callees, is_nested, entries):
        self.random = random
        self.text = text
        self.name = name
        self.callees = callees
        self.is_called = name != MAIN
        self.is_nested = is_nested
        # The runtime looks at what it has freed when a CANCEL names an INITIAL program that has run.
        self.is_initial = self.is_called and random.random() < 0.2 and not text.cancels
        self.items = storage.Storage(random, self.is_called, is_nested)
        self.data = DataStatements(random, text, self.items, callees)
        self.data.entries = {callee: order for callee, order in entries.items() if callee in callees}
        self.entry = entries.get(name)
        self.control = ControlStatements(random, text, self.items, self.data)
        self.sorting = SortStatements(self.data)
        self.control.sorting = None if self.is_called else self.sorting
        self.sorts = not self.is_called and random.random() < 0.4

    def write(self):
        self.text.begin_program(self.name)
        self._divisions()
        most = 6 if self.is_called else 12
        names = [f"PAR-{number}" for number in range(self.random.randrange(most // 2, most))]
        sections = set(self.random.sample(names[1:], self.random.randrange(0, min(3, len(names)))))
        altered = self.random.choice(names[2:-1]) if len(names) > 3 and self.random.random() < 0.5 else None
        exits = {name: f"{name}-EXIT" for name in names if name != altered and self.random.random() < 0.3}
        self.control.exits = exits
        labels = []
        for place, name in enumerate(names):
            labels += ([f"SEC-{place}"] if name in sections else []) + [name] + ([exits[name]] if name in exits else [])
        self.control.jumps = labels[labels.index(names[0]) + 1 :]
        for place, name in enumerate(names):
            if name in sections:
                self.text.head(f"       SEC-{place} SECTION.")
            self.text.head(f"       {name}.")
            if name == altered:
                # ALTER wants a paragraph of a GO TO alone.
                self.text.both(f"GO TO {names[-1]}.")
                continue
            self.control.is_first = place == 0
            self.control.own_exit = exits.get(name)
            self._begin_paragraph(place == 0)
            self.control.targets = [other for other in labels[labels.index(name) + 1 :] if other != altered]
            self._sentences(altered, names, is_first=place == 0)
            if place == 0 or self.random.random() < 0.03:
                self.text.runs(self.text.row)
                self.text.both("GOBACK." if self.is_called else "STOP RUN.")
            if name in exits:
                self.text.head(f"       {exits[name]}.")
                self.text.both("EXIT.")
        if self.sorts:
            self._sort_procedures()
        if self.entry:
            self._entry([label for label in labels[1:] if label != altered])
        self.text.end_procedures()

    def _declaratives(self):
        """Run when a READ finds the end and has no phrase for it. A READ in it would come back to it for ever."""
        self.text.head("       DECLARATIVES.")
        self.text.head("       DECL-F SECTION.")
        self.text.both("USE AFTER STANDARD ERROR PROCEDURE ON F.")
        self.text.head("       DECL-1.")
        self.data.simple()
        self.data.move()
        self.text.both(".")
        self.text.head("       END DECLARATIVES.")
        self.text.head("       MAIN-SEC SECTION.")

    def _stop(self):
        """So that nothing falls into what comes behind all else."""
        self.text.head("       STOP-SEC SECTION.")
        self.text.head("       STOP-PAR.")
        self.text.runs(self.text.row)
        self.text.both("GOBACK." if self.is_called else "STOP RUN.")
        self.control.is_first = True
        self.control.own_exit = None

    def _entry(self, labels):
        """Where the program can be entered by another name."""
        self._stop()
        self.text.head("       ENTRY-SEC SECTION.")
        self.text.head("       ENTRY-PAR.")
        self.text.both(f'ENTRY "{self.name}E" USING')
        for position in self.entry:
            name, _ = storage.PARAMETERS[position]
            self.text.both(f"    BY {'VALUE' if name == storage.BY_VALUE else 'REFERENCE'} {name}")
        self.text.both(".")
        self._watch(self.entry)
        self.control.fill_up()
        self.control.targets = labels
        self.control.jumps = labels
        self.control.perform()
        self.control.block()
        self.text.runs(self.text.row)
        self.text.both("GOBACK.")

    def _sort_procedures(self):
        self._stop()
        self.control.sorting = None
        self.control.jumps = self.control.targets = []
        released = self.random.randrange(1, 4)
        for name, write in [
            ("SORT-IN", lambda: self.sorting.releases(released)),
            ("SORT-OUT", lambda: self.sorting.returns(self.random.randrange(1, released + 2))),
        ]:
            self.text.head(f"       {name} SECTION.")
            self.text.head(f"       {name}-1.")
            self.data.simple()
            write()
            self.control.if_statement()
            self.text.both(".")

    def _divisions(self):
        head = self.text.head
        head("       IDENTIFICATION DIVISION.")
        attributes = (["COMMON"] if self.is_called and self.is_nested else []) + (["INITIAL"] if self.is_initial else [])
        head(f"       PROGRAM-ID. {self.name}{' IS ' + ' '.join(attributes) + ' PROGRAM' if attributes else ''}.")
        if not self.is_called:
            head("       ENVIRONMENT DIVISION.")
            head("       INPUT-OUTPUT SECTION.")
            head("       FILE-CONTROL.")
            head('           SELECT F ASSIGN TO "in.dat" FILE STATUS F-ST.')
            head('           SELECT O ASSIGN TO "out.dat" FILE STATUS O-ST.')
            head('           SELECT OPTIONAL R ASSIGN TO "rel.dat"')
            head("               ORGANIZATION RELATIVE ACCESS DYNAMIC")
            head("               RELATIVE KEY R-K FILE STATUS R-ST.")
            head('           SELECT OPTIONAL IX ASSIGN TO "indexed.dat"')
            head("               ORGANIZATION INDEXED ACCESS DYNAMIC RECORD KEY IX-K")
            head("               ALTERNATE RECORD KEY IX-A WITH DUPLICATES")
            head("               FILE STATUS IX-ST.")
            for number in (1, 2, 3):
                head(f'           SELECT G{number} ASSIGN TO "sorted{number}.dat".')
            head('           SELECT SF ASSIGN TO "sort.tmp".')
        head("       DATA DIVISION.")
        for line in self._data_lines_before_switches():
            head(line)
        self.text.place_for_switches()
        if self.is_called:
            # A nested program can have none of its own.
            if not self.is_nested:
                head("       LOCAL-STORAGE SECTION.")
            for line in [*storage.local_storage(), "       LINKAGE SECTION.", *storage.linkage()]:
                head(line)
            head("       PROCEDURE DIVISION USING")
            head("           " + " ".join(name for name, _ in storage.PARAMETERS if name != storage.BY_VALUE))
            head(f"           BY VALUE {storage.BY_VALUE}.")
        else:
            head("       PROCEDURE DIVISION.")
            if self.random.random() < 0.4:
                self._declaratives()

    def _data_lines_before_switches(self):
        lines = [] if self.is_called else storage.file_section()
        lines += ["       WORKING-STORAGE SECTION.", *storage.working_storage(self.random)]
        lines += storage.shared()
        if not self.is_called:
            lines += storage.file_states()
            if self.is_nested:
                lines += storage.global_items()
        if self.callees:
            lines += storage.program_names(self.callees)
        return lines

    def _begin_paragraph(self, is_first):
        if is_first:
            self._watch(range(len(storage.PARAMETERS)))
            if not self.is_called:
                self.text.both("OPEN INPUT F OUTPUT O I-O R IX.")
                self._take_input()
            self.control.fill_up()
        else:
            self.control.burn_fuel("EXIT PARAGRAPH")
        self.text.both(".")

    def _watch(self, order):
        """What the program finds, its parameters handed over in this order."""
        self.text.begins()
        areas = self.items.areas | (storage.NAME_AREAS if self.callees else {})
        for name, size in areas.items():
            self.text.watches(name, size)
        for name, size in self.items.shared.items():
            self.text.shares(name, size)
        if self.is_called:
            for name, size in storage.LOCAL_AREAS.items():
                self.text.watches(name, size, is_local=self.is_initial or not self.is_nested)
            for position, parameter in enumerate(order):
                self.text.takes_in(position, *storage.PARAMETERS[parameter])

    def _take_input(self):
        """So that runs differ from the beginning on."""
        for name, size in self.random.sample(storage.INPUTS, self.random.randrange(6, len(storage.INPUTS))):
            self.data.whole(f"ACCEPT {name}", [], [Item(name, name, size)])

    def _sentences(self, altered, names, is_first):
        # It must not come to itself again without anything that takes fuel.
        others = names[names.index(altered) + 1 :] if altered else []
        most = (3, 5) if self.is_called else (6, 10)
        for _ in range(self.random.randrange(*most) if is_first else self.random.randrange(1, 4)):
            if is_first:
                if not self.is_called:
                    self.control.fill_up()
                self.control.perform()
                if self.sorts and self.random.random() < 0.3:
                    self.sorting.with_procedures()
            self.control.block()
            if altered and self.random.random() < 0.2:
                self.text.runs(self.text.row)
                self.text.both(f"ALTER {altered} TO PROCEED TO {self.random.choice(others)}")
            self.text.both(".")
