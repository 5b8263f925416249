"""tour.py DATA STORE_QUERY PREPARE_STORES PRACTICE_MARKET GUANCHAOTAI

A user's tour of the real program on the practice market, on a screen of its own, with a look at what
its stores then hold."""

import sys

from desk import DAY
from journey import MAIN, Journey, check, travel
from screen import RIGHT

ARTICLES = "wenzhang.mzdat"
HEAT = "caijiqi.mzdat"

THEME = "保险"
MEMBER = "SH601318"
NEWCOMER = "SH600585"

TITLE = "中国平安'2026"
BODY = "第一段。\n第二段：50%的'保费'。"


class Tour(Journey):
    def __init__(self, desk):
        super().__init__(desk)
        self.members = []
        self.steps = [
            self.start, self.fetch_quotes, self.search_a_stock, self.search_a_theme, self.add_a_stock,
            self.set_a_monitor, self.see_it_fire, self.export, self.delete_the_theme,
            self.undo_the_deletion, self.search_a_theme, self.delete_the_theme,
            self.import_it_back, self.write_an_article, self.work_on_a_dead_market,
            self.take_the_days_copy_back, self.close_the_program
        ]

    def start(self):
        # As a run of the collector leaves it.
        self.desk.rows(HEAT, "update canshu set mainisrun=1")
        self.start_program()
        self.expect_column("主题表", 1, "select distinct zhutiname from dzhzhuti")

    def fetch_quotes(self):
        self.desk.market.move_to(MEMBER, lambda gain: gain < -6)
        super().fetch_quotes()
        price = self.desk.market.prices(MEMBER)[1]
        self.expect(MAIN, f"select sp-{price} from dmb where dm='{MEMBER}'", ["0"])

    def search_a_stock(self):
        self.screen.click(self.screen.control(self.main, "text", "代码"))
        self.screen.type(*"gzmt")
        self.screen.click(self.screen.control(self.main, "list item", "SH600519  贵州茅台"))
        self.expect_column("主题表", 1, "select zhutiname from dzhzhuti where dm='SH600519'")

    def search_a_theme(self):
        self.screen.fill(self.main, "主题名", THEME)
        self.screen.press(self.main, "按名称查找主题")
        self.expect_column("主题表", 1,
                           f"select distinct zhutiname from dzhzhuti where zhutiname='{THEME}'")
        self.screen.click(self.theme_cell())
        self.expect_members()

    def add_a_stock(self):
        stocks = self.screen.grid(self.main, "个股表")
        self.screen.pick(stocks.cell(0, 2), RIGHT, "为该主题添加个股")
        self.screen.answer_input("添加到主题:" + THEME, NEWCOMER)
        self.screen.answer("为该主题添加个股完成!")
        self.expect(MAIN, "select ztktime from dzhzhuti "
                    f"where zhutiname='{THEME}' and dm='{NEWCOMER}'", [f"{DAY} 00:00:00"])
        self.expect_members()

    def set_a_monitor(self):
        self.screen.pick(self.theme_cell(), RIGHT, "添加主题监控")
        editor = self.screen.window("添加主题监控")
        self.screen.fill(editor, "报警值", "5.5")
        self.screen.press(editor, "确 定")
        self.screen.answer("添加主题监控完成。")
        self.expect(MAIN, "select zhutiname,bijiaofu,baojinzhi,guzhishu,tanchuform "
                    "from zhutijiankong", [THEME, ">", "5.5", "6", "1"])
        manager = self.screen.window("监控管理(监控已启动)")
        self.screen.fill(manager, "监控频率", "6")
        self.screen.click(self.screen.control(manager, "text", "监控频率"))
        self.screen.type("Return")
        self.expect(MAIN, "select jiankongpinlu from tempcanshu", ["6"])
        self.screen.close("监控管理(监控已启动)")
        self.expect(MAIN, "select zhangfu<-5,baojintime is null from zhutijiankong", ["1", "1"])

    def see_it_fire(self):
        self.desk.market.move_to(MEMBER, lambda gain: gain > 6)
        manager = self.screen.window("监控管理(监控已启动)")
        self.expect(MAIN, "select zhangfu>5.5 from zhutijiankong "
                    f"where baojintime like '{DAY} 10:%'", ["1"])
        alarms = self.screen.grid(manager, "主题监控")
        check("the alarm", [alarms.column(1), alarms.column(6)],
              [[THEME], self.desk.rows(MAIN, "select baojintime from zhutijiankong")[0]])
        self.screen.press(self.main, "停止播放")
        self.screen.wait_until_gone(self.main, "button", "停止播放")
        self.screen.close("监控管理(监控已启动)")

    def export(self):
        self.screen.choose(self.main, "数据(S)", "导出数据")
        self.screen.answer_input("导出数据")
        self.screen.answer("已导出数据到：")
        exported = self.desk.exports / "zhutibackup.ztb"
        themes = "select zhutiname,dm,jc,xiangguandu,guanzhudu from dzhzhuti order by zhutiname,dm"
        self.expect(exported, themes, *self.desk.rows(MAIN, themes))

    def delete_the_theme(self):
        self.members = self.desk.rows(MAIN, self.members_statement())
        self.screen.pick(self.theme_cell(), RIGHT, "删除主题")
        self.screen.answer(f"确实要删除主题'{THEME}'吗?")
        self.screen.answer(f"删除主题'{THEME}'完成!")
        self.expect(MAIN, self.members_statement())

    def undo_the_deletion(self):
        self.screen.press(self.main, "撤消删除")
        self.expect(MAIN, self.members_statement(), *self.members)

    def import_it_back(self):
        self.screen.choose(self.main, "数据(S)", "导入主题")
        self.screen.press(self.screen.window("导入主题"), "从主题库开始导入")
        self.screen.answer(f"导入主题完成，共导入新的数据：{len(self.members)}条")
        self.screen.close("导入主题")
        self.expect(MAIN, self.members_statement(), *self.members)

    def write_an_article(self):
        self.screen.choose(self.main, "文章(W)", "文章管理器")
        self.screen.press(self.screen.window("文章管理器"), "新建")
        editor = self.screen.window("文章编辑和浏览")
        self.screen.fill_box(editor, "大类", "主题")
        self.screen.fill(editor, "标题", TITLE)
        self.screen.fill(editor, "文章内容", BODY)
        self.screen.press(editor, "保存")
        self.expect(ARTICLES, "select dalei,biaoti,replace(leirong,char(10),'\\n'),date(rq) "
                    "from wenzhang", ["主题", TITLE, BODY.replace("\n", "\\n"), DAY])
        self.screen.close("文章编辑和浏览")
        self.screen.close("文章管理器")

    def work_on_a_dead_market(self):
        self.desk.market.freeze()
        self.press_in_the_main_window("F9")
        self.screen.press(self.main, "停止更新行情")
        self.screen.wait_until_gone(self.main, "button", "停止更新行情")
        self.screen.type("F9")
        self.screen.choose(self.main, "行情(H)", "分时数据")
        self.screen.window("分时行情")
        self.screen.close("分时行情")
        self.search_a_theme()
        self.press_in_the_main_window("Escape")
        self.screen.wait_until_gone(self.main, "button", "停止更新行情")
        self.desk.market.thaw()

    def take_the_days_copy_back(self):
        # It was made a moment after the start, long before the article.
        self.take_the_newest_copy_back()
        self.expect(ARTICLES, f"select count(*) from wenzhang where date(rq)='{DAY}'", ["0"])
        self.expect_column("主题表", 1, "select distinct zhutiname from dzhzhuti")

    def close_the_program(self):
        super().close_the_program()
        self.expect(HEAT, "select mainisrun from canshu", ["0"])

    def theme_cell(self):
        return self.screen.grid(self.main, "主题表").cell(0, 1)

    def members_statement(self):
        return ("select dm,jc,xiangguandu,guanzhudu from dzhzhuti "
                f"where zhutiname='{THEME}' order by dm")

    def expect_members(self):
        self.expect_column("个股表", 2, f"select dm from dzhzhuti where zhutiname='{THEME}'")

    def expect_column(self, grid, column, statement):
        wanted = sorted(row[0] for row in self.desk.rows(MAIN, statement))
        self.screen.wait(f"{grid} to list {wanted}", lambda: sorted(
            self.screen.grid(self.main, grid).column(column)) == wanted)


sys.exit(travel(Tour, sys.argv[1:]))
