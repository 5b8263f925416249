"""The desk on which the pictures are taken: a practice market, an application folder with something to
show in every window, a clock that stands at the same moment in every run, and windows with frames."""

import shutil

from desk import DAY, FAKETIME, Desk, Market, add_program, run

MAIN = "dzhzhuti.mzdat"
ARTICLES = "wenzhang.mzdat"
HEAT = "caijiqi.mzdat"
THEME = "印制电路板"

# Before the close, with most of the day on the charts.
CLOCK = {"LD_PRELOAD": FAKETIME, "FAKETIME": f"@{DAY} 14:10:00"}

# What a reader sees in place of the folder of this run.
SHOWN_HOME = "/home/user"
SOUND = f"{SHOWN_HOME}/.local/share/guanchaotai/cnwav.mp3"

PAGES = "chart stockpage sitepage newspage vendor search".split()
KINDS = """quote sina, quote.2 tencent, history sina, history.2 tencent, history.3 eastmoney,
history.4 csv, factors sina, fundamentals sina, boards sina, boards.2 eastmoney, stocklist sina,
stocklist.2 eastmoney"""

CONTENTS = {
    MAIN: [
        "insert into zhutijiankong values('保险',8.0,'>',2.0,5,'{day} 13:41:01',1,'{sound}')",
        "insert into gegujiankong values('SH601319','中国人保',6.72,8.04,'涨幅','>',2.5,"
        "'{day} 13:41:01',1,'{sound}')",
        "insert into gegujiankong values('SH601601','中国太保',70.28,8.01,'股价','>',36.5,"
        "'{day} 13:40:21',1,'{sound}')",
        "insert into jiankonghq(dm,jc) select dm,jc from dzhzhuti where zhutiname='保险'",
        f"insert into zixuangu select dm,jc from dzhzhuti where zhutiname='{THEME}' limit 7",
        "insert into zixuangu values('SH601601','中国太保')",
        "insert into zixuanzu values('短线'),('长线')",
        "insert into gegubeizhu values('SH601601','等三季报，36.5 以上减')",
    ],
    # As the collector keeps them.
    HEAT: [
        "create table xinwenbiaoti (guanjianci text,riqi text,shijian text,biaoti text,meiti text,"
        "wangzhi text)"] + [
        "insert into xinwenbiaoti select zhutiname,date(max(riqi)),date(max(riqi))||' " + time +
        ":00',zhutiname||'：" + words + "','证券报','https://example.com/" + time[:2] +
        "' from xinwenshul group by zhutiname" for time, words in (
            ("13:32", "订单排到明年，龙头扩产"), ("11:05", "三季报汇总，七成公司净利增长"),
            ("10:18", "原料涨价，产品跟不跟"), ("09:02", "机构上周密集调研"))],
    ARTICLES: [
        "insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong) values"
        f"('2026-11-18','甲','主题','{THEME}','{THEME}：三季报汇总','收入和毛利率逐家列出。'),"
        "('2026-11-20','甲','主题','光伏','硅料价格连续六周上涨','组件还没有跟上。'),"
        "('2026-11-21','乙','个股','SZ002463沪电股份','沪电股份调研纪要','高多层板的产能。'),"
        f"('2026-11-23','甲','主题','{THEME}','覆铜板提价会传到下游吗','覆铜板今年第三次提价，从原料开始"
        "传递：'||char(10)||char(10)||'铜箔、树脂、玻璃布依次上涨。'||char(10)||char(10)||"
        "'下游的接受程度看产品结构：高多层板能够转嫁，普通板要自己消化一部分。'||char(10)||char(10)||"
        "'要跟踪的三件事：'||char(10)||'一、覆铜板厂的交货期有没有继续拉长；'||char(10)||"
        "'二、高多层板的毛利率在年报里是升是降；'||char(10)||'三、主题的涨幅和成交额是不是一起放大。'),"
        "('2026-11-24','甲','随笔','交易纪律','一周小结','照计划做的三笔，没有照计划的一笔。')",
        "insert into proxy(ProxyServer,ProxyPort,defaultproxy) values('192.168.1.20',8080,1),"
        "('192.0.2.18',3128,0),('198.51.100.7',8080,0),('203.0.113.42',1080,0),"
        "('proxy.example.com',8080,0)",
    ],
}


class CalmMarket(Market):
    options = ()


class PictureDesk(Desk):
    def __init__(self, root, build, screen, light):
        tools = build / "tools"
        super().__init__(root / "data", build / "tests/store_query", tools / "prepare_stores",
                         tools / "practice_market", build / "app/guanchaotai",
                         tools / "practice_history", build / "collector/caijiqi", CLOCK, screen,
                         light)
        self.build = build

    def set_up(self):
        super().set_up(lambda it: CalmMarket(it, **CLOCK))
        self.start_window_manager()

    def prepare_application(self):
        super().prepare_application()
        self.copy_programs()
        self.write_services()
        self.fill_stores()
        self.exports.mkdir(parents=True)
        shutil.copy(self.data / "主题txt文件示例.txt", self.exports / "主题投资.txt")

    def copy_programs(self):
        add_program(self.collector, self.application / "caijiqi")
        browser = self.build / "app/libguanchao_browser.so"
        if browser.exists():
            shutil.copy(browser, self.application)

    def write_services(self):
        host = self.market.host
        (self.application / "services.ini").write_text("[practice]\n" + "".join(
            f"[{it}]\nhost={host}\n" for it in PAGES) + "".join(
            "[{}]\nkind={}\nhost={}\nahead=6\n".format(*it.split(), host)
            for it in KINDS.split(",")))
        (self.application / "caijiqi.ini").write_text("[pace]\npause=0.2\nrandom=0\nretries=1,5\n")

    def leave_practice(self):
        """From the next start on: the same services, not told to be made up, and a practice beside."""
        self.program.terminate()
        self.program.wait()
        services = self.application / "services.ini"
        services.write_text(services.read_text().replace("[practice]\n", ""))
        (self.application / "guanchaotai-lianxi").touch()

    def fill_stores(self):
        run(self.practice_history, self.data / "codes.csv", self.data / "themes.csv",
            self.application, **CLOCK)
        for store, statements in CONTENTS.items():
            for it in statements:
                self.rows(store, it.format(day=DAY, sound=SOUND))
