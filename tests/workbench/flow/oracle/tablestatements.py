"""Statements on tables with an index, with a variable count and with computed subscripts, in both texts."""

from programtext import Item
from statementfamily import StatementFamily


class TableStatements(StatementFamily):
    def __init__(self, data):
        super().__init__(data)
        self.kinds = [
            (2, self.computed_subscript),
            (1, self.indexed),
            (1, self.count),
            (2, self.variable_table),
        ]

    def computed_subscript(self):
        """I-1 is at most 3 and the table has 4 occurrences."""
        source, target = Item("T-N (I-1 + 1)", "T-N", 3), Item("T-X (I-2 + 1)", "T-X", 2)
        if self.random.random() < 0.5:
            return self.data.whole(f"MOVE {source.text} TO N-1", [source], [Item("N-1", "N-1", 4)])
        self.data.whole(f"MOVE X-3 TO {target.text}", [Item("X-3", "X-3", 5)], [target])

    def indexed(self):
        self.text.runs(self.text.row)
        self.text.both(f"SET E-I TO {self.random.randrange(1, 4)}")
        if self.random.random() < 0.5:
            self.text.runs(self.text.row)
            self.text.both("SET E-I UP BY 1")
        item, other = Item("E-V (E-I)", "E-V", 3), Item("X-3", "X-3", 5)
        if self.random.random() < 0.5:
            return self.data.whole("MOVE X-3 TO E-V (E-I)", [other], [item])
        self.data.whole("MOVE E-V (E-I) TO X-3", [item], [other])

    def count(self):
        self.data.whole(f"MOVE {self.random.randrange(1, 5)} TO Q-N", [], [Item("Q-N", "Q-N", 1)])

    def variable_table(self):
        """The group has its first occurrence at least."""
        kind = self.random.randrange(4)
        count, element, whole = Item("Q-N", "Q-N", 1), Item("Q-E (I-1)", "Q-E", 3), Item("Q-REC", "Q-REC", 4)
        if kind == 0:
            self.data.whole("MOVE Q-REC TO X-2", [whole], [Item("X-2", "X-2", 8)])
        elif kind == 1:
            row = self.data.start()
            self.text.before_change([Item("Q-REC", "Q-REC", 13)])
            self.text.both('MOVE ALL "2x" TO Q-REC')
            self.text.after_change(row, [Item("Q-REC", "Q-REC", 13)])
            self.text.writes(row, whole)
        elif kind == 2:
            self.data.whole("MOVE X-3 TO Q-E (I-1)", [Item("X-3", "X-3", 5)], [element])
        else:
            self.data.whole("MOVE Q-E (I-1) TO A-4", [element], [Item("A-4", "A-4", 3)])
