-- The heat store, caijiqi.mzdat (采集库): news and commodity counts, shared with the collector.
-- Enciphered.

-- One row: the message board between the program and the collector.
create table canshu (
    mainisrun integer default 0,         -- 1 while a collector run is wanted
    isvisible integer default 0,         -- 1: the collector shows its window
    today text,                          -- the day handed to the collector, time text
    iszidinyinum integer default 0,      -- 1: the custom day count is active
    zidinyinum integer,                  -- the custom day count
    guanzhudu integer default 0,         -- collect themes of attention above this
    shopguanzhudu integer default 0,     -- collect commodities of attention above this
    yinqingurl text                      -- search page pattern with the placeholder tihuandm
);

-- News counts per theme and day (新闻数量).
create table xinwenshul (
    riqi text,                           -- 日期
    zhutiname text,                      -- 主题名称
    onecishu integer default 0,          -- 一日数量
    onezhangfu real default 0,           -- 一日涨幅
    allcishu integer default 0,          -- 全部数量
    allzhangfu real default 0,           -- 全部涨幅
    zdycishu integer default 0,          -- 自定义数量
    zdyzhangfu real default 0,           -- 自定义涨幅
    zdytianshu integer default 0,        -- 自定义天数
    yixiaza integer default 0            -- 已下载, the collector's own mark
);
create index xinwenshul_riqi on xinwenshul (date(riqi), zhutiname);
create index xinwenshul_time on xinwenshul (datetime(riqi));
-- In the order of the days: the ranking of all themes shows the last row of each.
create index xinwenshul_zhutiname on xinwenshul (zhutiname, date(riqi));

-- Commodity word counts per day (商品行情).
create table shophq (
    shopname text,                       -- 商品名称
    riqi text,                           -- 日期
    zhangzi integer default 0,           -- 涨字
    dazhang integer default 0,           -- 大涨
    baozhang integer default 0,          -- 暴涨
    shengzi integer default 0,           -- 升字
    diezi integer default 0,             -- 跌字
    dadie integer default 0,             -- 大跌
    baodie integer default 0,            -- 暴跌
    jiangzi integer default 0,           -- 降字
    zongfen real default 0,              -- 总分
    zhangfu real default 0               -- 增长
);
create index shophq_shopname on shophq (shopname, date(riqi));
create index shophq_time on shophq (datetime(riqi));

-- The commodity list with its latest counts; the ten count columns are those of shophq.
create table shopname (
    shopname text,
    guanzhudu integer default 0,         -- 关注度
    aboutgegu text,                      -- 相关股票
    adddate text,                        -- when the commodity was added
    riqi text,                           -- day of the counts
    zhangzi integer default 0,
    dazhang integer default 0,
    baozhang integer default 0,
    shengzi integer default 0,
    diezi integer default 0,
    dadie integer default 0,
    baodie integer default 0,
    jiangzi integer default 0,
    zongfen real default 0,
    zhangfu real default 0
);

-- The collector adds two tables when it first has something for them; a store without them is whole.
-- heat/news_notes, 新闻数量说明: xinwenshuoming(biao 表, riqi 日期, item 主题名称或代码, laiyuan 来源,
-- onexian 一日数量是下限, allxian 全部数量是下限, zdyxian 自定义数量是下限).
-- heat/headline_store, 新闻标题: xinwenbiaoti(guanjianci 关键词, riqi 采集日期, shijian 时间, biaoti 标题,
-- meiti 媒体, wangzhi 网址).

-- News counts per company and day (公司新闻).
create table gongsixinwen (
    riqi text,
    dm text,
    jc text,
    onecishu integer default 0,
    onezhangfu real default 0,
    allcishu integer default 0,
    allzhangfu real default 0,
    zdycishu integer default 0,
    zdyzhangfu real default 0,
    zdytianshu integer default 0
);
create index gongsixinwen_riqi on gongsixinwen (date(riqi), dm);
create index gongsixinwen_time on gongsixinwen (datetime(riqi));
create index gongsixinwen_dm on gongsixinwen (dm, date(riqi));
