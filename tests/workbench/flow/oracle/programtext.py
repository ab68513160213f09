"""The two texts of a generated program: the plain one, which is analysed, and the instrumented one, which runs.

Both have the same statements; the instrumented one also tells the runtime (oracleruntime.c) what is read and written.
A statement goes by its row in the plain text.
"""

INDENT = " " * 11


class Item:
    """A data item as the generator uses it: how it is written, and how many bytes that is."""

    def __init__(self, text, name, size, numeric=False, exact=True):
        self.text = text  # with subscripts and reference modification
        self.name = name  # the data name alone, which a use is known by
        self.size = size
        self.numeric = numeric
        self.exact = exact  # stands for the same bytes each time


class ProgramText:
    def __init__(self):
        self.plain = []
        self.instrumented = []
        self.scratch = 0  # switches that the instrumented text needs for itself

    @property
    def row(self):
        """The row that the next plain line gets."""
        return len(self.plain) + 1

    def head(self, line):
        """A line outside the procedure division, or in area A, the same in both."""
        self.plain.append(line)
        self.instrumented.append(line)

    def both(self, line):
        self.plain.append(INDENT + line)
        self.instrumented.append(INDENT + line)

    def only_plain(self, line):
        self.plain.append(INDENT + line)

    def only_instrumented(self, *lines):
        self.instrumented.extend(INDENT + line for line in lines)

    def new_switch(self):
        self.scratch += 1
        return f"OR-SWITCH-{self.scratch}"

    def _call(self, routine, *arguments):
        self.only_instrumented(f'CALL "{routine}" USING')
        self.only_instrumented(*("    " + argument for argument in arguments))

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

    def watches(self, name, size):
        self._call("orarea", f'BY REFERENCE Z"{name}"', f"BY REFERENCE {name}", f"BY VALUE {size}")
