"""What each picture shows and the way there: a step of the picture's name each, which leaves the
program as it found it."""

import os
import shutil
import subprocess
import sys
import time
import traceback
from datetime import datetime

from desk import DAY, wait
from keyboard import Keyboard
from picture_desk import MAIN, SHOWN_HOME, SOUND, THEME
from picture_screen import PictureScreen
from screen import LEFT, RIGHT, Atspi, children, is_shown, role_of, says, text_of, walk, write

TITLE = "观潮台(V3.7)"

# When the copies of a day were made, by the clock of the picture's day.
COPIED = datetime.fromisoformat(f"{DAY} 09:20:11").timestamp()

# Monitors that wait for what has happened already.
ALARMS = [
    "update zhutijiankong set zhangfu=0,baojinzhi=0.5",
    "update gegujiankong set sp=0",
]

# So that there is something to import.
SHRINK_THEMES = "delete from dzhzhuti where rowid % 3 = 0"

# Such as the code table is some months later.
OLD_CODES = [
    "delete from dmb where dm in ('SH600036','SH600519','SZ000002')",
    "update dmb set jc='老名字' where dm='SZ000001'",
    "insert into dmb(dm,numdm,jc,shenmu) values('SH600001','600001','邯郸钢铁','hdgt')",
]


class Pictures:
    def __init__(self, desk, folder, scale, whole_screen):
        self.desk = desk
        self.folder = folder
        self.scale = scale
        self.whole_screen = whole_screen

    def set_up(self):
        self.desk.set_up()
        self.open_program()
        self.screen.press(self.main, "更新全部股票行情")
        self.screen.wait("the quotes", lambda: self.screen.message_now("更新行情数据完成！"), 120)
        self.screen.answer("更新行情数据完成！")

    def open_program(self):
        self.screen = PictureScreen(self.desk.start_program())
        self.frame = self.screen.frame(TITLE)
        self.main = self.screen.window(TITLE)
        self.keyboard = Keyboard(self.screen)
        self.screen.learn_scale(self.frame, self.main)
        self.front()

    def take(self, names):
        """The number of those that could not be taken; they are told of."""
        failed = 0
        for name in names:
            self.name = name
            began = time.monotonic()
            try:
                self.front()
                getattr(self, name)()
                print(f"{name}: {time.monotonic() - began:.1f} s", flush=True)
            except Exception:
                failed += 1
                print(f"{name} failed:\n{traceback.format_exc()}\n{self.screen.describe()}",
                      file=sys.stderr, flush=True)
                self.screen.save(self.folder / f"{name}.failed.png")
                self.close_all()
        return failed

    # What the steps are made of.

    def front(self):
        self.screen.bring_up(self.frame)
        self.screen.wait_until_still(2)

    def shoot(self, place):
        self.screen.wait_until_still()
        self.screen.save(self.folder / f"{self.name}.png", None if self.whole_screen else place)

    def shoot_window(self, client):
        left, top, width, height = self.screen.place_of_frame(client)
        right, bottom = left + width, top + height
        if left < 0 or top < 0 or right > self.screen.width or bottom > self.screen.height:
            print(f"{self.name} leaves the screen: from {left},{top} to {right},{bottom}")
        self.shoot((left, top, width, height))

    def shoot_part(self, left, top, width, height):
        self.shoot((left, top, round(width * self.scale), round(height * self.scale)))

    def close_all(self):
        self.screen.type("Escape")
        for client in self.screen.clients():
            if client.id != self.frame.id:
                self.screen.ask_window_to_close(client)
        self.screen.wait_until_still(2)

    def show(self, action, prepare=lambda window: None):
        """Takes the window that an action opens, once it is in the wanted state."""
        client = self.screen.opened_by(action)
        prepare(self.screen.node_of(client))
        self.shoot_window(client)
        self.screen.close_window(client)

    def menu_window(self, menu, entry, prepare=lambda window: None):
        self.show(lambda: self.screen.choose(self.main, menu, entry), prepare)

    def cell_of_theme(self, theme=THEME):
        """All themes, with this one chosen."""
        self.screen.type("F5")
        self.screen.wait_until_still(3)
        themes = self.screen.grid(self.main, "主题表")
        row = themes.column(1).index(theme)
        self.screen.click(themes.cell(0, 1))
        self.screen.type(*["Down"] * row)
        self.screen.wait_until_still(3)
        return themes.cell(row, 1)

    def cell_of_stock(self, theme=THEME):
        self.cell_of_theme(theme)
        return self.screen.grid(self.main, "个股表").cell(3, 2)

    def theme_window(self, entry, prepare=lambda window: None, theme=THEME):
        cell = self.cell_of_theme(theme)
        self.show(lambda: self.screen.pick(cell, RIGHT, entry), prepare)

    def stock_window(self, entry, prepare=lambda window: None, theme=THEME):
        cell = self.cell_of_stock(theme)
        self.show(lambda: self.screen.pick(cell, RIGHT, entry), prepare)

    def until_says(self, window, text, seconds=60):
        self.screen.wait(f"the words {text}", lambda: says(window, text), seconds)

    def until_usable(self, window, button, seconds=60):
        self.screen.wait(f"{button} to be usable", lambda: self.is_usable(window, button), seconds)

    def is_usable(self, window, button):
        node = self.screen.control_now(window, "button", button)
        return node and node.get_state_set().contains(Atspi.StateType.SENSITIVE)

    def until_progress(self, window, bar, percent):
        def passed():
            value = self.screen.control(window, "progress bar", bar).get_value_iface()
            return (value.get_current_value() - value.get_minimum_value()) * 100 >= percent * (
                value.get_maximum_value() - value.get_minimum_value())
        self.screen.wait(f"{percent} % of {bar}", passed, 120)

    def turn_to(self, window, page):
        self.screen.click(self.screen.control(window, "page tab", page))

    def hide_home(self, field):
        write(field, text_of(field).replace(str(self.desk.folder / "home"), SHOWN_HOME))

    # The main window.

    def form2(self):
        self.cell_of_theme()
        self.shoot_window(self.frame)

    def form2_all(self):
        self.screen.choose(self.main, "主题(Z)", "行情列表")
        self.shoot_window(self.frame)

    def form2_left(self):
        self.screen.menu(self.cell_of_theme(), RIGHT)
        left, top, _, _ = self.screen.place(self.screen.control(self.main, "table", "主题表"))
        self.shoot_part(left, top - round(30 * self.scale), 640, 520)
        self.screen.type("Escape")

    def form2_right(self):
        self.screen.menu(self.cell_of_stock(), RIGHT)
        left, top, _, _ = self.screen.place(self.screen.control(self.main, "table", "个股表"))
        self.shoot_part(left, top, 760, 500)
        self.screen.type("Escape")

    def picker(self):
        self.cell_of_theme()
        field = self.screen.control(self.main, "text", "代码")
        self.screen.click_twice(field)
        self.screen.type(*"zx")
        left, top, _, _ = self.screen.place_of_frame(self.frame)
        self.shoot_part(left, top, 620, 330)
        self.screen.type("Escape")
        self.screen.fill(self.main, "代码", "")
        self.screen.type("Escape")

    def finder(self):
        def find(window):
            self.screen.fill(window, "要找的股票、主题或命令", "zx")
            found = self.screen.control(window, "list", "找到的")
            self.screen.wait("what was found", lambda: found.get_child_count() > 9)
        self.menu_window("主题(Z)", "快速查找", find)

    def undo(self):
        cell = self.cell_of_theme()
        self.screen.pick(cell, RIGHT, "删除主题")
        self.screen.answer("确实要删除主题")
        self.screen.answer("完成!")
        self.screen.menu(self.screen.control(self.main, "menu item", "主题(Z)"), LEFT)
        self.shoot_window(self.frame)
        self.screen.type("Escape", "Escape")
        self.screen.press(self.main, "撤消删除")

    # Themes and stocks.

    def form6(self):
        self.theme_window("添加编辑主题")

    def form22(self):
        self.stock_window("所属全部主题")

    def form30(self):
        self.menu_window("主题(Z)", "自选股")

    def watch_paste(self):
        stocks = self.screen.grid(self.main, "个股表")
        self.cell_of_theme("保险")
        self.screen.click(stocks.cell(0, 2))
        for keys in ("Escape", "Shift+Down", "Shift+Down", "Ctrl+c"):
            self.keyboard.press(keys)

        def paste(window):
            self.screen.click(self.screen.control(window, "page tab", "长线"))
            self.screen.control(window, "table", "自选股列表").get_component_iface().grab_focus()
            self.keyboard.press("Ctrl+v")
            self.screen.wait("what was pasted", lambda: self.screen.message_now("添加了"))
        watched = self.screen.opened_by(lambda: self.screen.choose(self.main, "主题(Z)", "自选股"))
        paste(self.screen.node_of(watched))
        self.shoot_window(watched)
        self.screen.answer("添加了")
        self.screen.close_window(watched)

    def form38(self):
        self.menu_window("主题(Z)", "热力图", lambda window: self.screen.wait(
            "the themes", lambda: not says(window, "全部主题　0 个")))

    def review_window(self):
        self.menu_window("主题(Z)", "今日复盘", lambda window: self.screen.wait(
            "the themes", lambda: not says(window, "正在读取复盘…")))

    def theme_page(self):
        self.theme_window("主题页", lambda window: self.screen.wait(
            "its gains", lambda: not says(window, "正在读取历史涨幅…")), "光伏")

    def form21(self):
        self.stock_window("当前行情", lambda window: self.until_says(window, "交易时段内每4秒更新"))

    def form36(self):
        self.stock_window("K线图", lambda window: self.until_says(window, "共 "))

    def form11(self):
        self.stock_window("F10资料")

    # Monitors.

    def form4(self):
        self.menu_window("行情(H)", "监控管理")

    def form7(self):
        def fill(window):
            self.screen.fill(window, "报警值", "5")
            self.screen.fill(window, "音乐提示", SOUND)
        self.stock_window("添加个股监控", fill, "保险")

    def form8(self):
        def fill(window):
            self.screen.fill(window, "报警值", "2")
            self.screen.fill(window, "音乐提示", SOUND)
        self.theme_window("添加主题监控", fill, "保险")

    # Articles.

    def form27(self):
        self.menu_window("文章(W)", "文章管理器")

    def form26(self):
        manager = self.screen.opened_by(
            lambda: self.screen.choose(self.main, "文章(W)", "文章管理器"))
        window = self.screen.node_of(manager)
        articles = self.screen.grid(window, "文章列表")
        self.screen.wait("the articles", lambda: articles.column(1))
        self.screen.click(articles.cell(1, 1))
        self.show(lambda: self.screen.press(window, "打开"))
        self.screen.close_window(manager)

    # Data.

    def export(self):
        box = self.screen.opened_by(lambda: self.screen.choose(self.main, "数据(S)", "导出数据"))
        window = self.screen.node_of(box)
        self.hide_home(next(it for it in walk(window) if role_of(it) == "text"))
        self.shoot_window(box)
        self.screen.press(window, "取消")
        self.screen.answer("已取消导出数据!")

    def form3(self):
        def fill(window):
            self.screen.fill(window, "主题库文件", f"{SHOWN_HOME}/导出主题/zhutibackup.ztb")
            self.screen.fill(window, "文本文件", str(self.desk.exports / "主题投资.txt"))
            self.screen.press(window, "预   览")
            self.screen.wait("the preview", lambda: self.screen.grid(
                window, "第一行的预览").column(1))
            self.hide_home(self.screen.control(window, "text", "文本文件"))
        self.menu_window("数据(S)", "导入主题", fill)

    def form_restore(self):
        copies = self.desk.application / "备份"
        wait("the day's copy", (copies / DAY).exists)
        shutil.copytree(copies / DAY, copies / "2026-11-24", dirs_exist_ok=True)
        for it in copies.rglob("*"):
            os.utime(it, (COPIED, COPIED))
        self.menu_window("数据(S)", "恢复…")

    # The heat of the web.

    def ranked(self, window, table):
        self.screen.press(window, "显示排名")
        self.screen.wait_until_still(3)
        rows = self.screen.grid(window, table)
        return self.screen.wait("the ranking", lambda: rows.cell(3, 2))

    def ranking(self, entry, table):
        def rank(window):
            self.screen.click(self.ranked(window, table))
        self.menu_window("网络热度(R)", entry, rank)

    def form25(self):
        self.ranking("新闻数量分析", "新闻数量排名")

    def form31(self):
        self.ranking("公司新闻数量分析", "新闻数量排名")

    def heat_window(self, prepare=lambda window: None):
        def fill(window):
            rows = self.screen.grid(window, "每天的热度")
            self.screen.wait("the map", lambda: rows.cell(3, 2))
            prepare(window)
            self.screen.wait_until_still(3)
        ranking = self.screen.opened_by(
            lambda: self.screen.choose(self.main, "网络热度(R)", "新闻数量分析"))
        self.show(lambda: self.screen.press(self.screen.node_of(ranking), "热度图"), fill)
        self.screen.close_window(ranking)

    def heat_map(self):
        self.heat_window()

    def heat_scatter(self):
        self.heat_window(lambda window: self.turn_to(window, "新闻和涨幅"))

    def headlines(self):
        ranking = self.screen.opened_by(
            lambda: self.screen.choose(self.main, "网络热度(R)", "新闻数量分析"))
        window = self.screen.node_of(ranking)
        cell = self.ranked(window, "新闻数量排名")
        self.show(lambda: self.screen.pick(cell, RIGHT, "查看新闻标题"))
        self.screen.close_window(ranking)

    def form29(self):
        self.ranking("商品价格监控", "商品涨跌排名")

    def form5(self):
        ranking = self.screen.opened_by(
            lambda: self.screen.choose(self.main, "网络热度(R)", "商品价格监控"))
        window = self.screen.node_of(ranking)
        cell = self.ranked(window, "商品涨跌排名")
        self.show(lambda: self.screen.pick(cell, RIGHT, "修改商品"))
        self.screen.close_window(ranking)

    def collector(self):
        ranking = self.screen.opened_by(
            lambda: self.screen.choose(self.main, "网络热度(R)", "新闻数量分析"))
        collector = self.screen.opened_by(
            lambda: self.screen.press(self.screen.node_of(ranking), "采集"))
        program = self.screen.program_of(collector)
        items = self.screen.grid(program, "采集项目列表")
        self.screen.wait("some items", lambda: items.column(2).count("已写入") >= 8, 60)
        self.shoot_window(collector)
        subprocess.run(["kill", str(program.get_process_id())], check=True)
        self.screen.close_window(ranking)

    # Tools.

    def form28(self):
        self.menu_window("工具(G)", "设置代理服务器", lambda window: self.screen.click(next(
            it for it in children(self.screen.control(window, "list", "代理服务器列表"))
            if is_shown(it))))

    def form34(self):
        def test(window):
            self.screen.press(window, "测试各个网站")
            self.screen.wait("the tests to begin",
                             lambda: not self.is_usable(window, "测试各个网站"))
            self.until_usable(window, "测试各个网站")
            self.screen.click(self.screen.grid(window, "各个网站").cell(0, 1))
        self.menu_window("工具(G)", "行情来源", test)

    def diagnosis(self):
        def collect(window):
            self.until_says(window, "收集完了")
            self.screen.type("Next", "Next")
        self.menu_window("帮助(B)", "诊断…", collect)

    # Research.

    def form24(self):
        def compare(window):
            self.screen.press(window, "开始对比")
            self.until_says(window, "主题总涨幅")
        self.theme_window("历史涨幅", compare)

    def form24_weeks(self):
        def rank(window):
            self.screen.press(window, "全部主题")
            self.until_says(window, "算，不下载。")
            self.turn_to(window, "每周轮动")
        self.theme_window("历史涨幅", rank)

    def form12(self):
        def search(window):
            self.screen.press(window, "选历年主题")
            self.screen.wait("the scan to begin", lambda: not self.is_usable(window, "选历年主题"))
            self.until_usable(window, "选历年主题", 600)
            self.screen.fill(window, "搜索条件", " and 题材涨>0 and 涨停数>总个数/4+2 and 股涨幅>9.5 "
                             "and 量比>0 and 开盘涨<2")
            self.screen.press(window, "搜索")
            self.screen.wait("the score", lambda: text_of(
                self.screen.control(window, "text", "统计")).startswith("总次数"))
        self.menu_window("主题(Z)", "题材历史分析", search)

    def form32(self):
        def fill(window):
            self.screen.press(window, "补全历史行情")
            self.until_progress(window, "补全进度", 5)
        self.menu_window("工具(G)", "历史行情", fill)
        self.screen.choose(self.main, "工具(G)", "历史行情")
        window = self.screen.window("历史行情")
        self.screen.press(window, "停止补全")
        self.until_usable(window, "补全历史行情")
        self.screen.close_window(self.screen.frame("历史行情"))

    def form37(self):
        def run(window):
            self.screen.press(window, "运行")
            self.until_says(window, "累计", 120)
        self.menu_window("工具(G)", "回测实验室", run)

    def form37_sweep(self):
        def sweep(window):
            self.turn_to(window, "扫描")
            self.screen.click(self.screen.control(window, "combo box", "不扫"))
            self.screen.type(*["Down"] * 4, "Return")
            self.screen.press(window, "扫描")
            self.screen.wait("the sweep to begin", lambda: not self.is_usable(window, "扫描"))
            self.until_usable(window, "扫描", 600)
        self.menu_window("工具(G)", "回测实验室", sweep)

    def alarm_banner(self):
        """A theme and a stock cross their values while the user is in another program."""
        other = self.screen.another_program()
        for it in ALARMS:
            self.desk.rows(MAIN, it)
        banner = self.screen.wait("the banner", self.banner_now, 60)
        left, top, width, height = self.screen.place(banner)
        margin = self.screen.width - left - width
        self.shoot((left - 5 * margin, 0, width + 6 * margin, height + 3 * margin))
        other.destroy()
        self.close_all()

    def banner_now(self):
        return next((it for window in self.screen.windows() for it in walk(window)
                     if it.get_name() == "报警提示" and is_shown(it)
                     and "涨幅" in it.get_description()), None)

    def form33(self):
        self.desk.rows(MAIN, SHRINK_THEMES)

        def begin(window):
            self.until_says(window, "同名的主题")
            self.screen.press(window, "至少几只")
            self.screen.press(window, "导入勾选的板块")
            self.until_says(window, "导入完成")
        self.menu_window("主题(Z)", "导入概念板块", begin)

    def form35(self):
        for it in OLD_CODES:
            self.desk.rows(MAIN, it)

        def update(window):
            box = self.screen.control(window, "check box", "也要北交所的股票")
            box.get_action_iface().do_action(0)
            self.screen.press(window, "开始更新代码表")
            self.until_says(window, "更新完成。", 120)
        self.menu_window("行情(H)", "更新代码表", update)

    def start_page(self):
        """Outside of the practice all can be chosen. The last one: the program starts anew."""
        self.desk.leave_practice()
        self.open_program()
        self.menu_window("帮助(B)", "开始使用…")
