"""The services of boards and of the list of all stocks, Sina and Eastmoney on one address, in their shapes.
Boards: node of Sina, number of Eastmoney, name, stocks; a stock is code and name."""

import json
from urllib.parse import parse_qs, urlparse

from loopback_services import LoopbackServices

SINA = "https://finance.sina.com.cn/"
EASTMONEY = "https://quote.eastmoney.com/"
ALL = ("hs_a", "m:0+t:6,m:0+t:80,m:1+t:2,m:1+t:23")


class RecordedBoards(LoopbackServices):
    def __init__(self, boards, stocks):
        self.boards = boards
        self.lists = dict.fromkeys(ALL, stocks)
        for node, number, _, members in boards:
            self.lists[node] = self.lists[f"b:{number}"] = members
        self.shut = None  # the referer of the service that is down
        super().__init__()

    def reply(self, target, referer):
        body = self.body(urlparse(target), referer)
        return (404, b"") if body is None else (200, body)

    def body(self, url, referer):
        query = {name: values[0] for name, values in parse_qs(url.query).items()}
        owner = EASTMONEY if url.path == "/api/qt/clist/get" else SINA
        if referer != owner or owner == self.shut:
            return None
        self.asked.append((owner, query.get("node") or query.get("fs") or query.get("param")))
        if owner == EASTMONEY:
            return self.clist(query["fs"].replace(" ", "+"), int(query["pn"]), int(query["pz"]))
        if url.path.endswith("/newFLJK.php"):
            return self.classes()
        stocks = self.lists.get(query["node"], [])
        if url.path.endswith(".getHQNodeStockCount"):
            return f'"{len(stocks)}"'.encode()
        rows = page_of(stocks, int(query["page"]), int(query["num"]))
        return json.dumps([{"symbol": code.lower(), "code": code[2:], "name": name, "trade": "9.80"}
                           for code, name in rows], ensure_ascii=False).encode("gbk")

    def classes(self):
        told = {node: f"{node},{name},{len(members)},20.0,0.6,3.2,1000000,90000000000,sh600001,9.8,50.0,4.5,x"
                for node, _, name, members in self.boards}
        return b"var S_Finance_bankuai_class = " + json.dumps(told, ensure_ascii=False).encode("gbk")

    def clist(self, fs, page, size):
        if fs == "m:90+t:3":
            rows = [{"f12": number, "f14": name} for _, number, name, _ in self.boards]
        else:
            rows = [{"f12": code[2:], "f13": int(code.startswith("SH")), "f14": name}
                    for code, name in self.lists.get(fs, [])]
        shown = page_of(rows, page, size)
        data = {"total": len(rows), "diff": shown} if shown else None
        return json.dumps({"rc": 0, "data": data}, ensure_ascii=False).encode()


def page_of(rows, page, size):
    return rows[(page - 1) * size:page * size]
