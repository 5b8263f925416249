"""A practice folder with all that the program writes to, and the market that it asks."""

import os
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent.parent / "tour"))
import desk  # noqa: E402
from desk import TourFailure  # noqa: E402

SERVICES = "".join("[{}]\nhost={{0}}\n".format(it) for it in desk.SERVICES)


class Practice:
    """`folder` is the application folder, `exports` that of the exports; both lie in the home folder
    of all that is run here. `given` is for files to import. The market's clock stands still, so that
    a run repeats."""

    def __init__(self, tools):
        self.tools = tools
        self.data = tools.source.resolve() / "data"
        self.root = Path(tempfile.mkdtemp(prefix="guanchao-campaign-"))
        self.home = self.root / "home"
        self.folder = self.home / "application"
        self.exports = self.home / "导出主题"
        self.given = self.root / "given"
        self.environment = os.environ | {"HOME": str(self.home), "QT_QPA_PLATFORM": "offscreen"}
        self.market = None

    def __enter__(self):
        for it in (self.folder, self.exports, self.given, self.home / "听涛阁"):
            it.mkdir(parents=True)
        self.start_market()
        self.run("tools/prepare_stores", self.folder, self.data, self.host)
        self.run("tools/practice_history", self.data / "codes.csv", self.data / "themes.csv",
                 self.folder)
        (self.folder / "services.ini").write_text(SERVICES.format(self.host))
        (self.folder / "caijiqi.ini").write_text("[pace]\npause=0\nrandom=0\n")
        self.statement("caijiqi.mzdat",
                       "update canshu set mainisrun=1,isvisible=0,today='2026-11-24 00:00:00'")
        return self

    def __exit__(self, *_):
        self.market.terminate()
        self.market.wait()
        shutil.rmtree(self.root)

    def start_market(self):
        port = self.root / "port"
        self.market = subprocess.Popen(
            [self.program("tools/practice_market"), self.data / "codes.csv", port],
            env=os.environ | {"LD_PRELOAD": desk.FAKETIME, "FAKETIME": f"{desk.DAY} 10:00:00"})
        desk.wait("the practice market", port.exists)
        self.host = "http://127.0.0.1:" + port.read_text().strip()

    def program(self, path):
        return self.tools.dev.resolve() / path

    def command(self, word, *arguments):
        """Of an operation: a word of campaign_job or, behind "caijiqi", one of the collector. An
        argument may name the folders: {exports}, {given}."""
        if word == "caijiqi":
            return [self.collector(), *arguments]
        return [self.program("tests/campaign/campaign_job"), word, self.folder, self.host,
                *(it.format(exports=self.exports, given=self.given) for it in arguments)]

    def collector(self):
        """It works on the folder in which it lies."""
        path = self.folder / "caijiqi"
        if not path.exists():
            shutil.copy2(self.program("collector/caijiqi"), path)
        return path

    def start(self, *operation):
        return subprocess.Popen(self.command(*operation), env=self.environment,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def job(self, *operation):
        """What it says; a failure is raised with its words."""
        process = self.start(*operation)
        said = process.communicate()[0].decode()
        if process.returncode != 0:
            raise TourFailure(f"{operation[0]}: {process.returncode} {said}")
        return said

    def run(self, path, *arguments):
        return desk.run(self.program(path), *arguments, HOME=str(self.home))

    def statement(self, store, words):
        return self.run("tests/store_query", self.folder / store, words)

    def keep(self, name):
        """Keeps what is in the home folder, to be put back later."""
        copy(self.home, self.root / name)

    def put_back(self, name):
        copy(self.root / name, self.home)

    def state(self):
        """How often each row is in each table, by the store's path and the table. Raises where a
        store isn't whole."""
        state = {}
        for line in self.job("rows", "{exports}").splitlines()[:-1]:
            path, table, row = line.split("\t")
            rows = state.setdefault((os.path.relpath(path, self.home), table), Counter())
            if row:
                rows[row] += 1
        return state

    def files(self):
        """Without journals that were only begun: the next write takes them away."""
        return {str(it.relative_to(self.home)) for it in self.home.rglob("*")
                if it.is_file() and not it.name.endswith("-journal")}


def copy(source, target):
    for name in ("application", "导出主题"):
        shutil.rmtree(target / name, ignore_errors=True)
        shutil.copytree(source / name, target / name, copy_function=copy_file)


def copy_file(source, target):
    """Of the collector there is one copy alone: it is large."""
    (os.link if Path(source).name == "caijiqi" else shutil.copy2)(source, target)
