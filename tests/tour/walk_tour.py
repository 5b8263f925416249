"""walk_tour.py DATA STORE_QUERY PREPARE_STORES PRACTICE_MARKET GUANCHAOTAI PRACTICE_HISTORY COLLECTOR
SCREEN SCALE COLOURS

Every window of the real program by the keyboard alone, with what assistive tools are told of it: keys open
it, it lies on the screen as a whole, Tab goes round all its controls, each tells its role, name and value,
and Esc gives the keys back to the window from which it was opened."""

import os
import sys

from desk import DAY, TourFailure, add_program, wait
from framed_screen import FramedScreen
from journey import MAIN, Journey, check, travel
from keyboard import Keyboard, control_of, window_of
from screen import Atspi, GLib, children, is_shown, role_of, says
from told_controls import complaints, has_focus, shown_parts, takes_keys, told

TITLE = "观潮台(V3.7)"
ARTICLES = "wenzhang.mzdat"
SERVICES = ("quote sina, history sina, factors sina, fundamentals sina, boards sina, stocklist sina, chart, "
            "stockpage, sitepage, newspage, vendor, search")

CONTENTS = {
    MAIN: ["insert into zhutijiankong values('保险',8.0,'>',2.0,5,null,1,'')",
           "insert into gegujiankong values('SH601319','中国人保',6.72,8.04,'涨幅','>',99,null,1,'')",
           "insert into zixuangu select dm,jc from dzhzhuti where zhutiname='保险'",
           "insert into zixuanzu values('短线')"],
    ARTICLES: ["insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong) values"
               f"('{DAY}','甲','主题','保险','三季报汇总','逐家列出。')"],
}


# The ways to a window, and what is done in it: each is keys in the window that has them.

def keys(it):
    return lambda walk, window: walk.keyboard.press(it)


def menu(letter, entry):
    return lambda walk, window: walk.keyboard.menu(letter, entry)


def row_menu(table, entry):
    return lambda walk, window: walk.keyboard.row_menu(window, table, entry)


def button(name):
    return lambda walk, window: walk.press_button(window, name)


def row(table, key="Return"):
    return lambda walk, window: walk.press_on_row(window, table, key)


def words(text):
    return lambda walk, window: walk.screen.wait(f"the words {text}", lambda: says(window, text))


def plot(name, day):
    """Left tells the last day, and Left again the one before it."""
    def told_days(walk, window):
        node = walk.screen.control(window, "chart", name)
        walk.screen.wait("the last day", lambda: node.get_description().startswith(day))
        last = node.get_description()
        walk.keyboard.focus(window, "chart", name)
        walk.keyboard.press("Left")
        walk.keyboard.press("Left")
        walk.screen.wait("another day", lambda: node.get_description() not in ("", last))
    return told_days


def hears(key, role):
    """The key moves what a screen reader tells to a part of that role."""
    def heard(walk, window):
        if not walk.keyboard.move(key, lambda it: role_of(it) == role):
            raise TourFailure(f"{key} in {window.get_name()} tells of no {role}")
    return heard


RANKED = [button("显示排名"), row("新闻数量排名"), plot("历史新闻数量图", DAY)]

