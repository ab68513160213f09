"""The storage of the generated programs: every way in which data items can lie over each other."""

from programtext import Item

# Lines of the working storage from column 8 on; "{…}" is replaced by a value.
WORKING_STORAGE = """\
01  A-REC.
    05  A-1 PIC X(4) VALUE "{letters4}".
    05  A-2 PIC 9(4) VALUE {number4}.
    05  A-G.
        10  A-3 PIC 9(3) VALUE {number3}.
        10  A-4 PIC X(3) VALUE "{letters3}".
        10  A-5 PIC 9(2) VALUE 7.
    05  A-T OCCURS 4.
        10  T-N PIC 9(3) VALUE 1.
        10  T-X PIC X(2) VALUE "tx".
66  A-R RENAMES A-1 THRU A-3.
01  B-REC REDEFINES A-REC.
    05  B-1 PIC X(6).
    05  B-2 PIC 9(4).
    05  B-3 PIC X(10).
    05  B-4 PIC X(16).
01  D-REC.
    05  D-1.
        10  K-1 PIC X(3) VALUE "one".
        10  K-2 PIC 9(3) VALUE 2.
        10  K-3 PIC X(2) VALUE "d1".
    05  D-2.
        10  K-2 PIC 9(3) VALUE 3.
        10  K-4 PIC X(2) VALUE "d2".
        10  K-1 PIC X(3) VALUE "two".
01  W-REC.
    05  W-R OCCURS 3.
        10  W-C PIC X(3) OCCURS 2 VALUE "wwc".
        10  W-N PIC 9(2) VALUE 4.
01  E-REC.
    05  E-T OCCURS 5 INDEXED BY E-I.
        10  E-K PIC 9(2) VALUE 3.
        10  E-V PIC X(3) VALUE "eee".
01  S-REC.
    05  S-1 PIC X VALUE "N".
        88  S-ON VALUE "Y" FALSE "N".
        88  S-OFF VALUE "N" "Z".
    05  S-2 PIC 9 VALUE 2.
        88  S-LOW VALUE 0 THRU 3.
01  M-REC.
    05  FILLER PIC X(16) VALUE "03a011b025c060d0".
01  M-R REDEFINES M-REC.
    05  M-T OCCURS 4 ASCENDING KEY M-K INDEXED BY M-I.
        10  M-K PIC 9(2).
        10  M-V PIC X(2).
01  H-REC.
    05  H-1 PIC X(2) VALUE "h1".
    05  FILLER PIC X(3) VALUE "fil".
    05  H-2 PIC 9(3) VALUE 7.
01  H-R REDEFINES H-REC PIC X(8).
01  Q-REC.
    05  Q-N PIC 9 VALUE 3.
    05  Q-E PIC X(3) OCCURS 1 TO 4 DEPENDING ON Q-N.
77  N-1 PIC 9(4) VALUE {number4}.
77  N-2 PIC 9(4) VALUE 12.
77  N-3 PIC S9(5) COMP-3 VALUE 5.
77  N-4 PIC S9(4) COMP VALUE 3.
77  X-1 PIC X(8) VALUE "a,b c,de".
77  X-2 PIC X(8) VALUE "{letters4}".
77  X-3 PIC X(5) VALUE "zz".
77  P-1 PIC 9(2) VALUE 1.
77  C-1 PIC 9(2) VALUE 0.
77  C-2 PIC 9(2) VALUE 0.
77  I-1 PIC 9 VALUE 1.
77  I-2 PIC 9 VALUE 2.
77  FACTOR PIC 9(3) VALUE 3.
77  V-1 PIC S9(9) COMP-5 VALUE 3.
77  FUEL PIC 9(4) VALUE 0.
"""

# What a program finds the programs that it calls by: "{…}" is the name of one.
PROGRAM_NAMES = """\
77  PG-1 PIC X(8) VALUE "{first}".
01  PG-ALL.
    05  FILLER PIC X(8) VALUE "{first}".
    05  FILLER PIC X(8) VALUE "{second}".
    05  FILLER PIC X(8) VALUE "NOWHERE".
01  PG-R REDEFINES PG-ALL.
    05  PG-T PIC X(8) OCCURS 3.
"""

