"""roads.py practise | live | before | upgrade

A newcomer's road through the installed program: as the entries of the program menu start it, in the home
folder of whoever runs this. tools/try_roads goes them all in bare roots. Practise and live begin in a new
home; before is a day with the former package on a kept folder, upgrade the next with the new one.
"""

import configparser
import csv
import os
import signal
import sqlite3
import sys
from pathlib import Path

from desk import DAY, IN_SESSION, Desk, Market, TourFailure, as_key, children_of, wait
from journey import MAIN, Journey, check, go
from screen import Screen, says

ENTRY = "/usr/share/applications/guanchaotai.desktop"
SEEDS = Path("/usr/share/guanchaotai-lianxi")
PRACTICE_MARKET = "/usr/lib/guanchaotai/practice/practice_market"
DATA = Path.home() / ".local/share"

# What the seeds of the package lack.
NEWCOMERS = [(f"SH6055{number}", f"新来{number}") for number in range(10, 50)]
NEW_THEME = "刚有的题材"
SERVICES = ("quote sina, quote.2 tencent, boards sina, boards.2 eastmoney, stocklist sina, "
            "stocklist.2 eastmoney, newspage, chart, stockpage")


class Installed(Desk):
    """The real program on the files of the package."""

    def __init__(self, folder):
        super().__init__(SEEDS, None, None, PRACTICE_MARKET, None)
        self.home = Path.home()
        self.application = DATA / folder

    def prepare_surroundings(self):
        super().prepare_surroundings()
        os.environ["HOME"] = str(self.home)

    def start_entry(self, section):
        """What the menu starts, and the program that comes of it: itself, or a child of its starter."""
        entry = configparser.ConfigParser(interpolation=None)
        entry.read(ENTRY)
        self.starter = self.start(entry[section]["Exec"], **self.clock)
        self.program = self.starter
        if not is_program(self.starter.pid):
            wait("the starter to bring the program", self.brought, 60)
        return self.program

    def brought(self):
        if self.starter.poll() is not None:
            raise TourFailure(f"the starter ended with {self.starter.returncode}")
        if is_program(self.starter.pid):
            return True
        child = next(filter(is_program, children_of(self.starter.pid)), None)
        if child:
            self.program = Child(child, self.starter)
        return child

    def rows(self, file, statement):
        with sqlite3.connect(f"file:{self.application / file}?mode=ro", uri=True) as store:
            return [["" if it is None else str(it) for it in row] for row in store.execute(statement)]

    def said(self):
        return "".join(f"{it.name}: {it.read_text()}" for it in self.folder.glob("*.log"))


class Child:
    """Ends when its starter does, which waits for it."""

    def __init__(self, pid, starter):
        self.pid = pid
        self.poll = starter.poll

    @property
    def returncode(self):
        return self.poll()


class Detached:
    """A program that nobody here has started."""

    def __init__(self, pid):
        self.pid = pid

    def poll(self):
        return None if image(self.pid) else 0


class Road(Journey):
    entry = "Desktop Entry"
    folder = "guanchaotai"

    def set_up(self):
        self.desk.prepare_surroundings()
        self.prepare()

    def prepare(self):
        pass

    def start(self):
        self.desk.start_program = lambda: self.desk.start_entry(self.entry)
        self.start_program()
        wait("the day's copy", (self.desk.application / "备份" / DAY).exists)


class Practise(Road):
    entry = "Desktop Action lianxi"
    folder = "guanchaotai-lianxi"

    def __init__(self, desk):
        super().__init__(desk)
        self.steps = [self.start, self.read_the_band, self.fetch_quotes, self.start_again,
                      self.close_the_program, self.find_no_trace]

    def read_the_band(self):
        self.wait_for_words(self.main, "练习行情：价格都是编造的，和真实的市场无关")

    def start_again(self):
        """A second click shows the window that is there, and leaves its market alone."""
        port = (self.desk.application / "practice_market.port").read_text()
        again = self.desk.start("guanchaotai-lianxi", **self.desk.clock)
        wait("the second start to end", lambda: again.poll() is not None)
        check("its exit code", again.returncode, 0)
        check("the market", (self.desk.application / "practice_market.port").read_text(), port)
        self.fetch_quotes()

    def find_no_trace(self):
        wait("the market to end", lambda: not any(map(is_market, processes())))
        check("the live folder", (DATA / "guanchaotai").exists(), False)