# How its title begins, the way there, what is done in it, and the windows that open from it.
WINDOWS = [
    ("快速查找", keys("Ctrl+k"), [keys("g"), hears("Down", "list item")], []),
    ("添加主题", row_menu("主题表", "添加编辑主题"), [], []),
    ("添加主题监控", row_menu("主题表", "添加主题监控"), [], []),
    ("主题历史涨幅与大盘对比", row_menu("主题表", "历史涨幅"),
     [button("开始对比"), words("主题总涨幅("), plot("累计涨幅图", "2026-11-")], []),
    ("分时行情", row_menu("个股表", "当前行情"), [words("交易时段内每4秒更新")], []),
    ("K线图", row("个股表", "F6"), [words("历史行情服务 新浪"), plot("K线图", "2026-11-")], []),
    ("", row_menu("个股表", "所属全部主题"), [], []),
    ("添加个股监控", row_menu("个股表", "添加个股监控"), [], []),
    ("题材选股", menu("z", "题材历史分析"), [], []),
    ("导入概念板块", menu("z", "导入概念板块"), [words("同名的主题")], []),
    ("热力图", menu("z", "热力图"), [words(" 只　成交额"), hears("Right", "list item")], []),
    ("今日复盘", menu("z", "今日复盘"), [words("收盘")], []),
    ("主题页", row_menu("主题表", "主题页"), [words("5日")], []),
    ("自选股", menu("z", "自选股"), [], []),
    ("监控管理", menu("h", "监控管理"), [], []),
    ("更新代码表", menu("h", "更新代码表"), [words("代码表里有")], []),
    ("文章管理器", menu("w", "文章管理器"), [], [("文章编辑和浏览", button("新建"), [], []),
      ("文章编辑和浏览", row("文章列表"), [], [])]),
    ("导出数据", menu("s", "导出数据"), [], []),
    ("导入主题", menu("s", "导入主题"), [], []),
    ("恢复", menu("s", "恢复…"), [], []),
    ("主题新闻数量分析", menu("r", "新闻数量分析"), RANKED,
     [("新闻标题", row_menu("新闻数量排名", "查看新闻标题"), [], []),
      ("主题热度图", button("热度图"),
       [hears("Down", "table cell"), keys("Ctrl+Tab"), words("涨幅")], []),
      ("主题新闻", button("采集"), [], [])]),
    ("公司新闻数量分析", menu("r", "公司新闻数量分析"), RANKED, []),
    ("商品价格监控", menu("r", "商品价格监控"), [button("显示排名"), row("商品涨跌排名"), plot("历史涨跌情况图", DAY)],
     [("添加商品", row_menu("商品涨跌排名", "添加商品"), [], [])]),
    ("历史行情", menu("g", "历史行情"), [], []),
    ("回测实验室", menu("g", "回测实验室"), [], []),
    ("行情来源", menu("g", "行情来源"), [], []),
    ("设置代理服务器", menu("g", "设置代理服务器"), [], []),
    ("开始使用", menu("b", "开始使用…"), [words("软件使用说明.html")], []),
    ("诊断", menu("b", "诊断…"), [words("收集完了")], []),
    ("开始使用", menu("b", "开始使用…"), [button("实盘"), words("只补没有读到的")], []),
    ("", menu("b", "关于"), [], []),
]


def windows_of(program):
    """One that is just ending has none."""
    try:
        program.set_cache_mask(Atspi.Cache.NONE)
        return [it for it in children(program) if is_shown(it)]
    except GLib.Error:
        return []


