"""Statements that move and change data, in both texts."""

import storage
from arithmetic import Arithmetic
from filestatements import FileStatements
from programtext import Item
from stringstatements import StringStatements
from tablestatements import TableStatements


class DataStatements:
    """Each method writes one statement. `text` is a ProgramText, `items` a Storage; `block` writes the statements of a
    phrase. What the statement reads is told before it, what it has written right behind it."""

    def __init__(self, random, text, items, callees):
        self.random = random
        self.text = text
        self.items = items
        self.callees = callees  # the programs that this one may call
        self.returning = None  # the row of the last call and the item that it returns to
        self.entries = {}  # the order of the parameters at the entries of those that have one
        self.kinds = [
            (12, self.move),
            (6, self.move_constant),
            (3, self.move_group),
            (1, self.move_to_several),
            (2, self.move_part),
            (1, self.move_function),
            (2, self.display),
            (1, self.nothing),
            (2, self.move_corresponding),
            (2, self.initialize),
            (2, self.initialize_by_phrases),
            (2, self.set_condition),
            (2, self.accept),
            (1, self.accept_time),
            (1, self.call_other_language),
        ]
        self.kinds += Arithmetic(self).kinds + StringStatements(self).kinds + TableStatements(self).kinds
        if not items.is_called:
            self.kinds += FileStatements(self).kinds
        if items.is_called:
            self.kinds += [(1, self.return_code)]
        if callees:
            self.kinds += [(4, self.call), (1, self.name_program), (1, self.cancel)]

    def any(self):
        weights = [weight for weight, _ in self.kinds]
        self.random.choices([kind for _, kind in self.kinds], weights)[0]()

    def start(self, reads=(), targets=()):
        """The row of the statement that comes. Subscripts of what is read and written are read as well."""
        row = self.text.row
        self.text.runs(row)
        subscripts = {name for item in (*reads, *targets) for name in storage.subscripts_of(item)}
        self.text.reads(row, *(Item(name, name, 1) for name in sorted(subscripts)), *reads)
        return row

    def keep_subscripts(self, *targets):
        """Subscripts of what a statement writes must stay between their bounds; the row of a statement must be known by
        one operand of a name only."""
        for name in sorted({name for item in targets for name in storage.subscripts_of(item)}):
            self.bound(name)

    def bound(self, name):
        row = self.text.row
        item = Item(name, name, 1)
        self.text.runs(row)
        self.text.reads(row, item)
        self.text.both(f"IF {name} < 1 OR > 3")
        self.text.comes_out(row, True)
        inner = self.text.row
        self.text.runs(inner)
        self.text.both(f"MOVE {self.random.randrange(1, 4)} TO {name}")
        self.text.writes(inner, item)
        self.text.only_instrumented("ELSE")
        self.text.comes_out(row, False)
        self.text.both("END-IF")

    def whole(self, line, reads, targets):
        """A statement that overwrites its targets every time."""
        self.keep_subscripts(*reads, *targets)
        row = self.start(reads, targets)
        self.text.both(line)
        self.text.writes(row, *targets)

    def changing(self, line, reads, targets):
        """A statement that may leave some of its targets' bytes as they are."""
        self.keep_subscripts(*reads, *targets)
        row = self.start(reads, targets)
        self.text.before_change(targets)
        self.text.both(line)
        self.text.after_change(row, targets)

    def outcomes(self, row, bad, end, always=(), success=()):
        """The branches of a statement that can fail: what it writes on both ways, and what when all is well."""
        phrase = self.text.row
        self.text.both(bad)
        self.text.writes(row, *always)
        self.text.comes_out(phrase, True)
        self.simple()
        self.text.both(f"NOT {bad}")
        self.text.writes(row, *always, *success)
        self.text.comes_out(phrase, False)
        self.simple()
        self.text.both(end)

    def move(self):
        source, target = self.items.pair(self.items.any, self.random.choice([self.items.text, self.items.number]))
        self.whole(f"MOVE {source.text} TO {target.text}", [source], [target])

    def move_constant(self):
        if self.random.random() < 0.15:
            name, low, high = self.random.choice([("I-1", 1, 4), ("I-2", 1, 4), ("S-2", 0, 10), ("P-1", 1, 9)])
            item = Item(name, name, storage.AREAS.get(name, 1))
            return self.whole(f"MOVE {self.random.randrange(low, high)} TO {name}", [], [item])
        target = self.random.choice([self.items.number, self.items.text])()
        texts = ['"abc"', "SPACES", '"x,y"', 'ALL "ab"']
        value = str(self.random.randrange(90)) if target.numeric else self.random.choice(texts)
        self.whole(f"MOVE {value} TO {target.text}", [], [target])

    def move_to_several(self):
        source, target = self.items.pair(self.items.number, self.items.text)
        if source.name == "N-2":
            return self.move()
        self.whole(f"MOVE {source.text} TO {target.text} N-2", [source], [target, Item("N-2", "N-2", 4)])

    def move_part(self):
        """From and to a part whose place and length are variable: at least its first byte is read."""
        self.bound("I-1")
        self.bound("I-2")
        row = self.start([Item("X-1 (I-1:I-2)", "X-1", 1)], [Item("X-2 (I-2:I-1)", "X-2", 1)])
        target = [Item("X-2", "X-2", 8)]
        self.text.before_change(target)
        self.text.both("MOVE X-1 (I-1:I-2) TO X-2 (I-2:I-1)")
        self.text.after_change(row, target)

    def move_function(self):
        self.whole("MOVE FUNCTION UPPER-CASE (X-1) TO X-2", [Item("X-1", "X-1", 8)], [Item("X-2", "X-2", 8)])

    def display(self):
        one, other = self.items.pair(self.items.any, self.items.any)
        self.whole(f"DISPLAY {one.text} {other.text}", [one, other], [])

    def move_group(self):
        source, target = self.items.pair(self.items.group, self.items.group)
        if {source.name, target.name} & {"A-G", "A-R", "B-4", "A-REC", "B-REC"} == {source.name, target.name}:
            return self.move()  # parts of the same record
        self.whole(f"MOVE {source.text} TO {target.text}", [source], [target])

    def move_corresponding(self):
        reads = [Item(f"{name} OF D-1", name, size) for name, size in storage.CORRESPONDING]
        targets = [Item(f"{name} OF D-2", name, size) for name, size in storage.CORRESPONDING]
        self.whole("MOVE CORRESPONDING D-1 TO D-2", reads, targets)

    def simple(self):
        """A short statement for a phrase."""
        target = self.items.number()
        self.whole(f"MOVE {self.random.randrange(50)} TO {target.text}", [], [target])

    def nothing(self):
        self.text.runs(self.text.row)
        self.text.both("CONTINUE")

    def move_to_count(self):
        self.whole(f"MOVE {self.random.randrange(5)} TO C-1", [], [Item("C-1", "C-1", 2)])

    def initialize(self):
        name = self.random.choice(sorted(storage.INITIALIZED))
        items = storage.INITIALIZED[name]
        self.whole(f"INITIALIZE {name}", [], [Item(text, text, size) for text, size in items])

    def initialize_by_phrases(self):
        if self.random.random() < 0.2:
            # A byte that has its new value already is written all the same.
            row = self.start()
            self.text.before_change([Item("A-G", "A-G", 8)])
            self.text.both("INITIALIZE A-G ALPHANUMERIC TO VALUE THEN REPLACING NUMERIC DATA BY 9")
            self.text.after_change(row, [Item("A-G", "A-G", 8)])
            return self.text.writes(row, Item("A-3", "A-3", 3), Item("A-5", "A-5", 2))
        name, size = self.random.choice(storage.INITIALIZED_BY_PHRASES)
        phrases = self.random.choice(storage.INITIALIZE_PHRASES)
        self.changing(f"INITIALIZE {name} {phrases}", [], [Item(name, name, size)])

    def set_condition(self):
        name, parent = self.random.choice(
            [("S-ON TO TRUE", "S-1"), ("S-OFF TO TRUE", "S-1"), ("S-LOW TO TRUE", "S-2"), ("S-ON TO FALSE", "S-1")]
        )
        self.whole(f"SET {name}", [], [Item(parent, parent, 1)])

    def accept_time(self):
        self.whole("ACCEPT X-1 FROM TIME", [], [Item("X-1", "X-1", 8)])

    def accept(self):
        name, size = self.random.choice([("X-1", 8), ("A-1", 4), ("K-3", 2), ("N-1", 4), ("A-5", 2), ("S-2", 1)])
        self.whole(f"ACCEPT {name}", [], [Item(name, name, size)])

    def call_other_language(self):
        given, changed = Item("X-3", "X-3", 5), self.random.choice([Item("X-2", "X-2", 8), Item("A-1", "A-1", 4)])
        self.changing(f'CALL "orother" USING {given.text} {changed.text}', [given, changed], [changed])

    # Calls of the other programs.

    def return_code(self):
        """What a RETURNING gets; the program that runs ends with the last one otherwise."""
        self.whole(f"MOVE {storage.RETURN_CODE} TO RETURN-CODE", [], [])

    def name_program(self):
        """PG-1 has nothing but names of programs that are there, wherever it is used."""
        name = self.random.choice(self.callees)
        self.whole(f'MOVE "{name}" TO PG-1', [], [Item("PG-1", "PG-1", 8)])

    def cancel(self):
        """The program begins with its first values when it is called again."""
        self.text.cancels = True
        if self.random.random() < 0.5:
            return self.whole("CANCEL PG-1", [Item("PG-1", "PG-1", 8)], [])
        self.whole(f'CANCEL "{self.random.choice(self.callees)}"', [], [])

    def call(self):
        kind = self.random.randrange(6)
        if kind == 0:
            return self.call_unknown()
        if self.entries and self.random.random() < 0.4:
            callee, order = self.random.choice(sorted(self.entries.items()))
            self.hand_over(f'"{callee}E"', True, [], order)
        elif kind < 3:
            self.hand_over("PG-1", True, [Item("PG-1", "PG-1", 8)])
        else:
            self.hand_over(f'"{self.random.choice(self.callees)}"', True, [])
        self.text.comes_back()
        self.take_back()

    def hand_over(self, program, is_known, reads, order=range(len(storage.PARAMETERS))):
        """The CALL up to its arguments, for the parameters in this order; comes_back has to follow."""
        items = [self.items.argument(position) for position in order]
        ways = [self.random.choice(["REFERENCE", "REFERENCE", "CONTENT"]) for _ in items]
        ways[list(order).index(len(items) - 1)] = "VALUE"
        self.keep_subscripts(*reads, *items)
        row = self.start([*reads, *items])
        handed = enumerate(zip(items, ways))
        self.text.calls(row, is_known, [(position, item) for position, (item, way) in handed if way != "REFERENCE"])
        self.text.both(f"CALL {program} USING")
        for item, way in zip(items, ways):
            self.text.both(f"    BY {way} {item.text}")
        # More than the program takes in; GnuCOBOL does not compile that where it knows the program.
        if not program.startswith('"') and self.random.random() < 0.2:
            self.text.both("    BY REFERENCE FACTOR")
        self.returning = (row, self.items.code()) if self.random.random() < 0.3 else None
        if self.returning:
            self.text.both(f"    RETURNING {self.returning[1].text}")

    def take_back(self):
        """Behind the return from the last call."""
        if self.returning:
            row, item = self.returning
            self.text.writes(row, item)

    def call_unknown(self):
        """Of a program that only the run knows, and that may be none."""
        program = Item("PG-T (I-1)", "PG-T", 8)
        self.hand_over(program.text, False, [program])
        phrase = self.text.row
        self.text.both("ON EXCEPTION")
        self.text.comes_back()
        self.text.comes_out(phrase, True)
        self.simple()
        self.text.both("NOT ON EXCEPTION")
        self.text.comes_back()
        self.take_back()
        self.text.comes_out(phrase, False)
        self.simple()
        self.text.both("END-CALL")
