"""A day of the market from nine to five at thirty times its speed: the real program with monitors and
自动更新 at work. The program and the practice market live by one clock, which runs that fast for all
their timers too.

Level means, after the first hour of trading: of each ten minutes the highest resident memory is no more
than 5 % above the highest of that hour, and the fewest open handles and threads, to which they fall back
between two updates, are no more than the most of that hour."""

import os
import sys
import time
from pathlib import Path

sys.path.append(str(Path(__file__).parent.parent / "tour"))

from desk import DAY, FAKETIME, Desk, Market, TourFailure, as_key  # noqa: E402

TITLE = "一整天的行情"

SPEED = 30
END = 17 * 60
CLOSE = f"{DAY} 15:04"  # the last minute that counts as trading
MINUTES_APART = 10
MOST_MEMORY = 1.05
FIGURES = ("内存 MB ", "句柄", "线程")

STORES = ("dzhzhuti.mzdat", "wenzhang.mzdat", "caijiqi.mzdat")
MAIN = STORES[0]

# Every 60 seconds.
AUTOMATIC_UPDATE = f"[{as_key('行情')}]\n{as_key('自动更新')}=60\n"

MONITORS = (
    "insert into zhutijiankong(zhutiname,bijiaofu,baojinzhi,tanchuform,yinyue) values"
    "('白酒','>',5,1,'{sound}'),('白酒','<',-5,0,'')",
    "insert into gegujiankong(dm,jc,leixin,bijiaofu,baojinzhi,tanchuform,yinyue) values"
    "('SH600000','浦发银行','涨幅','>',5,1,'{sound}'),('SZ000001','平安银行','涨幅','<',-5,0,'')",
    "insert into jiankonghq(dm,jc) select distinct dm,jc from dzhzhuti where zhutiname='白酒'"
    " union select dm,jc from dmb where dm in ('SH600000','SZ000001')",
    "update tempcanshu set jiankongpinlu=20")


def run(tools, share):
    """Less than the whole share is a day that begins later, two o'clock at the latest."""
    begin = END - max(180, round(480 * min(share, 1)))
    surroundings = dict(os.environ)
    desk = Desk(tools.source / "data", tools.dev / "tests/store_query", tools.dev / "tools/prepare_stores",
                tools.dev / "tools/practice_market", tools.dev / "app/guanchaotai", clock=clock_from(begin))
    try:
        yield from spend(desk, begin)
    finally:
        desk.clear()
        os.environ.clear()
        os.environ.update(surroundings)


def clock_from(minute):
    return {"LD_PRELOAD": FAKETIME, "FAKETIME": f"@{DAY} {minute // 60:02}:{minute % 60:02}:00 x{SPEED}"}


def spend(desk, begin):
    desk.set_up(lambda it: Market(it, **desk.clock))
    (desk.application / "界面.ini").write_text(AUTOMATIC_UPDATE)
    for statement in MONITORS:
        desk.rows(MAIN, statement.format(sound=desk.application / "cnwav.mp3"))
    program = desk.start_program()
    samples = watch(program, begin)
    yield {
        "what": f"看 {begin // 60}:00 到 17:00 的行情，三十倍速，每 {MINUTES_APART} 分钟的最高值：" + "，".join(
            f"{name}开始 {values[0]:,}、最高 {max(values):,}、最后 {values[-1]:,}"
            for name, values in zip(FIGURES, zip(*(highest for _, _, highest in samples)))),
        "times": len(samples),
        "broken": unlevel(samples, max(begin, 9 * 60 + 30))
    }
    yield {"what": "收盘以前一直更新行情和监控，报过警，没有出错的框，自己正常退出，三个库完好", "times": 1,
           "broken": faults(desk, program)}


def watch(program, begin):
    """The lowest and the highest of each ten minutes, behind the minute at which they end."""
    began = time.monotonic()
    samples = []
    for minute in range(begin + MINUTES_APART, END + 1, MINUTES_APART):
        readings = []
        while time.monotonic() < began + (minute - begin) * 60 / SPEED:
            if program.poll() is not None:
                return samples
            readings.append(reading(program.pid))
            time.sleep(0.25)
        samples.append((minute, [min(it) for it in zip(*readings)], [max(it) for it in zip(*readings)]))
    return samples


def reading(pid):
    status = dict(line.split(":", 1) for line in Path(f"/proc/{pid}/status").read_text().splitlines())
    return (int(status["VmRSS"].split()[0]) // 1024, len(os.listdir(f"/proc/{pid}/fd")),
            int(status["Threads"]))


def unlevel(samples, trading):
    first_hour = [highest for minute, _, highest in samples if trading < minute <= trading + 60]
    if not first_hour:
        return ["没有第一个小时的读数"]
    limits = [max(it) for it in zip(*first_hour)]
    limits[0] *= MOST_MEMORY
    return [f"{minute // 60}:{minute % 60:02}，{name}{value:,} 超过 {limit:,.0f}"
            for minute, fewest, highest in samples if minute > trading + 60
            for name, value, limit in zip(FIGURES, [highest[0], *fewest[1:]], limits) if value > limit]


def faults(desk, program):
    broken = []
    if program.poll() is not None:
        broken.append(f"程序在收市以前退出了，代码 {program.returncode}")
    else:
        broken += [f"出错的框：{it}" for it in quit_program(desk, program)]
    for file in STORES:
        if desk.rows(file, "pragma integrity_check") != [["ok"]]:
            broken.append(f"{file} 损坏")
    for what, query in (("监控", "select max(newhqtime) from jiankonghq"),
                        ("更新行情", "select hqtime from tempcanshu")):
        last = desk.rows(MAIN, query)[0][0]
        if last < CLOSE:
            broken.append(f"{what}在 {last} 以后停了")
    if desk.rows(MAIN, "select count(baojintime)>0 from zhutijiankong") != [["1"]]:
        broken.append("没有报警")
    return broken


def quit_program(desk, program):
    """Gives the texts of boxes that stand in the way, and what is amiss with the end."""
    from journey import Journey
    from screen import Screen, role_of, text_of, walk  # a screen is there only now
    day = Journey(desk)
    day.screen = Screen(program)
    broken = [" ".join(text_of(it) for it in walk(box) if role_of(it) == "label")
              for box in day.screen.windows() if role_of(box) == "alert"]
    try:
        day.close_the_program()
    except TourFailure as failure:
        broken.append(str(failure))
    return broken
