"""Works through the demo catalogue in the real desktop program, as an analyst does, with keys and mouse.

Runs in an X server and on a session bus of its own (see CMakeLists.txt). Each step waits for what it has caused; the step
that fails is named, with a picture of the screen as it was then. Pictures of the main steps are kept.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile
import time

from democatalogue import DemoCatalogue
from desktopscreen import (
    Patience, Pictures, click, drag, file_name, find_application, has_window_manager, press, start_the_bus, type_text,
    windows_of)

SHOWN_WITHIN = 2  # seconds until a change of another process is on screen
RULE = "Bill a policy/Late payment/Late fee"
WINDOW_MANAGER = str(pathlib.Path(__file__).with_name("windowmanager.xml"))
COMMANDS = ("menu bar",)  # what has as many parts as the rest of the window, and is looked at only where it matters


class Journey:
    def __init__(self, arguments, home):
        self._environment = dict(
            os.environ, HOME=home, XDG_CONFIG_HOME=os.path.join(home, ".config"), XDG_RUNTIME_DIR=home,
            LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self._workbench = arguments.workbench
        self._patience = Patience(arguments.patience)
        self._pictures = Pictures(arguments.pictures)
        self._catalogue = DemoCatalogue(
            arguments.commandline, arguments.samples, os.path.join(home, "policybilling"), self._environment)
        self._manager = self._process = None
        self._application = self._window = self._tool_bar = self._tree = None

    def run(self):
        steps = [
            self.make_the_workspace,
            self.see_the_start_page,
            self.open_the_workspace,
            self.go_light,
            self.widen_the_tree,
            self.open_a_rule,
            self.see_its_segment,
            self.edit_a_description,
            self.rename,
            self.check_all_and_none,
            self.open_the_popup_menu,
            self.move_down,
            self.emphasize,
            self.enlarge_the_source,
            self.show_the_selected_only,
            self.jump_by_the_locator,
            self.follow_the_command_line,
            self.validate,
            self.see_the_results,
            self.read_the_activity_log,
            self.see_the_options,
            self.go_dark,
            self.quit,
        ]
        for step in steps:
            name = step.__name__.replace("_", " ")
            begin = time.monotonic()
            try:
                step()
            except Exception:
                picture = f"failed-{file_name(name)}"
                self._pictures.take(picture)
                print(f"The step \"{name}\" failed; the screen is in {self._pictures.path(picture)}.", flush=True)
                raise
            print(f"{time.monotonic() - begin:6.2f} s  {name}", flush=True)

    def end(self):
        for process in (self._process, self._manager):
            if process is not None and process.poll() is None:
                process.kill()
                process.wait()

    # What is on screen.

    def _wait(self, what, look, seconds=10):
        return self._patience.wait(what, look, seconds)

    def _insist(self, what, act, look):
        return self._patience.insist(what, act, look)

    def _part(self, role, name):
        """A part of the main window that comes on screen."""
        return self._wait(f"the {role} {name}", lambda: self._window.find(role, name, skip=COMMANDS))

    def _node(self, name):
        return self._wait(f"the node {name}", lambda: self._tree.cell(name))

    def _choose(self, name):
        self._insist(f"the chosen node {name}", lambda: click(self._node(name)),
                     lambda: self._tree.cell(name).has("selected"))

    def _open(self, name, child):
        """Opens the node, so that its child is in sight."""
        self._choose(name)
        self._insist(f"{child} below {name}", lambda: press("Right"), lambda: self._tree.cell(child))

    def _checked(self):
        return [part.name for part in self._tree.children() if part.has("checked")]

    def _click_command(self, tip):
        """A button of the tool bar; one that is pressed in passes for a check box."""
        click(self._wait(f"the button {tip}", lambda: self._tool_bar.child(tip)))

    def _choose_in_menu(self, *captions):
        """Goes along the window's menus with the mouse."""
        bar = self._window.find("menu bar")
        click(bar.find("menu item", captions[0]))
        for at, caption in enumerate(captions[1:], start=1):
            item = self._wait(f"the menu item {caption}", lambda: bar.find("menu item", caption))
            if at == len(captions) - 1:
                self._wait(f"the place of {caption}", lambda: item.place[0] > 0)
            click(item)

    def _windows(self):
        return windows_of(self._process.pid)

    # The steps.

    def make_the_workspace(self):
        self._catalogue.fill()

    def _start(self, *folder):
        self._process = subprocess.Popen([self._workbench, *folder], env=self._environment, stdout=subprocess.PIPE,
                                         stderr=subprocess.STDOUT, text=True)
        self._application = self._wait("the application", lambda: find_application(self._process.pid), seconds=20)
        self._window = self._wait("the window", lambda: self._application.find("frame"))

    def see_the_start_page(self):
        start_the_bus()
        self._manager = subprocess.Popen(["openbox", "--sm-disable", "--config-file", WINDOW_MANAGER],
                                         env=self._environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self._wait("the window manager", has_window_manager)
        self._start()
        self._part("push button", "New Workspace...")
        self._pictures.take("start-page")
        dialog = self._insist("the window for a new workspace", lambda: press("ctrl+shift+n"),
                              lambda: self._application.child("New Workspace"))
        self._pictures.take_window("new-workspace", dialog)
        self._insist("one window", lambda: press("Escape"), lambda: self._windows() == 1)
        self.quit()

    def open_the_workspace(self):
        self._start(self._catalogue.folder)
        self._wait("the project in the title", lambda: self._window.name.startswith("Policy Billing – "))
        self._tool_bar = self._part("tool bar", "Commands")
        self._tree = self._part("tree", "Rule catalogue")
        self._wait("the functions",
                   lambda: self._tree.cells() == ["Bill a policy", "Rate a policy", "Settle"])

    def go_light(self):
        self._choose_in_menu("View", "Colours", "Light")
        self._wait("no menu", lambda: self._windows() == 1)
        self._wait("light colours", lambda: self._pictures.lightness_of(self._tree) > 0.8)

    def widen_the_tree(self):
        def width():
            return self._tree.place[2]

        before = width()

        def is_beside(part):
            left, _, wide, high = part.place
            return part.is_seen and wide < high and 0 <= left - self._tree.place[0] - before < 10

        handle = self._wait("the handle beside the tree", lambda: next(
            (part for part in self._window.below(COMMANDS) if part.role == "unknown" and is_beside(part)), None))
        drag(handle, 60)
        self._wait("a wider tree", lambda: width() > before + 30)

    def open_a_rule(self):
        self._open("Bill a policy", "Late payment")
        self._open("Late payment", "Late fee")
        self._choose("Late fee")
        name = self._part("text", "Name")
        self._wait("the rule's name", lambda: name.text == "Late fee")

    def see_its_segment(self):
        source = self._part("text", "Source text")
        rows = self._catalogue.source_rows("cobol/pbfee01.cbl", 50, 70)
        self._wait("the rows of the segment, selected",
                   lambda: [row.rstrip() for row in source.selected_text.split("\n") if row.strip()]
                   == [row.rstrip() for row in rows if row.strip()])
        self._part("combo box", "cobol/pbfee01.cbl")
        self._pictures.take("rule")

    def edit_a_description(self):
        description = self._part("text", "Technical Description")
        written = "5 per cent of what is past due, 10.00 at least; caps by state."

        def write():
            click(description)
            press("ctrl+a")
            type_text(written)

        self._insist("the typed text", write, lambda: description.text == written)
        press("Tab")
        self._wait("the text in the store", lambda: self._catalogue.value(RULE, "Description") == written)

    def rename(self):
        name = self._part("text", "Name")

        def write():
            click(name)
            press("ctrl+a")
            type_text("Fee for late payment")

        self._insist("the typed name", write, lambda: name.text == "Fee for late payment")
        press("Tab")
        self._node("Fee for late payment")
        self._wait("the name in the store",
                   lambda: "Fee for late payment" in self._catalogue.rules_of("Late payment"))

    def check_all_and_none(self):
        self._choose("Fee for late payment")
        self._insist("all nodes checked", lambda: press("ctrl+a"), lambda: self._checked() == self._tree.cells())
        self._insist("no node checked", lambda: press("ctrl+u"), lambda: self._checked() == [])

    def open_the_popup_menu(self):
        self._choose("Fee for late payment")
        self._insist("the popup menu", lambda: press("shift+F10"), lambda: self._windows() == 2)
        self._pictures.take("popup-menu")
        self._insist("no popup menu", lambda: press("Escape"), lambda: self._windows() == 1)

    def move_down(self):
        self._choose("Grace days")
        before = self._catalogue.rules_of("Late payment")
        after = [before[1], before[0], before[2]]
        self._choose(before[0])
        self._click_command("Move down in Sequence")
        self._wait("the new order in the store", lambda: self._catalogue.rules_of("Late payment") == after)
        self._wait("the new order in the tree", lambda: [name for name in self._tree.cells() if name in after] == after)

    def emphasize(self):
        self._choose("Fee for late payment")
        source = self._part("text", "Source text")
        plain = self._pictures.of(source)
        self._click_command("Emphasize")
        self._wait("marks at the rows", lambda: self._pictures.of(source) != plain)
        self._wait("the mark of the button", lambda: self._tool_bar.child("Emphasize").has("checked"))
        self._insist("one row chosen instead of the segment", lambda: click(source),
                     lambda: source.selected_text.count("\n") == 0)
        self._pictures.take("emphasize")

    def enlarge_the_source(self):
        source = self._part("text", "Source text")
        plain = self._pictures.of(self._tree)
        before = source.letter_height
        press("ctrl+plus", "ctrl+plus")
        self._wait("higher rows in the source", lambda: source.letter_height > before)
        if self._pictures.of(self._tree) != plain:
            raise AssertionError("The letters of the tree have changed with those of the source")
        press("ctrl+0")
        self._wait("rows of the former height", lambda: source.letter_height == before)

    def show_the_selected_only(self):
        self._insist("a checked node", lambda: (self._choose("Fee for late payment"), press("space")),
                     lambda: "Fee for late payment" in self._checked())
        self._click_command("Selected Only")
        self._wait("the selected nodes only", lambda: "Settle" not in self._tree.cells())
        shown = self._tree.cells()
        if "Bill a policy" not in shown or "Grace days" in shown:
            raise AssertionError(f"Selected Only shows {shown}")
        self._pictures.take("selected-only")
        self._click_command("Selected Only")
        self._wait("all nodes again", lambda: {"Bill a policy", "Rate a policy", "Settle"} <= set(self._tree.cells()))

    def jump_by_the_locator(self):
        field = self._insist("the locator", lambda: press("ctrl+k"),
                             lambda: self._window.child("Locator").child("Part of a name"))
        type_text("tiers")
        self._wait("what was typed", lambda: field.text == "tiers")
        found = self._window.child("Locator").child("Matches")
        self._wait("the rule", lambda: "Commission tiers" in next(found.children()).name)
        self._pictures.take("locator")
        press("Return")
        self._wait("the rule in the tree", lambda: self._tree.cell("Commission tiers").has("selected"))

    def follow_the_command_line(self):
        self._catalogue.run("set", "Settle/Commission/Commission tiers", "Name=Tiers of commission")
        self._wait("a name that another process has written", lambda: self._tree.cell("Tiers of commission"),
                   seconds=SHOWN_WITHIN)
        self._catalogue.run("rule", "create", "Contract level", "--ruleset", "Commission")
        self._wait("a rule that another process has made", lambda: self._tree.cell("Contract level"),
                   seconds=SHOWN_WITHIN)

    def validate(self):
        """The rule that is still checked, whose source has grown by two lines above its segment."""
        self._catalogue.put_above("cobol/pbfee01.cbl", ["      *    CHANGED FOR THE NEW FEE TABLE.", "      *"])
        self._click_command("Validate")
        question = self._box(lambda part: part.name.startswith("You are about to validate one rule."))
        click(question.find("push button", "Yes"))
        options = self._wait("the options of the validation",
                             lambda: self._application.child("Options: Rule Validation"))
        repair = options.find("radio button", "Look for the text in the file, and move the segment there")
        self._insist("the choice to repair", lambda: click(repair, left=8), lambda: repair.has("checked"))
        self._pictures.take_window("validation", options)
        click(options.find("push button", "OK"))
        self._box(lambda part: part.name.strip() == "One segment was validated.")
        self._insist("the main window alone", lambda: press("Escape"), lambda: self._windows() == 1)
        path = "Bill a policy/Late payment/Fee for late payment"
        self._wait("the segment at its new rows", lambda: self._catalogue.value(path, "FromRow") == 52)

    def see_the_results(self):
        """What the validation has found, with the rule's text beside its new place."""
        results = self._part("tree", "Results of the validation")
        self._wait("the verdict", lambda: results.cell("moved"))
        rows = [row.rstrip() for row in self._catalogue.source_rows("cobol/pbfee01.cbl", 52, 72)]
        for name in ("Stored text", "Text in the file"):
            text = self._part("text", name)
            self._insist(f"the rows in {name}", lambda: click(results.cell("Fee for late payment")),
                         lambda: [row.rstrip() for row in text.text.split("\n")] == rows)
        self._pictures.take("validation-results")
        self._choose_in_menu("View", "Validation")
        self._wait("no results", lambda: self._windows() == 1 and not results.is_seen)

    def read_the_activity_log(self):
        self._choose("Tiers of commission")
        self._click_command("Activity Log")
        log = self._box(lambda part: part.cell("Name changed to Tiers of commission"))
        self._pictures.take_window("activity-log", log)
        self._insist("the main window alone", lambda: press("Escape"), lambda: self._windows() == 1)

    def _box(self, holds):
        """A window before the main window, with a part that passes the test."""
        def look():
            for box in self._application.children():
                if box.name != self._window.name and box.is_seen and any(holds(part) for part in box.below()):
                    return box
            return None

        return self._wait("a message or another window", look)

    def see_the_options(self):
        options = self._insist("the options", lambda: press("ctrl+comma"), lambda: self._application.child("Options"))
        self._pictures.take_window("options", options)
        self._insist("no options", lambda: press("Escape"), lambda: self._windows() == 1)

    def go_dark(self):
        self._choose_in_menu("View", "Colours", "Dark")
        self._wait("no menu", lambda: self._windows() == 1)
        self._wait("dark colours", lambda: self._pictures.lightness_of(self._tree) < 0.4)
        self._pictures.take("dark")

    def quit(self):
        press("ctrl+q")
        self._wait("the end of the program", lambda: self._process.poll() is not None)
        said = self._process.stdout.read()
        if self._process.returncode != 0 or said:
            raise AssertionError(f"The program ended with {self._process.returncode} and said:\n{said}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--commandline", required=True, help="the program qmrules")
    parser.add_argument("--workbench", required=True, help="the program qmrules-workbench")
    parser.add_argument("--samples", required=True, help="the demo sources")
    parser.add_argument("--pictures", required=True, help="the folder that the pictures are put into")
    parser.add_argument("--patience", type=float, default=1, help="by what the time limits are multiplied")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as home:
        journey = Journey(arguments, str(pathlib.Path(home).resolve()))
        try:
            journey.run()
        finally:
            journey.end()
    return 0


if __name__ == "__main__":
    sys.exit(main())
