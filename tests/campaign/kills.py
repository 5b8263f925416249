"""Operations of the program and the collector are killed at any moment. Afterwards each store is
whole, has every row that the operation leaves alone, and of the operation all or nothing in each
unit; the next run gives what it would have given without the kill."""

import math
import random
import time

from operations import OPERATIONS, Trial, difference, furnish, is_between
from practice import Practice, TourFailure

TITLE = "随时杀掉"
KILLS = 1000
SEED = 20261126
MOST_TOLD = 3


def run(tools, share):
    with Practice(tools) as practice:
        furnish(practice)
        times = math.ceil(KILLS * share / len(OPERATIONS))
        for operation in OPERATIONS:
            broken = Kills(practice, operation).carry_out(times)
            yield {"what": f"{operation.name}：运行中杀掉", "times": times, "broken": broken}


class Kills(Trial):
    def __init__(self, practice, operation):
        super().__init__(practice, operation)
        self.random = random.Random(f"{SEED} {operation.words}")
        self.files = practice.files()
        practice.job(*operation.words)
        self.twice = practice.state()
        self.files |= practice.files()
        if operation.half:
            practice.put_back("begun")
            practice.job(*operation.half)
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
        process = practice.start(*self.operation.words)
        time.sleep(moment)
        process.kill()
        said = process.communicate()[0].decode(errors="replace")
        try:
            state = practice.state()
            harm = self.harm_of(state, self.operation.unit) or self.harm_to_told(state, said)
            practice.job(*self.operation.words)
            return harm or self.harm_of_next(practice.state()), process.returncode < 0
        except TourFailure as failure:
            return str(failure), True

    def harm_to_told(self, state, said):
        """Of the run of quotes: so many stocks were told to be written."""
        told = [int(it.split(":")[1]) for it in said.splitlines() if it.startswith("已更新股票只数:")]
        key = ("application/dzhzhuti.mzdat", "dmb")
        if told and (state[key] & self.after[key]).total() < told[-1]:
            return f"报了 {told[-1]} 只，库里没有这么多"
        return ""

    def harm_of_next(self, state):
        for key in self.after.keys() | self.twice.keys() | state.keys():
            once, twice, now = (it.get(key) for it in (self.after, self.twice, state))
            if not is_between(once, now, twice):
                return f"下一次的结果不同，{'的'.join(key)}：{difference(once, now, twice)}"
        left = self.practice.files() - self.files
        return f"下一次以后还留着 {'、'.join(sorted(left))}" if left else ""