# What programs have in common: all of them, and those nested in the main program with that.
SHARED = """\
01  EX-REC IS EXTERNAL.
    05  EX-1 PIC X(3).
    05  EX-2 PIC X(3).
"""
GLOBAL = """\
01  GL-REC IS GLOBAL.
    05  GL-1 PIC X(4) VALUE "glob".
    05  GL-2 PIC 9(3) VALUE 8.
"""
SHARED_AREAS = {"EX-REC": 6}
GLOBAL_AREAS = {"GL-REC": 7}

# Of programs that are called.
LOCAL_STORAGE = """\
77  LS-1 PIC 9(4) VALUE 5.
"""
LINKAGE = """\
01  L-REC.
    05  L-1 PIC X(4).
    05  L-2 PIC 9(4).
01  L-N PIC 9(4).
01  L-X PIC X(5).
01  L-V PIC S9(9) COMP-5.
"""
PARAMETERS = [("L-REC", 8), ("L-N", 4), ("L-X", 5), ("L-V", 4)]
BY_VALUE = "L-V"  # the last of them

AREAS = {
    "A-REC": 36,
    "D-REC": 16,
    "W-REC": 24,
    "E-REC": 25,
    "S-REC": 2,
    "Q-REC": 13,
    "H-REC": 8,
    "N-1": 4,
    "N-2": 4,
    "N-3": 3,
    "N-4": 2,
    "X-1": 8,
    "X-2": 8,
    "X-3": 5,
    "P-1": 2,
    "C-1": 2,
    "C-2": 2,
    "M-REC": 16,
    "I-1": 1,
    "I-2": 1,
    "FACTOR": 3,
    "V-1": 4,
    "FUEL": 4,
}
FILE_AREAS = {"F-REC": 12, "O-REC": 12, "R-REC": 8, "SF-REC": 8, "R-K": 2, "G1-REC": 8, "G2-REC": 8, "G3-REC": 8, "IX-REC": 8}
NAME_AREAS = {"PG-1": 8, "PG-ALL": 24}
LOCAL_AREAS = {"LS-1": 4}

