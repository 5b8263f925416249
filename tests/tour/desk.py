"""What a tour stands on, all its own: a folder, a session bus, a screen, the practice market and the
program. Everything is gone when the desk is cleared."""

import ctypes
import os
import shutil
import signal
import subprocess
import tempfile
import time
import urllib.request
from pathlib import Path

DAY = "2026-11-25"  # a Wednesday
FAKETIME = "/usr/$LIB/faketime/libfaketime.so.1"
# The clock runs on from a moment within a trading session.
IN_SESSION = {"LD_PRELOAD": FAKETIME, "FAKETIME": f"@{DAY} 10:00:00"}

# The program ends all that run under its image name, so that of every tour has a name of its own.
IMAGE = f"guanchaotai-{os.getpid()}-tour"

SERVICES = "quote chart stockpage sitepage newspage history vendor search".split()

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
libc = ctypes.CDLL(None)

# Whatever proxy the surroundings name.
directly = urllib.request.build_opener(urllib.request.ProxyHandler({}))


class TourFailure(Exception):
    pass


def wait(what, condition, seconds=20):
    """The first answer of the condition that counts as true."""
    deadline = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise TourFailure(f"waited {seconds} s for {what}")
        time.sleep(0.05)


def run(program, *arguments, **environment):
    done = subprocess.run([program, *arguments], capture_output=True, text=True, check=False,
                          env=os.environ | environment)
    if done.returncode != 0:
        raise TourFailure(f"{program}: {done.stderr}")
    return done.stdout


def as_key(words):
    """As the toolkit writes it into a file of settings."""
    return "".join(f"%U{ord(it):04X}" for it in words)


def end_with_parent():
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGTERM)


def add_program(built, path):
    """As a second name where the disk is the same: a sanitized one is 350 MB large."""
    try:
        os.link(built, path)
    except OSError:
        shutil.copy(built, path)


class Desk:
    def __init__(self, data, store_query, prepare_stores, practice_market, guanchaotai,
                 practice_history=None, collector=None, clock=IN_SESSION, screen="1920x1080",
                 light=False):
        self.data = Path(data)
        self.store_query = store_query
        self.prepare_stores = prepare_stores
        self.practice_market = practice_market
        self.guanchaotai = guanchaotai
        self.practice_history = practice_history
        self.collector = collector
        self.clock = clock
        self.screen = screen
        self.light = light
        self.folder = Path(tempfile.mkdtemp(prefix="guanchao-tour-"))
        # The sockets in it want a short path.
        self.runtime = Path(tempfile.mkdtemp(prefix="guanchao-runtime-", dir="/tmp"))
        self.application = self.folder / "application"
        self.exports = self.folder / "home/导出主题"
        self.program = None
        # What a child of the tour leaves behind when it ends comes to the tour, to be ended too.
        libc.prctl(PR_SET_CHILD_SUBREAPER, 1)

    def set_up(self, market):
        self.prepare_surroundings()
        self.market = market(self)
        self.prepare_application()

    def prepare_surroundings(self):
        for name in ("home", "application"):
            (self.folder / name).mkdir(mode=0o700)
        for name in [it for it in os.environ if it.startswith("XDG_")]:
            del os.environ[name]
        os.environ.update(
            HOME=str(self.folder / "home"),
            XDG_RUNTIME_DIR=str(self.runtime),
            LC_ALL="C.UTF-8",
            GSETTINGS_BACKEND="memory",
            QT_QPA_PLATFORM="xcb",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            # A sanitized program takes the other clock's library before its own.
            ASAN_OPTIONS=os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0",
            # Whatever this machine has, an alarm plays into nothing.
            PULSE_SERVER="none",
            GST_PLUGIN_FEATURE_RANK="pulsesink:NONE,alsasink:NONE,jackaudiosink:NONE",
        )
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.told_by(
            lambda fd: ["dbus-daemon", "--session", "--nofork", f"--print-address={fd}"])
        os.environ["DISPLAY"] = ":" + self.told_by(
            lambda fd: ["Xvfb", "-displayfd", str(fd), "-screen", "0", self.screen + "x24",
                        "-noreset"])
        self.start("/usr/libexec/at-spi-bus-launcher", "--launch-immediately")

    def prepare_application(self):
        add_program(self.guanchaotai, self.application / IMAGE)
        for name in ("cnwav.mp3", "pet.ico"):
            shutil.copy(self.data / name, self.application)
        run(self.prepare_stores, self.application, self.data, self.market.host, **IN_SESSION)
        (self.application / "services.ini").write_text(
            "".join(f"[{it}]\nhost={self.market.host}\n" for it in SERVICES))
        if self.light:
            self.choose_light_colours()

    def choose_light_colours(self):
        """As 工具 / 外观 keeps it; a desktop that tells nothing is a dark one."""
        (self.application / "界面.ini").write_text(f"[{as_key('外观')}]\n{as_key('颜色')}=2\n")

    def set_services(self, hosts):
        """By host the sections that lead there, with their kinds: "quote sina, newspage"."""
        text = ""
        for host, sections in hosts.items():
            for it in sections.split(", "):
                section, _, kind = it.partition(" ")
                text += f"[{section}]\nhost={host}\npause=0\n" + (f"kind={kind}\n" if kind else "")
        (self.application / "services.ini").write_text(text)

    def start_window_manager(self):
        settings = self.folder / "openbox.xml"
        settings.write_text(Path("/etc/xdg/openbox/rc.xml").read_text().replace(
            "<name>Clearlooks</name>", "<name>Onyx</name>"))
        # It says so when it manages the screen.
        self.start("openbox", "--sm-disable", "--config-file", settings, "--startup",
                   f"touch {self.folder / 'managed'}")
        wait("the window manager", (self.folder / "managed").exists)

    def start_program(self):
        self.program = self.start(self.application / IMAGE, **self.clock)
        return self.program

    def rows(self, file, statement):
        """The rows of a store of the application folder, or of a backup file given by its path."""
        lines = run(self.store_query, self.application / file, statement).splitlines()
        return [line.split("\t") for line in lines]

    def start(self, program, *arguments, fds=(), **environment):
        with open(self.log(program), "w") as log:
            return subprocess.Popen([program, *arguments], stdout=log, stderr=log, pass_fds=fds,
                                    env=os.environ | environment, preexec_fn=end_with_parent)

    def told_by(self, command):
        """Starts a program and returns the line by which it tells its address."""
        reader, writer = os.pipe()
        self.start(*command(writer), fds=(writer,))
        os.close(writer)
        with open(reader) as told:
            address = told.readline().strip()
        if not address:
            raise TourFailure(f"{command(writer)[0]} ended at its start")
        return address

    def log(self, program):
        return self.folder / (Path(program).name + ".log")

    def said(self):
        """What the program wrote on its error output."""
        log = self.log(IMAGE)
        return log.read_text() if log.exists() else "nothing"

    def clear(self):
        try:
            wait("all to end", lambda: end_children(signal.SIGTERM), 5)
        except TourFailure:
            wait("all to be ended", lambda: end_children(signal.SIGKILL))
        for it in (self.folder, self.runtime):
            shutil.rmtree(it)
        if self.program:
            # What its clock leaves where it did not end by itself.
            for left in Path("/dev/shm").glob(f"*faketime_*_{self.program.pid}"):
                left.unlink()


