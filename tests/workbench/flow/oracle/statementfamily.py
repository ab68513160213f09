"""What statements of a kind have in common."""


class StatementFamily:
    """Statements of a kind, each written into both texts. `data` is a DataStatements, which tells what a statement
    reads and writes."""

    def __init__(self, data):
        self.random = data.random
        self.text = data.text
        self.items = data.items
        self.data = data