NUMBERS = [
    *[("A-2", 4), ("A-3", 3), ("A-5", 2), ("B-2", 4), ("N-1", 4), ("N-2", 4), ("N-3", 3), ("N-4", 2)],
    *[("C-1", 2), ("C-2", 2), ("V-1", 4)],
]
TEXTS = [
    *[("A-1", 4), ("A-4", 3), ("B-1", 6), ("B-3", 10), ("X-1", 8), ("X-2", 8), ("X-3", 5), ("K-3", 2), ("K-4", 2)],
    *[("H-R", 8), ("H-1", 2)],
]
GROUPS = [("A-G", 8), ("B-4", 16), ("D-1", 8), ("D-2", 8), ("A-R", 11), ("A-REC", 36), ("B-REC", 36), ("W-REC", 24)]
# Of the program that is not called.
FILE_NUMBERS = [("R-K", 2), ("SF-K", 4)]
FILE_TEXTS = [
    *[("F-1", 4), ("F-REC", 12), ("O-REC", 12), ("R-1", 3), ("R-2", 5), ("R-REC", 8)],
    *[("SF-T", 4), ("SF-REC", 8), ("G1-REC", 8), ("G3-REC", 8), ("G3-2", 6), ("IX-K", 2), ("IX-T", 4), ("IX-REC", 8)],
]
SHARED_TEXTS = [("EX-1", 3), ("EX-2", 3), ("EX-REC", 6)]
GLOBAL_NUMBERS = [("GL-2", 3)]
GLOBAL_TEXTS = [("GL-1", 4), ("GL-REC", 7)]
CALLED_NUMBERS = [("L-2", 4), ("L-N", 4), ("L-V", 4), ("LS-1", 4)]
CALLED_TEXTS = [("L-1", 4), ("L-X", 5)]
CALLED_GROUPS = [("L-REC", 8)]
# What can be handed over for each parameter, "#" standing for a subscript.
ARGUMENTS = [
    [("A-G", 8), ("D-1", 8), ("D-2", 8), ("X-1", 8), ("X-2", 8), ("W-R (#)", 8)],
    [("A-2", 4), ("N-1", 4), ("N-2", 4)],
    [("X-3", 5), ("A-T (#)", 5), ("E-T (#)", 5)],
    [("V-1", 4)],
]
# What a called program can put into its return code, and where a caller takes it from there.
RETURN_CODE = 7
CODES = [("N-4", 2), ("C-2", 2), ("N-3", 3)]
# What the main program takes in before all else.
INPUTS = [
    *[("N-1", 4), ("N-2", 4), ("A-2", 4), ("A-3", 3), ("A-5", 2), ("S-1", 1), ("S-2", 1), ("I-1", 1), ("I-2", 1)],
    *[("X-1", 8), ("X-3", 5), ("A-4", 3), ("C-1", 2), ("P-1", 2), ("V-1", 4), ("N-4", 2), ("T-N (2)", 3), ("W-N (1)", 2)],
]
# What INITIALIZE is used with, and the items that it writes.
INITIALIZED = {
    "A-G": [("A-3", 3), ("A-4", 3), ("A-5", 2)],
    "A-G REPLACING NUMERIC DATA BY 7": [("A-3", 3), ("A-5", 2)],
    'A-G REPLACING ALPHANUMERIC DATA BY "q"': [("A-4", 3)],
    "A-REC": [("A-REC", 36)],
    "D-2": [("K-2 OF D-2", 3), ("K-4", 2), ("K-1 OF D-2", 3)],
    "A-T (2)": [("T-N (2)", 3), ("T-X (2)", 2)],
    "W-REC": [("W-REC", 24)],
    "S-REC": [("S-1", 1), ("S-2", 1)],
    "N-3": [("N-3", 3)],
}
# With these it may leave any byte of the item as it is.
INITIALIZED_BY_PHRASES = [("A-G", 8), ("A-REC", 36), ("D-2", 8), ("H-REC", 8), ("W-REC", 24), ("S-REC", 2), ("N-3", 3)]
INITIALIZE_PHRASES = [
    "WITH FILLER",
    "WITH FILLER ALL TO VALUE",
    "ALL TO VALUE",
    "NUMERIC TO VALUE",
    "ALL TO VALUE THEN TO DEFAULT",
]
# Pairs that MOVE CORRESPONDING D-1 TO D-2 moves.
CORRESPONDING = [("K-1", 3), ("K-2", 3)]


def _indented(text, **values):
    return [" " * 7 + line for line in text.format(**values).splitlines()]


FILE_SECTION = """\
FILE SECTION.
FD  F.
01  F-REC.
    05  F-1 PIC X(4).
    05  F-2 PIC 9(8).
FD  O.
01  O-REC PIC X(12).
FD  R.
01  R-REC.
    05  R-1 PIC X(3).
    05  R-2 PIC X(5).
FD  G1.
01  G1-REC PIC X(8).
FD  G2.
01  G2-REC PIC X(8).
FD  G3.
01  G3-REC.
    05  G3-1 PIC X(2).
    05  G3-2 PIC X(6).
FD  IX.
01  IX-REC.
    05  IX-K PIC X(2).
    05  IX-A PIC X(2).
    05  IX-T PIC X(4).
SD  SF.
01  SF-REC.
    05  SF-K PIC 9(4).
    05  SF-T PIC X(4).
"""
FILE_STATES = """\
77  R-ST PIC XX.
77  R-K PIC 9(2) VALUE 1.
77  F-ST PIC XX.
77  IX-ST PIC XX.
77  O-ST PIC XX.
"""


def working_storage(random):
    """The lines of the items that every program has."""

    def letters(count):
        return "".join(random.choice("abcxyz") for _ in range(count))

    values = {"letters4": letters(4), "letters3": letters(3), "number4": random.randrange(100), "number3": random.randrange(100)}
    return _indented(WORKING_STORAGE, **values)


