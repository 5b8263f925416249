"""Each operation of the program again and again, each time with another of its calls that write failing:
with a full disk and with a bad one, once and from then on. It must end well or tell in Chinese what was
being done and what is the matter, leave each store whole, as it was or as it would have become, and come
to the same as ever when it is done again."""

import errno
import re
import subprocess

from long_day import MAIN
from operations import OPERATIONS, ROW, Trial, furnish
from practice import Practice, TourFailure

TITLE = "每一次写都出错"

# Of an operation with more writes as many, evenly spread.
MOST_WRITES = 15
MOST_TOLD = 20

MATTERS = {errno.ENOSPC: "磁盘已满|检查磁盘空间", errno.EIO: "无法读写|读写出错"}

# Names that stand in messages as they are: files, stocks, tables.
NAMES = re.compile(r"[\w./-]*[./][\w./-]*|S[HZ]\d{6}|dzhzhuti|dmb")

# Shorter runs: each is done some two hundred times.
FEWER_ROWS = (
    ("caijiqi.mzdat", "delete from xinwenshul where rowid>50"),
    (MAIN, "delete from dmb where rowid>250 and dm not like 'SZ00000%'"),
    (MAIN, "delete from dzhzhuti where dm not in (select dm from dmb)"),
)


def run(tools, share):
    with Practice(tools) as practice:
        furnish(practice)
        for it in FEWER_ROWS:
            practice.statement(*it)
        practice.keep("fresh")
        for operation in OPERATIONS:
            if operation.words[0] != "caijiqi":
                most = max(1, round(MOST_WRITES * min(share, 1)))
                yield FailingWrites(practice, operation).carry_out(most)


class FailingWrites(Trial):
    def __init__(self, practice, operation):
        super().__init__(practice, operation)
        self.report = practice.root / "report"
        self.library = practice.program("tests/campaign/libfailing_writes.so")
        # One that goes back by itself does that again if it fails, from what the program holds, which is
        # gone with it.
        self.holds = bool(operation.half)
        self.unit = ROW if operation.unit == ROW else operation.failing

    def failing(self, number, error=0, onwards=False):
        """The job, and the call that failed: without a number, how many there were."""
        practice = self.practice
        practice.put_back("begun")
        variables = {"FAILING_FOLDER": str(practice.home), "FAILING_CALL": str(number),
                     "FAILING_ERROR": str(error), "FAILING_REPORT": str(self.report),
                     "LD_PRELOAD": str(self.library)} | ({"FAILING_ONWARDS": "1"} if onwards else {})
        done = subprocess.run(practice.command(*self.operation.words), capture_output=True, text=True,
                              env=practice.environment | variables, check=False, timeout=120)
        return done, self.report.read_text().strip().replace(str(practice.folder) + "/", "")

    def carry_out(self, most):
        writes = int(self.failing(0)[1].split()[0])
        numbers = sorted({1 + index * writes // most for index in range(most)} if writes > most
                         else range(1, writes + 1))
        broken = [] if writes else ["什么也没有写"]
        for number in numbers:
            for error in MATTERS:
                for onwards in (False, True):
                    done, call = self.failing(number, error, onwards)
                    broken += [f"写 {call} 得 {errno.errorcode[error]}{' 从此一直' if onwards else ''}：{it}"
                               for it in self.harms(done, error, onwards) if it]
        how = "每一次" if len(numbers) == writes else f"其中均匀的 {len(numbers)} 次"
        return {"what": f"{self.operation.name}：写 {writes} 次，{how}出错，磁盘已满和读写出错，只此一次和从此一直",
                "times": 4 * len(numbers), "broken": broken[:MOST_TOLD]}

    def harms(self, done, error, onwards):
        yield wrong_end(done, error)
        try:
            now = self.practice.state()
            told = re.search("已经写入并保留|已经导入", done.stderr)
            if told and not self.holds:
                yield self.harm_of(now, ROW)
            elif not (self.holds and onwards):
                yield self.harm_of(now, self.unit)
                if done.returncode == 0 and now != self.after:
                    yield "说完成了，结果却不对"
                if "没有写入任何数据" in done.stderr and now == self.after != self.before:
                    yield "说没有写入，其实已经写好"
                if now != self.after:
                    self.practice.job(*self.operation.words)
                    if self.practice.state() != self.after:
                        yield "后来再做，结果和没有出过错的不一样"
        except TourFailure as failure:
            yield str(failure)


def wrong_end(done, error):
    told = done.stderr.strip()
    if done.returncode == 0:
        return ""
    if done.returncode != 1:
        return f"退出代码 {done.returncode}：{told}"
    if not re.search("没有完成", told) or told.startswith("操作"):
        return f"没有说是在做什么：{told}"
    if not re.search(MATTERS[error], told):
        return f"没有说是什么错：{told}"
    english = re.search("[A-Za-z]{3}", NAMES.sub("", told))
    return f"有英文：{told}" if english else ""
