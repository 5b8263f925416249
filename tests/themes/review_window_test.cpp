// 今日复盘, by its keys, and the desk that writes the book behind the main window.
#include "themes/review_window.h"

#include <QPlainTextEdit>

#include "tests/app/form2_fixture.h"
#include "themes/day_book.h"
#include "themes/theme_page.h"

namespace guanchao {

class ReviewWindowTest : public Form2Test {
protected:
    ReviewWindowTest() {
        store_.addCode(u"SZ000858"_s, u"五粮液"_s, 10, 6);
        store_.addMembers(u"白酒"_s, {u"SH600000"_s, u"SZ000858"_s});
        store_.addMembers(u"银行"_s, {u"SH600519"_s, u"SH600519"_s});
        quotesAt(u"2026-11-23 15:30:00"_s);
        writeDay(stores_, QDateTime(QDate(2026, 11, 23), QTime(16, 0)));
        store_.run({u"update dmb set zhangfu=9 where dm='SH600000'"_s});
    }

    void quotesAt(const QString& taken) {
        store_.run({u"update tempcanshu set hqtime='%1'"_s.arg(taken)});
    }
    void openReview() {
        trigger(u"今日复盘"_s);
        review_ = shownWindow<ReviewWindow>();
        form_ = review_;
        untilRead();
    }
    void untilRead() {
        until([] { return QThreadPool::globalInstance()->activeThreadCount() == 0; });
        QApplication::processEvents();
        until([this] { return find<QComboBox>(u"Combo1"_s)->count() > 0; });
    }
    QPlainTextEdit& note() const { return *find<QPlainTextEdit>(u"note"_s); }
    QStringList notes() {
        return store_.rows(u"select riqi,beizhu from fupanbeizhu order by riqi"_s);
    }
    QStringList days() {
        const auto* box = find<QComboBox>(u"Combo1"_s);
        QStringList words;
        for (int at = 0; at < box->count(); ++at) {
            words << box->itemText(at);
        }
        return words;
    }
    QString state() const { return label(u"state"_s); }

    ReviewWindow* review_ = nullptr;
};

TEST_F(ReviewWindowTest, TodayStandsAgainstTheDayBeforeAndFollowsTheQuotes) {
    quotesAt(u"2026-11-24 10:00:00"_s);
    load();
    openReview();
    EXPECT_EQ(days(), QStringList({u"2026-11-24 星期二（现算）"_s, u"2026-11-23 星期一"_s}));
    EXPECT_EQ(columnTexts(grid(), 1).mid(1, 2), QStringList({u"最强"_s, u"最弱"_s}));
    view().setFocus();
    grid().biaoji(1);
    QTest::keyClick(&view(), Qt::Key_Down);
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_EQ(shownWindow<ThemePage>()->theme(), grid().textMatrix(2, 2));
    quotesAt(u"2026-11-24 14:00:00"_s);
    main_.findChild<QAction*>(u"刷新"_s)->trigger();
    until([this] { return state().contains(u"14:00"_s); });
}

TEST_F(ReviewWindowTest, ANoteIsSavedWhenTheUserRestsAndAtTheCloseAndIsFound) {
    load();
    openReview();
    QTest::keyClicks(&note(), u"plan"_s);
    EXPECT_EQ(label(u"noteState"_s), u"还没有保存"_s);
    until([this] { return label(u"noteState"_s) == u"已保存"_s; });
    EXPECT_EQ(notes(), QStringList{u"2026-11-23|plan"_s});
    EXPECT_EQ(days(), QStringList{u"2026-11-23 星期一　有备注"_s});
    writeDayNote(stores_.main, QDate(2026, 11, 20), u"ETF 强"_s);
    button(u"Command2"_s)->click();
    until([this] { return days().size() == 2; });
    QTest::keyClicks(&note(), u"+"_s);
    QTest::keyClick(find<QComboBox>(u"Combo1"_s), Qt::Key_Down);
    until([this] { return note().toPlainText() == u"ETF 强"_s; });
    EXPECT_EQ(notes().last(), u"2026-11-23|plan+"_s) << "goes with its day";
    QTest::keyClick(find<QComboBox>(u"Combo1"_s), Qt::Key_Up);
    until([this] { return note().toPlainText() == u"plan+"_s; });
    note().setFocus();
    QTest::keyClick(&note(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(edit(u"Text1"_s), u"etf"_s);
    QTest::keyClick(edit(u"Text1"_s), Qt::Key_Return);
    until([this] { return note().toPlainText() == u"ETF 强"_s; });
    QTest::keyClicks(&note(), u"x"_s);
    {
        const Impatience impatience;
        const Connection other = held(stores_.main, u"immediate"_s);
        review_->close();
        EXPECT_TRUE(review_->isVisible()) << "a note that can't be saved keeps its window";
        EXPECT_EQ(failures_.told.size(), 1);
    }
    QTest::keyClick(review_, Qt::Key_Escape);
    EXPECT_FALSE(review_->isVisible());
    EXPECT_EQ(notes().first(), u"2026-11-20|xETF 强"_s);
}

TEST_F(ReviewWindowTest, TheDeskWritesTheDayOnceItIsOverAndTheWindowShowsIt) {
    quotesAt(u"2026-11-24 15:02:00"_s);
    clock_.moment = QDateTime(QDate(2026, 11, 24), QTime(15, 4));
    load();
    openReview();
    auto* desk = main_.findChild<QTimer*>(u"dayBook"_s);
    EXPECT_GT(desk->interval(), 0);
    const auto days = [this] {
        return store_.rows(u"select distinct riqi from zhutiriji"_s).size();
    };
    timeIsUp(desk);
    untilRead();
    EXPECT_EQ(days(), 1) << "it still trades";
    clock_.moment = clock_.moment.addSecs(60);
    store_.refuse(u"insert on zhutiriji"_s);
    // Each look puts the interval back to a minute.
    const auto untilALookShows = [desk](const std::function<bool()>& it) {
        until([&] {
            desk->setInterval(1);
            return it();
        });
    };
    const auto line = [this] { return main_.findChild<QLabel*>(u"bookLine"_s)->text(); };
    untilALookShows([&] { return !line().isEmpty(); });
    EXPECT_EQ(failures_.told, QStringList()) << "no box";
    store_.run({u"drop trigger refuse"_s});
    untilALookShows([this] { return state().startsWith(u"收盘（11-24 15:02"_s); });
    EXPECT_EQ(days(), 2);
    EXPECT_EQ(line(), QString());
}

TEST_F(ReviewWindowTest, ACloseIsKeptBeforeOtherQuotesTakeItsPlace) {
    quotesAt(u"2026-11-24 15:10:00"_s);
    clock_.moment = QDateTime(QDate(2026, 11, 25), QTime(10, 30));
    load();
    answerQuotes({{u"sh600000"_s, 20}});
    QTest::keyClick(&main_, Qt::Key_F9);
    until([this] { return !dialogs_.shown.isEmpty(); });
    EXPECT_EQ(store_.rows(u"select riqi from zhutiriji where zhutiname='银行'"_s).size(), 2);
    EXPECT_EQ(store_.rows(u"select date(hqtime) from tempcanshu"_s), QStringList{u"2026-11-25"_s});
}

}  // namespace guanchao
