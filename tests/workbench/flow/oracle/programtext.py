"""The two texts of a generated program: the plain one, which is analysed, and the instrumented one, which runs.

Both have the same statements; the instrumented one also tells the runtime (oracleruntime.c) what is read and written.
A statement goes by its row in the plain text.
"""

import re

INDENT = " " * 11
LAST_COLUMN = 72


def wrapped(line):
    """The lines of a statement, none past the last column."""
    lines = [INDENT]
    for word in re.findall(r"\"[^\"]*\"|\S+", line):
        if len(lines[-1]) + len(word) + 1 > LAST_COLUMN:
            lines.append(INDENT + "    ")
        lines[-1] += word if lines[-1].endswith("  ") else " " + word
    return lines


class Item:
    """A data item as the generator uses it: how it is written, and how many bytes that is."""

    def __init__(self, text, name, size, numeric=False):
        self.text = text  # with subscripts and reference modification
        self.name = name  # the data name alone, which a use is known by
        self.size = size
        self.numeric = numeric


class ProgramText:
    def __init__(self):
        self.plain = []
        self.instrumented = []
        self.program = ""  # whose text is being written
        self.cancels = False  # whether a program before, or this one, has a CANCEL
        self.scratch = 0  # switches that the instrumented text of the program needs for itself
        self._switches = 0  # the place for them

    @property
    def row(self):
        """The row that the next plain line gets."""
        return len(self.plain) + 1

    def head(self, line):
        """A line outside the procedure division, or in area A, the same in both."""
        self.plain.append(line)
        self.instrumented.append(line)

    def both(self, *lines):
        self.only_plain(*lines)
        self.only_instrumented(*lines)

    def only_plain(self, *lines):
        for line in lines:
            self.plain += wrapped(line)

    def only_instrumented(self, *lines):
        for line in lines:
            self.instrumented += wrapped(line)

    def begin_program(self, name):
        self.program = name
        self.scratch = 0

    def place_for_switches(self):
        self._switches = len(self.instrumented)

    def end_procedures(self):
        """Behind the last statement of a program."""
        lines = ["       77  OR-FRESH PIC 9 VALUE 1."]
        lines += [f"       77  OR-SWITCH-{number} PIC 9 VALUE 0." for number in range(1, self.scratch + 1)]
        self.instrumented[self._switches : self._switches] = lines

    def new_switch(self):
        self.scratch += 1
        return f"OR-SWITCH-{self.scratch}"

    def _call(self, routine, *arguments):
        self.only_instrumented(f'CALL "{routine}" USING')
        self.only_instrumented(*("    " + argument for argument in arguments), "END-CALL")

    def runs(self, row):
        self._call("orstat", f"BY VALUE {row}")

    def comes_out(self, row, sense):
        self._call("orcond", f"BY VALUE {row}", f"BY VALUE {1 if sense else 0}")

    def reads(self, row, *items):
        for item in items:
            self._call(
                "orread",
                f"BY VALUE {row}",
                f'BY REFERENCE Z"{item.name}"',
                f"BY REFERENCE {item.text}",
                f"BY VALUE {item.size}",
            )

    def writes(self, row, *items):
        for item in items:
            self._call("orwrite", f"BY VALUE {row}", f"BY REFERENCE {item.text}", f"BY VALUE {item.size}")

    def before_change(self, items):
        for slot, item in enumerate(items):
            self._call("orbefore", f"BY VALUE {slot}", f"BY REFERENCE {item.text}", f"BY VALUE {item.size}")

    def after_change(self, row, items):
        for slot, item in enumerate(items):
            self._call(
                "orafter", f"BY VALUE {row}", f"BY VALUE {slot}", f"BY REFERENCE {item.text}", f"BY VALUE {item.size}"
            )

    # Areas go by the names of their program and their own.

    def begins(self):
        """Before the areas of a program."""
        self._call("orbegin", "BY REFERENCE OR-FRESH")

    def watches(self, name, size, is_local=False):
        """An area; a local one has its first values again at each call of the program."""
        self._watch("orlocal" if is_local else "orarea", name, size)

    def shares(self, name, size):
        """An area that other programs have as well."""
        self._watch("orshared", name, size)

    def takes_in(self, position, name, size):
        self._watch("orparam", name, size, f"BY VALUE {position}")

    def _watch(self, routine, name, size, *more):
        area = f'BY REFERENCE Z"{self.program}/{name}"'
        self._call(routine, area, f"BY REFERENCE {name}", f"BY VALUE {size}", *more)

    def calls(self, row, is_known, contents=()):
        """Before a CALL. `contents` are the positions and items that are handed over by content or value."""
        self._call("orcall", f"BY VALUE {row}", f"BY VALUE {0 if is_known else 1}")
        for position, item in contents:
            self._call("orcontent", f"BY VALUE {position}", f"BY REFERENCE {item.text}")

    def comes_back(self):
        """Behind a CALL."""
        self.only_instrumented('CALL "orreturned" END-CALL')
