"""The program as its user meets it: controls found by role and accessible name, pressed, filled and
clicked."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib
from Xlib import X, XK, display
from Xlib.error import BadWindow
from Xlib.ext import xtest
from Xlib.protocol.event import ClientMessage

import desk

LEFT, RIGHT = 1, 3


class Screen:
    def __init__(self, process):
        Atspi.init()
        self.process = process
        self.display = display.Display()
        self.popup = None
        # A popup menu belongs to no window; it is known by the notice that it shows.
        self.popups = Atspi.EventListener.new(self.popup_shows)
        self.popups.register("object:state-changed:showing")
        self.application = self.wait("the program on the accessibility bus", self.find_application)
        # What has changed is told to a main loop only, which runs here for the popups alone.
        self.application.set_cache_mask(Atspi.Cache.NONE)

    def find_application(self):
        return next((it for it in children(Atspi.get_desktop(0))
                     if it.get_process_id() == self.process.pid), None)

    def wait(self, what, condition, seconds=20):
        """A condition counts as unmet while the program is busy or a control is just going."""

        def answer():
            try:
                return condition()
            except (GLib.Error, BadWindow):
                return None

        return desk.wait(what, answer, seconds)

    def windows(self):
        if self.process.poll() is not None:
            return []
        return [it for it in children(self.application) if is_shown(it)]

    def window_now(self, title):
        return next((it for it in self.windows() if it.get_name() == title), None)

    def window(self, title):
        return self.wait(f"the window {title}", lambda: self.window_now(title))

    def close(self, title):
        self.ask_to_close(title)
        self.wait(f"the window {title} to close", lambda: not self.window_now(title))

    # There is no window manager: the tour does its part.

    def give_focus(self, title):
        self.frame(title).set_input_focus(X.RevertToPointerRoot, X.CurrentTime)
        self.display.sync()

    def ask_to_close(self, title):
        self.ask_window_to_close(self.frame(title))

    def ask_window_to_close(self, window):
        atom = self.display.intern_atom
        window.send_event(ClientMessage(
            window=window, client_type=atom("WM_PROTOCOLS"),
            data=(32, [atom("WM_DELETE_WINDOW"), X.CurrentTime, 0, 0, 0])))
        self.display.sync()

    def frame(self, title):
        return self.wait(f"the frame {title}", lambda: next(
            (it for it in self.display.screen().root.query_tree().children
             if self.title_of(it) == title), None))

    def title_of(self, window):
        title = window.get_full_property(self.display.intern_atom("_NET_WM_NAME"), 0)
        return title and title.value.decode()

    def control(self, window, role, name):
        return self.wait(f"{role} {name}", lambda: self.control_now(window, role, name))

    def control_now(self, window, role, name):
        return next((it for it in walk(window) if role_of(it) == role
                     and it.get_name() == name and is_shown(it)), None)

    def wait_until_gone(self, window, role, name):
        self.wait(f"{role} {name} to go", lambda: not self.control_now(window, role, name))

    def press(self, window, name):
        button = self.control(window, "button", name)
        self.wait(f"the button {name} to be enabled", lambda: is_enabled(button))
        button.get_action_iface().do_action(0)

    def fill(self, window, name, text):
        write(self.control(window, "text", name), text)

    def fill_box(self, window, name, text):
        """The field of a box with a list."""
        write(self.control(self.control(window, "combo box", name), "text", ""), text)

    def grid(self, window, name):
        return Grid(self.control(window, "table", name))

    def answer(self, text, button="确定"):
        """Waits for a message that holds the text, and presses one of its buttons."""
        box = self.wait(f"the message {text}", lambda: self.message_now(text))
        self.press(box, button)
        self.wait(f"the message {text} to go", lambda: not self.message_now(text))

    def message_now(self, text):
        return next((it for it in self.windows()
                     if role_of(it) == "alert" and says(it, text)), None)

    def answer_input(self, title, text=None):
        """Takes what the box offers, or types the text in its place."""
        box = self.window(title)
        if text is not None:
            write(next(it for it in walk(box) if role_of(it) == "text"), text)
        self.press(box, "确定")

    def choose(self, window, menu, entry):
        """An entry of the menu bar."""
        self.pick(self.control(window, "menu item", menu), LEFT, entry)

    def pick(self, node, button, entry):
        """An entry of the menu that a click brings up."""
        menu = self.menu(node, button)
        self.click(self.control(menu, "menu item", entry), LEFT)

    def menu(self, node, button):
        self.hear_of_popups()
        self.popup = None
        self.click(node, button)
        return self.wait("a menu", self.hear_of_popups)

    def popup_shows(self, event):
        try:
            if role_of(event.source) == "popup menu" and event.detail1:
                self.popup = event.source
        except GLib.Error:
            pass  # What has shown is gone again.

    def hear_of_popups(self):
        while GLib.MainContext.default().iteration(False):
            pass
        return self.popup

    def click(self, node, button=LEFT):
        left, top, width, height = self.place(node)
        xtest.fake_input(self.display, X.MotionNotify, x=left + width // 2, y=top + height // 2)
        xtest.fake_input(self.display, X.ButtonPress, button)
        xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    def place(self, node):
        """Where it is on the screen: left, top, width and height."""
        place = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return place.x, place.y, place.width, place.height

    def type(self, *keys):
        for key in keys:
            code = self.display.keysym_to_keycode(XK.string_to_keysym(key))
            xtest.fake_input(self.display, X.KeyPress, code)
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()

    def describe(self):
        """All that shows, for the report of a failure."""
        try:
            return "\n".join(f"{role_of(it)} {it.get_name()!r} {text_of(it)!r}"
                             for window in self.windows() for it in walk(window) if is_shown(it))
        except GLib.Error as failure:
            return f"nothing that could be read: {failure}"


class Grid:
    """A table by its data rows, counted from 0; column 0 holds their numbers."""

    def __init__(self, node):
        self.table = node.get_table_iface()

    def cell(self, row, column):
        return self.table.get_accessible_at(row, column)

    def rows(self):
        return self.table.get_n_rows()

    def column(self, column):
        return [self.cell(row, column).get_name() for row in range(self.rows())]


def children(node):
    return [it for it in (node.get_child_at_index(i) for i in range(node.get_child_count())) if it]


def walk(node):
    yield node
    # The cells of a grid are many; they are reached by row and column.
    if role_of(node) != "table":
        for child in children(node):
            yield from walk(child)


def role_of(node):
    role = node.get_role_name()
    return "button" if role in ("push button", "push button menu") else role  # Debian 12 and 13


def is_shown(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def is_enabled(node):
    return node.get_state_set().contains(Atspi.StateType.ENABLED)


def says(window, text):
    return any(text in text_of(it) for it in walk(window) if role_of(it) == "label")


def text_of(node):
    """What stands in a field; of anything else, what it is called."""
    text = node.get_text_iface()
    return Atspi.Text.get_text(text, 0, -1) if text else node.get_name()


def write(field, text):
    Atspi.EditableText.set_text_contents(field.get_editable_text_iface(), text)
