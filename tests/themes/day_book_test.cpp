#include "themes/day_book.h"

#include "tests/support/store_test.h"
#include "themes/review_table.h"
#include "themes/theme_commands.h"

namespace guanchao {

class DayBookTest : public StoreTest {
protected:
    DayBookTest() {
        for (int at = 0; at < 6; ++at) {
            store_.addCode(dm(at), u"股%1"_s.arg(at), 11, 0);
        }
        store_.addMembers(u"白酒"_s, {dm(0), dm(1), dm(2)});
        store_.addMembers(u"银行"_s, {dm(3), dm(4), dm(5)});
        store_.addMember(u"单只"_s, dm(0));
        store_.run({u"update tempcanshu set hqtime=null"_s});
    }

    static QString dm(int at) { return u"SH60000%1"_s.arg(at); }
    // All stocks of 白酒 gain that, those of 银行 the opposite.
    void quotes(const QString& taken, double gain) {
        store_.run(
            {u"update dmb set zhangfu=case when dm<'SH600003' then %1 else -(%1) end"_s.arg(gain),
             u"update tempcanshu set hqtime='%1'"_s.arg(taken)});
    }
    QString write(const QString& now) {
        const std::optional<QDate> day =
            writeDay(store_.stores, QDateTime::fromString(now, u"yyyy-MM-dd HH:mm"_s));
        return day ? day->toString(Qt::ISODate) : QString();
    }
    QStringList book(const QString& columns = u"riqi,zhutiname,zhangfu"_s) {
        return store_.rows(u"select %1 from zhutiriji order by riqi,zhutiname"_s.arg(columns));
    }
    ReviewData review(const QDate& day = {}) { return readReview(store_.stores, day); }
    static QStringList shown(const ReviewData& data) {
        return textsOf(data.rows, [](const ReviewRow& it) {
            return u"%1 %2 %3"_s.arg(standingWords(it.standing), it.day.theme).arg(it.rank);
        });
    }

