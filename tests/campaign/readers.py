"""Feeds a million garbled inputs to all that reads outside text and files, by two processes of
campaign_readers with seeds of their own. An input that harms is kept in DEV/campaign/readers."""

import os
import shutil
import signal
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TITLE = "乱写的网页和文件"
SEEDS = (1, 2)
MOST_DEATHS = 10  # of one reader and seed
MOST_TOLD = 20  # of one reader
ENVIRONMENT = os.environ | {
    "QT_QPA_PLATFORM": "offscreen",
    "ASAN_OPTIONS": "detect_leaks=0:handle_abort=1:allocator_may_return_null=1",
    "UBSAN_OPTIONS": "halt_on_error=1:print_stacktrace=1",
}


def run(tools, share):
    """Yields a row for each reader: what, how many inputs, and what broke."""
    program = tools.sanitize / "tests/campaign/campaign_readers"
    kept = tools.dev / "campaign/readers"
    kept.mkdir(parents=True, exist_ok=True)
    listed = subprocess.run([program], env=ENVIRONMENT, text=True, check=True, stdout=subprocess.PIPE,
                            stderr=subprocess.DEVNULL).stdout
    with ThreadPoolExecutor(len(SEEDS)) as threads:
        rows = []
        for name, times, what in (line.split("\t") for line in listed.splitlines()):
            each = max(1, round(int(times) * share / len(SEEDS)))
            rows.append((what, [threads.submit(feed, program, kept, name, seed, each) for seed in SEEDS]))
        for what, feeds in rows:
            fed = [it.result() for it in feeds]
            harms = [harm for _, harms in fed for harm in harms]
            yield {"what": what, "times": sum(times for times, _ in fed), "broken": harms[:MOST_TOLD]}


def feed(program, kept, name, seed, times):
    """How many inputs were read, and the harms."""
    harms = []
    begin = 0
    with tempfile.TemporaryDirectory(dir="/dev/shm") as folder:
        errors = Path(folder, "stderr")
        for _ in range(MOST_DEATHS):
            with errors.open("w") as stderr:
                ended = subprocess.run([program, name, str(seed), str(begin), str(times), folder],
                                       env=ENVIRONMENT, text=True, stdout=subprocess.PIPE, stderr=stderr)
            harms += [told(name, seed, *line.split("\t", 1)) for line in ended.stdout.splitlines()]
            if ended.returncode == 0:
                begin = times
                break
            number, _, text = Path(folder, f"{name}-{seed}.input").read_bytes().partition(b"\n")
            died = int(number)
            Path(folder, f"{name}-{seed}-{died}").write_bytes(text)
            shutil.copy(errors, kept / f"{name}-{seed}-{died}.stderr")
            what = "三秒没有读完" if ended.returncode == -signal.SIGPROF else "程序倒下"
            harms.append(told(name, seed, died, f"{what} {summary(errors)}"))
            begin = died + 1
        for file in sorted(Path(folder).glob(f"{name}-{seed}-*"))[:MOST_TOLD]:
            shutil.copy(file, kept)
    return begin, harms


def told(name, seed, number, words):
    return f"{name} 种子 {seed} 第 {number} 个：{words}"


def summary(file):
    """What the sanitizer says of it, in a line."""
    lines = file.read_text(errors="replace").splitlines()
    words = [line for line in lines if line.startswith("SUMMARY") or "runtime error" in line]
    return words[-1][:300] if words else ""
