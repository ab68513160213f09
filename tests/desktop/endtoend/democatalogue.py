"""A workspace over a copy of the demo sources with a small catalogue, made and asked by the command line."""

import json
import os
import shutil
import subprocess

FUNCTIONS = [
    ("Rate a policy", "From the application to the premium."),
    ("Bill a policy", "Instalments, late payers and lapses."),
    ("Settle", "Claims, refunds and commissions."),
]
RULE_SETS = [
    ("Discounts", "Rate a policy"),
    ("Late payment", "Bill a policy"),
    ("Tax", "Bill a policy"),
    ("Claims", "Settle"),
    ("Commission", "Settle"),
]
RULES = [
    ("Discounts are capped", "Discounts", "pbrate01.cbl:567-574", "All discounts together stop at 25 per cent."),
    ("Senior discount", "Discounts", "pbrate01.cbl:501-511", "From 65: 8 per cent for clean drivers."),
    ("Grace days", "Late payment", "pbbill01.cbl:462-478", "By payment plan, state and age."),
    ("Lapse after grace", "Late payment", "pbbill01.cbl:437-460", "Past the grace days the policy lapses."),
    ("Late fee", "Late payment", "pbfee01.cbl:50-70", "5 per cent of what is past due; state caps."),
    ("Senior relief", "Tax", "pbtax01.cbl:80-89", "Lower rate by state and age."),
    ("Deductible", "Claims", "pbclm01.cbl:285-303", "Flat, or 2 per cent of the dwelling."),
    ("Commission tiers", "Commission", "pbcomm01.cbl:244-264", "Line rate plus tier plus contract level."),
]


class DemoCatalogue:
    def __init__(self, program, samples, folder, environment):
        self._program = program
        self._environment = dict(environment, LC_ALL="C.UTF-8")
        self.folder = folder
        shutil.copytree(samples, folder)

    def run(self, *words):
        done = subprocess.run([self._program, *words], cwd=self.folder, env=self._environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        if done.returncode != 0:
            raise AssertionError(f"qmrules {' '.join(words)} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
        return done.stdout

    def fill(self):
        self.run("init", ".", "--project", "Policy Billing")
        self.run("scan", "--copybooks", "copybooks")
        for name, description in FUNCTIONS:
            self.run("function", "create", name, "--description", description)
        for name, function in RULE_SETS:
            self.run("ruleset", "create", name, "--function", function)
        for name, rule_set, segment, description in RULES:
            self.run("rule", "create", name, "--ruleset", rule_set, "--segment", os.path.join("cobol", segment),
                     "--description", description)

    def value(self, path, attribute):
        return json.loads(self.run("show", path, "--json"))["attributes"][attribute]["value"]

    def tree(self):
        return json.loads(self.run("list", "--json"))

    def rules_of(self, rule_set):
        """The names of its rules, in their sequence."""
        for function in self.tree()["functions"]:
            for found in function["ruleSets"]:
                if found["name"] == rule_set:
                    return [rule["name"] for rule in found["rules"]]
        return []

    def source_rows(self, file, first, last):
        with open(os.path.join(self.folder, file), encoding="utf-8") as source:
            return source.read().split("\n")[first - 1:last]

    def put_above(self, file, rows):
        path = os.path.join(self.folder, file)
        with open(path, encoding="utf-8") as source:
            text = source.read()
        with open(path, "w", encoding="utf-8") as source:
            source.write("\n".join(rows) + "\n" + text)