    ThemeCommands commands_{store_.stores, clock_, dialogs_, removals_, edits_};
};

TEST_F(DayBookTest, AWeekIsWrittenDayByDayWithoutWhatWasMissed) {
    EXPECT_EQ(write(u"2026-11-16 16:00"_s), QString()) << "no quotes have come yet";
    const std::tuple<QString, double, QString, QString> steps[] = {
        {u"2026-11-16 14:59:59"_s, 1, u"2026-11-16 15:10"_s, {}},  // before the close
        {u"2026-11-16 15:00:00"_s, 2, u"2026-11-16 15:04"_s, {}},
        {u"2026-11-16 15:00:00"_s, 2, u"2026-11-16 15:05"_s, u"2026-11-16"_s},
        {u"2026-11-16 15:00:00"_s, 2, u"2026-11-16 15:06"_s, {}},               // is there
        {u"2026-11-16 16:00:00"_s, 3, u"2026-11-16 16:01"_s, u"2026-11-16"_s},  // better ones
        {u"2026-11-17 08:30:00"_s, 9, u"2026-11-17 08:31"_s, {}},               // still of the 16th
        {u"2026-11-18 09:00:00"_s, 4, u"2026-11-18 09:01"_s, {}},  // the 17th is missed
        {u"2026-11-19 08:59:59"_s, 5, u"2026-11-19 20:00"_s, u"2026-11-18"_s},  // at the next start
        {u"2026-11-19 15:30:00"_s, 5, u"2026-11-19 20:00"_s, {}},  // a holiday: all as before
        {u"2026-11-21 10:00:00"_s, 6, u"2026-11-21 10:01"_s, u"2026-11-20"_s},  // on Saturday
        {u"2026-11-22 10:00:00"_s, 7, u"2026-11-22 10:01"_s, {}},
    };
    for (const auto& [taken, gain, now, written] : steps) {
        quotes(taken, gain);
        EXPECT_EQ(write(now), written) << taken.toStdString() << now.toStdString();
    }
    EXPECT_EQ(
        book(),
        QStringList({u"2026-11-16|单只|3"_s, u"2026-11-16|白酒|3"_s, u"2026-11-16|银行|-3"_s,
                     u"2026-11-18|单只|5"_s, u"2026-11-18|白酒|5"_s, u"2026-11-18|银行|-5"_s,
                     u"2026-11-20|单只|6"_s, u"2026-11-20|白酒|6"_s, u"2026-11-20|银行|-6"_s}));
    quotes(u"2026-11-23 15:30:00"_s, 1);
    store_.run({u"update dmb set sp=0"_s});
    EXPECT_EQ(write(u"2026-11-23 16:00"_s), QString()) << "no prices, no day";
    store_.run({u"update dmb set sp=1"_s, u"delete from dzhzhuti"_s});
    EXPECT_EQ(write(u"2026-11-23 16:00"_s), QString()) << "no themes, no day";
}

TEST_F(DayBookTest, ADayHoldsMembersLimitsLeadersAndANote) {
    quotes(u"2026-11-24 15:30:00"_s, 1);
    store_.run({u"update dmb set zhangfu=10,zhangjine=1 where dm='SH600001'"_s,
                u"update dmb set zhangfu=null where dm='SH600005'"_s});
    writeDayNote(store_.stores.main, QDate(2026, 11, 24), u" 想法 "_s);
    write(u"2026-11-24 16:00"_s);
    EXPECT_EQ(book(u"zhutiname,round(zhangfu,2),zhangtingshu,gushu,lingzhang,hqtime"_s).mid(1),
              QStringList({u"白酒|4|1|3|SH600001,SH600000,SH600002|2026-11-24 15:30:00"_s,
                           u"银行|-1|0|2|SH600003,SH600004|2026-11-24 15:30:00"_s}));
    EXPECT_EQ(store_.rows(u"select * from fupanbeizhu"_s), QStringList{u"2026-11-24|想法"_s});
    writeDayNote(store_.stores.main, QDate(2026, 11, 24), u" "_s);
    EXPECT_EQ(store_.rows(u"select * from fupanbeizhu"_s), QStringList());
}

TEST_F(DayBookTest, OnlyAYearOfTradingStaysAndTheNotesAllDo) {
    writeDayNote(store_.stores.main, QDate(2020, 1, 2), u"旧"_s);
    for (int at = 0; at < mostBookDays; ++at) {
        store_.run({u"insert into zhutiriji values('%1','白酒',1,0,3,'','')"_s.arg(
            QDate(2025, 1, 1).addDays(at).toString(Qt::ISODate))});
    }
    quotes(u"2026-11-24 15:30:00"_s, 1);
    write(u"2026-11-24 16:00"_s);
    EXPECT_EQ(store_.rows(u"select count(distinct riqi),min(riqi) from zhutiriji"_s),
              QStringList{QString::number(mostBookDays) + u"|2025-01-02"_s});
    EXPECT_EQ(review().notes.value(QDate(2020, 1, 2)), u"旧"_s);
}

TEST_F(DayBookTest, TheBookFollowsANewNameAndItsReturn) {
    for (const QString& day : {u"2026-11-23"_s, u"2026-11-24"_s}) {
        quotes(day + u" 15:30:00"_s, day.right(1).toInt());
        write(day + u" 16:00"_s);
    }
    store_.run({u"delete from zhutiriji where riqi='2026-11-23' and zhutiname='银行'"_s});
    const QStringList withGap = book(u"rowid,*"_s);
    dialogs_.typed = u"黄酒"_s;
    outcomeOf(commands_.rename(u"白酒"_s, {}));
    EXPECT_EQ(book(u"zhutiname"_s),
              QStringList({u"单只"_s, u"黄酒"_s, u"单只"_s, u"银行"_s, u"黄酒"_s}));
    ASSERT_TRUE(carryOut(*edits_.next(Way::back), Way::back));
    EXPECT_EQ(book(u"rowid,*"_s), withGap);
    dialogs_.typed = u"银行"_s;
    outcomeOf(commands_.rename(u"白酒"_s, {}));
    EXPECT_EQ(book(), QStringList({u"2026-11-23|单只|3"_s, u"2026-11-23|银行|3"_s,
                                   u"2026-11-24|单只|4"_s, u"2026-11-24|银行|-4"_s}))
        << "where both have a day, that of the name counts";
    ASSERT_TRUE(carryOut(*edits_.next(Way::back), Way::back));
    EXPECT_EQ(book(u"rowid,*"_s), withGap);
}

TEST_F(DayBookTest, TodayIsCountedLiveUntilItIsWritten) {
    EXPECT_TRUE(reviewWords(review()).startsWith(u"还没有行情"_s));
    quotes(u"2026-11-23 15:30:00"_s, 3);
    write(u"2026-11-23 16:00"_s);
    quotes(u"2026-11-24 10:30:00"_s, -4);
    ReviewData data = review();
    EXPECT_EQ(data.days, QList({QDate(2026, 11, 24), QDate(2026, 11, 23)}));
    EXPECT_TRUE(reviewWords(data).startsWith(u"还没有收盘：按 11-24 10:30 的行情现在算的"_s));
    EXPECT_EQ(shown(data), QStringList({u"最强 银行 1"_s, u"最弱 白酒 2"_s, u"新进前列 银行 1"_s,
                                        u"退出前列 白酒 2"_s, u"其他 单只 0"_s}));
    EXPECT_EQ(data.rows[0].line, QList({-3.0, 4.0}));
    EXPECT_EQ(*data.rows[0].gainBefore, -3);
    EXPECT_EQ(data.rows[0].rankBefore, 2);
    data = review(QDate(2026, 11, 23));
    EXPECT_TRUE(reviewWords(data).startsWith(u"收盘（11-23 15:30 的行情）；以前的日子"_s));
    EXPECT_EQ(shown(data)[0], u"最强 白酒 1"_s) << "as it was";
    quotes(u"2026-11-24 15:01:00"_s, -4);
    EXPECT_TRUE(reviewWords(review()).startsWith(u"收盘行情（11-24 15:01），还没有记下"_s));
    write(u"2026-11-24 15:05"_s);
    EXPECT_TRUE(reviewWords(review()).startsWith(
        u"收盘（11-24 15:01 的行情）；前一天是 11-23，小线是连前 1 天"_s));
    quotes(u"2026-11-25 08:00:00"_s, 8);
    EXPECT_EQ(review().days.first(), QDate(2026, 11, 24)) << "of what is written";
}

}  // namespace guanchao
