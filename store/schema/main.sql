-- The main store, dzhzhuti.mzdat (主库): themes, codes with their latest quote, monitors, watchlist
-- and the research tables. Plain file. "time text" is yyyy-MM-dd hh:mm:ss in local time.

-- Membership of a stock in a theme. A theme exists as long as a row names it.
create table dzhzhuti (
    zhutiname text,                      -- 主题名称, the theme's only identity
    dm text,                             -- 代码, upper case with market prefix
    jc text,                             -- 简称 at the time of joining
    ztktime text,                        -- 添加时间, time text
    xiangguandu integer default 5,       -- 相关度, relevance of the stock to the theme, 1 to 10
    guanzhudu integer default 0          -- 关注度, attention to the theme, 1 to 20, on each row
);
-- Over the name alone, so that a theme gives its members in the order in which they joined.
create index dzhzhuti_zhutiname on dzhzhuti (zhutiname);
-- All that the theme table reads of a membership, so that it never touches the rows.
create index dzhzhuti_theme_table on dzhzhuti (zhutiname, dm, guanzhudu, ztktime);
create index dzhzhuti_dm on dzhzhuti (dm, zhutiname);

-- The code table (代码表) with the latest quote of each stock.
create table dmb (
    dm text,                             -- 代码
    numdm text,                          -- the six digits of the code
    jc text,                             -- 简称
    shenmu text,                         -- 声母, lower-case initials of the short name
    newdmtime text,                      -- when the code entered the table, time text
    sp real default 0,                   -- 收盘, last price in yuan
    zhangjine real default 0,            -- 涨跌, last price less previous close
    zhangfu real default 0,              -- 涨幅, percent
    kp real default 0,                   -- 开盘
    zg real default 0,                   -- 最高
    zd real default 0,                   -- 最低
    totalsl numeric default 0,           -- 成交量, as the service gives it: whole numbers stay whole
    totaljine numeric default 0,         -- 成交金额, as the service gives it
    newhqtime text,                      -- 更新时间, when the quote was written, time text
    temp integer default 0               -- scratch mark of the forward returns: 1 = code done
);
create index dmb_dm on dmb (dm);

-- The codes of the code table that are no longer listed (退市). A store of an earlier program gets the
-- table with its first code.
create table tuishi (
    dm text,                             -- as it stands in dmb
    tuishitime text                      -- when the list of stocks no longer had it, time text
);

-- One row of parameters; the program only reads and updates it.
create table tempcanshu (
    id integer,
    xiugaizhutitime text,                -- 主题库更新时间, time text
    hqtime text,                         -- 行情更新时间, last full quote run, time text
    jiankongpinlu integer default 20,    -- 监控频率: seconds between polls, and most polled stocks
    f10url text                          -- web page pattern of the F10 pages, 600000 for the code
);

-- The poll list (监控行情): one row per code that any monitor needs.
create table jiankonghq (
    dm text,
    jc text,
    sp real default 0,                   -- last price
    zhangfu real default 0,              -- percent change
    zhangjine real default 0,            -- change
    totalsl numeric default 0,           -- volume
    totaljine numeric default 0,         -- turnover
    newhqtime text,                      -- last write, time text
    tempdel integer default 0            -- sweep mark: 1 = to be deleted
);
create index jiankonghq_dm on jiankonghq (dm);

-- A monitor on a theme (主题监控).
create table zhutijiankong (
    zhutiname text,
    zhangfu real default 0,              -- 涨幅, the theme's mean gain at the last poll
    bijiaofu text,                       -- 比较符, ">" or "<"
    baojinzhi real default 0,            -- 报警值, threshold in percent
    guzhishu integer default 0,          -- 支数, member count when the monitor was set
    baojintime text,                     -- 报警时间, last alarm, time text
    tanchuform integer default 0,        -- 窗口提示, above 0: the alarm opens the window
    yinyue text                          -- 音乐提示, path of a sound file, or empty
);

-- A monitor on a stock (个股监控).
create table gegujiankong (
    dm text,
    jc text,
    sp real default 0,                   -- price at the last poll
    zhangfu real default 0,              -- percent change at the last poll
    leixin text,                         -- 比较值, "涨幅" or "股价"
    bijiaofu text,                       -- 比较符, ">" or "<"
    baojinzhi real default 0,            -- 报警值
    baojintime text,                     -- 报警时间, time text
    tanchuform integer default 0,        -- 窗口提示
    yinyue text                          -- 音乐提示
);

-- The watchlist (自选股).
create table zixuangu (
    dm text,
    jc text
);

-- Beside it: further lists, their stocks, the own order of each list, and the notes of the user. A
-- store of an earlier program gets these tables with the first of them that is written.

