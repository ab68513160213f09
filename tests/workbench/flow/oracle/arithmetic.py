"""Statements that compute, in both texts."""

from programtext import Item
from statementfamily import StatementFamily


class Arithmetic(StatementFamily):
    def __init__(self, data):
        super().__init__(data)
        self.kinds = [
            (4, self.add),
            (1, self.add_corresponding),
            (1, self.giving),
            (1, self.multiply),
            (3, self.compute),
            (1, self.compute_function),
            (2, self.divide),
            (1, self.remainder),
            (1, self.size_error),
            (1, self.add_to_several),
        ]

    def add(self):
        source, target = self.items.pair(self.items.number, self.items.number)
        verb, word = self.random.choice([("ADD", "TO"), ("SUBTRACT", "FROM")])
        line = f"{verb} {source.text} {word} {target.text}"
        if self.random.random() < 0.6:
            return self.data.whole(line, [source, target], [target])
        self.data.keep_subscripts(source, target)
        row = self.data.start([source, target])
        self.text.both(line)
        phrase = self.text.row
        self.text.both("ON SIZE ERROR")
        self.text.comes_out(phrase, True)
        self.data.simple()
        has_success = self.random.random() < 0.5
        (self.text.both if has_success else self.text.only_instrumented)("NOT ON SIZE ERROR")
        self.text.comes_out(phrase, False)
        self.text.writes(row, target)
        if has_success:
            self.data.simple()
        self.text.both(f"END-{verb}")

    def compute(self):
        one, target = self.items.pair(self.items.number, self.items.number)
        # Where a text holds several programs, GnuCOBOL 3.1 can lose the literals in their computations.
        factor = Item("FACTOR", "FACTOR", 3)
        self.data.whole(f"COMPUTE {target.text} = {one.text} * FACTOR + FACTOR", [one, factor], [target])

    def divide(self):
        one, target = self.items.pair(self.items.number, self.items.number)
        factor = Item("FACTOR", "FACTOR", 3)
        self.data.changing(f"COMPUTE {target.text} = FACTOR / {one.text}", [one, factor], [target])

    def add_corresponding(self):
        target = Item("K-2 OF D-2", "K-2", 3)
        self.data.whole("ADD CORRESPONDING D-1 TO D-2", [Item("K-2 OF D-1", "K-2", 3), target], [target])

    def giving(self):
        one, target = self.items.pair(self.items.number, self.items.number)
        factor = Item("FACTOR", "FACTOR", 3)
        line = self.random.choice(
            [f"ADD {one.text} FACTOR", f"SUBTRACT FACTOR FROM {one.text}", f"MULTIPLY {one.text} BY FACTOR"]
        )
        self.data.whole(f"{line} GIVING {target.text} ROUNDED", [one, factor], [target])

    def multiply(self):
        one, target = self.items.pair(self.items.number, self.items.number)
        self.data.whole(f"MULTIPLY {one.text} BY {target.text}", [one, target], [target])

    def compute_function(self):
        one, other = self.items.pair(self.items.number, self.items.number)
        self.data.whole(f"COMPUTE N-4 = FUNCTION MAX ({one.text} {other.text})", [one, other], [Item("N-4", "N-4", 2)])

    def remainder(self):
        one = Item("FACTOR", "FACTOR", 3)
        other = self.items.number()
        if other.name in ("N-1", "A-3"):
            return self.compute()
        targets = [Item("N-1", "N-1", 4), Item("A-3", "A-3", 3)]
        self.data.changing(f"DIVIDE {other.text} INTO FACTOR GIVING N-1 REMAINDER A-3", [other, one], targets)

    def size_error(self):
        """The item keeps its value when the result does not fit."""
        one, target = self.items.pair(self.items.number, self.items.number)
        factor = Item("FACTOR", "FACTOR", 3)
        self.data.keep_subscripts(one, target)
        row = self.data.start([one, factor], [target])
        verb = self.random.choice(["COMPUTE", "DIVIDE"])
        line = f"{target.text} = {one.text} * FACTOR" if verb == "COMPUTE" else f"FACTOR BY {one.text} GIVING {target.text}"
        self.text.both(f"{verb} {line}")
        self.data.outcomes(row, "ON SIZE ERROR", f"END-{verb}", success=[target])

    def add_to_several(self):
        """When one result does not fit, the other item has got its own all the same."""
        targets = [Item("N-3", "N-3", 3), Item("A-5", "A-5", 2)]
        source = self.items.number()
        if source.name in ("N-3", "A-5"):
            return self.add()
        self.data.keep_subscripts(source)
        row = self.data.start([source, *targets])
        self.text.before_change(targets)
        self.text.both(f"ADD {source.text} TO N-3 A-5")
        phrase = self.text.row
        self.text.both("ON SIZE ERROR")
        self.text.after_change(row, targets)
        self.text.comes_out(phrase, True)
        self.data.simple()
        self.text.both("NOT ON SIZE ERROR")
        self.text.writes(row, *targets)
        self.text.comes_out(phrase, False)
        self.data.simple()
        self.text.both("END-ADD")
