#include "research/form37.h"

#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QThreadPool>

#include "base/values.h"
#include "frame/candle_chart.h"
#include "tests/support/test_history.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form37Test : public WindowTest {
protected:
    // A theme with three stocks at their limit on a Friday, and one beside them that rises by a
    // tenth of a yuan a day from then on.
    Form37Test() {
        constexpr int signalDay = 12;
        const QStringList days = tradingDays(20);
        MarketHistory history;
        for (int at = 0; at < days.size(); ++at) {
            history.stocks[u"SH000001"_s] << HistoryRow{.day = days[at]};
            const int price = 1000 + 10 * std::max(0, at - signalDay);
            history.stocks[u"SH600000"_s] << HistoryRow{
                .day = days[at], .kp = price, .zg = price + 5, .zd = price, .sp = price};
        }
        for (const QString& dm : {u"SH600001"_s, u"SH600002"_s, u"SH600004"_s}) {
            history.stocks[dm] << HistoryRow{.day = days[signalDay], .zg = 1100, .sp = 1100};
        }
        for (const QString& dm : history.stocks.keys().mid(1)) {
            history.members << qMakePair(u"芯片"_s, dm);
        }
        writeHistory(history, stores_.firstHistory, stores_.secondHistory, true);
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 0, 0);
    }

    void runToItsEnd(const QString& command) {
        click(command);
        untilItsEnd();
    }
    void untilItsEnd() {
        until([this] { return button(u"run"_s)->isEnabled(); });
    }
    void set(const QString& field, double value) { find<QDoubleSpinBox>(field)->setValue(value); }
    void choose(const QString& box, const QString& item) {
        find<QComboBox>(box)->setCurrentText(item);
    }
    void withoutCosts() {
        for (const QString& field : {u"佣金"_s, u"印花税"_s, u"滑点"_s}) {
            set(field, 0);
        }
    }
};

TEST_F(Form37Test, ARuleIsRunAndItsCurveGoesOut) {
    open<Form37>();
    withoutCosts();
    set(u"持股数"_s, 1);
    set(u"持有天数"_s, 2);
    runToItsEnd(u"run"_s);
    EXPECT_TRUE(holds(label(u"sum"_s), u"累计 1.98%，上证指数 0.00%，最大回撤 0.00%。卖出 1 次"_s));
    EXPECT_EQ(rowText(grid(u"trades"_s), 1),
              u"1|SH600000|浦发银行|1.98|芯片|2017-03-17|2017-03-20|10.10|2017-03-22|10.30|"
              u"持有到期"_s);
    EXPECT_EQ(rowText(grid(u"years"_s), 1), u"1|2017|1.98|0.00|0.00|||1.98|||||||||"_s);
    clickCell(view(u"trades"_s), 1, 1);
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianjc, u"SH600000浦发银行"_s);
    const auto* chart = find<CandleChart>(u"chart"_s);
    until([&] { return chart->chosenText().contains(u"2017-03-20"_s); });
    const QString path = store_.folder() + u"curve.csv"_s;
    dialogs_.picked = path;
    click(u"exportCurve"_s);
    until([this] { return dialogs_.shown.size() == 2; });
    EXPECT_TRUE(holds(QString::fromUtf8(contentOf(path)), u"2017-03-21,0.99,0.00,0.00"_s));
}

TEST_F(Form37Test, RulesAreNamedComparedAndRemoved) {
    const auto name = [](int days) { return u"a/b [持有] 50%=%1"_s.arg(days); };
    open<Form37>();
    for (const int days : {1, 3}) {
        set(u"持有天数"_s, days);
        dialogs_.typed = name(days);
        click(u"keep"_s);
    }
    leaveWindows();
    open<Form37>();
    choose(u"rules"_s, name(3));
    EXPECT_EQ(find<QDoubleSpinBox>(u"持有天数"_s)->value(), 3);
    runToItsEnd(u"compare"_s);
    ASSERT_EQ(grid(u"comparison"_s).rows(), 4);
    EXPECT_EQ(grid(u"comparison"_s).textMatrix(2, 1), name(1));
    EXPECT_EQ(grid(u"comparison"_s).textMatrix(2, 8), u"1 天"_s) << "the field that differs";
    click(u"remove"_s);
    EXPECT_EQ(find<QComboBox>(u"rules"_s)->findText(name(3)), -1);
    EXPECT_EQ(find<QDoubleSpinBox>(u"持有天数"_s)->value(), 5) << "the usual one";
    const QString file = store_.folder() + u"回测.ini"_s;
    EXPECT_TRUE(QFile::remove(file) && QDir().mkdir(file));
    click(u"keep"_s);
    EXPECT_EQ(failures_.texts.size(), 1) << "can't be kept";
}

