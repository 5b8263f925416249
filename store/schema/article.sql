-- The article store, wenzhang.mzdat (文章库): articles and proxy settings. Enciphered.

create table wenzhang (
    id integer primary key,              -- assigned by the store
    rq text,                             -- 日期, date or time text
    zuozhe text,                         -- 作者
    dalei text,                          -- 大类
    xiaolei text,                        -- 小类
    biaoti text,                         -- 标题
    leirong text,                        -- 内容
    cishu integer default 0              -- times read
);
-- The lists of the browser, without a look at the texts.
create index wenzhang_dalei on wenzhang (dalei, xiaolei);
create index wenzhang_id on wenzhang (id, zuozhe);
create index wenzhang_rq on wenzhang (rq);
create index wenzhang_day on wenzhang (date(rq));
-- Related articles, the most read first.
create index wenzhang_zuozhe_cishu on wenzhang (zuozhe, cishu);
create index wenzhang_dalei_cishu on wenzhang (dalei, cishu);
create index wenzhang_xiaolei_cishu on wenzhang (xiaolei, cishu);

create table proxy (
    id integer primary key,
    ProxyServer text,
    ProxyPort integer,
    UseProxyUser integer default 0,      -- 1: the server wants a user and a password
    proxyuser text,
    proxypassword text,
    beizhu text,                         -- 备注
    defaultproxy integer default 0,      -- 1: the current proxy, on one row at most
    down integer default 0               -- 1: the row came from the downloaded list
);

-- One row of switches; not the table of that name in the main store.
create table tempcanshu (
    id integer,
    UseProxy integer default 0,
    pasv integer default 0
);
