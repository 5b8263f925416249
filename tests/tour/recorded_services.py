"""The services of day bars and factors as they stand in a folder, reply by reply: kline/CODE.json and
hfq/CODE.js. On an address of this computer, for as long as the tour runs."""

import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from urllib.parse import parse_qs, urlparse

REFERER = "https://finance.sina.com.cn/"


class RecordedServices:
    def __init__(self, folder):
        self.folder = folder
        self.asked = []
        server = ThreadingHTTPServer(("127.0.0.1", 0), self.handler())
        self.host = f"http://127.0.0.1:{server.server_port}"
        threading.Thread(target=server.serve_forever, daemon=True).start()

    def handler(self):
        services = self

        class Handler(BaseHTTPRequestHandler):
            def do_GET(self):
                status, body = services.reply(urlparse(self.path), self.headers.get("Referer"))
                self.send_response(status)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        return Handler

    def reply(self, url, referer):
        if referer != REFERER:
            return 403, b""
        if url.path.endswith(".getKLineData"):
            return 200, self.recorded(f"kline/{parse_qs(url.query)['symbol'][0]}.json") or b"null"
        body = self.recorded(f"hfq/{url.path.split('/')[-2]}.js")
        return (200, body) if body else (404, b"")

    def recorded(self, name):
        self.asked.append(name)
        file = self.folder / name
        return file.read_bytes() if file.exists() else None
