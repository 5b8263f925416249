#include "research/history_store.h"
#include "tools/history_builder/day_rows.h"

#include <QTemporaryDir>

#include "tests/support/files.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

class HistoryBuilderTest : public ::testing::Test {
protected:
    void add(const QByteArray& lines, const std::optional<QList<ThemeMember>>& themes = {}) {
        writeFile(csv_, "dm,shijian,kp,zg,zd,sp,qiansp,chengjiaol,chengjiaoe,fuquanyz\n" + lines);
        addToHistory(files_, readDayRows(csv_), themes);
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
    add(day19 + day19, QList<ThemeMember>{{u"银行"_s, u"SH600000"_s}, {u"旧"_s, u"SZ000001"_s}});
    add(index + day20 + day19, QList<ThemeMember>{{u"银行'"_s, u"SH600000"_s}});
    add(day20);
    const QStringList days = {u"2026-11-19|1234|1250|1200|1235|1230|7000|86380.5|1.05"_s,
                              u"2026-11-20|999|1000|900|950|1235|8000|76000|1.1"_s};
    EXPECT_EQ(first(u"select * from SH600000"_s), days);
    EXPECT_EQ(second(u"select * from SH600000"_s), days);
    EXPECT_EQ(first(u"select * from geguhq"_s),
              QStringList({u"SH600000|"_s + days[0], u"SH600000|"_s + days[1]}))
        << "stocks, not the index";
    EXPECT_EQ(first(u"select kp from SH000001"_s), QStringList{u"300012"_s});
    EXPECT_EQ(first(u"select * from dzhzhuti"_s), QStringList{u"银行'|SH600000"_s});
    EXPECT_EQ(second(u"select * from nishihq2"_s), QStringList());
}

TEST_F(HistoryBuilderTest, ABadRowIsNamedAndNothingIsWritten) {
    const QByteArray good = "SH600000,2026-11-19,1,1,1,1,1,1,1,1\n";
    const struct {
        QByteArray row;
        QString words;
    } cases[] = {
        {"SH600000,2026-11-20,1,1,1,1,1,1,1", u"应有 10 个字段，只有 9 个"_s},
        {"600000,2026-11-20,1,1,1,1,1,1,1,1", u"“600000”不是代码，例如 SH600000"_s},
        {"SH600000,2026-13-20,1,1,1,1,1,1,1,1", u"“2026-13-20”不是日期，例如 2026-11-24"_s},
        {"SH600000,2026-11-20,1,1,1,x,1,1,1,1", u"收盘“x”不是数字"_s},
        {"SH600000,2026-11-20,1,1,0.001,1,1,1,1,1", u"最低“0.001”要在 0.01 到 1000000 之间"_s},
        {"SH600000,2026-11-20,1,1,1,1,0,1,1,1", u"前收盘要大于 0"_s},
        {"SH600000,2026-11-20,1,1,1,1,1,-1,1,1", u"成交量“-1”不是数字"_s},
        {"SH600000,2026-11-20,1,1,1,1,1,1,1,0", u"复权因子要大于 0"_s},
    };
    add(good);
    for (const auto& it : cases) {
        try {
            add(good + "SH600001,2026-11-19,1,1,1,1,1,1,1,1\n\n" + it.row);
            ADD_FAILURE() << it.row.toStdString();
        } catch (const std::runtime_error& failure) {
            EXPECT_EQ(QString::fromUtf8(failure.what()), csv_ + u" 第 5 行："_s + it.words);
        }
    }
    EXPECT_EQ(first(u"select count(*) from geguhq"_s), QStringList{u"1"_s});
}

TEST_F(HistoryBuilderTest, AFailureLeavesAFileAsItWas) {
    add("SH600000,2026-11-19,1,1,1,1,1,1,1,1\n");
    Connection(files_.first, {})
        .execute(
            u"create trigger refuse before insert on geguhq begin select raise(abort,'no');"
            u" end"_s);
    EXPECT_ANY_THROW(add("SH600000,2026-11-20,1,1,1,1,1,1,1,1\n"));
    EXPECT_EQ(first(u"select count(*) from SH600000"_s), QStringList{u"1"_s});
    const QString blocked = folder_.filePath(u"new.db3"_s);
    EXPECT_TRUE(QDir().mkpath(blocked + u".new/x"_s));
    EXPECT_ANY_THROW(addToHistory({blocked, files_.second}, {}, {}));
    EXPECT_FALSE(QFile::exists(blocked));
}

}  // namespace guanchao
