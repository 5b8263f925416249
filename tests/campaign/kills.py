"""Operations of the program and the collector are killed at any moment. Afterwards each store is
whole, has every row that the operation leaves alone, and of the operation all or nothing in each
unit; the next run gives what it would have given without the kill."""

import math
import random
import shutil
import time
from collections import Counter
from pathlib import Path

from practice import Practice, TourFailure

TITLE = "随时杀掉"
KILLS = 1000
SEED = 20261126
MOST_TOLD = 3

THEME = "白酒"
COMMODITY = "铜"

MOST_WATCHED = ("caijiqi.mzdat", "update canshu set guanzhudu=19")

# What is written at once: all that is in a folder, a file, a table or a row.
FOLDER, FILE, TABLE, ROW = "folder", "file", "table", "row"

# The Chinese words, the operation, its unit, and what comes before it on a fresh folder: operations
# and statements on a store. One that ends where it began has a first half, too.
OPERATIONS = [
    ("更新全部行情", ["quotes"], ROW, []),
    ("监控一轮", ["poll"], TABLE, []),
    ("导出数据", ["export", "{exports}/"], FILE, []),
    ("导入主题库", ["import_library", "{given}/zhutibackup.ztb"], FOLDER, [["remove"]]),
    # The time behind the themes is a write of its own: here it is there already.
    ("导入文本主题", ["import_text", "{given}/themes.txt"], TABLE,
     [["remove"], ["import_text", "{given}/themes.txt"], ["remove"]]),
    ("导入文章", ["import_articles", "{given}/wenzhang.ztb"], FOLDER,
     [("wenzhang.mzdat", "delete from wenzhang")]),
    ("导入新闻和商品", ["import_news", "{given}/caijiqi.ztb"], TABLE,
     [("caijiqi.mzdat", f"delete from {it}") for it in ("xinwenshul", "shophq", "shopname")]),
    ("导入地区板块", ["import_boards"], ROW, []),
    ("更新代码表", ["update_codes"], FOLDER, [
        ("dzhzhuti.mzdat", "update dmb set jc='旧名' where dm like 'SZ%'"),
        ("dzhzhuti.mzdat", "update dmb set dm='SH609'||substr(dm,6) where dm like 'SH60000%'")]),
    ("每日备份", ["copy"], FOLDER, []),
    ("恢复备份", ["restore", "2026-11-24"], FOLDER, [["copy"], ["remove"], ["article", "三"]]),
    ("接管文件夹", ["take_over", "{given}/earlier"], FOLDER, [["remove"]]),
    ("删除所有主题", ["remove"], FOLDER, []),
    # What is removed can't be taken back by another process.
    ("删除后撤消", ["undo"], FOLDER, [], ["remove"]),
    ("选历年主题", ["scan"], ROW, []),
    ("主题与大盘对比", ["history", THEME], ROW, []),
    ("添加文章", ["article", "四"], FOLDER, []),
    ("修改文章", ["change_article", "1"], FOLDER, []),
    ("文章草稿", ["draft", "乙"], FOLDER, []),
    ("添加主题", ["theme", "新题", "sh600000,sz000001"], FOLDER, []),
    ("修改主题名称", ["rename", THEME, "黄酒"], ROW, []),
    ("改名后撤消", ["undo_rename", THEME, "黄酒"], ROW, [], ["rename", THEME, "黄酒"]),
    ("记下主题的一天", ["day_book"], FOLDER, [
        ("dzhzhuti.mzdat", "update dmb set sp=10"),
        ("dzhzhuti.mzdat", "update tempcanshu set hqtime='2026-11-23 15:30:00'")]),
    ("修改关注度", ["attention", THEME, "7"], FOLDER, []),
    ("删除主题", ["remove_theme", THEME], FOLDER, []),
    ("加自选股", ["watch", "SH600001"], FOLDER, []),
    ("导入板块文件", ["import_block", "{given}/blocks.EBK"], FOLDER, []),
    ("移动自选股", ["move_watched", "SH600519,SZ000001"], FOLDER, []),
    ("添加监控", ["monitor", "银行"], TABLE, []),
    ("清空监控", ["clear_monitors"], FOLDER, []),
    ("添加商品", ["commodity", "新商品"], FOLDER, []),
    ("删除商品", ["remove_commodity", COMMODITY], FOLDER, []),
    ("下载代理列表", ["proxies"], FOLDER, []),
    ("采集主题新闻", ["caijiqi", "zhuti"], ROW, []),
    ("采集商品", ["caijiqi", "shop"], ROW, []),
    ("采集公司新闻", ["caijiqi", "gongsi"], ROW, [MOST_WATCHED]),
    ("采集代码表", ["caijiqi", "gengxindmb"], ROW, []),
]


def run(tools, share):
    with Practice(tools) as practice:
        fill(practice)
        for words, operation, unit, before, *half in OPERATIONS:
            kills = Kills(practice, operation, unit)
            kills.prepare(before, *half)
            times = math.ceil(KILLS * share / len(OPERATIONS))
            yield {"what": f"{words}：运行中杀掉", "times": times, "broken": kills.carry_out(times)}