-- A further list (自选分组), in the order in which they were made.
create table zixuanzu (
    zu text                              -- 分组, the list's only identity
);

-- The stocks of further lists (分组股).
create table zixuanzugu (
    zu text,
    dm text
);
create index zixuanzugu_zu on zixuanzugu (zu, dm);

-- The own order (自选顺序) of a list. The place of a stock that has left its list stays, for its
-- return.
create table zixuanshunxu (
    zu text,                             -- empty: the watchlist itself
    dm text,
    weizhi integer                       -- 位置, rising
);
create index zixuanshunxu_zu on zixuanshunxu (zu, dm);

-- What the user has noted of a stock (个股备注), one row a stock.
create table gegubeizhu (
    dm text,
    beizhu text                          -- 备注
);
create index gegubeizhu_dm on gegubeizhu (dm);

-- The day book of the themes (主题日记), one row a theme and day of the last year, and what the user
-- has noted of a day (复盘备注). A store of an earlier program gets both with the first row.
create table zhutiriji (
    riqi text,                           -- 日期, yyyy-MM-dd
    zhutiname text,
    zhangfu real,                        -- 涨幅, the mean of the members in percent
    zhangtingshu integer,                -- 涨停数
    gushu integer,                       -- 股数, members that the code table has
    lingzhang text,                      -- 领涨, codes of the best three, by commas
    hqtime text                          -- when the quotes were taken, time text
);
create index zhutiriji_riqi on zhutiriji (riqi, zhutiname);
create table fupanbeizhu (
    riqi text,                           -- yyyy-MM-dd
    beizhu text                          -- 备注
);

-- Sector codes (板块代码表).
create table bankuaidmb (
    bankuaidm text,
    bankuaijc text
);

-- Scratch result of the comparison of a theme with the market (主题大盘行情), rebuilt each run.
create table zhutidapanhq (
    riqi text,                           -- 日期, time text
    zhutiname text,
    zhutizhangfu real,                   -- 主题涨幅
    dapanzhangfu real,                   -- 大盘涨幅
    dapansp real                         -- 大盘指数
);
create index zhutidapanhq_riqi on zhutidapanhq (datetime(riqi));

-- Downloaded day history (个股行情).
create table geguhq (
    dm text,
    riqi text,                           -- time text
    zhangfu real,
    sp real
);
-- In the form in which days are asked for, so that the newest of a code and a member's row of a day
-- are one step away.
create index geguhq_dm on geguhq (dm, datetime(riqi));

-- One row per selected theme and day (选题材).
create table xuanticai (
    riqi text,                           -- time text
    ticai text,                          -- 题材
    ticaizhang real,                     -- 题材涨, the theme's gain
    zhangtinshu integer,                 -- 涨停数, stocks at the upper limit
    yizishu integer,                     -- 一字数, of these, at the limit all day
    zonggeshu integer,                   -- 总个数
    dapanzhang real,                     -- 大盘涨, the index gain
    touguzhangfu real                    -- 头股涨幅, the best member's gain
);
create index xuanticai_riqi on xuanticai (date(riqi), ticai);

-- One row per member of a selected theme (选题材股), told column by column in research/stock_row.h.
-- Prices are in hundredths of a yuan, adjusted (复权) but for sp and zg; qian… 前 are of days before
-- riqi, hou… 后 of days behind it, chengjl… 成交量 and …liang 量 volumes.
create table xuanticaigu (
    riqi text,
    dm text,
    jc text,
    ticai text,
    fuquansp real,
    sp real,
    zg real,
    qian1sp real,
    qian3sp real,
    qian10sp real,
    qian30sp real,
    fuquankp real,
    chengjl real,
    chengjl10ri real,
    hou1kp real,
    hou2kp real,
    hou1sp real,
    hou2sp real,
    hou5sp real,
    hou10sp real,
    hou1liang real
);
create index xuanticaigu_ticai on xuanticaigu (ticai, date(riqi));

-- Earnings forecasts (业绩预告), addressed by rowid.
create table yejiyugao (
    zhaiyao text,                        -- 摘要
    guanzhudu integer default 0          -- 关注度
);

-- Announced report dates (业绩预约近期), addressed by rowid. The gains are percent.
create table yejiyuyuejinqi (
    dm text,
    jc text,
    todayriqi text,                      -- time text
    yuyuedate text,                      -- 预约日期, time text
    yirizhang real,                      -- gain of one day
    errizhang real,                      -- gain of two days
    wurizhang real,                      -- gain of five days
    daoqizhang real,                     -- gain up to the date
    kaipanzhang real                     -- gain at the opening
);