class Market:
    """A lively practice market."""

    options = ("--lively",)

    def __init__(self, desk, **clock):
        port = desk.folder / "market.port"
        port.unlink(missing_ok=True)
        self.process = desk.start(desk.practice_market, desk.data / "codes.csv", port,
                                  *self.options, **clock)
        wait("the practice market", lambda: port.exists() or self.process.poll() is not None)
        if not port.exists():
            raise TourFailure(f"the practice market ended with {self.process.returncode}")
        self.host = "http://127.0.0.1:" + port.read_text().strip()


class StillMarket(Market):
    """Its clock stands still wherever the tour sets it: prices hang on the clock alone."""

    def __init__(self, desk):
        self.clock = desk.folder / "market.clock"
        self.set_clock(0)
        super().__init__(desk, LD_PRELOAD=FAKETIME, FAKETIME_TIMESTAMP_FILE=str(self.clock),
                         FAKETIME_NO_CACHE="1")

    def freeze(self):
        """From now on it takes every connection and answers none."""
        self.process.send_signal(signal.SIGSTOP)

    def thaw(self):
        self.process.send_signal(signal.SIGCONT)

    def set_clock(self, second):
        new = self.clock.with_suffix(".new")
        new.write_text(f"{DAY} 10:00:{second:02}\n")
        new.replace(self.clock)

    def prices(self, code):
        """The former close and the last price."""
        with directly.open(f"{self.host}/list={code.lower()}") as reply:
            fields = reply.read().decode("gb18030").split(",")
        return float(fields[2]), float(fields[3])

    def move_to(self, code, wanted):
        """Sets the clock to a moment at which the gain of the code in percent is a wanted one."""
        for second in range(60):
            self.set_clock(second)
            former, last = self.prices(code)
            if wanted((last / former - 1) * 100):
                return
        raise TourFailure(f"no moment at which {code} stands as wanted")


def end_children(how):
    """True once none is left."""
    for child in children_of(os.getpid()):
        os.kill(child, how)
    try:
        while os.waitpid(-1, os.WNOHANG) != (0, 0):
            pass
    except ChildProcessError:
        return True
    return False


def children_of(parent):
    found = []
    for process in Path("/proc").glob("[0-9]*"):
        try:
            after_name = (process / "stat").read_text().rpartition(")")[2].split()
        except OSError:
            continue
        if int(after_name[1]) == parent:
            found.append(int(process.name))
    return found
