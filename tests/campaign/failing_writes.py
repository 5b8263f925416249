"""Each operation of the program again and again, each time with another of its calls that write failing:
with a full disk and with a bad one, once and from then on. It must end well or tell in Chinese what was
being done and what is the matter, leave each store whole, as it was or as it would have become, and come
to the same as ever when it is done again."""

import errno
import os
import re
import shutil
import subprocess
import sys
from collections import Counter
from pathlib import Path

sys.path.append(str(Path(__file__).parent.parent / "tour"))

from desk import IN_SESSION, SERVICES, Desk, StillMarket  # noqa: E402
from desk import run as run_program  # noqa: E402
from long_day import MONITORS  # noqa: E402

TITLE = "每一次写都出错"

# Of an operation with more writes as many, evenly spread.
MOST_WRITES = 15
MOST_TOLD = 20

MATTERS = {errno.ENOSPC: "磁盘已满|检查磁盘空间", errno.EIO: "无法读写|读写出错"}

# Word and arguments of campaign_job, the operation to a user, and how it goes. Of a "whole" one a store is
# as before or as after. Of one in "parts" rows of both may stand. One in "steps" does its last step again
# by itself if that fails, from what the program holds, which is gone with it. FOLDER is the application
# folder.
OPERATIONS = (
    ("quotes", (), "更新行情", "parts"),
    ("poll", (), "监控的一轮", "parts"),
    ("export", ("FOLDER/导出",), "导出数据", "whole"),
    ("import_library", ("FOLDER/外来/zhutibackup.ztb",), "导入主题库", "whole"),
    ("import_text", ("FOLDER/外来/主题.txt",), "导入文本", "whole"),
    ("import_articles", ("FOLDER/外来/wenzhang.ztb",), "导入文章", "whole"),
    ("import_news", ("FOLDER/外来/caijiqi.ztb",), "导入新闻", "whole"),
    ("import_boards", (), "导入地区板块", "parts"),
    ("update_codes", (), "更新代码表", "whole"),
    ("copy", (), "每日备份", "whole"),
    ("restore", ("2026-11-20",), "恢复", "whole"),
    ("remove", (), "删除全部主题", "whole"),
    ("undo", (), "删除全部主题再撤消", "steps"),
    ("history", ("银行",), "与大盘对比", "parts"),
    ("article", ("新文章",), "新建文章", "whole"),
    ("change_article", ("1",), "改文章", "whole"),
    ("draft", ("草稿",), "文章的草稿", "whole"),
    ("theme", ("新主题", "600000"), "新建主题", "whole"),
    ("rename", ("白酒", "好酒"), "主题改名", "whole"),
    ("attention", ("白酒", "7"), "改关注度", "whole"),
    ("remove_theme", ("白酒",), "删除主题", "whole"),
    ("watch", ("SH600519",), "加自选股", "whole"),
    ("monitor", ("银行",), "添加监控", "whole"),
    ("clear_monitors", (), "清空监控", "whole"),
    ("commodity", ("新商品",), "添加商品", "whole"),
    ("remove_commodity", ("黄金",), "删除商品", "whole"),
    ("order", (), "通知采集程序", "whole"),
)

# Names that stand in messages as they are: files, stocks, tables.
NAMES = re.compile(r"[\w./-]*[./][\w./-]*|S[HZ]\d{6}|dzhzhuti|dmb")


def run(tools, share):
    desk = Desk(tools.source / "data", tools.dev / "tests/store_query", tools.dev / "tools/prepare_stores",
                tools.dev / "tools/practice_market", None)
    try:
        bench = Bench(tools, desk)
        for operation in OPERATIONS:
            yield bench.spoil(operation, max(1, round(MOST_WRITES * min(share, 1))))
    finally:
        desk.clear()