def fill(practice):
    """Gives every operation something to change, or a file to import."""
    practice.job("monitor", THEME)
    practice.job("draft", "甲")
    practice.job("export", "{exports}/")
    practice.job("article", "一")
    practice.job("article", "二")
    practice.job("export", "{given}/")
    names = {}
    for line in (practice.data / "themes.csv").read_text().splitlines()[1:]:
        name, code = line.split(",")[:2]
        names.setdefault(code, []).append(name)
    (practice.given / "themes.txt").write_text(
        "".join(f"{code}\t{'、'.join(it)}\r\n" for code, it in names.items()))
    (practice.given / "blocks.EBK").write_text("\r\n1600000\r\n0000001\r\n1600519\r\n")
    practice.collector()
    shutil.copytree(practice.folder, practice.given / "earlier")
    practice.keep("fresh")


class Kills:
    def __init__(self, practice, operation, unit):
        self.practice = practice
        self.operation = operation
        self.unit = unit
        self.random = random.Random(f"{SEED} {operation}")

    def prepare(self, before, half=None):
        """Measures the operation and what it comes to, once and twice."""
        practice = self.practice
        practice.put_back("fresh")
        for it in before:
            if isinstance(it, tuple):
                practice.statement(*it)
            else:
                practice.job(*it)
        practice.keep("begun")
        self.before = practice.state()
        begun = time.monotonic()
        practice.job(*self.operation)
        self.length = time.monotonic() - begun
        self.after = practice.state()
        self.files = practice.files()
        practice.job(*self.operation)
        self.twice = practice.state()
        self.files |= practice.files()
        if half:
            practice.put_back("begun")
            practice.job(*half)
            self.before = self.twice = practice.state()

    def carry_out(self, times):
        broken = []
        kill = 0
        while kill < times:
            moment = self.random.uniform(0, self.length)
            harm, was_killed = self.round(moment)
            kill += was_killed
            if harm:
                broken.append(f"第 {kill} 次（种子 {SEED}，{moment * 1000:.1f} 毫秒）：{harm}")
        left_out = len(broken) - MOST_TOLD
        return broken[:MOST_TOLD] + ([f"还有 {left_out} 次"] if left_out > 0 else [])

    def round(self, moment):
        """What broke, and whether the operation was killed before its end."""
        practice = self.practice
        practice.put_back("begun")
        process = practice.start(*self.operation)
        time.sleep(moment)
        process.kill()
        said = process.communicate()[0].decode(errors="replace")
        try:
            harm = self.harm_of(practice.state(), said)
            practice.job(*self.operation)
            return harm or self.harm_of_next(practice.state()), process.returncode < 0
        except TourFailure as failure:
            return str(failure), True

    def harm_of(self, state, said):
        for key in self.before.keys() | self.after.keys() | state.keys():
            before, after, now = (it.get(key) for it in (self.before, self.after, state))
            if now not in (before, after) and not (self.unit == ROW and is_between(
                    before or Counter(), now or Counter(), after or Counter())):
                return f"{'的'.join(key)}既不是以前的也不是以后的：{difference(before, now, after)}"
        if self.unit in (FOLDER, FILE):
            return self.harm_of_units(state)
        return self.harm_to_told(state, said)

    def harm_of_units(self, state):
        units = {}
        for key in self.before.keys() | self.after.keys():
            before, after, now = (it.get(key) for it in (self.before, self.after, state))
            if before != after:
                path = Path(key[0])
                unit = path.parent if self.unit == FOLDER else path
                units.setdefault(unit, set()).add(now == after)
        torn = [str(it) for it, done in units.items() if len(done) > 1]
        return f"{'、'.join(torn)}只写了一半" if torn else ""

    def harm_to_told(self, state, said):
        """Of the run of quotes: so many stocks were told to be written."""
        told = [int(it.split(":")[1]) for it in said.splitlines() if it.startswith("已更新股票只数:")]
        key = ("application/dzhzhuti.mzdat", "dmb")
        if told and (state[key] & self.after[key]).total() < told[-1]:
            return f"报了 {told[-1]} 只，库里没有这么多"
        return ""

    def harm_of_next(self, state):
        for key in self.after.keys() | self.twice.keys() | state.keys():
            once, twice, now = (it.get(key, Counter()) for it in (self.after, self.twice, state))
            if not is_between(once, now, twice):
                return f"下一次的结果不同，{'的'.join(key)}：{difference(once, now, twice)}"
        left = self.practice.files() - self.files
        return f"下一次以后还留着 {'、'.join(sorted(left))}" if left else ""


def is_between(one, now, other):
    return (one & other) <= now <= (one | other) and now.total() in range(
        min(one.total(), other.total()), max(one.total(), other.total()) + 1)


def difference(one, now, other):
    one, now, other = (it or Counter() for it in (one, now, other))
    return (f"行数 {one.total()}、{now.total()}、{other.total()}，"
            f"少 {((one & other) - now).total()} 行，多 {(now - (one | other)).total()} 行")