def program_names(callees):
    return _indented(PROGRAM_NAMES, first=callees[0], second=callees[-1])


def file_section():
    return _indented(FILE_SECTION)


def file_states():
    return _indented(FILE_STATES)


def shared():
    return _indented(SHARED)


def global_items():
    return _indented(GLOBAL)


def local_storage():
    return _indented(LOCAL_STORAGE)


def linkage():
    return _indented(LINKAGE)


class Storage:
    """Chooses items. Variable subscripts are those of `subscripts_of`, which the program keeps within their bounds."""

    def __init__(self, random, is_called, is_nested):
        self.random = random
        self.is_called = is_called
        # What a program takes in is used often.
        self.numbers = NUMBERS + (CALLED_NUMBERS * 2 if is_called else FILE_NUMBERS)
        self.texts = TEXTS + (CALLED_TEXTS * 2 if is_called else FILE_TEXTS)
        self.groups = GROUPS + (CALLED_GROUPS * 2 if is_called else [])
        self.shared = dict(SHARED_AREAS)
        self.texts = self.texts + SHARED_TEXTS
        if is_nested:
            self.shared |= GLOBAL_AREAS
            self.numbers = self.numbers + GLOBAL_NUMBERS
            self.texts = self.texts + GLOBAL_TEXTS
        self.areas = AREAS if is_called else AREAS | FILE_AREAS

    def number(self):
        kind = self.random.randrange(10)
        if kind == 0:
            return self._element("T-N", 3, 4, numeric=True)
        if kind == 1:
            return self._element("W-N", 2, 3, numeric=True)
        name, size = self.random.choice(self.numbers)
        return Item(name, name, size, numeric=True)

    def text(self):
        kind = self.random.randrange(12)
        if kind == 0:
            return self._element("T-X", 2, 4)
        if kind == 1:
            first, second = self._subscript(3), self.random.randrange(1, 3)
            return Item(f"W-C ({first}, {second})", "W-C", 3)
        if kind == 2:
            return self._part()
        name, size = self.random.choice(self.texts)
        return Item(name, name, size)

    def group(self):
        name, size = self.random.choice(self.groups)
        return Item(name, name, size)

    def argument(self, position):
        """Something to hand over for this parameter of another program."""
        choices = list(ARGUMENTS[position])
        if self.is_called:
            choices += [PARAMETERS[position]] * 2
        name, size = self.random.choice(choices)
        if "#" not in name:
            return Item(name, name, size)
        return self._element(name.split()[0], size, 3)

    def code(self):
        """For what a program returns; never an argument of the same call."""
        name, size = self.random.choice(CODES)
        return Item(name, name, size)

    def any(self):
        return self.random.choice([self.number, self.text, self.text, self.group])()

    def pair(self, choose_one, choose_other):
        """Two items with different names, whose subscripts are no operands of their own on the same row twice."""
        while True:
            one, other = choose_one(), choose_other()
            if one.name != other.name and not (set(subscripts_of(one)) & set(subscripts_of(other))):
                return one, other

    def _subscript(self, most):
        # I-1 and I-2 stay between 1 and 3, whatever the table.
        return self.random.choice(["I-1", "I-2", *range(1, most + 1)])

    def _element(self, name, size, most, numeric=False):
        subscript = self._subscript(most)
        return Item(f"{name} ({subscript})", name, size, numeric)

    def _part(self):
        name, size = self.random.choice([("X-1", 8), ("X-2", 8), ("B-3", 10), ("A-REC", 36)])
        offset = self.random.choice(["I-1", "I-2", self.random.randrange(1, 4)])
        length = self.random.randrange(1, size - 3)
        return Item(f"{name} ({offset}:{length})", name, length)


def subscripts_of(item):
    """The names of the variables in an item's subscripts and reference modification."""
    return [name for name in ("I-1", "I-2") if name in item.text and name != item.name]
