"""Statements on files with keys, on a file without a phrase for its end, and those of a sort, in both texts."""

from programtext import Item

RECORD = Item("R-REC", "R-REC", 8)
KEY = Item("R-K", "R-K", 2)
SORTED = Item("SF-REC", "SF-REC", 8)


class FileStatements:
    """`data` is a DataStatements, which tells what a statement reads and writes. The key of R is no operand of the
    statements that use it, and so no occurrence that could be asked about."""

    def __init__(self, data):
        self.random = data.random
        self.text = data.text
        self.items = data.items
        self.data = data
        self.kinds = [
            (1, self.write),
            (1, self.choose_key),
            (1, self.read_by_key),
            (1, self.read_next),
            (2, self.write_by_key),
            (1, self.delete),
            (1, self.read_plainly),
        ]

    def write(self):
        source = Item("X-1", "X-1", 8) if self.random.random() < 0.5 else Item("A-R", "A-R", 11)
        self.data.whole(f"WRITE O-REC FROM {source.text}", [source], [Item("O-REC", "O-REC", 12)])

    def choose_key(self):
        self.data.whole(f"MOVE {self.random.randrange(1, 5)} TO R-K", [], [KEY])

    def read_by_key(self):
        row = self.data.start()
        self.text.both("READ R")
        self.data.outcomes(row, "INVALID KEY", "END-READ", success=[RECORD])

    def read_next(self):
        """The key gets the number of the record."""
        row = self.data.start()
        into = self.random.random() < 0.5
        self.text.both(f"READ R NEXT{' INTO X-2' if into else ''}")
        success = [RECORD, KEY, *([Item("X-2", "X-2", 8)] if into else [])]
        self.data.outcomes(row, "AT END", "END-READ", success=success)

    def write_by_key(self):
        """The record gets what stands behind FROM whatever comes of it."""
        row = self.data.start([Item("X-1", "X-1", 8)])
        verb = self.random.choice(["WRITE", "REWRITE"])
        self.text.both(f"{verb} R-REC FROM X-1")
        self.data.outcomes(row, "INVALID KEY", f"END-{verb}", always=[RECORD])

    def delete(self):
        row = self.data.start()
        self.text.both("DELETE R RECORD")
        self.data.outcomes(row, "INVALID KEY", "END-DELETE")

    def read_plainly(self):
        """Without a phrase: a USE procedure takes the end, where there is one."""
        row = self.data.start()
        into = self.random.random() < 0.5
        self.text.both(f"READ F{' INTO X-2' if into else ''}")
        self.text.only_instrumented('IF F-ST = "00"')
        self.text.writes(row, Item("F-REC", "F-REC", 12), *([Item("X-2", "X-2", 8)] if into else []))
        self.text.only_instrumented("END-IF")

    # A sort with procedures of its own.

    def sort(self):
        self.text.runs(self.text.row)
        order = self.random.choice(["ASCENDING", "DESCENDING"])
        self.text.both(f"SORT SF ON {order} KEY SF-K", "    INPUT PROCEDURE SORT-IN", "    OUTPUT PROCEDURE SORT-OUT")

    def releases(self, count):
        for _ in range(count):
            if self.random.random() < 0.5:
                self.data.whole("RELEASE SF-REC FROM X-1", [Item("X-1", "X-1", 8)], [SORTED])
                continue
            number, text = self.items.number(), self.items.text()
            self.data.whole(f"MOVE {number.text} TO SF-K", [number], [Item("SF-K", "SF-K", 4)])
            self.data.whole(f"MOVE {text.text} TO SF-T", [text], [Item("SF-T", "SF-T", 4)])
            self.data.whole("RELEASE SF-REC", [SORTED], [])

    def returns(self, count):
        for _ in range(count):
            row = self.data.start()
            into = self.random.random() < 0.5
            self.text.both(f"RETURN SF{' INTO X-2' if into else ''}")
            success = [SORTED, *([Item("X-2", "X-2", 8)] if into else [])]
            self.data.outcomes(row, "AT END", "END-RETURN", success=success)
