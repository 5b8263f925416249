-- The empty template of the exported theme library, yzhutibackup.mzdat. Enciphered. The columns
-- mean what they mean in the main store.

create table dzhzhuti (
    zhutiname text,
    dm text,
    jc text,
    ztktime text,
    xiangguandu integer default 5,
    guanzhudu integer default 0
);

create table dmb (
    dm text,
    numdm text,
    jc text,
    shenmu text,
    newdmtime text
);
