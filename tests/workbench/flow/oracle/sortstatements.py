"""SORT and MERGE, between files, with procedures of their own and of a table, in both texts."""

from programtext import Item
from statementfamily import StatementFamily

SORTED = Item("SF-REC", "SF-REC", 8)
# Of the files that nothing else opens; G3 is written.
RECORDS = [Item(name, name, 8) for name in ("G1-REC", "G2-REC", "G3-REC")]


class SortStatements(StatementFamily):
    def _order(self):
        return f"ON {self.random.choice(['ASCENDING', 'DESCENDING'])} KEY"

    def _using(self):
        """The verb, and the files that it takes records of."""
        if self.random.random() < 0.5:
            return "MERGE", "    USING G1 G2"
        return "SORT", f"    USING {self.random.choice(['G1', 'G2', 'G1 G2'])}"

    def between_files(self):
        """The records pass through the areas of all these files. Not for the procedures of a sort."""
        verb, using = self._using()
        row = self.data.start()
        areas = [*RECORDS, SORTED]
        self.text.before_change(areas)
        self.text.both(f"{verb} SF {self._order()} SF-K", using, "    GIVING G3")
        self.text.after_change(row, areas)

    def table(self):
        table = Item("E-REC", "E-T", 25)
        self.data.whole(f"SORT E-T {self._order()} E-K", [table], [table])

    def with_procedures(self):
        self.text.runs(self.text.row)
        verb, records_of = "SORT", "    INPUT PROCEDURE SORT-IN"
        if self.random.random() < 0.4:
            verb, records_of = self._using()
        to = "    OUTPUT PROCEDURE SORT-OUT"
        if verb == "SORT" and self.random.random() < 0.3:
            to = "    GIVING G3"
        self.text.both(f"{verb} SF {self._order()} SF-K", records_of, to)

    # Within the procedures.

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
