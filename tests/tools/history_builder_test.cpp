#include "research/history_store.h"

#include <QTemporaryDir>
#include <QtEndian>

#include "formats/gbk.h"
#include "store/store_error.h"
#include "tests/support/outcome_of.h"
#include "tests/support/test_stores.h"
#include "tools/history_builder/builder_failure.h"
#include "tools/history_builder/day_source.h"
#include "tools/history_builder/theme_members.h"

namespace guanchao {

static const QByteArray ownHeader =
    "dm,shijian,kp,zg,zd,sp,qiansp,chengjiaol,chengjiaoe,fuquanyz\n";

template <typename Run>
static QString failureOf(const Run& run) {
    return QString::fromUtf8(raisedBy<std::runtime_error>(run).what());
}

class HistoryBuilderTest : public ::testing::Test {
protected:
    struct Built {
        AddedDays days;
        SkippedRows skipped;
    };

    Built build(const QString& path, std::optional<VolumeUnit> unit = {},
                const QList<ThemeMember>& themes = {}) {
        DaySource source(path, unit, {2026, 11, 24});
        const ReadDays read = [&](const TakeDay& take) { source.read(take); };
        const AddedDays days = readIntoHistory(files_, read, themes);
        return {days, source.skipped()};
    }
    void add(const QByteArray& lines, const QList<ThemeMember>& themes = {}) {
        writeFile(csv_, ownHeader + lines);
        build(csv_, {}, themes);
    }
    QString written(const QString& name, const QByteArray& content) {
        const QString path = folder_.filePath(name);
        writeFile(path, content);
        return path;
    }
    QStringList first(const QString& query) { return TestStores::rows({files_.first, {}}, query); }
    QStringList second(const QString& query) {
        return TestStores::rows({files_.second, {}}, query);
    }

