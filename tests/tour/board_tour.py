"""board_tour.py DATA STORE_QUERY PREPARE_STORES PRACTICE_MARKET GUANCHAOTAI PRACTICE_HISTORY

A day of boards in the real program: chosen boards of a service become themes, the list of all stocks
brings the code table up to date, and another service takes over where the first is shut."""

import csv
import sys

from desk import DAY, IN_SESSION, Market
from journey import MAIN, Journey, travel

RENAMED = "SH600519"
GONE = "SH600585"
NEW = ("SH603999", "新样本")


class BoardTour(Journey):
    def __init__(self, desk):
        super().__init__(desk)
        with open(desk.data / "codes.csv", encoding="utf-8") as file:
            known = [(row["dm"], row["jc"]) for row in csv.DictReader(file)]
        self.stocks = dict(it for it in known if it[0].startswith(("SH60", "SH68", "SZ00", "SZ30")))
        kept = [it for it in self.stocks if it != GONE]
        # More than a page of either service.
        self.many = kept[:130]
        self.few = kept[-3:]
        self.steps = [
            self.start_program, self.import_a_board, self.update_the_codes, self.shut_the_first_service,
            self.import_another_from_the_next, self.update_them_from_the_next, self.close_the_program
        ]

    def set_up(self):
        super().set_up()
        self.desk.data = self.desk.folder / "lists"
        self.desk.data.mkdir()
        listed = self.stocks | {RENAMED: "新茅台"} | dict([NEW])
        del listed[GONE]
        self.listed = len(listed)
        self.write_list("codes", ["dm", "jc"], listed.items())
        # One of Beijing, which is none of ours.
        boards = {"多的板块": [*self.many, "BJ920799"], "少的板块": self.few, "别的": self.few}
        self.write_list("themes", ["zhutiname", "dm", "xiangguandu", "guanzhudu"], (
            (name, code, 10, 10) for name, codes in boards.items() for code in codes))
        self.sina, self.eastmoney = (Market(self.desk, **IN_SESSION) for _ in range(2))
        self.desk.set_services({
            self.desk.market.host: "quote sina", self.sina.host: "boards sina, stocklist sina",
            self.eastmoney.host: "boards.2 eastmoney, stocklist.2 eastmoney"})

    def write_list(self, name, header, rows):
        with open(self.desk.data / f"{name}.csv", "w", encoding="utf-8") as file:
            csv.writer(file, lineterminator="\n").writerows([header, *rows])

    def import_a_board(self):
        self.screen.choose(self.main, "主题(Z)", "导入概念板块")
        window = self.screen.window("导入概念板块")
        self.wait_for_words(window, f"新浪（{self.sina.host}）有 3 个板块")
        self.import_listed(window, "多的", "导入完成。导入了 1 个板块：新主题 1 个，新成份股 130 条。")
        self.wait_for_words(window, "1 条成份股不是沪深 A 股，没有导入。")
        self.expect_theme("多的板块", self.many)

    def update_the_codes(self):
        self.screen.choose(self.main, "行情(H)", "更新代码表")
        window = self.screen.window("更新代码表")
        self.update(window, f"新浪的名单有 {self.listed} 只：新加入 1 只，改名 1 只，退市 1 只，恢复 0 只。")
        self.expect(MAIN, f"select dm,jc from dmb where dm in ('{RENAMED}','{GONE}','{NEW[0]}') order by dm",
                    [RENAMED, "新茅台"], [GONE, self.stocks[GONE]], list(NEW))
        self.expect(MAIN, "select dm from tuishi", [GONE])

    def shut_the_first_service(self):
        self.sina.process.terminate()
        self.sina.process.wait()

    def import_another_from_the_next(self):
        window = self.screen.window("导入概念板块")
        self.screen.press(window, "重新读取板块列表")
        self.wait_for_words(window, f"东方财富（{self.eastmoney.host}）有 3 个板块，"
                            "其中 1 个在主题库里已有同名的主题，共 130 只。")
        self.import_listed(window, "少的", "导入完成。导入了 1 个板块：新主题 1 个，新成份股 3 条。")
        self.expect_theme("少的板块", self.few)
        self.import_listed(window, "多的", "新主题 0 个，新成份股 0 条。")
        self.expect_theme("多的板块", self.many)
        self.expect(MAIN, "select count(*) from dzhzhuti where zhutiname='别的'", ["0"])
        self.screen.close("导入概念板块")

    def update_them_from_the_next(self):
        window = self.screen.window("更新代码表")
        self.update(window, f"东方财富的名单有 {self.listed} 只：新加入 0 只，改名 0 只，退市 0 只，恢复 0 只。")
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

    def expect_theme(self, name, codes):
        self.expect(MAIN, f"select dm,date(ztktime) from dzhzhuti where zhutiname='{name}' order by dm",
                    *sorted([code, DAY] for code in codes))


sys.exit(travel(BoardTour, sys.argv[1:]))
