"""The operations that are killed and whose writes fail, and the folder on which they work."""

import shutil
import time
from collections import Counter
from pathlib import Path
from typing import NamedTuple

from long_day import MAIN, MONITORS

THEME = "白酒"
COMMODITY = "铜"

# What is written at once: all that is in a folder, a file, a table or a row.
FOLDER, FILE, TABLE, ROW = "folder", "file", "table", "row"


class Operation(NamedTuple):
    name: str  # to the user
    words: list
    unit: str = FOLDER
    before: list = []  # on a fresh folder: operations and statements on a store
    half: list = []  # the first half of one that ends where it began
    failing: str = FILE  # the unit where a write fails and no more is told of it


OPERATIONS = [
    Operation("更新全部行情", ["quotes"], ROW),
    Operation("监控一轮", ["poll"], TABLE, failing=TABLE),
    Operation("导出数据", ["export", "{exports}/"], FILE),
    Operation("导入主题库", ["import_library", "{given}/zhutibackup.ztb"], FOLDER, [["remove"]]),
    # The time behind the themes is a write of its own: here it is there already.
    Operation("导入文本主题", ["import_text", "{given}/themes.txt"], TABLE,
              [["remove"], ["import_text", "{given}/themes.txt"], ["remove"]]),
    Operation("导入文章", ["import_articles", "{given}/wenzhang.ztb"], FOLDER,
              [("wenzhang.mzdat", "delete from wenzhang")]),
    Operation("导入新闻和商品", ["import_news", "{given}/caijiqi.ztb"], TABLE,
              [("caijiqi.mzdat", f"delete from {it}") for it in ("xinwenshul", "shophq", "shopname")]),
    Operation("导入地区板块", ["import_boards"], ROW),
    Operation("更新代码表", ["update_codes"], FOLDER, [
        (MAIN, "update dmb set jc='旧名' where dm like 'SZ%'"),
        (MAIN, "update dmb set dm='SH609'||substr(dm,6) where dm like 'SH60000%'")]),
    Operation("每日备份", ["copy"]),
    Operation("恢复备份", ["restore", "2026-11-24"], FOLDER, [["copy"], ["remove"], ["article", "三"]]),
    Operation("接管文件夹", ["take_over", "{given}/earlier"], FOLDER, [["remove"]]),
    Operation("删除所有主题", ["remove"]),
    # What is removed can't be taken back by another process.
    Operation("删除后撤消", ["undo"], half=["remove"]),
    Operation("选历年主题", ["scan"], ROW),
    Operation("主题与大盘对比", ["history", THEME], ROW),
    Operation("添加文章", ["article", "四"]),
    Operation("修改文章", ["change_article", "1"]),
    Operation("文章草稿", ["draft", "乙"]),
    Operation("添加主题", ["theme", "新题", "sh600000,sz000001"]),
    Operation("修改主题名称", ["rename", THEME, "黄酒"], TABLE),
    Operation("改名后撤消", ["undo_rename", THEME, "黄酒"], half=["rename", THEME, "黄酒"]),
    Operation("记下主题的一天", ["day_book"], FOLDER, [
        (MAIN, "update dmb set sp=10"), (MAIN, "update tempcanshu set hqtime='2026-11-23 15:30:00'")]),
    Operation("修改关注度", ["attention", THEME, "7"]),
    Operation("删除主题", ["remove_theme", THEME]),
    Operation("加自选股", ["watch", "SH600001"]),
    Operation("导入板块文件", ["import_block", "{given}/blocks.EBK"]),
    Operation("移动自选股", ["move_watched", "SH600519,SZ000001"]),
    Operation("添加监控", ["monitor", "银行"], TABLE),
    Operation("清空监控", ["clear_monitors"]),
    Operation("添加商品", ["commodity", "新商品"]),
    Operation("删除商品", ["remove_commodity", COMMODITY]),
    Operation("下载代理列表", ["proxies"]),
    Operation("通知采集程序", ["order"]),
    Operation("采集主题新闻", ["caijiqi", "zhuti"], ROW),
    Operation("采集商品", ["caijiqi", "shop"], ROW),
    Operation("采集公司新闻", ["caijiqi", "gongsi"], ROW,
              [("caijiqi.mzdat", "update canshu set guanzhudu=19")]),
    Operation("采集代码表", ["caijiqi", "gengxindmb"], ROW),
]


def furnish(practice):
    """Gives every operation something to change, or a file to import."""
    for it in (*MONITORS, "update tempcanshu set jiankongpinlu=60"):
        practice.statement(MAIN, it.format(sound=""))
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
    (practice.given / "earlier/回测.ini").write_text("[earlier]\n")
    practice.keep("fresh")


class Trial:
    """An operation, with what is in the stores before it and after."""

    def __init__(self, practice, operation):
        self.practice = practice
        self.operation = operation
        practice.put_back("fresh")
        for it in operation.before:
            if isinstance(it, tuple):
                practice.statement(*it)
            else:
                practice.job(*it)
        practice.keep("begun")
        self.before = practice.state()
        begun = time.monotonic()
        practice.job(*operation.words)
        self.length = time.monotonic() - begun
        self.after = practice.state()

    def harm_of(self, state, unit):
        """Of each unit all is as before, or all as after."""
        units = {}
        for key in self.before.keys() | self.after.keys() | state.keys():
            before, after, now = (it.get(key) for it in (self.before, self.after, state))
            if now not in (before, after) and not (unit == ROW and is_between(before, now, after)):
                return f"{'的'.join(key)}既不是以前的也不是以后的：{difference(before, now, after)}"
            if before != after and unit in (FOLDER, FILE):
                path = Path(key[0])
                units.setdefault(path.parent if unit == FOLDER else path, set()).add(now == after)
        torn = [str(it) for it, done in units.items() if len(done) > 1]
        return f"{'、'.join(torn)}只写了一半" if torn else ""


def is_between(*tables):
    one, now, other = (it or Counter() for it in tables)
    return (one & other) <= now <= (one | other) and now.total() in range(
        min(one.total(), other.total()), max(one.total(), other.total()) + 1)


def difference(*tables):
    one, now, other = (it or Counter() for it in tables)
    return (f"行数 {one.total()}、{now.total()}、{other.total()}，"
            f"少 {((one & other) - now).total()} 行，多 {(now - (one | other)).total()} 行")
