"""Statements on files with keys, and on a file without a phrase for its end, in both texts."""

from programtext import Item
from statementfamily import StatementFamily

RECORD = Item("R-REC", "R-REC", 8)
KEY = Item("R-K", "R-K", 2)
INDEXED = Item("IX-REC", "IX-REC", 8)
INDEX_KEYS = [Item("IX-K", "IX-K", 2), Item("IX-A", "IX-A", 2)]


class FileStatements(StatementFamily):
    """A key is no operand of the statements that use it without its name, and so no occurrence that could be asked
    about."""

    def __init__(self, data):
        super().__init__(data)
        self.kinds = [
            (1, self.write),
            (1, self.choose_key),
            (1, self.read_by_key),
            (1, self.read_next),
            (2, self.write_by_key),
            (1, self.delete),
            (1, self.read_plainly),
            (1, self.start),
            (1, self.start_indexed),
            (1, self.choose_index_key),
            (2, self.read_indexed),
            (1, self.read_next_indexed),
            (3, self.write_indexed),
            (1, self.delete_indexed),
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

    def start(self):
        row = self.data.start([KEY])
        relation = self.random.choice(["=", "NOT LESS THAN", "GREATER THAN", ">="])
        self.text.both(f"START R KEY {relation} R-K")
        self.data.outcomes(row, "INVALID KEY", "END-START")

    # The indexed file, which has a second key.

    def choose_index_key(self):
        key, source = self.random.choice(INDEX_KEYS), self.items.text()
        self.data.whole(f"MOVE {source.text} TO {key.text}", [source], [key])

    def start_indexed(self):
        key = self.random.choice(INDEX_KEYS)
        row = self.data.start([key])
        self.text.both(f"START IX KEY {self.random.choice(['=', 'NOT <', '>'])} {key.text}")
        self.data.outcomes(row, "INVALID KEY", "END-START")

    def read_indexed(self):
        key = self.random.choice([*INDEX_KEYS, None])
        row = self.data.start([key] if key else [])
        self.text.both("READ IX" + (f" KEY IS {key.text}" if key else ""))
        self.data.outcomes(row, "INVALID KEY", "END-READ", success=[INDEXED])

    def read_next_indexed(self):
        row = self.data.start()
        into = self.random.random() < 0.5
        self.text.both(f"READ IX NEXT RECORD{' INTO X-2' if into else ''}")
        self.data.outcomes(row, "AT END", "END-READ", success=[INDEXED, *([Item("X-2", "X-2", 8)] if into else [])])

    def write_indexed(self):
        source = self.random.choice([Item("X-1", "X-1", 8), Item("D-1", "D-1", 8), None])
        row = self.data.start([source or INDEXED])
        verb = self.random.choice(["WRITE", "WRITE", "REWRITE"])
        self.text.both(f"{verb} IX-REC" + (f" FROM {source.text}" if source else ""))
        self.data.outcomes(row, "INVALID KEY", f"END-{verb}", always=[INDEXED] if source else [])

    def delete_indexed(self):
        row = self.data.start()
        self.text.both("DELETE IX RECORD")
        self.data.outcomes(row, "INVALID KEY", "END-DELETE")
