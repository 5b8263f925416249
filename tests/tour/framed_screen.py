"""A screen with a window manager, whose windows have a frame."""

from Xlib import X
from Xlib.protocol.event import ClientMessage
from screen import Screen


class FramedScreen(Screen):
    def __init__(self, process):
        super().__init__(process)
        self.root = self.display.screen().root
        self.width = self.display.screen().width_in_pixels
        self.height = self.display.screen().height_in_pixels

    def clients(self):
        """The windows that have a frame, whosever they are."""
        listed = self.root.get_full_property(self.display.intern_atom("_NET_CLIENT_LIST"), 0)
        return [self.display.create_resource_object("window", it)
                for it in (listed.value if listed else [])]

    def client_now(self, title):
        return next((it for it in self.clients() if self.title_of(it) == title), None)

    def frame(self, title):
        return self.wait(f"the frame {title}", lambda: self.client_now(title))

    def bring_up(self, client):
        """Above all others, with the keyboard."""
        by_a_pager = 2
        self.root.send_event(
            ClientMessage(window=client, client_type=self.display.intern_atom("_NET_ACTIVE_WINDOW"),
                          data=(32, [by_a_pager, X.CurrentTime, 0, 0, 0])),
            event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def place_of_frame(self, client):
        window = client
        while window.query_tree().parent != self.root:
            window = window.query_tree().parent
        frame = window.get_geometry()
        return frame.x, frame.y, frame.width, frame.height
