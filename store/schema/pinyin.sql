-- The pinyin store, py.mzdat (拼音库). Enciphered.

create table pingyin (
    name text,                           -- a character
    pycode text                          -- its reading, lower case without tones
);
create index pingyin_name on pingyin (name);
