"""Services on an address of this computer, for as long as the tour runs."""

import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer


class LoopbackServices:
    """`reply(target, referer)` of what stands on it gives status and body."""

    def __init__(self):
        self.asked = []
        self.server = ThreadingHTTPServer(("127.0.0.1", 0), self.handler())
        self.host = f"http://127.0.0.1:{self.server.server_port}"
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def handler(self):
        services = self

        class Handler(BaseHTTPRequestHandler):
            def do_GET(self):
                status, body = services.reply(self.path, self.headers.get("Referer"))
                self.send_response(status)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        return Handler
