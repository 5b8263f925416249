"""The services of day bars and factors as they stand in a folder, reply by reply: kline/CODE.json and
hfq/CODE.js."""

from urllib.parse import parse_qs, urlparse

from loopback_services import LoopbackServices

REFERER = "https://finance.sina.com.cn/"


class RecordedServices(LoopbackServices):
    def __init__(self, folder):
        self.folder = folder
        super().__init__()

    def reply(self, target, referer):
        if referer != REFERER:
            return 403, b""
        url = urlparse(target)
        if url.path.endswith(".getKLineData"):
            return 200, self.recorded(f"kline/{parse_qs(url.query)['symbol'][0]}.json") or b"null"
        body = self.recorded(f"hfq/{url.path.split('/')[-2]}.js")
        return (200, body) if body else (404, b"")

    def recorded(self, name):
        self.asked.append(name)
        file = self.folder / name
        return file.read_bytes() if file.exists() else None
