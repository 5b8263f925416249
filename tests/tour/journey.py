"""What is common to the tours: steps one after another on a desk, a look at the stores, and the report
of a step that fails. Exit codes: 0 all as it should be, 1 not, 77 no screen to go on."""

import shutil
import signal
import sys
import time
import traceback

from desk import DAY, Desk, StillMarket, TourFailure, wait

SKIPPED = 77

try:
    from screen import Screen, says
except (ImportError, ValueError) as missing:
    print("skipped:", missing)
    sys.exit(SKIPPED)

MAIN = "dzhzhuti.mzdat"


class Journey:
    def __init__(self, desk):
        self.desk = desk
        self.screen = None
        self.main = None
        self.steps = []

    def set_up(self):
        self.desk.set_up(StillMarket)

    def start_program(self):
        self.screen = Screen(self.desk.start_program())
        self.main = self.screen.window("观潮台(V3.7)")

    def press_in_the_main_window(self, key):
        self.screen.give_focus("观潮台(V3.7)")
        self.screen.type(key)

    def fetch_quotes(self):
        self.press_in_the_main_window("F9")
        self.screen.answer("更新行情数据完成！")
        self.expect(MAIN, f"select count(*) from dmb where newhqtime like '{DAY} 10:%'",
                    *self.desk.rows(MAIN, "select count(*) from dmb"))

    def close_the_program(self):
        self.screen.ask_to_close("观潮台(V3.7)")
        self.screen.answer("点“确定”退出，点“取消”进入托盘。")
        wait("the program to end", lambda: self.desk.program.poll() is not None)
        check("its exit code", self.desk.program.returncode, 0)

    def take_the_newest_copy_back(self):
        self.screen.choose(self.main, "数据(S)", "恢复…")
        window = self.screen.window("恢复")
        self.screen.click(self.screen.grid(window, "备份").cell(0, 1))
        self.screen.press(window, "恢复选中的备份")
        self.screen.answer("确实要用备份")
        self.screen.answer("已恢复备份")

    def expect(self, file, statement, *rows):
        """Waits until the store answers so: a press has its effect a little later."""
        try:
            wait("the rows", lambda: self.desk.rows(file, statement) == list(rows))
        except TourFailure:
            check(statement, self.desk.rows(file, statement), list(rows))

    def wait_for_words(self, window, text):
        self.screen.wait(f"the words {text}", lambda: says(window, text))


def check(what, found, wanted):
    if found != wanted:
        raise TourFailure(f"{what}: {found} instead of {wanted}")


def go(journey):
    journey.set_up()
    for step in journey.steps:
        began = time.monotonic()
        try:
            step()
        except Exception:
            report(step.__name__, journey)
            return 1
        print(f"{step.__name__}: {time.monotonic() - began:.1f} s", flush=True)
    return 0


def report(step, journey):
    print(f"Failed at {step}:\n{traceback.format_exc()}")
    print("The program said:\n" + journey.desk.said())
    if journey.screen:
        print("The screen showed:\n" + journey.screen.describe())


def travel(journey, arguments, needs=(), **surroundings):
    for program in ("Xvfb", "dbus-daemon", "faketime", *needs):
        if not shutil.which(program):
            print("skipped: no", program)
            return SKIPPED
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    desk = Desk(*arguments, **surroundings)
    try:
        return go(journey(desk))
    finally:
        desk.clear()
