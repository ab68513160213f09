"""Statements that decide where control goes, in both texts.

A loop's test, and the WHENs of an EVALUATE, are told to the runtime by writing them as IFs in the instrumented text.
"""

import storage
from programtext import Item


FUEL = 120  # paragraphs that a run may enter, and turns of inline loops


class Condition:
    def __init__(self, text, reads):
        self.text = text
        self.reads = reads


class ControlStatements:
    def __init__(self, random, text, items, data):
        self.random = random
        self.text = text
        self.items = items
        self.data = data
        self.depth = 0
        self.loops = []  # switches of the inline loops around
        self.targets = []  # labels that a PERFORM may name here, in their order
        self.jumps = []  # labels that GO TO may name
        self.may_leave_paragraph = True

    # Statements one after another.

    def block(self, most=3):
        self.depth += 1
        for _ in range(self.random.randrange(1, most + 1)):
            self.statement()
        self.depth -= 1

    def statement(self):
        if self.depth > 4 or self.random.random() < 0.55:
            return self.data.any()
        kinds = [
            (6, self.if_statement),
            (3, self.evaluate),
            (5, self.perform),
            (3, self.perform_inline),
            (2, self.search),
            (2, self.read),
            (1, self.go_to),
            (1, self.go_to_depending),
            (1, self.leave),
        ]
        weights = [weight for weight, _ in kinds]
        self.random.choices([kind for _, kind in kinds], weights)[0]()

    def burn_fuel(self):
        """Every program ends: each paragraph and each turn of an inline loop takes some of what it starts with."""
        fuel = Item("FUEL", "FUEL", 4)
        self.data.whole("ADD 1 TO FUEL", [fuel], [fuel])
        row = self.text.row
        self.text.runs(row)
        self.text.reads(row, fuel)
        self.text.both(f"IF FUEL > {FUEL}")
        self.text.comes_out(row, True)
        self.text.runs(self.text.row)
        self.text.both("STOP RUN")
        self.text.only_instrumented("ELSE")
        self.text.comes_out(row, False)
        self.text.both("END-IF")

    def condition(self):
        kind = self.random.randrange(5)
        if kind == 0:
            name = self.random.choice(["S-ON", "S-OFF", "S-LOW"])
            parent = "S-2" if name == "S-LOW" else "S-1"
            return Condition(name, [Item(parent, name, 1)])
        if kind == 1:
            item = self.items.text()
            return Condition(f"{item.text} > \"b\"", [item])
        if kind == 2:
            one, other = self.items.pair(self.items.number, self.items.number)
            joint = self.random.choice(["AND", "OR"])
            return Condition(f"{one.text} > 9 {joint} {other.text} < 50", [one, other])
        item = self.items.number()
        return Condition(f"{item.text} {self.random.choice(['<', '>', '='])} {self.random.randrange(60)}", [item])

    def read_condition(self, row, condition):
        subscripts = {name for item in condition.reads for name in storage.subscripts_of(item)}
        self.text.reads(row, *(Item(name, name, 1) for name in sorted(subscripts)), *condition.reads)

    # Branches.

    def if_statement(self):
        condition = self.condition()
        self.data.keep_subscripts(*condition.reads)
        row = self.text.row
        self.text.runs(row)
        self.read_condition(row, condition)
        self.text.both(f"IF {condition.text}")
        self.text.comes_out(row, True)
        self.branch()
        if self.random.random() < 0.5:
            self.text.both("ELSE")
            self.text.comes_out(row, False)
            self.branch()
        else:
            self.text.only_instrumented("ELSE")
            self.text.comes_out(row, False)
        self.text.both("END-IF")

    def branch(self):
        if self.random.random() < 0.08:
            self.text.runs(self.text.row)
            self.text.both("NEXT SENTENCE")
        else:
            self.block()

    def evaluate(self):
        subject = self.items.number()
        is_true = self.random.random() < 0.4
        conditions = [self.condition() for _ in range(self.random.randrange(1, 4))]
        self.data.keep_subscripts(subject, *(item for condition in conditions for item in condition.reads))
        self.text.runs(self.text.row)
        self.text.only_plain("EVALUATE TRUE" if is_true else f"EVALUATE {subject.text}")
        for condition in conditions:
            if not is_true:
                numbers = [str(self.random.randrange(20)) for _ in range(self.random.randrange(1, 3))]
                condition = Condition(" OR ".join(f"{subject.text} = {number}" for number in numbers), [subject])
            self.read_condition(self.text.row, condition)
            row = self.text.row
            for when in [condition.text] if is_true else numbers:
                self.text.only_plain(f"WHEN {when}")
            self.text.only_instrumented(f"IF {condition.text}")
            self.text.comes_out(row, True)
            self.block()
            self.text.only_instrumented("ELSE")
            self.text.comes_out(row, False)
        if self.random.random() < 0.6:
            self.text.only_plain("WHEN OTHER")
            self.block()
        self.text.only_plain("END-EVALUATE")
        self.text.only_instrumented(*["END-IF"] * len(conditions))

    def search(self):
        item, key = self.items.number(), Item("E-K (E-I)", "E-K", 2, numeric=True)
        self.data.keep_subscripts(item)
        self.text.both("SET E-I TO 1")
        self.text.runs(self.text.row)
        self.text.both("SEARCH E-T")
        end = self.text.row
        self.text.both("AT END")
        self.text.comes_out(end, True)
        self.data.move_to_count()
        when = self.text.row
        compared = Item(item.text, item.name, item.size)
        self.text.both(f"WHEN E-K (E-I) = {item.text}")
        self.text.comes_out(end, False)
        self.text.reads(when, key, compared)
        self.text.comes_out(when, True)
        self.data.simple()
        self.text.both("END-SEARCH")

    def read(self):
        record = Item("F-REC", "F-REC", 12)
        into = Item("X-2", "X-2", 8) if self.random.random() < 0.4 else None
        row = self.text.row
        self.text.runs(row)
        self.text.both("READ F" + (f" INTO {into.text}" if into else ""))
        end = self.text.row
        self.text.both("AT END")
        self.text.comes_out(end, True)
        self.data.simple()
        self.text.both("NOT AT END")
        self.text.comes_out(end, False)
        self.text.writes(row, record)
        if into:
            self.text.writes(row, into)
        self.data.simple()
        self.text.both("END-READ")

    # Loops.

    def perform(self):
        if not self.targets:
            return self.data.any()
        first = self.random.randrange(len(self.targets))
        last = min(first + self.random.choice([0, 0, 1, 2]), len(self.targets) - 1)
        what = self.targets[first] if first == last else f"{self.targets[first]} THRU {self.targets[last]}"
        kind = self.random.randrange(6)
        if kind < 3:
            self.text.runs(self.text.row)
            return self.text.both(f"PERFORM {what}")
        self.loop(kind, what)

    def perform_inline(self):
        self.loop(self.random.randrange(3, 6), None)

    def loop(self, kind, what):
        if kind == 3:
            self.times(what)
        elif kind == 4:
            self.until(what)
        else:
            self.varying(what)

    def times(self, what):
        row = self.text.row
        self.text.runs(row)
        count = self.random.choice(["2", "3", "I-1"])
        if count == "I-1":
            self.text.reads(row, Item("I-1", "I-1", 1))
        if what:
            return self.text.both(f"PERFORM {what} {count} TIMES")
        switch = self.text.new_switch()
        self.text.only_instrumented(f"MOVE 0 TO {switch}")
        self.text.both(f"PERFORM {count} TIMES")
        self.body(switch)
        self.text.only_instrumented(f"IF {switch} = 1 EXIT PERFORM END-IF")
        self.text.both("END-PERFORM")

    def body(self, switch):
        """The statements of an inline loop, within a PERFORM of their own that EXIT PERFORM leaves."""
        self.text.only_instrumented("PERFORM 1 TIMES")
        self.loops.append(switch)
        self.burn_fuel()
        self.block()
        self.loops.pop()
        self.text.only_instrumented("END-PERFORM")

    def until(self, what):
        condition = self.condition()
        self.data.keep_subscripts(*condition.reads)
        after = self.random.random() < 0.4
        self.text.runs(self.text.row)
        # Subscripts must stay within their bounds while the loop runs, and a count ends it.
        condition.reads = [item for item in condition.reads if not storage.subscripts_of(item)] or [Item("C-1", "C-1", 2)]
        if any(name in condition.text for name in ("I-1", "I-2")):
            condition.text = "C-1 > 4"
            condition.reads = [Item("C-1", "C-1", 2)]
        self.text.only_plain(f"PERFORM {what or ''}" + (" WITH TEST AFTER" if after else ""))
        row = self.text.row
        self.text.only_plain(f"    UNTIL {condition.text}")
        switch = self.text.new_switch()
        self.text.only_instrumented(f"MOVE 0 TO {switch}", f"PERFORM UNTIL {switch} = 1")
        if after:
            self.run_body(what, switch)
            self.text.only_instrumented(f"IF {switch} = 0")
            self.test(row, condition, switch)
            self.text.only_instrumented("END-IF", "END-IF", "END-PERFORM")
        else:
            self.test(row, condition, switch)
            self.run_body(what, switch)
            self.text.only_instrumented("END-IF", "END-PERFORM")
        if not what:
            self.text.only_plain("END-PERFORM")

    def test(self, row, condition, switch):
        """Leaves an IF open, in whose ELSE branch the loop goes on."""
        self.read_condition(row, condition)
        self.text.only_instrumented(f"IF {condition.text}")
        self.text.comes_out(row, True)
        self.text.only_instrumented(f"MOVE 1 TO {switch}", "ELSE")
        self.text.comes_out(row, False)

    def run_body(self, what, switch):
        if what:
            self.text.only_instrumented(f"PERFORM {what}")
        else:
            self.body(switch)

    def varying(self, what):
        counter = Item("C-1", "C-1", 2)
        start = self.random.choice([Item("I-2", "I-2", 1), None])
        step = self.random.choice([Item("I-1", "I-1", 1), None])
        self.data.bound("I-1")
        row = self.text.row
        self.text.runs(row)
        if start:
            self.text.reads(row, start)
        first, by = start.text if start else "1", step.text if step else "1"
        self.text.only_plain(f"PERFORM {what or ''} VARYING C-1 FROM {first} BY {by}")
        test = self.text.row
        self.text.only_plain("    UNTIL C-1 > 4")
        switch = self.text.new_switch()
        self.text.only_instrumented(f"MOVE {first} TO C-1", f"MOVE 0 TO {switch}")
        self.text.writes(row, counter)
        self.text.only_instrumented(f"PERFORM UNTIL {switch} = 1")
        self.test(test, Condition("C-1 > 4", [counter]), switch)
        self.run_body(what, switch)
        self.text.only_instrumented(f"IF {switch} = 0")
        self.text.reads(row, counter, *([step] if step else []))
        self.text.only_instrumented(f"ADD {by} TO C-1")
        self.text.writes(row, counter)
        self.text.only_instrumented("END-IF", "END-IF", "END-PERFORM")
        if not what:
            self.text.only_plain("END-PERFORM")

    # Jumps.

    def guarded(self, line):
        """Behind a condition, so that what follows can be reached."""
        item = self.items.number()
        self.data.keep_subscripts(item)
        condition = Condition(f"{item.text} > 30", [item])
        row = self.text.row
        self.text.runs(row)
        self.read_condition(row, condition)
        self.text.both(f"IF {condition.text}")
        self.text.comes_out(row, True)
        self.text.runs(self.text.row)
        line()
        self.text.only_instrumented("ELSE")
        self.text.comes_out(row, False)
        self.text.both("END-IF")

    def go_to(self):
        if self.jumps:
            self.guarded(lambda: self.text.both(f"GO TO {self.random.choice(self.jumps)}"))

    def go_to_depending(self):
        if len(self.jumps) < 2:
            return
        row = self.text.row
        self.text.runs(row)
        self.text.reads(row, Item("S-2", "S-2", 1))
        names = " ".join(self.random.sample(self.jumps, 2))
        self.text.both(f"GO TO {names} DEPENDING ON S-2")

    def leave(self):
        kinds = ["EXIT PARAGRAPH", "EXIT SECTION", "GOBACK", "STOP RUN"]
        if self.loops:
            kinds += ["EXIT PERFORM", "EXIT PERFORM CYCLE"] * 3
        kind = self.random.choice(kinds)
        self.guarded(lambda: self.exit_from(kind))

    def exit_from(self, kind):
        if not kind.startswith("EXIT PERFORM"):
            return self.text.both(kind)
        self.text.only_plain(kind)
        if kind == "EXIT PERFORM":
            self.text.only_instrumented(f"MOVE 1 TO {self.loops[-1]}")
        self.text.only_instrumented("EXIT PERFORM")