    QTemporaryDir folder_;
    const QString csv_ = folder_.filePath(u"days.csv"_s);
    const HistoryFiles files_{folder_.filePath(u"a/first.db3"_s),
                              folder_.filePath(u"a/second.db3"_s)};
};

TEST_F(HistoryBuilderTest, NewDaysComeToWhatIsThereOnlyOnce) {
    const QByteArray day19 = "SH600000,2026-11-19,12.34,12.5,12,12.345,12.3,7000,86380.5,1.05\n";
    const QByteArray day20 = "SH600000,2026-11-20,9.99,10,9,9.5,12.35,8000,76000,1.1\n";
    const QByteArray index = "SH000001,2026-11-20,3000.12,3001,2990,3000,2999,1,2,1\n";
    add(day19 + day19, {{u"银行"_s, u"SH600000"_s}, {u"旧"_s, u"SZ000001"_s}});
    add(index + day20 + day19, {{u"银行'"_s, u"SH600000"_s}});
    add(QByteArray(day20).replace("9.99", "9.98"));
    const QStringList days = {u"2026-11-19|1234|1250|1200|1235|1230|7000|86380.5|1.05"_s,
                              u"2026-11-20|999|1000|900|950|1235|8000|76000|1.1"_s};
    EXPECT_EQ(first(u"select * from SH600000"_s), days);
    EXPECT_EQ(second(u"select * from SH600000"_s), days);
    EXPECT_EQ(first(u"select * from geguhq"_s),
              QStringList({u"SH600000|"_s + days[0], u"SH600000|"_s + days[1]}))
        << "stocks, not the index";
    EXPECT_EQ(first(u"select kp from SH000001"_s), QStringList{u"300012"_s});
    EXPECT_EQ(first(u"select * from dzhzhuti"_s), QStringList{u"银行'|SH600000"_s})
        << "no themes are no reason to empty the table";
    EXPECT_EQ(second(u"select * from nishihq2"_s), QStringList());
    EXPECT_EQ(first(u"select name from sqlite_master where name like 'geguhq_*' order by 1"_s),
              QStringList({u"geguhq_dm"_s, u"geguhq_shijian"_s}));
}

// The one day of a file in the words of each library.
TEST_F(HistoryBuilderTest, AHeaderTellsTheColumns) {
    const QString day = u"SH600000|2026-11-20|950|1000|900|990|980|"_s;
    const QByteArray own =
        "fuquanyz,sp,zd,zg,kp,qiansp,shijian,dm,chengjiaol,chengjiaoe\n"
        "1.5,9.9,9,10,9.5,9.8,2026-11-20,SH600000,8000,76000";
    const QByteArray tushare =
        "ts_code,trade_date,open,high,low,close,pre_close,change,pct_chg,vol,amount\n"
        "600000.SH,20261120,9.5,10,9,9.9,9.8,0.1,1.02,80,76.5";
    const QByteArray akshare = gbkFromText(
        u",日期,股票代码,开盘,收盘,最高,最低,成交量,成交额,振幅,涨跌幅,涨跌额\r\n"
        u"0,2026-11-20,600000,9.5,9.9,10,9,80,76000.0,1,1,0.1\r\n"_s);
    const QByteArray named =
        u"日期,开盘价,最高价,最低价,收盘价,前收盘,成交量（手）,成交额(万元)\n"
        u"2026/11/20,9.5,10,9,9.9,9.8,80,7.6\n"_s.toUtf8();
    const QByteArray baostock =
        "\xEF\xBB\xBF\"date\",\"code\",\"open\",\"high\",\"low\",\"close\",\"preclose\","
        "\"volume\",\"name\",\"adj_factor\"\n"
        "\"2026-11-20 00:00:00\",\"sh.600000\",\"9.5\",\"10\",\"9\",\"9.9\",\"9.8\",\"8000\","
        "\"a,b\",\"1.5\"\n";
    const std::optional<VolumeUnit> told;
    const struct {
        QString file;
        QByteArray content;
        std::optional<VolumeUnit> unit;
        QString rest;  // volume, turnover, factor
    } cases[] = {
        {u"a.csv"_s, own, told, u"8000|76000|1.5"_s},
        {u"b.csv"_s, tushare, told, u"8000|76500|1"_s},
        {u"c.csv"_s, akshare, VolumeUnit::lots, u"8000|76000|1"_s},
        {u"浦发银行_sh600000.csv"_s, named, VolumeUnit::shares, u"8000|76000|1"_s},
        {u"d.csv"_s, baostock, VolumeUnit::shares, u"8000|0|1.5"_s},
    };
    for (const auto& it : cases) {
        QFile::remove(files_.first);
        build(written(it.file, it.content), it.unit);
        EXPECT_EQ(first(u"select * from geguhq"_s), QStringList{day + it.rest})
            << it.content.toStdString();
    }
}

TEST_F(HistoryBuilderTest, ABadRowIsNamedAndNothingIsWritten) {
    const QString csv = u"a.csv"_s;
    const QByteArray own = ownHeader, day = "SH600000,2026-11-20,";
    const QByteArray good = "SH600000,2026-11-19,1,1,1,1,1,1,1,1\n";
    const QByteArray english = "date,open,high,low,close,volume\n";
    const QString names = u"。第一行要写明每一列是什么，例如 日期,开盘,最高,最低,收盘,成交量(股)"_s;
    const QString unit =
        u"表头没有写明成交量的单位。请在命令里加上 --lots（文件里是手）或 --shares（文件里是股）"_s;
    const struct {
        QString file;
        QByteArray header, row;
        int line;
        QString words;
    } cases[] = {
        {csv, own, day + "1,1,1,1,1,1,1", 2, u"应有 10 个字段，却有 9 个"_s},
        {csv, own, day + "1,1,1,1,1,1,1,1,2", 2, u"应有 10 个字段，却有 11 个"_s},
        {csv, own + good + "\n", "60000,2026-11-20,1,1,1,1,1,1,1,1", 4,
         u"“60000”不是代码，例如 SH600000"_s},
        {csv, own, "SH600000,2026-13-20,1,1,1,1,1,1,1,1", 2,
         u"“2026-13-20”不是日期，例如 2026-11-24"_s},
        {csv, own, "SH600000,1926-11-20,1,1,1,1,1,1,1,1", 2, u"日期不对"_s},
        {csv, own, day + "1,1,1,x,1,1,1,1", 2, u"收盘“x”不是数字"_s},
        {csv, own, day + "1,1,0.001,1,1,1,1,1", 2, u"最低“0.001”要在 0.01 到 1000000 之间"_s},
        {csv, own, day + "1,1,1,\"1,23\",1,1,1,1", 2, u"收盘“1,23”不是数字"_s},
        {csv, own, day + "1,1,1,1,1,-1,1,1", 2, u"成交量“-1”不是数字"_s},
        {csv, own, day + "1,1,1,1,1,1,1,0", 2, u"复权因子要大于 0"_s},
        {csv, own, day + "9,9,10,9,9,1,1,1", 2, u"最高价低于最低价"_s},
        {csv, own, day + "9,9,8,9.5,9,1,1,1", 2, u"开盘价或收盘价不在最低价和最高价之间"_s},
        {csv, good, good, 1, u"表头里没有“日期”“开盘”“最高”“最低”“收盘”“成交量”"_s + names},
        {csv, "date,open,high,low,volume\n", "", 1, u"表头里没有“收盘”"_s + names},
        {csv, english, "", 1, u"表头里没有“代码”，文件名里也没有股票代码"_s},
        {u"600000.csv"_s, english, "2026-11-20,1,1,1,1,5", 2, unit},
    };
    add(good);
    for (const auto& it : cases) {
        const QString path = written(it.file, it.header + it.row);
        EXPECT_EQ(failureOf([&] { build(path); }), path + u" 第 %1 行："_s.arg(it.line) + it.words);
    }
    const QString empty = written(u"none/readme.txt"_s, "x").chopped(11);
    EXPECT_EQ(failureOf([&] { build(empty); }),
              empty + u"：里面没有 .day 文件，也没有 .csv 文件"_s);
    EXPECT_EQ(first(u"select count(*) from geguhq"_s), QStringList{u"1"_s});
}

TEST_F(HistoryBuilderTest, WhatIsNoDayOfTheHistoryIsSkippedAndCounted) {
    const QByteArray header = "code,date,open,high,low,close,preclose,volume\n";
    const Built built =
        build(written(u"a.csv"_s, header + "bj430047,2026-11-20,1,1,1,1,1,5\n"
                                           "920002,2026-11-20,1,1,1,1,1,5\n"
                                           "SH600000,2026-11-20,,,,1,1,5\n"
                                           "SH600000,2026-11-19,0,0,0,1,1,0\n"
                                           "SH600000,2026-11-18,1,1,1,1,1,nan\n"
                                           "SH600000,2026-11-17,1,1,1,1,1,\"1,234,567.5\"\n"
                                           "SH600000,2026-11-25,1,1,1,1,1,5\n"
                                           "SH600000,2062-11-23,1,1,1,1,1,5\n"
                                           "510300,2026-11-17,1,1,1,1,1,5\n"
                                           "159915,2026-11-17,1,1,1,1,1,5\n"
                                           "200002,2026-11-17,1,1,1,1,1,5\n"
                                           "900901,2026-11-17,1,1,1,1,1,5\n"
                                           "SH000001,2026-11-17,1,1,1,1,1,0\n"),
              VolumeUnit::shares);
    EXPECT_EQ(built.skipped.beijing, 2);
    EXPECT_EQ(built.skipped.halted, 3);
    EXPECT_EQ(built.skipped.future, 2);
    EXPECT_EQ(built.skipped.otherKinds, 4) << "funds and B shares";
    EXPECT_EQ(built.days.added, 2) << "the index needs no volume";
    EXPECT_EQ(first(u"select chengjiaol from SH600000"_s), QStringList{u"1234567.5"_s});
}

// The newest day first: the former close is that of the day before.
TEST_F(HistoryBuilderTest, AFolderOfATerminalIsRead) {
    const auto record = [](quint32 day, quint32 price, quint32 volume) {
        QByteArray bytes(32, '\0');
        const quint32 fields[] = {day, price, price + 5, price - 5, price};
        for (qsizetype at = 0; at < 5; ++at) {
            qToLittleEndian(fields[at], bytes.data() + 4 * at);
        }
        qToLittleEndian(76000.5F, bytes.data() + 20);
        qToLittleEndian(volume, bytes.data() + 24);
        return bytes;
    };
    const QByteArray days = record(20261120, 1010, 4000000000) + record(20261119, 1000, 0) +
                            record(20261119, 0, 9) + record(20261118, 1000, 1);
    for (const QString& code : {u"sh/lday/sh600000"_s, u"sz/lday/sz000001"_s, u"bj/lday/bj430047"_s,
                                u"sh/lday/sh510050"_s}) {
        written(u"vipdoc/"_s + code + u".day"_s, days);
    }
    const QString folder = folder_.filePath(u"vipdoc"_s);
    const Built built = build(folder);
    EXPECT_EQ(
        first(u"select * from geguhq"_s),
        QStringList({u"SH600000|2026-11-20|1010|1015|1005|1010|1000|4000000000|76000.5|1"_s,
                     u"SZ000001|2026-11-20|1010|1015|1005|1010|1000|4000000000|76000.5|1"_s}));
    EXPECT_EQ(built.days.withoutFormerClose, 2);
    EXPECT_EQ(built.skipped.beijing, 4);
    EXPECT_EQ(built.skipped.otherKinds, 4);
    EXPECT_EQ(built.skipped.halted, 4);
    const QString cut = written(u"vipdoc/sz/lday/sz000002.day"_s, days.chopped(1));
    EXPECT_EQ(failureOf([&] { build(folder); }),
              cut + u"：不是完整的日线文件，长度不是 32 的倍数"_s);
}

TEST_F(HistoryBuilderTest, ThemesAreReadByTheirHeader) {
    SkippedRows skipped;
    const QString path = written(
        u"themes.csv"_s,
        gbkFromText(u"序号,代码,主题\r\n1,600000.SH,\"银行\"\r\n\r\n2,BJ430047,芯片\r\n"_s));
    const QList<ThemeMember> members = readThemeMembers(path, skipped);
    ASSERT_EQ(members.size(), 1);
    EXPECT_EQ(members[0].theme + members[0].dm, u"银行SH600000"_s);
    EXPECT_EQ(skipped.beijing, 1);
    const std::pair<QByteArray, QString> cases[] = {
        {"a,SH600000\n", u" 第 1 行：第一行要写明各列的名称：zhutiname,dm，或者 主题,代码"_s},
        {"zhutiname,dm\na\n", u" 第 2 行：缺少字段"_s},
        {"zhutiname,dm\n,SH600000\n", u" 第 2 行：没有主题名称"_s},
        {"zhutiname,dm\na,SH\n", u" 第 2 行：“SH”不是代码，例如 SH600000"_s},
    };
    for (const auto& [content, words] : cases) {
        writeFile(path, content);
        EXPECT_EQ(failureOf([&] { readThemeMembers(path, skipped); }), path + words);
    }
}

// Real files: one twice, no database, one that another program holds.
TEST_F(HistoryBuilderTest, AFailureNamesTheFileAndTellsWhatToDo) {
    const QByteArray line = "SH600000,2026-11-19,1,1,1,1,1,1,1,1\n";
    add(line);
    EXPECT_EQ(faultOfPlaces(files_, csv_), QString());
    EXPECT_TRUE(faultOfPlaces({files_.first, folder_.filePath(u"a/../a/first.db3"_s)}, csv_)
                    .contains(u"同一个文件"_s));
    EXPECT_TRUE(faultOfPlaces({files_.first, csv_}, csv_).startsWith(csv_ + u'：'));

    const Impatience impatience;
    const Connection holder = held({files_.second, {}});
    const struct {
        HistoryFiles files;
        QString named, words;
    } runs[] = {
        {{files_.first, csv_}, csv_, u"不是 SQLite 数据库"_s},
        {{csv_, folder_.filePath(u"new.db3"_s)}, csv_, u"不是 SQLite 数据库"_s},
        {files_, files_.second, u"正被另一个程序使用"_s},
    };
    for (const auto& it : runs) {
        const QString words =
            builderFailure(raisedBy<StoreError>([&] { addToHistory(it.files, {}, {}); }));
        EXPECT_TRUE(begins(words, it.named + u'：'));
        EXPECT_TRUE(holds(words, it.words));
    }
    EXPECT_EQ(contentOf(csv_), ownHeader + line);
}

TEST_F(HistoryBuilderTest, AFailureLeavesAFileAsItWas) {
    add("SH600000,2026-11-19,1,1,1,1,1,1,1,1\n");
    Connection(files_.first, {})
        .execute(
            u"create trigger refuse before insert on geguhq begin select raise(abort,'no');"
            u" end"_s);
    EXPECT_ANY_THROW(add("SH600000,2026-11-20,1,1,1,1,1,1,1,1\n"));
    EXPECT_EQ(first(u"select count(*) from SH600000"_s), QStringList{u"1"_s});
    EXPECT_EQ(second(u"select count(*) from SH600000"_s), QStringList{u"1"_s});
    const QString blocked = folder_.filePath(u"new.db3"_s);
    EXPECT_TRUE(QDir().mkpath(blocked + u".new/x"_s));
    EXPECT_ANY_THROW(addToHistory({blocked, files_.second}, {}, {}));
    EXPECT_FALSE(QFile::exists(blocked));
}

}  // namespace guanchao