TEST_F(Form37Test, ASweepIsAHeatMap) {
    open<Form37>();
    withoutCosts();
    set(u"持股数"_s, 1);
    set(u"横向从"_s, 1);
    set(u"横向到"_s, 3);
    choose(u"纵向"_s, u"止盈"_s);
    set(u"纵向到"_s, 1);
    runToItsEnd(u"sweep"_s);
    EXPECT_EQ(rowText(grid(u"heat"_s), 0), u"序号|止盈 ＼ 持有天数|1 天|2 天|3 天"_s);
    EXPECT_EQ(rowText(grid(u"heat"_s), 1), u"1|0 %|0.99|1.98|2.97"_s);
    EXPECT_EQ(rowText(grid(u"heat"_s), 2), u"2|1 %|1.00|1.00|1.00"_s);
    GridView& heat = view(u"heat"_s);
    emit heat.rowDoubleClicked(1, 0);
    EXPECT_EQ(find<QDoubleSpinBox>(u"持有天数"_s)->value(), 5) << "no cell is chosen";
    const auto take = [&heat](int row) {
        heat.setCurrentIndex(heat.model()->index(row, 3));
        QTest::keyClick(&heat, Qt::Key_Return);
    };
    take(1);
    EXPECT_EQ(find<QDoubleSpinBox>(u"持有天数"_s)->value(), 2);
    EXPECT_EQ(find<QDoubleSpinBox>(u"止盈"_s)->value(), 1);
    for (int sorts = 0; sorts < 2; ++sorts) {
        heat.horizontalHeader()->sectionClicked(2);
        take(0);
        EXPECT_EQ(numberText(find<QDoubleSpinBox>(u"止盈"_s)->value()) + u" %"_s,
                  grid(u"heat"_s).textMatrix(1, 1));
    }
    choose(u"measure"_s, u"卖出次数"_s);
    EXPECT_EQ(rowText(grid(u"heat"_s), 1), u"1|0 %|1|1|1"_s);
}

// The history is locked, so that a run waits in its thread.
TEST_F(Form37Test, EscapeStopsARunAndTheEndOfTheWindowEndsIt) {
    for (const QString& command : {u"run"_s, u"compare"_s, u"sweep"_s}) {
        for (const bool closes : {false, true}) {
            SCOPED_TRACE(command.toStdString() + (closes ? " closes" : " stops"));
            open<Form37>();
            Connection store = stores_.firstHistory.open();
            store.execute(u"begin exclusive"_s);
            click(command);
            EXPECT_FALSE(button(u"run"_s)->isEnabled() || button(u"sweep"_s)->isEnabled());
            if (closes) {
                leaveWindows();
                store.execute(u"rollback"_s);
                QThreadPool::globalInstance()->waitForDone();
            } else {
                QTest::keyClick(form_, Qt::Key_Escape);
                EXPECT_EQ(button(u"stop"_s)->text(), u"正在停止…"_s);
                store.execute(u"rollback"_s);
                untilItsEnd();
                EXPECT_TRUE(form_->isVisible());
                QTest::keyClick(form_, Qt::Key_Escape);
                EXPECT_EQ(shownWindow<Form37>(), nullptr);
            }
            QApplication::processEvents();
            EXPECT_TRUE(failures_.texts.isEmpty());
        }
    }
}

TEST_F(Form37Test, TheRuleThatWasRunLastComesBackAndOneWithoutARangeIsRefused) {
    open<Form37>();
    set(u"个股涨幅从"_s, 50);
    set(u"个股涨幅到"_s, 10);
    runToItsEnd(u"run"_s);
    EXPECT_TRUE(failures_.texts.value(0).contains(u"“个股涨幅从”大于“个股涨幅到”"_s));
    set(u"个股涨幅从"_s, 5);
    runToItsEnd(u"run"_s);
    leaveWindows();
    open<Form37>();
    EXPECT_EQ(find<QDoubleSpinBox>(u"个股涨幅从"_s)->value(), 5);
    EXPECT_EQ(failures_.texts.size(), 1);
}

}  // namespace guanchao
