"""campaign.py SOURCE DEV SANITIZE [--share SHARE] [PART ...]

An hour of harm: each part does to the program what a bad day does, counts what it did, and names what
broke. DEV and SANITIZE are build folders. A share of less than 1 does that much of each part, and leaves
docs/trust.md, the table of the last whole run of each part, as it is. Ends with 1 if anything broke."""

import argparse
import json
import subprocess
import sys
import time
from pathlib import Path

import failing_writes
import kills
import long_day
import readers
import two_writers

PARTS = {it.__name__: it for it in (kills, two_writers, readers, failing_writes, long_day)}

INTRODUCTION = """\
# 这个软件经得起什么

`./test campaign` 用大约一小时，对真实的程序和真实的库文件做坏日子会做的事：随时杀掉进程，给它乱写的
网页和文件，让磁盘在每一次写的时候出错，让两个程序同时写一个库，让行情跑完一整天。下面每一段是它最近
一次完整运行的结果。
"""


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("source", type=Path)
    arguments.add_argument("dev", type=Path)
    arguments.add_argument("sanitize", type=Path)
    arguments.add_argument("--share", type=float, default=1)
    arguments.add_argument("parts", nargs="*", choices=[[], *PARTS])
    asked = arguments.parse_intermixed_args()
    results = asked.dev / "campaign"
    results.mkdir(exist_ok=True)
    broken = 0
    for name in asked.parts or PARTS:
        result = run_part(asked, name)
        broken += sum(len(row["broken"]) for row in result["rows"])
        if asked.share >= 1:
            (results / f"{name}.json").write_text(json.dumps(result, ensure_ascii=False, indent=1))
    if asked.share >= 1:
        (asked.source / "docs/trust.md").write_text(page(results))
    return 1 if broken else 0


def run_part(asked, name):
    part = PARTS[name]
    print(f"== {name}: {part.TITLE}", flush=True)
    begun = time.monotonic()
    rows = []
    for row in part.run(asked, asked.share):
        print(f"{row['what']}: {row['times']}, broken: {len(row['broken'])}", flush=True)
        for harm in row["broken"]:
            print("   ", harm, flush=True)
        rows.append(row)
    return {
        "title": part.TITLE, "rows": rows, "minutes": round((time.monotonic() - begun) / 60),
        "commit": subprocess.run(["git", "rev-parse", "--short", "HEAD"], cwd=asked.source, text=True,
                                 capture_output=True, check=True).stdout.strip(),
        "day": time.strftime("%Y-%m-%d")
    }


def page(results):
    text = INTRODUCTION
    for name in PARTS:
        file = results / f"{name}.json"
        if file.exists():
            text += section(name, json.loads(file.read_text()))
    return text


def section(name, result):
    lines = [
        "", f"## {result['title']}", "",
        f"`./test campaign {name}`，{result['day']}，提交 {result['commit']}，{result['minutes']} 分钟。",
        "", "| 做了什么 | 次数 | 坏了什么 |", "| --- | ---: | --- |"
    ]
    for row in result["rows"]:
        lines.append(f"| {row['what']} | {row['times']:,} | {'；'.join(row['broken']) or '没有'} |")
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    sys.exit(main())
