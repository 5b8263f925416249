"""The program and the real collector write to the heat store at the same time, without a pause. A
write that the other's lock refuses is told and made again, and none is lost."""

from practice import Practice

TITLE = "两个程序写一个库"
WRITES = 10_000


def run(tools, share):
    writes = max(2, 2 * round(WRITES * share / 2))
    with Practice(tools) as practice:
        practice.statement("dzhzhuti.mzdat", "delete from dzhzhuti")
        practice.statement("dzhzhuti.mzdat", themes(writes))
        program = practice.start("edits", str(writes))
        collector = practice.start("caijiqi", "zhuti")
        said = collector.communicate()[0].decode()
        told = program.communicate()[0].decode()
        broken = [] if program.returncode == 0 else [f"程序：{told}"]
        if f"采集完成：共 {writes} 项，写入 {writes} 项，跳过 0 项。" not in said:
            broken.append(f"采集程序：{said}")
        for what, query, expected in (
                ("采集的行", "select count(distinct zhutiname)||'/'||count(*) from xinwenshul where"
                 " zhutiname like '主题%'", f"{writes}/{writes}"),
                ("程序的行", "select count(*) from shopname where shopname like '商品%' and"
                 " guanzhudu=2*substr(shopname,3)+1", str(writes // 2)),
                ("库", "pragma integrity_check", "ok")):
            found = practice.statement("caijiqi.mzdat", query).strip()
            if found != expected:
                broken.append(f"{what}：应是 {expected}，却是 {found}")
        refused = told.split()[-1]
        yield {
            "what": f"程序和采集程序各写采集库 {writes:,} 次（其间 {refused} 次因占用告知后重写）",
            "times": 2 * writes, "broken": broken
        }


def themes(count):
    return ("insert into dzhzhuti(zhutiname,dm,jc,ztktime,guanzhudu) with recursive n(i) as"
            f" (select 1 union all select i+1 from n where i<{count}) select '主题'||i,'SH600000',"
            "'浦发银行','2026-11-01 00:00:00',5 from n")
