"""The keys alone: what is pressed, and what then has the focus, as a screen reader is told."""

import time

from Xlib import X, XK
from Xlib.ext import xtest

from desk import TourFailure
from screen import Atspi, GLib, role_of

SHORT = {"Ctrl": "Control_L", "Alt": "Alt_L", "Shift": "Shift_L"}

# No hand is faster; what is held longer is known as held.
PACE = 0.05

# The parts of these are no controls of their own.
WHOLE = ("table", "tree table", "tree", "list", "combo box", "spin button")


class Keyboard:
    def __init__(self, screen):
        self.screen = screen
        self.focused = None
        self.listener = Atspi.EventListener.new(self.focus_moves)
        self.listener.register("object:state-changed:focused")

    def focus_moves(self, event):
        if event.detail1:
            self.focused = event.source

    def press(self, keys):
        """A key, alone or with others: Down, Ctrl+k."""
        display = self.screen.display
        codes = [display.keysym_to_keycode(XK.string_to_keysym(SHORT.get(it, it)))
                 for it in keys.split("+")]
        for code in codes[:-1]:
            self.stroke(X.KeyPress, code)
        self.stroke(X.KeyPress, codes[-1], 0)
        for code in reversed(codes):
            self.stroke(X.KeyRelease, code, 0)

    def stroke(self, kind, code, pace=PACE):
        xtest.fake_input(self.screen.display, kind, code)
        self.screen.display.sync()
        time.sleep(pace)

    def move(self, keys, arrived, seconds=5):
        """Where the focus is after the keys, None if it comes to nothing that is as wanted."""
        self.hear()
        self.focused = None
        self.press(keys)
        return self.wait_for_focus(arrived, seconds)

    def wait_for_focus(self, arrived, seconds=5):
        until = time.monotonic() + seconds
        while time.monotonic() < until:
            self.hear()
            if self.focused and self.is_so(arrived):
                return self.focused
            time.sleep(0.002)
        return None

    def is_so(self, arrived):
        """What is just going away is not as wanted."""
        try:
            return arrived(self.focused)
        except GLib.Error:
            return False

    def hear(self):
        while GLib.MainContext.default().iteration(False):
            pass

    def focus(self, window, role, name):
        """Tab until the control has it."""
        control = self.screen.control(window, role, name)
        at = self.focused and control_of(self.focused)
        seen = []
        while at != control:
            if at in seen:
                raise TourFailure(f"Tab doesn't come to {role} {name}")
            seen.append(at)
            self.move("Tab", lambda it: control_of(it) != at)
            at = control_of(self.focused)

    def to_entry(self, first, entry):
        """Down from the first of a menu, if one has come, to an entry, which is then taken."""
        at = first
        seen = []
        while at and at.get_name() != entry:
            seen.append(at.get_name())
            at = self.move("Down", lambda it: it.get_name() not in seen)
        if not at:
            raise TourFailure(f"no entry {entry} among {seen}")
        self.press("Return")

    def menu(self, letter, entry):
        """An entry of the menu bar. Alt is told by the first menu, the letter by its first entry."""
        self.to_entry(self.move("Alt+" + letter, in_popup), entry)

    def row_menu(self, window, table, entry):
        """An entry of the menu of a table's current row."""
        self.focus(window, "table", table)
        self.press("Menu")
        self.to_entry(self.move("Down", in_popup), entry)


def in_popup(node):
    return role_of(node) == "menu item" and role_of(node.get_parent()) == "popup menu"


def control_of(node):
    """The control of which it is a part, or itself."""
    control = node
    parent = node.get_parent()
    while parent and role_of(parent) not in ("application", "frame", "dialog"):
        if role_of(parent) in WHOLE:
            control = parent
        parent = parent.get_parent()
    return control


def window_of(node):
    while role_of(node.get_parent()) != "application":
        node = node.get_parent()
    return node
