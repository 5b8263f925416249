"""board_tour.py DATA STORE_QUERY PREPARE_STORES PRACTICE_MARKET GUANCHAOTAI PRACTICE_HISTORY

A day of boards in the real program: chosen boards of a service become themes, another service takes over
where it is shut, and the list of all stocks brings the code table up to date, from each of the two."""

import csv
import sys

from desk import DAY
from journey import MAIN, Journey, check, travel
from recorded_boards import EASTMONEY, SINA, RecordedBoards

SERVICES = """[quote]
kind=sina
host={market}
[boards]
kind=sina
host={boards}
pause=0
[boards.2]
kind=eastmoney
host={boards}
pause=0
[stocklist]
kind=sina
host={boards}
pause=0
[stocklist.2]
kind=eastmoney
host={boards}
pause=0
"""

RENAMED = "SH600519"
GONE = "SH600585"
NEW = ("SH603999", "新样本")


class BoardTour(Journey):
    def __init__(self, desk):
        super().__init__(desk)
        with open(desk.data / "codes.csv", encoding="utf-8") as file:
            known = [(row["dm"], row["jc"]) for row in csv.DictReader(file)]
        self.stocks = [it for it in known if it[0].startswith(("SH60", "SH68", "SZ00", "SZ30"))]
        # More than a page of either service; one of Beijing, which is none of ours.
        self.many = self.stocks[:130] + [("BJ830799", "艾融软件")]
        self.few = self.stocks[-3:]
        self.listed = [("SH600519", "新茅台") if it[0] == RENAMED else it
                       for it in self.stocks if it[0] != GONE] + [NEW]
        self.boards = RecordedBoards([("gn_many", "BK0001", "多的板块", self.many),
                                      ("gn_few", "BK0002", "少的板块", self.few),
                                      ("gn_other", "BK0003", "别的", self.few)], self.listed)
        self.steps = [
            self.start, self.import_a_board, self.import_it_again,
            self.import_another_from_the_next_service, self.update_the_codes,
            self.update_them_from_the_next_service, self.close_the_program
        ]

    def start(self):
        (self.desk.application / "services.ini").write_text(
            SERVICES.format(market=self.desk.market.host, boards=self.boards.host))
        self.start_program()

    def import_a_board(self):
        self.screen.choose(self.main, "主题(Z)", "导入概念板块")
        window = self.screen.window("导入概念板块")
        self.wait_for_words(window, f"新浪（{self.boards.host}）有 3 个板块")
        self.import_listed(window, "多的", "导入完成。导入了 1 个板块：新主题 1 个，新成份股 130 条。")
        self.wait_for_words(window, "1 条成份股不是沪深 A 股，没有导入。")
        self.expect_theme("多的板块", self.many[:130])

    def import_it_again(self):
        window = self.screen.window("导入概念板块")
        self.import_listed(window, "多的", "导入完成。导入了 1 个板块：新主题 0 个，新成份股 0 条。")
        self.expect_theme("多的板块", self.many[:130])

    def import_another_from_the_next_service(self):
        self.boards.shut = SINA
        self.boards.asked.clear()
        window = self.screen.window("导入概念板块")
        self.screen.press(window, "重新读取板块列表")
        self.wait_for_words(window, f"东方财富（{self.boards.host}）有 3 个板块，"
                            "其中 1 个在主题库里已有同名的主题，共 130 只。")
        self.import_listed(window, "少的", "导入完成。导入了 1 个板块：新主题 1 个，新成份股 3 条。")
        self.expect_theme("少的板块", self.few)
        self.import_listed(window, "多的", "新主题 0 个，新成份股 0 条。")
        check("asked for", set(self.boards.asked), {(EASTMONEY, it) for it in (
            "m:90 t:3", "b:BK0001", "b:BK0002")})
        self.expect(MAIN, "select count(*) from dzhzhuti where zhutiname='别的'", ["0"])
        self.screen.close("导入概念板块")

    def update_the_codes(self):
        self.boards.shut = None
        self.screen.choose(self.main, "行情(H)", "更新代码表")
        window = self.screen.window("更新代码表")
        self.update(window, f"新浪的名单有 {len(self.listed)} 只："
                    "新加入 1 只，改名 1 只，退市 1 只，恢复 0 只。")
        self.expect(MAIN, f"select dm,jc from dmb where dm in ('{RENAMED}','{GONE}','{NEW[0]}') order by dm",
                    [RENAMED, "新茅台"], [GONE, dict(self.stocks)[GONE]], list(NEW))
        self.expect(MAIN, "select dm from tuishi", [GONE])

    def update_them_from_the_next_service(self):
        self.boards.shut = SINA
        window = self.screen.window("更新代码表")
        self.update(window, f"东方财富的名单有 {len(self.listed)} 只："
                    "新加入 0 只，改名 0 只，退市 0 只，恢复 0 只。")
        self.screen.close("更新代码表")

    def import_listed(self, window, search, words):
        """The boards whose names have it."""
        self.screen.fill(window, "查找板块", search)
        self.screen.press(window, "全选")
        self.screen.press(window, "导入勾选的板块")
        self.wait_for_words(window, words)

    def update(self, window, words):
        self.screen.press(window, "开始更新代码表")
        self.wait_for_words(window, words)

    def expect_theme(self, name, stocks):
        self.expect(MAIN, f"select dm,date(ztktime) from dzhzhuti where zhutiname='{name}' order by dm",
                    *sorted([code, DAY] for code, _ in stocks))


sys.exit(travel(BoardTour, sys.argv[1:]))
