"""quarter_tour.py DATA STORE_QUERY PREPARE_STORES PRACTICE_MARKET GUANCHAOTAI PRACTICE_HISTORY

A quarter in the shapes of the services (quarter/), brought through the real program: the fill of the
history databases, the history of a theme against the market, and the scan. All that they come to is
worked out by hand.

July to September 2026 has 65 trading days: the 25th of September is a holiday. What moves, by the
closes; a stock that is not told here closes where it closed the day before:
  SH000001  3500 and 3535 by turns, so +1.00 and -0.99: each 32 times, and -0.99 on the 9th of September
  2nd September   丙 12.50 -> 10.20, ex-dividend: factors 3.00 -> 3.75, adjusted 37.50 -> 38.25: +2.00
  7th to 11th     己 is halted
  9th             甲 10 -> 11, 乙 20 -> 22, 丙 10.20 -> 11.22, 丁 5 -> 5.50 from its open on: +10.00,
                  戊 8 -> 8.08: +1.00
  10th            甲 11 -> 11.55: +5.00, 乙 22 -> 21.12: -4.00, 丁 5.50 -> 5.61: +2.00
  11th            甲 11.55 -> 11.79: +2.08
  14th            己 40 -> 36: -10.00
  17th            乙 21.12 -> 22: +4.17
  22nd            戊 8.08 -> 8.48: +4.95
"""

import shutil
import sys
from pathlib import Path

from desk import IN_SESSION, run
from journey import MAIN, Journey, check, travel
from recorded_services import RecordedServices
from screen import LEFT, RIGHT, text_of

QUARTER = Path(__file__).parent / "quarter"
FIRST_HISTORY = "hangqing2006-2017dan.db3"
SECOND_HISTORY = "hangqing2006-2017.db3"

THEME = "大样本"

# 2nd: 2.00/6. On the 9th to the 11th of five: 41/5, (5-4+2)/5, 2.08/5. 14th: -10/6. 17th: 4.17/6.
# 22nd: 4.95/6. Together 0.3333+8.2+0.6+0.416-1.6667+0.695+0.825 = 9.4026; the index 32*1.00-32*0.99 =
# 0.32; 9.4026-0.32 = 9.0826.
COMPARED = "主题总涨幅(9.4)-大盘总涨幅(0.32)=涨幅差(9.08)"

# Of the five that were traded on the 9th four were at their limit, one of them from the open on: more
# than 5/4+2. 小样本 (甲 and 戊) has one of two, and no other day has any.
CHOSEN = ["2026-09-09", THEME, "8.2", "4", "1", "5", "-0.99", "10"]

COLUMNS = ["股涨幅", "量比", "开盘涨", "前3涨", "前10涨", "前30涨", "后1涨", "后2涨", "后5涨", "后10涨"]
# The day itself, its volume by the mean of ten days, the next open, and back to 3, 10 and 30 days; then
# from that open to the open of the second day and the closes of the second, sixth and tenth.
STOCKS = {
    # 4/((9+4)/10)=3.08; 11.22/11, 11.66/11.22, 11.79/11.22
    "SH600901": [10, 3.08, 2, 10, 10, 10, 3.92, 5.08, 5.08, 5.08],
    # 22/22, 21.12/22, back to 22 on the sixth
    "SH600902": [10, 1, 0, 10, 10, 10, -4, -4, 0, 0],
    # the dividend lies 5 days back: 11.22*3.75/(12.50*3.00)
    "SH600903": [10, 1, 0, 10, 12.2, 12.2, 0, 0, 0, 0],
    # 5.60/5.50, 5.61/5.60
    "SZ000904": [10, 1, 1.82, 10, 10, 10, 0.18, 0.18, 0.18, 0.18],
    # 8.48/8.08 from the ninth day on
    "SZ000905": [1, 1, 0, 1, 1, 1, 0, 0, 0, 4.95],
    # as it last traded on the 4th; behind the 9th comes the 14th: 37/40, 36/37
    "SZ000906": [0, 1, -7.5, 0, 0, 0, -2.7, -2.7, -2.7, -2.7],
}
# Sums over the six: 41; 3.92-4+0.18-2.70=-2.60; 5.08-4+0.18-2.70=-1.44; 5.08+0.18-2.70=2.56; 2.56+4.95=7.51.
SCORE = ("总次数:6当日胜率:83.33当日平均:6.83 一日胜率:33.33一日平均:-0.43 二日胜率:33.33二日平均:-0.24"
         " 五日胜率:33.33五日平均:0.43 十日胜率:50十日平均:1.25")


