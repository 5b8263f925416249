"""The screen of which the pictures are taken: other programs' windows too, at any scale."""

import subprocess
import time

from Xlib import X
from framed_screen import FramedScreen
from screen import LEFT, Atspi, children


class PictureScreen(FramedScreen):
    scale = 1

    def opened_by(self, action):
        """The window that an action brings up."""
        before = {it.id for it in self.clients()}
        action()
        return self.wait("a new window", lambda: next(
            (it for it in self.clients() if it.id not in before and self.title_of(it)), None))

    def node_of(self, client):
        """The title of a window may change until it is found."""
        return self.wait("a window by its title", lambda: self.window_now(self.title_of(client)))

    def another_program(self):
        """A window that isn't the program's, with the keyboard."""
        window = self.root.create_window(0, 0, 400, 300, 0, X.CopyFromParent)
        window.map()
        self.wait("another program", lambda: window.id in {it.id for it in self.clients()})
        self.bring_up(window)
        return window

    def close_window(self, client):
        self.ask_window_to_close(client)
        self.wait("a window to close", lambda: client.id not in {it.id for it in self.clients()})

    def learn_scale(self, client, node):
        """A scaled program may tell where its controls are before or after its scale."""
        self.scale = client.get_geometry().width / super().place(node)[2]

    def place(self, node):
        return [round(it * self.scale) for it in super().place(node)]

    def program_of(self, client):
        """That of a window which the program under test does not own."""
        title = self.title_of(client)
        program = self.wait(f"the program of {title}", lambda: next(
            (it for it in children(Atspi.get_desktop(0))
             if title in [window.get_name() for window in children(it)]), None))
        program.set_cache_mask(Atspi.Cache.NONE)
        return program

    def click_twice(self, node):
        self.click(node, LEFT)
        self.click(node, LEFT)

    def wait_until_still(self, seconds=8):
        """Until it is the same for a while, or for what moves all the time, until that long."""
        pixels = None
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            time.sleep(0.6)
            now = self.root.get_image(0, 0, self.width, self.height, X.ZPixmap, 0xFFFFFFFF).data
            if now == pixels:
                return
            pixels = now

    def save(self, path, place=None):
        """The whole of it if no place is told."""
        part = []
        if place:
            left, top, width, height = place
            part = ["-crop", f"{width}x{height}+{left}+{top}", "+repage"]
        subprocess.run(["import", "-window", "root", *part, f"PNG8:{path}"], check=True)
