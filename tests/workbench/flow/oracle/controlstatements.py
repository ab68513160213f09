"""Statements that decide where control goes, in both texts.

A loop's test, and the WHENs of an EVALUATE, are told to the runtime by writing them as IFs in the instrumented text.
"""

import storage
from programtext import Item


# Paragraphs that a program may enter, and turns of loops that it may take, before it is filled up again: the main program
# at each of its sentences, a called one at each call.
FUEL = 40
FUEL_OF_CALLED = 12


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
        self.exits = {}  # paragraphs with nothing but an EXIT, by those before them
        self.sorting = None  # SortStatements, where a sort can stand
        self.own_exit = None  # that of the paragraph being written
        self.is_first = True  # the paragraph

    # Statements one after another.

    def block(self, most=3):
        self.depth += 1
        for _ in range(self.random.randrange(1, most + 1)):
            self.statement()
        self.depth -= 1

    def statement(self):
        if self.depth > 3 or self.random.random() < 0.55:
            return self.data.any()
        kinds = [
            (6, self.if_statement),
            (3, self.evaluate),
            (5, self.perform),
            (3, self.perform_inline),
            (1, self.evaluate_also),
            (1, self.evaluate_condition),
            (1, self.perform_varying_after),
            (2, self.search),
            (1, self.search_two),
            (1, self.search_all),
            (0 if self.items.is_called else 2, self.read),
            *([(1, self.sorting.between_files), (1, self.sorting.table)] if self.sorting else []),
            (1, self.go_to),
            (1, self.go_to_depending),
            (1, self.leave),
        ]
        weights = [weight for weight, _ in kinds]
        self.random.choices([kind for _, kind in kinds], weights)[0]()

    @property
    def fuel(self):
        return FUEL_OF_CALLED if self.items.is_called else FUEL

    def fill_up(self):
        self.data.whole("MOVE 0 TO FUEL", [], [Item("FUEL", "FUEL", 4)])

    def burn_fuel(self, leave):
        """Every program ends: each paragraph and each turn of a loop takes some fuel, and without any it is left."""
        fuel = Item("FUEL", "FUEL", 4)
        self.data.whole("ADD 1 TO FUEL", [fuel], [fuel])
        row = self.text.row
        self.text.runs(row)
        self.text.reads(row, fuel)
        self.text.both(f"IF FUEL > {self.fuel}")
        self.text.comes_out(row, True)
        self.text.runs(self.text.row)
        self.exit_from(leave)
        self.text.only_instrumented("ELSE")
        self.text.comes_out(row, False)
        self.text.both("END-IF")

    def condition(self):
        kind = self.random.randrange(9)
        if kind == 5:
            item = self.items.number()
            return Condition(f"{item.text} = 3 OR 5 OR > 70", [item])
        if kind == 6:
            item = self.items.text()
            return Condition(f"{item.text} {self.random.choice(['NUMERIC', 'NOT ALPHABETIC'])}", [item])
        if kind == 7:
            one, other = self.items.pair(self.items.number, self.items.number)
            return Condition(f"NOT ({one.text} > {other.text} OR = 7)", [one, other])
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
        wanted = self.random.choices(["TRUE", "FALSE", None], [4, 2, 5])[0]
        conditions = [self.condition() for _ in range(self.random.randrange(1, 4))]
        self.data.keep_subscripts(subject, *(item for condition in conditions for item in condition.reads))
        self.text.runs(self.text.row)
        self.text.only_plain(f"EVALUATE {wanted or subject.text}")
        for condition in conditions:
            if wanted is None:
                numbers = [str(self.random.randrange(20)) for _ in range(self.random.randrange(1, 3))]
                condition = Condition(" OR ".join(f"{subject.text} = {number}" for number in numbers), [subject])
            self.read_condition(self.text.row, condition)
            row = self.text.row
            for when in [condition.text] if wanted else numbers:
                self.text.only_plain(f"WHEN {when}")
            self.text.only_instrumented(f"IF NOT ({condition.text})" if wanted == "FALSE" else f"IF {condition.text}")
            self.text.comes_out(row, True)
            self.block()
            self.text.only_instrumented("ELSE")
            self.text.comes_out(row, False)
        if self.random.random() < 0.6:
            self.text.only_plain("WHEN OTHER")
            self.block()
        self.text.only_plain("END-EVALUATE")
        self.text.only_instrumented(*["END-IF"] * len(conditions))

    def evaluate_condition(self):
        """Each WHEN asks for the condition once more."""
        condition = self.condition()
        self.data.keep_subscripts(*condition.reads)
        self.text.runs(self.text.row)
        self.text.only_plain(f"EVALUATE {condition.text}")
        for value, line in (("TRUE", f"IF {condition.text}"), ("FALSE", f"IF NOT ({condition.text})")):
            row = self.text.row
            self.read_condition(row, condition)
            self.text.only_plain(f"WHEN {value}")
            self.text.only_instrumented(line)
            self.text.comes_out(row, True)
            self.block()
            self.text.only_instrumented("ELSE")
            self.text.comes_out(row, False)
        self.text.only_plain("END-EVALUATE")
        self.text.only_instrumented("END-IF", "END-IF")

    def evaluate_also(self):
        one, other = self.items.pair(self.items.number, self.items.number)
        self.data.keep_subscripts(one, other)
        low = self.random.randrange(40)
        whens = [
            (f"{low} THRU {low + 30} ALSO ANY", f"{one.text} >= {low} AND {one.text} <= {low + 30}", [one]),
            (f"ANY ALSO NOT {low}", f"NOT {other.text} = {low}", [other]),
            (f"NOT 1 THRU 9 ALSO {low}", f"NOT ({one.text} >= 1 AND {one.text} <= 9) AND {other.text} = {low}", [one, other]),
        ]
        self.text.runs(self.text.row)
        self.text.only_plain(f"EVALUATE {one.text} ALSO {other.text}")
        chosen = self.random.sample(whens, 2)
        for when, condition, reads in chosen:
            row = self.text.row
            self.read_condition(row, Condition(condition, reads))
            self.text.only_plain(f"WHEN {when}")
            self.text.only_instrumented(f"IF {condition}")
            self.text.comes_out(row, True)
            self.data.simple()
            self.text.only_instrumented("ELSE")
            self.text.comes_out(row, False)
        self.text.only_plain("WHEN OTHER")
        self.data.simple()
        self.text.only_plain("END-EVALUATE")
        self.text.only_instrumented(*["END-IF"] * len(chosen))

    def search_two(self):
        """Two conditions, and an index that is set forward as well."""
        item = self.items.number()
        self.data.keep_subscripts(item)
        self.text.both("SET E-I TO 1")
        self.data.whole("MOVE 1 TO C-2", [], [Item("C-2", "C-2", 2)])
        row = self.text.row
        self.text.runs(row)
        self.text.before_change([Item("C-2", "C-2", 2)])
        self.text.both("SEARCH E-T VARYING C-2")
        end = self.text.row
        self.text.both("AT END")
        self.text.after_change(row, [Item("C-2", "C-2", 2)])
        self.text.comes_out(end, True)
        self.data.simple()
        first = self.text.row
        self.text.both(f"WHEN E-K (E-I) = {item.text}")
        self.text.after_change(row, [Item("C-2", "C-2", 2)])
        self.text.comes_out(end, False)
        self.text.reads(first, Item("E-K (E-I)", "E-K", 2), Item(item.text, item.name, item.size))
        self.text.comes_out(first, True)
        self.data.simple()
        second = self.text.row
        self.text.both('WHEN E-V (E-I) > "f"')
        self.text.after_change(row, [Item("C-2", "C-2", 2)])
        self.text.comes_out(end, False)
        self.text.comes_out(first, False)
        self.text.reads(second, Item("E-V (E-I)", "E-V", 3))
        self.text.comes_out(second, True)
        self.data.move_to_count()
        self.text.both("END-SEARCH")

    def search_all(self):
        item, key = self.items.number(), Item("M-K (M-I)", "M-K", 2)
        self.data.keep_subscripts(item)
        self.text.runs(self.text.row)
        self.text.both("SEARCH ALL M-T")
        end = self.text.row
        self.text.both("AT END")
        self.text.comes_out(end, True)
        self.data.move_to_count()
        when = self.text.row
        self.text.both(f"WHEN M-K (M-I) = {item.text}")
        self.text.comes_out(end, False)
        self.text.reads(when, key, Item(item.text, item.name, item.size))
        self.text.comes_out(when, True)
        self.data.whole("MOVE M-V (M-I) TO X-3", [Item("M-V (M-I)", "M-V", 2)], [Item("X-3", "X-3", 5)])
        self.text.both("END-SEARCH")

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
        what = self.range()
        if what is None:
            return self.data.any()
        kind = self.random.randrange(6)
        if kind < 3:
            self.text.runs(self.text.row)
            self.text.both(f"PERFORM {what}")
            return self.stay_in_loops()
        self.loop(kind, what)

    def range(self):
        """One or several of the targets, when there are any. An EXIT paragraph, which takes no fuel, is never the first:
        it could be performed for ever."""
        entries = [name for name in self.targets if name not in self.exits.values()]
        if not entries:
            return None
        entry = self.random.choice(entries)
        if entry in self.exits and self.random.random() < 0.7:
            return f"{entry} THRU {self.exits[entry]}"
        first = self.targets.index(entry)
        last = min(first + self.random.choice([0, 0, 1, 2]), len(self.targets) - 1)
        return entry if first == last else f"{entry} THRU {self.targets[last]}"

    def stay_in_loops(self, *switches):
        """Behind a PERFORM of paragraphs. By GO TO, these can have come to the loops around it a second time, and have
        left them; here they still run."""
        self.text.only_instrumented(*(f"MOVE 0 TO {switch}" for switch in (*self.loops, *switches)))

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
            self.text.both(f"PERFORM {what} {count} TIMES")
            return self.stay_in_loops()
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
        self.burn_fuel("EXIT PERFORM")
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
        condition = Condition(f"{condition.text} OR FUEL > {self.fuel}", [*condition.reads, Item("FUEL", "FUEL", 4)])
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
            self.stay_in_loops(switch)
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
        until = Condition(f"C-1 > 4 OR FUEL > {self.fuel}", [counter, Item("FUEL", "FUEL", 4)])
        self.text.only_plain(f"    UNTIL {until.text}")
        switch = self.text.new_switch()
        self.text.only_instrumented(f"MOVE {first} TO C-1", f"MOVE 0 TO {switch}")
        self.text.writes(row, counter)
        self.text.only_instrumented(f"PERFORM UNTIL {switch} = 1")
        self.test(test, until, switch)
        self.run_body(what, switch)
        self.text.only_instrumented(f"IF {switch} = 0")
        self.text.reads(row, counter, *([step] if step else []))
        self.text.only_instrumented(f"ADD {by} TO C-1")
        self.text.writes(row, counter)
        self.text.only_instrumented("END-IF", "END-IF", "END-PERFORM")
        if not what:
            self.text.only_plain("END-PERFORM")

    def perform_varying_after(self):
        """Out of line, over two counters."""
        what = self.range()
        if what is None:
            return self.data.any()
        outer, inner, fuel = Item("C-1", "C-1", 2), Item("C-2", "C-2", 2), Item("FUEL", "FUEL", 4)
        row = self.text.row
        self.text.runs(row)
        self.text.only_plain(f"PERFORM {what} VARYING C-1 FROM 1 BY 1")
        outer_row = self.text.row
        outer_test = Condition(f"C-1 > 2 OR FUEL > {self.fuel}", [outer, fuel])
        self.text.only_plain(f"    UNTIL {outer_test.text}", "    AFTER C-2 FROM 1 BY 2")
        inner_row = self.text.row
        inner_test = Condition(f"C-2 > 3 OR FUEL > {self.fuel}", [inner, fuel])
        self.text.only_plain(f"    UNTIL {inner_test.text}")
        outer_switch, inner_switch = self.text.new_switch(), self.text.new_switch()
        self.text.only_instrumented("MOVE 1 TO C-1", "MOVE 1 TO C-2", f"MOVE 0 TO {outer_switch}")
        self.text.writes(row, outer, inner)
        self.text.only_instrumented(f"PERFORM UNTIL {outer_switch} = 1")
        self.test(outer_row, outer_test, outer_switch)
        self.text.only_instrumented(f"MOVE 0 TO {inner_switch}", f"PERFORM UNTIL {inner_switch} = 1")
        self.test(inner_row, inner_test, inner_switch)
        self.text.only_instrumented(f"PERFORM {what}")
        self.stay_in_loops(outer_switch, inner_switch)
        self.text.reads(row, inner)
        self.text.only_instrumented("ADD 2 TO C-2")
        self.text.writes(row, inner)
        self.text.only_instrumented("END-IF", "END-PERFORM")
        self.text.reads(row, outer)
        self.text.only_instrumented("ADD 1 TO C-1", "MOVE 1 TO C-2")
        self.text.writes(row, outer, inner)
        self.text.only_instrumented("END-IF", "END-PERFORM")

    # Jumps.

    def guarded(self, line, limit=40):
        """Behind a condition, so that what follows can be reached."""
        item = self.items.number()
        self.data.keep_subscripts(item)
        condition = Condition(f"{item.text} > {limit}", [item])
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
        if not self.jumps or self.stays():
            return self.data.any()
        self.guarded(lambda: self.text.both(f"GO TO {self.random.choice(self.jumps)}"))

    def go_to_depending(self):
        if len(self.jumps) < 2 or self.stays():
            return self.data.any()
        row = self.text.row
        self.text.runs(row)
        self.text.reads(row, Item("S-2", "S-2", 1))
        names = " ".join(self.random.sample(self.jumps, 2))
        self.text.both(f"GO TO {names} DEPENDING ON S-2")

    def stays(self):
        """The paragraph that performs the others is seldom left before its end."""
        return self.is_first and self.random.random() < 0.8

    def leave(self):
        kinds = ["EXIT PERFORM", "EXIT PERFORM CYCLE"] * 3 if self.loops else []
        if self.own_exit and not self.is_first:
            kinds += [f"GO TO {self.own_exit}"] * 4
        if not self.stays():
            kinds += ["EXIT PARAGRAPH", "EXIT SECTION"] * 2
            kinds += ["GOBACK", "EXIT PROGRAM" if self.items.is_called else "STOP RUN"]
        if not kinds:
            return self.data.any()
        kind = self.random.choice(kinds)
        self.guarded(lambda: self.exit_from(kind), limit=90 if kind in ("GOBACK", "STOP RUN") else 40)

    def exit_from(self, kind):
        if not kind.startswith("EXIT PERFORM"):
            return self.text.both(kind)
        self.text.only_plain(kind)
        if kind == "EXIT PERFORM":
            self.text.only_instrumented(f"MOVE 1 TO {self.loops[-1]}")
        self.text.only_instrumented("EXIT PERFORM")
