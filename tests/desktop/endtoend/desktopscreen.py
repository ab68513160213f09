"""The screen that a desktop program runs on: keys and mouse, what assistive programs see of a window, and pictures."""

import pathlib
import re
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

BETWEEN_LOOKS = 0.05  # seconds


class Timeout(Exception):
    """What was waited for has not come."""


class Patience:
    """How long one waits for what has to come."""

    def __init__(self, factor):
        self._factor = factor

    def wait(self, what, look, seconds=10):
        """What `look` returns, as soon as it returns something that is true. It may fail to find what it reads."""
        end = time.monotonic() + seconds * self._factor
        last = None
        while time.monotonic() < end:
            try:
                seen = look()
            except (GLib.Error, AttributeError) as failure:
                last = str(failure)  # a part that is not there yet, or no more
            else:
                last = repr(seen)
                if seen:
                    return seen
            time.sleep(BETWEEN_LOOKS)
        raise Timeout(f"{what}: not within {seconds * self._factor:g} seconds; last seen: {last}")

    def insist(self, what, act, look, tries=3):
        """Acts until `look` sees it: a key may be lost while the window is not ready for it."""
        for remaining in range(tries - 1, -1, -1):
            act()
            try:
                return self.wait(what, look, seconds=3 if remaining else 10)
            except Timeout:
                if not remaining:
                    raise


class Part:
    """One part of a window, as the accessibility bus shows it."""

    def __init__(self, node):
        self.node = node

    @property
    def name(self):
        return self.node.get_name() or ""

    @property
    def role(self):
        return self.node.get_role_name()

    @property
    def text(self):
        """The text of an editor."""
        return Atspi.Text.get_text(self.node, 0, Atspi.Text.get_character_count(self.node))

    @property
    def selected_text(self):
        chosen = Atspi.Text.get_selection(self.node, 0)
        return Atspi.Text.get_text(self.node, chosen.start_offset, chosen.end_offset)

    @property
    def letter_height(self):
        """Of the letter at the caret, in pixels."""
        at = Atspi.Text.get_caret_offset(self.node)
        return Atspi.Text.get_character_extents(self.node, at, Atspi.CoordType.SCREEN).height

    def has(self, state):
        return self.node.get_state_set().contains(getattr(Atspi.StateType, state.upper()))

    @property
    def place(self):
        box = Atspi.Component.get_extents(self.node, Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    @property
    def is_seen(self):
        return self.has("showing") and self.place[2] > 0

    def children(self):
        for at in range(self.node.get_child_count()):
            child = self.node.get_child_at_index(at)
            if child is not None:
                yield Part(child)

    def below(self, skip=()):
        """All parts below this one, those with the roles in `skip` left out with what they hold."""
        for child in self.children():
            if child.role in skip:
                continue
            yield child
            yield from child.below(skip)

    def find(self, role, name="", skip=()):
        """The first part below that is on screen and has this role, and this name where one is given; None without."""
        for part in self.below(skip):
            if part.role == role and name in ("", part.name) and part.is_seen:
                return part
        return None

    def child(self, name):
        """The part of this name directly in this one, on screen; None without."""
        for part in self.children():
            if part.name == name and part.is_seen:
                return part
        return None

    def cells(self):
        """The names of the rows of a tree or a list, as far as they are on screen."""
        return [part.name for part in self.children() if part.role == "table cell"]

    def cell(self, name):
        for part in self.children():
            if part.role == "table cell" and part.name == name:
                return part
        return None


def start_the_bus():
    """A program that starts while the bus does may not find it."""
    Atspi.get_desktop(0).get_child_count()


def find_application(process):
    """The application of the process with this number, once it is on the bus; None before."""
    desktop = Atspi.get_desktop(0)
    desktop.set_cache_mask(Atspi.Cache.NONE)
    for at in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(at)
        if application is not None and application.get_process_id() == process:
            # What is on screen now, not what it was when it was first asked for.
            application.set_cache_mask(Atspi.Cache.NONE)
            return Part(application)
    return None


def press(*keys):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)


def type_text(text):
    subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "15", text], check=True)


def click(part, button=1, left=None):
    """Clicks into the middle of the part, or so many pixels from its left edge."""
    x, y, width, height = part.place
    across = width // 2 if left is None else left
    point = [str(x + across), str(y + height // 2)]
    subprocess.run(["xdotool", "mousemove", *point, "click", str(button)], check=True)


def drag(part, by):
    """Pulls the part to the right by so many pixels, to the left when there are less than none."""
    x, y, width, height = part.place
    across, down = x + width // 2, y + height // 2
    subprocess.run(["xdotool", "mousemove", str(across), str(down), "mousedown", "1",
                    "mousemove", str(across + by // 2), str(down), "mousemove", str(across + by), str(down),
                    "mouseup", "1"], check=True)


def has_window_manager():
    """Whether somebody gives the keyboard to the windows."""
    asked = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], check=True, stdout=subprocess.PIPE,
                           text=True)
    return "window id" in asked.stdout


def windows_of(process):
    """How many windows the process has on screen: open menus are windows too, which the bus does not tell of."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(process)], check=False,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    return len(found.stdout.split())


class Pictures:
    """Pictures of the screen in a folder."""

    def __init__(self, folder):
        self._folder = pathlib.Path(folder)
        self._folder.mkdir(parents=True, exist_ok=True)
        for old in self._folder.glob("*.png"):
            old.unlink()

    def path(self, name):
        return self._folder / f"{name}.png"

    def take(self, name):
        subprocess.run(["import", "-window", "root", "-strip", str(self.path(name))], check=True)

    @staticmethod
    def of(part):
        """The pixels where the part is."""
        x, y, width, height = part.place
        crop = f"{width}x{height}+{x}+{y}"
        taken = subprocess.run(
            ["import", "-window", "root", "-crop", crop, "-depth", "8", "rgb:-"], check=True, stdout=subprocess.PIPE)
        return taken.stdout

    @classmethod
    def lightness_of(cls, part):
        """From 0, all black, to 1, all white."""
        pixels = cls.of(part)
        return sum(pixels) / (255 * len(pixels))

    def take_window(self, name, part):
        """A picture of one window alone."""
        x, y, width, height = part.place
        subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage", "-strip",
                        str(self.path(name))], check=True)


def file_name(words):
    return re.sub(r"[^a-z0-9]+", "-", words.lower()).strip("-")
