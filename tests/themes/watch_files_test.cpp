#include "themes/watch_files.h"

#include "formats/gbk.h"
#include "tests/themes/theme_fixture.h"

namespace guanchao {

class WatchFilesTest : public ThemeFixture {
protected:
    WatchFilesTest() {
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 9, 1);
        store_.addCode(u"SH000001"_s, u"上证指数"_s, 3000, 1);
        store_.addCode(u"BJ920799"_s, u"艾融软件"_s, 50, 1);
    }

    QString import(const QByteArray& content, const QString& list = {}) {
        const QString path = store_.folder() + u"块.EBK"_s;
        writeFile(path, content);
        return importBlock(store_.stores, path, list).words(list);
    }
    QStringList onList() { return store_.rows(u"select dm,jc from zixuangu order by rowid"_s); }
};

TEST_F(WatchFilesTest, ALineHoldsACodeInAnyOfItsForms) {
    const QHash<QString, QString> codes = {
        {u"1600000"_s, u"SH600000"_s},
        {u"0000001"_s, u"SZ000001"_s},
        {u"2920799"_s, u"BJ920799"_s},
        {u" sh600000 "_s, u"SH600000"_s},
        {u"600000.SS,浦发"_s, u"SH600000"_s},
        {u"000001.XSHE"_s, u"SZ000001"_s},
        {u"1;'600000;浦发"_s, u"600000"_s},
        {u"\"=\"\"000001\"\"\",平安"_s, QString()},
        {u"=\"000001\",平安"_s, u"000001"_s},
        {u"\"甲,600001\",600000"_s, u"600000"_s},
        {u"3600000"_s, QString()},
        {u"60000"_s, QString()},
        {u"20261124"_s, QString()},
        {u"浦发银行"_s, QString()},
        {u"600000　浦发银行  10.20"_s, u"600000"_s},
    };
    for (auto it = codes.cbegin(); it != codes.cend(); ++it) {
        const BlockFile file = readBlock({u""_s, it.key()});
        EXPECT_EQ(file.stocks.value(0).code, it.value()) << qPrintable(it.key());
        EXPECT_EQ(file.unread, it.value().isEmpty() ? QList{2} : QList<int>())
            << qPrintable(it.key());
    }
}

TEST_F(WatchFilesTest, WhatIsAddedAndWhatIsLeftIsTold) {
    Connection(store_.stores.main.open()).execute(u"insert into zixuangu values('SZ000001','')"_s);
    EXPECT_EQ(import("\r\n0000001\r\n1600000\r\nabc\r\n1600000\r\n1699999\r\n2920799\r\n\r\n1x"),
              u"导入到“自选股”：添加了 2 只股票。\n1 只已经在列表里。\n重复的有 1 只。\n"
              u"代码表里没有的 1 只，没有添加：SH699999\n读不出代码的 2 行：第 4、9 行"_s);
    EXPECT_EQ(onList(),
              QStringList({u"SZ000001|"_s, u"SH600000|浦发银行"_s, u"BJ920799|艾融软件"_s}));
}

TEST_F(WatchFilesTest, ALineOfNothingButCodesIsAListAndATableBringsItsNotesInEitherEncoding) {
    for (const QString& line : {u"600000,SZ000001,"_s, u"SH600000、000001"_s, u"600000 000001"_s}) {
        EXPECT_EQ(importLines(store_.stores, {line}, {}).added, 2) << qPrintable(line);
        store_.run({u"delete from zixuangu"_s});
    }
    EXPECT_EQ(importLines(store_.stores, {u"600000,浦发,000001"_s}, {}).added, 1)
        << "the other is of another column";
    store_.run({u"delete from zixuangu"_s});
    const QString table =
        u"代码,名称,备注\r\n600000,浦发银行,\"低吸,别追\"\r\n000001,平安银行,\r\n"_s;
    EXPECT_EQ(import(gbkFromText(table), u"短线"_s),
              u"导入到“短线”：添加了 2 只股票。\n文件按 GBK 读取。"_s);
    EXPECT_EQ(store_.rows(u"select * from zixuanzugu"_s),
              QStringList({u"短线|SH600000"_s, u"短线|SZ000001"_s}))
        << "the stock and not the index of that number";
    EXPECT_EQ(import("\xEF\xBB\xBF" + QString(table).replace(u"低吸"_s, u"高抛"_s).toUtf8()),
              u"导入到“自选股”：添加了 2 只股票。\n文件按 UTF-8 读取。"_s);
    EXPECT_EQ(store_.rows(u"select * from gegubeizhu"_s), QStringList{u"SH600000|低吸,别追"_s})
        << "the user's own stays";
}

TEST_F(WatchFilesTest, AFailedImportLeavesTheListAsItWas) {
    EXPECT_THROW(import(QByteArray("\0\1\0\1", 4)), OperationError);
    EXPECT_THROW(importBlock(store_.stores, store_.folder() + u"none"_s, {}), OperationError);
    store_.refuse(u"insert on zixuangu when new.dm='SH600000'"_s);
    EXPECT_THROW(import("0000001\r\n1600000\r\n"), StoreError);
    EXPECT_EQ(onList(), QStringList());
}

}  // namespace guanchao