class Live(Road):
    def __init__(self, desk):
        super().__init__(desk)
        self.page = None
        self.steps = [self.start, self.see_no_band, self.begin, self.practise_beside, self.fill,
                      self.fetch_quotes, self.close_the_program]

    def prepare(self):
        """Services of the kinds of the public ones, with more stocks and a theme than the package has."""
        lists = self.desk.folder / "lists"
        lists.mkdir()
        for name, more in (("codes", NEWCOMERS), ("themes", [
                (NEW_THEME, code, 10, 10) for code, _ in NEWCOMERS])):
            with open(lists / f"{name}.csv", "w") as out:
                out.write((SEEDS / f"{name}.csv").read_text())
                csv.writer(out, lineterminator="\n").writerows(more)
        self.desk.data = lists
        market = Market(self.desk, **IN_SESSION)
        self.desk.application.mkdir(parents=True)
        self.desk.set_services({market.host: SERVICES})

    def see_no_band(self):
        check("the band of the practice", self.screen.control_now(
            self.main, "label", "练习行情：价格都是编造的，和真实的市场无关"), None)

    def begin(self):
        self.screen.choose(self.main, "帮助(B)", "开始使用…")
        self.page = self.screen.window("开始使用")

    def practise_beside(self):
        """It has a folder and a window of its own, and goes without a trace here."""
        self.screen.press(self.page, "练习")
        practice = DATA / "guanchaotai-lianxi/guanchaotai"
        pid = wait("the practice", lambda: next(
            (it for it in processes() if image(it) == str(practice)), None), 60)
        screen = Screen(Detached(pid))
        band = screen.window("观潮台(V3.7)")
        screen.wait("the band", lambda: says(band, "练习行情：价格都是编造的，和真实的市场无关"))
        os.kill(pid, signal.SIGTERM)
        wait("the practice to end", lambda: not image(pid))

    def fill(self):
        self.screen.press(self.page, "实盘")
        self.screen.press(self.page, "开始填")
        self.screen.wait("the end of the fill", lambda: says(
            self.page, "接下来关闭这个窗口，按 F9 更新行情。"), 60)
        names = ",".join(f"'{code}'" for code, _ in NEWCOMERS)
        self.expect(MAIN, f"select dm,jc from dmb where dm in ({names}) order by dm",
                    *map(list, NEWCOMERS))
        self.expect(MAIN, f"select dm from dzhzhuti where zhutiname='{NEW_THEME}' order by dm",
                    *([code] for code, _ in NEWCOMERS))
        self.screen.close("开始使用")


class Before(Road):
    """The former package has worked in this folder."""

    def __init__(self, desk):
        super().__init__(desk)
        self.steps = [self.start, self.close_the_program]

    def prepare(self):
        """Its user has been asked about the code table, and leaves it as it is."""
        (self.desk.application / "界面.ini").write_text(
            f"[{as_key('代码表')}]\n{as_key('已问过')}=true\n")


class Upgrade(Road):
    def __init__(self, desk):
        super().__init__(desk)
        self.themes = self.desk.rows(MAIN, "select distinct zhutiname from dzhzhuti order by 1")
        self.steps = [self.start, self.see_the_themes, self.lose_a_theme,
                      self.take_the_newest_copy_back, self.see_the_themes, self.close_the_program]

    def see_the_themes(self):
        wanted = [row[0] for row in self.themes]
        self.screen.wait(f"the themes {wanted}", lambda: sorted(
            self.screen.grid(self.main, "主题表").column(1)) == sorted(wanted))

    def lose_a_theme(self):
        theme = self.screen.grid(self.main, "主题表").cell(0, 1)
        name = theme.get_name()
        self.screen.pick(theme, 3, "删除主题")
        self.screen.answer(f"确实要删除主题'{name}'吗?")
        self.screen.answer(f"删除主题'{name}'完成!")
        self.expect(MAIN, f"select count(*) from dzhzhuti where zhutiname='{name}'", ["0"])


def processes():
    return [int(it.name) for it in Path("/proc").glob("[0-9]*")]


def image(pid):
    try:
        return os.readlink(f"/proc/{pid}/exe")
    except OSError:
        return ""


def is_program(pid):
    return Path(image(pid)).name == "guanchaotai"


def is_market(pid):
    return image(pid) == PRACTICE_MARKET


ROADS = {"practise": Practise, "live": Live, "before": Before, "upgrade": Upgrade}

if __name__ == "__main__":
    road = ROADS[sys.argv[1]]
    desk = Installed(road.folder)
    try:
        sys.exit(go(road(desk)))
    finally:
        desk.clear()