class WalkTour(Journey):
    def __init__(self, desk):
        super().__init__(desk)
        self.found = []
        self.steps = [self.start, self.walk_the_main_window, self.walk_all_others, self.tell_what_is_wrong]

    def set_up(self):
        super().set_up()
        self.desk.start_window_manager()
        add_program(self.desk.collector, self.desk.application / "caijiqi")
        self.desk.set_services({self.desk.market.host: SERVICES})
        for store, statements in CONTENTS.items():
            for it in statements:
                self.desk.rows(store, it)

    def start(self):
        self.screen = FramedScreen(self.desk.start_program())
        self.main = self.screen.window(TITLE)
        self.keyboard = Keyboard(self.screen)
        self.screen.bring_up(self.screen.frame(TITLE))
        self.keyboard.wait_for_focus(lambda it: window_of(it) == self.main)
        self.keyboard.press("F9")
        self.screen.wait("the quotes", lambda: self.screen.message_now("更新行情数据完成！"))
        self.keyboard.move("Return", lambda it: window_of(it) == self.main)
        self.press_on_row(self.main, "主题表", "Return")

    def walk_the_main_window(self):
        self.walk(self.main)

    def walk_all_others(self):
        self.open_each(self.main, WINDOWS)

    def tell_what_is_wrong(self):
        check("what is wrong", "\n".join(self.found), "")

    def open_each(self, opener, windows):
        for title, way, uses, inner in windows:
            window = self.opened(opener, title, way)
            for use in uses:
                use(self, window)
            self.walk(window)
            self.open_each(window, inner)
            self.leave(window, opener)

    def opened(self, opener, title, way):
        before = self.windows()
        way(self, opener)
        window = self.screen.wait(f"the window {title}", lambda: next(
            (it for it in self.windows() if it not in before and it.get_name().startswith(title)
             and role_of(it) in ("dialog", "alert", "frame")), None))
        if not self.keyboard.wait_for_focus(lambda it: window_of(it) == window):
            raise TourFailure(f"{window.get_name()} opens without the keys")
        self.look_where_it_lies(window)
        return window

    def look_where_it_lies(self, window):
        """A frame is put where it stays a little after its window shows, and its title may change too."""
        frame = self.screen.wait("the frame", lambda: self.screen.client_now(window.get_name()))
        screen = (self.screen.width, self.screen.height)

        def lies_on_the_screen():
            left, top, width, height = self.screen.place_of_frame(frame)
            return left >= 0 and top >= 0 and left + width <= screen[0] and top + height <= screen[1]
        try:
            wait("it lies on the screen", lies_on_the_screen, 2)
        except TourFailure:
            place = self.screen.place_of_frame(frame)
            self.found.append(f"{window.get_name()}: at {place} on a screen of {screen}")

    def windows(self):
        """Those of the collector too, which is a program of its own."""
        return [window for it in children(Atspi.get_desktop(0)) for window in windows_of(it)]

    def leave(self, window, opener, key="Escape"):
        """What Esc brings up, a question or a message, is answered with its default."""
        name = window.get_name()
        at = self.keyboard.move(key, lambda it: window_of(it) != window)
        told = at and window_of(at)
        if told and told != opener and role_of(told) == "alert":
            self.walk(told)
            self.leave(told, opener, "Return")
        elif told != opener:
            raise TourFailure(f"{key} in {name} doesn't give the keys back to {opener.get_name()}")
        check(f"{name} after {key}", window in self.windows(), False)

    def walk(self, window):
        name = window.get_name()
        reached = self.tab_round()
        self.found += [f"{name}: Tab doesn't reach {told(it)}" for it in self.missed(window, reached)]
        self.found += [f"{name}: {it}" for it in complaints(window)]

    def tab_round(self):
        """The controls from the one with the focus round to it again, or to where Tab goes no further."""
        reached = []
        at = control_of(self.keyboard.focused)
        while at and at not in reached:
            reached.append(at)
            at = self.next_after(at)
        return reached

    def next_after(self, control):
        """A link has the focus twice: as a control, and as the link in its text."""
        for _ in range(2 if role_of(control) == "link" else 1):
            moved = self.keyboard.move("Tab", lambda it: control_of(it) != control, 0.5)
            if moved:
                return control_of(moved)
        return None

    def missed(self, window, reached):
        """Tab leaves a control that is alone where it is. Of the buttons of a group and of tabs the chosen
        one is enough; arrows lead to the others."""
        grouped = ("radio button", "page tab")
        groups = [it.get_parent() for it in reached if role_of(it) in grouped]
        return [it for it in shown_parts(window) if takes_keys(it) and it not in reached
                and not has_focus(it) and not (role_of(it) in grouped and it.get_parent() in groups)]

    def press_button(self, window, name):
        self.keyboard.focus(window, "button", name)
        self.keyboard.press("space")

    def press_on_row(self, window, table, key):
        """On its first row, once there are rows."""
        self.screen.wait(f"rows of {table}", lambda: self.screen.grid(window, table).rows() > 0)
        self.keyboard.focus(window, "table", table)
        self.keyboard.press("Home")
        self.keyboard.press(key)


*programs, size, scale, colours = sys.argv[1:]
os.environ["QT_SCALE_FACTOR"] = scale
sys.exit(travel(WalkTour, programs, ["openbox"], screen=size, light=colours == "light"))