class QuarterTour(Journey):
    def __init__(self, desk):
        super().__init__(desk)
        self.past = RecordedServices(QUARTER)
        self.home = desk.folder / "home/听涛阁"
        self.steps = [
            self.start_over_practice_bars, self.fill, self.compare_with_the_market,
            self.choose_themes, self.search, self.close_the_program
        ]

    def set_up(self):
        data = self.desk.folder / "data"
        shutil.copytree(self.desk.data, data)
        for name in ("codes.csv", "themes.csv"):
            shutil.copy(QUARTER / name, data)
        self.desk.data = data
        super().set_up()
        self.desk.set_services({self.desk.market.host: "quote sina, newspage",
                                self.past.host: "history sina, factors sina"})
        # Where a start of an earlier day has left them.
        run(self.desk.practice_history, data / "codes.csv", data / "themes.csv",
            self.desk.application, **IN_SESSION)
        shutil.move(self.desk.application / "听涛阁", self.home)

    def start_over_practice_bars(self):
        before = self.sizes()
        check("the practice bars", sorted(before), [SECOND_HISTORY, FIRST_HISTORY])
        self.start_program()
        self.screen.answer("练习行情")
        check("those moved aside", self.sizes(), {name + ".练习": before[name] for name in before})

    def fill(self):
        self.screen.choose(self.main, "工具(G)", "历史行情")
        window = self.screen.window("历史行情")
        self.screen.press(window, "补全历史行情")
        # The first day has no former close, so 64 days of all but 己, which has five less.
        self.wait_for_words(window, "补全完成。补了 6 只，新增 443 条日线。")
        held = self.screen.grid(window, "各只股票的历史行情")
        self.screen.wait("the days of each", lambda: [held.column(it) for it in range(3, 7)] == [
            ["2026-07-02"] * 7, ["2026-09-30"] * 7, ["64"] * 6 + ["59"], ["0"] * 7])
        check("asked for", sorted(self.past.asked), sorted(
            [f"kline/{it}" for it in (file.name for file in (QUARTER / "kline").iterdir())]
            + [f"hfq/{it.lower()}.js" for it in STOCKS]))
        self.screen.close("历史行情")

    def compare_with_the_market(self):
        themes = self.screen.grid(self.main, "主题表")
        self.screen.wait("the themes", lambda: THEME in themes.column(1))
        cell = themes.cell(themes.column(1).index(THEME), 1)
        self.screen.click(cell, LEFT)
        self.screen.pick(cell, RIGHT, "历史涨幅")
        window = self.screen.window("主题历史涨幅与大盘对比")
        # From the 27th of August to the 25th of November; a box is known by what stands in it.
        for shown, wanted in (("8", "7"), ("27", "1"), ("11", "9"), ("25", "30")):
            self.screen.fill_box(window, shown, wanted)
        self.screen.press(window, "开始对比")
        self.wait_for_words(window, COMPARED)
        days = self.screen.grid(window, "主题与大盘的逐日涨幅")
        check("the days", len(days.column(1)), 64)
        self.screen.close("主题历史涨幅与大盘对比")

    def choose_themes(self):
        self.screen.choose(self.main, "主题(Z)", "题材历史分析")
        self.screen.press(self.screen.window("题材选股"), "选历年主题")
        self.expect(MAIN, "select date(riqi),ticai,ticaizhang,zhangtinshu,yizishu,zonggeshu,dapanzhang,"
                    "touguzhangfu from xuanticai", CHOSEN)

    def search(self):
        window = self.screen.window("题材选股")
        self.screen.fill(window, "搜索条件", "")
        self.screen.press(window, "搜索")
        self.screen.wait("the score", lambda: text_of(
            self.screen.control(window, "text", "统计")) == SCORE)
        found = self.screen.grid(window, "搜索到的股票")
        check("the stocks", found.column(1), list(STOCKS))
        first = 10  # 股涨幅
        rows = zip(*([round(float(it), 2) for it in found.column(first + at)]
                     for at in range(len(COLUMNS))))
        for code, row in zip(STOCKS, rows):
            check(f"{code}: {COLUMNS}", list(row), STOCKS[code])
        self.screen.close("题材选股")

    def sizes(self):
        return {it.name: it.stat().st_size for it in self.home.iterdir()}


sys.exit(travel(QuarterTour, sys.argv[1:]))
