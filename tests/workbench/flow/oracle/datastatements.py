"""Statements that move and change data, in both texts."""

import storage
from programtext import Item


class DataStatements:
    """Each method writes one statement. `text` is a ProgramText, `items` a Storage; `block` writes the statements of a
    phrase. What the statement reads is told before it, what it has written right behind it."""

    def __init__(self, random, text, items):
        self.random = random
        self.text = text
        self.items = items
        self.kinds = [
            (12, self.move),
            (6, self.move_constant),
            (3, self.move_group),
            (2, self.move_corresponding),
            (4, self.add),
            (3, self.compute),
            (2, self.divide),
            (2, self.string),
            (2, self.unstring),
            (2, self.inspect_replacing),
            (1, self.inspect_tallying),
            (2, self.initialize),
            (2, self.set_condition),
            (1, self.accept),
            (1, self.write),
            (1, self.call),
        ]

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

    def move(self):
        source, target = self.items.pair(self.items.any, self.random.choice([self.items.text, self.items.number]))
        self.whole(f"MOVE {source.text} TO {target.text}", [source], [target])

    def move_constant(self):
        if self.random.random() < 0.15:
            name, low, high = self.random.choice([("I-1", 1, 4), ("I-2", 1, 4), ("S-2", 0, 10), ("P-1", 1, 9)])
            item = Item(name, name, storage.AREAS.get(name, 1))
            return self.whole(f"MOVE {self.random.randrange(low, high)} TO {name}", [], [item])
        target = self.random.choice([self.items.number, self.items.text])()
        value = str(self.random.randrange(90)) if target.numeric else self.random.choice(['"abc"', "SPACES", '"x,y"', "ALL \"ab\""])
        self.whole(f"MOVE {value} TO {target.text}", [], [target])

    def move_group(self):
        source, target = self.items.pair(self.items.group, self.items.group)
        if {source.name, target.name} & {"A-G", "A-R", "B-4", "A-REC", "B-REC"} == {source.name, target.name}:
            return self.move()  # parts of the same record
        self.whole(f"MOVE {source.text} TO {target.text}", [source], [target])

    def move_corresponding(self):
        reads = [Item(f"{name} OF D-1", name, size) for name, size in storage.CORRESPONDING]
        targets = [Item(f"{name} OF D-2", name, size) for name, size in storage.CORRESPONDING]
        self.whole("MOVE CORRESPONDING D-1 TO D-2", reads, targets)

    def add(self):
        source, target = self.items.pair(self.items.number, self.items.number)
        verb, word = self.random.choice([("ADD", "TO"), ("SUBTRACT", "FROM")])
        line = f"{verb} {source.text} {word} {target.text}"
        if self.random.random() < 0.6:
            return self.whole(line, [source, target], [target])
        self.keep_subscripts(source, target)
        row = self.start([source, target])
        self.text.both(line)
        phrase = self.text.row
        self.text.both("ON SIZE ERROR")
        self.text.comes_out(phrase, True)
        self.simple()
        self.text.only_instrumented("NOT ON SIZE ERROR")
        self.text.comes_out(phrase, False)
        self.text.writes(row, target)
        self.text.both(f"END-{verb}")

    def simple(self):
        """A short statement for a phrase."""
        target = self.items.number()
        self.whole(f"MOVE {self.random.randrange(50)} TO {target.text}", [], [target])

    def move_to_count(self):
        self.whole(f"MOVE {self.random.randrange(5)} TO C-1", [], [Item("C-1", "C-1", 2)])

    def compute(self):
        one, target = self.items.pair(self.items.number, self.items.number)
        factor = self.random.randrange(1, 4)
        self.whole(f"COMPUTE {target.text} = {one.text} * {factor} + 1", [one], [target])

    def divide(self):
        one, target = self.items.pair(self.items.number, self.items.number)
        self.changing(f"COMPUTE {target.text} = 100 / {one.text}", [one], [target])

    def string(self):
        source, target = Item("X-1", "X-1", 8), Item("X-2", "X-2", 8)
        if self.random.random() < 0.5:
            source, target = Item("K-3", "K-3", 2), Item("X-3", "X-3", 5)
        pointer = Item("P-1", "P-1", 2)
        if self.random.random() < 0.5:
            line = f"STRING {source.text} DELIMITED BY SPACE INTO {target.text}"
            return self.changing(line, [source], [target])
        self.changing(
            f'STRING {source.text} "-" DELIMITED BY SIZE INTO {target.text} POINTER P-1', [source, pointer], [target, pointer]
        )

    def unstring(self):
        # The first item always gets something, the second only when a delimiter is found.
        source, first, second = Item("X-1", "X-1", 8), Item("X-2", "X-2", 8), Item("X-3", "X-3", 5)
        row = self.start([source])
        self.text.before_change([second])
        self.text.both('UNSTRING X-1 DELIMITED BY "," OR " " INTO X-2 X-3')
        self.text.writes(row, first)
        self.text.after_change(row, [second])

    def inspect_replacing(self):
        item = self.items.text()
        self.changing(f'INSPECT {item.text} REPLACING ALL "a" BY "c"', [item], [item])

    def inspect_tallying(self):
        item, count = self.items.text(), Item("C-1", "C-1", 2)
        self.changing(f'INSPECT {item.text} TALLYING C-1 FOR ALL "b"', [item, count], [count])

    def initialize(self):
        name = self.random.choice(sorted(storage.INITIALIZED))
        _, items = storage.INITIALIZED[name]
        self.whole(f"INITIALIZE {name}", [], [Item(text, text, size) for text, size in items])

    def set_condition(self):
        self.whole(f"SET {self.random.choice(['S-ON', 'S-OFF'])} TO TRUE", [], [Item("S-1", "S-1", 1)])

    def accept(self):
        name, size = self.random.choice([("X-1", 8), ("A-1", 4), ("K-3", 2)])
        self.whole(f"ACCEPT {name}", [], [Item(name, name, size)])

    def write(self):
        source = Item("X-1", "X-1", 8) if self.random.random() < 0.5 else Item("A-R", "A-R", 11)
        self.whole(f"WRITE O-REC FROM {source.text}", [source], [Item("O-REC", "O-REC", 12)])

    def call(self):
        given, changed = Item("X-3", "X-3", 5), self.random.choice([Item("X-2", "X-2", 8), Item("A-1", "A-1", 4)])
        self.changing(f'CALL "orother" USING {given.text} {changed.text}', [given, changed], [changed])