class Bench:
    def __init__(self, tools, desk):
        self.tools = tools
        self.desk = desk
        self.folder = desk.application
        self.kept = desk.folder / "kept"
        self.report = desk.folder / "report"
        self.market = StillMarket(desk)
        self.furnish()
        self.renew()
        self.before = self.rows()

    def furnish(self):
        """An application folder with something of everything, and with what others have exported."""
        for name in ("外来", "导出"):
            (self.folder / name).mkdir(parents=True)
        run_program(self.desk.prepare_stores, self.folder, self.desk.data, self.market.host, **IN_SESSION)
        (self.folder / "services.ini").write_text(
            "".join(f"[{it}]\nhost={self.market.host}\n" for it in SERVICES))
        shutil.copy(self.desk.data / "主题txt文件示例.txt", self.folder / "外来/主题.txt")
        for title in "甲乙":
            self.must("article", title)
        self.must("export", f"{self.folder}/外来")
        self.change("wenzhang.mzdat", "delete from wenzhang where id=2")
        self.change("caijiqi.mzdat", "delete from xinwenshul where rowid>50")
        self.change("dzhzhuti.mzdat", "delete from dmb where rowid>250",
                    "delete from dzhzhuti where dm not in (select dm from dmb)", *MONITORS,
                    "update tempcanshu set jiankongpinlu=60")
        self.must("export", f"{self.folder}/导出")
        self.must("copy")
        (self.folder / "备份/2026-11-24").rename(self.folder / "备份/2026-11-20")
        self.change("dzhzhuti.mzdat", "update dzhzhuti set guanzhudu=guanzhudu+1")
        self.folder.rename(self.kept)

    def change(self, store, *statements):
        for statement in statements:
            self.desk.rows(store, statement.format(sound=""))

    def must(self, *words):
        done = self.job(*words)
        if done.returncode != 0:
            raise RuntimeError(f"{words}: {done.stderr}")

    def renew(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(self.kept, self.folder)

    def job(self, word, *arguments, **failing):
        command = [self.tools.dev / "tests/campaign/campaign_job", word, self.folder, self.market.host]
        return subprocess.run([*command, *(it.replace("FOLDER", str(self.folder)) for it in arguments)],
                              capture_output=True, text=True, check=False, timeout=120,
                              env=os.environ | {"HOME": str(self.desk.folder)} | failing)

    def failing(self, words, number, error=0, onwards=False):
        """The job, and the call that failed: without a number, how many there were."""
        variables = {"FAILING_FOLDER": str(self.folder), "FAILING_CALL": str(number),
                     "FAILING_ERROR": str(error), "FAILING_REPORT": str(self.report),
                     "LD_PRELOAD": str((self.tools.dev / "tests/campaign/libfailing_writes.so").resolve())}
        done = self.job(*words, **variables, **({"FAILING_ONWARDS": "1"} if onwards else {}))
        return done, self.report.read_text().strip().replace(str(self.folder) + "/", "")

    def rows(self):
        """What stands in the stores, by store; a store that is not whole raises."""
        done = self.job("rows")
        if done.returncode != 0:
            raise RuntimeError(done.stderr.strip())
        stores = {}
        for line in done.stdout.splitlines()[:-1]:
            store, row = line.split("\t", 1)
            stores.setdefault(store, Counter())[row] += 1
        return stores

    def spoil(self, operation, most):
        word, arguments, name, leaves = operation
        self.renew()
        done, told = self.failing((word, *arguments), 0)
        if done.returncode != 0:
            raise RuntimeError(f"{operation}: {done.stderr}")
        writes = int(told.split()[0])
        wanted = self.rows()
        numbers = sorted({1 + index * writes // most for index in range(most)} if writes > most
                         else range(1, writes + 1))
        broken = []
        for number in numbers:
            for error in MATTERS:
                for onwards in (False, True):
                    harm, call = self.spoil_once(operation, wanted, number, error, onwards)
                    broken += [f"写 {call} 得 {errno.errorcode[error]}{' 从此一直' if onwards else ''}：{it}"
                               for it in harm]
        how = "每一次" if len(numbers) == writes else f"其中均匀的 {len(numbers)} 次"
        return {"what": f"{name}：写 {writes} 次，{how}出错，磁盘已满和读写出错，只此一次和从此一直",
                "times": 4 * len(numbers), "broken": broken[:MOST_TOLD]}

    def spoil_once(self, operation, wanted, number, error, onwards):
        word, arguments, _, leaves = operation
        self.renew()
        done, call = self.failing((word, *arguments), number, error, onwards)
        harm = list(wrong_end(done, error))
        try:
            now = self.rows()
            told = re.search("已经写入并保留|已经导入", done.stderr)
            if told:
                harm += differences(self.before, wanted, now, "parts")
            elif not (leaves == "steps" and onwards):
                harm += differences(self.before, wanted, now, leaves)
                if done.returncode == 0 and now != wanted:
                    harm.append("说完成了，结果却不对")
                if "没有写入任何数据" in done.stderr and now == wanted != self.before:
                    harm.append("说没有写入，其实已经写好")
                if now != wanted:
                    self.must(word, *arguments)
                if self.rows() != wanted:
                    harm.append("后来再做，结果和没有出过错的不一样")
        except RuntimeError as failure:
            harm.append(str(failure))
        return harm, call


def wrong_end(done, error):
    told = done.stderr.strip()
    if done.returncode == 0:
        return
    if done.returncode != 1:
        yield f"退出代码 {done.returncode}：{told}"
    elif not re.search("没有完成", told) or told.startswith("操作"):
        yield f"没有说是在做什么：{told}"
    elif not re.search(MATTERS[error], told):
        yield f"没有说是什么错：{told}"
    elif re.search("[A-Za-z]{3}", NAMES.sub("", told)):
        yield f"有英文：{told}"


def differences(before, wanted, now, leaves):
    for store in before.keys() | now.keys():
        old, new, found = (it.get(store, Counter()) for it in (before, wanted, now))
        name = store.partition("/application/")[2]
        if (old & new) - found:
            yield f"{name} 少了 {((old & new) - found).total()} 行"
        if found - (old | new):
            yield f"{name} 多了 {(found - (old | new)).total()} 行"
        if leaves == "whole" and found not in (old, new):
            yield f"{name} 只写了一半"
