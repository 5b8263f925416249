"""Each operation of the program again and again, each time with another of its calls that write failing:
with a full disk and with a bad one, once and from then on. It must end well or tell in Chinese what was
being done and what is the matter, leave each store whole, as it was or as it would have become, and come
to the same as ever when it is done again."""

import errno
import re
import shutil
import subprocess
from collections import Counter

from long_day import MAIN, MONITORS
from practice import Practice, TourFailure

TITLE = "每一次写都出错"

# Of an operation with more writes as many, evenly spread.
MOST_WRITES = 15
MOST_TOLD = 20

MATTERS = {errno.ENOSPC: "磁盘已满|检查磁盘空间", errno.EIO: "无法读写|读写出错"}

# Word and arguments of campaign_job, the operation to a user, and how it goes. Of a "whole" one a store is
# as before or as after. Of one in "parts" rows of both may stand. One in "steps" does its last step again
# by itself if that fails, from what the program holds, which is gone with it.
OPERATIONS = (
    ("quotes", (), "更新行情", "parts"),
    ("poll", (), "监控的一轮", "parts"),
    ("export", ("{exports}",), "导出数据", "whole"),
    ("import_library", ("{given}/zhutibackup.ztb",), "导入主题库", "whole"),
    ("import_text", ("{given}/主题.txt",), "导入文本", "whole"),
    ("import_articles", ("{given}/wenzhang.ztb",), "导入文章", "whole"),
    ("import_news", ("{given}/caijiqi.ztb",), "导入新闻", "whole"),
    ("import_boards", (), "导入地区板块", "parts"),
    ("update_codes", (), "更新代码表", "whole"),
    ("copy", (), "每日备份", "whole"),
    ("restore", ("2026-11-20",), "恢复", "whole"),
    ("take_over", ("{given}/earlier",), "接管文件夹", "whole"),
    ("remove", (), "删除全部主题", "whole"),
    ("undo", (), "删除全部主题再撤消", "steps"),
    ("history", ("银行",), "与大盘对比", "parts"),
    ("article", ("新文章",), "新建文章", "whole"),
    ("change_article", ("1",), "改文章", "whole"),
    ("draft", ("草稿",), "文章的草稿", "whole"),
    ("theme", ("新主题", "600000"), "新建主题", "whole"),
    ("rename", ("白酒", "好酒"), "主题改名", "whole"),
    ("undo_rename", ("白酒", "好酒"), "主题改名再撤消", "steps"),
    ("day_book", (), "记下主题的一天", "whole"),
    ("attention", ("白酒", "7"), "改关注度", "whole"),
    ("remove_theme", ("白酒",), "删除主题", "whole"),
    ("watch", ("SH600519",), "加自选股", "whole"),
    ("import_block", ("{given}/块.EBK",), "导入板块文件", "whole"),
    ("move_watched", ("SH600519,SZ000001",), "移动自选股", "whole"),
    ("monitor", ("银行",), "添加监控", "whole"),
    ("clear_monitors", (), "清空监控", "whole"),
    ("commodity", ("新商品",), "添加商品", "whole"),
    ("remove_commodity", ("黄金",), "删除商品", "whole"),
    ("order", (), "通知采集程序", "whole"),
)

# Names that stand in messages as they are: files, stocks, tables.
NAMES = re.compile(r"[\w./-]*[./][\w./-]*|S[HZ]\d{6}|dzhzhuti|dmb")


def run(tools, share):
    with Practice(tools) as practice:
        furnish(practice)
        bench = Bench(practice)
        for operation in OPERATIONS:
            yield bench.spoil(operation, max(1, round(MOST_WRITES * min(share, 1))))


def furnish(practice):
    """Something of everything, and what others have exported."""
    shutil.copy(practice.data / "主题txt文件示例.txt", practice.given / "主题.txt")
    (practice.given / "块.EBK").write_text("\r\n1600000\r\n0000001\r\n1600519\r\n")
    for title in "甲乙":
        practice.job("article", title)
    practice.job("export", "{given}")
    practice.statement("wenzhang.mzdat", "delete from wenzhang where id=2")
    practice.statement("caijiqi.mzdat", "delete from xinwenshul where rowid>50")
    for it in ("delete from dmb where rowid>250", "delete from dzhzhuti where dm not in (select dm from dmb)",
               *MONITORS, "update tempcanshu set jiankongpinlu=60,hqtime='2026-11-23 15:30:00'",
               "update dmb set sp=10"):
        practice.statement(MAIN, it.format(sound=""))
    practice.job("export", "{exports}")
    practice.job("copy")
    (practice.folder / "备份/2026-11-24").rename(practice.folder / "备份/2026-11-20")
    shutil.copytree(practice.folder, practice.given / "earlier")
    (practice.given / "earlier/回测.ini").write_text("[earlier]\n")
    practice.statement(MAIN, "update dzhzhuti set guanzhudu=guanzhudu+1")
    practice.keep("fresh")


class Bench:
    def __init__(self, practice):
        self.practice = practice
        self.report = practice.root / "report"
        self.library = practice.program("tests/campaign/libfailing_writes.so")
        self.before = self.rows()

    def failing(self, words, number, error=0, onwards=False):
        """The job, and the call that failed: without a number, how many there were."""
        variables = {"FAILING_FOLDER": str(self.practice.home), "FAILING_CALL": str(number),
                     "FAILING_ERROR": str(error), "FAILING_REPORT": str(self.report),
                     "LD_PRELOAD": str(self.library)} | ({"FAILING_ONWARDS": "1"} if onwards else {})
        done = subprocess.run(self.practice.command(*words), env=self.practice.environment | variables,
                              capture_output=True, text=True, check=False, timeout=120)
        return done, self.report.read_text().strip().replace(str(self.practice.folder) + "/", "")

    def rows(self):
        """What stands in the stores, by store; a store that is not whole raises."""
        stores = {}
        for (path, table), rows in self.practice.state().items():
            stores.setdefault(path, Counter()).update({(table, row): it for row, it in rows.items()})
        return stores

    def spoil(self, operation, most):
        word, arguments, name, leaves = operation
        self.practice.put_back("fresh")
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
        self.practice.put_back("fresh")
        done, call = self.failing((word, *arguments), number, error, onwards)
        harm = list(wrong_end(done, error))
        try:
            now = self.rows()
            told = re.search("已经写入并保留|已经导入", done.stderr)
            if told and leaves != "steps":
                harm += differences(self.before, wanted, now, "parts")
            elif not (leaves == "steps" and onwards):
                harm += differences(self.before, wanted, now, leaves)
                if done.returncode == 0 and now != wanted:
                    harm.append("说完成了，结果却不对")
                if "没有写入任何数据" in done.stderr and now == wanted != self.before:
                    harm.append("说没有写入，其实已经写好")
                if now != wanted:
                    self.practice.job(word, *arguments)
                if self.rows() != wanted:
                    harm.append("后来再做，结果和没有出过错的不一样")
        except TourFailure as failure:
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
        name = store.rpartition("/")[2]
        if (old & new) - found:
            yield f"{name} 少了 {((old & new) - found).total()} 行"
        if found - (old | new):
            yield f"{name} 多了 {(found - (old | new)).total()} 行"
        if leaves == "whole" and found not in (old, new):
            yield f"{name} 只写了一半"
