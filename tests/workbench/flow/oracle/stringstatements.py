"""STRING, UNSTRING and INSPECT, in both texts."""

from programtext import Item
from statementfamily import StatementFamily


class StringStatements(StatementFamily):
    def __init__(self, data):
        super().__init__(data)
        self.kinds = [
            (2, self.string),
            (1, self.string_overflow),
            (2, self.unstring),
            (1, self.unstring_counting),
            (1, self.unstring_overflow),
            (2, self.inspect_replacing),
            (1, self.inspect_part),
            (1, self.inspect_converting),
            (1, self.inspect_tallying),
        ]

    def string(self):
        source, target = Item("X-1", "X-1", 8), Item("X-2", "X-2", 8)
        if self.random.random() < 0.5:
            source, target = Item("K-3", "K-3", 2), Item("X-3", "X-3", 5)
        pointer = Item("P-1", "P-1", 2)
        if self.random.random() < 0.5:
            line = f"STRING {source.text} DELIMITED BY SPACE INTO {target.text}"
            return self.data.changing(line, [source], [target])
        self.data.changing(
            f'STRING {source.text} "-" DELIMITED BY SIZE INTO {target.text} POINTER P-1', [source, pointer], [target, pointer]
        )

    def unstring(self):
        # The first item always gets something, the second only when a delimiter is found.
        source, first, second = Item("X-1", "X-1", 8), Item("X-2", "X-2", 8), Item("X-3", "X-3", 5)
        row = self.data.start([source])
        self.text.before_change([second])
        self.text.both('UNSTRING X-1 DELIMITED BY "," OR " " INTO X-2 X-3')
        self.text.writes(row, first)
        self.text.after_change(row, [second])

    def inspect_replacing(self):
        item = self.items.text()
        self.data.changing(f'INSPECT {item.text} REPLACING ALL "a" BY "c"', [item], [item])

    def inspect_tallying(self):
        item, count = self.items.text(), Item("C-1", "C-1", 2)
        self.data.changing(f'INSPECT {item.text} TALLYING C-1 FOR ALL "b"', [item, count], [count])

    def string_overflow(self):
        sources = [Item("X-1", "X-1", 8), Item("K-3", "K-3", 2)]
        target, pointer = Item("X-3", "X-3", 5), Item("P-1", "P-1", 2)
        row = self.data.start([*sources, pointer])
        self.text.before_change([target, pointer])
        self.text.both("STRING X-1 DELIMITED BY SPACE K-3 DELIMITED BY SIZE INTO X-3 POINTER P-1")
        phrase = self.text.row
        self.text.both("ON OVERFLOW")
        self.text.after_change(row, [target, pointer])
        self.text.comes_out(phrase, True)
        self.data.simple()
        self.text.both("NOT ON OVERFLOW")
        self.text.after_change(row, [target, pointer])
        self.text.comes_out(phrase, False)
        self.data.simple()
        self.text.both("END-STRING")

    def unstring_overflow(self):
        """With a delimiter too much for its items; the first of them gets something when the pointer is good."""
        targets = [Item("X-2", "X-2", 8), Item("P-1", "P-1", 2)]
        row = self.data.start([Item("X-1", "X-1", 8), targets[1]])
        self.text.before_change(targets)
        self.text.both('UNSTRING X-1 DELIMITED BY "," INTO X-2 POINTER P-1')
        phrase = self.text.row
        self.text.both("ON OVERFLOW")
        self.text.after_change(row, targets)
        self.text.comes_out(phrase, True)
        self.data.simple()
        self.text.both("NOT ON OVERFLOW")
        self.text.writes(row, *targets)
        self.text.comes_out(phrase, False)
        self.data.simple()
        self.text.both("END-UNSTRING")

    def unstring_counting(self):
        source, pointer, tally = Item("X-1", "X-1", 8), Item("P-1", "P-1", 2), Item("C-1", "C-1", 2)
        targets = [Item("X-2", "X-2", 8), Item("A-4", "A-4", 3), Item("A-5", "A-5", 2), Item("X-3", "X-3", 5), pointer, tally]
        self.data.changing(
            'UNSTRING X-1 DELIMITED BY ALL "," OR SPACE INTO X-2 DELIMITER IN A-4 COUNT IN A-5 X-3 POINTER P-1 TALLYING C-1',
            [source, pointer, tally],
            targets,
        )

    def inspect_part(self):
        item = self.items.text()
        what = self.random.choice(
            [
                'LEADING "a" BY "x"',
                'FIRST "b" BY "y" AFTER INITIAL "a"',
                'CHARACTERS BY "z" BEFORE INITIAL ","',
                'ALL "c" BY "a" "9" BY "8"',
            ]
        )
        self.data.changing(f"INSPECT {item.text} REPLACING {what}", [item], [item])

    def inspect_converting(self):
        item = self.items.text()
        self.data.changing(f'INSPECT {item.text} CONVERTING "abc" TO "bca"', [item], [item])
